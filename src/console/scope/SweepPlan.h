// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The scope's arithmetic: which frequencies a sweep visits, what goes to the radio for each, where
// each sample is drawn, and what frequency lies under the pointer.
//
// Frequencies are kept as whole numbers of 10 Hz, the radio's own tuning step. Every list value and
// every "##0.#0" centre is a whole number of 10 Hz, so the samples start + i x res are exact and a
// 5000-sample sweep does not drift off its end the way repeated floating-point additions do.

#include <QLineF>
#include <QList>
#include <QString>
#include <QtGlobal>

struct SweepPlan {
    qint64 start10Hz = 0;  // first sample: the span's lower edge rounded down to a multiple of res
    qint64 end10Hz = 0;    // start + span: the last sample is the last one not past it
    qint64 step10Hz = 1;   // res
    qint64 span10Hz = 0;
    int samples = 1;

    qint64 sample10Hz(int i) const { return start10Hz + i * step10Hz; }
    static double toKHz(qint64 f10Hz) { return f10Hz / 100.0; }
    double startKHz() const { return toKHz(start10Hz); }
    double endKHz() const { return toKHz(end10Hz); }
    double spanKHz() const { return toKHz(span10Hz); }
};

// start = integer part of ((f0 - span / 2) / res) x res, end = start + span, samples at start,
// start + res, ... while not past end. A span smaller than res gives the single sample at start.
// A resolution of zero or less is taken as the finest list value (0.1 kHz).
SweepPlan makeSweepPlan(double centreKHz, double spanKHz, double resKHz);

// The value handed to SetFreq for a frequency in kHz: integer part of (kHz x 10000) / 100, which is
// kHz x 100 with anything finer than 10 Hz dropped. The product is nudged by 1/10000 of its unit
// before the integer part is taken: 14250.1 x 10000 is 142500999.99999998 in binary floating point
// and would otherwise tune 14250.09. No real frequency lies that close below a 0.1 Hz boundary.
qint64 setFreqArgument(double kHz);

// The plot's horizontal extent in drawing units: kHz for a sweep, seconds for an S-record.
struct PlotScale {
    double left = 0;
    double width = 1;
};
PlotScale sweepScale(double spanKHz);   // width = span x 1.1, left = -width / 25
PlotScale recordScale(double minutes);  // width = minutes x 66, left = -width / 22

namespace PlotY {
constexpr double Base = 100;       // the base line; levels grow upwards from it
constexpr double MinorTick = 102;  // frequency ticks hang from the base line to here...
constexpr double MajorTick = 103;  // ...and to here where a label is printed
constexpr double TimeLabel = 105;  // the "hh:mm" labels of an S-record
}  // namespace PlotY

// The previous-sample level after "Cancel": no joining line is drawn from it.
constexpr int CancelledLevel = -100;

// What one sample draws: a bar from 100 - level down to the base line at x, and, when x is past
// the start and there is a previous sample, a line joining the tops one unit above the bars.
struct SampleDrawing {
    QLineF bar;
    bool joined = false;
    QLineF join;
};
SampleDrawing sampleDrawing(double x, int level, double previousX, int previousLevel);

// The horizontal S-unit lines of the graticule: the level (percent of the meter's travel) where the
// main window's S-meter scale shows S1, S5, S9 and +40, and the label printed at the left.
struct SUnitLine {
    int level;
    const char* label;
};
QList<SUnitLine> sUnitLines();

// Frequency ticks below the base line. Labels use the pattern "#.##0": in MHz (three decimals, one
// kHz) when the labelled step is 1 kHz or more, otherwise in kHz (three decimals, one Hz), so that
// neighbouring labels never read alike; unit names which.
struct FrequencyTick {
    double x;       // drawing units from the plot's start
    bool major;     // labelled, down to MajorTick; minor ones to MinorTick
    QString label;  // empty for minor ticks
};
struct FrequencyScale {
    QList<FrequencyTick> ticks;
    QString unit;  // "MHz" or "kHz"
};
FrequencyScale frequencyScale(const SweepPlan& plan);

// The frequency under the pointer at drawing x: the plot's start plus x, to 10 Hz. The plot's start
// is the sweep plan's (centre, span, and the resolution that rounds it), so the readout agrees
// with the bars and the frequency labels.
double frequencyAt(const SweepPlan& plan, double x);

// The pointer readout: the radio's own "MHz.kHz.100 Hz" display ("##0.##0.0") and the kilohertz
// of the main display ("###,##0.#0 "), e.g. "14.250.1   14,250.10 kHz".
QString readoutText(double kHz);

// S-record time axis: seconds since the recording began. Labels every this many minutes.
int recordLabelStepMinutes(double minutes);
