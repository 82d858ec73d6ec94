// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The channel table as the window paints it: the row's colour on columns 1 to 4, bold headings, and
// the numbers without the blank their pattern ends in (it would only push them out of their narrow
// right-aligned cells). The records keep their texts as they are.

#include "MemoryTableModel.h"

#include <QFont>
#include <functional>

// A changed row is tinted, and its tooltip says whether it is still to be saved, written or both.
class MemoryGridModel : public MemoryTableModel {
    Q_OBJECT
public:
    // The row's change: MemoryEditor::Change flags.
    static constexpr int ChangeRole = Qt::UserRole + 2;

    using MemoryTableModel::MemoryTableModel;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    void setHeaderFont(const QFont& font) { headerFont_ = font; }

    // Where the rows' changes are known (channel: flags), and whether cells may be edited now.
    void setChangeSource(std::function<int(int channel)> changeOf) { changeOf_ = std::move(changeOf); }
    void setEditable(bool on) { editable_ = on; }
    bool editable() const { return editable_; }
    // Repaints the marks of every row.
    void refreshMarks();

    static QString changeText(int change);

private:
    QFont headerFont_;
    std::function<int(int)> changeOf_;
    bool editable_ = false;
};
