// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob, as decisions: when to read a VFO alone, when to poll in full, when to rest.

#include "KnobFollower.h"

#include <QTest>

using Next = KnobFollower::Next;
using Vfo = KnobFollower::Vfo;

class TestKnobFollower : public QObject {
    Q_OBJECT
private slots:
    void aPollThatSeesNoChangeKeepsTheTimedPoll()
    {
        KnobFollower k;
        QCOMPARE(k.afterPoll(1407400, 707400, 0), Next::TimedPoll);  // the first poll only learns
        QCOMPARE(k.afterPoll(1407400, 707400, 300), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void aPollThatSeesVfoAMoveStartsFollowingIt()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 300), Next::ReadA);
        QVERIFY(k.following());
    }

    void vfoBsMoveIsFollowedWithItsOwnReading()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        QCOMPARE(k.afterPoll(1407400, 707450, 300), Next::ReadB);
        QCOMPARE(k.afterReading(Vfo::B, 707460, 350), Next::ReadB);
    }

    void bothMovingTakeTurns()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        const Next first = k.afterPoll(1407410, 707410, 300);
        QVERIFY(first == Next::ReadA || first == Next::ReadB);
        const Vfo v = first == Next::ReadA ? Vfo::A : Vfo::B;
        const Next second = k.afterReading(v, v == Vfo::A ? 1407420 : 707420, 350);
        QCOMPARE(second, first == Next::ReadA ? Next::ReadB : Next::ReadA);
    }

    void threeAgreeingReadingsEndIt()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 300), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407450, 350), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407460, 400), Next::ReadA);      // still moving
        QCOMPARE(k.afterReading(Vfo::A, 1407460, 450), Next::ReadA);      // two agree
        QCOMPARE(k.afterReading(Vfo::A, 1407460, 500), Next::TimedPoll);  // three agree: the knob rests
        QVERIFY(!k.following());
    }

    void aReadingThatMovesAgainStartsTheCountAfresh()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        k.afterPoll(1407410, 707400, 300);
        k.afterReading(Vfo::A, 1407460, 350);
        k.afterReading(Vfo::A, 1407460, 400);
        QCOMPARE(k.afterReading(Vfo::A, 1407470, 450), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407470, 500), Next::ReadA);
        QCOMPARE(k.afterReading(Vfo::A, 1407470, 550), Next::TimedPoll);
    }

    void aFullPollAtLeastEverySecondWhileFollowing()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 1000), Next::ReadA);
        qint64 t = 1000;
        qint64 f = 1407410;
        int readings = 0;
        Next n = Next::ReadA;
        while (n == Next::ReadA) {
            t += 48;
            f += 10;
            n = k.afterReading(Vfo::A, f, t);
            ++readings;
        }
        QCOMPARE(n, Next::FullPoll);
        QVERIFY(t - 1000 >= KnobFollower::FullPollEveryMs - KnobFollower::FullPollLeadMs);
        QVERIFY(t - 1000 < KnobFollower::FullPollEveryMs - KnobFollower::FullPollLeadMs + 48);
        QVERIFY(readings > 1);
        // The full poll runs, and following goes on while the knob turns.
        QCOMPARE(k.afterPoll(f + 10, 707400, t + 250), Next::ReadA);
    }

    void aFailedReadingEndsFollowing()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        k.afterPoll(1407410, 707400, 300);
        QCOMPARE(k.afterReading(Vfo::A, std::nullopt, 350), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void aPollWithoutStatusEndsFollowing()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        k.afterPoll(1407410, 707400, 300);
        QCOMPARE(k.afterPoll(std::nullopt, std::nullopt, 600), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void offNeverFollows()
    {
        KnobFollower k;
        k.setEnabled(false);
        k.afterPoll(1407400, 707400, 0);
        QCOMPARE(k.afterPoll(1407410, 707400, 300), Next::TimedPoll);
        QCOMPARE(k.afterReading(Vfo::A, 1407420, 350), Next::TimedPoll);
        QVERIFY(!k.following());
    }

    void switchingOffWhileFollowingStopsIt()
    {
        KnobFollower k;
        k.afterPoll(1407400, 707400, 0);
        k.afterPoll(1407410, 707400, 300);
        k.setEnabled(false);
        QVERIFY(!k.following());
        k.setEnabled(true);
        // Switched on again, it learns the VFOs afresh before it follows.
        QCOMPARE(k.afterPoll(1407500, 707400, 600), Next::TimedPoll);
    }
};

QTEST_GUILESS_MAIN(TestKnobFollower)
#include "test_knob_follower.moc"
