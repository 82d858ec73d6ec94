// SPDX-License-Identifier: GPL-3.0-or-later
// The fast link on a fake line: each request ends when its reply's known length has arrived, never
// later than the fixed wait; short, empty, long and late replies come out as the exact mode has them.
#include "FlagsDecoder.h"
#include "LinkTestBytes.h"
#include "Procedures.h"
#include "StatusDecoder.h"

#include <QTest>

namespace {
// A fast line whose replies take 2 ms a byte (about the radio's 2.29 ms at 4800 baud 8N2).
struct FastLine : FakeLine {
    explicit FastLine(int replyDelayMs = 0, int msPerByte = 2)
    {
        serial.replyDelayMs = replyDelayMs;
        serial.msPerByte = msPerByte;
        port.setFastLink(true);
    }
    int sleeps() const { return static_cast<int>(clock.events.filter(QStringLiteral("sleep")).size()); }
};
}  // namespace

class TestFastLink : public QObject {
    Q_OBJECT
private slots:
    void statusReturnsWhenEachRecordHasArrived()
    {
        FastLine line;
        line.serial.queueReply(counting(16, 1));
        line.serial.queueReply(counting(32, 101));
        const StatusReply r = Get_Status32(line.port);
        QCOMPARE(r.record, counting(16, 1) + counting(16, 117));
        // 16 bytes at 2 ms, then 32 bytes at 2 ms, each followed by 3 ms of quiet line: 35 ms and
        // 67 ms in place of 100 ms and 200 ms.
        QCOMPARE(line.serial.writes.size(), 2);
        QCOMPARE(line.serial.writes[1].atMs, 35);
        QCOMPARE(line.clock.nowMs(), 102);
        QCOMPARE(line.sleeps(), 0);
    }

    void sameCommandsInTheSameOrderAsTheExactMode()
    {
        FakeLine exact;
        FastLine fast;
        for (FakeLine* l : {&exact, static_cast<FakeLine*>(&fast)}) {
            l->serial.responder = [](const QByteArray& command) {
                const auto op = static_cast<quint8>(command.at(4));
                const auto p4 = static_cast<quint8>(command.at(3));
                if (op == 0x10)
                    return counting(p4 == 2 ? 16 : 32, 7);
                return counting(op == 0xF7 ? 5 : 6, 40);
            };
            Get_Status32(l->port);
            readMeters(l->port, 0x80);
            GetFlags(l->port, 1);
        }
        QCOMPARE(fast.serial.writtenHex(), exact.serial.writtenHex());
        QCOMPARE(fast.serial.writtenHex(),
                 (QStringList{QStringLiteral("00 00 00 02 10"), QStringLiteral("00 00 00 03 10"),
                              QStringLiteral("00 00 00 00 F7"), QStringLiteral("01 00 00 00 F7"),
                              QStringLiteral("80 00 00 00 F7"), QStringLiteral("F1 00 00 00 F7"),
                              QStringLiteral("00 00 00 01 FA")}));
        QCOMPARE(exact.clock.nowMs(), 100 + 200 + 4 * 50 + 100);
        // 16 + 32 + 4 * 5 + 6 bytes at 2 ms each, and 3 ms of quiet line after each of the 7 replies.
        QCOMPARE(fast.clock.nowMs(), 2 * (16 + 32 + 4 * 5 + 6) + 7 * 3);
    }

