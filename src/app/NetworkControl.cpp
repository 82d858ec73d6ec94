// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkControl.h"

#include "Form1.h"
#include "LinkRig.h"
#include "NetworkDialog.h"
#include "RigctlServer.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>

NetworkControl::NetworkControl(Form1& form, SettingsStore& settings, QObject* parent)
    : QObject(parent), form_(form), settings_(settings), backend_(std::make_unique<LinkRig>(form.link()))
{
    server_ = std::make_unique<RigctlServer>(*backend_);
    backend_->setTxAuthorized(form.txAuthorized());
    // Its sets make the polled records they change wait for the next poll, for the native port.
    backend_->setPollCache(form.pollCache());

    connect(&form, &Form1::statusShown, this, [this](const StatusView& v) {
        lastStatus_ = v;
        backend_->update(v, FlagsView{}, form_.mainSMeterValue());
    });
    connect(&form, &Form1::flagsShown, this, [this](const FlagsView& f) {
        // The meters were read between the status and the flags.
        backend_->setTransmitMeter(form_.meterSelector(), form_.transmitMeterPercent());
        if (lastStatus_)
            backend_->update(*lastStatus_, f, form_.mainSMeterValue());
    });
    connect(&form, &Form1::txAuthorizationChanged, this, [this](bool on) { backend_->setTxAuthorized(on); });
    connect(&form, &Form1::scopeShownChanged, this, [this](bool shown) { backend_->setScopeShown(shown); });
    connect(&form, &Form1::portClosing, this, [this] { backend_->releaseKeyBeforePortCloses(); });
    // The window is closing: what clients still have waiting on the link is dropped, not run, so the
    // window does not wait for it; a client's key is released before the window closes the port.
    connect(&form, &Form1::aboutToClose, this, [this] {
        backend_->abandonClientJobs();
        stop();
    });
    connect(server_.get(), &RigctlServer::clientCountChanged, this, &NetworkControl::showState);

    if (QMenu* setup = form.setupMenu()) {
        setup->addSeparator();
        QAction* item = setup->addAction(QStringLiteral("Network Control..."));
        item->setObjectName(QStringLiteral("mnu_Network"));
        connect(item, &QAction::triggered, this, &NetworkControl::showDialog);
    }
    status_ = new QLabel(&form);
    status_->setObjectName(QStringLiteral("networkStatus"));
    form.statusBar()->addPermanentWidget(status_);
    showState();
}

NetworkControl::~NetworkControl()
{
    stop();
}

bool NetworkControl::listen(const QString& address, quint16 port, QString* error)
{
    server_->stop();
    constexpr int MsPerMinute = 60 * 1000;
    server_->setIdleTimeoutMs(NetworkSettings::load(settings_).idleMinutes * MsPerMinute);
    const bool ok = server_->listen(address, port, error);
    showState();
    return ok;
}

bool NetworkControl::start(const std::optional<NetworkSettings::Endpoint>& override, QString* error)
{
    if (override)
        return listen(override->address, override->port, error);
    const NetworkSettings s = NetworkSettings::load(settings_);
    if (!s.enabled) {
        showState();
        return true;
    }
    return listen(s.address, s.port, error);
}

void NetworkControl::stop()
{
    server_->stop();
    showState();
}

bool NetworkControl::listening() const
{
    return server_->isListening();
}

void NetworkControl::showDialog()
{
    NetworkDialog dialog(NetworkSettings::load(settings_), &form_);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const NetworkSettings chosen = dialog.result();
    chosen.save(settings_);
    if (!chosen.enabled) {
        stop();
        return;
    }
    QString error;
    if (!listen(chosen.address, chosen.port, &error))
        QMessageBox::warning(
            &form_, QStringLiteral("Network Control"),
            QStringLiteral("Cannot listen on %1:%2\n%3").arg(chosen.address).arg(chosen.port).arg(error));
}

void NetworkControl::showState()
{
    if (!status_)
        return;
    if (!server_->isListening()) {
        status_->setText(QString());
        status_->hide();
        return;
    }
    const int n = server_->clientCount();
    status_->setText(QStringLiteral("rigctld %1:%2, %3 client%4")
                         .arg(server_->serverAddress().toString())
                         .arg(server_->serverPort())
                         .arg(n)
                         .arg(n == 1 ? QString() : QStringLiteral("s")));
    status_->show();
}
