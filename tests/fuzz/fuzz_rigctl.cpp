// SPDX-License-Identifier: GPL-3.0-or-later
// The network server's input: a byte stream cut into pieces of any size (byte 0 sets the piece size),
// gathered into lines, parsed, and answered by a session on a stand-in radio.
#include "FakeRig.h"
#include "FuzzInput.h"
#include "LineAssembler.h"
#include "RigctlParser.h"
#include "RigctlSession.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const int piece = 1 + in.byte() % 64;
    FakeRig radio;
    radio.up = (piece % 2) == 0;
    radio.authorized = (piece % 3) == 0;
    LineAssembler lines(256);
    RigctlSession session(radio);
    while (!in.atEnd()) {
        for (const QByteArray& line : lines.feed(in.take(piece))) {
            FUZZ_CHECK(line.size() <= 256);
            FUZZ_CHECK(!line.contains('\n'));
            const QString text = QString::fromUtf8(line);
            const ParsedLine parsed = parseCommandLine(text);
            const RigctlSession::Result r = session.handleLine(text);
            if (!parsed.empty)
                FUZZ_CHECK(!r.reply.isEmpty());
            if (r.close)
                return 0;
        }
        if (lines.overflowed())
            return 0;
    }
    return 0;
}
