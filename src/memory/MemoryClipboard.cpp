// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryClipboard.h"

#include "ChannelNames.h"
#include "CsvText.h"
#include "MemRecord.h"
#include "MemoryCellInput.h"
#include "MemoryCsv.h"

namespace {
// Cells copied from a spreadsheet come as lines of tab-separated text: such text is taken as the same
// list written with commas, line for line, so that the line numbers of a refusal stay true.
QByteArray commaSeparated(const QByteArray& text)
{
    const qsizetype firstLineEnd = text.indexOf('\n');
    const QByteArray firstLine = text.left(firstLineEnd < 0 ? text.size() : firstLineEnd);
    if (!firstLine.contains('\t') || firstLine.contains(','))
        return text;
    QByteArray out;
    for (QByteArray line : text.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        QStringList fields;
        for (const QByteArray& f : line.split('\t'))
            fields << QString::fromUtf8(f);
        out += line.isEmpty() ? QByteArray("\r\n") : CsvText::line(fields);
    }
    return out;
}
}  // namespace

namespace MemoryClipboard {

std::optional<QByteArray> copy(const QList<std::pair<int, MemoryRow>>& rows, QString* reason)
{
    QList<std::pair<int, MemRecord>> records;
    for (const auto& [channel, row] : rows) {
        QString why;
        const std::optional<MemRecord> r = recordFromRow(row, &why);
        if (!r) {
            if (reason)
                *reason = QStringLiteral("Channel %1: %2.").arg(channel).arg(why);
            return std::nullopt;
        }
        records.append({channel, *r});
    }
    return MemoryCsv::writeChannels(records);
}

QString labelOnChannel(const QString& label, int from, int to)
{
    if (from >= Channels::First && from <= Channels::Count && label.trimmed() == gridChannelName(from).trimmed())
        return gridChannelName(to);
    return label;
}

Pasted paste(const QByteArray& text, int firstChannel)
{
    Pasted out;
    const auto refuse = [&out](int line, const QString& why) {
        out.rows.clear();
        out.reason = line > 0 ? QStringLiteral("Line %1: %2.").arg(line).arg(why) : why + u'.';
        return out;
    };
    const MemoryCsv::Lines list = MemoryCsv::readLines(commaSeparated(text));
    if (!list.ok())
        return refuse(list.line, list.problem);
    const int last = firstChannel + static_cast<int>(list.lines.size()) - 1;
    if (last > Channels::Count)
        return refuse(0, QStringLiteral("The paste of %1 channels from channel %2 would run past channel %3")
                             .arg(list.lines.size())
                             .arg(firstChannel)
                             .arg(Channels::Count));
    int channel = firstChannel;
    for (const MemoryCsv::ListLine& line : list.lines) {
        if (!line.problem.isEmpty())
            return refuse(line.line, line.problem);
        if (!line.losses.isEmpty())
            return refuse(line.line, line.losses.first());
        // Held to the editor's rules, which the import is more lenient about.
        if (line.record.freq != 0.0f) {
            const CellValue<qint64> f =
                CellInput::frequency(line.inMHz ? line.freqText + QStringLiteral(" MHz") : line.freqText);
            if (!f.ok())
                return refuse(line.line, f.reason);
        }
        if (!line.clarText.isEmpty()) {
            const CellValue<qint64> c = CellInput::clarifier(line.clarText);
            if (!c.ok())
                return refuse(line.line, c.reason);
        }
        if (!line.name.isEmpty()) {
            const CellValue<QString> l = CellInput::label(line.name);
            if (!l.ok())
                return refuse(line.line, l.reason);
        }
        MemoryRow row = rowFromRecord(line.record);
        row.cells[MemoryColumn::Chan] = labelOnChannel(row.cells[MemoryColumn::Chan], line.channel, channel);
        out.rows.append(row);
        ++channel;
    }
    return out;
}

}  // namespace MemoryClipboard
