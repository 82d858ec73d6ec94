// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebControl.h"

#include "Form1.h"
#include "RealClock.h"
#include "Rig.h"
#include "WebDialog.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>

namespace {
const QString DialogTitle = QStringLiteral("Web Panel");
}  // namespace

WebControl::WebControl(Form1& form, SettingsStore& settings, Rig& rig, QObject* parent)
    : QObject(parent), form_(form), settings_(settings), clock_(std::make_unique<RealClock>()), server_(rig, *clock_)
{
    // After the rig's own connections (made first, by the network control), so the state is fresh.
    connect(&form, &Form1::statusShown, this, [this] { server_.publishState(); });
    connect(&form, &Form1::flagsShown, this, [this] { server_.publishState(); });
    connect(&form, &Form1::txAuthorizationChanged, this, [this] { server_.publishState(); });
    connect(&form, &Form1::aboutToClose, this, &WebControl::stop);
    connect(&server_, &WebServer::sessionsChanged, this, &WebControl::showState);

    if (QMenu* setup = form.setupMenu()) {
        QAction* item = setup->addAction(QStringLiteral("Web Panel..."));
        item->setObjectName(QStringLiteral("mnu_Web"));
        connect(item, &QAction::triggered, this, &WebControl::showDialog);
    }
    status_ = new QLabel(&form);
    status_->setObjectName(QStringLiteral("webStatus"));
    form.statusBar()->addPermanentWidget(status_);
    showState();
}

WebControl::~WebControl()
{
    server_.stop();
}

bool WebControl::listen(const WebSettings& s, QString* error)
{
    std::optional<WebServer::Tls> tls;
    if (s.secure())
        tls = WebServer::Tls{s.certFile, s.keyFile};
    server_.setCodes(s.codes);
    const bool ok = server_.listen(s.address, s.port, tls, error);
    showState();
    return ok;
}

bool WebControl::start(const RunOptions& run, QString* error)
{
    run_ = run;
    WebSettings s = WebSettings::load(settings_);
    if (s.completeCodes())
        s.save(settings_);
    if (!run.certFile.isEmpty() || !run.keyFile.isEmpty()) {
        if (run.certFile.isEmpty() || run.keyFile.isEmpty()) {
            if (error != nullptr)
                *error = QStringLiteral("--web-cert and --web-key go together");
            return false;
        }
        s.certFile = run.certFile;
        s.keyFile = run.keyFile;
    }
    if (run.endpoint) {
        s.address = run.endpoint->address;
        s.port = run.endpoint->port;
    } else if (!s.enabled) {
        server_.setCodes(s.codes);
        showState();
        return true;
    }
    return listen(s, error);
}

void WebControl::stop()
{
    server_.stop();
    showState();
}

bool WebControl::listening() const
{
    return server_.isListening();
}

QString WebControl::address() const
{
    if (!server_.isListening())
        return {};
    const QHostAddress a = server_.serverAddress();
    const QString host = a.protocol() == QAbstractSocket::IPv6Protocol ? u'[' + a.toString() + u']' : a.toString();
    return QStringLiteral("%1://%2:%3/")
        .arg(server_.isSecure() ? QStringLiteral("https") : QStringLiteral("http"), host)
        .arg(server_.serverPort());
}

void WebControl::showDialog()
{
    WebSettings current = WebSettings::load(settings_);
    current.completeCodes();
    WebDialog dialog(current, &form_);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const WebSettings chosen = dialog.result();
    chosen.save(settings_);
    server_.setCodes(chosen.codes);  // a code made anew ends the sessions of the old one
    if (!chosen.enabled) {
        stop();
        return;
    }
    QString error;
    if (!listen(chosen, &error))
        QMessageBox::warning(
            &form_, DialogTitle,
            QStringLiteral("Cannot serve the web panel on %1:%2\n%3").arg(chosen.address).arg(chosen.port).arg(error));
}

void WebControl::showState()
{
    if (status_ == nullptr)
        return;
    if (!server_.isListening()) {
        status_->clear();
        status_->hide();
        return;
    }
    const int n = server_.panelCount();
    status_->setText(
        QStringLiteral("Web %1, %2 session%3").arg(address()).arg(n).arg(n == 1 ? QString() : QStringLiteral("s")));
    status_->show();
}
