// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Failed logins by address: five failures lock the address out for a minute, so the codes cannot be
// guessed at the speed of the network. A success forgets the address's failures. The memory of
// failures is bounded: when too many addresses are remembered the ones not locked are forgotten.

#include <QHash>
#include <QString>

class Clock;

class LoginGuard {
public:
    explicit LoginGuard(const Clock& clock) : clock_(clock) {}

    // Milliseconds the address stays locked out; 0 when it may try.
    qint64 lockedForMs(const QString& address) const;
    // Counts a failure; true when it is the one that locks the address out.
    bool failed(const QString& address);
    void succeeded(const QString& address);
    int trackedAddresses() const { return static_cast<int>(entries_.size()); }

private:
    struct Entry {
        int failures = 0;
        qint64 lockedUntil = 0;
    };
    void forgetUnlocked();

    const Clock& clock_;
    QHash<QString, Entry> entries_;
};
