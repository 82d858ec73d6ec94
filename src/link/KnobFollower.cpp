// SPDX-License-Identifier: GPL-3.0-or-later
#include "KnobFollower.h"

void KnobFollower::setEnabled(bool on)
{
    enabled_ = on;
    if (!on) {
        stop();
        known_[0].reset();
        known_[1].reset();
    }
}

void KnobFollower::stop()
{
    moving_[0] = moving_[1] = false;
    agreeing_[0] = agreeing_[1] = 0;
}

KnobFollower::Next KnobFollower::afterPoll(std::optional<qint64> aSteps, std::optional<qint64> bSteps, qint64 nowMs)
{
    lastFullPollMs_ = nowMs;
    if (!enabled_)
        return Next::TimedPoll;
    if (!aSteps || !bSteps) {
        stop();
        return Next::TimedPoll;
    }
    const std::optional<qint64> seen[2] = {aSteps, bSteps};
    for (int i = 0; i < 2; ++i) {
        // The first poll only learns where the VFOs are.
        if (known_[i] && *known_[i] != *seen[i]) {
            moving_[i] = true;
            agreeing_[i] = 0;
        }
        known_[i] = seen[i];
    }
    return next(nowMs);
}

KnobFollower::Next KnobFollower::afterReading(Vfo vfo, std::optional<qint64> steps, qint64 nowMs)
{
    if (!enabled_ || !following())
        return Next::TimedPoll;
    if (!steps) {
        stop();
        return Next::TimedPoll;
    }
    const int i = static_cast<int>(vfo);
    // Readings only count: the run starts again at each reading that differs from the one before.
    agreeing_[i] = agreeing_[i] > 0 && known_[i] && *known_[i] == *steps ? agreeing_[i] + 1 : 1;
    moving_[i] = agreeing_[i] < RestingReadings;
    known_[i] = steps;
    turn_ = i;
    return next(nowMs);
}

KnobFollower::Next KnobFollower::next(qint64 nowMs)
{
    if (!following())
        return Next::TimedPoll;
    if (nowMs - lastFullPollMs_ >= FullPollEveryMs - FullPollLeadMs)
        return Next::FullPoll;
    // Both moving: take turns.
    const int other = 1 - turn_;
    const int pick = moving_[other] ? other : turn_;
    turn_ = pick;
    return pick == 0 ? Next::ReadA : Next::ReadB;
}
