// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The state the virtual radio keeps: one receiver's settings (a VFO or a memory channel) and a channel.

#include <QtGlobal>

// One VFO, or the contents of one memory channel.
struct VfoState {
    qint64 freq10Hz = 1420000;  // 14 200.00 kHz
    int clar10Hz = 0;           // clarifier offset, 10 Hz steps (the radio's range is +/-9.99 kHz)
    bool rxClar = false;
    bool txClar = false;
    int modeByte = 1;            // 0 LSB, 1 USB, 2 CW, 3 AM, 4 FM, 5 RTTY, 6 PKT; bit 7 "Data USER"
    bool secondVariant = false;  // CW-R, AM sync, RTTY-R, PKT FM
    int filter455 = 1;           // 455 kHz filter code: 1 2.4K, 2 2.0K, 3 500, 4 250, 0 6.0K
    int filter82 = 1;            // 8.2 MHz filter code: 1 2.4K, 2 2.0K, 3 500, 4 250, 0 Thru
    int shift = 0;               // repeater shift: 0 none, 1 plus, 2 minus
    bool antennaB = false;
    bool rxAntenna = false;

    bool operator==(const VfoState&) const = default;
};

struct MemoryChannel {
    VfoState data;
    bool masked = false;

    bool operator==(const MemoryChannel&) const = default;
};

namespace RadioLimits {
constexpr int Channels = 113;  // 1-99 regular, 100-108 "P", 109-113 quick memory bank
constexpr int FirstQuickMemory = 109;
constexpr qint64 MinFreq10Hz = 10000;    // 100 kHz
constexpr qint64 MaxFreq10Hz = 3000000;  // 30 MHz
constexpr int MaxClar10Hz = 999;         // +/-9.99 kHz
}  // namespace RadioLimits
