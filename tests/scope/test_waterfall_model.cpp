// SPDX-License-Identifier: GPL-3.0-or-later
// The waterfall's rows without a window: samples to colours on the S-level scale, the legend, the
// history bound and its order, and the row's pixels under a plot of the same span.

#include "SLevel.h"
#include "WaterfallModel.h"

#include <QTest>

namespace {
SweepPlan plan100At25()
{
    return makeSweepPlan(14250.0, 100.0, 25.0);  // 14200 .. 14300, five samples
}

QList<SweepSample> samples(const SweepPlan& plan, const QList<int>& levels)
{
    QList<SweepSample> out;
    for (int i = 0; i < levels.size(); ++i) {
        SweepSample s;
        s.index = i;
        s.freq10Hz = plan.sample10Hz(i);
        s.replied = levels[i] >= 0;
        s.level = std::max(0, levels[i]);
        s.raw = s.level * 255 / 100;
        out.append(s);
    }
    return out;
}
}  // namespace

class TestWaterfallModel : public QObject {
    Q_OBJECT
private slots:
    void levelColour_stopsOfTheScale()
    {
        QCOMPARE(levelColour(0), Argb(0xFF000028));    // the noise: dark blue
        QCOMPARE(levelColour(9), Argb(0xFF001E96));    // S1
        QCOMPARE(levelColour(36), Argb(0xFF00BED2));   // S5: cyan
        QCOMPARE(levelColour(62), Argb(0xFFFAE600));   // S9: yellow
        QCOMPARE(levelColour(84), Argb(0xFFF01E00));   // +40: red
        QCOMPARE(levelColour(100), Argb(0xFFFFFFFF));  // full scale: white
        QCOMPARE(levelColour(-5), levelColour(0));
        QCOMPARE(levelColour(140), levelColour(100));
        // Half way from S9 to +40.
        QCOMPARE(levelColour(73), Argb(0xFFF58200));
    }

