// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameAssembler.h"

std::optional<QByteArray> FrameAssembler::push(char byte, Clock::time_point at)
{
    expire(at);
    frame_.append(byte);
    lastByte_ = at;
    if (frame_.size() < CommandBytes)
        return std::nullopt;
    QByteArray command;
    command.swap(frame_);
    return command;
}

QList<QByteArray> FrameAssembler::feed(QByteArrayView bytes, Clock::time_point at)
{
    QList<QByteArray> commands;
    for (const char b : bytes) {
        if (std::optional<QByteArray> c = push(b, at))
            commands.append(std::move(*c));
    }
    return commands;
}

void FrameAssembler::expire(Clock::time_point now)
{
    if (!frame_.isEmpty() && now - lastByte_ > FrameTimeout) {
        dropped_ += frame_.size();
        frame_.clear();
    }
}

std::optional<FrameAssembler::Clock::time_point> FrameAssembler::expiresAt() const
{
    if (frame_.isEmpty())
        return std::nullopt;
    return lastByte_ + FrameTimeout;
}
