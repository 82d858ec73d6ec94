// SPDX-License-Identifier: GPL-3.0-or-later
#include "SLevel.h"

#include "MeterDecoder.h"
#include "SweepPlan.h"

#include <algorithm>
#include <cmath>

namespace {
// The scale's fixed points: level in percent and what the meter reads there, in S-units below S9
// and in decibels over S9 (counted from 9 on) above it. S1, S5, S9 and +40 are the graticule's
// lines; full scale is the scale's "+60".
struct ScalePoint {
    double level;
    double reading;  // 0..9 S-units, then 9 + dB over S9
};
constexpr int S9 = 9;
constexpr double FullScaleDb = 60;
constexpr int MaxPercent = 100;

QList<ScalePoint> scalePoints()
{
    QList<ScalePoint> p{{0, 0}};
    const double readings[] = {1, 5, S9, S9 + 40};
    const QList<SUnitLine> lines = sUnitLines();
    for (int i = 0; i < lines.size(); ++i)
        p.append({static_cast<double>(lines[i].level), readings[i]});
    p.append({MaxPercent, S9 + FullScaleDb});
    return p;
}

double readingAt(double level)
{
    const QList<ScalePoint> p = scalePoints();
    for (int i = 1; i < p.size(); ++i)
        if (level <= p[i].level)
            return p[i - 1].reading +
                   (level - p[i - 1].level) / (p[i].level - p[i - 1].level) * (p[i].reading - p[i - 1].reading);
    return p.last().reading;
}

struct ColourStop {
    int level;
    int r, g, b;
};
// Noise floor, S1, S5, S9, +40, full scale.
constexpr ColourStop Stops[] = {{0, 0, 0, 40},     {9, 0, 30, 150},  {36, 0, 190, 210},
                                {62, 250, 230, 0}, {84, 240, 30, 0}, {100, 255, 255, 255}};

Argb argb(int r, int g, int b)
{
    return 0xFF000000u | (static_cast<quint32>(r) << 16) | (static_cast<quint32>(g) << 8) | static_cast<quint32>(b);
}
}  // namespace

QString sUnitText(int raw)
{
    const double reading = readingAt(meterPercent(std::clamp(raw, 0, 255)));
    if (reading < S9 + 0.5)
        return QStringLiteral("S%1").arg(static_cast<int>(std::lround(reading)));
    return QStringLiteral("S9+%1").arg(static_cast<int>(std::lround(reading - S9)));
}

Argb levelColour(int levelPercent)
{
    const int l = std::clamp(levelPercent, 0, MaxPercent);
    for (size_t i = 1; i < std::size(Stops); ++i) {
        const ColourStop& a = Stops[i - 1];
        const ColourStop& b = Stops[i];
        if (l <= b.level) {
            const double t = static_cast<double>(l - a.level) / (b.level - a.level);
            auto mix = [t](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * t)); };
            return argb(mix(a.r, b.r), mix(a.g, b.g), mix(a.b, b.b));
        }
    }
    const ColourStop& last = Stops[std::size(Stops) - 1];
    return argb(last.r, last.g, last.b);
}

QList<LevelMark> levelLegend()
{
    QList<LevelMark> marks;
    for (const SUnitLine& s : sUnitLines())
        marks.append({s.level, QString::fromLatin1(s.label).trimmed(), levelColour(s.level)});
    return marks;
}
