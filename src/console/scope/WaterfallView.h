// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The waterfall under the band scope's plot: one line of pixels a finished sweep, newest at the top,
// with the S-level colour legend below. It keeps the picture as an image: a new row scrolls the
// image down by one line and paints that line only, so a long continuous scan never repaints its
// whole history; only a new width (or a history that starts again) renders every row.

#include <QImage>
#include <QPixmap>
#include <QWidget>

class WaterfallModel;

class WaterfallView : public QWidget {
    Q_OBJECT
public:
    explicit WaterfallView(const WaterfallModel& model, QWidget* parent = nullptr);

    void rowAdded();  // the model has a new newest row
    void reset();     // the model's rows changed otherwise: render them all

    // The rows as shown, newest at line 0; one line a row, WaterfallModel::HistoryRows lines.
    const QImage& image() const { return image_; }
    int legendTop() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;

private:
    void paintLine(int line, int modelRow);
    void renderLegend();

    const WaterfallModel& model_;
    QImage image_;
    QPixmap legend_;
};
