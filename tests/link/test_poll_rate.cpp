// SPDX-License-Identifier: GPL-3.0-or-later
#include "PollRate.h"

#include <QTest>

class TestPollRate : public QObject {
    Q_OBJECT
private slots:
    void nothingBeforeTwoPolls()
    {
        PollRate r;
        QVERIFY(!r.rate(0));
        r.recordPoll(100);
        QVERIFY(!r.rate(100));
        QCOMPARE(r.text(100), QString());
    }

    void pollsEvery600MsAreAboutOnePointSevenASecond()
    {
        PollRate r;
        for (int i = 0; i < 5; ++i)
            r.recordPoll(i * 600);
        QCOMPARE(r.text(2400), QStringLiteral("1.7 polls/s"));
    }

    void pollsEvery240MsAreFourPointTwoASecond()
    {
        PollRate r;
        for (int i = 0; i <= 10; ++i)
            r.recordPoll(i * 240);
        QCOMPARE(r.text(2400), QStringLiteral("4.2 polls/s"));
    }

    void onlyTheLastThreeSecondsCount()
    {
        PollRate r;
        for (int i = 0; i <= 10; ++i)
            r.recordPoll(i * 1000);  // one a second for ten seconds
        for (int i = 1; i <= 10; ++i)
            r.recordPoll(10000 + i * 250);  // then four a second
        QCOMPARE(r.text(12500), QStringLiteral("4.0 polls/s"));
    }

    void aPollThatStoppedShowsNothing()
    {
        PollRate r;
        for (int i = 0; i < 5; ++i)
            r.recordPoll(i * 300);
        QVERIFY(r.rate(1200 + PollRate::IdleMs));
        QVERIFY(!r.rate(1200 + PollRate::IdleMs + 1));
        QCOMPARE(r.text(5000), QString());
    }
};

QTEST_GUILESS_MAIN(TestPollRate)
#include "test_poll_rate.moc"
