// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryCellDelegate.h"

#include "MemoryCellInput.h"
#include "MemoryTableModel.h"

#include <QComboBox>
#include <QLineEdit>

QWidget* MemoryCellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const QStringList choices = CellInput::choices(index.column());
    if (!choices.isEmpty()) {
        auto* box = new QComboBox(parent);
        box->addItems(choices);
        box->setAccessibleName(MemoryTableModel::headers().value(index.column()));
        return box;
    }
    auto* line = new QLineEdit(parent);
    line->setAccessibleName(MemoryTableModel::headers().value(index.column()));
    return line;
}

void MemoryCellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto* box = qobject_cast<QComboBox*>(editor)) {
        box->setCurrentIndex(std::max(0, box->findText(text, Qt::MatchFixedString)));
        return;
    }
    if (auto* line = qobject_cast<QLineEdit*>(editor)) {
        // Typed as shown, without the blank the number patterns end in.
        line->setText(index.column() == MemoryColumn::Chan ? text : text.trimmed());
        line->selectAll();
    }
}

void MemoryCellDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    QString text;
    if (auto* box = qobject_cast<QComboBox*>(editor))
        text = box->currentText();
    else if (auto* line = qobject_cast<QLineEdit*>(editor))
        text = line->text();
    emit cellEntered(index.row() + 1, index.column(), text);
}
