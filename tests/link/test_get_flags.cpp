// SPDX-License-Identifier: GPL-3.0-or-later
#include "FlagsDecoder.h"
#include "LinkTestBytes.h"
#include "Procedures.h"

#include <QTest>

class TestGetFlags : public QObject {
    Q_OBJECT
private slots:
    void sendsArgumentAsP4SleepsThenCountsAndReads_data()
    {
        QTest::addColumn<int>("arg");
        QTest::addColumn<QString>("frame");
        QTest::newRow("start-up") << 0 << QStringLiteral("00 00 00 00 FA");
        QTest::newRow("poll") << 1 << QStringLiteral("00 00 00 01 FA");
        QTest::newRow("low byte") << 0x102 << QStringLiteral("00 00 00 02 FA");
    }
    void sendsArgumentAsP4SleepsThenCountsAndReads()
    {
        QFETCH(int, arg);
        QFETCH(QString, frame);
        FakeLine line;
        line.serial.queueReply(counting(6));
        const FlagsReply r = GetFlags(line.port, arg);
        QVERIFY(r.ran);
        QCOMPARE(r.waiting, 6);
        QCOMPARE(r.bytes, counting(6));
        QCOMPARE(line.clock.events, (QStringList{QStringLiteral("write ") + frame, QStringLiteral("sleep 100"),
                                                 QStringLiteral("read 6")}));
    }

    void doesNotClearStaleBytesFirst()
    {
        FakeLine line;
        line.serial.inject(bytes({0xEE}));
        line.serial.queueReply(counting(5));
        const FlagsReply r = GetFlags(line.port, 1);
        QCOMPARE(r.waiting, 6);
        QCOMPARE(r.bytes, bytes({0xEE}) + counting(5));
    }

    void countIsTakenAfterTheWait()
    {
        FakeLine line;
        // The radio answers during the wait, not at once.
        line.clock.onSleep = [&line](int) { line.serial.inject(counting(6)); };
        const FlagsReply r = GetFlags(line.port, 1);
        QCOMPARE(r.waiting, 6);
        QCOMPARE(r.bytes, counting(6));
        QVERIFY(decodeFlags(1, r.waiting, r.bytes).decoded);
    }

    void replyOfOtherLengthChangesNothing_data()
    {
        QTest::addColumn<int>("length");
        QTest::newRow("none") << 0;
        QTest::newRow("5 bytes") << 5;
        QTest::newRow("7 bytes") << 7;
        QTest::newRow("32 bytes") << 32;
    }
    void replyOfOtherLengthChangesNothing()
    {
        QFETCH(int, length);
        FakeLine line;
        line.serial.queueReply(QByteArray(length, '\xFF'));
        const FlagsReply r = GetFlags(line.port, 1);
        QCOMPARE(r.waiting, length);
        const FlagsView v = decodeFlags(1, r.waiting, r.bytes);
        QVERIFY(!v.decoded);
        QVERIFY(v.dump.isEmpty());
        QVERIFY(!v.split && !v.dual && !v.xmit && !v.tuner && !v.lockVisible);
    }

    void closedPortReturnsAtOnce()
    {
        FakeLine line(false);
        const FlagsReply r = GetFlags(line.port, 0);
        QVERIFY(!r.ran);
        QVERIFY(line.clock.events.isEmpty());
        QCOMPARE(line.clock.nowMs(), 0);
    }
};

QTEST_GUILESS_MAIN(TestGetFlags)
#include "test_get_flags.moc"
