// SPDX-License-Identifier: GPL-3.0-or-later
#include "EdspOptions.h"

#include <QTest>

namespace {
QString hexList(const QList<CatCommand>& commands)
{
    QStringList l;
    for (const CatCommand& c : commands)
        l << c.hex();
    return l.join(u'|');
}

// "R4+ R3-" for the marks of an action, in the order they are applied.
QString markList(const QList<MenuMark>& marks)
{
    QStringList l;
    for (const MenuMark& m : marks)
        l << QStringLiteral("%1%2%3")
                 .arg(QChar(m.transmit ? u'T' : u'R'))
                 .arg(m.index)
                 .arg(QChar(m.checked ? u'+' : u'-'));
    return l.join(u' ');
}
}  // namespace

class TestEdspOptions : public QObject {
    Q_OBJECT
private slots:
    void optionAction_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("commands");
        QTest::addColumn<QString>("marks");
        QTest::addColumn<int>("modeCode");  // -1: unchanged
        QTest::addColumn<bool>("thenEqualizationOff");

        // The context: current mode code 6 (FM), CW centre at 75 (0x4B).
        QTest::newRow("0 Rx EDSP Off resends the current mode") << 0 << "00 00 00 30 75|00 00 00 06 0C"
                                                                << "R4+ R3-" << -1 << true;
        QTest::newRow("1 AM sets mode code 5") << 1 << "00 00 00 05 0C|00 00 00 31 75"
                                               << "R3+ R4-" << 5 << true;
        QTest::newRow("2 USB 3.1") << 2 << "00 00 00 01 0C|00 00 00 32 75"
                                   << "R3+ R4-" << 1 << true;
        QTest::newRow("3 USB 2.8") << 3 << "00 00 00 01 0C|00 00 10 32 75"
                                   << "R3+ R4-" << 1 << true;
        QTest::newRow("4 LSB 3.1") << 4 << "00 00 00 00 0C|00 00 00 33 75"
                                   << "R3+ R4-" << 0 << true;
        QTest::newRow("5 LSB 2.8") << 5 << "00 00 00 00 0C|00 00 10 33 75"
                                   << "R3+ R4-" << 0 << true;
        for (int i = 6; i <= 9; ++i)
            QTest::addRow("%d Tx USB", i)
                << i << QStringLiteral("00 00 %1 B2 75|00 00 00 01 0C").arg((i - 5) * 16, 2, 16, QChar(u'0'))
                << "T0+ T1-" << 1 << false;
        for (int i = 10; i <= 13; ++i)
            QTest::addRow("%d Tx LSB", i)
                << i << QStringLiteral("00 00 %1 B3 75|00 00 00 00 0C").arg((i - 9) * 16, 2, 16, QChar(u'0'))
                << "T0+ T1-" << 0 << false;
        QTest::newRow("14 CW 240 Hz") << 14 << "00 00 4B 45 75"
                                      << "" << -1 << false;
        QTest::newRow("15 CW 120 Hz") << 15 << "00 00 4B 46 75"
                                      << "" << -1 << false;
        QTest::newRow("16 CW 60 Hz") << 16 << "00 00 4B 47 75"
                                     << "" << -1 << false;
        QTest::newRow("17 Equalization Off") << 17 << "00 00 00 4E 75"
                                             << "R1+ R0-" << -1 << false;
        QTest::newRow("18 LCF takes 01") << 18 << "00 00 01 4E 75"
                                         << "R0+ R1-" << -1 << false;
        QTest::newRow("19 MCF") << 19 << "00 00 10 4E 75"
                                << "R0+ R1-" << -1 << false;
        QTest::newRow("20 HCF") << 20 << "00 00 20 4E 75"
                                << "R0+ R1-" << -1 << false;
        QTest::newRow("21 BPF") << 21 << "00 00 30 4E 75"
                                << "R0+ R1-" << -1 << false;
        QTest::newRow("22 Normal") << 22 << "00 00 00 C1 75"
                                   << "T4+ T3-" << -1 << false;
        QTest::newRow("23 Mic 1") << 23 << "00 00 10 C1 75"
                                  << "T3+ T4-" << -1 << false;
        QTest::newRow("24 Mic 2") << 24 << "00 00 20 C1 75"
                                  << "T3+ T4-" << -1 << false;
        QTest::newRow("25 Mic 3") << 25 << "00 00 30 C1 75"
                                  << "T3+ T4-" << -1 << false;
        QTest::newRow("26 Mic 4") << 26 << "00 00 40 C1 75"
                                  << "T3+ T4-" << -1 << false;
        QTest::newRow("27 Data Filter Off") << 27 << "00 00 00 40 75"
                                            << "R7+ R6-" << -1 << false;
        QTest::newRow("28 FSK takes 11") << 28 << "00 00 11 48 75"
                                         << "R6+ R7-" << -1 << false;
        QTest::newRow("29 SSTV") << 29 << "00 00 20 48 75"
                                 << "R6+ R7-" << -1 << false;
        QTest::newRow("30 Packet") << 30 << "00 00 30 48 75"
                                   << "R6+ R7-" << -1 << false;
        QTest::newRow("31 Fax") << 31 << "00 00 40 48 75"
                                << "R6+ R7-" << -1 << false;
        QTest::newRow("32 Noise Off") << 32 << "00 00 00 4A 75"
                                      << "" << -1 << false;
        QTest::newRow("33 Noise On") << 33 << "00 00 10 4A 75"
                                     << "" << -1 << false;
        QTest::newRow("34 Notch Off") << 34 << "00 00 00 4B 75"
                                      << "" << -1 << false;
        QTest::newRow("35 Notch On") << 35 << "00 00 10 4B 75"
                                     << "" << -1 << false;
    }
    void optionAction()
    {
        QFETCH(int, index);
        QFETCH(QString, commands);
        QFETCH(QString, marks);
        QFETCH(int, modeCode);
        QFETCH(bool, thenEqualizationOff);
        const EdspOptionAction a = edspOptionAction(index, EdspContext{6, 75});
        QCOMPARE(hexList(a.commands), commands.toUpper());
        QCOMPARE(markList(a.marks), marks);
        QCOMPARE(a.modeCode.value_or(-1), modeCode);
        QCOMPARE(a.thenSelectEqualizationOff, thenEqualizationOff);
    }

    void cwFilterOptions_setTheFilterCodeToIndexPlus55()
    {
        QCOMPARE(edspOptionAction(14, {}).cwFilterCode.value_or(-1), 0x45);
        QCOMPARE(edspOptionAction(15, {}).cwFilterCode.value_or(-1), 0x46);
        QCOMPARE(edspOptionAction(16, {}).cwFilterCode.value_or(-1), 0x47);
        QVERIFY(!edspOptionAction(17, {}).cwFilterCode.has_value());
    }

    void cwFilterOption_sendsTheCentrePosition()
    {
        QCOMPARE(hexList(edspOptionAction(15, EdspContext{0, 100}).commands), QStringLiteral("00 00 64 46 75"));
    }

    void noiseButtons_toggleMenu10AndColourKey30()
    {
        const EdspOptionAction off = edspOptionAction(32, {});
        const EdspOptionAction on = edspOptionAction(33, {});
        QCOMPARE(off.toggleRxMenu, 10);
        QCOMPARE(on.toggleRxMenu, 10);
        QCOMPARE(off.keyColour, (KeyColour{30, std::nullopt}));
        QCOMPARE(on.keyColour, (KeyColour{30, 0xC0FFC0u}));
    }

    void notchButtons_toggleMenu9AndColourKey28()
    {
        const EdspOptionAction off = edspOptionAction(34, {});
        const EdspOptionAction on = edspOptionAction(35, {});
        QCOMPARE(off.toggleRxMenu, 9);
        QCOMPARE(on.toggleRxMenu, 9);
        QCOMPARE(off.keyColour, (KeyColour{28, std::nullopt}));
        QCOMPARE(on.keyColour, (KeyColour{28, 0xFFC0FFu}));
    }

    void otherOptions_neitherToggleNorColour()
    {
        for (int i = 0; i < 32; ++i) {
            QCOMPARE(edspOptionAction(i, {}).toggleRxMenu, -1);
            QVERIFY(!edspOptionAction(i, {}).keyColour.has_value());
        }
    }

    void indexOutsideTheTable_doesNothing()
    {
        QVERIFY(edspOptionAction(36, {}).commands.isEmpty());
        QVERIFY(edspOptionAction(-1, {}).commands.isEmpty());
        QVERIFY(edspOptionCaption(36).isEmpty());
    }

    void captions_keepTheirSpacingAndSpelling()
    {
        QCOMPARE(edspOptionCaption(1), QStringLiteral("AM  -   70 Hz - 3.8 kHz"));
        QCOMPARE(edspOptionCaption(6), QStringLiteral("USB - 100 Hz - 3.1 KHz"));
        QCOMPARE(edspOptionCaption(16), QStringLiteral("  60 Hz"));
        QCOMPARE(edspOptionCaption(18), QStringLiteral("LCF  - Hi Frq Emphasis"));
        QCOMPARE(edspOptionCaption(32), QStringLiteral("Off"));
        QCOMPARE(edspOptionCaption(35), QStringLiteral("On"));
    }

    void groups_followTheFrames()
    {
        QCOMPARE(edspOptionGroup(0), EdspGroup::Demodulation);
        QCOMPARE(edspOptionGroup(5), EdspGroup::Demodulation);
        QCOMPARE(edspOptionGroup(6), EdspGroup::TxUsb);
        QCOMPARE(edspOptionGroup(10), EdspGroup::TxLsb);
        QCOMPARE(edspOptionGroup(14), EdspGroup::CwFilters);
        QCOMPARE(edspOptionGroup(17), EdspGroup::Contour);
        QCOMPARE(edspOptionGroup(22), EdspGroup::MicEqualization);
        QCOMPARE(edspOptionGroup(27), EdspGroup::DataDemodulation);
        QCOMPARE(edspOptionGroup(33), EdspGroup::Noise);
        QCOMPARE(edspOptionGroup(34), EdspGroup::Notch);
    }

    void audioFilterKeys_selectDataFilterOffThenSend()
    {
        for (int k : {0, 1}) {
            const EdspKeyAction a = edspKeyAction(k);
            QCOMPARE(a.selectOptionFirst.value_or(-1), 27);
            QCOMPARE(hexList(a.commands), QStringLiteral("00 00 00 40 75"));
            QVERIFY(!a.clearTxOptions);
        }
    }

    void txOffKey_sendsB0ClearsAndMarks()
    {
        const EdspKeyAction a = edspKeyAction(2);
        QVERIFY(!a.selectOptionFirst.has_value());
        QCOMPARE(hexList(a.commands), QStringLiteral("00 00 00 B0 75"));
        QVERIFY(a.clearTxOptions);
        QCOMPARE(markList(a.marks), QStringLiteral("T1+ T0-"));
    }

    void otherKeys_doNothing()
    {
        QVERIFY(edspKeyAction(3).commands.isEmpty());
        QVERIFY(!edspKeyAction(3).selectOptionFirst.has_value());
    }
};

QTEST_GUILESS_MAIN(TestEdspOptions)
#include "test_edsp_options.moc"
