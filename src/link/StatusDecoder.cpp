// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatusDecoder.h"

#include "CatCommand.h"
#include "NumberFormat.h"

#include <algorithm>

namespace {
bool bit(int value, int n)
{
    return (value >> n) & 1;
}

VfoStatus decodeVfo(const StatusRecord& r, int base)  // base 0 for VFO-A, 16 for VFO-B
{
    const auto& b = r.b;
    VfoStatus v;
    double kHz = decodeFrequency(b[base + 2], b[base + 3], b[base + 4], b[base + 5]);
    v.clarKHz = decodeClarifier(b[base + 6], b[base + 7]);
    v.flagsByte = b[base + 10];
    v.filterByte = b[base + 9];
    v.txClar = bit(v.flagsByte, 0);
    v.rxClar = bit(v.flagsByte, 1);
    if (v.rxClar)
        kHz += v.clarKHz;
    v.kHz = roundToTenHz(kHz);
    v.freqText = formatNumber(v.kHz, Pattern::Frequency);
    v.clarText = formatNumber(v.clarKHz, Pattern::Offset);
    v.mode = decodeMode(b[base + 8], b[base + 9]);
    return v;
}
}  // namespace

std::optional<ModeDecode> decodeMode(int modeByte, int qualifierByte)
{
    const bool second = bit(qualifierByte, 7);
    if (modeByte >= 128)
        return ModeDecode{QStringLiteral("Data USER"), ModeCode::Lsb};
    switch (modeByte) {
        case 0:
            return ModeDecode{QStringLiteral("LSB"), ModeCode::Lsb};
        case 1:
            return ModeDecode{QStringLiteral("USB"), ModeCode::Usb};
        case 2:
            return second ? ModeDecode{QStringLiteral("CW R"), ModeCode::CwR}
                          : ModeDecode{QStringLiteral("CW N"), ModeCode::Cw};
        case 3:
            return second ? ModeDecode{QStringLiteral("AM Sync"), ModeCode::AmSync}
                          : ModeDecode{QStringLiteral("AM"), ModeCode::Am};
        case 4:
            return ModeDecode{QStringLiteral("FM"), ModeCode::Fm};
        case 5:
            return second ? ModeDecode{QStringLiteral("RTTY R"), ModeCode::RttyR}
                          : ModeDecode{QStringLiteral("RTTY N"), ModeCode::Rtty};
        case 6:
            return second ? ModeDecode{QStringLiteral("PKT FM"), ModeCode::PktFm}
                          : ModeDecode{QStringLiteral("PKT LSB"), ModeCode::PktLsb};
        default:
            return std::nullopt;
    }
}

double decodeClarifier(int high, int low)
{
    if (bit(high, 7))
        return -(((255 - high) * 256 + 255) - low) / 1600.0;
    return (high * 256 + low) / 1600.0;
}

double decodeFrequency(int b1, int b2, int b3, int b4)
{
    const quint32 count = (quint32(b1) << 24) | (quint32(b2) << 16) | (quint32(b3) << 8) | quint32(b4);
    return count / 1600.0;
}

StatusView decodeStatus(StatusRecord& store, const QByteArray& reply)
{
    StatusView v;
    if (reply.isEmpty()) {
        v.noLink = true;
        return v;
    }
    // Only the bytes present are stored; a longer reply than the record is cut at byte 32.
    const int n = std::min<int>(static_cast<int>(reply.size()), 32);
    int sumA = 0;
    int sumB = 0;
    for (int i = 1; i <= n; ++i) {
        const int value = static_cast<quint8>(reply[i - 1]);
        store.b[i] = value;
        if (i < 17) {
            v.dumpA += QString::number(value) + u'+';
            sumA += value;
        }
        if (i > 16) {
            v.dumpB += QString::number(value) + u'+';
            sumB += value;
        }
    }
    v.dumpA = QStringLiteral("16-a Bytes flags = ") + v.dumpA + QStringLiteral("total = ") + QString::number(sumA);
    v.dumpB = QStringLiteral("16-b Bytes flags = ") + v.dumpB + QStringLiteral("total = ") + QString::number(sumB);

    v.a = decodeVfo(store, 0);
    v.b = decodeVfo(store, 16);

    const int f = store.b[10];
    v.rptrVisible = bit(f, 2) || bit(f, 3);
    if (bit(f, 2))
        v.rptrCaption = QStringLiteral("  RPTR +");
    if (bit(f, 3))
        v.rptrCaption = QStringLiteral("  RPTR -");
    v.antCaption = bit(f, 4) ? QStringLiteral("  ANT B") : QStringLiteral("  ANT A");
    if (bit(f, 5))
        v.antCaption = QStringLiteral("  ANT Rx");
    return v;
}
