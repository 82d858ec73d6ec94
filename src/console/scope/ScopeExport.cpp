#include "ScopeExport.h"

#include "SLevel.h"

namespace {
const char* const LineEnd = "\r\n";

QByteArray reading(bool replied, int raw)
{
    if (!replied)
        return QByteArray(",,");
    return ',' + QByteArray::number(raw) + ',' + sUnitText(raw).toLatin1();
}

QString withoutPng(const QString& path)
{
    return path.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive) ? path.chopped(4) : path;
}
}  // namespace

namespace ScopeExport {
QByteArray sweepCsv(const QList<SweepSample>& samples)
{
    QByteArray out = QByteArray("Frequency_kHz,S_level_raw,S_units") + LineEnd;
    for (const SweepSample& s : samples)
        out += QByteArray::number(s.kHz(), 'f', 2) + reading(s.replied, s.raw) + LineEnd;
    return out;
}

QByteArray recordCsv(const QList<RecordReading>& readings)
{
    QByteArray out = QByteArray("Time_s,S_level_raw,S_units") + LineEnd;
    for (const RecordReading& r : readings)
        out += QByteArray::number(r.seconds, 'f', 3) + reading(r.replied, r.raw) + LineEnd;
    return out;
}

QString sweepCsvPath(const QString& pngPath)
{
    return withoutPng(pngPath) + QStringLiteral("-sweep.csv");
}

QString recordCsvPath(const QString& pngPath)
{
    return withoutPng(pngPath) + QStringLiteral("-srecord.csv");
}
}  // namespace ScopeExport
