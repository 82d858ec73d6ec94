// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Restoring and saving a window's position in the settings store, in twips. A position is saved only
// while the window lies on the screen (top below the screen height, left below the screen width).

#include <QSize>
#include <QString>

class QWidget;
class SettingsStore;

namespace WindowPlacement {
QSize screenSizeTwips();
// True when a position may be saved: top < screen height and left < screen width (both twips).
bool onScreen(int leftTwips, int topTwips);
// Moves the window to the stored position, or to the fallback where none is stored.
void restore(QWidget* w, SettingsStore& s, const QString& section, const QString& topKey, const QString& leftKey,
             int fallbackTopTwips, int fallbackLeftTwips);
// Saves each coordinate only when it lies within the screen.
void save(QWidget* w, SettingsStore& s, const QString& section, const QString& topKey, const QString& leftKey);
int leftTwips(const QWidget* w);
int topTwips(const QWidget* w);
}  // namespace WindowPlacement
