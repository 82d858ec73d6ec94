// SPDX-License-Identifier: GPL-3.0-or-later
// Five failed logins from one address lock it out for a minute; others are not affected.

#include "FakeClock.h"
#include "LoginGuard.h"
#include "WebLimits.h"

#include <QTest>

class TestLoginGuard : public QObject {
    Q_OBJECT
private slots:
    void theFifthFailureLocksTheAddressOut()
    {
        FakeClock clock;
        LoginGuard guard(clock);
        const QString a = QStringLiteral("192.0.2.7");
        for (int i = 1; i < WebLimits::LockoutFailures; ++i) {
            QVERIFY(!guard.failed(a));
            QCOMPARE(guard.lockedForMs(a), 0);
        }
        QVERIFY(guard.failed(a));
        QCOMPARE(guard.lockedForMs(a), WebLimits::LockoutMs);
        clock.advance(WebLimits::LockoutMs - 1);
        QCOMPARE(guard.lockedForMs(a), 1);
        clock.advance(1);
        QCOMPARE(guard.lockedForMs(a), 0);
    }

    void otherAddressesMayStillTry()
    {
        FakeClock clock;
        LoginGuard guard(clock);
        for (int i = 0; i < WebLimits::LockoutFailures; ++i)
            guard.failed(QStringLiteral("192.0.2.7"));
        QCOMPARE(guard.lockedForMs(QStringLiteral("192.0.2.8")), 0);
    }

    void failuresWhileLockedDoNotProlongTheLock()
    {
        FakeClock clock;
        LoginGuard guard(clock);
        const QString a = QStringLiteral("::1");
        for (int i = 0; i < WebLimits::LockoutFailures; ++i)
            guard.failed(a);
        clock.advance(30000);
        QVERIFY(!guard.failed(a));
        QCOMPARE(guard.lockedForMs(a), WebLimits::LockoutMs - 30000);
    }

    void afterTheLockFiveMoreFailuresAreNeeded()
    {
        FakeClock clock;
        LoginGuard guard(clock);
        const QString a = QStringLiteral("::1");
        for (int i = 0; i < WebLimits::LockoutFailures; ++i)
            guard.failed(a);
        clock.advance(WebLimits::LockoutMs);
        QVERIFY(!guard.failed(a));
        QCOMPARE(guard.lockedForMs(a), 0);
        for (int i = 2; i < WebLimits::LockoutFailures; ++i)
            QVERIFY(!guard.failed(a));
        QVERIFY(guard.failed(a));
    }

    void aSuccessForgetsTheFailures()
    {
        FakeClock clock;
        LoginGuard guard(clock);
        const QString a = QStringLiteral("::1");
        for (int i = 1; i < WebLimits::LockoutFailures; ++i)
            guard.failed(a);
        guard.succeeded(a);
        for (int i = 1; i < WebLimits::LockoutFailures; ++i)
            QVERIFY(!guard.failed(a));
        QCOMPARE(guard.lockedForMs(a), 0);
    }

    void theMemoryOfFailuresIsBoundedButKeepsLocks()
    {
        FakeClock clock;
        LoginGuard guard(clock);
        const QString locked = QStringLiteral("locked");
        for (int i = 0; i < WebLimits::LockoutFailures; ++i)
            guard.failed(locked);
        for (int i = 0; i < 3 * WebLimits::MaxTrackedAddresses; ++i)
            guard.failed(QStringLiteral("a%1").arg(i));
        QVERIFY(guard.trackedAddresses() <= WebLimits::MaxTrackedAddresses);
        QVERIFY(guard.lockedForMs(locked) > 0);
    }
};

QTEST_GUILESS_MAIN(TestLoginGuard)
#include "test_login_guard.moc"
