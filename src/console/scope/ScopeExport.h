#pragma once
// The band scope's results as CSV for a spreadsheet: the last sweep's samples by frequency, an
// S-record's readings by time, each with the meter's raw byte and its reading in S-units. Plain
// text, a header row, comma-separated, dot decimals, CRLF line ends as RFC 4180 has them. A sample
// the radio did not answer keeps its line with the reading left empty.

#include "SweepJob.h"
#include "SweepPlan.h"

#include <QByteArray>
#include <QList>
#include <QString>

struct RecordReading {
    double seconds = 0;  // since the recording began
    bool replied = false;
    int raw = 0;
};

namespace ScopeExport {
QByteArray sweepCsv(const QList<SweepSample>& samples);      // Frequency_kHz,S_level_raw,S_units
QByteArray recordCsv(const QList<RecordReading>& readings);  // Time_s,S_level_raw,S_units

// The files written beside a chosen "<name>.png": "<name>-sweep.csv" and "<name>-srecord.csv".
QString sweepCsvPath(const QString& pngPath);
QString recordCsvPath(const QString& pngPath);
}  // namespace ScopeExport
