// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemFile.h"

#include "ChannelNames.h"
#include "FileReplace.h"
#include "MemoryCsv.h"
#include "MemoryLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
QString rowError(int channel, const QString& reason)
{
    return QStringLiteral("Row %1 (%2): %3.").arg(channel).arg(gridChannelName(channel).trimmed(), reason);
}
}  // namespace

QString MemFile::defaultPath(const QString& programFolder, const QString& dataFolder)
{
    const QFileInfo program(programFolder);
    const QString folder = program.isDir() && program.isWritable() ? programFolder : dataFolder;
    return QDir(folder).filePath(DefaultName);
}

QList<MemRecord> MemFile::recordsFromBytes(const QByteArray& bytes)
{
    QList<MemRecord> records;
    records.reserve(Records);
    for (int n = 0; n < Records; ++n) {
        const qsizetype at = qsizetype(n) * MemRecord::Size;
        records.append(at < bytes.size() ? MemRecord::decode(bytes.mid(at, MemRecord::Size)) : MemRecord{});
    }
    return records;
}

bool MemFile::load(const QString& path, QList<MemRecord>* records, QString* error)
{
    QByteArray bytes;
    if (QFileInfo::exists(path) || QFileInfo(path).isSymLink()) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            if (error)
                *error = file.errorString();
            return false;
        }
        // Only the 113 records are of interest, however long the file is.
        bytes = file.read(CompleteSize);
        if (file.error() != QFileDevice::NoError) {
            if (error)
                *error = file.errorString();
            return false;
        }
    }
    qCDebug(lcMemory) << "load" << path << bytes.size() << "bytes";
    *records = recordsFromBytes(bytes);
    return true;
}

std::optional<QList<MemRecord>> MemFile::recordsFromRows(const QList<MemoryRow>& rows, QString* error)
{
    QList<MemRecord> records;
    records.reserve(Records);
    for (int channel = 1; channel <= Records; ++channel) {
        const MemoryRow row = channel <= rows.size() ? rows[channel - 1] : MemoryRow{};
        QString reason;
        const std::optional<MemRecord> record = recordFromRow(row, &reason);
        if (!record) {
            if (error)
                *error = rowError(channel, reason);
            return std::nullopt;
        }
        records.append(*record);
    }
    return records;
}

bool MemFile::save(const QString& path, const QList<MemoryRow>& rows, QString* error)
{
    // What an existing longer file holds beyond the records is kept.
    QByteArray tail;
    if (QFileInfo(path).size() > CompleteSize) {
        QFile old(path);
        if (!old.open(QIODevice::ReadOnly) || !old.seek(CompleteSize)) {
            if (error)
                *error = old.errorString() + QStringLiteral(". The file was left as it was.");
            return false;
        }
        tail = old.readAll();
    }

    // Every row is turned into its record before the file is touched, so a row that cannot be written
    // leaves the old file as it was, whichever way the file is then written.
    const std::optional<QList<MemRecord>> records = recordsFromRows(rows, error);
    if (!records) {
        if (error)
            *error += QStringLiteral(" The file was left as it was.");
        return false;
    }
    QByteArray bytes;
    bytes.reserve(CompleteSize + tail.size());
    for (const MemRecord& r : *records)
        bytes += r.encode();
    bytes += tail;

    const FileReplace::Result written = FileReplace::write(path, bytes);
    if (!written.ok) {
        if (error)
            *error = written.message();
        return false;
    }
    qCDebug(lcMemory) << "saved" << path;
    return true;
}

bool MemFile::exportCsv(const QString& path, const QList<MemoryRow>& rows, QString* error)
{
    const std::optional<QList<MemRecord>> records = recordsFromRows(rows, error);
    if (!records) {
        if (error)
            *error += QStringLiteral(" Nothing was written.");
        return false;
    }
    const FileReplace::Result written = FileReplace::write(path, MemoryCsv::write(*records));
    if (!written.ok) {
        if (error)
            *error = written.message();
        return false;
    }
    qCDebug(lcMemory) << "exported" << path;
    return true;
}
