// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The eight quick memory keys: a caption (the frequency as "###,##0.#0", or "QMB"/empty when
// unused) and a mode code each, persisted as two strings of fixed-width fields.

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace QuickMemory {
constexpr int Count = 8;
constexpr int CaptionField = 9;
constexpr int ModeField = 2;
inline const QString Section = QStringLiteral("Startup");
inline const QString CaptionsKey = QStringLiteral("QMB");
inline const QString ModesKey = QStringLiteral("QMBMode");
inline const QString Unused = QStringLiteral("QMB");  // the designed caption
inline const QString DefaultCaptions = Unused;        // so only the first key reads "QMB" at first
inline const QString DefaultModes = QStringLiteral(" 1 1 1 1 1 1 1 1");

// Field i of the stored text starts at width x i; fields are trimmed; missing fields are empty.
QStringList decodeCaptions(const QString& stored);
// Modes: each field's leading number, 0 where there is none.
QList<int> decodeModes(const QString& stored);
// Each caption left-aligned in its nine characters; each mode right-aligned in two.
QString encodeCaptions(const QStringList& captions);
QString encodeModes(const QList<int>& modes);

// The caption a stored frequency gets.
QString captionFor(double kHz);
// True when a left press recalls: the caption is neither empty nor "QMB".
bool recallable(const QString& caption);
// The caption read as kHz, in units of 10 Hz for SetFreq ("14,250.00" -> 1425000); nothing when
// the caption is not a frequency.
std::optional<qint64> captionTenHz(const QString& caption);
}  // namespace QuickMemory
