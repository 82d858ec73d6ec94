// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// How often the poll completes: the figure the status bar shows while polling ("4.1 polls/s").

#include <QString>
#include <QtGlobal>
#include <deque>
#include <optional>

class PollRate {
public:
    // Polls older than this do not count.
    static constexpr qint64 WindowMs = 3000;
    // No poll for this long: the poll is off (or held up by a long job), and no rate is shown.
    static constexpr qint64 IdleMs = 1500;

    void recordPoll(qint64 atMs);
    // Polls per second over the polls of the last window; nothing while fewer than two fall in it or
    // the last one is older than IdleMs.
    std::optional<double> rate(qint64 nowMs) const;
    // "4.1 polls/s", or empty while not polling.
    QString text(qint64 nowMs) const;
    // The same with another unit ("14.8 updates/s").
    QString text(qint64 nowMs, const QString& unit) const;

private:
    std::deque<qint64> times_;
};
