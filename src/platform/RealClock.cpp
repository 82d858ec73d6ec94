// SPDX-License-Identifier: GPL-3.0-or-later
#include "RealClock.h"

#include <chrono>

RealClock::RealClock()
{
    timer_.start();
}

qint64 RealClock::nowMs() const
{
    return timer_.elapsed();
}

bool RealClock::sleepMs(int ms)
{
    std::unique_lock lock(mutex_);
    return !wake_.wait_for(lock, std::chrono::milliseconds(ms), [this] { return interrupted_; });
}

void RealClock::interrupt()
{
    {
        std::lock_guard lock(mutex_);
        interrupted_ = true;
    }
    wake_.notify_all();
}

void RealClock::reset()
{
    std::lock_guard lock(mutex_);
    interrupted_ = false;
}
