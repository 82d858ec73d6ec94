// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelDecoder.h"

#include "CatCommand.h"
#include "NumberFormat.h"

#include <array>
#include <cmath>

namespace {
constexpr double CountsPerKHz = 1600.0;

struct ModeRow {
    bool (*matches)(int modeByte, bool second);
    const char* caption;
    int code;
};

// Code 7 is never produced; "DataUSR" stores code 1.
const std::array<ModeRow, 12> modeTable{{
    {[](int m, bool) { return m == 0; }, "LSB", ModeCode::Lsb},
    {[](int m, bool) { return m == 1; }, "USB", ModeCode::Usb},
    {[](int m, bool s) { return m == 2 && !s; }, "CW N", ModeCode::Cw},
    {[](int m, bool s) { return m == 2 && s; }, "CW R", ModeCode::CwR},
    {[](int m, bool s) { return m == 3 && !s; }, "AM", ModeCode::Am},
    {[](int m, bool s) { return m == 3 && s; }, "AM Sync", ModeCode::AmSync},
    {[](int m, bool) { return m == 4; }, "FM", ModeCode::Fm},
    {[](int m, bool s) { return m == 5 && !s; }, "RTTY N", ModeCode::Rtty},
    {[](int m, bool s) { return m == 5 && s; }, "RTTY R", ModeCode::RttyR},
    {[](int m, bool s) { return m == 6 && !s; }, "PKT LSB", ModeCode::PktLsb},
    {[](int m, bool s) { return m == 6 && s; }, "PKT FM", ModeCode::PktFm},
    {[](int m, bool) { return (m & 0x80) != 0; }, "DataUSR", ModeCode::Usb},
}};

int byteAt(const QByteArray& b, int i)
{
    return static_cast<quint8>(b[i]);
}
}  // namespace

ChannelMode decodeChannelMode(int modeByte, int qualifierByte, const ChannelMode& previous)
{
    const bool second = (qualifierByte & 0x80) != 0;
    ChannelMode mode = previous;
    for (const ModeRow& row : modeTable) {
        if (row.matches(modeByte, second))
            mode = ChannelMode{QString::fromLatin1(row.caption), row.code};
    }
    return mode;
}

std::optional<ChannelMode> channelModeOfCaption(const QString& caption)
{
    for (const ModeRow& row : modeTable) {
        if (caption.compare(QLatin1String(row.caption), Qt::CaseInsensitive) == 0)
            return ChannelMode{QString::fromLatin1(row.caption), row.code};
    }
    return std::nullopt;
}

QStringList channelModeCaptions()
{
    QStringList captions;
    for (const ModeRow& row : modeTable)
        captions << QString::fromLatin1(row.caption);
    return captions;
}

double decodeChannelClarifier(int high, int low)
{
    const auto value = static_cast<qint16>(static_cast<quint16>((high << 8) | low));
    return value / CountsPerKHz;
}

ChannelDecode decodeChannel(const QByteArray& record, const ChannelMode& previous)
{
    Q_ASSERT(record.size() >= ChannelDecodedBytes);
    ChannelDecode d;
    const quint32 count = (quint32(byteAt(record, 1)) << 24) | (quint32(byteAt(record, 2)) << 16) |
                          (quint32(byteAt(record, 3)) << 8) | quint32(byteAt(record, 4));
    d.clarKHz = decodeChannelClarifier(byteAt(record, 5), byteAt(record, 6));
    // The table and the file hold the effective frequency: base plus clarifier.
    d.shownKHz = std::floor((count / CountsPerKHz + d.clarKHz + 0.001) * 100.0) / 100.0;
    d.freqText = formatNumber(d.shownKHz, Pattern::ChannelFrequency);
    d.clarText = formatNumber(d.clarKHz, Pattern::Offset);
    d.mode = decodeChannelMode(byteAt(record, 7), byteAt(record, 8), previous);
    const int antenna = byteAt(record, 9);
    d.antenna = (antenna & 0x10) ? QStringLiteral("B") : QStringLiteral("A");
    if (antenna & 0x20)
        d.antenna = QStringLiteral("Rx");
    d.masked = (byteAt(record, 0) & 0x80) != 0;
    return d;
}
