// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The sharing ports beside the main window: opened as the settings say or for the run's own
// --share, switched from Setup > "Sharing Ports...", each shown in the status bar with the count of
// commands it answered, all closed (their links removed) when the program ends.

#include "SharingPorts.h"
#include "SharingSettings.h"

#include <QObject>
#include <memory>
#include <optional>

class Form1;
class QLabel;
class QTimer;
class SettingsStore;

class SharingControl : public QObject {
    Q_OBJECT
public:
    // Either port may be missing (a build without it): its rows and its setting are left alone.
    SharingControl(Form1& form, SettingsStore& settings, std::unique_ptr<SharingPort> native,
                   std::unique_ptr<SharingPort> text, QObject* parent = nullptr);
    ~SharingControl() override;

    // Opens the ports the settings name, and those of the run's own list (--share), which changes
    // nothing stored. False, with the reasons, when a port cannot be opened.
    bool start(const std::optional<SharingSettings>& forRun, QString* error);
    // Opens and closes ports to match; false, with the reasons, when one cannot be opened.
    bool apply(const SharingSettings& wanted, QString* error);
    void stop();

    SharingSettings openPorts() const;
    SharingPort* nativePort() const { return native_.port.get(); }
    SharingPort* textPort() const { return text_.port.get(); }
    // Setup > "Sharing Ports...", as its menu item runs it.
    void showDialog();

signals:
    // One line for the program's standard output, such as "Text port: /dev/pts/4".
    void portOpened(const QString& line);

private:
    struct Slot {
        std::unique_ptr<SharingPort> port;
        QString caption;  // "Native port", "Text port"
        QLabel* status = nullptr;
    };
    bool applyTo(Slot& slot, bool wanted, QStringList& errors);
    void showCounts();

    Form1& form_;
    SettingsStore& settings_;
    Slot native_;
    Slot text_;
    QTimer* refresh_ = nullptr;
};
