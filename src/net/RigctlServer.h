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

signals:
    void clientCountChanged(int count);

private:
    struct Client;
    void acceptClients();
    void readClient(QTcpSocket* socket);
    void dropClient(QTcpSocket* socket);

    Rig& backend_;
    QTcpServer* server_;
    std::map<QTcpSocket*, std::unique_ptr<Client>> clients_;
};
