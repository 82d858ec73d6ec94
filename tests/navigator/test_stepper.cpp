// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "NavigatorJobs.h"
#include "Stepper.h"
#include "VfoReply.h"

#include <QTest>

class TestStepper : public QObject {
    Q_OBJECT

    struct Wire {
        FakeClock clock;
        FakeSerialPort serial{&clock};
        CatPort port{serial, clock};
        Wire() { serial.open(nullptr); }
    };

private slots:
    void pressSetsSelectionOpAndStep_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("left");
        QTest::addColumn<int>("op");
        QTest::addColumn<int>("step");
        QTest::newRow("100 K left tunes down") << 0 << true << 0x08 << -100;
        QTest::newRow("100 K right tunes up") << 0 << false << 0x07 << 100;
        QTest::newRow("1 Mhz left tunes down") << 1 << true << 0x08 << -1000;
        QTest::newRow("1 Mhz right tunes up") << 1 << false << 0x07 << 1000;
    }
    void pressSetsSelectionOpAndStep()
    {
        QFETCH(int, index);
        QFETCH(bool, left);
        QFETCH(int, op);
        QFETCH(int, step);
        StepperState s;
        QVERIFY(!s.held());
        s.press(index, left);
        QCOMPARE(s.StepSel, index);
        QCOMPARE(s.StepOp, op);
        QCOMPARE(s.StepKHz, step);
        QVERIFY(s.held());
    }

    void releaseClearsOpAndSelectsThree()
    {
        StepperState s;
        s.press(1, false);
        s.release();
        QCOMPARE(s.StepOp, 0);
        QCOMPARE(s.StepSel, 3);
        QVERIFY(!s.held());
    }

    void stepArithmetic_data()
    {
        QTest::addColumn<double>("from");
        QTest::addColumn<int>("step");
        QTest::addColumn<double>("to");
        QTest::addColumn<bool>("reread");
        QTest::newRow("+100 in range") << 14250.0 << 100 << 14350.0 << false;
        QTest::newRow("-100 in range") << 14250.0 << -100 << 14150.0 << false;
        QTest::newRow("+1000 in range") << 14250.0 << 1000 << 15250.0 << false;
        QTest::newRow("-1000 in range") << 14250.0 << -1000 << 13250.0 << false;
        QTest::newRow("+1000 at 29,500 wraps to 500") << 29500.0 << 1000 << 500.0 << false;
        QTest::newRow("+1000 to exactly 30,000 stays") << 29000.0 << 1000 << 30000.0 << false;
        QTest::newRow("+100 at 29,950 wraps to 150") << 29950.0 << 100 << 150.0 << false;
        QTest::newRow("+100 to exactly 30,000 stays") << 29900.0 << 100 << 30000.0 << false;
        QTest::newRow("-100 below 100 reads back") << 150.0 << -100 << 50.0 << true;
        QTest::newRow("-1000 below 100 reads back") << 600.0 << -1000 << -400.0 << true;
        QTest::newRow("-100 to exactly 100 stays") << 200.0 << -100 << 100.0 << false;
    }
    void stepArithmetic()
    {
        QFETCH(double, from);
        QFETCH(int, step);
        QFETCH(double, to);
        QFETCH(bool, reread);
        const StepOutcome o = applyStep(from, step);
        QCOMPARE(o.kHz, to);
        QCOMPARE(o.reread, reread);
    }

    void tickSendsStepAndWaits()
    {
        Wire w;
        StepperState s;
        s.press(1, false);
        QCOMPARE(stepperTick(w.port, s, 14250), std::optional<double>(15250));
        QCOMPARE(w.clock.events, (QStringList{"write 00 00 00 01 07", "sleep 50"}));
    }

    void tickOfHundredKilohertzDownStepper()
    {
        Wire w;
        StepperState s;
        s.press(0, true);
        QCOMPARE(stepperTick(w.port, s, 7045), std::optional<double>(6945));
        QCOMPARE(w.clock.events, (QStringList{"write 00 00 00 00 08", "sleep 50"}));
    }

    void holdingOneMhzUpAt29500WrapsTo500()
    {
        Wire w;
        StepperState s;
        s.press(1, false);
        QCOMPARE(stepperTick(w.port, s, 29500), std::optional<double>(500));
    }

    void tickBelowHundredKilohertzReadsTheRadio()
    {
        Wire w;
        w.serial.responder = [](const QByteArray& cmd) {
            return cmd.toHex() == "0000000210" ? vfoReply(29950) : QByteArray();
        };
        StepperState s;
        s.press(0, true);
        QCOMPARE(stepperTick(w.port, s, 150), std::optional<double>(29950));
        QCOMPARE(w.clock.events,
                 (QStringList{"write 00 00 00 00 08", "sleep 50", "write 00 00 00 02 10", "sleep 75", "read 16"}));
    }

    void tickBelowHundredWithSilentRadioKeepsStep()
    {
        Wire w;
        StepperState s;
        s.press(0, true);
        QCOMPARE(stepperTick(w.port, s, 150), std::optional<double>(50));
    }

    void tickDoesNothingWhenPortClosed()
    {
        Wire w;
        w.serial.close();
        StepperState s;
        s.press(0, false);
        QVERIFY(!stepperTick(w.port, s, 14250));
        QVERIFY(w.clock.events.isEmpty());
    }

    void tickDoesNothingWhenReleased()
    {
        Wire w;
        StepperState s;
        QVERIFY(!stepperTick(w.port, s, 14250));
        QVERIFY(w.serial.writes.isEmpty());
    }

    void releaseTickDropsReadsBackAndEmpties()
    {
        Wire w;
        w.serial.inject(QByteArray("\x01\x02", 2));
        w.serial.responder = [](const QByteArray& cmd) {
            return cmd.toHex() == "0000000210" ? vfoReply(21200) + QByteArray(3, '\x55') : QByteArray();
        };
        QCOMPARE(releaseTick(w.port, 14250), 21200.0);
        QCOMPARE(w.clock.events, (QStringList{"read 2", "write 00 00 00 02 10", "sleep 75", "read 19", "read 0"}));
    }

    void releaseTickWithSilentRadioKeepsFrequency()
    {
        Wire w;
        QCOMPARE(releaseTick(w.port, 14250), 14250.0);
    }
};

QTEST_GUILESS_MAIN(TestStepper)
#include "test_stepper.moc"
