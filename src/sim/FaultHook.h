// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Where line faults plug into the virtual radio: a command the radio never hears, a reply that is
// corrupted, cut short, late, doubled or missing, bytes nobody asked for, a terminal that goes away. The radio works
// without one. The hook is called with the radio locked: it must not call back into the radio.

#include <QByteArray>

// The reply to one command as it is about to go on the line.
struct RadioReply {
    QByteArray bytes;      // empty: the radio stays silent
    int extraDelayMs = 0;  // a late reply starts this much after the command has arrived
    int closeLineMs = 0;   // > 0: instead of answering, the host closes its terminal for this long
};

class FaultHook {
public:
    virtual ~FaultHook() = default;

    // Before the radio acts on a command: false drops it, the radio's state stays as it was.
    virtual bool admit(const QByteArray& command)
    {
        Q_UNUSED(command);
        return true;
    }

    // After the radio has acted: change the bytes (corrupt, truncate, double, silence) or the delay.
    virtual void shape(const QByteArray& command, RadioReply& reply)
    {
        Q_UNUSED(command);
        Q_UNUSED(reply);
    }

    // Asked by the host now and then while the line is idle: bytes to send unasked (nothing by default).
    virtual QByteArray unsolicited(qint64 nowMs)
    {
        Q_UNUSED(nowMs);
        return {};
    }
};
