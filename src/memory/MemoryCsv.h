// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Memory lists as comma-separated values, for spreadsheets and other memory-programming tools.
//
// Written: a header and the 113 channels, UTF-8, CRLF, with the columns
//   Channel (1-113), Name (as the table shows it), Frequency_kHz (a dot and two decimals),
//   Mode (the table's caption), Clarifier_kHz, Antenna (A, B or Rx), Masked (yes or no).
// Read: that layout, its columns found by their header names in any order, other columns ignored; or
// the channel-exchange layout of other tools (Location 1-113, Frequency in MHz, Mode, Name, and
// Duplex, Offset, Tone). Either gives the 113 records a ".ymp" file would; channels the list does not
// name are cleared records, as a short file gives. Anything the list gets wrong (no header, an unknown
// mode, a frequency outside the radio's range, a channel outside 1-113 or named twice, an empty or
// binary file ...) gives no records but the line and the problem.
//
// What a channel cannot keep is not dropped silently: a repeater offset or a tone (the upload carries
// neither, so such a channel would transmit on its receive frequency without a tone), a name longer
// than the seven characters a channel keeps, characters outside ASCII. Each such row is listed in
// losses, for the operator to decide before the list is used.
//
// Every list written is read back to the same records: the frequency column holds the frequency with
// the clarifier, so it may lie up to 20.48 kHz beyond 30 kHz - 30 MHz; the clarifier may be -20.48 to
// +20.48 kHz as two decimals show it; an empty mode with a frequency is a channel whose mode byte the
// table does not know.

#include "MemRecord.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

class MemoryCsv {
public:
    static const QStringList& header();

    // records: channels 1..113 in order.
    static QByteArray write(const QList<MemRecord>& records);
    // The header and the given channels only, in the order given.
    static QByteArray writeChannels(const QList<std::pair<int, MemRecord>>& channels);

    struct Loss {
        int line = 0;
        int channel = 0;
        QString what;  // "the repeater offset - 0.600000 MHz is not kept ..."
    };

    struct Result {
        QList<MemRecord> records;  // 113 when read, empty on a problem
        int line = 0;              // the file's line the problem is on
        QString problem;
        QList<Loss> losses;  // rows read, but not as the list has them
        bool ok() const { return problem.isEmpty(); }
    };
    static Result read(const QByteArray& bytes);

    // Each data line on its own, in the list's order, with what the list says as it says it; a line's
    // problem stays with the line (read() refuses the list for the first one). No channel is checked
    // against another.
    struct ListLine {
        int line = 0;
        int channel = 0;
        MemRecord record;
        QString problem;
        QStringList losses;
        QString name;      // the Name column as written; empty when the list has none
        QString freqText;  // the frequency as written (kHz, or MHz when inMHz)
        bool inMHz = false;
        QString clarText;  // the clarifier as written, empty when the list has none
    };
    struct Lines {
        QList<ListLine> lines;
        int line = 0;  // where the list as a whole is wrong (no header ...)
        QString problem;
        bool ok() const { return problem.isEmpty(); }
    };
    static Lines readLines(const QByteArray& bytes);

    // 0 kHz is an empty channel; otherwise the radio's range, 30 kHz to 30 MHz; the frequency of a
    // list written here includes the clarifier, up to ClarLimitKHz either side.
    static constexpr double MinKHz = 30.0;
    static constexpr double MaxKHz = 30000.0;
    static constexpr double ClarLimitKHz = 20.48;  // the record's 16-bit count of 1/1600 kHz, as shown
    static constexpr int NameLength = 7;           // a channel's name after its leading blank
};
