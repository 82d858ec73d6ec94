// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeClock.h"

#include <QTest>

class TestFakeClock : public QObject {
    Q_OBJECT
private slots:
    void sleepAdvancesTimeAndIsLogged()
    {
        FakeClock clock;
        QCOMPARE(clock.nowMs(), 0);
        QVERIFY(clock.sleepMs(100));
        QVERIFY(clock.sleepMs(50));
        QCOMPARE(clock.nowMs(), 150);
        QCOMPARE(clock.events, (QStringList{QStringLiteral("sleep 100"), QStringLiteral("sleep 50")}));
    }

    void advanceMovesTimeWithoutAnEvent()
    {
        FakeClock clock;
        clock.advance(42);
        QCOMPARE(clock.nowMs(), 42);
        QVERIFY(clock.events.isEmpty());
    }

    void onSleepSeesEachWaitAfterTimeMoved()
    {
        FakeClock clock;
        QList<qint64> seenAt;
        QList<int> seenMs;
        clock.onSleep = [&](int ms) {
            seenMs << ms;
            seenAt << clock.nowMs();
        };
        clock.sleepMs(100);
        clock.sleepMs(200);
        QCOMPARE(seenMs, (QList<int>{100, 200}));
        QCOMPARE(seenAt, (QList<qint64>{100, 300}));
    }
};

QTEST_GUILESS_MAIN(TestFakeClock)
#include "test_fake_clock.moc"
