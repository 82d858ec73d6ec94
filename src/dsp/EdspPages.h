// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The controls of the EDSP dialog, with the indices of their control arrays, and the four pages
// that hold them.

#include "EdspOptions.h"

#include <QMap>
#include <QVector>

class QButtonGroup;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTabWidget;
class QWidget;
class PassbandPicture;

struct EdspControls {
    QTabWidget* tbsOptions = nullptr;
    QVector<QWidget*> picOptions;           // one page a tab, in tab order
    QVector<QRadioButton*> Option1;         // 0..35
    QMap<EdspGroup, QButtonGroup*> groups;  // one exclusive group a frame
    QVector<QPushButton*> Key;              // 0..2
    QVector<QScrollBar*> HScroll1;          // 0 LP, 1 HP, 3 passband position (2 does not exist)
    QScrollBar* HScroll2 = nullptr;         // CW centre
    QVector<QLabel*> Label1;                // 0 LP caption, 1 HP caption, 2 CW centre caption
    PassbandPicture* Picture1 = nullptr;
    QLabel* Label3 = nullptr;  // band limits
    QLabel* Label4 = nullptr;  // bandwidth
    QVector<QGroupBox*> fra1;  // 11 and 12: the " Tip " frames
};

namespace EdspText {
inline constexpr char Title[] = "EDSP Settings";
inline constexpr char Tip[] = "Param 0-9 and 7-7 must be set to ON before using the EDSP";
}  // namespace EdspText

// Builds the tab strip with its four pages into c (the widgets are owned by `parent`).
void buildEdspPages(EdspControls& c, QWidget* parent);
