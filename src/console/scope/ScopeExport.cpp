// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScopeExport.h"

#include "FileReplace.h"
#include "SLevel.h"

#include <QDir>
#include <QFileInfo>

namespace {
const char* const LineEnd = "\r\n";

QByteArray reading(bool replied, int raw)
{
    if (!replied)
        return QByteArray(",,");
    return ',' + QByteArray::number(raw) + ',' + sUnitText(raw).toLatin1();
}

QString nameOf(const QString& path)
{
    return QFileInfo(path).fileName();
}

QString listed(const QStringList& paths)
{
    QString out;
    for (const QString& p : paths)
        out += QStringLiteral("    ") + nameOf(p) + u'\n';
    return out;
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

QString pngPath(const QString& chosen)
{
    return chosen.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive) ? chosen : chosen + QStringLiteral(".png");
}

QString sweepCsvPath(const QString& pngPath)
{
    return withoutPng(pngPath) + QStringLiteral("-sweep.csv");
}

QString recordCsvPath(const QString& pngPath)
{
    return withoutPng(pngPath) + QStringLiteral("-srecord.csv");
}

QStringList PlotFiles::paths() const
{
    QStringList out{png};
    if (!sweep.isEmpty())
        out << sweep;
    if (!record.isEmpty())
        out << record;
    return out;
}

QString PlotFiles::question() const
{
    if (replaced.isEmpty() && strays.isEmpty() && !sweepCutShort)
        return {};
    QString text = QStringLiteral("In %1:\n").arg(QDir::toNativeSeparators(QFileInfo(png).absolutePath()));
    if (!replaced.isEmpty())
        text += QStringLiteral("\nThese files will be replaced:\n") + listed(replaced);
    if (!strays.isEmpty())
        text += QStringLiteral(
                    "\nThese files beside the picture are from an earlier plot and do not belong to "
                    "this one; they are left as they are:\n") +
                listed(strays);
    if (sweepCutShort)
        text += QStringLiteral(
            "\nThe sweep was cancelled before a whole pass: the picture shows the part swept, "
            "and no sweep CSV is written.\n");
    text += QStringLiteral("\nSave the plot?");
    return text;
}

PlotFiles planPlotFiles(const QString& chosen, SweepKept sweep, bool hasRecording,
                        const std::function<bool(const QString&)>& exists)
{
    PlotFiles f;
    f.png = pngPath(chosen);
    f.sweepCutShort = sweep == SweepKept::CutShort;
    const QString sweepPath = sweepCsvPath(f.png);
    const QString recordPath = recordCsvPath(f.png);
    if (sweep == SweepKept::Whole)
        f.sweep = sweepPath;
    if (hasRecording)
        f.record = recordPath;
    for (const QString& p : f.paths())
        if (exists(p))
            f.replaced << p;
    for (const QString& p : {sweepPath, recordPath})
        if (!f.paths().contains(p) && exists(p))
            f.strays << p;
    return f;
}

PlotWrite writePlotFiles(const QList<QPair<QString, QByteArray>>& files)
{
    PlotWrite w;
    for (const auto& [path, bytes] : files) {
        const FileReplace::Result r = FileReplace::write(path, bytes);
        if (r.ok) {
            w.written << path;
            continue;
        }
        w.ok = false;
        w.failed = path;
        w.message =
            QStringLiteral("Could not write the file\n%1\n%2\n").arg(QDir::toNativeSeparators(path), r.message());
        if (w.written.isEmpty())
            w.message += QStringLiteral("Nothing was written.");
        else
            w.message += QStringLiteral("Already written:\n") + listed(w.written).chopped(1);
        return w;
    }
    return w;
}
}  // namespace ScopeExport
