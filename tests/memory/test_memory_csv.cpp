// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelBytes.h"
#include "CsvText.h"
#include "GoldenFile.h"
#include "MemFile.h"
#include "MemoryCsv.h"
#include "MemoryCsvChecks.h"
#include "MemoryReadout.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
QList<MemRecord> goldenRecords()
{
    return MemFile::recordsFromBytes(Golden::file());
}

QList<QByteArray> lines(const QByteArray& csv)
{
    QList<QByteArray> l = csv.split('\n');
    if (!l.isEmpty() && l.last().isEmpty())
        l.removeLast();
    return l;
}
}  // namespace

class TestMemoryCsv : public QObject {
    Q_OBJECT
private slots:
    // --- Writing ---

    void write_headerThen113Channels_crlf()
    {
        const QByteArray csv = MemoryCsv::write(goldenRecords());
        const QList<QByteArray> l = lines(csv);
        QCOMPARE(l.size(), 114);
        QCOMPARE(l[0], header + "\r");
        for (const QByteArray& line : l)
            QVERIFY(line.endsWith('\r'));
        QCOMPARE(csv.count("\r\n"), 114);
    }

    void write_everyColumn()
    {
        const QList<QByteArray> l = lines(MemoryCsv::write(goldenRecords()));
        QCOMPARE(l[1], QByteArray("1,\" Chan 1\",14157.70,USB,0.00,A,no\r"));
        QCOMPARE(l[2], QByteArray("2,\" Chan 2\",7025.00,CW R,-0.74,B,yes\r"));
        QCOMPARE(l[3], QByteArray("3,\" Chan 3\",28000.00,AM Sync,0.54,Rx,no\r"));  // Masked = 1 is not masked
        QCOMPARE(l[99], QByteArray("99,\" Chan 99\",7025.00,LSB,0.00,A,no\r"));
        QCOMPARE(l[100], QByteArray("100,\" P 1\",14157.70,DataUSR,-20.48,A,yes\r"));
        QCOMPARE(l[108], QByteArray("108,\" P 9\",28000.00,FM,0.00,B,no\r"));
        QCOMPARE(l[109], QByteArray("109,\" QMB 1\",0.00,,0.00,,no\r"));
        QCOMPARE(l[113], QByteArray("113,\" QMB 5\",0.00,,0.00,,no\r"));
    }

    void write_frequencyHasADotTwoDecimalsAndNoThousandsSeparator()
    {
        QList<MemRecord> records = goldenRecords();
        records[0].freq = 2999999.0f;  // 29 999.99 kHz
        records[1].freq = 3000.0f;     // 30.00 kHz
        const QList<QByteArray> l = lines(MemoryCsv::write(records));
        QVERIFY(l[1].contains(",29999.99,"));
        QVERIFY(l[2].contains(",30.00,"));
    }

    void write_textIsUtf8()
    {
        QList<MemRecord> records = goldenRecords();
        records[0].chan = QByteArray(" Kl\xe4re  ");  // Latin-1 a with diaeresis in the record
        QVERIFY(lines(MemoryCsv::write(records))[1].startsWith("1,\" Kl\xc3\xa4re\","));
    }

