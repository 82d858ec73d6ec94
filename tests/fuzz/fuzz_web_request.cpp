// SPDX-License-Identifier: GPL-3.0-or-later
// The web panel's requests: a byte stream cut into pieces of any size (byte 0 sets the piece size),
// read until the request is complete or refused, and the headers a request's handling looks at.
#include "FuzzInput.h"
#include "HttpRequest.h"
#include "OriginCheck.h"
#include "WebLimits.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const int piece = 1 + in.byte() % 64;
    HttpRequestParser parser;
    while (!in.atEnd() && parser.status() == HttpRequestParser::Status::NeedMore)
        parser.feed(in.take(piece));
    if (parser.status() == HttpRequestParser::Status::Refused) {
        FUZZ_CHECK(parser.refusal() >= 400 && parser.refusal() < 600);
        return 0;
    }
    if (parser.status() != HttpRequestParser::Status::Complete)
        return 0;
    const HttpRequest& r = parser.request();
    FUZZ_CHECK(r.body.size() <= WebLimits::MaxRequestBodyBytes);
    FUZZ_CHECK(r.target.startsWith('/'));
    (void)r.isWebSocketUpgrade();
    (void)r.cookie("ft1000panel");
    (void)isOwnOrigin(r.header("origin"), r.header("host"), (piece % 2) == 0);
    return 0;
}
