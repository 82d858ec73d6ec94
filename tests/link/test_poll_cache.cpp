// SPDX-License-Identifier: GPL-3.0-or-later
// The poll's replies kept for the sharing ports: which reads they answer, and when a set makes them
// wait for the next poll.

#include "CatCommand.h"
#include "PollCache.h"
#include "Procedures.h"

#include <QTest>

namespace {
const CatCommand CurrentVfo = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo);
const CatCommand BothVfos = CatCommand::make(Op::StatusRequest, StatusKind::BothVfos);
const CatCommand Flags = CatCommand::make(Op::ReadFlags, 1);
const CatCommand SetVfoA = CatCommand::make(Op::SetVfoA, 0x01, 0x40, 0x76, 0x00);

CatCommand meter(int selector)
{
    return CatCommand::make(Op::ReadMeter, 0, 0, 0, selector);
}

StatusReply status(char fill)
{
    StatusReply s;
    s.ran = true;
    s.currentVfo = QByteArray(ReplySize::VfoRecord, fill);
    s.bothVfos = QByteArray(ReplySize::BothVfos, static_cast<char>(fill + 1));
    s.record = s.currentVfo + s.bothVfos.mid(ReplySize::VfoRecord);
    return s;
}

MeterReplies meters()
{
    MeterReplies m;
    m.ran = true;
    m.mainS = QByteArray::fromHex("8000000000");
    m.subS = QByteArray::fromHex("1100000000");
    m.transmit = QByteArray::fromHex("2200000000");
    m.pitch = QByteArray::fromHex("9000000000");
    return m;
}

FlagsReply flags()
{
    FlagsReply f;
    f.ran = true;
    f.waiting = ReplySize::Flags;
    f.bytes = QByteArray::fromHex("010203040506");
    return f;
}
}  // namespace

