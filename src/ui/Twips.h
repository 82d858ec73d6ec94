// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Positions and sizes are persisted in twips (1/1440 inch): 15 twips a pixel at 96 dots per inch.

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <cmath>

namespace Twips {
constexpr int PerPixel = 15;
inline int toPixels(double twips) { return static_cast<int>(std::lround(twips / PerPixel)); }
inline int fromPixels(int pixels) { return pixels * PerPixel; }
}  // namespace Twips

// Colours are kept as blue-green-red values (0x0000FF is red).
inline QColor fromBgr(quint32 bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }
inline quint32 toBgr(const QColor& c)
{
    return quint32(c.red()) | (quint32(c.green()) << 8) | (quint32(c.blue()) << 16);
}
