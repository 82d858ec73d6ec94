// SPDX-License-Identifier: GPL-3.0-or-later
// The scope's arithmetic: sample plans for every pair of list values, the value handed to the
// frequency setting, the drawing of one sample, the plot's extent, the graticule's labels and the
// pointer readout.

#include "MeterDecoder.h"
#include "ScopeLists.h"
#include "SettingsStore.h"
#include "SweepPlan.h"

#include <QTest>

namespace {
// Independent reference, in whole 10 Hz with integers only: the largest multiple of res that is not
// above centre - span / 2, and every multiple from there that is not past start + span.
struct Expected {
    qint64 start, end;
    int count;
};
Expected reference(qint64 centre10Hz, qint64 span10Hz, qint64 res10Hz)
{
    // centre - span / 2 in units of 5 Hz keeps the half of 12.5 kHz exact.
    const qint64 lower5Hz = 2 * centre10Hz - span10Hz;
    qint64 k = lower5Hz / (2 * res10Hz);
    while (k * 2 * res10Hz > lower5Hz)
        --k;
    while ((k + 1) * 2 * res10Hz <= lower5Hz)
        ++k;
    Expected e{k * res10Hz, k * res10Hz + span10Hz, 0};
    for (qint64 f = e.start; f <= e.end; f += res10Hz)
        ++e.count;
    return e;
}
qint64 tenHz(const QString& entry)
{
    return qRound64(leadingNumber(entry) * 100);
}
}  // namespace

class TestSweepPlan : public QObject {
    Q_OBJECT
private slots:
    void plan_everySpanAndResolution_data()
    {
        QTest::addColumn<double>("centre");
        QTest::addColumn<QString>("span");
        QTest::addColumn<QString>("res");
        for (double centre : {14250.0, 14250.1, 7033.37}) {
            for (const QString& span : ScopeLists::spans())
                for (const QString& res : ScopeLists::resolutions())
                    QTest::addRow("%.2f %s at %s", centre, qPrintable(span), qPrintable(res)) << centre << span << res;
        }
    }
    void plan_everySpanAndResolution()
    {
        QFETCH(double, centre);
        QFETCH(QString, span);
        QFETCH(QString, res);
        const SweepPlan p = makeSweepPlan(centre, leadingNumber(span), leadingNumber(res));
        const Expected e = reference(qRound64(centre * 100), tenHz(span), tenHz(res));
        QCOMPARE(p.start10Hz, e.start);
        QCOMPARE(p.end10Hz, e.end);
        QCOMPARE(p.samples, e.count);
        // The last sample is not past the end and one more step would be.
        QVERIFY(p.sample10Hz(p.samples - 1) <= p.end10Hz);
        QVERIFY(p.sample10Hz(p.samples) > p.end10Hz);
    }

    void plan_handPickedCases_data()
    {
        QTest::addColumn<double>("centre");
        QTest::addColumn<double>("span");
        QTest::addColumn<double>("res");
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("end");
        QTest::addColumn<int>("samples");
        QTest::newRow("100 kHz at 5 kHz") << 14250.0 << 100.0 << 5.0 << 14200.0 << 14300.0 << 21;
        QTest::newRow("5000 kHz at 100 kHz") << 14250.0 << 5000.0 << 100.0 << 11700.0 << 16700.0 << 51;
        QTest::newRow("5000 kHz at 1000 kHz") << 14250.0 << 5000.0 << 1000.0 << 11000.0 << 16000.0 << 6;
        QTest::newRow("12.5 kHz at 5 kHz") << 14250.0 << 12.5 << 5.0 << 14240.0 << 14252.5 << 3;
        QTest::newRow("0.1 kHz at 0.1 kHz") << 14250.0 << 0.1 << 0.1 << 14249.9 << 14250.0 << 2;
        QTest::newRow("100 kHz at 0.1 kHz") << 14250.1 << 100.0 << 0.1 << 14200.1 << 14300.1 << 1001;
        QTest::newRow("0.5 kHz at 0.1 kHz, odd centre") << 14250.1 << 0.5 << 0.1 << 14249.8 << 14250.3 << 6;
        QTest::newRow("100 kHz at 25 kHz, sub") << 7050.0 << 100.0 << 25.0 << 7000.0 << 7100.0 << 5;
    }
    void plan_handPickedCases()
    {
        QFETCH(double, centre);
        QFETCH(double, span);
        QFETCH(double, res);
        QFETCH(double, start);
        QFETCH(double, end);
        QFETCH(int, samples);
        const SweepPlan p = makeSweepPlan(centre, span, res);
        QCOMPARE(p.startKHz(), start);
        QCOMPARE(p.endKHz(), end);
        QCOMPARE(p.samples, samples);
    }

