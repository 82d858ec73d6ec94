// SPDX-License-Identifier: GPL-3.0-or-later
// What may be typed into each cell of the channel table, and what is refused with a reason.
#include "MemoryCellInput.h"

#include <QTest>

class TestMemoryCellInput : public QObject {
    Q_OBJECT
private slots:
    // --- Frequency ---

    void frequency_valid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("tenHz");
        QTest::addColumn<QString>("shown");
        QTest::newRow("kHz with one decimal") << "14195.5" << qint64(1419550) << "14,195.50 ";
        QTest::newRow("kHz with thousands separator") << "14,195.50" << qint64(1419550) << "14,195.50 ";
        QTest::newRow("MHz") << "14.1955 MHz" << qint64(1419550) << "14,195.50 ";
        QTest::newRow("MHz lower case, no blank") << "14.1955mhz" << qint64(1419550) << "14,195.50 ";
        QTest::newRow("kHz unit") << "7074 kHz" << qint64(707400) << "7,074.00 ";
        QTest::newRow("whole kHz") << "3573" << qint64(357300) << "3,573.00 ";
        QTest::newRow("blanks around") << "  21074.00  " << qint64(2107400) << "21,074.00 ";
        QTest::newRow("trailing zeros are not finer") << "14195.5000" << qint64(1419550) << "14,195.50 ";
        QTest::newRow("MHz to 10 Hz") << "29.99999 MHz" << qint64(2999999) << "29,999.99 ";
        QTest::newRow("lowest 100.00") << "100.00" << qint64(10000) << "100.00 ";
        QTest::newRow("highest 29,999.99") << "29,999.99" << qint64(2999999) << "29,999.99 ";
        QTest::newRow("plus sign") << "+14195.5" << qint64(1419550) << "14,195.50 ";
        QTest::newRow("leading decimal point MHz") << ".5 MHz" << qint64(50000) << "500.00 ";
    }
    void frequency_valid()
    {
        QFETCH(QString, text);
        QFETCH(qint64, tenHz);
        QFETCH(QString, shown);
        const CellValue<qint64> v = CellInput::frequency(text);
        QVERIFY2(v.ok(), qPrintable(v.reason));
        QCOMPARE(*v.value, tenHz);
        QCOMPARE(CellInput::frequencyText(*v.value), shown);
    }

    void frequency_refused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("reasonHas");
        QTest::newRow("three decimals in kHz") << "14195.505"
                                               << "finer than 10 Hz";
        QTest::newRow("six decimals in MHz") << "14.195505 MHz"
                                             << "finer than 10 Hz";
        QTest::newRow("kHz taken as kHz, not MHz") << "14.1955"
                                                   << "finer than 10 Hz";
        QTest::newRow("below 100 kHz") << "99.99"
                                       << "outside the radio's range, 100.00 to 29,999.99 kHz";
        QTest::newRow("30 MHz") << "30000"
                                << "outside the radio's range";
        QTest::newRow("30 MHz in MHz") << "30 MHz"
                                       << "outside the radio's range";
        QTest::newRow("zero") << "0"
                              << "outside the radio's range";
        QTest::newRow("negative") << "-14195"
                                  << "outside the radio's range";
        QTest::newRow("empty") << ""
                               << "empty";
        QTest::newRow("letters") << "abc"
                                 << "not a frequency";
        QTest::newRow("misplaced separator") << "1,4195.5"
                                             << "not a frequency";
        QTest::newRow("two decimal points") << "14.195.5"
                                            << "not a frequency";
        QTest::newRow("only a point") << "."
                                      << "not a frequency";
        QTest::newRow("unknown unit") << "14195 Hz"
                                      << "not a frequency";
        QTest::newRow("huge") << "12345678901234"
                              << "far outside";
    }
    void frequency_refused()
    {
        QFETCH(QString, text);
        QFETCH(QString, reasonHas);
        const CellValue<qint64> v = CellInput::frequency(text);
        QVERIFY(!v.ok());
        QVERIFY2(v.reason.contains(reasonHas), qPrintable(v.reason));
    }

    // --- Clarifier ---

    void clarifier_valid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("tenHz");
        QTest::addColumn<QString>("shown");
        QTest::newRow("zero") << "0" << qint64(0) << "0.00 ";
        QTest::newRow("negative") << "-0.25" << qint64(-25) << "-0.25 ";
        QTest::newRow("positive sign") << "+1.5" << qint64(150) << "1.50 ";
        QTest::newRow("lowest") << "-9.99" << qint64(-999) << "-9.99 ";
        QTest::newRow("highest") << "9.99" << qint64(999) << "9.99 ";
        QTest::newRow("kHz unit") << "2.5 kHz" << qint64(250) << "2.50 ";
    }
    void clarifier_valid()
    {
        QFETCH(QString, text);
        QFETCH(qint64, tenHz);
        QFETCH(QString, shown);
        const CellValue<qint64> v = CellInput::clarifier(text);
        QVERIFY2(v.ok(), qPrintable(v.reason));
        QCOMPARE(*v.value, tenHz);
        QCOMPARE(CellInput::clarifierText(*v.value), shown);
    }

    void clarifier_refused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("reasonHas");
        QTest::newRow("above 9.99") << "10"
                                    << "outside -9.99 to +9.99 kHz";
        QTest::newRow("below -9.99") << "-10.00"
                                     << "outside -9.99 to +9.99 kHz";
        QTest::newRow("finer than 10 Hz") << "0.125"
                                          << "finer than 10 Hz";
        QTest::newRow("MHz") << "0.001 MHz"
                             << "not a clarifier";
        QTest::newRow("letters") << "x"
                                 << "not a clarifier";
        QTest::newRow("empty") << ""
                               << "empty";
    }
    void clarifier_refused()
    {
        QFETCH(QString, text);
        QFETCH(QString, reasonHas);
        const CellValue<qint64> v = CellInput::clarifier(text);
        QVERIFY(!v.ok());
        QVERIFY2(v.reason.contains(reasonHas), qPrintable(v.reason));
    }

    // --- Label ---

    void label_valid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("seven of one's own get the blank") << "40m FT8"
                                                          << " 40m FT8";
        QTest::newRow("the table's own form") << " Chan 12"
                                              << " Chan 12";
        QTest::newRow("trailing blanks dropped") << "DX   "
                                                 << " DX";
        QTest::newRow("empty") << ""
                               << " ";
        QTest::newRow("punctuation") << "~!@#$%^"
                                     << " ~!@#$%^";
    }
    void label_valid()
    {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        const CellValue<QString> v = CellInput::label(text);
        QVERIFY2(v.ok(), qPrintable(v.reason));
        QCOMPARE(*v.value, shown);
    }

    void label_refused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("reasonHas");
        QTest::newRow("eight of one's own") << "40m FT8x"
                                            << "too long";
        QTest::newRow("nine with the blank") << " Chan 123"
                                             << "too long";
        QTest::newRow("not ASCII") << QStringLiteral("Zürich") << "printable ASCII";
        QTest::newRow("control character") << QStringLiteral("a\tb") << "printable ASCII";
    }
    void label_refused()
    {
        QFETCH(QString, text);
        QFETCH(QString, reasonHas);
        const CellValue<QString> v = CellInput::label(text);
        QVERIFY(!v.ok());
        QVERIFY2(v.reason.contains(reasonHas), qPrintable(v.reason));
    }

    // --- Mode ---

    void mode_valid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("code");
        const QList<std::pair<QString, int>> modes{{"LSB", 0},    {"USB", 1},      {"CW N", 2},    {"CW R", 3},
                                                   {"AM", 4},     {"AM Sync", 5},  {"FM", 6},      {"RTTY N", 8},
                                                   {"RTTY R", 9}, {"PKT LSB", 10}, {"PKT FM", 11}, {"DataUSR", 1}};
        for (const auto& [caption, code] : modes)
            QTest::newRow(qPrintable(caption)) << caption << caption << code;
        QTest::newRow("letter case aside") << "am sync"
                                           << "AM Sync" << 5;
    }
    void mode_valid()
    {
        QFETCH(QString, text);
        QFETCH(QString, caption);
        QFETCH(int, code);
        const CellValue<ChannelMode> v = CellInput::mode(text);
        QVERIFY2(v.ok(), qPrintable(v.reason));
        QCOMPARE(v.value->caption, caption);
        QCOMPARE(v.value->code, code);
    }

    void mode_refused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("unknown") << "SSB";
        QTest::newRow("empty") << "";
        QTest::newRow("code instead of caption") << "1";
    }
    void mode_refused()
    {
        QFETCH(QString, text);
        const CellValue<ChannelMode> v = CellInput::mode(text);
        QVERIFY(!v.ok());
        QVERIFY2(v.reason.contains("is not a mode: one of LSB, USB"), qPrintable(v.reason));
    }

    // --- Antenna and mask ---

    void antenna_valid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("antenna");
        QTest::newRow("A") << "A"
                           << "A";
        QTest::newRow("B") << "B"
                           << "B";
        QTest::newRow("Rx") << "Rx"
                            << "Rx";
        QTest::newRow("lower case") << "rx"
                                    << "Rx";
    }
    void antenna_valid()
    {
        QFETCH(QString, text);
        QFETCH(QString, antenna);
        QCOMPARE(CellInput::antenna(text).value.value_or(QString()), antenna);
    }

    void antenna_refused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("C") << "C";
        QTest::newRow("empty") << "";
        QTest::newRow("AB") << "AB";
    }
    void antenna_refused()
    {
        QFETCH(QString, text);
        const CellValue<QString> v = CellInput::antenna(text);
        QVERIFY(!v.ok());
        QVERIFY(v.reason.contains("A, B or Rx"));
    }

    void masked_valid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("masked");
        QTest::newRow("yes") << "yes" << true;
        QTest::newRow("masked") << "Masked" << true;
        QTest::newRow("no") << "no" << false;
        QTest::newRow("unmasked") << "unmasked" << false;
    }
    void masked_valid()
    {
        QFETCH(QString, text);
        QFETCH(bool, masked);
        QCOMPARE(CellInput::masked(text).value, std::optional<bool>(masked));
    }

    void masked_refused() { QVERIFY(!CellInput::masked("maybe").ok()); }

    // --- A row ---

    void applyToRow_modeCodeFollowsTheMode()
    {
        MemoryRow row;
        row.cells = {" Chan 1", "14,195.50 ", "USB", "0.00 ", "A", "1"};
        const CellValue<MemoryRow> v = CellInput::applyToRow(row, MemoryColumn::Mode, "CW R");
        QVERIFY(v.ok());
        QCOMPARE(v.value->cells[MemoryColumn::Mode], QStringLiteral("CW R"));
        QCOMPARE(v.value->cells[MemoryColumn::Mde], QStringLiteral("3"));
    }

    void applyToRow_refusedLeavesNoRow()
    {
        MemoryRow row;
        row.cells = {" Chan 1", "14,195.50 ", "USB", "0.00 ", "A", "1"};
        const CellValue<MemoryRow> v = CellInput::applyToRow(row, MemoryColumn::Freq, "14195.505");
        QVERIFY(!v.ok());
        QVERIFY(!v.reason.isEmpty());
    }

    void applyToRow_modeCodeColumnIsNotEdited()
    {
        MemoryRow row;
        QVERIFY(!CellInput::applyToRow(row, MemoryColumn::Mde, "3").ok());
        QVERIFY(!CellInput::editable(MemoryColumn::Mde));
        QVERIFY(CellInput::editable(MemoryColumn::Chan));
    }
};

QTEST_GUILESS_MAIN(TestMemoryCellInput)
#include "test_memory_cell_input.moc"
