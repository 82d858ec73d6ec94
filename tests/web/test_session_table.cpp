// SPDX-License-Identifier: GPL-3.0-or-later
// Sessions: at most eight, found by token, ended one by one or all of one access.

#include "SessionTable.h"
#include "WebLimits.h"

#include <QTest>

Q_DECLARE_METATYPE(Access)

class TestSessionTable : public QObject {
    Q_OBJECT
private slots:
    void aSessionIsFoundByItsTokenWithItsAccess()
    {
        SessionTable t;
        const QByteArray c = t.open(Access::Control);
        const QByteArray v = t.open(Access::ViewOnly);
        QVERIFY(!c.isEmpty());
        QVERIFY(c != v);
        QCOMPARE(t.find(c), Access::Control);
        QCOMPARE(t.find(v), Access::ViewOnly);
        QCOMPARE(t.find(QByteArray("nonsense")), Access::None);
        QCOMPARE(t.find(QByteArray()), Access::None);
        QCOMPARE(t.open(Access::None), QByteArray());
    }

    void atMostEightSessionsInUse()
    {
        SessionTable t;
        QList<QByteArray> tokens;
        for (int i = 0; i < WebLimits::MaxSessions; ++i) {
            tokens << t.open(Access::Control);
            t.setInUse(tokens.last(), true);
        }
        QCOMPARE(t.count(), WebLimits::MaxSessions);
        QCOMPARE(t.open(Access::Control), QByteArray());
        QCOMPARE(t.count(), WebLimits::MaxSessions);
        for (const QByteArray& token : tokens)
            QCOMPARE(t.find(token), Access::Control);
    }

    void aNewLoginReplacesTheOldestSessionNotInUse()
    {
        SessionTable t;
        QList<QByteArray> tokens;
        for (int i = 0; i < WebLimits::MaxSessions; ++i) {
            tokens << t.open(Access::ViewOnly);
            t.setInUse(tokens.last(), i != 2 && i != 5);
        }
        const QByteArray fresh = t.open(Access::Control);
        QVERIFY(!fresh.isEmpty());
        QCOMPARE(t.count(), WebLimits::MaxSessions);
        QCOMPARE(t.find(tokens[2]), Access::None);  // the oldest idle one went
        QCOMPARE(t.find(tokens[5]), Access::ViewOnly);
        QCOMPARE(t.find(fresh), Access::Control);
    }

    void closingEndsOneSession()
    {
        SessionTable t;
        const QByteArray a = t.open(Access::Control);
        const QByteArray b = t.open(Access::Control);
        QVERIFY(t.close(a));
        QVERIFY(!t.close(a));
        QCOMPARE(t.find(a), Access::None);
        QCOMPARE(t.find(b), Access::Control);
    }

    void aRenewedCodeEndsTheSessionsThatUsedIt()
    {
        SessionTable t;
        const QByteArray c1 = t.open(Access::Control);
        const QByteArray v1 = t.open(Access::ViewOnly);
        const QByteArray c2 = t.open(Access::Control);
        const QList<QByteArray> closed = t.closeAll(Access::Control);
        QCOMPARE(closed, (QList<QByteArray>{c1, c2}));
        QCOMPARE(t.find(c1), Access::None);
        QCOMPARE(t.find(c2), Access::None);
        QCOMPARE(t.find(v1), Access::ViewOnly);
    }
};

QTEST_GUILESS_MAIN(TestSessionTable)
#include "test_session_table.moc"
