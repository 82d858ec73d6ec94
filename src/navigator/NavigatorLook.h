// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Colours (blue-green-red values) and sizes of the navigator window.

#include <QtGlobal>

namespace NavigatorLook {
constexpr quint32 DigitKeyColour = 0xC0E0FF;     // band keys while they are digit keys
constexpr quint32 EntryColour = 0xFFC0C0;        // the display while a frequency is typed
constexpr quint32 SentColour = 0x0080FF;         // the display after "Main"/"Sub" (and normally)
constexpr quint32 DisplayBackground = 0x101010;  // the radio-like display's face
constexpr int HeightTwips = 4845;
inline const char* const DesignedFrequency = "14 250.25 ";
}  // namespace NavigatorLook