    void neverWaitsLongerThanTheFixedWait_data()
    {
        QTest::addColumn<int>("replyBytes");
        QTest::addColumn<int>("replyDelay");
        QTest::newRow("empty") << 0 << 0;
        QTest::newRow("short") << 10 << 0;
        QTest::newRow("too late to complete") << 16 << 90;
        QTest::newRow("starts after the wait") << 16 << 150;
    }
    void neverWaitsLongerThanTheFixedWait()
    {
        QFETCH(int, replyBytes);
        QFETCH(int, replyDelay);
        FastLine line(replyDelay);
        line.serial.queueReply(counting(replyBytes, 1));
        const QByteArray r =
            line.port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), Wait::StatusCurrentVfo);
        QCOMPARE(line.clock.nowMs(), 100);
        // What arrived within the wait, as the exact mode reads it after its sleep.
        FakeLine exact;
        exact.serial.replyDelayMs = replyDelay;
        exact.serial.msPerByte = 2;
        exact.serial.queueReply(counting(replyBytes, 1));
        QCOMPARE(
            r, exact.port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), Wait::StatusCurrentVfo));
    }

    void lateButCompleteReplyEndsTheWaitWhenItIsThere()
    {
        FastLine line(30);
        line.serial.queueReply(counting(16, 1));
        const QByteArray r =
            line.port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), Wait::StatusCurrentVfo);
        QCOMPARE(r, counting(16, 1));
        QCOMPARE(line.clock.nowMs(), 30 + 2 * 16 + 3);
    }

    void emptyStatusReplyIsAnEmptyRecordAsInTheExactMode()
    {
        FastLine line;
        const StatusReply r = Get_Status32(line.port);
        QVERIFY(r.ran);
        QVERIFY(r.record.isEmpty());
        // Each request waits its whole fixed time; before the second, 3 ms for a late first reply.
        QCOMPARE(line.serial.writes[1].atMs, 103);
        QCOMPARE(line.clock.nowMs(), 303);
        StatusRecord store;
        QVERIFY(decodeStatus(store, r.record).noLink);
    }

    void doubledReplyIsReadOffWithTheFirstRecord()
    {
        FastLine line;
        line.serial.queueReply(counting(16, 1) + counting(16, 1));  // the radio answered twice
        line.serial.queueReply(counting(32, 101));
        const StatusReply r = Get_Status32(line.port);
        QCOMPARE(r.record, counting(16, 1) + counting(16, 117));
        // The copy came straight after the first: it was read off, not left for the next request.
        QCOMPARE(line.serial.writes[1].atMs, 2 * 32 + 3);
    }

    void doubledFlagsReplyIsNotDecoded_asInTheExactMode()
    {
        const QByteArray flags = bytes({0x01, 0x00, 0x00, 0x00, 0x00, 0x00});
        FastLine fast;
        fast.serial.queueReply(flags + flags);
        const FlagsReply f = GetFlags(fast.port, 1);
        QCOMPARE(f.waiting, 12);
        QCOMPARE(f.bytes, flags);
        QVERIFY(!decodeFlags(1, f.waiting, f.bytes).decoded);
        // The exact mode counts the twelve bytes and leaves the flags as they were.
        FakeLine exact;
        exact.serial.queueReply(flags + flags);
        const FlagsReply e = GetFlags(exact.port, 1);
        QCOMPARE(e.waiting, 12);
        QVERIFY(!decodeFlags(1, e.waiting, e.bytes).decoded);
    }

    void throughAnAdapterThatHandsOverInBursts_aDoubledReplysTailIsNotTakenForTheNext()
    {
        FastLine line;
        line.serial.burstMs = 16;
        // Replies that span several bursts teach the link how far apart the bursts are.
        for (int i = 0; i < 2; ++i) {
            line.serial.queueReply(counting(16, 1));
            QCOMPARE(line.port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo),
                                       Wait::StatusCurrentVfo, true),
                     counting(16, 1));
        }
        QVERIFY(line.port.quietMs() > 16);
        // A meter reply sent twice: the copy's tail comes a whole burst after the first copy.
        line.serial.queueReply(counting(5, 1) + counting(5, 1));
        const QByteArray meter =
            line.port.request(CatCommand::make(Op::ReadMeter, 0, 0, 0, MeterSelector::MainS), Wait::Meter, true);
        QCOMPARE(meter, counting(5, 1));
        const QByteArray flags = bytes({0x01, 0x00, 0x00, 0x00, 0x00, 0x00});
        line.serial.queueReply(flags);
        const FlagsReply f = GetFlags(line.port, 1);
        QCOMPARE(f.bytes, flags);
        QCOMPARE(f.waiting, 6);
    }

    void tailOfAReplyThatOverranItsWaitIsDroppedBeforeTheNextRequest()
    {
        // A radio 45 ms late: the 5-byte meter reply is not whole when its 50 ms are up.
        FastLine line(45);
        line.serial.queueReply(counting(5, 1));
        line.serial.queueReply(bytes({0x01, 0, 0, 0, 0, 0}));
        const QByteArray meter =
            line.port.request(CatCommand::make(Op::ReadMeter, 0, 0, 0, MeterSelector::MainS), Wait::Meter, true);
        QCOMPARE(meter, counting(2, 1));  // what arrived within the wait, as in the exact mode
        const FlagsReply f = GetFlags(line.port, 1);
        QCOMPARE(f.bytes, bytes({0x01, 0, 0, 0, 0, 0}));
        QCOMPARE(f.waiting, 6);
    }

    void noisyBytesBeforeTheReplyAreDroppedBeforeTheRequest()
    {
        FastLine line;
        line.serial.inject(bytes({0xAA, 0xBB}));  // unasked bytes on the line
        line.serial.queueReply(counting(6, 1));
        const FlagsReply f = GetFlags(line.port, 1);
        QCOMPARE(f.bytes, counting(6, 1));
    }

    void oneChannelAndTheCurrentChannelHaveTheirLengths()
    {
        FastLine line;
        line.serial.queueReply(counting(16, 1));
        line.serial.queueReply(bytes({4}));
        QCOMPARE(
            line.port.request(CatCommand::make(Op::StatusRequest, StatusKind::OneChannel, 0, 0, 5), Wait::OneChannel),
            counting(16, 1));
        QCOMPARE(line.clock.nowMs(), 35);
        QCOMPARE(
            line.port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentChannel), Wait::ChannelQueryLong),
            bytes({4}));
        QCOMPARE(line.clock.nowMs(), 40);
    }

    void fullReadOutEndsWithItsLastByte()
    {
        FastLine line;
        line.serial.queueReply(counting(ReplySize::AllMemories, 1));
        const QByteArray r =
            line.port.request(CatCommand::make(Op::StatusRequest, StatusKind::AllMemories), Wait::AllMemories);
        QCOMPARE(r.size(), 1863);
        QCOMPARE(line.clock.nowMs(), 2 * 1863 + 3);
    }

    void waitsThatAreNotForAReplyStayInFull()
    {
        FastLine line;
        line.port.request(CatCommand::make(Op::SetMode, ModeCode::Usb), Wait::Stepper);
        SetFreq(line.port, 1407600, 1);
        line.port.sleep(Wait::ScopeTune);
        QCOMPARE(line.clock.nowMs(), 100);
        QCOMPARE(line.sleeps(), 2);
    }

    void switchingBackRestoresTheExactWaits()
    {
        FastLine line;
        line.port.setFastLink(false);
        line.serial.queueReply(counting(16, 1));
        line.serial.queueReply(counting(32, 101));
        Get_Status32(line.port);
        QCOMPARE(line.clock.nowMs(), 300);
        QCOMPARE(line.serial.writes[1].atMs, 100);
    }

    void expectedLengthsOfTheRequests_data()
    {
        QTest::addColumn<int>("op");
        QTest::addColumn<int>("p4");
        QTest::addColumn<int>("length");
        QTest::newRow("full read-out") << 0x10 << 0 << 1863;
        QTest::newRow("current channel") << 0x10 << 1 << 1;
        QTest::newRow("current VFO") << 0x10 << 2 << 16;
        QTest::newRow("both VFOs") << 0x10 << 3 << 32;
        QTest::newRow("one channel") << 0x10 << 4 << 16;
        QTest::newRow("meter") << 0xF7 << 0 << 5;
        QTest::newRow("flags") << 0xFA << 1 << 6;
        QTest::newRow("mode set: no reply") << 0x0C << 1 << 0;
        QTest::newRow("VFO-A set: no reply") << 0x0A << 0 << 0;
    }
    void expectedLengthsOfTheRequests()
    {
        QFETCH(int, op);
        QFETCH(int, p4);
        QFETCH(int, length);
        QCOMPARE(expectedReplyBytes(CatCommand::make(op, p4)), length);
    }
};

QTEST_GUILESS_MAIN(TestFastLink)
#include "test_fast_link.moc"
