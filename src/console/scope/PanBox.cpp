// SPDX-License-Identifier: GPL-3.0-or-later
#include "PanBox.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

namespace {
constexpr int TopMargin = 6;
constexpr double MaxPixelsPerUnitBelowBase = 2.0;  // ticks and labels keep their size in a tall box

QFont smallFont(const QFont& base)
{
    QFont f = base;
    f.setPointSizeF(std::max(6.5, base.pointSizeF() - 1.5));
    return f;
}
}  // namespace

PanBox::PanBox(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("PanBox"));
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setCursor(Qt::CrossCursor);
}

void PanBox::setScale(const PlotScale& scale)
{
    scale_ = scale;
}

void PanBox::clear()
{
    grid_.clear();
    plots_.clear();
    gridDirty_ = true;
    update();
}

void PanBox::addGridLine(const QLineF& line, const QColor& colour, Qt::PenStyle style)
{
    Item i;
    i.scale = scale_;
    i.colour = colour;
    i.line = line;
    i.style = style;
    grid_.append(i);
    gridDirty_ = true;
    update();
}

void PanBox::addGridText(const QPointF& at, const QString& text, const QColor& colour, Qt::Alignment anchor)
{
    Item i;
    i.scale = scale_;
    i.colour = colour;
    i.isText = true;
    i.at = at;
    i.text = text;
    i.anchor = anchor;
    grid_.append(i);
    gridDirty_ = true;
    update();
}

void PanBox::drawLine(const QLineF& line, const QColor& colour)
{
    Item i;
    i.scale = scale_;
    i.colour = colour;
    i.line = line;
    addPlot(i);
}

void PanBox::drawText(const QPointF& at, const QString& text, const QColor& colour, Qt::Alignment anchor)
{
    Item i;
    i.scale = scale_;
    i.colour = colour;
    i.isText = true;
    i.at = at;
    i.text = text;
    i.anchor = anchor;
    addPlot(i);
}

void PanBox::addPlot(const Item& item)
{
    plots_.append(item);
    // Drawn onto the canvas at once; only the bit that changed is repainted.
    if (gridDirty_ || canvas_.size() != size() * devicePixelRatioF()) {
        update();
        return;
    }
    QPainter p(&canvas_);
    p.setRenderHint(QPainter::Antialiasing, false);
    paintItem(p, item);
    update(itemPixelBounds(item).toAlignedRect().adjusted(-2, -2, 2, 2));
}

QStringList PanBox::gridTexts() const
{
    QStringList l;
    for (const Item& i : grid_)
        if (i.isText)
            l << i.text;
    return l;
}

QStringList PanBox::plotTexts() const
{
    QStringList l;
    for (const Item& i : plots_)
        if (i.isText)
            l << i.text;
    return l;
}

QList<QLineF> PanBox::plotLines() const
{
    QList<QLineF> l;
    for (const Item& i : plots_)
        if (!i.isText)
            l << i.line;
    return l;
}

QList<QColor> PanBox::plotLineColours() const
{
    QList<QColor> l;
    for (const Item& i : plots_)
        if (!i.isText)
            l << i.colour;
    return l;
}

void PanBox::setOverlays(QWidget* topLeft, QWidget* topRight)
{
    topLeft_ = topLeft;
    topRight_ = topRight;
    placeOverlays();
}

void PanBox::placeOverlays()
{
    if (topLeft_) {
        topLeft_->adjustSize();
        // Clear of the S-unit labels in the left margin.
        topLeft_->move(std::max(4, static_cast<int>(-scale_.left / scale_.width * width()) + 6), TopMargin - 2);
    }
    if (topRight_) {
        topRight_->adjustSize();
        topRight_->move(width() - topRight_->width() - 4, TopMargin - 2);
    }
}

int PanBox::basePixel() const
{
    const int labelBand = QFontMetrics(smallFont(font())).height() + 12;
    return std::max(TopMargin + 10, height() - labelBand);
}

