// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Cutting the radio's replies into channel records. The full read-out is a 55-byte block that is
// skipped, then channels 1 to 113 in order, 16 bytes each. A reply is never read past its end: a
// record that the reply cuts short is dropped, and so is everything after it.

#include <QByteArray>
#include <QList>
#include <optional>

struct ChannelRecord {
    int channel = 0;   // 1..113
    QByteArray bytes;  // 16 bytes
};

// Every complete record of a full read-out reply, channels 1 upwards; at most 113.
QList<ChannelRecord> splitAllChannels(const QByteArray& reply);

// The one record of a single-channel reply, when the reply holds a complete one.
std::optional<QByteArray> singleChannelRecord(const QByteArray& reply);

#include "ChannelDecoder.h"
#include "MemoryTableModel.h"

struct DecodedChannel {
    int channel = 0;
    ChannelDecode decode;
};

// Every complete record of a full read-out, decoded in order. The mode caption and code carry from
// one record to the next (a mode byte outside the table keeps the previous one); `mode` holds them
// before and after.
QList<DecodedChannel> decodeAllChannels(const QByteArray& reply, ChannelMode* mode);

// The table row of a decoded channel: name in the table's form, the shown texts, the mode code, the
// masked or unmasked colour.
MemoryRow channelRow(int channel, const ChannelDecode& d);
