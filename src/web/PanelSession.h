// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One open panel: a logged-in browser's WebSocket. It is a client of the rig for as long as it
// lives, so its sets are the rig's jobs like any door's and its key passes the rig's one transmit
// gate. It gets the state whenever the snapshot changes (only the newest while it reads slowly), and
// a control session's messages become sets: tuning coalesced, the transmit key held only while the
// page keeps saying so. A view-only session's messages are refused. A message over
// WebLimits::MaxMessageBytes ends it. Ending it, for whatever reason, releases its key.

#include "AccessCodes.h"
#include "PanelCommand.h"
#include "PttHold.h"
#include "Rig.h"
#include "StateOutbox.h"
#include "TuneCoalescer.h"

#include <QObject>
#include <QTimer>
#include <memory>

class Clock;
class QWebSocket;

class PanelSession : public QObject {
    Q_OBJECT
public:
    // Takes the socket. The rig and the clock must outlive the session.
    PanelSession(std::unique_ptr<QWebSocket> socket, Rig& rig, const Clock& clock, const QByteArray& token,
                 Access access, QObject* parent = nullptr);
    ~PanelSession() override;

    const QByteArray& token() const { return token_; }
    Access access() const { return access_; }
    // The snapshot may have changed: the page gets it unless it has it already.
    void pushState();
    // Ends the session from the server's side (logged out, its code made anew, the server stopping).
    void close(const QString& reason);

signals:
    // The WebSocket is gone; the server deletes the session.
    void finished(PanelSession* session);

private:
    void onMessage(const QString& text);
    void apply(const PanelCommand& c);
    void handOnTuning();
    void pressKey(bool down);
    void tickKey();
    void refuse(const QString& what, const QString& why);
    void send(const QByteArray& json);
    void end();

    std::unique_ptr<QWebSocket> socket_;
    RigClient client_;
    const Clock& clock_;
    QByteArray token_;
    Access access_;
    StateOutbox outbox_;
    TuneCoalescer tuning_;
    PttHold key_;
    QTimer keyTimer_;     // watches the held key's repeats
    QTimer tuningTimer_;  // hands on coalesced tuning once the messages that came together are read
    bool ended_ = false;
};

// Why a set was refused, for the page.
QString refusalText(Refusal r);
