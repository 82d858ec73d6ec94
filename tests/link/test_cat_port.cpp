// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkTestBytes.h"

#include <QTest>

class TestCatPort : public QObject {
    Q_OBJECT
private slots:
    void requestClearsSendsSleepsAndReads()
    {
        FakeLine line;
        line.serial.inject(bytes({0xEE, 0xEE}));
        line.serial.queueReply(bytes({7, 8, 9}));
        const QByteArray reply = line.port.request(CatCommand::make(Op::ReadMeter), 50, true);
        QCOMPARE(reply, bytes({7, 8, 9}));
        QCOMPARE(line.clock.events, (QStringList{QStringLiteral("read 2"), QStringLiteral("write 00 00 00 00 F7"),
                                                 QStringLiteral("sleep 50"), QStringLiteral("read 3")}));
    }

    void requestWithoutClearKeepsStaleBytesInTheReply()
    {
        FakeLine line;
        line.serial.inject(bytes({0xEE}));
        line.serial.queueReply(bytes({1}));
        QCOMPARE(line.port.request(CatCommand::make(Op::ReadMeter), 50), bytes({0xEE, 1}));
        QCOMPARE(line.clock.events, (QStringList{QStringLiteral("write 00 00 00 00 F7"), QStringLiteral("sleep 50"),
                                                 QStringLiteral("read 2")}));
    }

    void sendOnAClosedPortWritesNothing()
    {
        FakeLine line(false);
        QVERIFY(!line.port.isOpen());
        line.port.send(CatCommand::make(Op::SetMode, 1));
        line.port.sendRaw(bytes({1, 2, 3}));
        QVERIFY(line.serial.writes.isEmpty());
    }

    void sendRawGoesOutAsGiven()
    {
        FakeLine line;
        line.port.sendRaw(bytes({1, 2, 3}));
        QCOMPARE(line.serial.writtenHex(), QStringList{QStringLiteral("01 02 03")});
    }

    void waitingCountsWithoutReading()
    {
        FakeLine line;
        line.serial.inject(counting(6));
        QCOMPARE(line.port.waiting(), 6);
        QCOMPARE(line.port.waiting(), 6);
        QCOMPARE(line.port.read(), counting(6));
        QCOMPARE(line.port.waiting(), 0);
    }

    void sleepUsesTheLinkClock()
    {
        FakeLine line;
        QVERIFY(line.port.sleep(250));
        QCOMPARE(line.clock.nowMs(), 250);
        QCOMPARE(&line.port.clock(), static_cast<Clock*>(&line.clock));
        QCOMPARE(&line.port.serial(), static_cast<SerialPort*>(&line.serial));
    }

    void cancelledFollowsTheJobsFlag()
    {
        FakeLine line;
        QVERIFY(!line.port.cancelled());
        std::atomic<bool> flag{false};
        line.port.setCancelFlag(&flag);
        QVERIFY(!line.port.cancelled());
        flag = true;
        QVERIFY(line.port.cancelled());
        line.port.setCancelFlag(nullptr);
        QVERIFY(!line.port.cancelled());
    }

    void cancelledFollowsTheStopFlag()
    {
        FakeLine line;
        std::atomic<bool> stop{false};
        std::atomic<bool> own{false};
        line.port.setStopFlag(&stop);
        line.port.setCancelFlag(&own);
        QVERIFY(!line.port.cancelled());
        stop = true;
        QVERIFY(line.port.cancelled());
    }
};

QTEST_GUILESS_MAIN(TestCatPort)
#include "test_cat_port.moc"
