// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The answer to "\dump_state": the capabilities a network client learns when it opens the radio,
// in the line order of protocol version 1, ending with "done".

#include "RadioRange.h"

#include <QStringList>

namespace DumpStateValue {
constexpr int ProtocolVersion = 1;
constexpr int RigModel = 2;  // hamlib's network rig: what the client thinks it talks to
constexpr int ItuRegion = 2;
constexpr qint64 RxLowHz = RadioRange::RxLowHz;
constexpr qint64 RxHighHz = RadioRange::RxHighHz;
constexpr qint64 TxLowHz = RadioRange::TxLowHz;
constexpr qint64 TxHighHz = RadioRange::TxHighHz;
constexpr int TxLowMw = 5000;
constexpr int TxHighMw = 200000;       // the Mark-V's 200 W; the plain MP stops at 100 W
constexpr unsigned VfoMask = 0x3;      // VFOA | VFOB
constexpr unsigned AntennaMask = 0x3;  // ANT A and ANT B
constexpr int TuningStepHz = 10;
constexpr int MaxRitHz = 9990;
constexpr int MaxXitHz = 9990;
constexpr unsigned LevelStrength = 0x40000000;
constexpr int PttRig = 0x1;
// No reply of the server waits on the radio: gets come from the polled state, sets are queued.
// The client's time-out only has to cover the network.
constexpr int TimeoutMs = 1000;
}  // namespace DumpStateValue

// The block, one entry per line, the last one "done".
QStringList dumpStateLines();
