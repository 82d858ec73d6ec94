// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Radio-side channel records and full read-out replies, built byte by byte for the tests.

#include <QByteArray>
#include <QtGlobal>

namespace ChannelBytes {

struct Channel {
    quint32 count = 0;  // 1/1600 kHz
    qint16 clar = 0;    // 1/1600 kHz
    int mode = 1;
    bool second = false;
    int antenna = 0;  // byte 9
    bool masked = false;
};

inline QByteArray record(const Channel& c)
{
    QByteArray b(16, '\0');
    b[0] = char(c.masked ? 0x80 : 0x00);
    b[1] = char((c.count >> 24) & 0xFF);
    b[2] = char((c.count >> 16) & 0xFF);
    b[3] = char((c.count >> 8) & 0xFF);
    b[4] = char(c.count & 0xFF);
    const auto clar = static_cast<quint16>(c.clar);
    b[5] = char(clar >> 8);
    b[6] = char(clar & 0xFF);
    b[7] = char(c.mode);
    b[8] = char(c.second ? 0x80 : 0x00);
    b[9] = char(c.antenna);
    // Bytes 10-15 are not decoded; fill them so a decoder that reads them would notice.
    for (int i = 10; i < 16; ++i)
        b[i] = char(0xA0 + i);
    return b;
}

// A varied but deterministic channel for each number: frequency, clarifier, every mode, antennas,
// every seventh channel masked.
inline Channel sample(int n)
{
    static const int modes[][2] = {{0, 0}, {1, 0}, {2, 0}, {2, 1}, {3, 0}, {3, 1},
                                   {4, 0}, {5, 0}, {5, 1}, {6, 0}, {6, 1}, {0x81, 0}};
    Channel c;
    const quint32 tenHz = 180000 + quint32(n) * 12345;      // 1 800.00 kHz upwards in odd 10 Hz steps
    c.count = tenHz * 16;                                   // 10 Hz = 16 counts
    c.clar = static_cast<qint16>(((n % 5) - 2) * 16 * 37);  // -0.74 .. +0.74 kHz
    c.mode = modes[n % 12][0];
    c.second = modes[n % 12][1] != 0;
    c.antenna = (n % 3 == 1) ? 0x10 : (n % 3 == 2) ? 0x20 : 0x00;
    c.masked = n % 7 == 0;
    return c;
}

// 55 bytes of header, then the 113 records.
inline QByteArray fullReadout(Channel (*channel)(int) = sample)
{
    QByteArray reply(55, char(0x55));
    for (int n = 1; n <= 113; ++n)
        reply += record(channel(n));
    return reply;
}

}  // namespace ChannelBytes
