// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Rows of the channel table as clipboard text and back: copied as a CSV list in this program's own
// layout with its header (a spreadsheet takes it as it is); pasted from any layout the CSV import
// reads, or the same as tab-separated cells copied from a spreadsheet. A paste is all or nothing: one bad line refuses
// the whole of it, naming the line and why, and so does a paste that would run past the last channel.
//
// A pasted value is held to the same rules as a typed one (exact to 10 Hz, within the radio's
// range), except that an empty channel (0 kHz, as a cleared record) may be pasted as it was copied.
// A row keeping its channel's own name (" Chan 7") takes the name of the channel it lands on.

#include "MemoryTableModel.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <utility>

namespace MemoryClipboard {
// The rows given as (channel, row); nothing, with the reason, when a row cannot be written as a list
// (a frequency that is not a number).
std::optional<QByteArray> copy(const QList<std::pair<int, MemoryRow>>& rows, QString* reason);

struct Pasted {
    QList<MemoryRow> rows;  // for firstChannel, firstChannel + 1, ...
    QString reason;         // "Line 3: ..." when refused; rows is then empty
    bool ok() const { return reason.isEmpty(); }
};
Pasted paste(const QByteArray& text, int firstChannel);

// The row's label when it lands on another channel: a channel's own name follows the channel.
QString labelOnChannel(const QString& label, int from, int to);
}  // namespace MemoryClipboard
