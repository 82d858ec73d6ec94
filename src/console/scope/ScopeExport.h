// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The band scope's results as CSV for a spreadsheet: the last sweep's samples by frequency, an
// S-record's readings by time, each with the meter's raw byte and its reading in S-units. Plain
// text, a header row, comma-separated, dot decimals, CRLF line ends as RFC 4180 has them. A sample
// the radio did not answer keeps its line with the reading left empty.

#include "SweepJob.h"
#include "SweepPlan.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <functional>

struct RecordReading {
    double seconds = 0;  // since the recording began
    bool replied = false;
    int raw = 0;
};

namespace ScopeExport {
QByteArray sweepCsv(const QList<SweepSample>& samples);      // Frequency_kHz,S_level_raw,S_units
QByteArray recordCsv(const QList<RecordReading>& readings);  // Time_s,S_level_raw,S_units

// The picture's name for a name chosen in the file dialog: ".png" added when it lacks it.
QString pngPath(const QString& chosen);
// The files written beside a chosen "<name>.png": "<name>-sweep.csv" and "<name>-srecord.csv".
QString sweepCsvPath(const QString& pngPath);
QString recordCsvPath(const QString& pngPath);

// What a sweep leaves to save: nothing, a whole pass, or only a pass cut short (no CSV is written
// for it; the picture shows it).
enum class SweepKept { None, Whole, CutShort };

// The files one "Save Plot..." writes, and what it finds in their place beforehand.
struct PlotFiles {
    QString png;
    QString sweep;         // empty: no sweep CSV in this save
    QString record;        // empty: no S-record CSV in this save
    QStringList replaced;  // existing files this save writes over
    QStringList strays;    // existing CSVs of the same name that this save does not write
    bool sweepCutShort = false;

    QStringList paths() const;  // in the order written: picture, sweep, S-record
    // What to ask before writing, naming every file that would be replaced, every CSV left beside
    // the picture that does not belong to it, and a sweep cut short; empty when there is nothing to
    // ask.
    QString question() const;
};

PlotFiles planPlotFiles(const QString& chosen, SweepKept sweep, bool hasRecording,
                        const std::function<bool(const QString&)>& exists);

// Writes the files in order, each as a whole or not at all, and stops at the first that fails.
struct PlotWrite {
    bool ok = true;
    QStringList written;
    QString failed;   // the file that could not be written
    QString message;  // for the operator: the file, the reason, what became of it and what was written
};
PlotWrite writePlotFiles(const QList<QPair<QString, QByteArray>>& files);
}  // namespace ScopeExport
