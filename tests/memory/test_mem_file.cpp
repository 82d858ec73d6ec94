// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelBytes.h"
#include "GoldenFile.h"
#include "MemFile.h"
#include "MemoryReadout.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
QByteArray readFile(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QList<MemoryRow> loadRows(const QString& path)
{
    QList<MemRecord> records;
    QString error;
    if (!MemFile::load(path, &records, &error))
        qWarning() << error;
    QList<MemoryRow> rows;
    for (const MemRecord& r : records)
        rows.append(rowFromRecord(r));
    return rows;
}

// The table as a full read-out fills it.
QList<MemoryRow> rowsFromReadout(const QByteArray& reply)
{
    QList<MemoryRow> rows(113);
    ChannelMode mode;
    for (const DecodedChannel& c : decodeAllChannels(reply, &mode))
        rows[c.channel - 1] = channelRow(c.channel, c.decode);
    return rows;
}
}  // namespace

class TestMemFile : public QObject {
    Q_OBJECT
private slots:
    void goldenFile_isComplete() { QCOMPARE(Golden::file().size(), 3277); }

    void goldenFile_loadsIntoTheExactTextsAndColours()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        const QList<MemoryRow> rows = loadRows(path);
        QCOMPARE(rows.size(), 113);
        for (int n = 1; n <= 113; ++n) {
            const Golden::Row e = Golden::expected(n);
            for (int c = 0; c < 6; ++c)
                QCOMPARE(rows[n - 1].cells[c], e.cells[c]);
            QCOMPARE(rows[n - 1].colour, e.masked ? MemoryColour::Masked : MemoryColour::Unmasked);
        }
    }

    void savingTheGoldenTable_writesTheGoldenBytes()
    {
        QTemporaryDir dir;
        const QString in = dir.filePath(QStringLiteral("in.ymp"));
        const QString out = dir.filePath(QStringLiteral("out.ymp"));
        QVERIFY(writeFile(in, Golden::file()));
        QString error;
        QVERIFY2(MemFile::save(out, loadRows(in), &error), qPrintable(error));
        // Record 3 held Masked = 1, which loads unmasked and is saved back as 0; everything else is equal.
        QByteArray expected = Golden::file();
        expected[2 * 29 + 27] = 0;
        QCOMPARE(readFile(out), expected);
    }

    void saveOfAFullReadout_thenLoad_reproducesEveryCellAndColour()
    {
        const QList<MemoryRow> table = rowsFromReadout(ChannelBytes::fullReadout());
        // The sample covers masked and unmasked rows, every mode and negative clarifiers.
        QVERIFY(table[6].colour == MemoryColour::Masked && table[5].colour == MemoryColour::Unmasked);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("round.ymp"));
        QString error;
        QVERIFY2(MemFile::save(path, table, &error), qPrintable(error));
        QCOMPARE(QFileInfo(path).size(), 3277);
        const QList<MemoryRow> back = loadRows(path);
        for (int n = 0; n < 113; ++n) {
            for (int c = 0; c < 6; ++c)
                QCOMPARE(back[n].cells[c], table[n].cells[c]);
            QCOMPARE(back[n].colour, table[n].colour);
        }
    }

    void shortFile_fillsTheRestFromClearedRecords()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("short.ymp"));
        QVERIFY(writeFile(path, Golden::file().left(3 * 29)));
        const QList<MemoryRow> rows = loadRows(path);
        QCOMPARE(rows.size(), 113);
        QCOMPARE(rows[1].cells[1], QStringLiteral("7,025.00 "));
        QCOMPARE(rows[1].colour, MemoryColour::Masked);
        for (int n = 4; n <= 113; ++n) {
            QCOMPARE(rows[n - 1], rowFromRecord(MemRecord{}));
            QCOMPARE(rows[n - 1].colour, MemoryColour::Unmasked);
        }
    }

    void truncatedFile_insideARecord_loadsWithoutCrash()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("cut.ymp"));
        QVERIFY(writeFile(path, Golden::file().left(29 + 10)));  // record 2 stops inside its frequency
        const QList<MemoryRow> rows = loadRows(path);
        QCOMPARE(rows.size(), 113);
        QCOMPARE(rows[0].cells[1], QStringLiteral("14,157.70 "));
        QCOMPARE(rows[1].cells[0], QStringLiteral(" Chan 2"));
        QCOMPARE(rows[1].cells[2], QString());
        QCOMPARE(rows[1].colour, MemoryColour::Unmasked);
    }

    void emptyFile_loadsBlankRows()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("empty.ymp"));
        QVERIFY(writeFile(path, {}));
        const QList<MemoryRow> rows = loadRows(path);
        QCOMPARE(rows.size(), 113);
        for (const MemoryRow& r : rows)
            QCOMPARE(r, rowFromRecord(MemRecord{}));
    }

    void missingFile_loadsBlankRows()
    {
        QTemporaryDir dir;
        QList<MemRecord> records;
        QString error;
        QVERIFY(MemFile::load(dir.filePath(QStringLiteral("none.ymp")), &records, &error));
        QCOMPARE(records.size(), 113);
        QCOMPARE(records[0], MemRecord{});
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("none.ymp"))));
    }

    void oversizedFile_loadsTheFirst113Records()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("big.ymp"));
        QVERIFY(writeFile(path, Golden::file() + QByteArray(5000, char(0x77))));
        const QList<MemoryRow> rows = loadRows(path);
        QCOMPARE(rows.size(), 113);
        QCOMPARE(rows[112].cells[0], QStringLiteral(" QMB 5"));
        QCOMPARE(rows[0].cells[1], QStringLiteral("14,157.70 "));
    }

    void randomBytes_loadWithoutCrash_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<uint>("seed");
        for (int size : {1, 28, 29, 30, 1000, 3276, 3277, 3278, 10000})
            QTest::addRow("%d bytes", size) << size << uint(size * 7919);
    }
    void randomBytes_loadWithoutCrash()
    {
        QFETCH(int, size);
        QFETCH(uint, seed);
        QByteArray bytes(size, '\0');
        for (char& c : bytes) {
            seed = seed * 1664525u + 1013904223u;
            c = char(seed >> 24);
        }
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("random.ymp"));
        QVERIFY(writeFile(path, bytes));
        const QList<MemoryRow> rows = loadRows(path);
        QCOMPARE(rows.size(), 113);
        for (const MemoryRow& r : rows)
            QVERIFY(r.colour == MemoryColour::Masked || r.colour == MemoryColour::Unmasked);
    }

    void unreadableFile_failsWithAReason()
    {
        QTemporaryDir dir;
        QList<MemRecord> records;
        QString error;
        // A folder where the file should be.
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        QVERIFY(!MemFile::load(dir.filePath(QStringLiteral("folder.ymp")), &records, &error));
        QVERIFY(!error.isEmpty());
    }

    void save_writesExactly113RecordsForANewFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("new.ymp"));
        QString error;
        QVERIFY(MemFile::save(path, rowsFromReadout(ChannelBytes::fullReadout()), &error));
        QCOMPARE(readFile(path).size(), 3277);
    }

    void save_keepsTheBytesAnOldFileHadBeyondRecord113()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("long.ymp"));
        const QByteArray tail = QByteArray("extra records kept by somebody else") + QByteArray(100, char(0xEE));
        QVERIFY(writeFile(path, QByteArray(3277, 'x') + tail));
        QString error;
        const QList<MemoryRow> table = rowsFromReadout(ChannelBytes::fullReadout());
        QVERIFY2(MemFile::save(path, table, &error), qPrintable(error));
        const QByteArray now = readFile(path);
        QCOMPARE(now.size(), 3277 + tail.size());
        QCOMPARE(now.mid(3277), tail);
        QCOMPARE(now.left(29), recordFromRow(table[0], nullptr)->encode());
    }

    void save_replacesAShorterOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("short.ymp"));
        QVERIFY(writeFile(path, QByteArray(100, 'x')));
        QString error;
        QVERIFY(MemFile::save(path, rowsFromReadout(ChannelBytes::fullReadout()), &error));
        QCOMPARE(readFile(path).size(), 3277);
    }

    void save_stopsAtABadFrequencyCellNamingTheRow_andLeavesTheOldFileIntact()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("keep.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        QList<MemoryRow> table = rowsFromReadout(ChannelBytes::fullReadout());
        table[59].cells[MemoryColumn::Freq] = QStringLiteral("No Link  ");  // row 60: 59 records written before it
        QString error;
        QVERIFY(!MemFile::save(path, table, &error));
        QVERIFY2(error.contains(QStringLiteral("Row 60")), qPrintable(error));
        QVERIFY2(error.contains(QStringLiteral("Chan 60")), qPrintable(error));
        QCOMPARE(readFile(path), Golden::file());
        // No temporary file is left beside it.
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("keep.ymp")});
    }

    void save_stopsAtAnEmptyClarifierCell_andLeavesTheOldFileIntact()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("keep.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        QList<MemoryRow> table = rowsFromReadout(ChannelBytes::fullReadout());
        table[112].cells[MemoryColumn::Clar].clear();  // the very last row
        QString error;
        QVERIFY(!MemFile::save(path, table, &error));
        QVERIFY2(error.contains(QStringLiteral("Row 113")), qPrintable(error));
        QCOMPARE(readFile(path), Golden::file());
    }

    void save_ofAnEmptyTable_failsAtRow1()
    {
        QTemporaryDir dir;
        QString error;
        QVERIFY(!MemFile::save(dir.filePath(QStringLiteral("x.ymp")), QList<MemoryRow>(113), &error));
        QVERIFY(error.startsWith(QStringLiteral("Row 1 ")));
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("x.ymp"))));
    }

    void save_intoAMissingFolder_failsAndCreatesNothing()
    {
        QTemporaryDir dir;
        QString error;
        const QString path = dir.filePath(QStringLiteral("no/such/folder/x.ymp"));
        QVERIFY(!MemFile::save(path, rowsFromReadout(ChannelBytes::fullReadout()), &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!QFile::exists(path));
    }
};

QTEST_GUILESS_MAIN(TestMemFile)
#include "test_mem_file.moc"
