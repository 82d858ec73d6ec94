// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The web panel beside the main window: started from the settings or the command line, switched and
// set up from Setup > "Web Panel...", given every poll's state, shown in the status bar.

#include "WebServer.h"
#include "WebSettings.h"

#include <QObject>
#include <memory>
#include <optional>

class Form1;
class Rig;
class QLabel;
class SettingsStore;

class WebControl : public QObject {
    Q_OBJECT
public:
    // For this run only, from the command line: nothing of it is stored.
    struct RunOptions {
        std::optional<WebSettings::Endpoint> endpoint;  // --web
        QString certFile;                               // --web-cert
        QString keyFile;                                // --web-key
    };

    WebControl(Form1& form, SettingsStore& settings, Rig& rig, QObject* parent = nullptr);
    ~WebControl() override;

    // Starts the panel as the settings say, or as the run's options say; false with a message on
    // failure. The access codes are made and stored on first use.
    bool start(const RunOptions& run, QString* error);
    void stop();
    bool listening() const;
    WebServer& server() { return server_; }
    // The panel's address for the status bar and the terminal: "http://127.0.0.1:8073/".
    QString address() const;

private:
    void showDialog();
    void showState();
    bool listen(const WebSettings& s, QString* error);

    Form1& form_;
    SettingsStore& settings_;
    std::unique_ptr<Clock> clock_;
    WebServer server_;
    RunOptions run_;
    QLabel* status_ = nullptr;
};
