// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's knob: its arithmetic, its option text, and VFO-A moving on the host while it
// turns.

#include "CatPort.h"
#include "Knob.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <QTest>

class TestKnob : public QObject {
    Q_OBJECT
private slots:
    void stepsFollowTheRateAndStopAfterTheTurn()
    {
        Knob k;
        QCOMPARE(k.stepsAt(5000), qint64(0));
        k.turn({1000, 2}, 100);  // 1 kHz/s for 2 s from t = 100 ms
        QVERIFY(k.turning(100));
        QCOMPARE(k.stepsAt(100), qint64(0));
        QCOMPARE(k.stepsAt(109), qint64(0));
        QCOMPARE(k.stepsAt(110), qint64(1));
        QCOMPARE(k.stepsAt(1100), qint64(100));
        QCOMPARE(k.stepsAt(2100), qint64(200));
        QVERIFY(!k.turning(2100));
        QCOMPARE(k.stepsAt(9000), qint64(200));  // resting
        QCOMPARE(k.reachedStepAtMs(100), std::optional<qint64>(1100));
    }

    void turningDownAndForEver()
    {
        Knob k;
        k.turn({-10000, 0}, 0);
        QCOMPARE(k.stepsAt(1000), qint64(-1000));
        QVERIFY(k.turning(1000000));
    }

    void theOptionText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<double>("hzPerS");
        QTest::addColumn<double>("seconds");
        QTest::newRow("rate") << "1000" << true << 1000.0 << 0.0;
        QTest::newRow("rate and time") << "10000,5" << true << 10000.0 << 5.0;
        QTest::newRow("down") << "-500,1.5" << true << -500.0 << 1.5;
        QTest::newRow("words") << "fast" << false << 0.0 << 0.0;
        QTest::newRow("negative time") << "1000,-1" << false << 0.0 << 0.0;
        QTest::newRow("three parts") << "1,2,3" << false << 0.0 << 0.0;
        QTest::newRow("empty") << "" << false << 0.0 << 0.0;
    }
    void theOptionText()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        QFETCH(double, hzPerS);
        QFETCH(double, seconds);
        QString error;
        const auto t = Knob::parse(text, &error);
        QCOMPARE(t.has_value(), ok);
        if (ok) {
            QCOMPARE(t->hzPerS, hzPerS);
            QCOMPARE(t->seconds, seconds);
        } else {
            QVERIFY(error.contains(u"--knob"));
        }
    }

    void theHostsVfoAMovesWhileTheKnobTurnsThenRests()
    {
        SimHost host;
        QString error;
        QVERIFY2(host.start(&error), qPrintable(error));
        QtSerialPort serial;
        serial.setDevice(host.devicePath());
        QVERIFY2(serial.open(&error), qPrintable(error));
        RealClock clock;
        CatPort port(serial, clock);
        StatusRecord store;
        const auto readA = [&] { return decodeStatus(store, Get_Status32(port).record).a.kHz; };
        const double before = readA();
        host.turnKnob({10000, 0.3});  // 10 kHz/s for 0.3 s: 3 kHz up
        QTest::qWait(100);
        const double during = readA();
        QVERIFY2(during > before, qPrintable(QStringLiteral("%1 then %2").arg(before).arg(during)));
        QTest::qWait(400);
        QCOMPARE(readA(), before + 3.0);
        QCOMPARE(readA(), before + 3.0);  // resting
        serial.close();
        host.stop();
    }
};

QTEST_GUILESS_MAIN(TestKnob)
#include "test_knob.moc"
