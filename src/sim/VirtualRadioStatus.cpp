// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's status replies: the VFO records and the flags.
#include "VirtualRadio.h"

#include "CatCommand.h"
#include "RadioRecords.h"

#include <utility>

namespace {
// Flag bytes of the 0xFA reply (0-based here; the program numbers them from 1).
namespace FlagBits {
constexpr int Split = 0x01, Dual = 0x02, Transmit = 0x80;                        // byte 0
constexpr int QuickMemory = 0x08, MemoryTune = 0x10, Vfo = 0x20, Memory = 0x40;  // byte 1
constexpr int Tuner = 0x02, LockB = 0x04, LockA = 0x08;                          // byte 2
constexpr int MuteB = 0x01, MuteA = 0x02;                                        // byte 5
}  // namespace FlagBits

// Bytes 4 and 5 of the flags identify the model; the program's title check looks for the Mark-V pair.
constexpr std::pair<int, int> MarkVId{0x03, 0x93};
constexpr std::pair<int, int> PlainMpId{0x02, 0x43};
}  // namespace

QByteArray VirtualRadio::statusReply(const CatCommand& c) const
{
    switch (c.p4) {
        case StatusKind::AllMemories:
            return memoryBlock();
        case StatusKind::CurrentChannel:
            return QByteArray(1, static_cast<char>(currentChannel_ - 1));
        case StatusKind::CurrentVfo:
            return encodeVfoRecord(main());
        case StatusKind::BothVfos:
            // The main receiver's record first, as in the current-VFO reply.
            return encodeVfoRecord(main()) + encodeVfoRecord(sub());
        case StatusKind::OneChannel:
            if (validChannel(c.p1))
                return encodeChannelRecord(channels_[c.p1]);
            return {};
        default:
            return {};
    }
}

QByteArray VirtualRadio::flagsReply() const
{
    QByteArray f(ReplySize::Flags, '\0');
    int b0 = 0, b1 = 0, b2 = 0, b5 = 0;
    if (split_)
        b0 |= FlagBits::Split;
    if (dual_)
        b0 |= FlagBits::Dual;
    if (transmitting_)
        b0 |= FlagBits::Transmit;
    if (!memoryMode_)
        b1 |= FlagBits::Vfo;
    else if (memoryTune_)
        b1 |= FlagBits::MemoryTune;
    else
        b1 |= FlagBits::Memory;
    if (memoryMode_ && currentChannel_ >= RadioLimits::FirstQuickMemory)
        b1 |= FlagBits::QuickMemory;
    if (tunerOn_)
        b2 |= FlagBits::Tuner;
    if (lockA_)
        b2 |= FlagBits::LockA;
    if (lockB_)
        b2 |= FlagBits::LockB;
    if (muteA_)
        b5 |= FlagBits::MuteA;
    if (muteB_)
        b5 |= FlagBits::MuteB;
    const auto id = model_ == Model::MarkV ? MarkVId : PlainMpId;
    f[0] = static_cast<char>(b0);
    f[1] = static_cast<char>(b1);
    f[2] = static_cast<char>(b2);
    f[3] = static_cast<char>(id.first);
    f[4] = static_cast<char>(id.second);
    f[5] = static_cast<char>(b5);
    return f;
}
