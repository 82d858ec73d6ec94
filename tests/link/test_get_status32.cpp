// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkTestBytes.h"
#include "Procedures.h"
#include "StatusDecoder.h"

#include <QTest>

class TestGetStatus32 : public QObject {
    Q_OBJECT
private slots:
    void clearsThenAsksForTheCurrentVfoThenBothVfos()
    {
        FakeLine line;
        line.serial.inject(bytes({0x55, 0x66, 0x77}));  // stale bytes from before
        line.serial.queueReply(counting(16, 1));
        line.serial.queueReply(counting(32, 101));
        const StatusReply r = Get_Status32(line.port);
        QVERIFY(r.ran);
        QCOMPARE(line.clock.events, (QStringList{QStringLiteral("read 3"), QStringLiteral("write 00 00 00 02 10"),
                                                 QStringLiteral("sleep 100"), QStringLiteral("read 16"),
                                                 QStringLiteral("write 00 00 00 03 10"), QStringLiteral("sleep 200"),
                                                 QStringLiteral("read 32")}));
    }

    void waitsExactly100ThenExactly200Milliseconds()
    {
        FakeLine line;
        Get_Status32(line.port);
        QCOMPARE(line.serial.writes.size(), 2);
        QCOMPARE(line.serial.writes[0].atMs, 0);
        QCOMPARE(line.serial.writes[1].atMs, 100);
        QCOMPARE(line.clock.nowMs(), 300);
    }

    void recordIsFirstHalfOfFirstReplyAndSecondHalfOfSecond()
    {
        FakeLine line;
        line.serial.queueReply(counting(16, 1));
        line.serial.queueReply(counting(32, 101));
        const StatusReply r = Get_Status32(line.port);
        QCOMPARE(r.record, counting(16, 1) + counting(16, 117));
    }

    void shortRepliesGiveAShortRecord_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<int>("expectedLength");
        QTest::newRow("both empty") << 0 << 0 << 0;
        QTest::newRow("first only") << 16 << 0 << 16;
        QTest::newRow("first short") << 10 << 32 << 26;
        QTest::newRow("second short") << 16 << 20 << 20;
        QTest::newRow("second only the first half") << 16 << 16 << 16;
        QTest::newRow("first empty, second whole") << 0 << 32 << 16;
        QTest::newRow("one byte each") << 1 << 1 << 1;
    }
    void shortRepliesGiveAShortRecord()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(int, expectedLength);
        FakeLine line;
        line.serial.queueReply(counting(first, 1));
        line.serial.queueReply(counting(second, 101));
        const StatusReply r = Get_Status32(line.port);
        QCOMPARE(r.record.size(), expectedLength);
        QCOMPARE(r.record, counting(first, 1) + counting(second, 101).mid(16, 16));
    }

    void shortRecordOverwritesOnlyTheBytesPresent()
    {
        FakeLine line;
        line.serial.queueReply(counting(10, 1));    // bytes 1-10
        line.serial.queueReply(counting(20, 101));  // its bytes 17-20 follow at positions 11-14
        const StatusReply r = Get_Status32(line.port);
        StatusRecord store;
        store.b.fill(99);
        decodeStatus(store, r.record);
        for (int i = 1; i <= 10; ++i)
            QCOMPARE(store.b[i], i);
        QCOMPARE(store.b[11], 117);
        QCOMPARE(store.b[14], 120);
        for (int i = 15; i <= 32; ++i)
            QCOMPARE(store.b[i], 99);
    }

    void longRepliesTakeOnlyWhatTheRecordHolds()
    {
        FakeLine line;
        line.serial.queueReply(counting(20, 1));
        line.serial.queueReply(counting(40, 101));
        const StatusReply r = Get_Status32(line.port);
        QCOMPARE(r.record, counting(20, 1) + counting(16, 117));
        StatusRecord store;
        const StatusView v = decodeStatus(store, r.record);
        QVERIFY(!v.noLink);
        for (int i = 1; i <= 20; ++i)
            QCOMPARE(store.b[i], i);
        for (int i = 21; i <= 32; ++i)
            QCOMPARE(store.b[i], 117 + i - 21);
    }

    void emptyReplyMeansNoLink()
    {
        FakeLine line;
        const StatusReply r = Get_Status32(line.port);
        QVERIFY(r.ran);
        QVERIFY(r.record.isEmpty());
        StatusRecord store;
        store.b.fill(7);
        const StatusView v = decodeStatus(store, r.record);
        QVERIFY(v.noLink);
        QCOMPARE(NoLinkText, QStringLiteral("No Link  "));
        for (int i = 1; i <= 32; ++i)
            QCOMPARE(store.b[i], 7);
    }

    void closedPortWritesNothing()
    {
        FakeLine line(false);
        line.serial.inject(counting(4));
        const StatusReply r = Get_Status32(line.port);
        QVERIFY(!r.ran);
        QVERIFY(r.record.isEmpty());
        QVERIFY(line.serial.writes.isEmpty());
        QVERIFY(line.clock.events.isEmpty());
        QCOMPARE(line.clock.nowMs(), 0);
    }
};

QTEST_GUILESS_MAIN(TestGetStatus32)
#include "test_get_status32.moc"