    void field_quotedOnlyWhenItMustBe_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("written");
        QTest::newRow("plain") << "USB"
                               << "USB";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("comma") << "Club, North"
                               << "\"Club, North\"";
        QTest::newRow("quote") << "say \"hi\""
                               << "\"say \"\"hi\"\"\"";
        QTest::newRow("line end") << "two\nlines"
                                  << "\"two\nlines\"";
        QTest::newRow("carriage return") << "a\rb"
                                         << "\"a\rb\"";
        QTest::newRow("leading blank") << " Chan 1"
                                       << "\" Chan 1\"";
        QTest::newRow("trailing blank") << "x "
                                        << "\"x \"";
        QTest::newRow("blank inside") << "CW R"
                                      << "CW R";
    }
    void field_quotedOnlyWhenItMustBe()
    {
        QFETCH(QString, text);
        QFETCH(QString, written);
        QCOMPARE(CsvText::field(text), written);
    }

    // --- Reading this program's layout ---

    void read_whatWasWritten_givesTheRecordsBack()
    {
        const MemoryCsv::Result r = MemoryCsv::read(MemoryCsv::write(goldenRecords()));
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QList<MemRecord> expected = goldenRecords();
        expected[2].masked = 0;  // Masked = 1 was written "no"
        QCOMPARE(r.records.size(), 113);
        for (int n = 0; n < 113; ++n)
            QCOMPARE(r.records[n], expected[n]);
    }

    void read_everyColumn()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\r\n7,\" Chan 7\",14157.70,CW R,-0.74,B,yes\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[6], record(" Chan 7 ", 1415770.0f, "CW R   ", -74.0f, "B ", 3, true));
    }

    void read_lfLineEnds()
    {
        const MemoryCsv::Result r =
            MemoryCsv::read(header + "\n1,Net,7074.00,USB,0.00,A,no\n2,Two,3573.00,LSB,0,B,no\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0], record(" Net    ", 707400.0f, "USB    ", 0, "A ", 1, false));
        QCOMPARE(r.records[1], record(" Two    ", 357300.0f, "LSB    ", 0, "B ", 0, false));
    }

    void read_noLineEndAfterTheLastLine()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\r\n1,Net,7074.00,USB,0.00,A,no");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].freq, 707400.0f);
    }

    void read_byteOrderMark()
    {
        const MemoryCsv::Result r = MemoryCsv::read("\xEF\xBB\xBF" + header + "\r\n1,Net,7074.00,USB,0.00,A,no\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].mode, QByteArray("USB    "));
    }

    void read_quotedFields_commaAndDoubledQuotesInside()
    {
        const MemoryCsv::Result r =
            MemoryCsv::read(header + "\r\n\"1\",\"A,\"\"B\",\"7074.00\",\"USB\",\"0.00\",\"A\",\"no\"\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].chan, QByteArray(" A,\"B   "));
    }

    void read_quotedFieldAcrossLines_countsTheLinesOfTheFile()
    {
        // An extra column's note runs over two lines; the bad channel after it is on line 4.
        const QByteArray csv =
            header + ",Note\r\n1,Net,7074.00,USB,0.00,A,no,\"first\r\nsecond\"\r\n200,X,7074.00,USB,0,A,no,\r\n";
        const MemoryCsv::Result r = bad(csv);
        QCOMPARE(r.line, 4);
        QCOMPARE(r.problem, QStringLiteral("Channel 200 is outside 1-113"));
    }

    void read_extraColumnsAreIgnored()
    {
        const MemoryCsv::Result r = MemoryCsv::read(
            "Channel,Owner,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked,Remark\r\n"
            "5,me,Net,7074.00,USB,0.00,A,no,evening net\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[4], record(" Net    ", 707400.0f, "USB    ", 0, "A ", 1, false));
    }

    void read_columnsInAnotherOrder_foundByHeaderName()
    {
        const MemoryCsv::Result r = MemoryCsv::read(
            "masked, mode ,ANTENNA,Frequency_kHz,Name,Clarifier_kHz,Channel\n"
            "yes,FM,Rx,29600.00,Rep,0.10,113\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[112], record(" Rep    ", 2960000.0f, "FM     ", 10.0f, "Rx", 6, true));
    }

    void read_onlyTheRequiredColumns_nameAndAntennaDefault()
    {
        const MemoryCsv::Result r = MemoryCsv::read("Channel,Frequency_kHz,Mode\n100,14000.00,cw n\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[99], record(" P 1    ", 1400000.0f, "CW N   ", 0, "A ", 2, false));
    }

    void read_channelsNotInTheList_areClearedRecords()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\n2,Net,7074.00,USB,0.00,A,no\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records.size(), 113);
        QCOMPARE(r.records[0], MemRecord{});
        QCOMPARE(r.records[2], MemRecord{});
        QCOMPARE(r.records[112], MemRecord{});
    }

    void read_blankLinesAndEmptyRowsAreSkipped()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\r\n\r\n1,Net,7074.00,USB,0.00,A,no\r\n,,,,,,\r\n\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].freq, 707400.0f);
    }

    void read_modeAliases_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QByteArray>("caption");
        QTest::addColumn<int>("code");
        QTest::newRow("usb") << "usb" << QByteArray("USB    ") << 1;
        QTest::newRow("DataUSR") << "DataUSR" << QByteArray("DataUSR") << 1;
        QTest::newRow("AM Sync") << "AM Sync" << QByteArray("AM Sync") << 5;
        QTest::newRow("RTTY R") << "RTTY R" << QByteArray("RTTY R ") << 9;
        QTest::newRow("PKT FM") << "PKT FM" << QByteArray("PKT FM ") << 11;
        QTest::newRow("CW") << "CW" << QByteArray("CW N   ") << 2;
        QTest::newRow("RTTY") << "RTTY" << QByteArray("RTTY N ") << 8;
        QTest::newRow("DIG") << "DIG" << QByteArray("PKT LSB") << 10;
        QTest::newRow("PKT") << "PKT" << QByteArray("PKT LSB") << 10;
        QTest::newRow("NFM") << "NFM" << QByteArray("FM     ") << 6;
    }
    void read_modeAliases()
    {
        QFETCH(QString, mode);
        QFETCH(QByteArray, caption);
        QFETCH(int, code);
        const MemoryCsv::Result r = MemoryCsv::read("Channel,Frequency_kHz,Mode\n1,7074.00," + mode.toUtf8() + "\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].mode, caption);
        QCOMPARE(int(r.records[0].mde), code);
    }

    void read_anEmptyChannel_zeroFrequencyWithoutMode()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\n109,\" QMB 1\",0.00,,0.00,,no\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[108], record(" QMB 1  ", 0, "       ", 0, "  ", 0, false));
    }

    void read_latin1Text_fromASpreadsheetThatDoesNotWriteUtf8()
    {
        const MemoryCsv::Result r = MemoryCsv::read(header + "\n1,Kl\xe4re,7074.00,USB,0,A,no\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].chan, QByteArray(" Kl\xe4re  "));
    }

    // --- Bad input: no records, the line and the problem ---

    void bad_noHeader()
    {
        const MemoryCsv::Result r =
            bad("1,\" Chan 1\",14157.70,USB,0.00,A,no\r\n2,\" Chan 2\",7025.00,LSB,0.00,A,no\r\n");
        QCOMPARE(r.line, 1);
        QVERIFY2(r.problem.startsWith(QStringLiteral("no header: ")), qPrintable(r.problem));
    }

    void bad_headerWithoutTheModeColumn()
    {
        const MemoryCsv::Result r = bad("Channel,Name,Frequency_kHz\n1,A,7074.00\n");
        QCOMPARE(r.line, 1);
        QVERIFY(r.problem.startsWith(QStringLiteral("no header: ")));
    }

    void bad_unknownMode()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,0,A,no\r\n2,B,7074.00,SSB,0,A,no\r\n");
        QCOMPARE(r.line, 3);
        QCOMPARE(r.problem, QStringLiteral("unknown mode \"SSB\""));
    }

    void read_noModeWithAFrequency_isAChannelWhoseModeTheTableDoesNotKnow()
    {
        // "Get Mem" shows no mode for a mode byte outside the table; its list reads back so.
        const MemoryCsv::Result r = MemoryCsv::read(header + "\r\n1,A,7074.00,,0,A,no\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0], record(" A      ", 707400.0f, "       ", 0, "A ", 0, false));
    }

    void bad_exchange_noModeOnAChannelWithAFrequency()
    {
        const MemoryCsv::Result r = bad("Location,Name,Frequency,Mode\n1,A,7.074,\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("no Mode"));
    }

    void read_frequencyWithTheClarifier_reachesPastTheRadiosEnds()
    {
        const MemoryCsv::Result r =
            MemoryCsv::read(header + "\r\n1,A,9.52,USB,-20.48,A,no\r\n2,B,30020.48,USB,20.48,A,no\r\n");
        QVERIFY2(r.ok(), qPrintable(r.problem));
        QCOMPARE(r.records[0].freq, 952.0f);
        QCOMPARE(r.records[1].freq, 3002048.0f);
        QCOMPARE(r.records[1].clar, 2048.0f);
    }

    void bad_frequencyBelow30kHz()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,9.51,USB,0,A,no\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(
            r.problem,
            QStringLiteral("the frequency 9.51 kHz is outside 0.03-30 MHz (9.52-30020.48 kHz with the clarifier)"));
    }

    void bad_frequencyAbove30MHz()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,30020.49,USB,0,A,no\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(
            r.problem,
            QStringLiteral("the frequency 30020.49 kHz is outside 0.03-30 MHz (9.52-30020.48 kHz with the clarifier)"));
    }

    void bad_frequencyNotANumber()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,\"7,074.00\",USB,0,A,no\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("Frequency_kHz \"7,074.00\" is not a number"));
    }

    void bad_noFrequency()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,,USB,0,A,no\r\n");
        QCOMPARE(r.problem, QStringLiteral("no Frequency_kHz"));
    }

    void bad_channelBelow1()
    {
        const MemoryCsv::Result r = bad(header + "\r\n0,A,7074.00,USB,0,A,no\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("Channel 0 is outside 1-113"));
    }

    void bad_channelAbove113()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,0,A,no\r\n114,A,7074.00,USB,0,A,no\r\n");
        QCOMPARE(r.line, 3);
        QCOMPARE(r.problem, QStringLiteral("Channel 114 is outside 1-113"));
    }

    void bad_channelNotAWholeNumber()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1.5,A,7074.00,USB,0,A,no\r\n");
        QCOMPARE(r.problem, QStringLiteral("Channel \"1.5\" is not a whole number"));
    }

    void bad_duplicateChannel()
    {
        const MemoryCsv::Result r = bad(header +
                                        "\r\n5,A,7074.00,USB,0,A,no\r\n6,B,7074.00,USB,0,A,no\r\n"
                                        "5,C,3573.00,USB,0,A,no\r\n");
        QCOMPARE(r.line, 4);
        QCOMPARE(r.problem, QStringLiteral("channel 5 is named twice, on lines 2 and 4"));
    }

    void bad_emptyFile()
    {
        const MemoryCsv::Result r = bad(QByteArray());
        QCOMPARE(r.line, 1);
        QCOMPARE(r.problem, QStringLiteral("the file is empty"));
    }

    void bad_onlyBlankLinesAndAByteOrderMark()
    {
        const MemoryCsv::Result r = bad("\xEF\xBB\xBF\r\n  \r\n\r\n");
        QCOMPARE(r.line, 1);
        QCOMPARE(r.problem, QStringLiteral("the file is empty"));
    }

    void bad_headerOnly()
    {
        const MemoryCsv::Result r = bad(header + "\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("no channel follows the header"));
    }

    void bad_binaryFile_aPicture()
    {
        QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
        const MemoryCsv::Result r = bad(png);
        QCOMPARE(r.line, 2);  // the control character after the first line end
        QCOMPARE(r.problem, QStringLiteral("this is not a text file (it holds control characters)"));
    }

    void bad_binaryFile_aMemoryFileChosenByMistake()
    {
        const MemoryCsv::Result r = bad(Golden::file());
        QCOMPARE(r.line, 1);
        QCOMPARE(r.problem, QStringLiteral("this is not a text file (it holds control characters)"));
    }

    void bad_quotedFieldNotClosed()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,0,A,no\r\n2,\"B,7074.00,USB,0,A,no\r\n");
        QCOMPARE(r.line, 3);
        QCOMPARE(r.problem, QStringLiteral("a quoted field is not closed before the end of the file"));
    }

    void bad_quoteInsideAnUnquotedField()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A\"B,7074.00,USB,0,A,no\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("a quote inside a field that does not begin with one"));
    }

    void bad_clarifierOutsideTheRecordsRange()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,20.49,A,no\r\n");
        QCOMPARE(r.problem, QStringLiteral("the clarifier 20.49 kHz is outside -20.48 to 20.48 kHz"));
    }

    void bad_clarifierNotANumber()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,off,A,no\r\n");
        QCOMPARE(r.problem, QStringLiteral("Clarifier_kHz \"off\" is not a number"));
    }

    void bad_unknownAntenna()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,0,C,no\r\n");
        QCOMPARE(r.line, 2);
        QCOMPARE(r.problem, QStringLiteral("unknown antenna \"C\" (A, B or Rx)"));
    }

    void bad_maskedNeitherYesNorNo()
    {
        const MemoryCsv::Result r = bad(header + "\r\n1,A,7074.00,USB,0,A,maybe\r\n");
        QCOMPARE(r.problem, QStringLiteral("Masked \"maybe\" is neither yes nor no"));
    }

    void anyBytes_giveRecordsOrAProblem_neverACrash_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<uint>("seed");
        QTest::addColumn<bool>("fromAList");  // bytes of a good list changed here and there, or noise
        for (int size : {1, 2, 7, 64, 600, 5000}) {
            QTest::addRow("noise %d", size) << size << uint(size * 7919) << false;
            QTest::addRow("changed list %d", size) << size << uint(size * 104729) << true;
        }
    }
    void anyBytes_giveRecordsOrAProblem_neverACrash()
    {
        QFETCH(int, size);
        QFETCH(uint, seed);
        QFETCH(bool, fromAList);
        const auto next = [&seed] {
            seed = seed * 1664525u + 1013904223u;
            return seed >> 16;
        };
        QByteArray bytes;
        if (fromAList) {
            bytes = MemoryCsv::write(goldenRecords());
            const char alphabet[] = ",\"\r\n 0123456789.-AaBbUSLFMyes";
            for (int i = 0; i < size; ++i)
                bytes[int(next() % bytes.size())] = alphabet[next() % (sizeof alphabet - 1)];
        } else {
            bytes.resize(size);
            for (char& c : bytes)
                c = char(next());
        }
        const MemoryCsv::Result r = MemoryCsv::read(bytes);
        if (r.ok()) {
            QCOMPARE(r.records.size(), 113);
        } else {
            QVERIFY(r.records.isEmpty());
            QVERIFY(r.line >= 1);
            QVERIFY(r.line <= bytes.count('\n') + bytes.count('\r') + 2);
        }
    }
};

QTEST_GUILESS_MAIN(TestMemoryCsv)
#include "test_memory_csv.moc"
