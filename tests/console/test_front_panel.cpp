// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrontPanel.h"

#include <QTest>

using FrontPanel::Indicators;

class TestFrontPanel : public QObject {
    Q_OBJECT
private slots:
    void keysExistExceptElevenAndThirtyThreeToFortySeven()
    {
        for (int i = 0; i < FrontPanel::KeyCount; ++i) {
            const bool expected = i != 11 && (i <= 32 || i >= 48);
            QCOMPARE(FrontPanel::keyExists(i), expected);
        }
        QVERIFY(!FrontPanel::keyExists(-1));
        QVERIFY(!FrontPanel::keyExists(54));
    }

    void keyCaptions_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("caption");
        const char* captions[] = {"Tuner",   "Start",  "Clar Rx", "Clar Tx", "&LSB",   "&USB",    "&CW",
                                  "CW-R",    "&AM",    "AM-E",    "&FM",     nullptr,  "&RTTY-N", "RTTY-R",
                                  "&PKT LS", "PKT FM", "A > B",   "A <> B",  "A > M",  "M > A",   "&Dual",
                                  "&Split",  "M-List", "VFO/M",   "Scop&e",  "&K-Pad", "Filters", "EDSP",
                                  "Notch",   "Rptr",   "DSP-NB",  "- - -",   "PTT"};
        for (int i = 0; i <= 32; ++i)
            if (captions[i])
                QTest::addRow("%d", i) << i << QString::fromLatin1(captions[i]);
    }
    void keyCaptions()
    {
        QFETCH(int, index);
        QFETCH(QString, caption);
        QCOMPARE(FrontPanel::keyCaption(index), caption);
    }

    void modeKeysSendIndexMinusFour_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("bytes");
        const int keys[] = {4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15};
        for (int k : keys)
            QTest::addRow("Key(%d)", k)
                << k << QStringLiteral("00 00 00 %1 0C").arg(k - 4, 2, 16, QLatin1Char('0')).toUpper();
    }
    void modeKeysSendIndexMinusFour()
    {
        QFETCH(int, index);
        QFETCH(QString, bytes);
        QCOMPARE(FrontPanel::keyCommand(index, Indicators{})->hex(), bytes);
    }

    void togglesDecideFromWhatIsShown_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("shownBefore");
        QTest::addColumn<QString>("bytes");
        QTest::newRow("Tuner hidden -> on") << 0 << false << "00 00 00 01 81";
        QTest::newRow("Tuner shown -> off") << 0 << true << "00 00 00 00 81";
        QTest::newRow("Dual hidden -> on") << 20 << false << "00 00 00 01 83";
        QTest::newRow("Dual shown -> off") << 20 << true << "00 00 00 00 83";
        QTest::newRow("Split hidden -> on") << 21 << false << "00 00 00 01 01";
        QTest::newRow("Split shown -> off") << 21 << true << "00 00 00 00 01";
        QTest::newRow("Clar Rx hidden -> on") << 2 << false << "00 00 00 01 09";
        QTest::newRow("Clar Rx shown -> off") << 2 << true << "00 00 00 00 09";
        QTest::newRow("Clar Tx hidden -> on") << 3 << false << "00 00 00 81 09";
        QTest::newRow("Clar Tx shown -> off") << 3 << true << "00 00 00 80 09";
    }
    void togglesDecideFromWhatIsShown()
    {
        QFETCH(int, index);
        QFETCH(bool, shownBefore);
        QFETCH(QString, bytes);
        Indicators s;
        s.tuner = s.dual = s.split = s.clarRx = s.clarTx = shownBefore;
        QCOMPARE(FrontPanel::keyCommand(index, s)->hex(), bytes);
        QVERIFY(FrontPanel::isToggleKey(index));
    }

    void plainKeys()
    {
        QCOMPARE(FrontPanel::keyCommand(16, Indicators{})->hex(), QStringLiteral("00 00 00 00 85"));
        QCOMPARE(FrontPanel::keyCommand(17, Indicators{})->hex(), QStringLiteral("00 00 00 01 05"));
    }

    void startWithoutAuthorizeTxSendsNothing()
    {
        Indicators s;
        s.txAuthorized = false;
        QVERIFY(!FrontPanel::keyCommand(1, s));
        s.txAuthorized = true;
        QCOMPARE(FrontPanel::keyCommand(1, s)->hex(), QStringLiteral("00 00 00 00 82"));
    }

    void rptrOutsideFmSendsNothing()
    {
        Indicators s;
        s.mode = QStringLiteral("USB");
        QVERIFY(!FrontPanel::keyCommand(29, s));
        s.mode = QStringLiteral("PKT FM");
        QVERIFY(!FrontPanel::keyCommand(29, s));
    }

    void rptrInFm_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("bytes");
        QTest::newRow("hidden -> plus") << false << "  RPTR +"
                                        << "00 00 00 01 84";
        QTest::newRow("minus shown -> 2") << true << "  RPTR -"
                                          << "00 00 00 02 84";
        QTest::newRow("plus shown -> 0") << true << "  RPTR +"
                                         << "00 00 00 00 84";
    }
    void rptrInFm()
    {
        QFETCH(bool, shown);
        QFETCH(QString, caption);
        QFETCH(QString, bytes);
        Indicators s;
        s.mode = QStringLiteral("FM");
        s.repeaterShown = shown;
        s.repeater = caption;
        QCOMPARE(FrontPanel::keyCommand(29, s)->hex(), bytes);
    }

    void keysThatSendNothingByThemselves()
    {
        for (int i : {18, 19, 22, 23, 24, 25, 26, 27, 28, 30, 31, 32, 48, 53})
            QVERIFY2(!FrontPanel::keyCommand(i, Indicators{}), qPrintable(QString::number(i)));
    }

    void memoryNumberRange_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<int>("channel");
        QTest::newRow("0") << "0" << false << 0;
        QTest::newRow("109") << "109" << false << 0;
        QTest::newRow("1") << "1" << true << 1;
        QTest::newRow("108") << "108" << true << 108;
        QTest::newRow("empty reads as 0") << "" << false << 0;
        QTest::newRow("text reads as 0") << "abc" << false << 0;
        QTest::newRow("leading number") << "42 please" << true << 42;
    }
    void memoryNumberRange()
    {
        QFETCH(QString, typed);
        QFETCH(bool, valid);
        QFETCH(int, channel);
        const auto n = FrontPanel::parseMemoryNumber(typed);
        QCOMPARE(n.valid, valid);
        if (valid)
            QCOMPARE(n.channel, channel);
    }

    void channelCountsFromZero() { QCOMPARE(FrontPanel::channelFromReply(0), 1); }

    void storedWidth7035StartsSmallOfferingLarge()
    {
        const auto l = FrontPanel::layoutAtStart(7035);
        QVERIFY(l.small);
        QCOMPARE(l.menuCaption, QStringLiteral("Large"));
        QCOMPARE(l.frameWidth, 6810);
        QVERIFY(!l.scopeKeyEnabled);
    }
    void otherStoredWidthStartsLargeKeepingTheWidth()
    {
        const auto l = FrontPanel::layoutAtStart(9000);
        QVERIFY(!l.small);
        QCOMPARE(l.windowWidth, 9000);
        QCOMPARE(l.frameWidth, 10205);
        QCOMPARE(l.menuCaption, QStringLiteral("Small"));
    }
    void layoutSwitch_data()
    {
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("frame");
        QTest::addColumn<bool>("scopeKey");
        QTest::addColumn<QString>("caption");
        QTest::newRow("large -> small") << 10410 << 7035 << 6810 << false << "Large";
        QTest::newRow("small -> large") << 7035 << 10410 << 10205 << true << "Small";
        QTest::newRow("other -> large") << 9000 << 10410 << 10205 << true << "Small";
    }
    void layoutSwitch()
    {
        QFETCH(int, current);
        QFETCH(int, width);
        QFETCH(int, frame);
        QFETCH(bool, scopeKey);
        QFETCH(QString, caption);
        const auto l = FrontPanel::switchLayout(current);
        QCOMPARE(l.windowWidth, width);
        QCOMPARE(l.frameWidth, frame);
        QCOMPARE(l.scopeKeyEnabled, scopeKey);
        QCOMPARE(l.menuCaption, caption);
    }
};

QTEST_GUILESS_MAIN(TestFrontPanel)
#include "test_front_panel.moc"
