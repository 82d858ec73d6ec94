// SPDX-License-Identifier: GPL-3.0-or-later
#include "CsvText.h"

#include <QStringDecoder>

namespace {
constexpr QChar Quote = u'"';
constexpr QChar Comma = u',';
const QByteArray Utf8Bom("\xEF\xBB\xBF");

bool isControl(char c)
{
    const auto u = static_cast<unsigned char>(c);
    return (u < 0x20 && c != '\t' && c != '\n' && c != '\r') || u == 0x7F;
}

// The line of the first byte that text never holds, 0 when there is none.
int controlLine(const QByteArray& bytes)
{
    int line = 1;
    for (char c : bytes) {
        if (isControl(c))
            return line;
        if (c == '\n')
            ++line;
    }
    return 0;
}

QString decode(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes);
    return text;
}

// A blank line, or one of empty fields only (spreadsheets write ",,,," below a table).
bool blank(const CsvText::Record& r, bool quoted)
{
    if (quoted)
        return false;
    for (const QString& f : r.fields)
        if (!f.trimmed().isEmpty())
            return false;
    return true;
}
}  // namespace

CsvText::Parsed CsvText::parse(const QByteArray& raw)
{
    Parsed out;
    const QByteArray bytes = raw.startsWith(Utf8Bom) ? raw.mid(Utf8Bom.size()) : raw;
    if (const int at = controlLine(bytes)) {
        out.errorLine = at;
        out.error = QStringLiteral("this is not a text file (it holds control characters)");
        return out;
    }
    const QString text = decode(bytes);

    int line = 1;
    Record record{line, {}};
    QString current;
    bool inQuotes = false;
    bool quoted = false;        // the field being read began with a quote
    bool afterQuote = false;    // its closing quote has been read
    bool recordQuoted = false;  // some field of the record was quoted (so it is not a blank line)
    const auto endField = [&] {
        record.fields << current;
        current.clear();
        recordQuoted = recordQuoted || quoted;
        quoted = afterQuote = false;
    };
    const auto endRecord = [&] {
        endField();
        if (!blank(record, recordQuoted))
            out.records << record;
        record = Record{line, {}};
        recordQuoted = false;
    };

    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (inQuotes) {
            if (c == Quote) {
                if (i + 1 < text.size() && text[i + 1] == Quote) {
                    current += Quote;
                    ++i;
                } else {
                    inQuotes = false;
                    afterQuote = true;
                }
            } else {
                if (c == u'\n' || (c == u'\r' && !(i + 1 < text.size() && text[i + 1] == u'\n')))
                    ++line;
                current += c;
            }
            continue;
        }
        if (c == u'\r' || c == u'\n') {
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            ++line;
            endRecord();
            continue;
        }
        if (c == Comma) {
            endField();
            continue;
        }
        if (c == Quote) {
            if (!current.isEmpty() || afterQuote) {
                out.errorLine = line;
                out.error = QStringLiteral("a quote inside a field that does not begin with one");
                return out;
            }
            inQuotes = quoted = true;
            continue;
        }
        if (afterQuote) {
            if (c.isSpace())
                continue;  // blanks after the closing quote, as some programs write them
            out.errorLine = line;
            out.error = QStringLiteral("text after the closing quote of a field");
            return out;
        }
        current += c;
    }
    if (inQuotes) {
        out.errorLine = record.line;
        out.error = QStringLiteral("a quoted field is not closed before the end of the file");
        return out;
    }
    if (!current.isEmpty() || !record.fields.isEmpty() || quoted)
        endRecord();
    return out;
}

QString CsvText::field(const QString& text)
{
    const bool needsQuotes = text.contains(Comma) || text.contains(Quote) || text.contains(u'\n') ||
                             text.contains(u'\r') ||
                             (!text.isEmpty() && (text.front().isSpace() || text.back().isSpace()));
    if (!needsQuotes)
        return text;
    QString q = text;
    q.replace(Quote, QStringLiteral("\"\""));
    return Quote + q + Quote;
}

QByteArray CsvText::line(const QStringList& fields)
{
    QStringList out;
    out.reserve(fields.size());
    for (const QString& f : fields)
        out << field(f);
    return out.join(Comma).toUtf8() + "\r\n";
}
