// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaterfallModel.h"

#include <cmath>

namespace {
bool sameAxis(const SweepPlan& a, const SweepPlan& b)
{
    return a.start10Hz == b.start10Hz && a.step10Hz == b.step10Hz && a.span10Hz == b.span10Hz && a.samples == b.samples;
}
}  // namespace

WaterfallRow WaterfallModel::makeRow(const SweepPlan& plan, const QList<SweepSample>& samples)
{
    WaterfallRow row;
    row.plan = plan;
    row.cells.fill(Background, plan.samples);
    for (const SweepSample& s : samples)
        if (s.replied && s.index >= 0 && s.index < plan.samples)
            row.cells[s.index] = levelColour(s.level);
    return row;
}

QVector<Argb> WaterfallModel::rowPixels(const WaterfallRow& row, int width)
{
    QVector<Argb> pixels(std::max(0, width), Background);
    if (width <= 0 || row.cells.isEmpty())
        return pixels;
    const PlotScale scale = sweepScale(row.plan.spanKHz());
    const double step = SweepPlan::toKHz(row.plan.step10Hz);
    const int n = static_cast<int>(row.cells.size());
    const double halfPixel = scale.width / width / 2;
    const double span = row.plan.spanKHz();
    for (int p = 0; p < width; ++p) {
        const double x = scale.left + (p + 0.5) / width * scale.width;  // as the plot maps its pixels
        // The span only: the plot's left margin carries its S-unit labels.
        if (x < -halfPixel || x > span + halfPixel)
            continue;
        const double i = std::floor(x / step + 0.5);
        if (i >= 0 && i < n)
            pixels[p] = row.cells[static_cast<int>(i)];
    }
    return pixels;
}

bool WaterfallModel::add(const SweepPlan& plan, const QList<SweepSample>& samples)
{
    const bool restarted = !rows_.isEmpty() && !sameAxis(rows_.first().plan, plan);
    if (restarted)
        rows_.clear();
    rows_.prepend(makeRow(plan, samples));
    while (rows_.size() > HistoryRows)
        rows_.removeLast();
    return restarted;
}
