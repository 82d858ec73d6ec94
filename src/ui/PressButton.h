// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A push button that tells which mouse button went down and up: keys that act on the press, or do
// one thing with the left button and another with the right.

#include <QMouseEvent>
#include <QPushButton>

class PressButton : public QPushButton {
    Q_OBJECT
public:
    using QPushButton::QPushButton;

signals:
    void mouseDown(Qt::MouseButton button);
    void mouseUp(Qt::MouseButton button);

protected:
    void mousePressEvent(QMouseEvent* e) override
    {
        emit mouseDown(e->button());
        QPushButton::mousePressEvent(e);
    }
    void mouseReleaseEvent(QMouseEvent* e) override
    {
        emit mouseUp(e->button());
        QPushButton::mouseReleaseEvent(e);
    }
};