QPointF PanBox::toPixels(const QPointF& p, const PlotScale& scale) const
{
    const double x = (p.x() - scale.left) / scale.width * width();
    const double base = basePixel();
    const double perUnit = (base - TopMargin) / 100.0;
    double y;
    if (p.y() <= 100)
        y = TopMargin + p.y() * perUnit;
    else
        y = base + (p.y() - 100) * std::min(perUnit, MaxPixelsPerUnitBelowBase);
    return {x, y};
}

double PanBox::xAt(int pixelX) const
{
    return scale_.left + (pixelX + 0.5) / std::max(1, width()) * scale_.width;
}

QRectF PanBox::itemPixelBounds(const Item& item) const
{
    if (!item.isText)
        return QRectF(toPixels(item.line.p1(), item.scale), toPixels(item.line.p2(), item.scale)).normalized();
    const QFontMetrics fm(smallFont(font()));
    const QPointF a = toPixels(item.at, item.scale);
    const QSizeF s(fm.horizontalAdvance(item.text) + 2, fm.height());
    double x = a.x();
    double y = a.y();
    if (item.anchor & Qt::AlignHCenter)
        x -= s.width() / 2;
    else if (item.anchor & Qt::AlignRight)
        x -= s.width();
    if (item.anchor & Qt::AlignVCenter)
        y -= s.height() / 2;
    else if (item.anchor & Qt::AlignBottom)
        y -= s.height();
    return {QPointF(x, y), s};
}

void PanBox::paintItem(QPainter& p, const Item& item) const
{
    if (item.isText) {
        p.setFont(smallFont(font()));
        p.setPen(item.colour);
        const QRectF r = itemPixelBounds(item);
        // Keep labels inside the box: one at the very edge is shifted in rather than cut.
        QRectF inside = r;
        if (inside.left() < 1)
            inside.moveLeft(1);
        if (inside.right() > width() - 1)
            inside.moveRight(width() - 1);
        p.drawText(inside, Qt::AlignCenter, item.text);
        return;
    }
    QPen pen(item.colour, 1, item.style);
    pen.setCosmetic(true);
    p.setPen(pen);
    p.drawLine(toPixels(item.line.p1(), item.scale), toPixels(item.line.p2(), item.scale));
}

void PanBox::renderGrid()
{
    const qreal dpr = devicePixelRatioF();
    gridPixmap_ = QPixmap(size() * dpr);
    gridPixmap_.setDevicePixelRatio(dpr);
    gridPixmap_.fill(PanBoxLook::Background);
    QPainter p(&gridPixmap_);
    for (const Item& i : grid_)
        paintItem(p, i);
    gridDirty_ = false;
}

void PanBox::renderCanvas()
{
    if (gridDirty_ || gridPixmap_.size() != size() * devicePixelRatioF())
        renderGrid();
    canvas_ = gridPixmap_.copy();
    canvas_.setDevicePixelRatio(gridPixmap_.devicePixelRatio());
    QPainter p(&canvas_);
    for (const Item& i : plots_)
        paintItem(p, i);
}

void PanBox::paintEvent(QPaintEvent* e)
{
    if (gridDirty_ || canvas_.size() != size() * devicePixelRatioF())
        renderCanvas();
    QPainter p(this);
    const QRect r = e->rect();
    const qreal dpr = canvas_.devicePixelRatio();
    p.drawPixmap(r, canvas_, QRectF(r.topLeft() * dpr, r.size() * dpr));
}

void PanBox::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    gridDirty_ = true;
    placeOverlays();
}

void PanBox::mouseMoveEvent(QMouseEvent* e)
{
    emit pointerMoved(xAt(e->position().toPoint().x()));
    QWidget::mouseMoveEvent(e);
}

void PanBox::mouseDoubleClickEvent(QMouseEvent* e)
{
    emit pointerMoved(xAt(e->position().toPoint().x()));
    emit doubleClicked();
    QWidget::mouseDoubleClickEvent(e);
}
