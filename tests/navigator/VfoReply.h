// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A current-VFO reply as the radio sends it: 16 bytes, the frequency in bytes 2-5 as a big-endian
// count of 1/1600 kHz.

#include <QByteArray>
#include <cmath>

inline QByteArray vfoReply(double kHz)
{
    const auto count = static_cast<quint32>(std::llround(kHz * 1600));
    QByteArray r(16, '\0');
    r[1] = static_cast<char>((count >> 24) & 0xFF);
    r[2] = static_cast<char>((count >> 16) & 0xFF);
    r[3] = static_cast<char>((count >> 8) & 0xFF);
    r[4] = static_cast<char>(count & 0xFF);
    r[7] = 1;  // USB
    return r;
}
