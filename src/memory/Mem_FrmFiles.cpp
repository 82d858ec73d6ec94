// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's file actions: the file dialog, loading and saving, the file keys and menu.
#include "Mem_Frm.h"

#include "ConsoleHost.h"
#include "MemFile.h"
#include "MemoryDialogs.h"
#include "MemoryEditor.h"
#include "MemoryGridModel.h"
#include "MemoryLog.h"
#include "MemoryPanel.h"

#include <QAction>
#include <QFileInfo>

namespace {
using namespace MemoryWindow;

QList<MemoryRow> rowsOf(const QList<MemRecord>& records)
{
    QList<MemoryRow> rows;
    rows.reserve(records.size());
    for (const MemRecord& r : records)
        rows.append(rowFromRecord(r));
    return rows;
}
}  // namespace

void Mem_Frm::enableSaveMenu()
{
    mnu_file[2]->setEnabled(true);
    mnu_file[3]->setEnabled(true);
    mnu_csv[0]->setEnabled(true);
}

void Mem_Frm::Diag(int index)
{
    if (index == 0 && !mayReplaceTable())
        return;
    FileDialogRequest request;
    request.filters = dialogFilters(FileFilter);
    request.selectedFilter = request.filters.value(1);
    request.defaultSuffix = DefaultSuffix;
    request.file = currentFile_;
    request.kind = index == 0 ? FileDialogRequest::Kind::Open : FileDialogRequest::Kind::Save;
    request.title = index == 0 ? OpenTitle : SaveTitle;
    const std::optional<QString> chosen = dialogs_->chooseFile(dialogParent(), request);
    if (!chosen)
        return;
    currentFile_ = *chosen;
    // Started from the dialog, a failure ends quietly.
    if (index == 0)
        LoadMemFile(Report::Quiet);
    else
        SaveMemFile(Report::Quiet);
}

bool Mem_Frm::LoadMemFile(Report report)
{
    QList<MemRecord> records;
    QString error;
    if (!MemFile::load(currentFile_, &records, &error)) {
        qCWarning(lcMemory) << "load failed:" << currentFile_ << error;
        if (report == Report::Message)
            dialogs_->error(dialogParent(), ErrorTitle,
                            QStringLiteral("Could not read the memory file \"%1\".\n%2").arg(currentFile_, error));
        return false;
    }
    showRecords(records);
    return true;
}

void Mem_Frm::showRecords(const QList<MemRecord>& records)
{
    QList<MemoryRow> rows;
    rows.reserve(records.size());
    for (const MemRecord& r : records)
        rows.append(rowFromRecord(r));
    model_->setRows(rows);
    editor_->takeAsBaseline();
    if (gridRow_ >= 1)
        selectGridRow(gridRow_);
    setHeightTwips(ExpandedTwips);
    enableUpload();
    enableSaveMenu();
}

bool Mem_Frm::SaveMemFile(Report report)
{
    QString error;
    if (!MemFile::save(currentFile_, model_->rows(), &error)) {
        qCWarning(lcMemory) << "save failed:" << currentFile_ << error;
        if (report == Report::Message)
            dialogs_->error(dialogParent(), ErrorTitle,
                            QStringLiteral("Could not save the memory file \"%1\".\n%2").arg(currentFile_, error));
        return false;
    }
    editor_->markSaved();
    return true;
}

void Mem_Frm::Btn_Diag_MouseDown(int index, Qt::MouseButton button)
{
    if (index == 0) {
        if (button == Qt::LeftButton && !mayReplaceTable())
            return;
        if (button == Qt::LeftButton)
            LoadMemFile(Report::Message);
        else
            Diag(0);
        setHeightTwips(ExpandedTwips);
        enableUpload();
        return;
    }
    if (button == Qt::LeftButton)
        SaveMemFile(Report::Message);
    else
        Diag(1);
}

void Mem_Frm::mnu_file_Click(int index)
{
    switch (index) {
        case 0:
            Diag(0);
            break;
        case 2:
            SaveMemFile(Report::Message);
            break;
        case 3:
            Diag(1);
            break;
        case 5:
            Bouton_Click(MemoryKey::Close);
            break;
        default:
            break;
    }
}

bool Mem_Frm::tableDiffersFromFile() const
{
    // Compared as a save would write the table and as a load would show the file, so that what only
    // a save changes (a Masked of 1, blanks) does not count.
    QString error;
    const std::optional<QList<MemRecord>> table = MemFile::recordsFromRows(model_->rows(), &error);
    QList<MemRecord> file;
    if (!table || !MemFile::load(currentFile_, &file, &error) || !QFileInfo::exists(currentFile_))
        return true;
    const std::optional<QList<MemRecord>> fileAsShown = MemFile::recordsFromRows(rowsOf(file), &error);
    if (!fileAsShown)
        return true;
    for (qsizetype i = 0; i < table->size(); ++i)
        if ((*table)[i].encode() != (*fileAsShown)[i].encode())
            return true;
    return false;
}
