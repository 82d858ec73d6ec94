// SPDX-License-Identifier: GPL-3.0-or-later
// The backups of what the radio held before a write: named by time, the newest kept, read back as
// the channels they hold.
#include "ChannelBytes.h"
#include "ChannelDecoder.h"
#include "ChannelNames.h"
#include "MemFile.h"
#include "MemoryBackups.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QDateTime at(QDate(2026, 11, 25), QTime(12, 30, 5, 42));
}

class TestMemoryBackups : public QObject {
    Q_OBJECT
private slots:
    void save_namedByTime_holdsTheChannelsAsRead_othersCleared()
    {
        QTemporaryDir dir;
        const QString folder = MemoryBackups::folderIn(dir.path());
        QCOMPARE(folder, dir.filePath("backups"));
        QString error;
        const std::optional<QString> path = MemoryBackups::save(
            folder,
            {{3, ChannelBytes::record(ChannelBytes::sample(3))}, {7, ChannelBytes::record(ChannelBytes::sample(7))}},
            at, &error);
        QVERIFY2(path, qPrintable(error));
        QCOMPARE(QFileInfo(*path).fileName(), QStringLiteral("memory-20261125-123005-042.ymp"));
        QCOMPARE(QFileInfo(*path).size(), MemFile::CompleteSize);

        QMap<int, MemoryRow> rows;
        QVERIFY(MemoryBackups::load(*path, &rows, &error));
        QCOMPARE(rows.keys(), (QList<int>{3, 7}));
        QCOMPARE(rows[3].cells[MemoryColumn::Chan], gridChannelName(3));
        // Sample 7: 1,886.15 kHz plus its clarifier, masked.
        QCOMPARE(rows[7].colour, MemoryColour::Masked);
        QVERIFY(!rows[7].cells[MemoryColumn::Freq].isEmpty());
    }

    void save_sameTime_secondFileGetsItsOwnName()
    {
        QTemporaryDir dir;
        QString error;
        const auto a =
            MemoryBackups::save(dir.path(), {{1, ChannelBytes::record(ChannelBytes::sample(1))}}, at, &error);
        const auto b =
            MemoryBackups::save(dir.path(), {{1, ChannelBytes::record(ChannelBytes::sample(1))}}, at, &error);
        QVERIFY(a && b);
        QVERIFY(*a != *b);
        QCOMPARE(MemoryBackups::list(dir.path()).size(), 2);
    }

    void prune_keepsTheNewest50_leavesOtherFiles()
    {
        QTemporaryDir dir;
        QString error;
        for (int i = 0; i < 53; ++i)
            QVERIFY(MemoryBackups::save(dir.path(), {{1, ChannelBytes::record(ChannelBytes::sample(1))}}, at.addSecs(i),
                                        &error));
        QFile other(dir.filePath("notes.txt"));
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.close();
        MemoryBackups::prune(dir.path());
        const QStringList left = MemoryBackups::list(dir.path());
        QCOMPARE(left.size(), 50);
        QCOMPARE(left.first(), QStringLiteral("memory-20261125-123008-042.ymp"));
        QVERIFY(QFileInfo::exists(dir.filePath("notes.txt")));
    }

    void load_missingFile_fails()
    {
        QMap<int, MemoryRow> rows;
        QString error;
        QVERIFY(!MemoryBackups::load("/nonexistent/x.ymp", &rows, &error));
        QVERIFY(!error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestMemoryBackups)
#include "test_memory_backups.moc"
