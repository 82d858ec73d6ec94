// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryDialogs.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

bool QtMemoryDialogs::confirm(QWidget* parent, const QString& title, const QString& text)
{
    return QMessageBox::question(parent, title, text, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok) ==
           QMessageBox::Ok;
}

void QtMemoryDialogs::error(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox::warning(parent, title, text);
}

bool QtMemoryDialogs::ask(QWidget* parent, const QString& title, const QString& text)
{
    return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
           QMessageBox::Yes;
}

void QtMemoryDialogs::inform(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox::information(parent, title, text);
}

bool QtMemoryDialogs::saveBeforeUpload(QWidget* parent, const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
    QPushButton* save = box.addButton(QStringLiteral("Save and upload"), QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    return box.clickedButton() == save;
}

std::optional<QString> QtMemoryDialogs::chooseFile(QWidget* parent, const FileDialogRequest& request)
{
    QFileDialog dialog(parent, request.title);
    const bool open = request.kind == FileDialogRequest::Kind::Open;
    dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    // Opening needs a file that exists; saving asks before replacing one.
    dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setNameFilters(request.filters);
    dialog.selectNameFilter(request.selectedFilter);
    dialog.setDefaultSuffix(request.defaultSuffix);
    if (!request.file.isEmpty())
        dialog.selectFile(request.file);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

MemoryDialogs::SaveChoice QtMemoryDialogs::saveChanges(QWidget* parent, const QString& title, const QString& text)
{
    switch (QMessageBox::question(parent, title, text, QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                  QMessageBox::Cancel)) {
        case QMessageBox::Save:
            return SaveChoice::Save;
        case QMessageBox::Discard:
            return SaveChoice::Discard;
        default:
            return SaveChoice::Cancel;
    }
}

QStringList dialogFilters(const QString& pairs)
{
    const QStringList parts = pairs.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i];
        const QString pattern = parts[i + 1];
        // The description normally names its patterns already; add them when it does not.
        filters << (description.contains(pattern) ? description : description + QStringLiteral(" (") + pattern + u')');
    }
    return filters;
}
