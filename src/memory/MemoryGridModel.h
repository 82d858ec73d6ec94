// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The channel table as the window paints it: the row's colour on columns 1 to 4, bold headings, and
// the numbers without the blank their pattern ends in (it would only push them out of their narrow
// right-aligned cells). The records keep their texts as they are.

#include "MemoryTableModel.h"

#include <QFont>

class MemoryGridModel : public MemoryTableModel {
    Q_OBJECT
public:
    using MemoryTableModel::MemoryTableModel;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void setHeaderFont(const QFont& font) { headerFont_ = font; }

private:
    QFont headerFont_;
};
