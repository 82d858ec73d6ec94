// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// How long the fast link waits for a quiet line after a reply is complete, learnt from how the
// replies arrive. At line pace the bytes come a few milliseconds apart and a short quiet time
// suffices; a USB serial adapter hands them over in bursts (every 16 ms on the most common chips),
// and a doubled reply's tail then comes a whole burst later: the quiet time must outlast the longest
// pause seen inside two or more of the recent replies, or that tail is taken for the start of the
// next reply.

#include <array>

class QuietTime {
public:
    static constexpr int MinimumMs = 3;   // more than a byte's time at 4800 baud
    static constexpr int MaximumMs = 50;  // beyond any adapter's default burst timer
    static constexpr int MarginMs = 3;
    static constexpr int RepliesRemembered = 8;

    // A pause between two arrivals of bytes of one reply.
    void observeGap(int ms);
    // A reply is complete (or given up on): its longest pause joins the remembered ones.
    void endReply();
    int quietMs() const { return quietMs_; }

private:
    std::array<int, RepliesRemembered> longest_{};  // per reply, newest at next_ - 1
    int next_ = 0;
    int current_ = 0;  // the longest pause of the reply under way
    int quietMs_ = MinimumMs;
};
