// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A stand-in for the main window in tests of the other windows: a radio link on a fake port and
// fake clock, run inline, and every shared number, indicator and menu mark as plain fields.

#include "ConsoleHost.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "MemorySettingsStore.h"
#include "RadioLink.h"

#include <QMap>
#include <QWidget>
#include <memory>

class FakeConsoleHost : public ConsoleHost {
public:
    FakeConsoleHost()
        : clock(std::make_shared<FakeClock>()),
          link_(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  QString e;
                  p->open(&e);
                  return p;
              },
              clock, RadioLink::Mode::Inline)
    {
        window_.setGeometry(100, 100, 694, 266);
    }

    RadioLink& link() override { return link_; }
    SettingsStore& settings() override { return store; }
    QWidget* window() override { return &window_; }
    bool portOpen() const override { return port->isOpen(); }
    void setPollEnabled(bool on) override
    {
        pollOn = on;
        pollChanges.append(on);
    }
    bool pollEnabled() const override { return pollOn; }
    bool indicatorVisible(int index) const override { return visible.value(index, false); }
    QString indicatorCaption(int index) const override { return captions.value(index); }
    double vfoKHz(int vfo) const override { return vfo == 2 ? vfoB : vfoA; }
    void setVfoKHz(int vfo, double kHz) override { (vfo == 2 ? vfoB : vfoA) = kHz; }
    int modeCode() const override { return mode; }
    void setModeCode(int code) override { mode = code; }
    void setVfoADisplay(const QString& caption) override { vfoADisplay = caption; }
    bool edspMenuChecked(bool transmit, int index) const override
    {
        return (transmit ? txChecked : rxChecked).value(index, false);
    }
    void setEdspMenuChecked(bool transmit, int index, bool checked) override
    {
        (transmit ? txChecked : rxChecked)[index] = checked;
    }
    void setKeyBackColour(int keyIndex, quint32 bgr) override { keyColours[keyIndex] = bgr; }
    void resetKeyBackColour(int keyIndex) override { keyColours.remove(keyIndex); }
    QRect geometryTwips() const override { return geometry; }
    int navigatorWidthTwips() override { return navigatorWidth; }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    MemorySettingsStore store;
    bool pollOn = true;
    QList<bool> pollChanges;
    QMap<int, bool> visible;
    QMap<int, QString> captions;
    double vfoA = 14250.0, vfoB = 7050.0;
    int mode = 1;
    QString vfoADisplay;
    QMap<int, bool> rxChecked, txChecked;
    QMap<int, quint32> keyColours;
    QRect geometry{1500, 400, 10410, 3990};
    int navigatorWidth = 2000;

private:
    QWidget window_;
    RadioLink link_;
};
