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
    std::optional<QString> chooseFile(QWidget*, const FileDialogRequest& request) override
    {
        requests.append(request);
        return fileAnswer;
    }

    bool confirmAnswer = true;
    std::optional<QString> fileAnswer;  // nothing: the operator cancels
    QList<Message> confirmations;
    QList<Message> errors;
    QList<FileDialogRequest> requests;
};
