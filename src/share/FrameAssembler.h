// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Five-byte commands out of a byte stream, framed as the radio frames them: five bytes make a
// command, and a pause of more than FrameTimeout between two bytes ends the frame, so its stray
// bytes are dropped and the next byte starts a new one. A single lost or extra byte therefore costs
// one command, not every later one.
//
// The caller passes the time each byte arrived, so the framing is tested without sleeping; a host
// that waits for bytes also asks expiresAt() when to drop a frame that stopped coming.

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <chrono>
#include <optional>

class FrameAssembler {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr int CommandBytes = 5;
    static constexpr std::chrono::milliseconds FrameTimeout{50};

    // One byte; the finished command when it was the fifth.
    std::optional<QByteArray> push(char byte, Clock::time_point at);
    // Bytes that arrived together (one read); every command they finish, in order.
    QList<QByteArray> feed(QByteArrayView bytes, Clock::time_point at);

    // Drops an unfinished frame whose bytes stopped coming before now - FrameTimeout.
    void expire(Clock::time_point now);
    // When the unfinished frame expires; nothing while no frame is open.
    std::optional<Clock::time_point> expiresAt() const;

    bool idle() const { return frame_.isEmpty(); }
    // Stray bytes dropped so far.
    qint64 droppedBytes() const { return dropped_; }
    void reset() { frame_.clear(); }

private:
    QByteArray frame_;
    Clock::time_point lastByte_{};
    qint64 dropped_ = 0;
};
