// SPDX-License-Identifier: GPL-3.0-or-later
#include "Stepper.h"

#include "CatCommand.h"

void StepperState::press(int index, bool leftButton)
{
    StepSel = index;
    StepOp = leftButton ? Op::StepDown : Op::StepUp;
    const int size = index == 1 ? 1000 : 100;
    StepKHz = leftButton ? -size : size;
}

void StepperState::release()
{
    StepOp = 0;
    StepSel = Released;
}

StepOutcome applyStep(double kHz, int stepKHz)
{
    StepOutcome o{kHz + stepKHz, false};
    if (stepKHz == 1000 && o.kHz > StepperLimits::TopKHz)
        o.kHz -= StepperLimits::WrapOneMHz;
    else if (stepKHz == 100 && o.kHz > StepperLimits::TopKHz)
        o.kHz -= StepperLimits::WrapHundredKHz;
    else if (o.kHz < StepperLimits::BottomKHz)
        o.reread = true;
    return o;
}
