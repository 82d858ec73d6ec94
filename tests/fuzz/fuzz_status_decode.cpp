// SPDX-License-Identifier: GPL-3.0-or-later
// The status record as the poll builds it from two replies of any length and content: byte 0 is the
// length of the first reply, the rest is the first reply then the second.
#include "FuzzInput.h"
#include "StatusDecoder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const int firstLength = in.byte();
    const QByteArray first = in.take(firstLength);
    const QByteArray second = in.rest();
    // As Get_Status32 puts it together: the current VFO's record, then bytes 17-32 of the second reply.
    const QByteArray record = first + second.mid(16, 16);

    StatusRecord store;
    const StatusView v = decodeStatus(store, record);
    FUZZ_CHECK(v.noLink == record.isEmpty());
    // A second reply on top of the first: a short one keeps what the first left.
    const StatusView again = decodeStatus(store, second);
    FUZZ_CHECK(again.noLink == second.isEmpty());
    for (const int b : store.b)
        FUZZ_CHECK(b >= 0 && b <= 255);
    if (record.size() >= 10) {
        decodeMode(static_cast<quint8>(record[7]), static_cast<quint8>(record[8]));
        decodeClarifier(static_cast<quint8>(record[5]), static_cast<quint8>(record[6]));
    }
    return 0;
}
