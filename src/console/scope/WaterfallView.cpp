// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaterfallView.h"

#include "PanBox.h"
#include "WaterfallModel.h"

#include <QPainter>
#include <QResizeEvent>
#include <cstring>

namespace {
constexpr int LegendHeight = 18;
constexpr int LegendBarWidth = 220;
constexpr int LegendBarHeight = 6;
constexpr int LegendMargin = 4;
}  // namespace

WaterfallView::WaterfallView(const WaterfallModel& model, QWidget* parent) : QWidget(parent), model_(model)
{
    setObjectName(QStringLiteral("Waterfall"));
    setAccessibleName(QStringLiteral("Waterfall"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedHeight(WaterfallModel::HistoryRows + LegendHeight);
}

QSize WaterfallView::sizeHint() const
{
    return {400, WaterfallModel::HistoryRows + LegendHeight};
}

QSize WaterfallView::minimumSizeHint() const
{
    return {200, WaterfallModel::HistoryRows + LegendHeight};
}

int WaterfallView::legendTop() const
{
    return WaterfallModel::HistoryRows;
}

void WaterfallView::paintLine(int line, int modelRow)
{
    const QVector<Argb> pixels = WaterfallModel::rowPixels(model_.row(modelRow), image_.width());
    std::memcpy(image_.scanLine(line), pixels.constData(), pixels.size() * sizeof(Argb));
}

void WaterfallView::reset()
{
    image_ = QImage(std::max(1, width()), WaterfallModel::HistoryRows, QImage::Format_RGB32);
    image_.fill(WaterfallModel::Background);
    for (int i = 0; i < model_.rowCount(); ++i)
        paintLine(i, i);
    update();
}

void WaterfallView::rowAdded()
{
    if (image_.width() != std::max(1, width()) || model_.rowCount() == 0) {
        reset();
        return;
    }
    // Every line moves down one; the oldest falls off the bottom.
    const qsizetype bytesPerLine = image_.bytesPerLine();
    uchar* bits = image_.bits();
    std::memmove(bits + bytesPerLine, bits, bytesPerLine * (image_.height() - 1));
    paintLine(0, 0);
    update(0, 0, width(), WaterfallModel::HistoryRows);
}

void WaterfallView::renderLegend()
{
    const qreal dpr = devicePixelRatioF();
    legend_ = QPixmap(QSize(std::max(1, width()), LegendHeight) * dpr);
    legend_.setDevicePixelRatio(dpr);
    legend_.fill(PanBoxLook::Background);
    QPainter p(&legend_);
    QFont f = font();
    f.setPointSizeF(std::max(6.5, f.pointSizeF() - 1.5));
    p.setFont(f);
    const int barWidth = std::min(LegendBarWidth, width() - 2 * LegendMargin);
    const int left = width() - barWidth - LegendMargin;
    const int top = 2;
    for (int x = 0; x < barWidth; ++x) {
        p.setPen(QColor::fromRgb(levelColour(x * 100 / std::max(1, barWidth - 1))));
        p.drawLine(left + x, top, left + x, top + LegendBarHeight);
    }
    p.setPen(PanBoxLook::GridText);
    const QFontMetrics fm(f);
    for (const LevelMark& m : levelLegend()) {
        const int x = left + m.level * (barWidth - 1) / 100;
        p.drawLine(x, top + LegendBarHeight, x, top + LegendBarHeight + 2);
        const int w = fm.horizontalAdvance(m.label);
        p.drawText(x - w / 2, LegendHeight - 1 - fm.descent(), m.label);
    }
    const QString caption = QStringLiteral("S-level");
    p.drawText(left - fm.horizontalAdvance(caption) - 8, LegendHeight - 1 - fm.descent(), caption);
}

void WaterfallView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    reset();
    renderLegend();
}

void WaterfallView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.drawImage(0, 0, image_);
    p.drawPixmap(0, legendTop(), legend_);
}
