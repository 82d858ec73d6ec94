// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A rigctld-compatible TCP server: logging and digital-mode programs share the radio through it.
// Runs on the thread of its owner (the window's thread) and never blocks it: every reply is made
// from the backend's snapshot at once, and sets only queue jobs.
//
// Safety: a client may key the transmitter only while the backend says transmitting is authorized.
// When the client that keyed it disconnects, or the server stops (also when it is destroyed with the
// program), the transmitter is unkeyed at once. The backend must outlive the server.

#include "LineAssembler.h"

#include <QHostAddress>
#include <QObject>
#include <QString>
#include <map>
#include <memory>

class QTcpServer;
class QTcpSocket;
class Rig;

class RigctlServer : public QObject {
    Q_OBJECT
public:
    static constexpr int MaxClients = 16;
    static constexpr int MaxLineBytes = LineAssembler::DefaultMaxLine;
    // A client whose replies wait unsent past this many bytes is not read until they drain, and is
    // closed if they stay there for StalledCloseMs.
    static constexpr qint64 MaxUnsentBytes = 64 * 1024;
    static constexpr int StalledCloseMs = 10 * 1000;
    // Lines one client may have handled in one turn of the event loop: the rest waits its turn.
    static constexpr int MaxLinesPerTurn = 32;
    // What the socket may hold of a client's bytes not yet handled.
    static constexpr qint64 ReadBufferBytes = 16 * 1024;

    explicit RigctlServer(Rig& backend, QObject* parent = nullptr);
    ~RigctlServer() override;

    // Starts listening (stopping first when already listening). Port 0 picks a free port.
    bool listen(const QHostAddress& address, quint16 port, QString* error = nullptr);
    // The address as text: an IP address, or "localhost".
    bool listen(const QString& address, quint16 port, QString* error = nullptr);
    // Closes every client and stops listening; unkeys a transmitter a client keyed.
    void stop();

    bool isListening() const;
    quint16 serverPort() const;
    QHostAddress serverAddress() const;
    int clientCount() const { return static_cast<int>(clients_.size()); }

    // A client that sends nothing for this long is closed; 0 never closes one. Applies to new
    // clients and to the quiet time of those connected.
    void setIdleTimeoutMs(int ms);
    int idleTimeoutMs() const { return idleMs_; }
    // Tests: a shorter wait before a client stuck above MaxUnsentBytes is closed.
    void setStalledCloseMs(int ms) { stalledCloseMs_ = ms; }

    // What the limits have held so far, for tests and benches: the most reply bytes any client
    // had waiting unsent when the server stopped reading it, and the most lines handled for one
    // client in one turn.
    qint64 mostUnsentBytes() const { return mostUnsent_; }
    int mostLinesInATurn() const { return mostLines_; }

signals:
    void clientCountChanged(int count);

private:
    struct Client;
    void acceptClients();
    void serveClient(QTcpSocket* socket);
    void serveLater(QTcpSocket* socket, Client& client);
    void repliesLeft(QTcpSocket* socket);
    void dropClient(QTcpSocket* socket);
    void closeSoon(QTcpSocket* socket);

    Rig& backend_;
    QTcpServer* server_;
    std::map<QTcpSocket*, std::unique_ptr<Client>> clients_;
    int idleMs_ = 0;
    int stalledCloseMs_ = StalledCloseMs;
    qint64 mostUnsent_ = 0;
    int mostLines_ = 0;
};
