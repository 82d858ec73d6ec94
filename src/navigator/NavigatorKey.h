// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The navigator's key pad beyond the ten band/digit keys: indices in Band(0..14) and captions.

namespace NavigatorKey {
constexpr int Freq = 10;
constexpr int Main = 11;
constexpr int Sub = 12;
constexpr int Enter = 13;
constexpr int Band = 14;
inline const char* const ControlCaptions[] = {"&Freq", "Main", "Sub", "Enter", "&Band"};
}  // namespace NavigatorKey
