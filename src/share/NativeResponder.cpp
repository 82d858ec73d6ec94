// SPDX-License-Identifier: GPL-3.0-or-later
#include "NativeResponder.h"

#include "FrameAssembler.h"
#include "ShareLog.h"
#include "Timing.h"

NativeResponder::NativeResponder(NativeRadio& radio, Writer write) : radio_(radio), write_(std::move(write)) {}

NativeResponder::Kind NativeResponder::kindOf(const CatCommand& c)
{
    if (c.op == Op::StatusRequest && c.p4 > StatusKind::OneChannel)
        return Kind::Unknown;  // no such record
    if (expectedReplyBytes(c) > 0)
        return Kind::PolledOrRadioRead;
    // Any PTT but an unkey may key the radio.
    if ((c.op == Op::Ptt && c.p4 != 0) || c.op == Op::TunerStart)
        return Kind::TransmitSet;
    return isTableInstruction(c.op) ? Kind::Set : Kind::Unknown;
}

void NativeResponder::receive(const QByteArray& command)
{
    if (command.size() != FrameAssembler::CommandBytes)
        return;
    if (static_cast<int>(queue_.size()) >= MaxQueuedCommands) {
        ++dropped_;
        if (!overflowing_)
            qCWarning(lcShare) << "native port: the client writes faster than the radio answers; dropping"
                               << "its newest commands while" << MaxQueuedCommands << "wait";
        overflowing_ = true;
        return;
    }
    const auto byte = [&](int i) { return static_cast<quint8>(command[i]); };
    queue_.push_back(CatCommand{byte(0), byte(1), byte(2), byte(3), byte(4)});
    drain();
}

void NativeResponder::drain()
{
    // A reply that comes back while a command is handled (a link that runs jobs at once) only
    // clears the wait; this loop goes on with the queue.
    if (draining_)
        return;
    draining_ = true;
    while (!waitingRead_ && !queue_.empty()) {
        const CatCommand c = queue_.front();
        queue_.pop_front();
        handle(c);
    }
    if (queue_.empty())
        overflowing_ = false;
    draining_ = false;
}

void NativeResponder::handle(const CatCommand& c)
{
    switch (kindOf(c)) {
        case Kind::PolledOrRadioRead:
            ticket_ = radio_.ticket();
            if (!answerRead(c))
                waitingRead_ = c;
            return;
        case Kind::TransmitSet:
        case Kind::Set:
            switch (radio_.forwardSet(c)) {
                case Refusal::None:
                    ++answered_;
                    return;
                case Refusal::NotAuthorized:
                    qCWarning(lcShare) << "native port: transmit refused, Authorize Tx is off:" << c.hex();
                    return;
                case Refusal::ScopeSweeping:
                    qCWarning(lcShare) << "native port: transmit refused, the band scope is sweeping:" << c.hex();
                    return;
                case Refusal::Busy:
                    qCWarning(lcShare) << "native port: dropped, too many of its commands wait for the radio:"
                                       << c.hex();
                    return;
                case Refusal::LinkDown:
                    qCInfo(lcShare) << "native port: dropped, the serial port is closed:" << c.hex();
                    return;
            }
            return;
        case Kind::Unknown:
            qCWarning(lcShare) << "native port: not passed on, outside the instruction table:" << c.hex();
            return;
    }
}

bool NativeResponder::answerRead(const CatCommand& c)
{
    const PollCache::Answer a = radio_.polled(c, ticket_);
    switch (a.holding) {
        case PollCache::Holding::Current:
            answered(a.bytes);
            return true;
        case PollCache::Holding::Stale:
            return false;
        case PollCache::Holding::NotPolled:
            askRadio(c);
            return !askingRadio_;  // done already when the link ran the job at once
    }
    return true;
}

void NativeResponder::askRadio(const CatCommand& c)
{
    askingRadio_ = true;
    waitingRead_ = c;
    const quint64 generation = generation_;
    const bool asked = radio_.passThrough(c, [this, generation](const QByteArray& reply) {
        if (generation != generation_)
            return;
        askingRadio_ = false;
        waitingRead_.reset();
        answered(reply);
        drain();
    });
    if (!asked) {
        // Refused (too much of this port's work waits, or no port): the radio stays silent.
        askingRadio_ = false;
        waitingRead_.reset();
        answered(QByteArray());
    }
}

void NativeResponder::answered(const QByteArray& reply)
{
    ++answered_;
    if (!reply.isEmpty())
        write_(reply);
}

void NativeResponder::pollStored()
{
    if (!waitingForPoll())
        return;
    const CatCommand c = *waitingRead_;
    waitingRead_.reset();
    if (!answerRead(c)) {
        if (!askingRadio_)
            waitingRead_ = c;
        return;
    }
    drain();
}

void NativeResponder::stopWaitingForPoll()
{
    if (!waitingForPoll())
        return;
    const CatCommand c = *waitingRead_;
    waitingRead_.reset();
    askRadio(c);
    if (!askingRadio_)
        drain();
}

void NativeResponder::reset()
{
    ++generation_;
    queue_.clear();
    waitingRead_.reset();
    askingRadio_ = false;
}
