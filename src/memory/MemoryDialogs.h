// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The memory window's questions to the operator: the upload confirmation, error messages and the file
// dialog. Behind an interface so that tests answer them without a person.

#include <QString>
#include <QStringList>
#include <optional>

class QWidget;

struct FileDialogRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    QString title;
    QStringList filters;  // "Yaesu Mem Files (*.ymp)" ...
    QString selectedFilter;
    QString defaultSuffix;
    QString file;  // the current file name, where the dialog starts
};

class MemoryDialogs {
public:
    virtual ~MemoryDialogs() = default;
    // OK (true) or Cancel.
    virtual bool confirm(QWidget* parent, const QString& title, const QString& text) = 0;
    virtual void error(QWidget* parent, const QString& title, const QString& text) = 0;
    // Yes (true) or No; No is the default answer.
    virtual bool ask(QWidget* parent, const QString& title, const QString& text) = 0;
    virtual void inform(QWidget* parent, const QString& title, const QString& text) = 0;
    // "Save and upload" (true) or Cancel; Cancel is the default answer.
    virtual bool saveBeforeUpload(QWidget* parent, const QString& title, const QString& text) = 0;
    // The chosen file, nothing on cancel.
    virtual std::optional<QString> chooseFile(QWidget* parent, const FileDialogRequest& request) = 0;
    // Unsaved changes: Save, Discard or Cancel (the default).
    enum class SaveChoice { Save, Discard, Cancel };
    virtual SaveChoice saveChanges(QWidget* parent, const QString& title, const QString& text) = 0;
};

// Message boxes and the file dialog of the platform.
class QtMemoryDialogs final : public MemoryDialogs {
public:
    bool confirm(QWidget* parent, const QString& title, const QString& text) override;
    void error(QWidget* parent, const QString& title, const QString& text) override;
    bool ask(QWidget* parent, const QString& title, const QString& text) override;
    void inform(QWidget* parent, const QString& title, const QString& text) override;
    bool saveBeforeUpload(QWidget* parent, const QString& title, const QString& text) override;
    std::optional<QString> chooseFile(QWidget* parent, const FileDialogRequest& request) override;
    SaveChoice saveChanges(QWidget* parent, const QString& title, const QString& text) override;
};

// "Name (*.a)|*.a|Other (*.b)|*.b": pairs of a description and a pattern, as the dialog's filter is
// written; gives "Name (*.a)", "Other (*.b)".
QStringList dialogFilters(const QString& pairs);
