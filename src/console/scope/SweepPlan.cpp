// SPDX-License-Identifier: GPL-3.0-or-later
#include "SweepPlan.h"

#include "NumberFormat.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr qint64 FinestStep10Hz = 10;  // 0.1 kHz
// Quotients of list values are exact in decimal; this absorbs their binary representation error
// (140.0 / 0.1 is 1399.9999999999998) without moving a true quotient across a whole number.
constexpr double QuotientNudge = 1e-9;

qint64 to10Hz(double kHz)
{
    return std::llround(kHz * 100.0);
}

qint64 roundUpToMultiple(qint64 value, qint64 step)
{
    const qint64 q = value / step;
    return (q * step < value ? q + 1 : q) * step;
}
}  // namespace

SweepPlan makeSweepPlan(double centreKHz, double spanKHz, double resKHz)
{
    SweepPlan p;
    p.step10Hz = resKHz > 0 ? std::max<qint64>(1, to10Hz(resKHz)) : FinestStep10Hz;
    p.span10Hz = std::max<qint64>(0, to10Hz(spanKHz));
    const double res = p.step10Hz / 100.0;
    const double k = std::floor((centreKHz - p.span10Hz / 200.0) / res + QuotientNudge);
    p.start10Hz = static_cast<qint64>(k) * p.step10Hz;
    p.end10Hz = p.start10Hz + p.span10Hz;
    p.samples = static_cast<int>(p.span10Hz / p.step10Hz) + 1;
    return p;
}

qint64 setFreqArgument(double kHz)
{
    if (!(kHz > 0))
        return 0;
    const auto tenthsOfHz = static_cast<qint64>(std::floor(kHz * 10000.0 + 1e-4));
    return tenthsOfHz / 100;
}

PlotScale sweepScale(double spanKHz)
{
    PlotScale s;
    s.width = spanKHz * 1.1;
    if (s.width <= 0)
        s.width = 1;
    s.left = -s.width / 25.0;
    return s;
}

PlotScale recordScale(double minutes)
{
    PlotScale s;
    s.width = minutes * 66.0;
    if (s.width <= 0)
        s.width = 66;
    s.left = -s.width / 22.0;
    return s;
}

SampleDrawing sampleDrawing(double x, int level, double previousX, int previousLevel)
{
    SampleDrawing d;
    d.bar = QLineF(x, PlotY::Base - level, x, PlotY::Base);
    d.joined = x > 0 && previousLevel > CancelledLevel;
    if (d.joined)
        d.join = QLineF(previousX, 99 - previousLevel, x, 99 - level);
    return d;
}

QList<SUnitLine> sUnitLines()
{
    // Where the main window's scale "S   1  2  3  4  5  6  7  8  9   +20  +40  +60" puts them.
    return {{9, " S1"}, {36, " S5"}, {62, " S9"}, {84, "+40"}};
}

FrequencyScale frequencyScale(const SweepPlan& plan)
{
    FrequencyScale s;
    // Labelled step: the smallest of 1, 2, 5 x 10^n (in 10 Hz) that leaves at most six intervals.
    qint64 step = 1;
    for (qint64 decade = 1;; decade *= 10) {
        bool found = false;
        for (qint64 m : {1, 2, 5}) {
            if (plan.span10Hz <= 6 * m * decade) {
                step = m * decade;
                found = true;
                break;
            }
        }
        if (found)
            break;
    }
    const qint64 mantissa = [step] {
        qint64 v = step;
        while (v % 10 == 0)
            v /= 10;
        return v;
    }();
    const qint64 minor = step % (mantissa == 2 ? 4 : 5) == 0 ? step / (mantissa == 2 ? 4 : 5) : step;
    const bool inMHz = step >= 100;
    s.unit = inMHz ? QStringLiteral("MHz") : QStringLiteral("kHz");
    const qint64 first = roundUpToMultiple(plan.start10Hz, minor);
    for (qint64 f = first; f <= plan.end10Hz; f += minor) {
        FrequencyTick t;
        t.x = SweepPlan::toKHz(f - plan.start10Hz);
        t.major = f % step == 0;
        if (t.major) {
            const double kHz = SweepPlan::toKHz(f);
            t.label = formatNumber(inMHz ? kHz / 1000.0 : kHz, Pattern::ScopeLabel);
        }
        s.ticks.append(t);
    }
    return s;
}

double frequencyAt(const SweepPlan& plan, double x)
{
    return std::floor((plan.startKHz() + x) * 100.0 + 0.5) / 100.0;
}

QString readoutText(double kHz)
{
    return formatNumber(kHz / 1000.0, Pattern::ScopeReadout) + QStringLiteral("   ") +
           formatNumber(kHz, Pattern::Frequency) + QStringLiteral("kHz");
}

int recordLabelStepMinutes(double minutes)
{
    if (minutes <= 3)
        return 1;
    if (minutes <= 10)
        return 2;
    return 5;
}
