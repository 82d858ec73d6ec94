// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The one place that decides time on the link: every fixed wait the radio needs, the length of each
// reply the program asks for, and how long a fast-link wait may block before it looks at the clock.

#include "CatCommand.h"

namespace Wait {
// Every fixed wait on the link, in milliseconds. Those after a request are also the ceiling of a
// fast-link wait for its reply; the others (after a frequency set, between upload commands, a
// stepper's pace) are time the radio itself needs and stay as they are in both modes.
constexpr int StatusCurrentVfo = 100;
constexpr int StatusBothVfos = 200;
constexpr int Flags = 100;
constexpr int Meter = 50;
constexpr int ScopeMeter = 100;
constexpr int ScopeTune = 50;
constexpr int ChannelQueryShort = 150;  // "M > A", memory window opening
constexpr int ChannelQueryLong = 250;   // "A > M", "VFO/M"
constexpr int OneChannel = 250;
constexpr int AllMemories = 5000;
constexpr int Upload = 50;
constexpr int Stepper = 50;
constexpr int NavigatorRead = 75;
constexpr int PortSettle = 50;
// After each step of setting VFO-B's mode (select VFO-B, mode, select VFO-A), as the upload leaves
// after its mode command and its return to VFO operation, so the radio has acted on one before the next.
constexpr int VfoModeStep = 50;
}  // namespace Wait

namespace FastLink {
// A fast wait blocks on the port in slices no longer than this, so that closing the program never
// waits out a whole read-out.
constexpr int WaitSliceMs = 100;
}  // namespace FastLink

// The number of bytes the radio answers a command with; 0 for commands without a reply, or whose
// length the program does not rely on. A fast-link request is complete when this many have arrived.
constexpr int expectedReplyBytes(const CatCommand& command)
{
    switch (command.op) {
        case Op::StatusRequest:
            switch (command.p4) {
                case StatusKind::AllMemories:
                    return ReplySize::AllMemories;
                case StatusKind::CurrentChannel:
                    return ReplySize::CurrentChannel;
                case StatusKind::CurrentVfo:
                    return ReplySize::VfoRecord;
                case StatusKind::BothVfos:
                    return ReplySize::BothVfos;
                case StatusKind::OneChannel:
                    return ReplySize::ChannelRecord;
                default:
                    return 0;
            }
        case Op::ReadMeter:
            return ReplySize::Meter;
        case Op::ReadFlags:
            return ReplySize::Flags;
        default:
            return 0;
    }
}

// The wait after a read that the program passes on for a sharing client, as the program waits after
// the same read of its own (with the fast link, the ceiling); 0 for a command without a reply.
constexpr int replyWaitMs(const CatCommand& command)
{
    switch (command.op) {
        case Op::StatusRequest:
            switch (command.p4) {
                case StatusKind::AllMemories:
                    return Wait::AllMemories;
                case StatusKind::CurrentChannel:
                    return Wait::ChannelQueryLong;
                case StatusKind::CurrentVfo:
                    return Wait::StatusCurrentVfo;
                case StatusKind::BothVfos:
                    return Wait::StatusBothVfos;
                case StatusKind::OneChannel:
                    return Wait::OneChannel;
                default:
                    return 0;
            }
        case Op::ReadMeter:
            return Wait::Meter;
        case Op::ReadFlags:
            return Wait::Flags;
        default:
            return 0;
    }
}
