// SPDX-License-Identifier: GPL-3.0-or-later
// The native port's conversation without a terminal: a fake radio whose poll replies the test
// arranges, and which records every set and every question put to the radio.

#include "NativeResponder.h"

#include <QStringList>
#include <QTest>
#include <functional>
#include <map>

namespace {
QByteArray frame(int op, int p4 = 0, int p1 = 0)
{
    return CatCommand::make(op, p4, 0, 0, p1).bytes();
}

class FakeNativeRadio final : public NativeRadio {
public:
    PollCache::Ticket ticket() const override { return {}; }
    PollCache::Answer polled(const CatCommand& read, const PollCache::Ticket&) const override
    {
        const auto it = poll.find(read.hex());
        if (it == poll.end())
            return {};
        if (stale.contains(read.hex()))
            return {PollCache::Holding::Stale, {}};
        return {PollCache::Holding::Current, it->second};
    }
    // The rig's gate, as far as the conversation sees it.
    Refusal forwardSet(const CatCommand& set) override
    {
        if (NativeResponder::kindOf(set) == NativeResponder::Kind::TransmitSet && !authorized)
            return Refusal::NotAuthorized;
        if (busy)
            return Refusal::Busy;
        sent << set.hex();
        return Refusal::None;
    }
    bool passThrough(const CatCommand& read, std::function<void(const QByteArray&)> done) override
    {
        if (busy)
            return false;
        sent << QStringLiteral("ask ") + read.hex();
        if (answerAtOnce)
            done(radio(read));
        else
            later = [this, read, done] { done(radio(read)); };
        return true;
    }
    QByteArray radio(const CatCommand& read) const { return QByteArray(read.p4 == 4 ? 16 : 5, char(0x40 + read.p1)); }

    bool authorized = false;
    bool busy = false;
    bool answerAtOnce = true;
    std::map<QString, QByteArray> poll;
    QStringList stale;
    QStringList sent;
    std::function<void()> later;
};

struct Scene {
    Scene() : responder(radio, [this](const QByteArray& b) { out += b; }) {}
    FakeNativeRadio radio;
    QByteArray out;
    NativeResponder responder;
};

const QByteArray CurrentVfo = frame(Op::StatusRequest, StatusKind::CurrentVfo);
const QByteArray CurrentVfoReply = QByteArray::fromHex("00 00 8A A8 80 00 00 01 00 00 00 00 00 00 00 00");
}  // namespace

