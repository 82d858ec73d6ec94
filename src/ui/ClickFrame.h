// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A group box that reports a click on itself (or on a label inside it, which passes the mouse on).

#include <QGroupBox>
#include <QMouseEvent>

class ClickFrame : public QGroupBox {
    Q_OBJECT
public:
    using QGroupBox::QGroupBox;

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* e) override
    {
        QGroupBox::mouseReleaseEvent(e);
        if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()))
            emit clicked();
    }
};
