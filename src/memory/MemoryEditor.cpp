// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryEditor.h"

#include "ChannelDecoder.h"
#include "ChannelNames.h"
#include "MemoryCellInput.h"
#include "MemoryClipboard.h"

#include <algorithm>

namespace {
QList<int> sortedValid(const QList<int>& channels)
{
    QList<int> out;
    for (int c : channels)
        if (c >= Channels::First && c <= Channels::Count && !out.contains(c))
            out.append(c);
    std::sort(out.begin(), out.end());
    return out;
}

// The frequency of a row for sorting; rows without one go last.
double sortKey(const MemoryRow& row)
{
    const std::optional<double> kHz = cellNumber(row.cells[MemoryColumn::Freq]);
    return kHz ? *kHz : std::numeric_limits<double>::max();
}

// A row taken from one channel to another, its channel's own name following the channel.
MemoryRow landed(MemoryRow row, int from, int to)
{
    row.cells[MemoryColumn::Chan] = MemoryClipboard::labelOnChannel(row.cells[MemoryColumn::Chan], from, to);
    return row;
}
}  // namespace

MemoryEditor::MemoryEditor(MemoryTableModel& table, QObject* parent) : QObject(parent), table_(table)
{
    takeAsBaseline();
}

void MemoryEditor::takeAsBaseline()
{
    fileRows_ = table_.rows();
    radioRows_ = fileRows_;
    history_.clear();
    emit changed();
}

void MemoryEditor::markSaved()
{
    fileRows_ = table_.rows();
    emit changed();
}

void MemoryEditor::markWritten(const QList<int>& channels)
{
    for (int c : sortedValid(channels))
        radioRows_[c - 1] = table_.channelRow(c);
    emit changed();
}

void MemoryEditor::radioShowsColour(int channel, quint32 bgr)
{
    if (channel < Channels::First || channel > Channels::Count)
        return;
    // A row the operator has changed keeps the change; only what the radio holds is noted.
    if (table_.channelRow(channel) == radioRows_[channel - 1])
        table_.setColour(channel, bgr);
    radioRows_[channel - 1].colour = bgr;
    emit changed();
}

int MemoryEditor::changeOf(int channel) const
{
    if (channel < Channels::First || channel > Channels::Count)
        return Unchanged;
    const MemoryRow& row = table_.channelRow(channel);
    int change = Unchanged;
    if (row != fileRows_[channel - 1])
        change |= Unsaved;
    if (row != radioRows_[channel - 1])
        change |= Unwritten;
    return change;
}

bool MemoryEditor::hasUnsavedChanges() const
{
    for (int c = Channels::First; c <= Channels::Count; ++c)
        if (changeOf(c) & Unsaved)
            return true;
    return false;
}

QList<int> MemoryEditor::unwrittenChannels(int first, int last) const
{
    QList<int> out;
    for (int c = std::max(first, Channels::First); c <= std::min(last, Channels::Count); ++c)
        if (changeOf(c) & Unwritten)
            out.append(c);
    return out;
}

bool MemoryEditor::setCell(int channel, int column, const QString& text, QString* reason)
{
    if (channel < Channels::First || channel > Channels::Count)
        return false;
    const CellValue<MemoryRow> edited = CellInput::applyToRow(table_.channelRow(channel), column, text);
    if (!edited.ok()) {
        if (reason)
            *reason = edited.reason;
        return false;
    }
    apply({{channel, *edited.value}}, QStringLiteral("Edit"));
    return true;
}

bool MemoryEditor::toggleMask(const QList<int>& channels)
{
    const QList<int> selected = sortedValid(channels);
    const bool mask = std::any_of(selected.cbegin(), selected.cend(),
                                  [this](int c) { return table_.channelRow(c).colour != MemoryColour::Masked; });
    QMap<int, MemoryRow> rows;
    for (int c : selected) {
        MemoryRow row = table_.channelRow(c);
        row.colour = MemoryColour::of(mask);
        rows.insert(c, row);
    }
    return apply(rows, mask ? QStringLiteral("Mask") : QStringLiteral("Unmask"));
}

MemoryRow MemoryEditor::clearedRow(int channel)
{
    MemoryRow row = rowFromRecord(MemRecord{});
    row.cells[MemoryColumn::Chan] = gridChannelName(channel);
    return row;
}

