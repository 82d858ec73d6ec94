// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The scope's picture box. What is drawn on it stays: every line and text is kept in drawing units,
// with the scale that was in force when it was drawn, and rendered again at the widget's size, so
// plots survive covering, resizing and restoring and scale with the window. The graticule is
// rendered once per size into its own pixmap; plots are added to a canvas one by one as they come.
//
// Drawing units: x as set by setScale() (kHz for a sweep, seconds for an S-record), y from 0 at the
// top to 100 at the base line; the space below the base line (102..105) carries ticks and labels.

#include "SweepPlan.h"

#include <QColor>
#include <QLineF>
#include <QList>
#include <QPixmap>
#include <QPointF>
#include <QWidget>

class PanBox : public QWidget {
    Q_OBJECT
public:
    explicit PanBox(QWidget* parent = nullptr);

    void setScale(const PlotScale& scale);
    PlotScale scale() const { return scale_; }

    // Wipes the box: graticule and plots.
    void clear();
    // The graticule: drawn under every plot.
    void addGridLine(const QLineF& line, const QColor& colour, Qt::PenStyle style = Qt::SolidLine);
    void addGridText(const QPointF& at, const QString& text, const QColor& colour, Qt::Alignment anchor);
    // Plots.
    void drawLine(const QLineF& line, const QColor& colour);
    void drawText(const QPointF& at, const QString& text, const QColor& colour, Qt::Alignment anchor);

    int plotItemCount() const { return static_cast<int>(plots_.size()); }
    int gridItemCount() const { return static_cast<int>(grid_.size()); }
    QStringList gridTexts() const;
    QStringList plotTexts() const;
    // Plot lines in drawing units (tests look at what a sweep drew).
    QList<QLineF> plotLines() const;
    QList<QColor> plotLineColours() const;

    // Widgets laid over the picture's top corners (the caption and the pointer readout).
    void setOverlays(QWidget* topLeft, QWidget* topRight);

    // Mapping between drawing units and pixels at the current size.
    QPointF toPixels(const QPointF& p, const PlotScale& scale) const;
    double xAt(int pixelX) const;

    QSize sizeHint() const override { return {400, 180}; }
    QSize minimumSizeHint() const override { return {200, 100}; }

signals:
    void pointerMoved(double x);
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;

private:
    struct Item {
        PlotScale scale;
        QColor colour;
        bool isText = false;
        QLineF line;
        Qt::PenStyle style = Qt::SolidLine;
        QPointF at;
        QString text;
        Qt::Alignment anchor;
    };
    void paintItem(QPainter& p, const Item& item) const;
    QRectF itemPixelBounds(const Item& item) const;
    void renderGrid();
    void renderCanvas();
    void addPlot(const Item& item);
    void placeOverlays();
    int basePixel() const;

    PlotScale scale_;
    QList<Item> grid_;
    QList<Item> plots_;
    QPixmap gridPixmap_;
    QPixmap canvas_;
    bool gridDirty_ = true;
    QWidget* topLeft_ = nullptr;
    QWidget* topRight_ = nullptr;
};

namespace PanBoxLook {
inline const QColor Background{10, 14, 18};
inline const QColor GridLine{52, 66, 60};
inline const QColor BaseLine{130, 140, 146};
inline const QColor GridText{176, 186, 192};
}  // namespace PanBoxLook
