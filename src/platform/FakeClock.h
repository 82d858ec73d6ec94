// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A clock for tests: sleeping advances time at once. Every sleep is written to the shared event log.

#include "Clock.h"

#include <QStringList>
#include <atomic>
#include <functional>

class FakeClock final : public Clock {
public:
    qint64 nowMs() const override { return now_; }
    bool sleepMs(int ms) override
    {
        events.append(QStringLiteral("sleep %1").arg(ms));
        now_ += ms;
        if (onSleep)
            onSleep(ms);
        return true;
    }
    void advance(qint64 ms) { now_ += ms; }

    // The wire as a test sees it: "write 00 00 00 02 10", "sleep 100", "read 16", in order.
    QStringList events;
    std::function<void(int)> onSleep;

private:
    std::atomic<qint64> now_{0};
};
