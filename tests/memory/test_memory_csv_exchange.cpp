// SPDX-License-Identifier: GPL-3.0-or-later
// CSV lists: the channel-exchange layout of other memory tools (and what a channel cannot keep of
// it), and the round trip of every record the radio can hold through a list.
#include "ChannelBytes.h"
#include "MemFile.h"
#include "MemoryCsvChecks.h"

#include <QTemporaryDir>

class TestMemoryCsvExchange : public QObject {
    Q_OBJECT
private slots:
    // --- Reading the channel-exchange layout of other tools ---

    void exchange_locationFrequencyInMHzModeName()
    {
        const QByteArray csv =
            "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,Mode,TStep,Skip,"
            "Comment\r\n"
            "1,Net,14.230000,,0.000000,,88.5,88.5,023,NN,USB,5.00,,evening\r\n"
            "2,Rep,29.620000,-,0.100000,Tone,88.5,88.5,023,NN,FM,5.00,S,\r\n"
            "3,Morse,7.030000,,0.000000,,88.5,88.5,023,NN,CW,5.00,,\r\n"
            "4,Ft8,14.074000,,0.000000,,88.5,88.5,023,NN,DIG,5.00,,\r\n"
            "5,Aprs,10.147600,,0.000000,,88.5,88.5,023,NN,PKT,5.00,,\r\n"
            "6,Bc,9.580000,,0.000000,,88.5,88.5,023,NN,AM,5.00,,\r\n"
            "7,Low,3.650000,,0.000000,,88.5,88.5,023,NN,LSB,5.00,,\r\n"
            "108,Last,0.136000,,0.000000,,88.5,88.5,023,NN,RTTY,5.00,,\r\n";
        const MemoryCsv::Result r = MemoryCsv::read(csv);
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0], record(" Net    ", 1423000.0f, "USB    ", 0, "A ", 1, false));
        QCOMPARE(r.records[1], record(" Rep    ", 2962000.0f, "FM     ", 0, "A ", 6, false));
        QCOMPARE(r.records[2], record(" Morse  ", 703000.0f, "CW N   ", 0, "A ", 2, false));
        QCOMPARE(r.records[3], record(" Ft8    ", 1407400.0f, "PKT LSB", 0, "A ", 10, false));
        QCOMPARE(r.records[4], record(" Aprs   ", 1014760.0f, "PKT LSB", 0, "A ", 10, false));
        QCOMPARE(r.records[5], record(" Bc     ", 958000.0f, "AM     ", 0, "A ", 4, false));
        QCOMPARE(r.records[6], record(" Low    ", 365000.0f, "LSB    ", 0, "A ", 0, false));
        QCOMPARE(r.records[107], record(" Last   ", 13600.0f, "RTTY N ", 0, "A ", 8, false));
        QCOMPARE(r.records[7], MemRecord{});
        // The repeater channel's shift and tone cannot be kept, and are named.
        QCOMPARE(r.losses.size(), 2);
        QCOMPARE(r.losses[0].line, 3);
        QCOMPARE(r.losses[0].channel, 2);
        QCOMPARE(r.losses[0].what, QStringLiteral("the repeater offset - 0.100000 MHz is not kept: the channel would "
                                                  "transmit on its receive frequency"));
        QCOMPARE(r.losses[1].what,
                 QStringLiteral("the tone setting \"Tone\" is not kept: the channel would have no tone"));
    }

    void exchange_whatAChannelCannotKeep_isNamedRowByRow()
    {
        const MemoryCsv::Result r = MemoryCsv::read(
            "Location,Name,Frequency,Duplex,Offset,Tone,Mode\n"
            "1,Simplex,14.2,,0.000000,,USB\n"  // nothing lost
            "2,Zero,29.6,+,0.000000,,FM\n"     // a shift of nothing: simplex
            "3,Split,29.6,split,29.500000,,FM\n"
            "4,NoTx,29.6,off,0,,FM\n"
            "5,Sq,29.6,,0,TSQL,FM\n"
            "6,Longername,7.1,,0,,LSB\n"
            "7,Kl\xc3\xa4re,7.1,,0,,LSB\n"
            "8,\xe2\x98\x85,7.1,,0,,LSB\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QStringList got;
        for (const MemoryCsv::Loss& l : r.losses)
            got << QStringLiteral("%1/%2: %3").arg(l.line).arg(l.channel).arg(l.what);
        QCOMPARE(got, (QStringList{
                          "4/3: the transmit frequency 29.500000 MHz (Duplex split) is not kept: the channel would "
                          "transmit on its receive frequency",
                          "5/4: \"transmit off\" (Duplex off) is not kept: the channel could transmit",
                          "6/5: the tone setting \"TSQL\" is not kept: the channel would have no tone",
                          "7/6: the name \"Longername\" is cut to \"Longern\" (a channel keeps 7 characters)",
                          QStringLiteral("8/7: the name \"Kl\u00e4re\" has characters outside ASCII; the channel "
                                         "keeps \"Kl\u00e4re\""),
                          QStringLiteral("9/8: the name \"\u2605\" has characters outside ASCII; the channel keeps "
                                         "\"?\""),
                      }));
    }

    void read_ownLayout_namesTooLong_areNamedToo()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\r\n1,Eightchr,7074.00,USB,0,A,no\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.losses.size(), 1);
        QCOMPARE(r.losses[0].channel, 1);
        QVERIFY(r.losses[0].what.startsWith(QStringLiteral("the name \"Eightchr\" is cut to \"Eightch\"")));
    }

    void exchange_unknownMode()
    {
        const MemoryCsv::Result r = bad("Location,Name,Frequency,Mode\n1,A,14.2,USB\n2,B,14.3,DV\n");
        QCOMPARE(r.line, 3);
        QCOMPARE(r.problem, QStringLiteral("unknown mode \"DV\""));
    }

    void exchange_frequencyOutside30MHz()
    {
        const MemoryCsv::Result r = bad("Location,Name,Frequency,Mode\n1,A,145.500000,FM\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("the frequency 145.500000 MHz is outside 0.03-30 MHz"));
    }

    void exchange_locationOutside1To113()
    {
        const MemoryCsv::Result r = bad("Location,Name,Frequency,Mode\n0,A,14.2,USB\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("Location 0 is outside 1-113"));
    }

    // --- The round trip ---

    void everyRecordTheRadioCanHold_exportsToAListThatImportsToTheSameRecords()
    {
        // Every mode byte with and without its second-variant bit, after a channel of each kind (a mode
        // byte outside the table keeps the one before), at the radio's lowest and highest frequency
        // and in between, with the clarifier at both ends of its range, every antenna, masked or not.
        const quint32 counts[] = {30 * 1600, 30000 * 1600, 22652320};
        const qint16 clars[] = {-32768, 32767, 0, 1, -1};
        QList<ChannelBytes::Channel> all;
        for (int mode = 0; mode < 256; ++mode)
            for (int second = 0; second < 2; ++second)
                for (const quint32 count : counts)
                    for (const qint16 clar : clars) {
                        ChannelBytes::Channel c;
                        c.mode = mode;
                        c.second = second != 0;
                        c.count = count;
                        c.clar = clar;
                        c.antenna = (all.size() % 4) << 4;
                        c.masked = all.size() % 3 == 0;
                        all << c;
                    }
        int lists = 0;
        for (qsizetype from = 0; from < all.size(); from += 113, ++lists) {
            QByteArray reply(55, char(0x55));
            for (int n = 0; n < 113; ++n)
                reply += ChannelBytes::record(all[(from + n) % all.size()]);
            const QList<MemoryRow> table = rowsFromReadout(reply);
            QString error;
            const std::optional<QList<MemRecord>> records = MemFile::recordsFromRows(table, &error);
            QVERIFY2(records, qPrintable(error));
            const MemoryCsv::Result back = MemoryCsv::read(MemoryCsv::write(*records));
            QVERIFY2(back.ok(),
                     qPrintable(QStringLiteral("list %1, line %2: %3").arg(lists).arg(back.line).arg(back.problem)));
            QVERIFY(back.losses.isEmpty());
            for (int n = 0; n < 113; ++n)
                QVERIFY2(back.records[n].encode() == (*records)[n].encode(),
                         qPrintable(QStringLiteral("list %1, channel %2").arg(lists).arg(n + 1)));
        }
        QCOMPARE(lists, int((all.size() + 112) / 113));
    }

    void getMemTable_exportImportSave_isByteIdenticalToSavingDirectly()
    {
        const QList<MemoryRow> table = rowsFromReadout(ChannelBytes::fullReadout());
        QTemporaryDir dir;
        QString error;
        QVERIFY(MemFile::save(dir.filePath(QStringLiteral("direct.ymp")), table, &error));

        const std::optional<QList<MemRecord>> records = MemFile::recordsFromRows(table, &error);
        QVERIFY2(records, qPrintable(error));
        const MemoryCsv::Result back = MemoryCsv::read(MemoryCsv::write(*records));
        QVERIFY2(back.ok(), qPrintable(back.problem));
        QList<MemoryRow> imported;
        for (const MemRecord& r : back.records)
            imported << rowFromRecord(r);
        QCOMPARE(imported, table);
        QVERIFY(MemFile::save(dir.filePath(QStringLiteral("via-csv.ymp")), imported, &error));
        QCOMPARE(readFile(dir.filePath(QStringLiteral("via-csv.ymp"))),
                 readFile(dir.filePath(QStringLiteral("direct.ymp"))));
    }
};

QTEST_GUILESS_MAIN(TestMemoryCsvExchange)
#include "test_memory_csv_exchange.moc"
