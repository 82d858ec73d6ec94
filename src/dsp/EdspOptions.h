// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The 36 option buttons of the EDSP dialog: caption, frame, and what a click sends and changes.
// The index alone decides the action.

#include "CatCommand.h"

#include <QList>
#include <QString>
#include <optional>

constexpr int EdspOptionCount = 36;

// The frames of the dialog; each frame is one exclusive group of option buttons.
enum class EdspGroup {
    Demodulation,      // 0..5   " EDSP - Demodulation " (RX EDSP)
    TxUsb,             // 6..9   " EDSP - USB "
    TxLsb,             // 10..13 " EDSP - LSB "
    CwFilters,         // 14..16 " CW Filters "
    Contour,           // 17..21 " EDSP - Contour "
    MicEqualization,   // 22..26 " Microphone Equalization "
    DataDemodulation,  // 27..31 " EDSP - Demodulation " (Special Filters)
    Noise,             // 32, 33 " EDSP - Noise "
    Notch,             // 34, 35 " EDSP - Notch"
};

// Option indices the dialog and the menus refer to by name.
namespace EdspOption {
constexpr int RxOff = 0;
constexpr int FirstDemodulation = 0;
constexpr int LastDemodulation = 5;
constexpr int FirstTx = 6;
constexpr int LastTx = 13;
constexpr int EqualizationOff = 17;
constexpr int MicNormal = 22;
constexpr int DataFilterOff = 27;
constexpr int NoiseOff = 32;
constexpr int NoiseOn = 33;
constexpr int NotchOff = 34;
constexpr int NotchOn = 35;
}  // namespace EdspOption

QString edspOptionCaption(int index);
EdspGroup edspOptionGroup(int index);

// A check mark of the main window's EDSP menus: mnu_EDSPR (transmit = false) or mnu_EDSPT.
struct MenuMark {
    bool transmit = false;
    int index = 0;
    bool checked = false;
    bool operator==(const MenuMark&) const = default;
};

// A front-panel key's back colour; no colour means the button face.
struct KeyColour {
    int key = 0;
    std::optional<quint32> bgr;
    bool operator==(const KeyColour&) const = default;
};

// What the dialog knows at the moment of the click.
struct EdspContext {
    int modeCode = 0;  // the main window's current mode code
    int cwCentre = 0;  // HScroll2 position
};

struct EdspOptionAction {
    QList<CatCommand> commands;   // sent in this order
    std::optional<int> modeCode;  // the main window's mode code afterwards
    std::optional<int> cwFilterCode;
    QList<MenuMark> marks;  // applied in this order
    int toggleRxMenu = -1;  // mnu_EDSPR item whose check mark flips, whichever button was clicked
    std::optional<KeyColour> keyColour;
    bool thenSelectEqualizationOff = false;  // a receive demodulation choice resets the contour
};

// The click of Option1(index). Indices outside 0..35 give an empty action.
EdspOptionAction edspOptionAction(int index, const EdspContext& context);

// The dialog's buttons Key(0..2).
struct EdspKeyAction {
    std::optional<int> selectOptionFirst;  // selected as by a click before the command goes out
    QList<CatCommand> commands;
    bool clearTxOptions = false;  // Option1(6..13) unselected
    QList<MenuMark> marks;
};
EdspKeyAction edspKeyAction(int index);

// The EDSP command: P3 value, P4 function.
inline CatCommand edspCommand(int function, int value = 0)
{
    return CatCommand::make(Op::Edsp, function, value);
}
inline CatCommand modeCommand(int modeCode)
{
    return CatCommand::make(Op::SetMode, modeCode);
}
