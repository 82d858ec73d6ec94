// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's table editing: the cell editors, the Edit menu and its keys, the reason an
// edit was refused, the changed rows' marks, the "*" in the title and the question before changes
// are lost.
#include "Mem_Frm.h"

#include "ChannelNames.h"
#include "MemoryCellDelegate.h"
#include "MemoryDialogs.h"
#include "MemoryEditor.h"
#include "MemoryGridModel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QTableView>

namespace {
using namespace MemoryWindow;

const QString UnsavedText = QStringLiteral(
    "The memory table has changes that are not saved in \"%1\".\n\n"
    "Save them before the window closes?");
const QString ReplaceText = QStringLiteral(
    "The memory table has changes that are not saved in \"%1\".\n\n"
    "Save them before the table is replaced?");
const QString ReasonColour = QStringLiteral("color: #e07050;");

struct EditItem {
    const char* name;  // also the caption without its mnemonic
    const char* caption;
    QList<QKeySequence> keys;
};
}  // namespace

void Mem_Frm::buildEditing()
{
    editor_ = new MemoryEditor(*model_, this);
    auto* grid = static_cast<MemoryGridModel*>(model_);
    grid->setChangeSource([this](int channel) { return editor_->changeOf(channel); });
    connect(editor_, &MemoryEditor::changed, this, &Mem_Frm::updateEditState);
    // An answer to "Save / Discard / Cancel" holds for the table it was given for.
    connect(editor_, &MemoryEditor::changed, this, [this] { closeConfirmed_ = false; });

    delegate_ = new MemoryCellDelegate(MSFlexGrid1);
    MSFlexGrid1->setItemDelegate(delegate_);
    connect(delegate_, &MemoryCellDelegate::cellEntered, this, &Mem_Frm::cellEntered);
    // A double click keeps its own meaning (the channel on the radio); F2 or typing edits a cell.
    MSFlexGrid1->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    MSFlexGrid1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    EditReason->setStyleSheet(ReasonColour);
    // The Edit menu's items also come up on the table's rows with the right mouse button.
    MSFlexGrid1->setContextMenuPolicy(Qt::ActionsContextMenu);

    mnu_edit = new QMenu(QStringLiteral("&Edit"), this);
    mnu_edit->setObjectName(QStringLiteral("mnu_edit"));
    menuBar->addMenu(mnu_edit);
    const QList<EditItem> items{
        {"Undo", "&Undo", QKeySequence::keyBindings(QKeySequence::Undo)},
        {"Redo", "&Redo",
         QKeySequence::keyBindings(QKeySequence::Redo) + QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_Y)}},
        {nullptr, nullptr, {}},
        {"Cut", "Cu&t", QKeySequence::keyBindings(QKeySequence::Cut)},
        {"Copy", "&Copy", QKeySequence::keyBindings(QKeySequence::Copy)},
        {"Paste", "&Paste", QKeySequence::keyBindings(QKeySequence::Paste)},
        {"Clear", "Cl&ear", QKeySequence::keyBindings(QKeySequence::Delete)},
        {nullptr, nullptr, {}},
        {"Move Up", "Mo&ve Up", {QKeySequence(Qt::ALT | Qt::Key_Up)}},
        {"Move Down", "Move &Down", {QKeySequence(Qt::ALT | Qt::Key_Down)}},
        {"Sort by Frequency", "&Sort by Frequency", {}},
        {"Mask", "&Mask / Unmask", {QKeySequence(Qt::CTRL | Qt::Key_M)}},
    };
    const QMap<QString, void (Mem_Frm::*)()> handlers{
        {QStringLiteral("Undo"), nullptr},
        {QStringLiteral("Redo"), nullptr},
        {QStringLiteral("Cut"), &Mem_Frm::editCut},
        {QStringLiteral("Copy"), &Mem_Frm::editCopy},
        {QStringLiteral("Paste"), &Mem_Frm::editPaste},
        {QStringLiteral("Clear"), &Mem_Frm::editClear},
        {QStringLiteral("Move Up"), &Mem_Frm::editMoveUp},
        {QStringLiteral("Move Down"), &Mem_Frm::editMoveDown},
        {QStringLiteral("Sort by Frequency"), &Mem_Frm::editSortByFrequency},
        {QStringLiteral("Mask"), &Mem_Frm::editToggleMask},
    };
    for (const EditItem& item : items) {
        if (!item.name) {
            mnu_edit->addSeparator();
            continue;
        }
        const QString name = QString::fromLatin1(item.name);
        QAction* a = mnu_edit->addAction(QString::fromLatin1(item.caption));
        a->setObjectName(QStringLiteral("mnu_edit(%1)").arg(name));
        // A key given twice (some platforms bind Ctrl+Y to redo already) would be ambiguous and do nothing.
        QList<QKeySequence> keys;
        for (const QKeySequence& k : item.keys)
            if (!keys.contains(k))
                keys << k;
        a->setShortcuts(keys);
        // The table's keys work while it has the focus, whatever else the window holds.
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        MSFlexGrid1->addAction(a);
        if (auto handler = handlers.value(name))
            connect(a, &QAction::triggered, this, handler);
        editActions_.insert(name, a);
    }
    connect(editActions_[QStringLiteral("Undo")], &QAction::triggered, this, [this] { editor_->undo(); });
    connect(editActions_[QStringLiteral("Redo")], &QAction::triggered, this, [this] { editor_->redo(); });
    updateEditState();
}

QAction* Mem_Frm::editAction(const QString& name) const
{
    return editActions_.value(name);
}

