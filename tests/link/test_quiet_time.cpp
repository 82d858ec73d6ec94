// SPDX-License-Identifier: GPL-3.0-or-later
// The fast link's quiet time: short at line pace, longer than the pauses of an adapter's bursts,
// not moved by a single late arrival, never beyond its ceiling, and short again once the bursts
// are no longer seen.
#include "QuietTime.h"

#include <QTest>

class TestQuietTime : public QObject {
    Q_OBJECT
private slots:
    void startsAtTheMinimum() { QCOMPARE(QuietTime().quietMs(), QuietTime::MinimumMs); }

    void linePaceKeepsItAtTheMinimum()
    {
        QuietTime q;
        for (int i = 0; i < 20; ++i) {
            q.observeGap(2);
            q.endReply();
        }
        QCOMPARE(q.quietMs(), QuietTime::MinimumMs);
    }

    void outlastsTheLongestPauseOfRecentReplies()
    {
        QuietTime q;
        burstyReply(q, 16);
        burstyReply(q, 16);
        QCOMPARE(q.quietMs(), 16 + QuietTime::MarginMs);
        // A reply that came in one piece does not shorten it while the bursts are remembered.
        q.endReply();
        QCOMPARE(q.quietMs(), 16 + QuietTime::MarginMs);
    }

    void aSingleLatePauseIsNotTheLines()
    {
        QuietTime q;
        burstyReply(q, 7);
        QCOMPARE(q.quietMs(), QuietTime::MinimumMs);
        for (int i = 0; i < 20; ++i) {
            q.observeGap(2);
            q.endReply();
        }
        QCOMPARE(q.quietMs(), QuietTime::MinimumMs);
        // A second one among the recent replies: it is the line's.
        burstyReply(q, 7);
        burstyReply(q, 5);
        QCOMPARE(q.quietMs(), 5 + QuietTime::MarginMs);
    }

    void neverBeyondItsCeiling()
    {
        QuietTime q;
        burstyReply(q, 500);
        burstyReply(q, 500);
        QCOMPARE(q.quietMs(), QuietTime::MaximumMs);
    }

    void forgetsBurstsNoLongerSeen()
    {
        QuietTime q;
        burstyReply(q, 16);
        burstyReply(q, 16);
        for (int i = 0; i < QuietTime::RepliesRemembered - 2; ++i)
            q.endReply();
        QCOMPARE(q.quietMs(), 16 + QuietTime::MarginMs);
        q.endReply();
        QCOMPARE(q.quietMs(), QuietTime::MinimumMs);
    }

private:
    static void burstyReply(QuietTime& q, int pauseMs)
    {
        q.observeGap(2);
        q.observeGap(pauseMs);
        q.endReply();
    }
};

QTEST_APPLESS_MAIN(TestQuietTime)
#include "test_quiet_time.moc"
