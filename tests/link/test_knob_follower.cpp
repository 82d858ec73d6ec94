// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob, as decisions: when to read a VFO alone, when to poll in full, when to rest.

#include "KnobFollower.h"

#include <QTest>

using Next = KnobFollower::Next;
using Vfo = KnobFollower::Vfo;

namespace {
// Readings of VFO-A, each taking readingMs and finding the knob a step on, while the follower asks
// for them; at the end it must ask for a full poll. t and f are where the last one left off.
int readWhileAsked(KnobFollower& k, qint64& t, qint64& f, qint64 readingMs)
{
    int readings = 0;
    KnobFollower::Next n = KnobFollower::Next::ReadA;
    while (n == KnobFollower::Next::ReadA) {
        t += readingMs;
        f += 10;
        n = k.afterReading(KnobFollower::Vfo::A, f, t);
        ++readings;
    }
    if (n != KnobFollower::Next::FullPoll)
        qWarning("the readings ended with no full poll asked for");
    return n == KnobFollower::Next::FullPoll ? readings : -1;
}

constexpr qint64 TimedPollMs = 250;
constexpr qint64 TimedPollEndsMs = 1250;

// A timed poll learns where the VFOs are; the next, from 1000 to 1250 ms, finds VFO-A moved. Returns
// when the following begins.
qint64 startFollowingAfterATimedPoll(KnobFollower& k)
{
    k.afterPoll(1407400, 707400, 0, TimedPollMs);
    if (k.afterPoll(1407410, 707400, TimedPollEndsMs - TimedPollMs, TimedPollEndsMs) != KnobFollower::Next::ReadA)
        qWarning("the second poll did not start following");
    return TimedPollEndsMs;
}

// The full poll asked for at t: with one more reading of readingMs, a full poll of fullPollMs would
// have ended with less than the spare time left of the second after lastEndedMs; without, it does not.
bool askedJustInTime(qint64 t, qint64 readingMs, qint64 fullPollMs, qint64 lastEndedMs)
{
    const qint64 due = lastEndedMs + KnobFollower::FullPollEveryMs - KnobFollower::FullPollSpareMs;
    return t + readingMs + fullPollMs >= due && t + fullPollMs < due;
}
}  // namespace