    void spanSmallerThanResolution_givesASingleSample()
    {
        const SweepPlan p = makeSweepPlan(14250.0, 0.1, 5.0);
        QCOMPARE(p.samples, 1);
        QCOMPARE(p.startKHz(), 14245.0);
        QCOMPARE(p.endKHz(), 14245.1);
        QCOMPARE(makeSweepPlan(14250.0, 500, 1000).samples, 1);
    }

    void setFreqArgument_isKiloHertzTimesHundred_data()
    {
        QTest::addColumn<double>("kHz");
        QTest::addColumn<qint64>("argument");
        QTest::newRow("whole") << 14250.0 << qint64(1425000);
        QTest::newRow("tenth that floats below") << 14250.1 << qint64(1425010);
        QTest::newRow("sum of tenths") << (14200.0 + 0.1 + 0.1 + 0.1) << qint64(1420030);
        QTest::newRow("hundredth") << 7000.01 << qint64(700001);
        QTest::newRow("finer than 10 Hz is dropped") << 14250.129 << qint64(1425012);
        QTest::newRow("low band") << 1830.5 << qint64(183050);
        QTest::newRow("nothing") << 0.0 << qint64(0);
    }
    void setFreqArgument_isKiloHertzTimesHundred()
    {
        QFETCH(double, kHz);
        QFETCH(qint64, argument);
        QCOMPARE(setFreqArgument(kHz), argument);
    }

    void everySampleOfAFineSweep_tunesExactly()
    {
        // 1001 samples of 100 Hz: each one reaches the radio as its exact 10 Hz count.
        const SweepPlan p = makeSweepPlan(14250.1, 100, 0.1);
        for (int i = 0; i < p.samples; ++i)
            QCOMPARE(setFreqArgument(SweepPlan::toKHz(p.sample10Hz(i))), 1420010 + 10 * i);
    }

