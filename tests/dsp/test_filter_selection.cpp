// SPDX-License-Identifier: GPL-3.0-or-later
#include "FilterSelection.h"

#include <QTest>

using namespace FilterSelection;

namespace {
// The buttons a status byte lights, in the order of the tests.
QList<int> litButtons(int b)
{
    QList<int> lit;
    for (const Lamp& l : FilterSelection::lamps(b)) {
        if (l.lit)
            lit << l.button;
    }
    return lit;
}
}  // namespace

class TestFilterSelection : public QObject {
    Q_OBJECT
private slots:
    void commands_data()
    {
        QTest::addColumn<bool>("sub");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("bytes");
        const char* mainFirst[] = {"01 00 00 00 8C", "01 00 00 01 8C", "01 00 00 02 8C", "01 00 00 03 8C",
                                   "01 00 00 04 8C"};
        const char* mainSecond[] = {"02 00 00 00 8C", "02 00 00 01 8C", "02 00 00 02 8C", "02 00 00 03 8C",
                                    "02 00 00 04 8C"};
        const char* sub[] = {"00 00 00 80 8C", "00 00 00 81 8C", "00 00 00 82 8C", "00 00 00 83 8C", "00 00 00 84 8C"};
        for (int r = 0; r < 5; ++r) {
            QTest::addRow("filtA(%d)", r) << false << r << QString::fromLatin1(mainFirst[r]);
            QTest::addRow("filtA(%d)", r + 10) << false << r + 10 << QString::fromLatin1(mainSecond[r]);
            QTest::addRow("filtB(%d)", r) << true << r << QString::fromLatin1(sub[r]);
            QTest::addRow("filtB(%d)", r + 10) << true << r + 10 << QString::fromLatin1(sub[r]);
        }
    }
    void commands()
    {
        QFETCH(bool, sub);
        QFETCH(int, index);
        QFETCH(QString, bytes);
        const auto c = sub ? filtBCommand(index) : filtACommand(index);
        QVERIFY(c.has_value());
        QCOMPARE(c->hex(), bytes);
    }

    void subThruAndSub6k_bothSend84()
    {
        QCOMPARE(filtBCommand(4)->hex(), QStringLiteral("00 00 00 84 8C"));
        QCOMPARE(filtBCommand(14)->hex(), QStringLiteral("00 00 00 84 8C"));
    }

    void main6k_sends02_mainThru_sends01()
    {
        QCOMPARE(filtACommand(14)->hex(), QStringLiteral("02 00 00 04 8C"));
        QCOMPARE(filtACommand(4)->hex(), QStringLiteral("01 00 00 04 8C"));
    }

    void otherIndices_sendNothing()
    {
        for (int i : {-1, 5, 9, 15, 21}) {
            QVERIFY(!filtACommand(i).has_value());
            QVERIFY(!filtBCommand(i).has_value());
        }
    }

    void captions()
    {
        QCOMPARE(buttonCaption(0), QStringLiteral("2.4 K"));
        QCOMPARE(buttonCaption(3), QStringLiteral("250 Hz"));
        QCOMPARE(buttonCaption(4), QStringLiteral("Thru"));
        QCOMPARE(buttonCaption(12), QStringLiteral("500 Hz"));
        QCOMPARE(buttonCaption(14), QStringLiteral("6.0 K"));
        QVERIFY(buttonCaption(7).isEmpty());
    }

    void lamps_testOrder()
    {
        QList<int> order;
        for (const Lamp& l : FilterSelection::lamps(0))
            order << l.button;
        QCOMPARE(order, (QList<int>{14, 10, 11, 12, 13, 4, 0, 1, 2, 3}));
    }

