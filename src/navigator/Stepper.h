// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The two press-and-hold steppers. While a stepper is held, each tick sends a step instruction and
// moves the navigator's frequency by the step; the radio wraps at the top of its range and the
// navigator follows: +1 MHz above 30,000 kHz comes round to the bottom (30,500 -> 500), +100 kHz
// above 30,000 kHz to 30,000 - 29,900 above it (30,050 -> 150). Below 100 kHz the navigator cannot
// tell where the radio went and asks it.

#include <QtGlobal>

namespace StepperTiming {
constexpr int FirstInterval = 120;  // Timer6 at start
constexpr int AfterRelease = 150;   // Timer6 from the first release on
}  // namespace StepperTiming

namespace StepperLimits {
constexpr double TopKHz = 30000;
constexpr double WrapOneMHz = 30000;      // subtracted after a +1000 step above the top
constexpr double WrapHundredKHz = 29900;  // subtracted after a +100 step above the top
constexpr double BottomKHz = 100;         // below this the frequency is read back from the radio
}  // namespace StepperLimits

struct StepperState {
    static constexpr int Released = 3;

    int StepSel = Released;  // 0: "100 K", 1: "1 Mhz", 3: released
    int StepOp = 0;          // Op::StepUp or Op::StepDown while held
    int StepKHz = 0;         // -100, +100, -1000 or +1000

    // Stepper(index) pressed: the left button tunes down, any other button up.
    void press(int index, bool leftButton);
    void release();
    bool held() const { return StepSel != Released; }
};

struct StepOutcome {
    double kHz = 0;
    bool reread = false;  // below the bottom: the radio must be asked
};

// The navigator frequency after one step, with the wrap rules.
StepOutcome applyStep(double kHz, int stepKHz);
