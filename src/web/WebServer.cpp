// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebServer.h"

#include "HttpRequest.h"
#include "HttpResponse.h"
#include "OriginCheck.h"
#include "PanelSession.h"
#include "WebAssets.h"
#include "WebLimits.h"
#include "WebLog.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrlQuery>
#include <QWebSocket>
#include <QWebSocketServer>

namespace {
const QByteArray WebSocketPath = QByteArrayLiteral("/ws");
const QByteArray LoginPath = QByteArrayLiteral("/login");
const QByteArray LogoutPath = QByteArrayLiteral("/logout");
const QByteArray FormType = QByteArrayLiteral("application/x-www-form-urlencoded");
constexpr int MsPerSecond = 1000;
// How long an answer may take to leave before its connection is cut.
constexpr int ClosingGraceMs = 1000;

std::optional<QSslConfiguration> loadTls(const WebServer::Tls& tls, QString* error)
{
    QFile certFile(tls.certFile);
    QFile keyFile(tls.keyFile);
    if (!certFile.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read the certificate %1").arg(tls.certFile);
        return std::nullopt;
    }
    if (!keyFile.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read the key %1").arg(tls.keyFile);
        return std::nullopt;
    }
    const QList<QSslCertificate> chain = QSslCertificate::fromData(certFile.readAll(), QSsl::Pem);
    const QByteArray keyPem = keyFile.readAll();
    QSslKey key(keyPem, QSsl::Rsa, QSsl::Pem);
    if (key.isNull())
        key = QSslKey(keyPem, QSsl::Ec, QSsl::Pem);
    if (chain.isEmpty() || key.isNull()) {
        *error = chain.isEmpty() ? QStringLiteral("no PEM certificate in %1").arg(tls.certFile)
                                 : QStringLiteral("no PEM RSA or EC key in %1").arg(tls.keyFile);
        return std::nullopt;
    }
    QSslConfiguration config = QSslConfiguration::defaultConfiguration();
    config.setLocalCertificateChain(chain);
    config.setPrivateKey(key);
    config.setPeerVerifyMode(QSslSocket::VerifyNone);  // browsers are not asked for certificates
    config.setProtocol(QSsl::TlsV1_2OrLater);
    return config;
}

QString peerText(const QTcpSocket* socket)
{
    return socket->peerAddress().toString();
}
}  // namespace

struct WebServer::Connection {
    HttpRequestParser parser;
    QTimer deadline;
};

WebServer::WebServer(Rig& rig, const Clock& clock, QObject* parent)
    : QObject(parent),
      rig_(rig),
      clock_(clock),
      webSockets_(std::make_unique<QWebSocketServer>(QStringLiteral("ft1000cat"), QWebSocketServer::NonSecureMode)),
      guard_(clock)
{
    connect(webSockets_.get(), &QWebSocketServer::newConnection, this, &WebServer::acceptPanels);
}

WebServer::~WebServer()
{
    stop();
}

bool WebServer::listen(const QString& address, quint16 port, const std::optional<Tls>& tls, QString* error)
{
    stop();
    QString why;
    QHostAddress host;
    const QString a = address.trimmed();
    if (a.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        host = QHostAddress(QHostAddress::LocalHost);
    else if (!host.setAddress(a))
        why = QStringLiteral("Not an IP address: %1").arg(a);

    std::unique_ptr<QTcpServer> server;
    if (why.isEmpty() && tls) {
        if (!QSslSocket::supportsSsl()) {
            why = QStringLiteral("this system has no TLS library for HTTPS");
        } else if (const auto config = loadTls(*tls, &why)) {
            auto ssl = std::make_unique<QSslServer>();
            ssl->setSslConfiguration(*config);
            server = std::move(ssl);
        }
    } else if (why.isEmpty()) {
        server = std::make_unique<QTcpServer>();
    }
    if (server && !server->listen(host, port))
        why = server->errorString();
    if (!why.isEmpty()) {
        if (error != nullptr)
            *error = why;
        qCWarning(lcWeb) << "web panel not started on" << address << port << ":" << why;
        return false;
    }
    secure_ = tls.has_value();
    server_ = std::move(server);
    server_->setMaxPendingConnections(WebLimits::MaxConnections);
    connect(server_.get(), &QTcpServer::pendingConnectionAvailable, this, &WebServer::acceptConnections);
    qCInfo(lcWeb) << "web panel on" << (secure_ ? "https" : "http") << server_->serverAddress()
                  << server_->serverPort();
    return true;
}

void WebServer::stop()
{
    // The panels first: their sockets came from the TCP server, which deletes what it made.
    const bool had = sessions_.count() > 0 || !panels_.empty();
    auto panels = std::move(panels_);
    panels_.clear();
    panels.clear();  // each releases its key
    ended_.clear();
    sessions_.clear();
    if (server_) {
        server_->close();
        server_->disconnect(this);
        server_.reset();
    }
    auto connections = std::move(connections_);
    connections_.clear();
    for (auto& [socket, c] : connections) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
    upgrading_.clear();
    if (had)
        emit sessionsChanged();
}

void WebServer::setCodes(const AccessCodes& codes)
{
    QList<QByteArray> ended;
    if (codes.control != codes_.control)
        ended += sessions_.closeAll(Access::Control);
    if (codes.viewOnly != codes_.viewOnly)
        ended += sessions_.closeAll(Access::ViewOnly);
    codes_ = codes;
    closePanelsOf(ended, QStringLiteral("the access code was made anew"));
    if (!ended.isEmpty())
        emit sessionsChanged();
}

void WebServer::publishState()
{
    for (auto& [p, panel] : panels_)
        panel->pushState();
}

bool WebServer::isListening() const
{
    return server_ && server_->isListening();
}

quint16 WebServer::serverPort() const
{
    return server_ ? server_->serverPort() : 0;
}

QHostAddress WebServer::serverAddress() const
{
    return server_ ? server_->serverAddress() : QHostAddress();
}

void WebServer::acceptConnections()
{
    while (server_ && server_->hasPendingConnections()) {
        QTcpSocket* socket = server_->nextPendingConnection();
        if (socket == nullptr)
            break;
        if (static_cast<int>(connections_.size()) + panelCount() >= WebLimits::MaxConnections) {
            qCInfo(lcWeb) << "refused" << peerText(socket) << ": already" << WebLimits::MaxConnections << "connections";
            socket->abort();
            socket->deleteLater();
            continue;
        }
        auto c = std::make_unique<Connection>();
        c->deadline.setSingleShot(true);
        connect(&c->deadline, &QTimer::timeout, this,
                [this, socket] { answer(socket, HttpResponse::text(408, "The request took too long.\n")); });
        c->deadline.start(WebLimits::RequestTimeoutMs);
        connections_.emplace(socket, std::move(c));
        // Read as a transaction: a WebSocket's handshake is handed over unread.
        socket->startTransaction();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readConnection(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            dropConnection(socket);
            socket->deleteLater();
        });
        if (socket->bytesAvailable() > 0)
            readConnection(socket);
    }
}

