// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Reading and writing memory files: 113 records of 29 bytes (a complete file is 3277 bytes).
//
// Loading never fails on content: a short file gives cleared records for the channels it lacks, and
// any bytes are shown as they are. A missing file loads as an empty one.
//
// Saving is atomic: the records go to a temporary file beside the target, which replaces it only once
// every record is written and flushed. Only where the folder cannot be written but the file can (the
// default file in the program's own folder) is the file written in place, its old bytes kept in
// memory and written back when the write fails. When a row cannot be written (a frequency or
// clarifier cell that is not a number) the save stops with an error naming the row, and the old file
// stays exactly as it was rather than keeping the records written before the bad row. Bytes an old
// file had beyond record 113 are carried over. A failure's error says what became of the old file.

#include "MemRecord.h"
#include "MemoryTableModel.h"

#include <QList>
#include <QString>
#include <optional>

namespace MemFile {
constexpr int Records = 113;
constexpr qint64 CompleteSize = qint64(Records) * MemRecord::Size;  // 3277

inline const QString DefaultName = QStringLiteral("ft1000.ymp");

// Where the memory file lives until the operator picks another: beside the program where its folder
// may be written (a build or portable folder), otherwise in the user's data folder, since an
// installed program's folder (/usr/bin) cannot be written.
QString defaultPath(const QString& programFolder, const QString& dataFolder);

// Records 1..113 from bytes (record n at index n - 1).
QList<MemRecord> recordsFromBytes(const QByteArray& bytes);

// False, with the reason, only when an existing file cannot be read.
bool load(const QString& path, QList<MemRecord>* records, QString* error);

bool save(const QString& path, const QList<MemoryRow>& rows, QString* error);

// The table as a CSV memory list, written the same careful way as a save.
bool exportCsv(const QString& path, const QList<MemoryRow>& rows, QString* error);

// The table's 113 rows as records; nothing, with an error naming the row, when a row's frequency or
// clarifier is not a number.
std::optional<QList<MemRecord>> recordsFromRows(const QList<MemoryRow>& rows, QString* error);
}  // namespace MemFile
