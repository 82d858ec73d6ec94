// SPDX-License-Identifier: GPL-3.0-or-later
#include "KnobFollower.h"

#include <algorithm>

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
    fullPollAsked_ = false;
    moving_[0] = moving_[1] = false;
    agreeing_[0] = agreeing_[1] = 0;
}

KnobFollower::Next KnobFollower::afterPoll(std::optional<qint64> aSteps, std::optional<qint64> bSteps, qint64 startedMs,
                                           qint64 endedMs)
{
    fullPollEndedMs_ = endedMs;
    // One asked for while following carries its readings; a timed poll does not, but the next
    // full poll will.
    fullPollMs_ = std::max<qint64>(0, endedMs - startedMs);
    fullPollAddsReadings_ = !(fullPollAsked_ && following());
    fullPollAsked_ = false;
    askedMs_.reset();
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
    return next(endedMs);
}

bool KnobFollower::startsAtFirstRead(std::optional<qint64> aSteps, qint64 nowMs)
{
    if (!enabled_ || !aSteps || !known_[0] || *known_[0] == *aSteps)
        return false;
    moving_[0] = true;
    agreeing_[0] = 0;
    known_[0] = aSteps;
    turn_ = 0;
    askedMs_ = nowMs;
    return true;
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
    if (askedMs_ && nowMs > *askedMs_)
        readingMs_ = nowMs - *askedMs_;
    // Readings only count: the run starts again at each reading that differs from the one before.
    agreeing_[i] = agreeing_[i] > 0 && known_[i] && *known_[i] == *steps ? agreeing_[i] + 1 : 1;
    moving_[i] = agreeing_[i] < RestingReadings;
    known_[i] = steps;
    turn_ = i;
    const Next n = next(nowMs);
    if (n == Next::ReadA || n == Next::ReadB)
        askedMs_ = nowMs;
    else
        askedMs_.reset();
    return n;
}

KnobFollower::Next KnobFollower::next(qint64 nowMs)
{
    if (!following())
        return Next::TimedPoll;
    const qint64 fullPoll = fullPollMs_ + (fullPollAddsReadings_ ? ReadingsInFullPoll * readingMs_ : 0);
    if (nowMs + readingMs_ + fullPoll + FullPollSpareMs >= fullPollEndedMs_ + FullPollEveryMs) {
        fullPollAsked_ = true;
        return Next::FullPoll;
    }
    // Both moving: take turns.
    const int other = 1 - turn_;
    const int pick = moving_[other] ? other : turn_;
    turn_ = pick;
    return pick == 0 ? Next::ReadA : Next::ReadB;
}
