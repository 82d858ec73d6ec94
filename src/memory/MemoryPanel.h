// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the memory window's source files share: the indices of its keys and the look of its dark
// display panel.

#include <QColor>

class QLabel;
class QWidget;

// Bouton(0..5).
namespace MemoryKey {
constexpr int Close = 0;
constexpr int MemoryToA = 1;
constexpr int Mask = 2;
constexpr int VfoMem = 3;
constexpr int GetMem = 4;
constexpr int Upload = 5;
}  // namespace MemoryKey

namespace MemoryPanel {
// The display panel: dark, like the radio's own, so both channel colours read well.
inline const QColor Background(0x14, 0x16, 0x1a);
inline const QColor Text(0xd8, 0xd8, 0xd8);
inline const QColor HeadingText(0x90, 0x98, 0xa0);

void darken(QWidget* w);
void setTextColour(QLabel* label, const QColor& c);
}  // namespace MemoryPanel
