// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The spring-back tuning slider. Its value is a rate in kHz per tick of Timer3: pulled one way
// (positive values) it tunes down, the other way (negative values) up, and released it springs
// back to 0. The range is -50..+50 kHz a tick: from 1 kHz a tick for fine tuning to 50 kHz a tick
// (about 70 kHz a second) to cross a band.

#include <optional>

namespace SliderTuning {
constexpr int Interval = 720;  // Timer3, ms
constexpr int Minimum = -50;   // kHz per tick, tuning up
constexpr int Maximum = 50;    // kHz per tick, tuning down
constexpr double BottomKHz = 100;
constexpr double TopKHz = 30000;

// The frequency one tick of value v takes the radio to, or nothing when it would leave the range
// (down to 100 kHz or less, up to 30,000 kHz or more) or when v is 0.
std::optional<double> nextFrequency(double kHz, int v);
}  // namespace SliderTuning
