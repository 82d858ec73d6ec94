// SPDX-License-Identifier: GPL-3.0-or-later
// The waterfall's paint time on the offscreen platform: a strip as wide as a large scope (1200
// pixels) under a 100 kHz plot at 0.1 kHz (1001 samples a row), with a full history of 100 rows.
// Prints, per finished sweep, the time to add the row (scroll the image, paint the new line) and
// repaint the widget, beside the time to render the whole history again, which is what a resize
// costs and what a new row must not.

#include "SweepPlan.h"
#include "WaterfallModel.h"
#include "WaterfallView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <cmath>
#include <cstdio>

namespace {
QList<SweepSample> pass(const SweepPlan& plan, int n)
{
    QList<SweepSample> out;
    for (int i = 0; i < plan.samples; ++i) {
        SweepSample s;
        s.index = i;
        s.freq10Hz = plan.sample10Hz(i);
        s.replied = true;
        s.level = static_cast<int>(20 + 60 * std::fabs(std::sin(i * 0.05 + n * 0.1)));
        s.raw = s.level * 255 / 100;
        out.append(s);
    }
    return out;
}

double msSince(const QElapsedTimer& t, int count)
{
    return t.nsecsElapsed() / 1e6 / count;
}
}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    constexpr int Width = 1200;
    constexpr int Rows = 500;
    const SweepPlan plan = makeSweepPlan(14250.0, 100.0, 0.1);

    WaterfallModel model;
    WaterfallView view(model);
    view.resize(Width, view.height());
    view.show();
    app.processEvents();
    for (int n = 0; n < WaterfallModel::HistoryRows; ++n)
        model.add(plan, pass(plan, n));
    view.reset();
    view.repaint();

    QElapsedTimer t;
    t.start();
    for (int n = 0; n < Rows; ++n) {
        model.add(plan, pass(plan, n));
        view.rowAdded();
        view.repaint();
    }
    const double perRow = msSince(t, Rows);

    QElapsedTimer m;
    m.start();
    for (int n = 0; n < Rows; ++n)
        model.add(plan, pass(plan, n));
    const double modelOnly = msSince(m, Rows);

    QElapsedTimer r;
    r.start();
    constexpr int Resets = 50;
    for (int n = 0; n < Resets; ++n) {
        view.reset();
        view.repaint();
    }
    const double perReset = msSince(r, Resets);

    std::printf("waterfall %d px x %d rows, %d samples a row\n", Width, WaterfallModel::HistoryRows, plan.samples);
    std::printf("  new row (model, scroll, one line, repaint): %.3f ms a sweep (model alone %.3f ms)\n", perRow,
                modelOnly);
    std::printf("  whole history rendered again and repainted: %.3f ms\n", perReset);
    return 0;
}
