// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryBackups.h"

#include "ChannelDecoder.h"
#include "MemFile.h"
#include "MemRecord.h"
#include "MemoryReadout.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {
const QString TimeFormat = QStringLiteral("yyyyMMdd-HHmmss-zzz");
}

namespace MemoryBackups {

QString folderIn(const QString& dataFolder)
{
    return QDir(dataFolder).filePath(FolderName);
}

std::optional<QString> save(const QString& folder, const QList<std::pair<int, QByteArray>>& records,
                            const QDateTime& at, QString* error)
{
    QList<MemRecord> file(MemFile::Records);
    for (const auto& [channel, bytes] : records) {
        if (channel < 1 || channel > MemFile::Records || bytes.size() < ChannelDecodedBytes)
            continue;
        const MemoryRow row = channelRow(channel, decodeChannel(bytes, ChannelMode{}));
        if (const std::optional<MemRecord> r = recordFromRow(row, nullptr))
            file[channel - 1] = *r;
    }
    if (!QDir().mkpath(folder)) {
        if (error)
            *error = QStringLiteral("The backup folder \"%1\" cannot be made.").arg(folder);
        return std::nullopt;
    }
    const QString stem = QDir(folder).filePath(Prefix + at.toString(TimeFormat));
    QString path = stem + Suffix;
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = stem + QStringLiteral("-%1").arg(n) + Suffix;
    QSaveFile out(path);
    QByteArray bytes;
    for (const MemRecord& r : file)
        bytes += r.encode();
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit()) {
        if (error)
            *error = QStringLiteral("The backup \"%1\" cannot be written: %2.").arg(path, out.errorString());
        return std::nullopt;
    }
    return path;
}

QStringList list(const QString& folder)
{
    QStringList names = QDir(folder).entryList({Prefix + u'*' + Suffix}, QDir::Files, QDir::Name);
    return names;
}

void prune(const QString& folder, int keep)
{
    const QStringList names = list(folder);
    for (qsizetype i = 0; i + keep < names.size(); ++i)
        QFile::remove(QDir(folder).filePath(names[i]));
}

bool load(const QString& path, QMap<int, MemoryRow>* rows, QString* error)
{
    if (!QFileInfo::exists(path)) {
        if (error)
            *error = QStringLiteral("The file does not exist.");
        return false;
    }
    QList<MemRecord> records;
    if (!MemFile::load(path, &records, error))
        return false;
    const QByteArray cleared = MemRecord{}.encode();
    for (qsizetype i = 0; i < records.size(); ++i)
        if (records[i].encode() != cleared)
            rows->insert(static_cast<int>(i) + 1, rowFromRecord(records[i]));
    return true;
}

}  // namespace MemoryBackups
