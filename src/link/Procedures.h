// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The radio link's procedures, run on the link thread: exactly the bytes and waits the radio needs.

#include "CatCommand.h"
#include "Timing.h"

#include <QByteArray>
#include <functional>

class CatPort;

// The frame that sets a VFO: frq in units of 10 Hz as packed BCD, least significant pair first.
// VFO 1 gives 0x0A, VFO 2 gives 0x8A, anything else an instruction byte of 0.
CatCommand setFreqCommand(qint64 frq, int vfo);

// Sends the frequency frame when the port is open.
void SetFreq(CatPort& port, qint64 frq, int vfo);

// One status read: bytes 1-16 from the current-VFO reply, then bytes 17-32 of the both-VFOs reply.
struct StatusReply {
    bool ran = false;  // false when the port was closed
    QByteArray record;
    QByteArray currentVfo, bothVfos;  // the two replies as the radio gave them
    bool cut = false;                 // stopped after the current-VFO reply, as asked
};
// goOn, when given, sees the current-VFO reply and may stop the read there (false).
StatusReply Get_Status32(CatPort& port, const std::function<bool(const QByteArray&)>& goOn = nullptr);

// One VFO's record alone, for following the knob: VFO-A's from the current-VFO reply, VFO-B's from its
// half of the both-VFOs reply. `record` is that VFO's 16 bytes, empty unless the reply came whole.
struct VfoReading {
    bool ran = false;  // false when the port was closed
    QByteArray reply;  // as the radio gave it
    QByteArray record;
};
VfoReading readVfoRecord(CatPort& port, bool vfoB);

// One flags read with P4 = arg: the count of bytes waiting after the wait, and the bytes.
struct FlagsReply {
    bool ran = false;
    int waiting = 0;
    QByteArray bytes;
};
FlagsReply GetFlags(CatPort& port, int arg);

// The four meter reads of a poll; stops after them (flags are not read) if any reply is empty.
struct MeterReplies {
    bool ran = false;
    QByteArray mainS, subS, transmit, pitch;
    bool complete() const { return !mainS.isEmpty() && !subS.isEmpty() && !transmit.isEmpty() && !pitch.isEmpty(); }
};
MeterReplies readMeters(CatPort& port, int selector);
// The same four reads in two halves, in the same order: the receivers' S-meters, then the transmit
// meter and the CW pitch.
void readReceiveMeters(CatPort& port, MeterReplies& into);
void readTransmitMeters(CatPort& port, int selector, MeterReplies& into);

// A whole poll as the timer runs it: status; on a reply, meters; when they all answered, flags (arg 1).
struct PollReplies {
    StatusReply status;
    MeterReplies meters;
    FlagsReply flags;
};

// The first byte of a reply as a number, 0 when the reply is empty (a missing reply reads as 0).
int firstByte(const QByteArray& reply);
