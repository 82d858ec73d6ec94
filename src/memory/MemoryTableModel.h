// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The channel table: 113 rows of plain records (model row 0 is channel 1), six columns. The texts
// are those the table shows; the colour is the one columns 1 to 4 of the row are painted in. The
// windows paint it; the file codec reads and writes these records, never view cells.

#include <QAbstractTableModel>
#include <QList>
#include <QString>
#include <array>

namespace MemoryColumn {
constexpr int Chan = 0;
constexpr int Freq = 1;
constexpr int Mode = 2;
constexpr int Clar = 3;
constexpr int Ant = 4;
constexpr int Mde = 5;  // the numeric mode code, kept hidden
constexpr int Count = 6;
}  // namespace MemoryColumn

struct MemoryRow {
    static constexpr quint32 NoColour = 0xFFFFFFFF;

    std::array<QString, MemoryColumn::Count> cells;
    quint32 colour = NoColour;  // blue-green-red of columns 1 to 4

    bool operator==(const MemoryRow&) const = default;
};

class MemoryTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    // The row's colour as a blue-green-red number, for columns 1 to 4 of a coloured row.
    static constexpr int ColourRole = Qt::UserRole + 1;

    explicit MemoryTableModel(QObject* parent = nullptr);

    static QStringList headers();  // "Chan #", "Freq", "Mode", "Clar", "Ant", "Mde"

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // Channels are numbered 1..113 here, as the radio numbers them.
    const MemoryRow& channelRow(int channel) const;
    void setChannelRow(int channel, const MemoryRow& row);
    void setCells(int channel, const std::array<QString, MemoryColumn::Count>& cells);
    void setColour(int channel, quint32 bgr);
    QString cell(int channel, int column) const { return channelRow(channel).cells[column]; }
    quint32 colour(int channel) const { return channelRow(channel).colour; }

    QList<MemoryRow> rows() const { return rows_; }
    void setRows(const QList<MemoryRow>& rows);  // 113 rows

private:
    QList<MemoryRow> rows_;
};
