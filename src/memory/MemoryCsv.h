#pragma once
// Memory lists as comma-separated values, for spreadsheets and other memory-programming tools.
//
// Written: a header and the 113 channels, UTF-8, CRLF, with the columns
//   Channel (1-113), Name (as the table shows it), Frequency_kHz (a dot and two decimals),
//   Mode (the table's caption), Clarifier_kHz, Antenna (A, B or Rx), Masked (yes or no).
// Read: that layout, its columns found by their header names in any order, other columns ignored; or
// the channel-exchange layout of other tools (Location 1-113, Frequency in MHz, Mode, Name). Either
// gives the 113 records a ".ymp" file would; channels the list does not name are cleared records,
// as a short file gives. Anything the list gets wrong (no header, an unknown mode, a frequency
// outside 0.03-30 MHz, a channel outside 1-113 or named twice, an empty or binary file ...) gives no
// records but the line and the problem.

#include "MemRecord.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class MemoryCsv {
public:
    static const QStringList& header();

    // records: channels 1..113 in order.
    static QByteArray write(const QList<MemRecord>& records);

    struct Result {
        QList<MemRecord> records;  // 113 when read, empty on a problem
        int line = 0;              // the file's line the problem is on
        QString problem;
        bool ok() const { return problem.isEmpty(); }
    };
    static Result read(const QByteArray& bytes);

    // 0 kHz is an empty channel; otherwise the radio's range, 30 kHz to 30 MHz.
    static constexpr double MinKHz = 30.0;
    static constexpr double MaxKHz = 30000.0;
};