class TestNativeResponder : public QObject {
    Q_OBJECT
private slots:
    void aPolledReadIsAnsweredWithThePollsBytesAndNothingIsAsked()
    {
        Scene s;
        s.radio.poll[CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).hex()] = CurrentVfoReply;
        s.responder.receive(CurrentVfo);
        QCOMPARE(s.out, CurrentVfoReply);
        QVERIFY(s.radio.sent.isEmpty());
        QCOMPARE(s.responder.commandsAnswered(), qint64(1));
    }

    void otherReadsOfTheTableGoToTheRadio_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("replyBytes");
        QTest::newRow("channel record") << frame(Op::StatusRequest, StatusKind::OneChannel, 7) << 16;
        QTest::newRow("current channel") << frame(Op::StatusRequest, StatusKind::CurrentChannel) << 5;
        QTest::newRow("a meter the poll does not read") << frame(Op::ReadMeter, 0, 0x84) << 5;
    }
    void otherReadsOfTheTableGoToTheRadio()
    {
        QFETCH(QByteArray, command);
        QFETCH(int, replyBytes);
        Scene s;
        s.responder.receive(command);
        QCOMPARE(s.radio.sent, QStringList{QStringLiteral("ask ") + hexBytes(command)});
        QCOMPARE(s.out.size(), replyBytes);
    }

    void aStaleReadWaitsForThePollAndHoldsBackLaterCommands()
    {
        Scene s;
        const QString key = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).hex();
        s.radio.poll[key] = QByteArray(16, 'o');
        s.radio.stale << key;
        s.responder.receive(CurrentVfo);
        s.responder.receive(frame(Op::Split, 1));
        QVERIFY(s.responder.waitingForPoll());
        QVERIFY(s.out.isEmpty());
        QVERIFY(s.radio.sent.isEmpty());  // the split waits behind the read
        s.responder.pollStored();         // still stale
        QVERIFY(s.out.isEmpty());
        s.radio.stale.clear();
        s.radio.poll[key] = QByteArray(16, 'n');
        s.responder.pollStored();
        QCOMPARE(s.out, QByteArray(16, 'n'));
        QCOMPARE(s.radio.sent, QStringList{"00 00 00 01 01"});
        QVERIFY(!s.responder.waitingForPoll());
    }

    void aReadThatWaitedTooLongAsksTheRadio()
    {
        Scene s;
        const QString key = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).hex();
        s.radio.poll[key] = QByteArray(16, 'o');
        s.radio.stale << key;
        s.responder.receive(CurrentVfo);
        s.responder.stopWaitingForPoll();
        QCOMPARE(s.radio.sent, QStringList{QStringLiteral("ask ") + key});
        QCOMPARE(s.out.size(), 5);
    }

    void aRadioReadHoldsBackLaterCommandsUntilItsReply()
    {
        Scene s;
        s.radio.answerAtOnce = false;
        s.responder.receive(frame(Op::StatusRequest, StatusKind::OneChannel, 3));
        s.responder.receive(frame(Op::SetMode, ModeCode::Cw));
        QCOMPARE(s.radio.sent.size(), 1);
        s.radio.later();
        QCOMPARE(s.out, QByteArray(16, char(0x43)));
        QCOMPARE(s.radio.sent.last(), QStringLiteral("00 00 00 02 0C"));
    }

    void setsGoToTheRadioInOrder()
    {
        Scene s;
        s.responder.receive(frame(Op::SetMode, ModeCode::Usb));
        s.responder.receive(CatCommand::make(Op::SetVfoA, 0x00, 0x60, 0x07, 0x01).bytes());
        s.responder.receive(frame(Op::Split, 0));
        s.responder.receive(frame(Op::Ptt, 0));  // unkeying is never refused
        QCOMPARE(s.radio.sent, (QStringList{"00 00 00 01 0C", "01 07 60 00 0A", "00 00 00 00 01", "00 00 00 00 0F"}));
        QVERIFY(s.out.isEmpty());  // sets are not answered
    }

    void transmittingIsRefusedUnlessAuthorised_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("PTT on") << frame(Op::Ptt, 1);
        QTest::newRow("PTT with P4 2") << frame(Op::Ptt, 2);
        QTest::newRow("PTT with P4 FF") << frame(Op::Ptt, 0xFF);
        QTest::newRow("tuner start") << frame(Op::TunerStart);
    }
    void transmittingIsRefusedUnlessAuthorised()
    {
        QFETCH(QByteArray, command);
        Scene s;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: transmit refused"));
        s.responder.receive(command);
        QVERIFY(s.radio.sent.isEmpty());
        QCOMPARE(s.responder.commandsAnswered(), qint64(0));
        s.radio.authorized = true;
        s.responder.receive(command);
        QCOMPARE(s.radio.sent, QStringList{hexBytes(command)});
    }

    void everyPttButAnUnkeyIsATransmittingSet()
    {
        QCOMPARE(NativeResponder::kindOf(CatCommand::make(Op::Ptt, 0)), NativeResponder::Kind::Set);
        for (const int p4 : {1, 2, 3, 0x10, 0xFF})
            QCOMPARE(NativeResponder::kindOf(CatCommand::make(Op::Ptt, p4)), NativeResponder::Kind::TransmitSet);
    }

    // A client that writes reads in a loop at a radio that does not answer: the commands behind the
    // waiting read stop at the cap, the newest dropped, said once in the log.
    void theQueueBehindAWaitingReadIsCapped()
    {
        Scene s;
        s.radio.answerAtOnce = false;
        const QByteArray channelRead = frame(Op::StatusRequest, StatusKind::OneChannel, 3);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: the client writes faster"));
        const int flood = 10 * NativeResponder::MaxQueuedCommands;
        for (int i = 0; i < flood; ++i)
            s.responder.receive(channelRead);
        QCOMPARE(s.responder.commandsWaiting(), NativeResponder::MaxQueuedCommands);
        QCOMPARE(s.responder.commandsDropped(), qint64(flood - 1 - NativeResponder::MaxQueuedCommands));
        QCOMPARE(s.radio.sent.size(), 1);  // one question on the wire at a time
        // The radio answers at last: what waited is taken in order, and new commands are taken again.
        int answered = 0;
        while (s.radio.later && answered <= NativeResponder::MaxQueuedCommands) {
            auto next = std::move(s.radio.later);
            s.radio.later = nullptr;
            next();
            ++answered;
        }
        QCOMPARE(answered, NativeResponder::MaxQueuedCommands + 1);
        QCOMPARE(s.responder.commandsWaiting(), 0);
        s.responder.receive(channelRead);
        QCOMPARE(s.radio.sent.size(), NativeResponder::MaxQueuedCommands + 2);
    }

    void aSetTheRigRefusesForABacklogIsDroppedWithALogLine()
    {
        Scene s;
        s.radio.busy = true;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: dropped, too many"));
        s.responder.receive(frame(Op::Split, 1));
        QVERIFY(s.radio.sent.isEmpty());
        // A read the rig will not ask is answered with the radio's silence, and the queue goes on.
        s.responder.receive(frame(Op::StatusRequest, StatusKind::OneChannel, 3));
        QVERIFY(s.out.isEmpty());
        QVERIFY(!s.responder.waitingForPoll());
        QCOMPARE(s.responder.commandsWaiting(), 0);
    }

    void anOpcodeOutsideTheTableIsNotPassedOn_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("0x0B") << frame(0x0B, 1);
        QTest::newRow("0xFF") << frame(0xFF);
        QTest::newRow("0x00") << frame(0x00);
        QTest::newRow("status record 5") << frame(Op::StatusRequest, 5);
    }
    void anOpcodeOutsideTheTableIsNotPassedOn()
    {
        QFETCH(QByteArray, command);
        Scene s;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: not passed on"));
        s.responder.receive(command);
        QVERIFY(s.radio.sent.isEmpty());
        QVERIFY(s.out.isEmpty());
    }

    void aResetDropsAReplyStillOnItsWay()
    {
        Scene s;
        s.radio.answerAtOnce = false;
        s.responder.receive(frame(Op::StatusRequest, StatusKind::OneChannel, 3));
        s.responder.reset();
        s.radio.later();
        QVERIFY(s.out.isEmpty());
        s.responder.receive(frame(Op::Split, 1));
        QCOMPARE(s.radio.sent.last(), QStringLiteral("00 00 00 01 01"));
    }
};

QTEST_GUILESS_MAIN(TestNativeResponder)
#include "test_native_responder.moc"