    void legend_marksTheGraticulesSUnitLines()
    {
        const QList<LevelMark> marks = levelLegend();
        QCOMPARE(marks.size(), 4);
        const QStringList labels = {"S1", "S5", "S9", "+40"};
        const int levels[] = {9, 36, 62, 84};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(marks[i].label, labels[i]);
            QCOMPARE(marks[i].level, levels[i]);
            QCOMPARE(marks[i].colour, levelColour(levels[i]));
        }
    }

    void sUnitText_readsAsTheMeterScale()
    {
        QCOMPARE(sUnitText(0), QStringLiteral("S0"));
        QCOMPARE(sUnitText(23), QStringLiteral("S1"));      // 9 %
        QCOMPARE(sUnitText(92), QStringLiteral("S5"));      // 36 %
        QCOMPARE(sUnitText(125), QStringLiteral("S7"));     // 49 %: half way from S5 to S9
        QCOMPARE(sUnitText(159), QStringLiteral("S9"));     // 62 %
        QCOMPARE(sUnitText(187), QStringLiteral("S9+20"));  // 73 %
        QCOMPARE(sUnitText(215), QStringLiteral("S9+40"));  // 84 %
        QCOMPARE(sUnitText(255), QStringLiteral("S9+60"));
        QCOMPARE(sUnitText(300), QStringLiteral("S9+60"));
    }

    void makeRow_oneCellASampleSilentOnesStayBackground()
    {
        const SweepPlan plan = plan100At25();
        const WaterfallRow row = WaterfallModel::makeRow(plan, samples(plan, {0, 36, -1, 62, 100}));
        QCOMPARE(row.cells.size(), 5);
        QCOMPARE(row.cells[0], Argb(0xFF000028));
        QCOMPARE(row.cells[1], Argb(0xFF00BED2));
        QCOMPARE(row.cells[2], WaterfallModel::Background);
        QCOMPARE(row.cells[3], Argb(0xFFFAE600));
        QCOMPARE(row.cells[4], Argb(0xFFFFFFFF));
    }

    void makeRow_aPassCutShortLeavesTheRestBackground()
    {
        const SweepPlan plan = plan100At25();
        const WaterfallRow row = WaterfallModel::makeRow(plan, samples(plan, {62, 62}));
        QCOMPARE(row.cells.size(), 5);
        QCOMPARE(row.cells[1], Argb(0xFFFAE600));
        QCOMPARE(row.cells[2], WaterfallModel::Background);
    }

    void add_newestFirst()
    {
        WaterfallModel m;
        const SweepPlan plan = plan100At25();
        QVERIFY(!m.add(plan, samples(plan, {0, 0, 0, 0, 0})));
        QVERIFY(!m.add(plan, samples(plan, {100, 100, 100, 100, 100})));
        QCOMPARE(m.rowCount(), 2);
        QCOMPARE(m.row(0).cells[0], Argb(0xFFFFFFFF));
        QCOMPARE(m.row(1).cells[0], Argb(0xFF000028));
    }

    void add_keepsTheLastHundred()
    {
        WaterfallModel m;
        const SweepPlan plan = plan100At25();
        for (int pass = 0; pass < 105; ++pass)
            m.add(plan, samples(plan, {pass % 101, 0, 0, 0, 0}));
        QCOMPARE(m.rowCount(), 100);
        QCOMPARE(WaterfallModel::HistoryRows, 100);
        QCOMPARE(m.row(0).cells[0], levelColour(104 % 101));  // the 105th pass
        QCOMPARE(m.row(99).cells[0], levelColour(5));         // the 6th; the first five are gone
    }

    void add_anotherFrequencyAxisStartsTheHistoryAgain()
    {
        WaterfallModel m;
        const SweepPlan plan = plan100At25();
        m.add(plan, samples(plan, {0, 0, 0, 0, 0}));
        m.add(plan, samples(plan, {0, 0, 0, 0, 0}));
        const SweepPlan moved = makeSweepPlan(7050.0, 100.0, 25.0);
        QVERIFY(m.add(moved, samples(moved, {50, 50, 50, 50, 50})));
        QCOMPARE(m.rowCount(), 1);
        QCOMPARE(m.row(0).plan.start10Hz, moved.start10Hz);
    }

    void rowPixels_standUnderThePlotsBars()
    {
        // A 110-pixel strip under a 100 kHz plot: the plot is 110 kHz wide from -4.4 kHz, one kHz a
        // pixel; pixel p is centred on x = p - 3.9. Bars at 0, 25, 50, 75 and 100 kHz.
        const SweepPlan plan = plan100At25();
        const WaterfallRow row = WaterfallModel::makeRow(plan, samples(plan, {10, 20, 30, 40, 50}));
        const QVector<Argb> px = WaterfallModel::rowPixels(row, 110);
        QCOMPARE(px.size(), 110);
        QCOMPARE(px[3], WaterfallModel::Background);  // the label margin left of the span
        QCOMPARE(px[4], row.cells[0]);
        QCOMPARE(px[16], row.cells[0]);  // x 12.1: nearer the first bar
        QCOMPARE(px[17], row.cells[1]);  // x 13.1: nearer the second
        QCOMPARE(px[54], row.cells[2]);  // x 50.1
        QCOMPARE(px[104], row.cells[4]);
        QCOMPARE(px[105], WaterfallModel::Background);  // past the span's end
        QCOMPARE(px[109], WaterfallModel::Background);
    }

    void rowPixels_aNarrowStripStillShowsEverySampleItCan()
    {
        const SweepPlan plan = plan100At25();
        const WaterfallRow row = WaterfallModel::makeRow(plan, samples(plan, {10, 20, 30, 40, 50}));
        QCOMPARE(WaterfallModel::rowPixels(row, 0).size(), 0);
        const QVector<Argb> px = WaterfallModel::rowPixels(row, 11);  // 10 kHz a pixel
        QCOMPARE(px[0], row.cells[0]);                                // x 0.6
        QCOMPARE(px[5], row.cells[2]);                                // x 50.6
        QCOMPARE(px[10], row.cells[4]);                               // x 100.6, within half a pixel of the end
    }
};

QTEST_APPLESS_MAIN(TestWaterfallModel)
#include "test_waterfall_model.moc"