    void lampTable_data()
    {
        QTest::addColumn<int>("statusByte");
        QTest::addColumn<QList<int>>("lit");
        QTest::newRow("0: both columns code 0") << 0x00 << QList<int>{14, 4};
        QTest::newRow("01: 455 2.4 K") << 0x01 << QList<int>{10, 4};
        QTest::newRow("02: 455 2.0 K") << 0x02 << QList<int>{11, 4};
        QTest::newRow("03: 455 500 Hz") << 0x03 << QList<int>{12, 4};
        QTest::newRow("04: 455 250 Hz alone") << 0x04 << QList<int>{13, 4};
        QTest::newRow("05: bit 2 with 01 lights 10 and 13") << 0x05 << QList<int>{10, 13, 4};
        QTest::newRow("07: bit 2 with 11 lights 12 and 13") << 0x07 << QList<int>{12, 13, 4};
        QTest::newRow("10: 8.2 2.4 K") << 0x10 << QList<int>{14, 0};
        QTest::newRow("20: 8.2 2.0 K") << 0x20 << QList<int>{14, 1};
        QTest::newRow("30: 8.2 500 Hz") << 0x30 << QList<int>{14, 2};
        QTest::newRow("40: 8.2 250 Hz alone") << 0x40 << QList<int>{14, 3};
        QTest::newRow("50: bit 6 with 01 lights 0 and 3") << 0x50 << QList<int>{14, 0, 3};
        QTest::newRow("72: bits 6, 4-5 = 11, 1") << 0x72 << QList<int>{11, 2, 3};
        QTest::newRow("88: bits 3 and 7 take no part") << 0x88 << QList<int>{14, 4};
        QTest::newRow("FF: everything set") << 0xFF << QList<int>{12, 13, 2, 3};
    }
    void lampTable()
    {
        QFETCH(int, statusByte);
        QFETCH(QList<int>, lit);
        QCOMPARE(litButtons(statusByte), lit);
    }

    void menu_captionsAndSeparators()
    {
        QCOMPARE(menuCaption(0), QStringLiteral("2nd IF - 8.2 mHz - 2.0 kHz"));
        QCOMPARE(menuCaption(1), QStringLiteral("2nd IF - 8.2 mHz - 250 Hz"));
        QCOMPARE(menuCaption(3), QStringLiteral("3rd IF - 455 kHz - 2.0 kHz"));
        QCOMPARE(menuCaption(4), QStringLiteral("3rd IF - 455 kHz - 500 kHz"));
        QCOMPARE(menuCaption(5), QStringLiteral("3rd IF - 455 kHz - 250 Hz"));
        QCOMPARE(menuCaption(7), QStringLiteral("Sub Filter 455 kHz - 500 Hz"));
        QVERIFY(isSeparator(2));
        QVERIFY(isSeparator(6));
        QVERIFY(!isSeparator(4));
    }

    void menu_gatesSixButtons()
    {
        auto gate = [](int i) {
            const auto g = gatedButton(i);
            return g ? QStringLiteral("%1%2").arg(QChar(g->subReceiver ? u'B' : u'A')).arg(g->button) : QString();
        };
        QCOMPARE(gate(0), QStringLiteral("A1"));
        QCOMPARE(gate(1), QStringLiteral("A3"));
        QCOMPARE(gate(2), QString());
        QCOMPARE(gate(3), QStringLiteral("A11"));
        QCOMPARE(gate(4), QStringLiteral("A12"));
        QCOMPARE(gate(5), QStringLiteral("A13"));
        QCOMPARE(gate(6), QString());
        QCOMPARE(gate(7), QStringLiteral("B12"));
    }

    void loadOrder_stepsOverTheSeparators() { QCOMPARE(menuLoadOrder(), (QList<int>{0, 1, 3, 4, 5, 7})); }

    void settings_keyAndValues()
    {
        QCOMPARE(settingsKey(4), QStringLiteral("Filter4"));
        QCOMPARE(settingsValue(true), QStringLiteral("1"));
        QCOMPARE(settingsValue(false), QStringLiteral("0"));
        QVERIFY(checkedFromSetting(QStringLiteral("1")));
        QVERIFY(checkedFromSetting(QStringLiteral("-1")));
        QVERIFY(checkedFromSetting(QStringLiteral("True")));
        QVERIFY(!checkedFromSetting(QStringLiteral("0")));
        QVERIFY(!checkedFromSetting(QString()));
        QVERIFY(!checkedFromSetting(QStringLiteral("junk")));
    }
};

QTEST_GUILESS_MAIN(TestFilterSelection)
#include "test_filter_selection.moc"
