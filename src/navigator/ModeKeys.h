// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The navigator's mode keys MD(1) "U/LSB", MD(2) "CW", MD(4) "AM", MD(6) "FM": the left button sends
// the key's index as the mode code, any other button the key's second variant (LSB, reverse CW,
// synchronous AM). FM has no second variant, so both buttons send FM.

namespace ModeKeys {
constexpr int Indices[] = {1, 2, 4, 6};
const char* caption(int index);
// The mode code a press sends; -1 for an index without a key.
int modeCode(int index, bool leftButton);
}  // namespace ModeKeys
