// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryPanel.h"

#include <QLabel>
#include <QPalette>
#include <QWidget>

void MemoryPanel::darken(QWidget* w)
{
    QPalette p = w->palette();
    p.setColor(QPalette::Window, Background);
    p.setColor(QPalette::Base, Background);
    p.setColor(QPalette::WindowText, Text);
    p.setColor(QPalette::Text, Text);
    w->setPalette(p);
    w->setAutoFillBackground(true);
}

void MemoryPanel::setTextColour(QLabel* label, const QColor& c)
{
    QPalette p = label->palette();
    p.setColor(QPalette::WindowText, c);
    label->setPalette(p);
}
