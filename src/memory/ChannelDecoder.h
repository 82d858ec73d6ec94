// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The radio's 16-byte memory channel record, as the single-channel display and the table show it.
// Within the record (bytes 0-15): byte 0 bit 7 masked; 1-4 frequency, a big-endian count of 1/1600 kHz;
// 5-6 clarifier, signed 16-bit big-endian in the same unit; 7 mode; 8 bit 7 second variant of a mode
// pair; 9 antenna bits. The rest is not used.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace MemoryColour {
// Blue-green-red values of the channel's text.
constexpr quint32 Masked = 0x0040C0;
constexpr quint32 Unmasked = 0x80C0FF;
inline quint32 of(bool masked)
{
    return masked ? Masked : Unmasked;
}
}  // namespace MemoryColour

namespace MemoryText {
inline const QString NoLink = QStringLiteral("No Link  ");
}

// The mode caption and code of a channel. A mode byte outside the table leaves both as they were, so
// the decoder is handed the previous ones.
struct ChannelMode {
    QString caption;
    int code = 0;
};

struct ChannelDecode {
    double shownKHz = 0;  // frequency plus clarifier, rounded down to 10 Hz
    double clarKHz = 0;
    QString freqText;  // "##,##0.#0 "
    QString clarText;  // "#0.#0 "
    ChannelMode mode;
    QString antenna;  // "A", "B" or "Rx"
    bool masked = false;
};

// Bytes a channel record takes in a reply; only the first ten are decoded.
constexpr int ChannelRecordSize = 16;
constexpr int ChannelDecodedBytes = 10;

// Decodes the first ten bytes of a record; `record` must hold at least ChannelDecodedBytes.
ChannelDecode decodeChannel(const QByteArray& record, const ChannelMode& previous);

// The memory table's mode rows, checked in order with a later match overwriting an earlier one.
ChannelMode decodeChannelMode(int modeByte, int qualifierByte, const ChannelMode& previous);

// The mode a table caption names ("USB", "CW R", "DataUSR" ...), letter case aside; nothing for a
// caption the table never shows.
std::optional<ChannelMode> channelModeOfCaption(const QString& caption);

// Every caption the table shows, in the table's order ("LSB", "USB", ... "DataUSR").
QStringList channelModeCaptions();

// Signed 16-bit big-endian clarifier in kHz (two's complement: 80 00 is -20.48 kHz).
double decodeChannelClarifier(int high, int low);
