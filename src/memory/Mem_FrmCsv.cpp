// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's CSV lists: "Export CSV..." and "Import CSV..." of the "File" menu.
#include "Mem_Frm.h"

#include "MemFile.h"
#include "MemoryCsv.h"
#include "MemoryDialogs.h"
#include "MemoryGridModel.h"
#include "MemoryLog.h"

#include <QFile>
#include <QFileInfo>

namespace {
using namespace MemoryWindow;

// A memory list is a few kilobytes; anything far larger is not one, and is not read whole.
constexpr qint64 MaxListBytes = 1 << 20;

// Rows listed in the question before an import; the rest are counted.
constexpr int ListedLosses = 12;

QString lossesText(const QString& path, const QList<MemoryCsv::Loss>& losses)
{
    QString text = QStringLiteral("Some channels of \"%1\" cannot be imported as the list has them:\n\n").arg(path);
    for (qsizetype i = 0; i < losses.size() && i < ListedLosses; ++i)
        text +=
            QStringLiteral("Line %1, channel %2: %3.\n").arg(losses[i].line).arg(losses[i].channel).arg(losses[i].what);
    if (losses.size() > ListedLosses)
        text += QStringLiteral("... and %1 more.\n").arg(losses.size() - ListedLosses);
    text += QStringLiteral("\nImport the list anyway? (No leaves the table as it is.)");
    return text;
}

// The current memory file's name with the list's suffix, where the dialog starts.
QString csvBeside(const QString& memFile)
{
    const QFileInfo info(memFile);
    return info.path() + u'/' + info.completeBaseName() + u'.' + CsvSuffix;
}
}  // namespace

void Mem_Frm::mnu_csv_Click(int index)
{
    if (index == 1 && !mayReplaceTable())
        return;
    FileDialogRequest request;
    request.filters = dialogFilters(CsvFilter);
    request.selectedFilter = request.filters.value(0);
    request.defaultSuffix = CsvSuffix;
    request.file = csvBeside(currentFile_);
    request.kind = index == 0 ? FileDialogRequest::Kind::Save : FileDialogRequest::Kind::Open;
    request.title = index == 0 ? ExportCsvTitle : ImportCsvTitle;
    const std::optional<QString> chosen = dialogs_->chooseFile(dialogParent(), request);
    if (!chosen)
        return;
    if (index == 0)
        ExportCsv(*chosen);
    else
        ImportCsv(*chosen);
}

bool Mem_Frm::ExportCsv(const QString& path)
{
    QString error;
    if (MemFile::exportCsv(path, model_->rows(), &error))
        return true;
    qCWarning(lcMemory) << "export failed:" << path << error;
    dialogs_->error(dialogParent(), ExportCsvErrorTitle,
                    QStringLiteral("Could not export the memory list to \"%1\".\n%2").arg(path, error));
    return false;
}

bool Mem_Frm::ImportCsv(const QString& path)
{
    const auto refuse = [this, &path](const QString& where) {
        qCWarning(lcMemory) << "import refused:" << path << where;
        dialogs_->error(dialogParent(), ImportCsvErrorTitle,
                        QStringLiteral("Could not import \"%1\".\n%2\nThe table was left as it was.").arg(path, where));
        return false;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refuse(file.errorString() + u'.');
    const QByteArray bytes = file.read(MaxListBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return refuse(file.errorString() + u'.');
    if (bytes.size() > MaxListBytes)
        return refuse(QStringLiteral("The file is far too large for a memory list."));
    const MemoryCsv::Result list = MemoryCsv::read(bytes);
    if (!list.ok())
        return refuse(QStringLiteral("Line %1: %2.").arg(list.line).arg(list.problem));
    if (!list.losses.isEmpty() && !dialogs_->ask(dialogParent(), ImportCsvErrorTitle, lossesText(path, list.losses))) {
        qCDebug(lcMemory) << "import declined:" << path << list.losses.size() << "rows not kept as they are";
        return false;
    }
    showRecords(list.records);
    return true;
}
