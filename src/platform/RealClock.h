// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The wall clock; its sleeps can be interrupted from another thread (closing, cancelling).

#include "Clock.h"

#include <QElapsedTimer>
#include <condition_variable>
#include <mutex>

class RealClock final : public Clock {
public:
    RealClock();
    qint64 nowMs() const override;
    bool sleepMs(int ms) override;
    void interrupt();  // wakes every sleeper; later sleeps return at once until reset()
    void reset();

private:
    QElapsedTimer timer_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool interrupted_ = false;
};
