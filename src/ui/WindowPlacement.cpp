// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowPlacement.h"

#include "SettingsStore.h"
#include "Twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

QSize WindowPlacement::screenSizeTwips()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize px = screen ? screen->size() : QSize(1024, 768);
    return {Twips::fromPixels(px.width()), Twips::fromPixels(px.height())};
}

bool WindowPlacement::onScreen(int leftTwips, int topTwips)
{
    const QSize screen = screenSizeTwips();
    return topTwips < screen.height() && leftTwips < screen.width();
}

// pos() is the frame's corner, the same point move() places, so a saved position restores exactly
// (geometry() would move the window by its title bar on every run).
int WindowPlacement::leftTwips(const QWidget* w)
{
    return Twips::fromPixels(w->pos().x());
}
int WindowPlacement::topTwips(const QWidget* w)
{
    return Twips::fromPixels(w->pos().y());
}

void WindowPlacement::restore(QWidget* w, SettingsStore& s, const QString& section, const QString& topKey,
                              const QString& leftKey, int fallbackTopTwips, int fallbackLeftTwips)
{
    const double top = s.number(section, topKey, fallbackTopTwips);
    const double left = s.number(section, leftKey, fallbackLeftTwips);
    w->move(Twips::toPixels(left), Twips::toPixels(top));
}

void WindowPlacement::save(QWidget* w, SettingsStore& s, const QString& section, const QString& topKey,
                           const QString& leftKey)
{
    const QSize screen = screenSizeTwips();
    const int top = topTwips(w);
    const int left = leftTwips(w);
    if (top < screen.height())
        s.setValue(section, topKey, QString::number(top));
    if (left < screen.width())
        s.setValue(section, leftKey, QString::number(left));
}
