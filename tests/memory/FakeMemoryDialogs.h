// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Answers the memory window's questions in tests and records what was asked.

#include "MemoryDialogs.h"

#include <QList>

class FakeMemoryDialogs final : public MemoryDialogs {
public:
    struct Message {
        QString title, text;
    };

    bool confirm(QWidget*, const QString& title, const QString& text) override
    {
        confirmations.append({title, text});
        return confirmAnswer;
    }
    void error(QWidget*, const QString& title, const QString& text) override { errors.append({title, text}); }
    bool ask(QWidget*, const QString& title, const QString& text) override
    {
        questions.append({title, text});
        return yesAnswer;
    }
    void inform(QWidget*, const QString& title, const QString& text) override { notes.append({title, text}); }
    bool saveBeforeUpload(QWidget*, const QString& title, const QString& text) override
    {
        saveQuestions.append({title, text});
        return saveAnswer;
    }
    std::optional<QString> chooseFile(QWidget*, const FileDialogRequest& request) override
    {
        requests.append(request);
        return fileAnswer;
    }

    SaveChoice saveChanges(QWidget*, const QString& title, const QString& text) override
    {
        saveChangesQuestions.append({title, text});
        return saveChangesAnswer;
    }

    bool confirmAnswer = true;
    SaveChoice saveChangesAnswer = SaveChoice::Discard;
    QList<Message> saveChangesQuestions;
    bool yesAnswer = false;
    bool saveAnswer = false;  // Cancel, the default
    QList<Message> saveQuestions;
    std::optional<QString> fileAnswer;  // nothing: the operator cancels
    QList<Message> confirmations;
    QList<Message> errors;
    QList<Message> questions;
    QList<Message> notes;
    QList<FileDialogRequest> requests;
};
