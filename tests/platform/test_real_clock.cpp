// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealClock.h"

#include <QTest>
#include <atomic>
#include <thread>

class TestRealClock : public QObject {
    Q_OBJECT
private slots:
    void shortSleepRunsToItsEnd()
    {
        RealClock clock;
        const qint64 before = clock.nowMs();
        QVERIFY(clock.sleepMs(5));
        QVERIFY(clock.nowMs() >= before);
    }

    void zeroSleepReturnsTrue()
    {
        RealClock clock;
        QVERIFY(clock.sleepMs(0));
    }

    void interruptFromAnotherThreadEndsTheSleepWithFalse()
    {
        RealClock clock;
        std::atomic<bool> started{false};
        std::atomic<bool> returned{false};
        std::atomic<bool> result{true};
        std::thread sleeper([&] {
            started = true;
            result = clock.sleepMs(600000);
            returned = true;
        });
        QTRY_VERIFY(started.load());
        clock.interrupt();
        QTRY_VERIFY_WITH_TIMEOUT(returned.load(), 60000);
        sleeper.join();
        QVERIFY(!result.load());
    }

    void sleepsAfterAnInterruptReturnFalseUntilReset()
    {
        RealClock clock;
        clock.interrupt();
        QVERIFY(!clock.sleepMs(600000));
        QVERIFY(!clock.sleepMs(1));
        clock.reset();
        QVERIFY(clock.sleepMs(1));
    }

    void interruptWakesEverySleeper()
    {
        RealClock clock;
        std::atomic<int> falseCount{0};
        std::atomic<int> started{0};
        std::thread a([&] {
            ++started;
            if (!clock.sleepMs(600000))
                ++falseCount;
        });
        std::thread b([&] {
            ++started;
            if (!clock.sleepMs(600000))
                ++falseCount;
        });
        QTRY_COMPARE(started.load(), 2);
        clock.interrupt();
        a.join();
        b.join();
        QCOMPARE(falseCount.load(), 2);
    }
};

QTEST_GUILESS_MAIN(TestRealClock)
#include "test_real_clock.moc"
