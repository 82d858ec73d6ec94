// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One 29-byte record of a memory file (".ymp"): no header, no padding, little-endian numbers,
// single-byte text. Record n lies at byte (n - 1) x 29 and holds channel n.
//
//   offset 0  8 bytes  Chan    channel name, space-padded
//   offset 8  4 bytes  Freq    float32, shown frequency in 10 Hz units (kHz x 100)
//   offset 12 7 bytes  Mode    mode text, space-padded
//   offset 19 4 bytes  Clar    float32, clarifier in 10 Hz units, signed
//   offset 23 2 bytes  Ant     "A ", "B " or "Rx"
//   offset 25 2 bytes  Mde     int16, mode code
//   offset 27 2 bytes  Masked  int16, -1 masked, 0 not

#include "MemoryTableModel.h"

#include <QByteArray>
#include <optional>

struct MemRecord {
    static constexpr int Size = 29;
    static constexpr int ChanWidth = 8;
    static constexpr int ModeWidth = 7;
    static constexpr int AntWidth = 2;
    static constexpr qint16 MaskedValue = -1;

    // A cleared record: text fields all spaces, numbers zero, not masked.
    QByteArray chan = QByteArray(ChanWidth, ' ');
    float freq = 0;
    QByteArray mode = QByteArray(ModeWidth, ' ');
    float clar = 0;
    QByteArray ant = QByteArray(AntWidth, ' ');
    qint16 mde = 0;
    qint16 masked = 0;

    bool isMasked() const { return masked == MaskedValue; }

    QByteArray encode() const;  // exactly Size bytes
    // Bytes missing at the end (a file that stops inside the record) read as a cleared record's.
    static MemRecord decode(const QByteArray& bytes);

    bool operator==(const MemRecord&) const = default;
};

// Text cut or padded with spaces to a field's width.
QByteArray fixedText(const QString& text, int width);

// A table row as the file stores it. Fails, with a reason, when the Freq or Clar cell is empty or not a
// number (thousands separators are allowed).
std::optional<MemRecord> recordFromRow(const MemoryRow& row, QString* reason);

// A record as the table shows it.
MemoryRow rowFromRecord(const MemRecord& record);

// A cell's text read as a number: blanks around it and thousands separators allowed.
std::optional<double> cellNumber(const QString& text);
