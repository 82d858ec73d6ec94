// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryGridModel.h"

#include "Twips.h"

QVariant MemoryGridModel::data(const QModelIndex& index, int role) const
{
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