class TestKnobFollower : public QObject {
    Q_OBJECT
private slots:
    void aPollThatSeesNoChangeKeepsTheTimedPoll()
    {
        KnobFollower k;
        QCOMPARE(k.afterPoll(1407400, 707400, 0, 0), Next::TimedPoll);  // the first poll only learns
        QCOMPARE(k.afterPoll(1407400, 707400, 300, 300), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void aPollThatSeesVfoAMoveStartsFollowingIt()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 300, 300), Next::ReadA);
        QVERIFY(k.following());
    }

    void vfoBsMoveIsFollowedWithItsOwnReading()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        QCOMPARE(k.afterPoll(1407400, 707450, 300, 300), Next::ReadB);
        QCOMPARE(k.afterReading(Vfo::B, 707460, 350), Next::ReadB);
    }

    void bothMovingTakeTurns()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        const Next first = k.afterPoll(1407410, 707410, 300, 300);
        QVERIFY(first == Next::ReadA || first == Next::ReadB);
        const Vfo v = first == Next::ReadA ? Vfo::A : Vfo::B;
        const Next second = k.afterReading(v, v == Vfo::A ? 1407420 : 707420, 350);
        QCOMPARE(second, first == Next::ReadA ? Next::ReadB : Next::ReadA);
    }

    void threeAgreeingReadingsEndIt()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 300, 300), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407450, 350), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407460, 400), Next::ReadA);      // still moving
        QCOMPARE(k.afterReading(Vfo::A, 1407460, 450), Next::ReadA);      // two agree
        QCOMPARE(k.afterReading(Vfo::A, 1407460, 500), Next::TimedPoll);  // three agree: the knob rests
        QVERIFY(!k.following());
    }

    void aReadingThatMovesAgainStartsTheCountAfresh()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        k.afterPoll(1407410, 707400, 300, 300);
        k.afterReading(Vfo::A, 1407460, 350);
        k.afterReading(Vfo::A, 1407460, 400);
        QCOMPARE(k.afterReading(Vfo::A, 1407470, 450), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407470, 500), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407470, 550), Next::TimedPoll);
    }

    void aFullPollAtLeastEverySecondWhileFollowing()
    {
        KnobFollower k;
        qint64 t = startFollowingAfterATimedPoll(k);
        qint64 f = 1407410;
        QVERIFY(readWhileAsked(k, t, f, 48) > 1);
        // The timed poll took 250 ms; the full poll while following also carries its readings.
        QVERIFY(askedJustInTime(t, 48, TimedPollMs + KnobFollower::ReadingsInFullPoll * 48, TimedPollEndsMs));
        // The full poll runs (300 ms), and following goes on while the knob turns; the next full
        // poll is timed by how long this one took.
        f += 10;
        QCOMPARE(k.afterPoll(f, 707400, t, t + 300), Next::ReadA);
        const qint64 ended = t + 300;
        t = ended;
        readWhileAsked(k, t, f, 48);
        QVERIFY(askedJustInTime(t, 48, 300, ended));
    }

    void slowerReadingsBringTheFullPollForward()
    {
        KnobFollower k;
        qint64 t = startFollowingAfterATimedPoll(k);
        qint64 f = 1407410;
        // Readings 120 ms apart (a radio that answers late): the full poll starts earlier.
        readWhileAsked(k, t, f, 120);
        QVERIFY(askedJustInTime(t, 120, TimedPollMs + KnobFollower::ReadingsInFullPoll * 120, TimedPollEndsMs));
    }

    void aFirstReadThatSeesVfoAMoveStartsFollowingAtOnce()
    {
        KnobFollower k;
        QVERIFY(!k.startsAtFirstRead(1407400, 0));  // nothing known yet
        k.afterPoll(1407400, 707400, 0, 250);
        QVERIFY(!k.startsAtFirstRead(1407400, 300));  // the same place
        QVERIFY(!k.startsAtFirstRead(std::nullopt, 300));
        QVERIFY(k.startsAtFirstRead(1407410, 300));
        QVERIFY(k.following());
        QVERIFY(k.followingA());
        // The full poll is still due within a second of the last whole one.
        qint64 t = 300;
        qint64 f = 1407410;
        readWhileAsked(k, t, f, 50);
        QVERIFY(t + 250 + KnobFollower::ReadingsInFullPoll * 50 < 250 + KnobFollower::FullPollEveryMs);
    }

    void aFirstReadIsNotFollowedWhenOff()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        k.setEnabled(false);
        QVERIFY(!k.startsAtFirstRead(1407410, 300));
        QVERIFY(!k.following());
    }

    void aFailedReadingEndsFollowing()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        k.afterPoll(1407410, 707400, 300, 300);
        QCOMPARE(k.afterReading(Vfo::A, std::nullopt, 350), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void aPollWithoutStatusEndsFollowing()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        k.afterPoll(1407410, 707400, 300, 300);
        QCOMPARE(k.afterPoll(std::nullopt, std::nullopt, 600, 600), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void offNeverFollows()
    {
        KnobFollower k;
        k.setEnabled(false);
        k.afterPoll(1407400, 707400, 0, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 300, 300), Next::TimedPoll);
        QCOMPARE(k.afterReading(Vfo::A, 1407420, 350), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void switchingOffWhileFollowingStopsIt()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0, 0);
        k.afterPoll(1407410, 707400, 300, 300);
        k.setEnabled(false);
        QVERIFY(!k.following());
        k.setEnabled(true);
        // Switched on again, it learns the VFOs afresh before it follows.
        QCOMPARE(k.afterPoll(1407500, 707400, 600, 600), Next::TimedPoll);
    }
};

QTEST_GUILESS_MAIN(TestKnobFollower)
#include "test_knob_follower.moc"
