// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The backups taken before channels are written into the radio: what the radio held in those
// channels, as a memory file (".ymp") named by the time it was taken, in a folder of their own. The
// channels not backed up are cleared records, which no channel read from the radio ever is. The
// newest ones are kept, the older ones removed.

#include "MemoryTableModel.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>
#include <utility>

namespace MemoryBackups {
constexpr int Kept = 50;
inline const QString FolderName = QStringLiteral("backups");
inline const QString Prefix = QStringLiteral("memory-");
inline const QString Suffix = QStringLiteral(".ymp");

// The backup folder inside the program's data folder.
QString folderIn(const QString& dataFolder);

// Saves (channel, 16-byte radio record) pairs; the file's path, or nothing with the reason.
std::optional<QString> save(const QString& folder, const QList<std::pair<int, QByteArray>>& records,
                            const QDateTime& at, QString* error);

// Removes all but the newest `keep` backups of the folder (files of other names are left alone).
void prune(const QString& folder, int keep = Kept);
QStringList list(const QString& folder);  // file names, oldest first

// The channels a backup holds, as table rows; false with the reason when it cannot be read.
bool load(const QString& path, QMap<int, MemoryRow>* rows, QString* error);
}  // namespace MemoryBackups