bool MemoryEditor::clear(const QList<int>& channels, const QString& stepText)
{
    QMap<int, MemoryRow> rows;
    for (int c : sortedValid(channels))
        rows.insert(c, clearedRow(c));
    return apply(rows, stepText);
}

bool MemoryEditor::paste(int firstChannel, const QByteArray& text, QString* reason)
{
    const MemoryClipboard::Pasted pasted = MemoryClipboard::paste(text, firstChannel);
    if (!pasted.ok()) {
        if (reason)
            *reason = pasted.reason;
        return false;
    }
    QMap<int, MemoryRow> rows;
    for (qsizetype i = 0; i < pasted.rows.size(); ++i)
        rows.insert(firstChannel + static_cast<int>(i), pasted.rows[i]);
    apply(rows, QStringLiteral("Paste"));
    return true;
}

bool MemoryEditor::move(const QList<int>& channels, int delta, const QString& text)
{
    QList<int> selected = sortedValid(channels);
    if (selected.isEmpty())
        return false;
    if ((delta < 0 && selected.first() == Channels::First) || (delta > 0 && selected.last() == Channels::Count))
        return false;
    // Where each channel's row comes from once the selected rows have stepped past their neighbours.
    QList<int> source(Channels::Count + 1);
    for (int c = 0; c <= Channels::Count; ++c)
        source[c] = c;
    if (delta > 0)
        std::reverse(selected.begin(), selected.end());
    for (int c : selected)
        std::swap(source[c], source[c + delta]);
    QMap<int, MemoryRow> rows;
    for (int c = Channels::First; c <= Channels::Count; ++c)
        if (source[c] != c)
            rows.insert(c, landed(table_.channelRow(source[c]), source[c], c));
    return apply(rows, text);
}

bool MemoryEditor::moveUp(const QList<int>& channels)
{
    return move(channels, -1, QStringLiteral("Move Up"));
}

bool MemoryEditor::moveDown(const QList<int>& channels)
{
    return move(channels, +1, QStringLiteral("Move Down"));
}

bool MemoryEditor::sortByFrequency(const QList<int>& channels)
{
    const QList<int> selected = sortedValid(channels);
    QList<int> order = selected;
    std::stable_sort(order.begin(), order.end(),
                     [this](int a, int b) { return sortKey(table_.channelRow(a)) < sortKey(table_.channelRow(b)); });
    QMap<int, MemoryRow> rows;
    for (qsizetype i = 0; i < selected.size(); ++i)
        rows.insert(selected[i], landed(table_.channelRow(order[i]), order[i], selected[i]));
    return apply(rows, QStringLiteral("Sort by Frequency"));
}

bool MemoryEditor::putRows(const QMap<int, MemoryRow>& rows, const QString& stepText)
{
    return apply(rows, stepText);
}

std::optional<QByteArray> MemoryEditor::copy(const QList<int>& channels, QString* reason) const
{
    QList<std::pair<int, MemoryRow>> rows;
    for (int c : sortedValid(channels))
        rows.append({c, table_.channelRow(c)});
    if (rows.isEmpty())
        return std::nullopt;
    return MemoryClipboard::copy(rows, reason);
}

void MemoryEditor::undo()
{
    put(history_.undo());
}

void MemoryEditor::redo()
{
    put(history_.redo());
}

bool MemoryEditor::apply(const QMap<int, MemoryRow>& rows, const QString& text)
{
    MemoryEditStep step;
    step.text = text;
    for (auto it = rows.cbegin(); it != rows.cend(); ++it) {
        const MemoryRow& before = table_.channelRow(it.key());
        if (before != it.value())
            step.rows.insert(it.key(), {before, it.value()});
    }
    if (step.rows.isEmpty())
        return false;
    history_.push(step);
    QMap<int, MemoryRow> after;
    for (auto it = step.rows.cbegin(); it != step.rows.cend(); ++it)
        after.insert(it.key(), it.value().second);
    put(after);
    return true;
}

void MemoryEditor::put(const QMap<int, MemoryRow>& rows)
{
    for (auto it = rows.cbegin(); it != rows.cend(); ++it)
        table_.setChannelRow(it.key(), it.value());
    emit changed();
}
