// SPDX-License-Identifier: GPL-3.0-or-later
// A slow reader gets only the newest state, never a backlog.

#include "StateOutbox.h"

#include <QTest>

class TestStateOutbox : public QObject {
    Q_OBJECT
private slots:
    void aStateGoesAtOnceWhenNothingIsUnsent()
    {
        StateOutbox o;
        QCOMPARE(o.offer("s1", 0), std::optional<QByteArray>("s1"));
        QCOMPARE(o.offer("s2", 0), std::optional<QByteArray>("s2"));
    }

    void theSameStateIsNotWrittenTwice()
    {
        StateOutbox o;
        o.offer("s1", 0);
        QCOMPARE(o.offer("s1", 0), std::nullopt);
    }

    void whileUnsentOnlyTheNewestWaits()
    {
        StateOutbox o;
        o.offer("s1", 0);
        for (int i = 2; i <= 1000; ++i)
            QCOMPARE(o.offer("s" + QByteArray::number(i), 500), std::nullopt);
        QVERIFY(o.waiting());
        QCOMPARE(o.drained(100), std::nullopt);  // still not all gone
        QCOMPARE(o.drained(0), std::optional<QByteArray>("s1000"));
        QVERIFY(!o.waiting());
        QCOMPARE(o.drained(0), std::nullopt);
    }

    void aWaitingStateEqualToTheLastWrittenIsDropped()
    {
        StateOutbox o;
        o.offer("s1", 0);
        o.offer("s2", 10);
        o.offer("s1", 10);  // back to what the browser already has
        QVERIFY(!o.waiting());
        QCOMPARE(o.drained(0), std::nullopt);
    }

    void anOfferWhenDrainedReplacesTheWaitingOne()
    {
        StateOutbox o;
        o.offer("s1", 0);
        o.offer("s2", 10);
        QCOMPARE(o.offer("s3", 0), std::optional<QByteArray>("s3"));
        QVERIFY(!o.waiting());
    }
};

QTEST_GUILESS_MAIN(TestStateOutbox)
#include "test_state_outbox.moc"
