// SPDX-License-Identifier: GPL-3.0-or-later
#include "StateOutbox.h"

std::optional<QByteArray> StateOutbox::offer(const QByteArray& state, qint64 unsentBytes)
{
    if (unsentBytes > 0) {
        // Replaces an older waiting state; one equal to what the browser will have anyway waits not.
        if (state == lastWritten_)
            waiting_.reset();
        else
            waiting_ = state;
        return std::nullopt;
    }
    waiting_.reset();
    return write(state);
}

std::optional<QByteArray> StateOutbox::drained(qint64 unsentBytes)
{
    if (unsentBytes > 0 || !waiting_)
        return std::nullopt;
    const QByteArray next = *waiting_;
    waiting_.reset();
    return write(next);
}

std::optional<QByteArray> StateOutbox::write(const QByteArray& state)
{
    if (state == lastWritten_)
        return std::nullopt;
    lastWritten_ = state;
    return state;
}
