// SPDX-License-Identifier: GPL-3.0-or-later
// Memory channel replies: the input is a full read-out reply and, at once, a single-channel reply.
#include "CatCommand.h"
#include "ChannelDecoder.h"
#include "FuzzInput.h"
#include "MemoryReadout.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const QByteArray reply = in.rest();

    const QList<ChannelRecord> all = splitAllChannels(reply);
    FUZZ_CHECK(all.size() <= ReplySize::MemoryChannels);
    for (qsizetype i = 0; i < all.size(); ++i) {
        FUZZ_CHECK(all[i].channel == i + 1);
        FUZZ_CHECK(all[i].bytes.size() == ChannelRecordSize);
    }
    ChannelMode mode;
    const QList<DecodedChannel> decoded = decodeAllChannels(reply, &mode);
    FUZZ_CHECK(decoded.size() == all.size());
    for (const DecodedChannel& d : decoded) {
        const MemoryRow row = channelRow(d.channel, d.decode);
        FUZZ_CHECK(!row.cells[MemoryColumn::Chan].isEmpty());
    }
    if (const auto one = singleChannelRecord(reply)) {
        FUZZ_CHECK(one->size() >= ChannelDecodedBytes);
        const ChannelDecode d = decodeChannel(*one, ChannelMode{});
        channelRow(1, d);
    }
    return 0;
}
