// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Number patterns of the displays: "###,##0.#0 " (kHz with thousands separators and two decimals, then
// a blank), "#0.#0 ", "  .##0.#0 " (the radio's own MHz.kHz.10Hz display) and the like.
// '#' is an optional digit, '0' a required one, ',' in the integer part asks for thousands separators,
// the first '.' is the decimal point, every other character is printed as it stands.

#include <QString>

QString formatNumber(double value, const QString& pattern);

namespace Pattern {
inline const QString Frequency = QStringLiteral("###,##0.#0 ");
inline const QString ChannelFrequency = QStringLiteral("##,##0.#0 ");
inline const QString Offset = QStringLiteral("#0.#0 ");
inline const QString Centre = QStringLiteral("##0.#0 ");
inline const QString QuickMemory = QStringLiteral("###,##0.#0");
inline const QString EntryNone = QStringLiteral("  .##0.#0 ");
inline const QString EntryOneDigit = QStringLiteral(" 0.##0.#0 ");
inline const QString EntryTwoDigits = QStringLiteral("00.##0.#0 ");
inline const QString ScopeLabel = QStringLiteral("#.##0");
inline const QString ScopeReadout = QStringLiteral("##0.##0.0");
}  // namespace Pattern

// Rounds a frequency in kHz down to 10 Hz the way the displays do: Int((f + 0.001) * 100) / 100.
double roundToTenHz(double kHz);
