// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryGridModel.h"

#include "MemoryCellInput.h"
#include "MemoryEditor.h"
#include "Twips.h"

#include <QColor>

namespace {
// Tints of a changed row on the table's dark ground.
const QColor UnsavedAndUnwritten(0x5a, 0x2c, 0x2c);
const QColor UnwrittenOnly(0x2c, 0x3c, 0x5e);
const QColor UnsavedOnly(0x2c, 0x4a, 0x2c);
}  // namespace

QString MemoryGridModel::changeText(int change)
{
    switch (change) {
        case MemoryEditor::Unsaved | MemoryEditor::Unwritten:
            return QStringLiteral("Changed: not yet written to the radio, not yet saved");
        case MemoryEditor::Unwritten:
            return QStringLiteral("Changed: saved, not yet written to the radio");
        case MemoryEditor::Unsaved:
            return QStringLiteral("Changed: written to the radio, not yet saved");
        default:
            return {};
    }
}

Qt::ItemFlags MemoryGridModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = MemoryTableModel::flags(index);
    if (editable_ && index.isValid() && CellInput::editable(index.column()))
        f |= Qt::ItemIsEditable;
    return f;
}

void MemoryGridModel::refreshMarks()
{
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1),
                         {Qt::BackgroundRole, Qt::ToolTipRole, ChangeRole});
}

QVariant MemoryGridModel::data(const QModelIndex& index, int role) const
{
    if (role == ChangeRole || role == Qt::BackgroundRole || role == Qt::ToolTipRole) {
        const int change = changeOf_ && index.isValid() ? changeOf_(index.row() + 1) : MemoryEditor::Unchanged;
        if (role == ChangeRole)
            return change;
        if (change == MemoryEditor::Unchanged)
            return {};
        if (role == Qt::ToolTipRole)
            return changeText(change);
        if (change == (MemoryEditor::Unsaved | MemoryEditor::Unwritten))
            return UnsavedAndUnwritten;
        return change == MemoryEditor::Unwritten ? UnwrittenOnly : UnsavedOnly;
    }
    if (role == Qt::ForegroundRole) {
        const QVariant bgr = MemoryTableModel::data(index, ColourRole);
        if (bgr.isValid())
            return fromBgr(bgr.toUInt());
        return {};
    }
    if (role == Qt::DisplayRole && (index.column() == MemoryColumn::Freq || index.column() == MemoryColumn::Clar)) {
        QString text = MemoryTableModel::data(index, role).toString();
        while (text.endsWith(u' '))
            text.chop(1);
        return text;
    }
    return MemoryTableModel::data(index, role);
}

QVariant MemoryGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::FontRole && orientation == Qt::Horizontal) {
        QFont f = headerFont_;
        f.setBold(true);
        return f;
    }
    return MemoryTableModel::headerData(section, orientation, role);
}
