// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the operator types into a cell of the channel table, read strictly: a value the radio or the
// file cannot hold exactly is refused with the reason, never rounded, cut or clamped.
//
//   label       printable ASCII; shown, like the radio's own names, after one blank, and with it at
//               most 8 characters (what the file keeps)
//   frequency   kHz ("14195.5", "14,195.50", "14195.5 kHz") or MHz ("14.1955 MHz"), to 10 Hz, within
//               100.00 to 29,999.99 kHz
//   mode        a caption of the mode table ("USB", "CW R", ...), letter case aside
//   clarifier   kHz to 10 Hz, -9.99 to +9.99
//   antenna     "A", "B" or "Rx", letter case aside
//   masked      yes or no

#include "ChannelDecoder.h"
#include "MemoryTableModel.h"

#include <QString>
#include <optional>

namespace CellLimits {
constexpr qint64 MinFreq10Hz = 10000;    // 100.00 kHz
constexpr qint64 MaxFreq10Hz = 2999999;  // 29,999.99 kHz
constexpr qint64 MaxClar10Hz = 999;      // 9.99 kHz either way
constexpr int LabelLength = 8;           // the file's field, the leading blank included
}  // namespace CellLimits

template <typename T>
struct CellValue {
    std::optional<T> value;
    QString reason;  // why the text was refused; empty when it was taken
    bool ok() const { return value.has_value(); }
};

namespace CellInput {
CellValue<QString> label(const QString& text);     // in the table's form: " 40m FT8"
CellValue<qint64> frequency(const QString& text);  // 10 Hz units
CellValue<qint64> clarifier(const QString& text);  // 10 Hz units, signed
CellValue<ChannelMode> mode(const QString& text);
CellValue<QString> antenna(const QString& text);  // "A", "B" or "Rx"
CellValue<bool> masked(const QString& text);

// Numbers as the table shows them: "14,195.50 ", "-0.25 ".
QString frequencyText(qint64 tenHz);
QString clarifierText(qint64 tenHz);

// The texts a table cell offers to choose from (modes, antennas); empty for typed cells.
QStringList choices(int column);
bool editable(int column);

// The row with one cell changed to what text says: the mode code follows the mode. Refused (the row
// unchanged) with the reason when the text is not a value of that column.
CellValue<MemoryRow> applyToRow(const MemoryRow& row, int column, const QString& text);
}  // namespace CellInput
