// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatPort.h"

#include "Clock.h"
#include "LinkLog.h"
#include "SerialPort.h"
#include "Timing.h"

#include <algorithm>

bool CatPort::isOpen() const
{
    return port_.isOpen();
}

bool CatPort::failed() const
{
    return port_.failed();
}

void CatPort::clear()
{
    const QByteArray dropped = port_.readAll();
    if (!dropped.isEmpty())
        qCDebug(lcTraffic) << "drop" << dropped.toHex(' ');
}

void CatPort::send(const CatCommand& command)
{
    sendRaw(command.bytes());
}

void CatPort::sendRaw(const QByteArray& bytes)
{
    if (!port_.isOpen())
        return;
    qCDebug(lcTraffic) << "send" << bytes.toHex(' ');
    port_.write(bytes);
}

bool CatPort::sleep(int ms)
{
    return clock_.sleepMs(ms);
}

QByteArray CatPort::read()
{
    const QByteArray r = port_.readAll();
    qCDebug(lcTraffic) << "recv" << r.size() << r.left(64).toHex(' ');
    return r;
}

int CatPort::waiting()
{
    return port_.bytesWaiting();
}

QByteArray CatPort::request(const CatCommand& command, int waitMs, bool clearFirst, int* waitingCount)
{
    // With the fast link a request may end while its reply is still coming (a doubled or noisy
    // reply): what is left over belongs to nobody, so every request that waits for a reply starts
    // clean. The exact mode clears only where its procedures say so.
    if (fastLink() && expectedReplyBytes(command) > 0) {
        // A reply that the last request gave up on may still be coming in: let its tail arrive first,
        // or it would be taken for the start of this reply.
        // When part of it came, the rest is on its way: wait for that many bytes (at most a slice).
        if (missing_ > 0)
            waitForBytes(missing_, FastLink::WaitSliceMs);
        else if (overran_)
            waitForQuiet(FastLink::WaitSliceMs);
        clear();
    } else if (clearFirst) {
        clear();
    }
    send(command);
    return awaitReply(command, waitMs, waitingCount);
}

QByteArray CatPort::awaitReply(const CatCommand& sent, int waitMs, int* waitingCount)
{
    const int expected = expectedReplyBytes(sent);
    if (!fastLink() || expected <= 0) {
        sleep(waitMs);
        if (waitingCount)
            *waitingCount = waiting();
        return read();
    }
    waitForBytes(expected, waitMs);
    QByteArray reply = read();
    overran_ = reply.size() < expected;
    missing_ = reply.isEmpty() ? 0 : std::max(0, expected - static_cast<int>(reply.size()));
    const int came = static_cast<int>(reply.size());
    // The first expected bytes complete the request; more than that is a doubled or noisy reply.
    if (reply.size() > expected) {
        qCDebug(lcTraffic) << "drop" << reply.mid(expected).toHex(' ');
        reply.truncate(expected);
    }
    // The count is of every byte that came, as in the exact mode: a flags reply longer than its
    // length is not decoded.
    if (waitingCount)
        *waitingCount = came;
    return reply;
}

void CatPort::waitForBytes(int count, int ceilingMs)
{
    const qint64 deadline = clock_.nowMs() + ceilingMs;
    const auto left = [&] { return deadline - clock_.nowMs(); };
    // The pauses between arrivals inside the reply teach the quiet time (see QuietTime).
    int seen = port_.bytesWaiting();
    qint64 lastArrival = clock_.nowMs();
    while (!stopping() && port_.bytesWaiting() < count) {
        if (left() <= 0) {
            quiet_.endReply();
            return;
        }
        const int slice = static_cast<int>(std::min<qint64>(left(), FastLink::WaitSliceMs));
        const qint64 before = clock_.nowMs();
        if (!port_.waitForReadyRead(slice) && clock_.nowMs() - before < slice / 2) {
            // The port cannot wait (closed, or failing underneath): sit out the rest of the wait as
            // the exact mode would, rather than asking it again and again.
            sleep(static_cast<int>(std::max<qint64>(0, left())));
            return;
        }
        const int now = port_.bytesWaiting();
        if (now > seen) {
            if (seen > 0)
                quiet_.observeGap(static_cast<int>(clock_.nowMs() - lastArrival));
            lastArrival = clock_.nowMs();
            seen = now;
        }
    }
    quiet_.endReply();
    // Complete: read on while more bytes follow soon (a reply sent twice), within the ceiling.
    waitForQuiet(static_cast<int>(std::max<qint64>(0, left())));
}

void CatPort::waitForQuiet(int limitMs)
{
    const qint64 deadline = clock_.nowMs() + limitMs;
    while (!stopping()) {
        const qint64 left = deadline - clock_.nowMs();
        if (left <= 0 || !port_.waitForReadyRead(static_cast<int>(std::min<qint64>(left, quiet_.quietMs()))))
            return;
    }
}
