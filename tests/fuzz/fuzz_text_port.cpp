// SPDX-License-Identifier: GPL-3.0-or-later
// The text sharing port's input: a byte stream cut into pieces of any size (byte 0 sets the piece
// size and the radio's state), framed into commands and answered by a session on a stand-in radio.
#include "FakeRig.h"
#include "FuzzInput.h"
#include "TextDialect.h"
#include "TextFramer.h"
#include "TextSession.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const int steer = in.byte();
    const int piece = 1 + steer % 64;
    FakeRig radio{FakeRig::SharingScene};
    radio.up = (steer & 0x40) == 0;
    radio.authorized = (steer & 0x80) != 0;
    radio.values.haveStatus = (steer % 5) != 0;
    TextFramer framer;
    TextSession session(radio);
    while (!in.atEnd()) {
        for (const QByteArray& command : framer.feed(in.take(piece))) {
            FUZZ_CHECK(!command.isEmpty() && command.size() <= TextFramer::MaxCommandChars);
            for (const char c : command)
                FUZZ_CHECK(c >= 0x20 && c <= 0x7E && c != ';' && !(c >= 'a' && c <= 'z'));
            const QByteArray reply = session.handle(command).reply;
            if (!reply.isEmpty())
                FUZZ_CHECK(reply.endsWith(';') && reply.count(';') == 1);
            if (command == "IF" && reply != TextReply::Refused)
                FUZZ_CHECK(reply.size() == TextField::InfoRecordChars);
        }
    }
    return 0;
}
