// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The main window as far as the memory window needs it, with the real serial adapter and the threaded
// radio link on a device (the virtual radio's pseudo-terminal). The VFO indicator is shown.

#include "ConsoleHost.h"
#include "Mem_Frm.h"
#include "MemorySettingsStore.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"

#include <QWidget>

class SimConsoleHost final : public ConsoleHost {
public:
    explicit SimConsoleHost(const QString& device)
        : link_(
              [device] {
                  auto port = std::make_unique<QtSerialPort>();
                  port->setDevice(device);
                  port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
                  port->open(nullptr);
                  return std::unique_ptr<SerialPort>(std::move(port));
              },
              std::make_shared<RealClock>(), RadioLink::Mode::Threaded)
    {
    }
    RadioLink& link() override { return link_; }
    SettingsStore& settings() override { return store_; }
    QWidget* window() override { return &window_; }
    bool portOpen() const override { return link_.portOpen(); }
    void setPollEnabled(bool on) override { poll_ = on; }
    bool pollEnabled() const override { return poll_; }
    bool indicatorVisible(int index) const override { return index == MainIndicator::Vfo; }
    QString indicatorCaption(int) const override { return {}; }
    double vfoKHz(int) const override { return 0; }
    void setVfoKHz(int, double) override {}
    int modeCode() const override { return 1; }
    void setModeCode(int) override {}
    void setVfoADisplay(const QString&) override {}
    bool edspMenuChecked(bool, int) const override { return false; }
    void setEdspMenuChecked(bool, int, bool) override {}
    void setKeyBackColour(int, quint32) override {}
    void resetKeyBackColour(int) override {}
    QRect geometryTwips() const override { return {1500, 400, 10410, 3990}; }
    int navigatorWidthTwips() override { return 2000; }

private:
    RadioLink link_;
    MemorySettingsStore store_;
    QWidget window_;
    bool poll_ = true;
};
