// SPDX-License-Identifier: GPL-3.0-or-later
// Tuning from a session: the latest target wins, steps add up, each VFO on its own.

#include "RadioRange.h"
#include "TuneCoalescer.h"

#include <QTest>

class TestTuneCoalescer : public QObject {
    Q_OBJECT
private slots:
    void theLatestTargetWins()
    {
        TuneCoalescer c;
        QVERIFY(c.empty());
        c.tune(RigVfo::A, 14000000);
        c.tune(RigVfo::A, 14100000);
        c.tune(RigVfo::A, 14200000);
        QCOMPARE(c.take(RigVfo::A), std::optional<qint64>(14200000));
        QCOMPARE(c.take(RigVfo::A), std::nullopt);
        QVERIFY(c.empty());
    }

    void stepsAddToTheTargetNotYetHandedOn()
    {
        TuneCoalescer c;
        c.step(RigVfo::A, 100, 14000000);
        c.step(RigVfo::A, 100, 14000000);  // the radio has not moved yet
        c.step(RigVfo::A, -10, 14000000);
        QCOMPARE(c.take(RigVfo::A), std::optional<qint64>(14000190));
        c.step(RigVfo::A, 1000, 14000190);  // from where the radio now is
        QCOMPARE(c.take(RigVfo::A), std::optional<qint64>(14001190));
    }

    void theVfosAreApart()
    {
        TuneCoalescer c;
        c.tune(RigVfo::A, 7000000);
        c.step(RigVfo::B, 1000, 21000000);
        QCOMPARE(c.pending(RigVfo::A), std::optional<qint64>(7000000));
        QCOMPARE(c.take(RigVfo::B), std::optional<qint64>(21001000));
        QCOMPARE(c.take(RigVfo::A), std::optional<qint64>(7000000));
    }

    void targetsStayInTheReceiveRange()
    {
        TuneCoalescer c;
        c.step(RigVfo::A, -100000, RadioRange::RxLowHz + 10);
        QCOMPARE(c.take(RigVfo::A), std::optional<qint64>(RadioRange::RxLowHz));
        c.step(RigVfo::B, 10000000, RadioRange::RxHighHz - 5);
        QCOMPARE(c.take(RigVfo::B), std::optional<qint64>(RadioRange::RxHighHz));
    }

    void clearDropsEverything()
    {
        TuneCoalescer c;
        c.tune(RigVfo::A, 7000000);
        c.tune(RigVfo::B, 7000000);
        c.clear();
        QVERIFY(c.empty());
    }
};

QTEST_GUILESS_MAIN(TestTuneCoalescer)
#include "test_tune_coalescer.moc"
