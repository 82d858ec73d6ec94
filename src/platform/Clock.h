// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Time on the link thread: every wait on the radio is a sleep of this clock.

#include <QtGlobal>

class Clock {
public:
    virtual ~Clock() = default;
    virtual qint64 nowMs() const = 0;
    // Sleeps ms milliseconds; returns early (false) when interrupted.
    virtual bool sleepMs(int ms) = 0;
};
