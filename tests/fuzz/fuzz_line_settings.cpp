// SPDX-License-Identifier: GPL-3.0-or-later
// The line settings text ("4800,n,8,2") as the settings store or the port dialog hands it over. What
// parses must come back the same from its own canonical text.
#include "FuzzInput.h"
#include "LineSettings.h"

namespace {
void check(const QString& text)
{
    QString error;
    const auto s = LineSettings::parse(text, &error);
    if (!s) {
        FUZZ_CHECK(!error.isEmpty());
        return;
    }
    const auto again = LineSettings::parse(s->text());
    FUZZ_CHECK(again.has_value());
    FUZZ_CHECK(again->baud == s->baud && again->parity == s->parity && again->dataBits == s->dataBits &&
               again->stopBits == s->stopBits);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const QByteArray bytes = in.rest();
    check(QString::fromUtf8(bytes));
    check(QString::fromLatin1(bytes));
    return 0;
}
