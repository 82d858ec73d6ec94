// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The web panel's server: the page, the login and the panels' WebSockets on one port, over HTTPS and
// WSS only when given a certificate and key. Runs on the thread of its owner and never blocks it.
//
// Every request but the page itself needs a session: a login turns a valid access code into a
// session cookie (HttpOnly, SameSite=Strict); failures are logged and five from one address lock it
// out for a minute. The WebSocket's handshake is refused unless it carries a session and its Origin
// is the panel's own, so a page from elsewhere cannot drive the radio through the operator's
// browser. Requests are read with hard limits (head, body, time, connections at once) before any of
// this is looked at. The rig and the clock must outlive the server.

#include "AccessCodes.h"
#include "LoginGuard.h"
#include "SessionTable.h"

#include <QHostAddress>
#include <QObject>
#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class Clock;
class PanelSession;
class QTcpServer;
class QTcpSocket;
class QWebSocketServer;
class Rig;
struct HttpRequest;
struct HttpResponse;

class WebServer : public QObject {
    Q_OBJECT
public:
    struct Tls {
        QString certFile;  // PEM
        QString keyFile;   // PEM, RSA or EC, not encrypted
    };

    WebServer(Rig& rig, const Clock& clock, QObject* parent = nullptr);
    ~WebServer() override;

    // Starts listening (stopping first); with tls, HTTPS and WSS only. Port 0 picks a free port.
    // The address as text: an IP address, or "localhost".
    bool listen(const QString& address, quint16 port, const std::optional<Tls>& tls, QString* error = nullptr);
    // Ends every session and stops listening; a panel's key is released.
    void stop();
    // The codes in force. A code that differs from the one before ends the sessions it opened.
    void setCodes(const AccessCodes& codes);
    // The rig's snapshot may have changed: every open panel gets it.
    void publishState();

    bool isListening() const;
    bool isSecure() const { return secure_; }
    quint16 serverPort() const;
    QHostAddress serverAddress() const;
    int sessionCount() const { return sessions_.count(); }
    int panelCount() const { return static_cast<int>(panels_.size()); }

signals:
    void sessionsChanged();

private:
    struct Connection;
    void acceptConnections();
    void readConnection(QTcpSocket* socket);
    void dropConnection(QTcpSocket* socket);
    void answer(QTcpSocket* socket, const HttpResponse& response);
    HttpResponse route(const HttpRequest& request, QTcpSocket* socket);
    HttpResponse login(const HttpRequest& request, const QString& address);
    HttpResponse logout(const HttpRequest& request);
    // Hands the socket to the WebSocket server, or answers why not.
    void upgrade(const HttpRequest& request, QTcpSocket* socket);
    void acceptPanels();
    void closePanelsOf(const QList<QByteArray>& tokens, const QString& reason);
    bool fromOwnPage(const HttpRequest& request) const;

    Rig& rig_;
    const Clock& clock_;
    std::unique_ptr<QTcpServer> server_;
    std::unique_ptr<QWebSocketServer> webSockets_;
    bool secure_ = false;
    AccessCodes codes_;
    LoginGuard guard_;
    SessionTable sessions_;
    std::map<QTcpSocket*, std::unique_ptr<Connection>> connections_;
    // Handed to the WebSocket server, by peer, until its handshake completes: the session's token.
    std::map<std::pair<QString, quint16>, QByteArray> upgrading_;
    std::map<PanelSession*, std::unique_ptr<PanelSession>> panels_;
    std::vector<std::unique_ptr<PanelSession>> ended_;
};
