// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The network server beside the main window: started from the settings or the command line,
// switched from the Setup menu, fed by every poll, shown in the status bar.

#include "NetworkSettings.h"
#include "StatusDecoder.h"

#include <QObject>
#include <memory>
#include <optional>

class Form1;
class LinkRig;
class QLabel;
class RigctlServer;
class SettingsStore;

class NetworkControl : public QObject {
    Q_OBJECT
public:
    NetworkControl(Form1& form, SettingsStore& settings, QObject* parent = nullptr);
    ~NetworkControl() override;

    // Starts the server as the settings say, or on the run's own endpoint (--rigctld, which changes
    // nothing stored); false with a message on failure.
    bool start(const std::optional<NetworkSettings::Endpoint>& override, QString* error);
    void stop();
    bool listening() const;
    RigctlServer* server() const { return server_.get(); }
    // The one path to the radio, which the sharing ports use too.
    LinkRig& backend() const { return *backend_; }

private:
    void showDialog();
    void showState();
    bool listen(const QString& address, quint16 port, QString* error);

    Form1& form_;
    SettingsStore& settings_;
    std::unique_ptr<LinkRig> backend_;
    std::unique_ptr<RigctlServer> server_;
    QLabel* status_ = nullptr;
    std::optional<StatusView> lastStatus_;
    QString overrideText_;
};
