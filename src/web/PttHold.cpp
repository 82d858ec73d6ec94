// SPDX-License-Identifier: GPL-3.0-or-later
#include "PttHold.h"

#include "WebLimits.h"

PttHold::Action PttHold::press(qint64 nowMs)
{
    lastPressMs_ = nowMs;
    if (state_ != State::Up)
        return Action::None;
    state_ = State::Keyed;
    return Action::Key;
}

PttHold::Action PttHold::release()
{
    const bool wasKeyed = state_ == State::Keyed;
    state_ = State::Up;
    return wasKeyed ? Action::Unkey : Action::None;
}

PttHold::Action PttHold::tick(qint64 nowMs)
{
    if (state_ == State::Up || nowMs - lastPressMs_ < WebLimits::PttSilenceMs)
        return Action::None;
    return release();
}

void PttHold::notKeyed()
{
    if (state_ == State::Keyed)
        state_ = State::HeldNotKeyed;
}
