// SPDX-License-Identifier: GPL-3.0-or-later
// The page's transmit key: keyed while held and repeated, released when let go or when the repeats stop.

#include "PttHold.h"
#include "WebLimits.h"

#include <QTest>

using Action = PttHold::Action;
Q_DECLARE_METATYPE(PttHold::Action)

class TestPttHold : public QObject {
    Q_OBJECT
private slots:
    void aPressKeysAndALetGoUnkeys()
    {
        PttHold h;
        QCOMPARE(h.press(0), Action::Key);
        QVERIFY(h.keyed());
        QCOMPARE(h.release(), Action::Unkey);
        QVERIFY(!h.keyed());
        QCOMPARE(h.release(), Action::None);
    }

    void repeatsKeepItKeyedWithoutKeyingAgain()
    {
        PttHold h;
        h.press(0);
        for (qint64 t = WebLimits::PttRepeatMs; t < 10000; t += WebLimits::PttRepeatMs) {
            QCOMPARE(h.press(t), Action::None);
            QCOMPARE(h.tick(t + WebLimits::PttRepeatMs - 1), Action::None);
        }
        QVERIFY(h.keyed());
    }

    void aSecondWithoutARepeatUnkeys()
    {
        PttHold h;
        h.press(1000);
        h.press(1200);
        QCOMPARE(h.tick(1200 + WebLimits::PttSilenceMs - 1), Action::None);
        QVERIFY(h.keyed());
        QCOMPARE(h.tick(1200 + WebLimits::PttSilenceMs), Action::Unkey);
        QVERIFY(!h.keyed());
        QVERIFY(!h.held());
        QCOMPARE(h.tick(5000), Action::None);
    }

    void theSessionEndingUnkeys()
    {
        PttHold h;
        h.press(0);
        QCOMPARE(h.end(), Action::Unkey);
        PttHold idle;
        QCOMPARE(idle.end(), Action::None);
    }

    void aRefusedKeyIsNotTriedAgainByRepeats()
    {
        PttHold h;
        QCOMPARE(h.press(0), Action::Key);
        h.notKeyed();  // Authorize Tx unchecked
        QVERIFY(!h.keyed());
        QVERIFY(h.held());
        QCOMPARE(h.press(200), Action::None);
        QCOMPARE(h.press(400), Action::None);
        QCOMPARE(h.release(), Action::None);  // nothing to unkey
        QCOMPARE(h.press(600), Action::Key);  // a new press tries again
    }

    void aRefusedHeldKeyTimesOutToUp()
    {
        PttHold h;
        h.press(0);
        h.notKeyed();
        QCOMPARE(h.tick(WebLimits::PttSilenceMs), Action::None);
        QVERIFY(!h.held());
        QCOMPARE(h.press(WebLimits::PttSilenceMs + 10), Action::Key);
    }
};

QTEST_GUILESS_MAIN(TestPttHold)
#include "test_ptt_hold.moc"
