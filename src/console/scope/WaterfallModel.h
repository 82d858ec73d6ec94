// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The band scope's waterfall without a window: each finished sweep pass becomes one row of colour,
// one cell per sample on the S-level colour scale, newest first, at most HistoryRows kept. A row
// is laid out in pixels on the same horizontal scale as the plot above it, so a signal's stripe
// stands under its bar.

#include "SLevel.h"
#include "SweepJob.h"
#include "SweepPlan.h"

#include <QList>
#include <QVector>

struct WaterfallRow {
    SweepPlan plan;
    QVector<Argb> cells;  // one a sample, in the order swept
};

class WaterfallModel {
public:
    static constexpr int HistoryRows = 100;
    static constexpr Argb Background = 0xFF000000;  // outside the sweep and where the radio was silent

    // A pass's samples as a row: each sample's level on the colour scale; a sample without a
    // reply stays background.
    static WaterfallRow makeRow(const SweepPlan& plan, const QList<SweepSample>& samples);

    // The row as pixels across a strip of this width under a plot of the pass's span: pixel p shows
    // the sample whose bar is nearest to the drawing x at its centre, background outside the sweep.
    static QVector<Argb> rowPixels(const WaterfallRow& row, int width);

    // Adds a finished pass as the newest row, dropping the oldest past HistoryRows. Rows of another
    // frequency axis (a new centre, span or resolution) would not line up: the history starts
    // again then, and this returns true.
    bool add(const SweepPlan& plan, const QList<SweepSample>& samples);
    void clear() { rows_.clear(); }

    int rowCount() const { return static_cast<int>(rows_.size()); }
    const WaterfallRow& row(int i) const { return rows_.at(i); }  // 0 the newest

private:
    QList<WaterfallRow> rows_;
};
