// SPDX-License-Identifier: GPL-3.0-or-later
#include "HelpPage.h"

#include <QRegularExpression>

namespace HelpPage {

namespace {
const QString OptionsMarker = QStringLiteral("%OPTIONS%");
const QString DescriptionMarker = QStringLiteral("%DESCRIPTION%");
// QCommandLineParser indents option lines by two blanks and their wrapped continuations further.
constexpr int OptionIndent = 2;

int leadingBlanks(const QString& line)
{
    int n = 0;
    while (n < line.size() && line[n] == u' ')
        ++n;
    return n;
}

bool fail(QString* error, const QString& why)
{
    if (error)
        *error = why;
    return false;
}

// "-m, --model <model>  The radio to play." -> names, value name and the first line of description.
bool parseOptionLine(const QString& line, Option* option, QString* error)
{
    static const QRegularExpression gap(QStringLiteral("\\s{2,}"));
    const QString body = line.mid(OptionIndent);
    const QRegularExpressionMatch m = gap.match(body);
    const QString namesPart = m.hasMatch() ? body.left(m.capturedStart()) : body;
    option->description = m.hasMatch() ? body.mid(m.capturedEnd()).trimmed() : QString();
    QString lastName = namesPart;
    const qsizetype valueStart = namesPart.indexOf(u'<');
    if (valueStart >= 0) {
        const qsizetype valueEnd = namesPart.indexOf(u'>', valueStart);
        if (valueEnd < 0)
            return fail(error, QStringLiteral("unclosed value name in \"%1\"").arg(line));
        option->valueName = namesPart.mid(valueStart + 1, valueEnd - valueStart - 1);
        lastName = namesPart.left(valueStart).trimmed();
    }
    for (const QString& name : lastName.split(QStringLiteral(", "), Qt::SkipEmptyParts)) {
        const QString n = name.trimmed();
        if (!n.startsWith(u'-') || n.contains(u' '))
            return fail(error, QStringLiteral("not an option name: \"%1\"").arg(n));
        option->names << n;
    }
    if (option->names.isEmpty())
        return fail(error, QStringLiteral("option line without a name: \"%1\"").arg(line));
    return true;
}
}  // namespace

std::optional<Help> parse(const QString& helpText, QString* error)
{
    const QStringList lines = helpText.split(u'\n');
    Help help;
    qsizetype i = 0;
    while (i < lines.size() && !lines[i].startsWith(QStringLiteral("Options:"))) {
        if (!lines[i].startsWith(QStringLiteral("Usage:")) && !lines[i].trimmed().isEmpty())
            help.description += (help.description.isEmpty() ? QString() : QStringLiteral(" ")) + lines[i].trimmed();
        ++i;
    }
    if (i == lines.size()) {
        fail(error, QStringLiteral("no \"Options:\" section in the help text"));
        return std::nullopt;
    }
    for (++i; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.trimmed().isEmpty())
            break;  // the options end at the first blank line ("Arguments:" may follow)
        const int indent = leadingBlanks(line);
        if (indent == OptionIndent && line.at(indent) == u'-') {
            Option option;
            if (!parseOptionLine(line, &option, error))
                return std::nullopt;
            help.options << option;
        } else if (indent > OptionIndent && !help.options.isEmpty()) {
            QString& d = help.options.last().description;
            d += (d.isEmpty() ? QString() : QStringLiteral(" ")) + line.trimmed();
        } else {
            fail(error, QStringLiteral("unexpected line in the options: \"%1\"").arg(line));
            return std::nullopt;
        }
    }
    if (help.options.isEmpty()) {
        fail(error, QStringLiteral("the help text lists no option"));
        return std::nullopt;
    }
    return help;
}

QString escapeText(const QString& text)
{
    QString out = text;
    out.replace(u'\\', QStringLiteral("\\e"));
    if (out.startsWith(u'.') || out.startsWith(u'\''))
        out.prepend(QStringLiteral("\\&"));
    return out;
}

QString escapeName(const QString& name)
{
    QString out = escapeText(name);
    out.replace(u'-', QStringLiteral("\\-"));
    return out;
}

QString optionsSection(const QList<Option>& options)
{
    QStringList out;
    for (const Option& o : options) {
        QStringList names;
        for (const QString& n : o.names)
            names << QStringLiteral("\\fB%1\\fR").arg(escapeName(n));
        QString tag = names.join(QStringLiteral(", "));
        if (!o.valueName.isEmpty())
            tag += QStringLiteral(" \\fI%1\\fR").arg(escapeText(o.valueName));
        out << QStringLiteral(".TP") << tag << escapeText(o.description);
    }
    return out.join(u'\n');
}

std::optional<QString> fillTemplate(const QString& pageTemplate, const Help& help, QString* error)
{
    if (!pageTemplate.contains(OptionsMarker)) {
        fail(error, QStringLiteral("the template has no %1 line").arg(OptionsMarker));
        return std::nullopt;
    }
    QString page = pageTemplate;
    page.replace(OptionsMarker, optionsSection(help.options));
    page.replace(DescriptionMarker, escapeText(help.description));
    return page;
}

}  // namespace HelpPage
