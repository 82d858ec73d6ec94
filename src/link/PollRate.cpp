// SPDX-License-Identifier: GPL-3.0-or-later
#include "PollRate.h"

void PollRate::recordPoll(qint64 atMs)
{
    times_.push_back(atMs);
    while (!times_.empty() && times_.front() < atMs - WindowMs)
        times_.pop_front();
}

std::optional<double> PollRate::rate(qint64 nowMs) const
{
    if (times_.empty() || nowMs - times_.back() > IdleMs)
        return std::nullopt;
    // Only the polls still inside the window; the list is trimmed as polls come, not as time passes.
    auto first = times_.begin();
    while (first != times_.end() && *first < nowMs - WindowMs)
        ++first;
    const auto count = std::distance(first, times_.end());
    if (count < 2)
        return std::nullopt;
    const qint64 span = times_.back() - *first;
    if (span <= 0)
        return std::nullopt;
    return static_cast<double>(count - 1) * 1000.0 / static_cast<double>(span);
}

QString PollRate::text(qint64 nowMs) const
{
    return text(nowMs, QStringLiteral("polls/s"));
}

QString PollRate::text(qint64 nowMs, const QString& unit) const
{
    const auto r = rate(nowMs);
    return r ? QStringLiteral("%1 %2").arg(*r, 0, 'f', 1).arg(unit) : QString();
}
