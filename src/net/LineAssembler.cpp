// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineAssembler.h"

QList<QByteArray> LineAssembler::feed(const QByteArray& bytes)
{
    QList<QByteArray> lines;
    if (overflowed_)
        return lines;
    for (const char c : bytes) {
        if (c == '\n') {
            lines.append(partial_);
            partial_.clear();
            continue;
        }
        if (c == '\r')
            continue;
        if (partial_.size() >= maxLine_) {
            overflowed_ = true;
            partial_.clear();
            return lines;
        }
        partial_.append(c);
    }
    return lines;
}
