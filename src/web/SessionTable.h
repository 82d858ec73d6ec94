// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The logged-in browsers: a session is a random token (the cookie's value) with the access its code
// granted. At most WebLimits::MaxSessions exist; when all are taken, a new login replaces the oldest
// session that has no panel open (a tab closed without logging out), and is refused when every one
// has. Tokens are looked up by comparing with each one in constant time.

#include "AccessCodes.h"

#include <QByteArray>
#include <QList>
#include <vector>

class SessionTable {
public:
    // A new session's token; empty when every session is taken and in use.
    QByteArray open(Access access);
    Access find(const QByteArray& token) const;
    bool close(const QByteArray& token);
    // Ends every session of one access (its code was made anew); returns their tokens.
    QList<QByteArray> closeAll(Access access);
    void clear() { sessions_.clear(); }
    // A panel (the WebSocket) of the session opened or closed.
    void setInUse(const QByteArray& token, bool inUse);
    int count() const { return static_cast<int>(sessions_.size()); }

private:
    struct Session {
        QByteArray token;
        Access access;
        bool inUse = false;
    };
    int indexOf(const QByteArray& token) const;

    std::vector<Session> sessions_;  // oldest first
};