void WebServer::dropConnection(QTcpSocket* socket)
{
    socket->disconnect(this);
    connections_.erase(socket);
}

void WebServer::readConnection(QTcpSocket* socket)
{
    const auto it = connections_.find(socket);
    if (it == connections_.end())
        return;
    HttpRequestParser& parser = it->second->parser;
    const HttpRequestParser::Status status = parser.feed(socket->readAll());
    if (status == HttpRequestParser::Status::NeedMore)
        return;
    if (status == HttpRequestParser::Status::Refused) {
        qCInfo(lcWeb) << "bad request from" << peerText(socket) << parser.refusal();
        answer(socket, HttpResponse::text(parser.refusal(), httpReason(parser.refusal()) + '\n'));
        return;
    }
    const HttpRequest request = parser.request();
    if (request.isWebSocketUpgrade() && request.path() == WebSocketPath) {
        upgrade(request, socket);
        return;
    }
    answer(socket, route(request, socket));
}

void WebServer::answer(QTcpSocket* socket, const HttpResponse& response)
{
    dropConnection(socket);
    socket->commitTransaction();
    socket->write(response.bytes());
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(ClosingGraceMs, socket, [socket] {
        socket->abort();
        socket->deleteLater();
    });
    socket->disconnectFromHost();
}

bool WebServer::fromOwnPage(const HttpRequest& request) const
{
    return isOwnOrigin(request.header("origin"), request.header("host"), secure_);
}

HttpResponse WebServer::route(const HttpRequest& request, QTcpSocket* socket)
{
    const QByteArray path = request.path();
    if (path == LoginPath || path == LogoutPath) {
        if (request.method != "POST")
            return HttpResponse{405, "text/plain; charset=utf-8", "POST only.\n", {{"Allow", "POST"}}};
        // A form posted from another site's page must not log the operator in or out.
        if (!fromOwnPage(request)) {
            qCWarning(lcWeb) << "refused" << path << "from" << peerText(socket) << "with Origin"
                             << request.header("origin");
            return HttpResponse::text(403, "Not from the panel's own page.\n");
        }
        return path == LoginPath ? login(request, peerText(socket)) : logout(request);
    }
    if (request.method != "GET" && request.method != "HEAD")
        return HttpResponse{405, "text/plain; charset=utf-8", "GET only.\n", {{"Allow", "GET, HEAD"}}};
    const auto asset = webAsset(path);
    if (!asset)
        return HttpResponse::text(404, "Not here.\n");
    HttpResponse r{200, asset->contentType, asset->body, {}};
    if (request.method == "HEAD")
        r.body.clear();
    return r;
}

