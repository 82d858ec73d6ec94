// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The main S-meter byte (0..255) as hamlib's STRENGTH level: dB relative to S9.
//
// Calibration, piecewise linear between three points and rounded to the nearest dB:
//   raw   0 -> -54 dB (S0; six dB an S unit below S9)
//   raw 120 ->   0 dB (S9)
//   raw 255 -> +60 dB (S9 + 60 dB, the end of the meter's scale)
// So S1..S9 take about 13.3 raw steps each and the range above S9 about 2.25 steps per dB.

namespace SMeterPoint {
constexpr int BottomRaw = 0;
constexpr int BottomDb = -54;
constexpr int S9Raw = 120;
constexpr int S9Db = 0;
constexpr int TopRaw = 255;
constexpr int TopDb = 60;
}  // namespace SMeterPoint

// Raw values outside 0..255 are clamped first.
int sMeterDbOverS9(int raw);
