// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The states a session's browser has yet to get. A browser that reads slower than the radio changes
// (a phone in a pocket, a slow link) must not make the server hold a growing backlog: a state is
// written only when the previous one has left, and meanwhile only the newest state waits, replacing
// the one before. A state equal to the last one written is not written again.

#include <QByteArray>
#include <optional>

class StateOutbox {
public:
    // A new state; returns it when it should be written now (nothing is waiting to leave).
    std::optional<QByteArray> offer(const QByteArray& state, qint64 unsentBytes);
    // What was written has left down to `unsentBytes`: the waiting state, when it may go now.
    std::optional<QByteArray> drained(qint64 unsentBytes);
    bool waiting() const { return waiting_.has_value(); }

private:
    std::optional<QByteArray> write(const QByteArray& state);

    QByteArray lastWritten_;
    std::optional<QByteArray> waiting_;
};
