// SPDX-License-Identifier: GPL-3.0-or-later
// The status flags reply: byte 0 is the call's argument, byte 1 the count of bytes the port said were
// waiting, the rest the bytes read.
#include "FlagsDecoder.h"
#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const int arg = in.byte();
    const int waiting = in.byte();
    const QByteArray bytes = in.rest();
    const FlagsView v = decodeFlags(arg, waiting, bytes);
    if (v.decoded)
        FUZZ_CHECK(bytes.size() >= 6);
    if (v.markV)
        FUZZ_CHECK(arg == 0);
    return 0;
}
