// SPDX-License-Identifier: GPL-3.0-or-later
#include "QuietTime.h"

#include <algorithm>
#include <functional>

void QuietTime::observeGap(int ms)
{
    // Pauses of line pace are what the minimum is for: only longer ones, an adapter's, count.
    if (ms > MinimumMs)
        current_ = std::max(current_, ms);
}

void QuietTime::endReply()
{
    longest_[static_cast<size_t>(next_)] = current_;
    next_ = (next_ + 1) % RepliesRemembered;
    current_ = 0;
    // A pause counts once two of the recent replies had one as long: an adapter's bursts show in
    // reply after reply, while a single late arrival is the computer's hiccup, not the line's.
    std::array<int, RepliesRemembered> sorted = longest_;
    std::nth_element(sorted.begin(), sorted.begin() + 1, sorted.end(), std::greater<>());
    const int gap = sorted[1];
    quietMs_ = gap > 0 ? std::clamp(gap + MarginMs, MinimumMs, MaximumMs) : MinimumMs;
}
