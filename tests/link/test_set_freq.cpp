// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkTestBytes.h"
#include "Procedures.h"

#include <QTest>

class TestSetFreq : public QObject {
    Q_OBJECT
private slots:
    void fewerThanEightDigitsLeaveTheHighBytesZero()
    {
        QCOMPARE(setFreqCommand(705000, 1).hex(), QStringLiteral("00 50 70 00 0A"));
    }

    void vfoOtherThanOneOrTwoSendsInstructionZero_data()
    {
        QTest::addColumn<int>("vfo");
        QTest::newRow("0") << 0;
        QTest::newRow("3") << 3;
        QTest::newRow("-1") << -1;
        QTest::newRow("138") << 138;
    }
    void vfoOtherThanOneOrTwoSendsInstructionZero()
    {
        QFETCH(int, vfo);
        QCOMPARE(setFreqCommand(705000, vfo).hex(), QStringLiteral("00 50 70 00 00"));
        FakeLine line;
        SetFreq(line.port, 705000, vfo);
        QCOMPARE(line.serial.writtenHex(), QStringList{QStringLiteral("00 50 70 00 00")});
    }

    void digitsArePackedLeastSignificantPairFirst_data()
    {
        QTest::addColumn<qint64>("frq");
        QTest::addColumn<QString>("params");
        QTest::newRow("705000") << qint64(705000) << QStringLiteral("00 50 70 00");
        QTest::newRow("14 250.00 kHz") << qint64(1425000) << QStringLiteral("00 50 42 01");
        QTest::newRow("zero") << qint64(0) << QStringLiteral("00 00 00 00");
        QTest::newRow("one digit") << qint64(5) << QStringLiteral("05 00 00 00");
        QTest::newRow("two digits") << qint64(10) << QStringLiteral("10 00 00 00");
        QTest::newRow("eight digits") << qint64(12345678) << QStringLiteral("78 56 34 12");
        QTest::newRow("largest eight digits") << qint64(99999999) << QStringLiteral("99 99 99 99");
        QTest::newRow("30 MHz") << qint64(3000000) << QStringLiteral("00 00 00 03");
        QTest::newRow("160 m") << qint64(183000) << QStringLiteral("00 30 18 00");
        QTest::newRow("nine digits keep the low eight") << qint64(123456789) << QStringLiteral("89 67 45 23");
        QTest::newRow("ten digits keep the low eight") << qint64(9876543210) << QStringLiteral("10 32 54 76");
        QTest::newRow("sign is skipped") << qint64(-705000) << QStringLiteral("00 50 70 00");
    }
    void digitsArePackedLeastSignificantPairFirst()
    {
        QFETCH(qint64, frq);
        QFETCH(QString, params);
        QCOMPARE(setFreqCommand(frq, 1).hex(), params + QStringLiteral(" 0A"));
        QCOMPARE(setFreqCommand(frq, 2).hex(), params + QStringLiteral(" 8A"));
    }

    void sendsOneFrameAndNothingElse()
    {
        FakeLine line;
        SetFreq(line.port, 1425000, 1);
        SetFreq(line.port, 705000, 2);
        QCOMPARE(line.clock.events,
                 (QStringList{QStringLiteral("write 00 50 42 01 0A"), QStringLiteral("write 00 50 70 00 8A")}));
    }

    void closedPortSendsNothing()
    {
        FakeLine line(false);
        SetFreq(line.port, 1425000, 1);
        QVERIFY(line.serial.writes.isEmpty());
        QVERIFY(line.clock.events.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSetFreq)
#include "test_set_freq.moc"