class TestPollCache : public QObject {
    Q_OBJECT
private slots:
    void nothingIsHeldBeforeThePoll()
    {
        PollCache c;
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::NotPolled);
        QCOMPARE(c.answer(Flags).holding, PollCache::Holding::NotPolled);
        QCOMPARE(c.answer(meter(0)).holding, PollCache::Holding::NotPolled);
    }

    void eachPolledReadIsAnsweredWithThePollsBytes()
    {
        PollCache c;
        const quint64 mark = c.pollStarting();
        c.storeStatus(mark, status('a'));
        c.storeMeters(mark, 0x85, meters());
        c.storeFlags(mark, flags());
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Current);
        QCOMPARE(c.answer(CurrentVfo).bytes, QByteArray(16, 'a'));
        QCOMPARE(c.answer(BothVfos).bytes, QByteArray(32, 'b'));
        QCOMPARE(c.answer(meter(0x00)).bytes, QByteArray::fromHex("8000000000"));
        QCOMPARE(c.answer(meter(0x01)).bytes, QByteArray::fromHex("1100000000"));
        QCOMPARE(c.answer(meter(0x85)).bytes, QByteArray::fromHex("2200000000"));
        QCOMPARE(c.answer(meter(0xF1)).bytes, QByteArray::fromHex("9000000000"));
        QCOMPARE(c.answer(Flags).bytes, QByteArray::fromHex("010203040506"));
    }

    void readsThePollDoesNotMakeAreNotHeld()
    {
        PollCache c;
        const quint64 mark = c.pollStarting();
        c.storeStatus(mark, status('a'));
        c.storeMeters(mark, 0x80, meters());
        QCOMPARE(c.answer(CatCommand::make(Op::StatusRequest, StatusKind::OneChannel, 0, 0, 5)).holding,
                 PollCache::Holding::NotPolled);
        QCOMPARE(c.answer(CatCommand::make(Op::StatusRequest, StatusKind::CurrentChannel)).holding,
                 PollCache::Holding::NotPolled);
        QCOMPARE(c.answer(meter(0x84)).holding, PollCache::Holding::NotPolled);
    }

    void aMeterThePollNoLongerReadsIsDropped()
    {
        PollCache c;
        c.storeMeters(c.pollStarting(), 0x80, meters());
        c.storeMeters(c.pollStarting(), 0x85, meters());
        QCOMPARE(c.answer(meter(0x80)).holding, PollCache::Holding::NotPolled);
        QCOMPARE(c.answer(meter(0x85)).holding, PollCache::Holding::Current);
    }

    void aSetMakesItsRecordsWaitForAPollStartedAfterIt()
    {
        PollCache c;
        c.storeStatus(c.pollStarting(), status('a'));
        c.storeFlags(c.pollStarting(), flags());
        const unsigned records = PollCache::recordsChangedBy(SetVfoA);
        c.setPosted(records);
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Stale);
        QCOMPARE(c.answer(Flags).holding, PollCache::Holding::Current);  // a frequency leaves the flags
        // A poll that started before the set went out still shows the old record.
        const quint64 before = c.pollStarting();
        c.setSent(records);
        c.storeStatus(before, status('a'));
        QCOMPARE(c.answer(BothVfos).holding, PollCache::Holding::Stale);
        c.storeStatus(c.pollStarting(), status('c'));
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Current);
        QCOMPARE(c.answer(CurrentVfo).bytes, QByteArray(16, 'c'));
    }

    void aSetReplacedBeforeItWentOutLeavesNoWaitBehind()
    {
        PollCache c;
        c.storeStatus(c.pollStarting(), status('a'));
        const unsigned records = PollCache::recordsChangedBy(SetVfoA);
        c.setPosted(records);
        c.setPosted(records);
        c.setDropped(records);  // the second took the first one's place
        c.setSent(records);
        c.storeStatus(c.pollStarting(), status('c'));
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Current);
    }

    void aReadWaitsOnlyForTheSetsBeforeIt()
    {
        // Other clients keep setting: a read waits for the poll after the sets posted before it was
        // taken, not for those that came after.
        PollCache c;
        c.storeStatus(c.pollStarting(), status('a'));
        const unsigned records = PollCache::recordsChangedBy(SetVfoA);
        c.setPosted(records);
        const PollCache::Ticket read = c.ticket();
        c.setSent(records);
        c.setPosted(records);  // a later set, still waiting
        QCOMPARE(c.answer(CurrentVfo, read).holding, PollCache::Holding::Stale);
        c.storeStatus(c.pollStarting(), status('c'));
        QCOMPARE(c.answer(CurrentVfo, read).holding, PollCache::Holding::Current);
        QCOMPARE(c.answer(CurrentVfo, read).bytes, QByteArray(16, 'c'));
        // A read taken now must see the later set too.
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Stale);
        const quint64 before = c.pollStarting();
        c.setSent(records);
        c.storeStatus(before, status('d'));
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Stale);
        c.storeStatus(c.pollStarting(), status('e'));
        QCOMPARE(c.answer(CurrentVfo).holding, PollCache::Holding::Current);
    }

    void aReadTakenLongAgoStillFindsItsSet()
    {
        PollCache c;
        const unsigned records = PollCache::recordsChangedBy(SetVfoA);
        c.setPosted(records);
        const PollCache::Ticket read = c.ticket();
        const quint64 before = c.pollStarting();
        for (int i = 0; i < 200; ++i) {  // far more sends than the cache keeps the marks of
            c.setPosted(records);
            c.setSent(records);
        }
        c.setSent(records);
        c.storeStatus(before, status('a'));
        QCOMPARE(c.answer(CurrentVfo, read).holding, PollCache::Holding::Stale);
        c.storeStatus(c.pollStarting(), status('b'));
        QCOMPARE(c.answer(CurrentVfo, read).holding, PollCache::Holding::Current);
    }

    void transmittingChangesTheFlagsAndTheMeters()
    {
        const unsigned r = PollCache::recordsChangedBy(CatCommand::make(Op::Ptt, 1));
        QVERIFY(r & PollCache::FlagsRecord);
        QVERIFY(r & PollCache::MeterRecords);
        QVERIFY(!(r & PollCache::StatusRecords));
        QCOMPARE(PollCache::recordsChangedBy(CatCommand::make(Op::Split, 1)), unsigned(PollCache::FlagsRecord));
    }

    // What the receiver hears moves with its frequency, mode and filter: the S-meter too.
    void tuningChangesTheMeters_data()
    {
        QTest::addColumn<int>("op");
        QTest::newRow("VFO-A frequency") << int(Op::SetVfoA);
        QTest::newRow("VFO-B frequency") << int(Op::SetVfoB);
        QTest::newRow("step up") << int(Op::StepUp);
        QTest::newRow("step down") << int(Op::StepDown);
        QTest::newRow("clarifier") << int(Op::Clarifier);
        QTest::newRow("mode") << int(Op::SetMode);
        QTest::newRow("filter") << int(Op::FilterSelect);
        QTest::newRow("memory recall") << int(Op::RecallMemory);
        QTest::newRow("VFO select") << int(Op::VfoSelect);
    }
    void tuningChangesTheMeters()
    {
        QFETCH(int, op);
        const unsigned r = PollCache::recordsChangedBy(CatCommand::make(op, 1));
        QVERIFY(r & PollCache::MeterRecords);
        QVERIFY(r & PollCache::StatusRecords);
    }

    void listenersHearEveryStoreUntilRemoved()
    {
        PollCache c;
        int heard = 0;
        const int handle = c.addListener([&] { ++heard; });
        c.storeStatus(c.pollStarting(), status('a'));
        c.storeFlags(c.pollStarting(), flags());
        QCOMPARE(heard, 2);
        c.removeListener(handle);
        c.storeFlags(c.pollStarting(), flags());
        QCOMPARE(heard, 2);
    }
};

QTEST_GUILESS_MAIN(TestPollCache)
#include "test_poll_cache.moc"
