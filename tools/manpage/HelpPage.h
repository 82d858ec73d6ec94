// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Turns a program's --help text (as QCommandLineParser prints it) into the OPTIONS section of a
// manual page, so the page lists exactly the options the program accepts.

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace HelpPage {

struct Option {
    QStringList names;  // as typed: "-m", "--model"
    QString valueName;  // "model" for "<model>"; empty for a switch
    QString description;
};

struct Help {
    QString description;  // the line between "Usage:" and "Options:"
    QList<Option> options;
};

// Reads the help text; nullopt when it has no "Options:" section or an option line is malformed.
std::optional<Help> parse(const QString& helpText, QString* error = nullptr);

// Text safe to put on a line of a manual page: backslashes escaped, no line opening with a control
// character ('.' or '\'').
QString escapeText(const QString& text);
// An option name with its dashes as minus signs ("\-\-model").
QString escapeName(const QString& name);

// The options as tagged paragraphs (.TP), one per option.
QString optionsSection(const QList<Option>& options);

// The template with %OPTIONS% and %DESCRIPTION% filled in; nullopt when %OPTIONS% is missing.
std::optional<QString> fillTemplate(const QString& pageTemplate, const Help& help, QString* error = nullptr);

}  // namespace HelpPage
