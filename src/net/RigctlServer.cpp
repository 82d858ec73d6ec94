// SPDX-License-Identifier: GPL-3.0-or-later
#include "RigctlServer.h"

#include "NetLog.h"
#include "Rig.h"
#include "RigctlSession.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace {
// How long the replies to a client being closed may take to leave before the connection is cut.
constexpr int ClosingGraceMs = 1000;
}  // namespace

struct RigctlServer::Client {
    explicit Client(Rig& backend) : session(backend) {}
    LineAssembler lines{MaxLineBytes};
    RigctlSession session;
    bool closing = false;  // after "q": the rest of what it sent is ignored
};

RigctlServer::RigctlServer(Rig& backend, QObject* parent)
    : QObject(parent), backend_(backend), server_(new QTcpServer(this))
{
    connect(server_, &QTcpServer::newConnection, this, &RigctlServer::acceptClients);
}

RigctlServer::~RigctlServer()
{
    stop();
}

bool RigctlServer::listen(const QHostAddress& address, quint16 port, QString* error)
{
    stop();
    if (!server_->listen(address, port)) {
        if (error != nullptr)
            *error = server_->errorString();
        qCWarning(lcNet) << "cannot listen on" << address << port << server_->errorString();
        return false;
    }
    qCInfo(lcNet) << "listening on" << server_->serverAddress() << server_->serverPort();
    return true;
}

bool RigctlServer::listen(const QString& address, quint16 port, QString* error)
{
    const QString a = address.trimmed();
    QHostAddress host;
    if (a.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        host = QHostAddress(QHostAddress::LocalHost);
    else if (!host.setAddress(a)) {
        if (error != nullptr)
            *error = QStringLiteral("Not an IP address: %1").arg(a);
        return false;
    }
    return listen(host, port, error);
}

void RigctlServer::stop()
{
    server_->close();
    const bool had = !clients_.empty();
    auto clients = std::move(clients_);
    clients_.clear();
    for (auto& [socket, client] : clients) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
    if (had)
        emit clientCountChanged(0);
}

bool RigctlServer::isListening() const
{
    return server_->isListening();
}
quint16 RigctlServer::serverPort() const
{
    return server_->serverPort();
}
QHostAddress RigctlServer::serverAddress() const
{
    return server_->serverAddress();
}

void RigctlServer::acceptClients()
{
    while (QTcpSocket* socket = server_->nextPendingConnection()) {
        if (clientCount() >= MaxClients) {
            qCInfo(lcNet) << "refused" << socket->peerAddress() << ": already" << MaxClients << "clients";
            socket->abort();
            socket->deleteLater();
            continue;
        }
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        clients_.emplace(socket, std::make_unique<Client>(backend_));
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readClient(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            dropClient(socket);
            socket->deleteLater();
        });
        qCInfo(lcNet) << "client" << socket->peerAddress() << socket->peerPort();
        emit clientCountChanged(clientCount());
    }
}

void RigctlServer::readClient(QTcpSocket* socket)
{
    const auto it = clients_.find(socket);
    if (it == clients_.end())
        return;
    Client& client = *it->second;
    const QByteArray bytes = socket->readAll();
    if (client.closing)
        return;
    for (const QByteArray& line : client.lines.feed(bytes)) {
        // A client's text is whatever it sends: decoded leniently, never trusted.
        const RigctlSession::Result r = client.session.handleLine(QString::fromLatin1(line));
        qCDebug(lcNet) << socket->peerPort() << line << "->" << r.reply;
        socket->write(r.reply);
        if (r.close) {
            client.closing = true;
            socket->disconnectFromHost();
            return;
        }
    }
    if (client.lines.overflowed()) {
        qCInfo(lcNet) << "client" << socket->peerPort() << "sent a line longer than" << MaxLineBytes << "bytes";
        // The replies already made still go out; the connection is gone for the server at once.
        dropClient(socket);
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QTimer::singleShot(ClosingGraceMs, socket, &QTcpSocket::abort);
        socket->disconnectFromHost();
    }
}

void RigctlServer::dropClient(QTcpSocket* socket)
{
    const auto it = clients_.find(socket);
    if (it == clients_.end())
        return;
    clients_.erase(it);  // its session goes, and the rig unkeys a transmitter it keyed
    socket->disconnect(this);
    emit clientCountChanged(clientCount());
}
