// SPDX-License-Identifier: GPL-3.0-or-later
// The sweep's work on the link: the bytes and waits of each step, samples handed out as they come,
// the cancel flag looked at between steps, the tune back and the S-record read.

#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "SweepJob.h"
#include "SyntheticBand.h"

#include <QTest>

class TestSweepJob : public QObject {
    Q_OBJECT

    FakeClock clock;
    std::unique_ptr<FakeSerialPort> port;
    std::unique_ptr<CatPort> cat;
    SyntheticBand band;

private slots:
    void init()
    {
        clock.events.clear();
        band = SyntheticBand();
        port = std::make_unique<FakeSerialPort>(&clock);
        QString e;
        port->open(&e);
        port->responder = [this](const QByteArray& c) { return band.answer(c); };
        cat = std::make_unique<CatPort>(*port, clock);
    }

    void fiveSamplesOnSub_exactBytesAndWaits()
    {
        const SweepPlan plan = makeSweepPlan(7050, 100, 25);
        std::atomic<bool> cancel{false};
        QList<qint64> tuned;
        QList<SweepSample> samples;
        SweepCallbacks cb;
        cb.tuned = [&](const SweepSample& s) {
            tuned << s.freq10Hz;
            // The label is due after the tune's wait and before the meter request.
            QCOMPARE(clock.events.last(), QStringLiteral("sleep 50"));
        };
        cb.sample = [&](const SweepSample& s) { samples << s; };
        const SweepOutcome out = runSweepPass(*cat, plan, 2, cancel, cb);
        tuneToCentre(*cat, 7050, 2);

        QCOMPARE(out.samplesRun, 5);
        QVERIFY(!out.cancelled);
        const QStringList expected = {
            "write 00 00 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 25 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 50 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 75 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 00 71 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 50 70 00 8A",
        };
        QCOMPARE(clock.events, expected);
        QCOMPARE(tuned, QList<qint64>({700000, 702500, 705000, 707500, 710000}));
        QCOMPARE(samples.size(), 5);
        for (const SweepSample& s : samples) {
            QVERIFY(s.replied);
            QCOMPARE(s.raw, band.levelAt(s.freq10Hz));
            QCOMPARE(s.level, s.raw * 100 / 255);
        }
    }

    void mainReceiver_usesVfoAAndMainMeter()
    {
        std::atomic<bool> cancel{false};
        runSweepPass(*cat, makeSweepPlan(14250, 0.1, 0.1), 1, cancel, {});
        QCOMPARE(port->writtenHex(),
                 QStringList({"90 49 42 01 0A", "00 00 00 00 F7", "00 50 42 01 0A", "00 00 00 00 F7"}));
    }

    void spanSmallerThanResolution_sweepsOneSample()
    {
        std::atomic<bool> cancel{false};
        int count = 0;
        SweepCallbacks cb;
        cb.sample = [&](const SweepSample&) { ++count; };
        const SweepOutcome out = runSweepPass(*cat, makeSweepPlan(14250, 0.5, 1000), 1, cancel, cb);
        QCOMPARE(out.samplesRun, 1);
        QCOMPARE(count, 1);
        QCOMPARE(port->writtenHex(), QStringList({"00 00 40 01 0A", "00 00 00 00 F7"}));
    }

    void emptyMeterReply_isReportedAndTheSweepGoesOn()
    {
        band.silentReads = {2};
        std::atomic<bool> cancel{false};
        QList<SweepSample> samples;
        SweepCallbacks cb;
        cb.sample = [&](const SweepSample& s) { samples << s; };
        const SweepOutcome out = runSweepPass(*cat, makeSweepPlan(14250, 100, 25), 1, cancel, cb);
        QCOMPARE(out.samplesRun, 5);
        QCOMPARE(samples.size(), 5);
        QVERIFY(samples[0].replied);
        QVERIFY(!samples[1].replied);
        QCOMPARE(samples[1].freq10Hz, 1422500);
        QVERIFY(samples[2].replied);
        QCOMPARE(band.meterReads, 5);
    }

    void cancelFlag_stopsAfterTheStepUnderWay()
    {
        std::atomic<bool> cancel{false};
        // The flag goes up while the third meter request waits for its reply.
        band.onMeterRead = [&](int n) {
            if (n == 3)
                cancel = true;
        };
        QList<SweepSample> samples;
        SweepCallbacks cb;
        cb.sample = [&](const SweepSample& s) { samples << s; };
        const SweepOutcome out = runSweepPass(*cat, makeSweepPlan(14250, 100, 5), 1, cancel, cb);
        QVERIFY(out.cancelled);
        QCOMPARE(out.samplesRun, 3);
        QCOMPARE(samples.size(), 3);  // the step under way is finished and reported
        QVERIFY(samples.last().replied);
        QCOMPARE(band.meterReads, 3);
        QCOMPARE(port->writtenHex().size(), 6);
    }

    void closedPort_endsThePass()
    {
        port->close();
        std::atomic<bool> cancel{false};
        const SweepOutcome out = runSweepPass(*cat, makeSweepPlan(14250, 100, 5), 1, cancel, {});
        QCOMPARE(out.samplesRun, 1);
        QVERIFY(port->writes.isEmpty());
    }

    void sRecordRead_requestWaitRead()
    {
        const QByteArray reply = readScopeMeter(*cat, 2);
        QCOMPARE(clock.events, QStringList({"write 01 00 00 00 F7", "sleep 100", "read 5"}));
        QCOMPARE(reply.size(), 5);
    }
};

QTEST_GUILESS_MAIN(TestSweepJob)
#include "test_sweep_job.moc"