QList<int> Mem_Frm::selectedChannels() const
{
    QList<int> channels;
    if (const QItemSelectionModel* s = MSFlexGrid1->selectionModel()) {
        for (const QModelIndex& i : s->selectedRows())
            channels << i.row() + 1;
        if (channels.isEmpty() && s->currentIndex().isValid())
            channels << s->currentIndex().row() + 1;
    }
    std::sort(channels.begin(), channels.end());
    return channels;
}

void Mem_Frm::updateEditState()
{
    if (!editor_)
        return;
    const bool canEdit = expanded() && !uploading_ && !writing_ && !readingAll_;
    auto* grid = static_cast<MemoryGridModel*>(model_);
    grid->setEditable(canEdit);
    grid->refreshMarks();
    setWindowTitle(editor_->hasUnsavedChanges() ? Caption + TitleChangedMark : Caption);
    for (QAction* a : std::as_const(editActions_))
        a->setEnabled(canEdit);
    QAction* undo = editActions_.value(QStringLiteral("Undo"));
    QAction* redo = editActions_.value(QStringLiteral("Redo"));
    if (undo && redo) {
        undo->setEnabled(canEdit && editor_->canUndo());
        redo->setEnabled(canEdit && editor_->canRedo());
        undo->setText(editor_->canUndo() ? QStringLiteral("&Undo %1").arg(editor_->undoText())
                                         : QStringLiteral("&Undo"));
        redo->setText(editor_->canRedo() ? QStringLiteral("&Redo %1").arg(editor_->redoText())
                                         : QStringLiteral("&Redo"));
    }
    if (WriteChanged)
        WriteChanged->setEnabled(canEdit && !editor_->unwrittenChannels(Channels::First, Channels::Uploaded).isEmpty());
    if (mnuWriteChanged)
        mnuWriteChanged->setEnabled(WriteChanged->isEnabled());
    if (mnuRestoreBackup)
        mnuRestoreBackup->setEnabled(canEdit);
}

void Mem_Frm::showEditReason(const QString& reason)
{
    EditReason->setText(reason);
    EditReason->setVisible(expanded() && !reason.isEmpty());
}

QString Mem_Frm::editReason() const
{
    return EditReason->text();
}

void Mem_Frm::cellEntered(int channel, int column, const QString& text)
{
    QString reason;
    if (editor_->setCell(channel, column, text, &reason))
        showEditReason({});
    else
        showEditReason(
            QStringLiteral("Channel %1, %2: %3.").arg(channel).arg(MemoryTableModel::headers().value(column), reason));
}

void Mem_Frm::editCopy()
{
    QString reason;
    const std::optional<QByteArray> text = editor_->copy(selectedChannels(), &reason);
    if (!text) {
        showEditReason(reason);
        return;
    }
    QApplication::clipboard()->setText(QString::fromUtf8(*text));
    showEditReason({});
}

void Mem_Frm::editCut()
{
    QString reason;
    const QList<int> channels = selectedChannels();
    const std::optional<QByteArray> text = editor_->copy(channels, &reason);
    if (!text) {
        showEditReason(reason);
        return;
    }
    QApplication::clipboard()->setText(QString::fromUtf8(*text));
    editor_->clear(channels, QStringLiteral("Cut"));
    showEditReason({});
}

void Mem_Frm::editPaste()
{
    const QModelIndex current = MSFlexGrid1->currentIndex();
    const QList<int> selected = selectedChannels();
    const int first = current.isValid() ? current.row() + 1 : selected.value(0, Channels::First);
    QString reason;
    if (editor_->paste(first, QApplication::clipboard()->text().toUtf8(), &reason))
        showEditReason({});
    else
        showEditReason(QStringLiteral("Nothing was pasted. %1").arg(reason));
}

void Mem_Frm::editClear()
{
    editor_->clear(selectedChannels());
}

void Mem_Frm::editMoveUp()
{
    const QList<int> channels = selectedChannels();
    if (!editor_->moveUp(channels))
        return;
    // The selection goes with the rows.
    MSFlexGrid1->clearSelection();
    for (int c : channels)
        MSFlexGrid1->selectionModel()->select(model_->index(c - 2, 0),
                                              QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void Mem_Frm::editMoveDown()
{
    const QList<int> channels = selectedChannels();
    if (!editor_->moveDown(channels))
        return;
    MSFlexGrid1->clearSelection();
    for (int c : channels)
        MSFlexGrid1->selectionModel()->select(model_->index(c, 0),
                                              QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void Mem_Frm::editSortByFrequency()
{
    editor_->sortByFrequency(selectedChannels());
}

void Mem_Frm::editToggleMask()
{
    editor_->toggleMask(selectedChannels());
}

bool Mem_Frm::confirmUnsaved()
{
    return askSaveChanges(UnsavedText);
}

bool Mem_Frm::mayReplaceTable()
{
    // The rows being written are marked written once the radio has them: they must still be there.
    if (writing_) {
        dialogs_->inform(dialogParent(), Caption,
                         QStringLiteral("The table cannot be replaced while its changed channels are written."));
        return false;
    }
    return askSaveChanges(ReplaceText);
}

bool Mem_Frm::askSaveChanges(const QString& question)
{
    if (!editor_->hasUnsavedChanges())
        return true;
    switch (dialogs_->saveChanges(dialogParent(), Caption, question.arg(currentFile_))) {
        case MemoryDialogs::SaveChoice::Save:
            return SaveMemFile(Report::Message);
        case MemoryDialogs::SaveChoice::Discard:
            return true;
        case MemoryDialogs::SaveChoice::Cancel:
        default:
            return false;
    }
}

bool Mem_Frm::confirmClose()
{
    if (!confirmStopUpload())
        return false;
    if (closeConfirmed_)
        return true;
    closeConfirmed_ = confirmUnsaved();
    return closeConfirmed_;
}
