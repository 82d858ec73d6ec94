// SPDX-License-Identifier: GPL-3.0-or-later
#include "LevelGauge.h"

#include <QPainter>
#include <algorithm>

LevelGauge::LevelGauge(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void LevelGauge::setBarColours(const QColor& low, const QColor& high)
{
    low_ = low;
    high_ = high;
    update();
}

void LevelGauge::setLevel(int percent)
{
    percent = std::clamp(percent, 0, 100);
    if (percent == level_)
        return;
    level_ = percent;
    update();
}

void LevelGauge::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const QRect r = rect().adjusted(0, 0, -1, -1);
    p.fillRect(r, QColor(0x10, 0x14, 0x12));
    const int filled = r.width() * level_ / 100;
    if (filled > 0) {
        QLinearGradient g(r.topLeft(), r.topRight());
        g.setColorAt(0.0, low_);
        g.setColorAt(0.6, low_);
        g.setColorAt(1.0, high_);
        p.fillRect(QRect(r.left(), r.top(), filled, r.height()), g);
    }
    p.setPen(QColor(0x50, 0x58, 0x54));
    p.drawRect(r);
}
