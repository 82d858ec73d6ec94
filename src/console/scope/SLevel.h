// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The S-meter's reading in the words an operator uses: S-units up to S9, decibels over S9 above it,
// placed where the main window's S-meter scale puts them (the graticule's S-unit lines), and the
// colour scale of the waterfall over the same levels.

#include <QList>
#include <QString>
#include <QtGlobal>

// The reading of a meter byte (0..255): "S0" .. "S9" below S9 (to the nearest unit), "S9+12" above.
QString sUnitText(int raw);

// Colours as 0xAARRGGBB values (QRgb), so that this stays free of the GUI module.
using Argb = quint32;

// The waterfall's colour for a level in percent of the meter's travel (0..100): dark blue for the
// noise, through blue and cyan up to S5, green and yellow to S9, red at +40, white at full scale.
Argb levelColour(int levelPercent);

// The legend's marks: the S-unit lines' levels and labels, with their colours.
struct LevelMark {
    int level;
    QString label;
    Argb colour;
};
QList<LevelMark> levelLegend();