    void level_isIntegerPartOfPercentOfFullScale_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<int>("level");
        QTest::newRow("0") << 0 << 0;
        QTest::newRow("51") << 51 << 20;
        QTest::newRow("128") << 128 << 50;
        QTest::newRow("200") << 200 << 78;
        QTest::newRow("255") << 255 << 100;
    }
    void level_isIntegerPartOfPercentOfFullScale()
    {
        QFETCH(int, raw);
        QFETCH(int, level);
        QCOMPARE(meterPercent(raw), level);
    }

    void sampleDrawing_barFromLevelToBaseAndJoinOneAbove()
    {
        const SampleDrawing first = sampleDrawing(0, 30, 0, 0);
        QCOMPARE(first.bar, QLineF(0, 70, 0, 100));
        QVERIFY(!first.joined);  // the first sample has nothing to join
        const SampleDrawing next = sampleDrawing(5, 40, 0, 30);
        QCOMPARE(next.bar, QLineF(5, 60, 5, 100));
        QVERIFY(next.joined);
        QCOMPARE(next.join, QLineF(0, 69, 5, 59));
    }

    void sampleDrawing_afterCancel_drawsNoJoin()
    {
        const SampleDrawing d = sampleDrawing(5, 40, CancelledLevel, CancelledLevel);
        QVERIFY(!d.joined);
        QCOMPARE(d.bar, QLineF(5, 60, 5, 100));
    }

    void scales_sweepAndRecord()
    {
        const PlotScale s = sweepScale(100);
        QCOMPARE(s.width, 110.0);
        QCOMPARE(s.left, -4.4);
        const PlotScale r = recordScale(5);
        QCOMPARE(r.width, 330.0);
        QCOMPARE(r.left, -15.0);
    }

    void frequencyScale_labelsInMHzForWideSpans()
    {
        const FrequencyScale f = frequencyScale(makeSweepPlan(14250, 100, 5));
        QCOMPARE(f.unit, QStringLiteral("MHz"));
        QStringList labels;
        for (const FrequencyTick& t : f.ticks)
            if (t.major)
                labels << t.label;
        QCOMPARE(labels, QStringList({"14.200", "14.220", "14.240", "14.260", "14.280", "14.300"}));
        QCOMPARE(f.ticks.first().x, 0.0);
        QCOMPARE(f.ticks.last().x, 100.0);
    }

    void frequencyScale_labelsInKHzForNarrowSpans()
    {
        const FrequencyScale f = frequencyScale(makeSweepPlan(14250, 0.5, 0.1));
        QCOMPARE(f.unit, QStringLiteral("kHz"));
        QStringList labels;
        for (const FrequencyTick& t : f.ticks)
            if (t.major)
                labels << t.label;
        QCOMPARE(labels, QStringList({"14249.700", "14249.800", "14249.900", "14250.000", "14250.100", "14250.200"}));
    }

    void frequencyScale_neighbouringLabelsDifferForEverySpan()
    {
        for (const QString& span : ScopeLists::spans()) {
            const FrequencyScale f = frequencyScale(makeSweepPlan(14250.1, leadingNumber(span), 0.1));
            QStringList labels;
            for (const FrequencyTick& t : f.ticks)
                if (t.major)
                    labels << t.label;
            QVERIFY2(labels.size() >= 2 && labels.size() <= 7, qPrintable(span));
            QCOMPARE(labels.removeDuplicates(), 0);
        }
    }

    void pointer_frequencyFromPlotStart()
    {
        const SweepPlan p = makeSweepPlan(14250, 100, 5);
        QCOMPARE(frequencyAt(p, 50), 14250.0);
        QCOMPARE(frequencyAt(p, 12.3456), 14212.35);
        QCOMPARE(frequencyAt(p, 0), 14200.0);
    }

    void pointer_readoutShowsBothPatterns()
    {
        QCOMPARE(readoutText(14250.0), QStringLiteral("14.250.0   14,250.00 kHz"));
        QCOMPARE(readoutText(7074.16), QStringLiteral("7.074.2   7,074.16 kHz"));
    }

    void record_labelStepKeepsLabelsApart()
    {
        for (const QString& t : ScopeLists::recordTimes()) {
            const double minutes = leadingNumber(t);
            const int labels = static_cast<int>(minutes / recordLabelStepMinutes(minutes)) + 1;
            QVERIFY2(labels >= 2 && labels <= 7, qPrintable(t));
        }
    }

    void lists_entriesAndColours()
    {
        QCOMPARE(ScopeLists::spans().size(), 13);
        QCOMPARE(ScopeLists::spans().last(), QStringLiteral("5000 KHz"));
        QCOMPARE(ScopeLists::resolutions().size(), 10);
        QCOMPARE(ScopeLists::recordTimes().first(), QStringLiteral("1 mn"));
        QCOMPARE(leadingNumber(ScopeLists::spans().at(4)), 12.5);
        QCOMPARE(ScopeColour::forKey(49), 0x0000FFu);
        QCOMPARE(ScopeColour::forKey(50), 0xC0FFFFu);
        QCOMPARE(ScopeColour::forKey(51), 65280u);
        QCOMPARE(QString::fromLatin1(ScopeKey::caption(48)), QStringLiteral("Get Center"));
        QCOMPARE(QString::fromLatin1(ScopeKey::caption(53)), QStringLiteral("Cancel"));
    }
};

QTEST_GUILESS_MAIN(TestSweepPlan)
#include "test_sweep_plan.moc"
