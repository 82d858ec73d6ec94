// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Comma-separated values as RFC 4180 writes them: fields separated by commas, records by line ends
// (CRLF written; CRLF, LF or a lone CR read), a field in double quotes when it holds a comma, a
// quote, a line end or blanks at either end, a quote inside quotes doubled.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace CsvText {

struct Record {
    int line = 0;  // the line of the file the record starts on, from 1
    QStringList fields;
};

struct Parsed {
    QList<Record> records;  // blank lines left out
    int errorLine = 0;      // where the text stopped making sense; 0 when it all did
    QString error;
    bool ok() const { return error.isEmpty(); }
};

// Bytes as a spreadsheet saves them: UTF-8 with or without a byte order mark (text that is not UTF-8
// is read as Latin-1). A file holding control characters other than tab and line ends is not text
// and is refused, naming the line.
Parsed parse(const QByteArray& bytes);

// One record, ended with CRLF, in UTF-8.
QByteArray line(const QStringList& fields);
QString field(const QString& text);  // quoted when it needs to be

}  // namespace CsvText
