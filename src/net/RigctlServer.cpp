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
    QList<QByteArray> waiting;  // lines received and not yet handled
    RigctlSession session;
    QTimer* idle = nullptr;     // closes a client that sends nothing
    QTimer* stalled = nullptr;  // closes a client that does not take its replies
    bool servingLater = false;  // a turn of its own is already asked for
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

void RigctlServer::setIdleTimeoutMs(int ms)
{
    idleMs_ = ms > 0 ? ms : 0;
    for (auto& [socket, client] : clients_) {
        client->idle->setInterval(idleMs_);
        if (idleMs_ > 0)
            client->idle->start();
        else
            client->idle->stop();
    }
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
        // The socket stops taking bytes from the system once this much waits unhandled, so a client
        // that sends faster than it is served is held back by TCP, not by our memory.
        socket->setReadBufferSize(ReadBufferBytes);
        auto client = std::make_unique<Client>(backend_);
        client->idle = new QTimer(socket);
        client->idle->setSingleShot(true);
        client->idle->setInterval(idleMs_);
        connect(client->idle, &QTimer::timeout, this, [this, socket] {
            qCInfo(lcNet) << "client" << socket->peerPort() << "sent nothing for" << idleMs_ / 1000 << "s: closed";
            closeSoon(socket);
        });
        if (idleMs_ > 0)
            client->idle->start();
        client->stalled = new QTimer(socket);
        client->stalled->setSingleShot(true);
        connect(client->stalled, &QTimer::timeout, this, [this, socket] {
            qCInfo(lcNet) << "client" << socket->peerPort() << "does not take its replies: closed";
            dropClient(socket);
            socket->abort();
            socket->deleteLater();
        });
        clients_.emplace(socket, std::move(client));
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            const auto it = clients_.find(socket);
            if (it != clients_.end() && idleMs_ > 0)
                it->second->idle->start();
            serveClient(socket);
        });
        connect(socket, &QTcpSocket::bytesWritten, this, [this, socket] { repliesLeft(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            dropClient(socket);
            socket->deleteLater();
        });
        qCInfo(lcNet) << "client" << socket->peerAddress() << socket->peerPort();
        emit clientCountChanged(clientCount());
    }
}

void RigctlServer::serveClient(QTcpSocket* socket)
{
    const auto it = clients_.find(socket);
    if (it == clients_.end())
        return;
    Client& client = *it->second;
    int handled = 0;
    while (handled < MaxLinesPerTurn) {
        const qint64 unsent = socket->bytesToWrite();
        if (unsent >= MaxUnsentBytes) {
            // Read no more until the replies drain (repliesLeft); close it if they never do.
            mostUnsent_ = std::max(mostUnsent_, unsent);
            if (!client.stalled->isActive())
                client.stalled->start(stalledCloseMs_);
            break;
        }
        if (client.waiting.isEmpty()) {
            if (client.lines.overflowed()) {
                qCInfo(lcNet) << "client" << socket->peerPort() << "sent a line longer than" << MaxLineBytes << "bytes";
                closeSoon(socket);  // the replies already made still go out
                return;
            }
            if (socket->bytesAvailable() == 0)
                break;
            client.waiting = client.lines.feed(socket->read(ReadBufferBytes));
            continue;
        }
        const QByteArray line = client.waiting.takeFirst();
        // A client's text is whatever it sends: decoded leniently, never trusted.
        const RigctlSession::Result r = client.session.handleLine(QString::fromLatin1(line));
        qCDebug(lcNet) << socket->peerPort() << line << "->" << r.reply;
        socket->write(r.reply);
        ++handled;
        if (r.close) {
            closeSoon(socket);
            return;
        }
    }
    mostLines_ = std::max(mostLines_, handled);
    if (handled == MaxLinesPerTurn && socket->bytesToWrite() < MaxUnsentBytes)
        serveLater(socket, client);
}

void RigctlServer::serveLater(QTcpSocket* socket, Client& client)
{
    if (client.servingLater)
        return;
    client.servingLater = true;
    // Behind whatever else the event loop has to do: the window, the other clients.
    QTimer::singleShot(0, socket, [this, socket] {
        const auto it = clients_.find(socket);
        if (it == clients_.end())
            return;
        it->second->servingLater = false;
        serveClient(socket);
    });
}

void RigctlServer::repliesLeft(QTcpSocket* socket)
{
    const auto it = clients_.find(socket);
    if (it == clients_.end() || !it->second->stalled->isActive())
        return;
    if (socket->bytesToWrite() >= MaxUnsentBytes / 2)
        return;
    it->second->stalled->stop();
    serveLater(socket, *it->second);
}

void RigctlServer::closeSoon(QTcpSocket* socket)
{
    // Its place is free at once and nothing more it sends is read; what it was answered may still
    // leave, for a moment, even if it never reads.
    dropClient(socket);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(ClosingGraceMs, socket, &QTcpSocket::abort);
    socket->disconnectFromHost();
}

void RigctlServer::dropClient(QTcpSocket* socket)
{
    const auto it = clients_.find(socket);
    if (it == clients_.end())
        return;
    it->second->idle->stop();
    it->second->stalled->stop();
    clients_.erase(it);  // its session goes, and the rig unkeys a transmitter it keyed
    socket->disconnect(this);
    emit clientCountChanged(clientCount());
}
