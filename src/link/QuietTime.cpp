// SPDX-License-Identifier: GPL-3.0-or-later
#include "QuietTime.h"

#include <algorithm>

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
    const int gap = *std::max_element(longest_.begin(), longest_.end());
    quietMs_ = gap > 0 ? std::clamp(gap + MarginMs, MinimumMs, MaximumMs) : MinimumMs;
}
