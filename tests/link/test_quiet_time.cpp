// SPDX-License-Identifier: GPL-3.0-or-later
// The fast link's quiet time: short at line pace, longer than the pauses of an adapter's bursts,
// never beyond its ceiling, and short again once the bursts are no longer seen.
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
        q.observeGap(2);
        q.observeGap(16);
        q.endReply();
        QCOMPARE(q.quietMs(), 16 + QuietTime::MarginMs);
        // A reply that came in one piece does not shorten it while the bursts are remembered.
        q.endReply();
        QCOMPARE(q.quietMs(), 16 + QuietTime::MarginMs);
    }

    void neverBeyondItsCeiling()
    {
        QuietTime q;
        q.observeGap(500);
        q.endReply();
        QCOMPARE(q.quietMs(), QuietTime::MaximumMs);
    }

    void forgetsBurstsNoLongerSeen()
    {
        QuietTime q;
        q.observeGap(16);
        q.endReply();
        for (int i = 0; i < QuietTime::RepliesRemembered - 1; ++i)
            q.endReply();
        QCOMPARE(q.quietMs(), 16 + QuietTime::MarginMs);
        q.endReply();
        QCOMPARE(q.quietMs(), QuietTime::MinimumMs);
    }
};

QTEST_APPLESS_MAIN(TestQuietTime)
#include "test_quiet_time.moc"
