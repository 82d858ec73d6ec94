// SPDX-License-Identifier: GPL-3.0-or-later
#include "FlagsDecoder.h"

#include "CatCommand.h"

namespace {
bool has(int value, int mask)
{
    return (value & mask) != 0;
}
constexpr int MarkVByte4 = 3;
constexpr int MarkVByte5 = 0x93;
}  // namespace

FlagsView decodeFlags(int arg, int waiting, const QByteArray& bytes)
{
    FlagsView v;
    if (waiting != ReplySize::Flags || bytes.size() < ReplySize::Flags)
        return v;
    v.decoded = true;
    int f[7] = {};
    QString dump;
    for (int i = 1; i <= ReplySize::Flags; ++i) {
        f[i] = static_cast<quint8>(bytes[i - 1]);
        dump += QString::number(f[i]) + u'+';
    }
    v.dump = QStringLiteral(" 6 Bytes flags = ") + dump;
    if (arg == 0 && f[4] == MarkVByte4 && f[5] == MarkVByte5) {
        v.markV = true;
        return v;
    }
    v.split = has(f[1], 1);
    v.dual = has(f[1], 2);
    v.xmit = has(f[1], 128);
    v.vfo = has(f[2], 32);
    v.mem = has(f[2], 64);
    v.mtun = has(f[2], 16);
    v.qmb = has(f[2], 8);
    v.tuner = has(f[3], 2);
    v.lockVisible = has(f[3], 8) || has(f[3], 4);
    if (has(f[3], 8))
        v.lockCaption = QStringLiteral("A Lock");
    if (has(f[3], 4))
        v.lockCaption = QStringLiteral("B Lock");
    if (has(f[3], 8) && has(f[3], 4))
        v.lockCaption = QStringLiteral("A/B Lk");
    v.vfoAMuted = has(f[1], 64) || has(f[6], 2);
    v.vfoBMuted = has(f[6], 1);
    v.frameA = v.vfoAMuted ? QStringLiteral(" VFO-A MUTED ") : QStringLiteral(" VFO-A ");
    v.frameB = v.vfoBMuted ? QStringLiteral(" VFO-B MUTED ") : QStringLiteral(" VFO-B ");
    return v;
}
