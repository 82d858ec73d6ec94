// SPDX-License-Identifier: GPL-3.0-or-later
// The four meter replies of a poll: bytes 0-3 are their lengths, byte 4 the transmit meter's option
// index, the rest the replies one after the other.
#include "FuzzInput.h"
#include "MeterDecoder.h"
#include "Procedures.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    int lengths[4];
    for (int& n : lengths)
        n = in.byte() % 16;
    const int option = in.byte() - 128;
    MeterReplies m;
    m.ran = true;
    m.mainS = in.take(lengths[0]);
    m.subS = in.take(lengths[1]);
    m.transmit = in.take(lengths[2]);
    m.pitch = in.take(lengths[3]);
    const MeterView v = decodeMeters(firstByte(m.mainS), firstByte(m.subS), firstByte(m.transmit), firstByte(m.pitch));
    FUZZ_CHECK(v.mainPercent >= 0 && v.mainPercent <= 100);
    FUZZ_CHECK(v.subPercent >= 0 && v.subPercent <= 100);
    FUZZ_CHECK(v.transmitPercent >= 0 && v.transmitPercent <= 100);
    if (m.complete())
        FUZZ_CHECK(!m.pitch.isEmpty());
    if (const TransmitMeter* t = transmitMeter(option))
        FUZZ_CHECK(t->index == option && t->caption != nullptr && t->scale != nullptr);
    return 0;
}
