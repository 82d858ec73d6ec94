// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextFramer.h"

namespace {
constexpr char FirstPrintable = 0x20;
constexpr char LastPrintable = 0x7E;

bool printable(char c)
{
    return c >= FirstPrintable && c <= LastPrintable;
}

char upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
}  // namespace

QList<QByteArray> TextFramer::feed(QByteArrayView bytes)
{
    QList<QByteArray> commands;
    for (const char c : bytes) {
        if (c == Terminator) {
            if (!overlong_ && !pending_.isEmpty())
                commands.append(pending_);
            pending_.clear();
            overlong_ = false;
            continue;
        }
        if (!printable(c) || overlong_)
            continue;
        pending_.append(upper(c));
        if (pending_.size() > MaxCommandChars) {
            pending_.clear();
            overlong_ = true;
            ++dropped_;
        }
    }
    return commands;
}

void TextFramer::reset()
{
    pending_.clear();
    overlong_ = false;
}
