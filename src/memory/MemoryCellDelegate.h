// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The channel table's cell editors: a line for the label, the frequency and the clarifier, a list
// for the mode and the antenna. What the operator enters is handed on as text, to be taken or
// refused as a whole; the delegate never writes the model itself.

#include <QStyledItemDelegate>

class MemoryCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

signals:
    // channel 1..113, the column, the text as entered.
    void cellEntered(int channel, int column, const QString& text) const;
};
