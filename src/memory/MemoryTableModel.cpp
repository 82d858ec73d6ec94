// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryTableModel.h"

#include "ChannelNames.h"

MemoryTableModel::MemoryTableModel(QObject* parent) : QAbstractTableModel(parent), rows_(Channels::Count) {}

QStringList MemoryTableModel::headers()
{
    return {QStringLiteral("Chan #"), QStringLiteral("Freq"), QStringLiteral("Mode"),
            QStringLiteral("Clar"),   QStringLiteral("Ant"),  QStringLiteral("Mde")};
}

int MemoryTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int MemoryTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : MemoryColumn::Count;
}

QVariant MemoryTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rows_.size())
        return {};
    const MemoryRow& row = rows_[index.row()];
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return row.cells[column];
        case Qt::TextAlignmentRole:
            if (column == MemoryColumn::Mode || column == MemoryColumn::Ant)
                return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
            if (column == MemoryColumn::Freq || column == MemoryColumn::Clar)
                return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
            return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
        case ColourRole:
            if (column >= MemoryColumn::Freq && column <= MemoryColumn::Ant && row.colour != MemoryRow::NoColour)
                return row.colour;
            return {};
        default:
            return {};
    }
}

QVariant MemoryTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal) {
        if (role == Qt::DisplayRole && section >= 0 && section < MemoryColumn::Count)
            return headers()[section];
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
        return {};
    }
    if (role == Qt::DisplayRole)
        return section + 1;
    return {};
}

const MemoryRow& MemoryTableModel::channelRow(int channel) const
{
    Q_ASSERT(channel >= 1 && channel <= rows_.size());
    return rows_[channel - 1];
}

void MemoryTableModel::setChannelRow(int channel, const MemoryRow& row)
{
    if (channel < 1 || channel > rows_.size())
        return;
    rows_[channel - 1] = row;
    emit dataChanged(index(channel - 1, 0), index(channel - 1, MemoryColumn::Count - 1));
}

void MemoryTableModel::setCells(int channel, const std::array<QString, MemoryColumn::Count>& cells)
{
    if (channel < 1 || channel > rows_.size())
        return;
    rows_[channel - 1].cells = cells;
    emit dataChanged(index(channel - 1, 0), index(channel - 1, MemoryColumn::Count - 1));
}

void MemoryTableModel::setColour(int channel, quint32 bgr)
{
    if (channel < 1 || channel > rows_.size())
        return;
    rows_[channel - 1].colour = bgr;
    emit dataChanged(index(channel - 1, MemoryColumn::Freq), index(channel - 1, MemoryColumn::Ant));
}

void MemoryTableModel::setRows(const QList<MemoryRow>& rows)
{
    beginResetModel();
    rows_ = rows;
    rows_.resize(Channels::Count);
    endResetModel();
}
