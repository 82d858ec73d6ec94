// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The navigator's band keys: one fixed tuning frequency a key, and the captions the keys wear.

#include <QString>
#include <QStringList>

namespace BandPlan {
constexpr int Count = 10;  // Band(0..9)

// Where each band key tunes VFO-A, in units of 10 Hz (the unit SetFreq takes), kept as whole
// numbers so that no key ever sends a frequency one count off. "29" comes first and "28" last.
inline constexpr qint64 TenHz[Count] = {2960000, 184300,  365000,  704500,  1015000,
                                        1425000, 1850000, 2120000, 2485000, 2850000};

// The band captions as one string of ten four-character fields.
inline const QString CaptionString = QStringLiteral("29  1.8 3.5 7   10  14  18  21  24.528  ");
constexpr int CaptionWidth = 4;

// The tuning frequency of Band(index) in units of 10 Hz (MHz x 100000); 0 for an index outside 0..9.
qint64 frequencyTenHz(int index);
// The same in MHz, for showing.
double frequencyMHz(int index);
// Caption of Band(index), cut from the caption string and trimmed ("24.5" for index 8).
QString caption(int index);
QStringList captions();
// Captions of the digit keys during direct entry: "0" to "9".
QString digitCaption(int index);
}  // namespace BandPlan
