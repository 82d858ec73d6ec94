// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryReadout.h"

#include "CatCommand.h"
#include "ChannelDecoder.h"
#include "ChannelNames.h"

QList<ChannelRecord> splitAllChannels(const QByteArray& reply)
{
    QList<ChannelRecord> records;
    for (int channel = Channels::First; channel <= Channels::Count; ++channel) {
        const qsizetype offset = ReplySize::MemoryHeader + qsizetype(channel - 1) * ChannelRecordSize;
        if (offset + ChannelRecordSize > reply.size())
            break;
        records.append({channel, reply.mid(offset, ChannelRecordSize)});
    }
    return records;
}

std::optional<QByteArray> singleChannelRecord(const QByteArray& reply)
{
    if (reply.size() < ChannelRecordSize)
        return std::nullopt;
    return reply.left(ChannelRecordSize);
}

QList<DecodedChannel> decodeAllChannels(const QByteArray& reply, ChannelMode* mode)
{
    QList<DecodedChannel> out;
    for (const ChannelRecord& r : splitAllChannels(reply)) {
        const ChannelDecode d = decodeChannel(r.bytes, *mode);
        *mode = d.mode;
        out.append({r.channel, d});
    }
    return out;
}

MemoryRow channelRow(int channel, const ChannelDecode& d)
{
    MemoryRow row;
    row.cells = {gridChannelName(channel),    d.freqText, d.mode.caption, d.clarText, d.antenna,
                 QString::number(d.mode.code)};
    row.colour = MemoryColour::of(d.masked);
    return row;
}