HttpResponse WebServer::login(const HttpRequest& request, const QString& address)
{
    if (const qint64 ms = guard_.lockedForMs(address); ms > 0) {
        const qint64 seconds = (ms + MsPerSecond - 1) / MsPerSecond;
        qCWarning(lcWeb) << "login from" << address << "refused: locked out for" << seconds << "s";
        return HttpResponse{429,
                            "text/plain; charset=utf-8",
                            "Too many failed logins: wait a minute.\n",
                            {{"Retry-After", QByteArray::number(seconds)}}};
    }
    if (!request.header("content-type").startsWith(FormType))
        return HttpResponse::text(415, "A form with the code, please.\n");
    const QUrlQuery form(QString::fromUtf8(request.body));
    const QByteArray code = form.queryItemValue(QStringLiteral("code"), QUrl::FullyDecoded).trimmed().toLatin1();
    const Access access = codes_.check(code);
    if (access == Access::None) {
        const bool locked = guard_.failed(address);
        qCWarning(lcWeb) << "failed login from" << address << (locked ? "- locked out for a minute" : "");
        return HttpResponse::text(403, "Wrong code.\n");
    }
    guard_.succeeded(address);
    const QByteArray token = sessions_.open(access);
    if (token.isEmpty()) {
        qCWarning(lcWeb) << "login from" << address << "refused: every session is in use";
        return HttpResponse::text(503, "Every session is in use.\n");
    }
    qCInfo(lcWeb) << "login from" << address << (access == Access::Control ? "(control)" : "(view only)");
    emit sessionsChanged();
    const QJsonObject body{
        {QStringLiteral("access"), access == Access::Control ? QStringLiteral("control") : QStringLiteral("view")}};
    return HttpResponse{200,
                        "application/json",
                        QJsonDocument(body).toJson(QJsonDocument::Compact),
                        {{"Set-Cookie", SessionCookie::set(token, secure_)}}};
}

HttpResponse WebServer::logout(const HttpRequest& request)
{
    const QByteArray token = request.cookie(SessionCookie::Name);
    if (sessions_.close(token)) {
        closePanelsOf({token}, QStringLiteral("logged out"));
        emit sessionsChanged();
    }
    return HttpResponse{204, {}, {}, {{"Set-Cookie", SessionCookie::cleared(secure_)}}};
}

void WebServer::upgrade(const HttpRequest& request, QTcpSocket* socket)
{
    const QString peer = peerText(socket);
    if (!fromOwnPage(request)) {
        qCWarning(lcWeb) << "refused a WebSocket from" << peer << "with Origin" << request.header("origin") << "to"
                         << request.header("host");
        answer(socket, HttpResponse::text(403, "Not from the panel's own page.\n"));
        return;
    }
    const QByteArray token = request.cookie(SessionCookie::Name);
    if (sessions_.find(token) == Access::None) {
        qCInfo(lcWeb) << "refused a WebSocket from" << peer << ": no session";
        answer(socket, HttpResponse::text(401, "Log in first.\n"));
        return;
    }
    // One panel a session: a second tab of the same browser takes over from the first.
    closePanelsOf({token}, QStringLiteral("opened elsewhere"));
    dropConnection(socket);
    socket->rollbackTransaction();
    upgrading_[{socket->peerAddress().toString(), socket->peerPort()}] = token;
    connect(socket, &QTcpSocket::disconnected, this,
            [this, key = std::pair{socket->peerAddress().toString(), socket->peerPort()}] { upgrading_.erase(key); });
    webSockets_->handleConnection(socket);
    emit socket->readyRead();  // what already arrived is the handshake
}

void WebServer::acceptPanels()
{
    while (webSockets_->hasPendingConnections()) {
        std::unique_ptr<QWebSocket> ws(webSockets_->nextPendingConnection());
        const auto it = upgrading_.find({ws->peerAddress().toString(), ws->peerPort()});
        const QByteArray token = it == upgrading_.end() ? QByteArray() : it->second;
        if (it != upgrading_.end())
            upgrading_.erase(it);
        const Access access = sessions_.find(token);
        if (access == Access::None) {  // logged out while the handshake went on
            ws->close(QWebSocketProtocol::CloseCodePolicyViolated, QStringLiteral("no session"));
            ws.release()->deleteLater();
            continue;
        }
        auto panel = std::make_unique<PanelSession>(std::move(ws), rig_, clock_, token, access);
        PanelSession* p = panel.get();
        connect(p, &PanelSession::finished, this, [this](PanelSession* ended) {
            sessions_.setInUse(ended->token(), false);
            const auto found = panels_.find(ended);
            if (found == panels_.end())
                return;
            // It is in one of its own signals: deleted once that returned, and never after the server.
            ended_.push_back(std::move(found->second));
            panels_.erase(found);
            QTimer::singleShot(0, this, [this] { ended_.clear(); });
            emit sessionsChanged();
        });
        sessions_.setInUse(token, true);
        panels_.emplace(p, std::move(panel));
        emit sessionsChanged();
    }
}

void WebServer::closePanelsOf(const QList<QByteArray>& tokens, const QString& reason)
{
    std::vector<PanelSession*> toClose;
    for (auto& [p, panel] : panels_) {
        for (const QByteArray& t : tokens) {
            if (constantTimeEquals(t, panel->token()))
                toClose.push_back(p);
        }
    }
    for (PanelSession* p : toClose)
        p->close(reason);
}
