// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The IF filter window without widgets: the buttons of each receiver, the command each sends, which
// buttons the status byte lights, and the menu of optional filters that gates six of them.

#include "CatCommand.h"

#include <QList>
#include <QString>
#include <optional>

namespace FilterSelection {

// Button indices of filtA and filtB: 0..4 the 8.2 MHz column, 10..14 the 455 kHz column.
QList<int> buttonIndices();
QString buttonCaption(int index);  // empty for an index without a button

constexpr quint8 MainFirstIf = 1;        // P1 for the main receiver's 8.2 MHz filters
constexpr quint8 MainSecondIf = 2;       // P1 for its 455 kHz filters
constexpr int SubBase = 0x80;            // sub receiver: P4 = 0x80 + row, in either column
constexpr quint32 LitColour = 0xC0FFFF;  // light yellow, blue-green-red

// The click of filtA(index) (main receiver) and filtB(index) (sub receiver); nothing for other indices.
// The sub receiver's columns send the same codes: "Thru" and "6.0 K" both send 0x84.
std::optional<CatCommand> filtACommand(int index);
std::optional<CatCommand> filtBCommand(int index);

// The status byte (9 for VFO-A, 25 for VFO-B) lights buttons by independent tests, in this order;
// a byte may light two buttons of one column.
struct Lamp {
    int button = 0;
    bool lit = false;
    bool operator==(const Lamp&) const = default;
};
QList<Lamp> lamps(int statusByte);

// The "Optional Filters" menu: items 0..7, separators at 2 and 6.
constexpr int MenuSize = 8;
bool isSeparator(int menuIndex);
QString menuCaption(int menuIndex);  // "-" for a separator
// The button an item enables: filtA, or filtB when subReceiver; nothing for separators.
struct GatedButton {
    bool subReceiver = false;
    int button = -1;
};
std::optional<GatedButton> gatedButton(int menuIndex);
// The items in the order the load step reads them (the separators are stepped over).
QList<int> menuLoadOrder();
inline constexpr char SettingsSection[] = "Settings";
// Settings: section "Settings", key "Filter" + index, "1" checked and "0" not.
QString settingsKey(int menuIndex);
QString settingsValue(bool checked);
bool checkedFromSetting(const QString& stored);

}  // namespace FilterSelection
