// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The steps of following the knob, as the main window's poll on the link thread hands over to them.

#include "Form1.h"
#include "KnobFollower.h"

#include <functional>
#include <memory>
#include <optional>

class CatPort;
class PollCache;
class RadioLink;
struct FlagsReply;
struct StatusReply;
struct VfoReading;

// What every step needs, and what they share. All of it runs on the link thread.
struct Form1::FollowSteps {
    std::shared_ptr<FollowChain> chain;
    std::function<void(Delivery)> back;
    std::shared_ptr<PollCache> cache;
    RadioLink* link;
    quint64 generation = 0;  // of the chain this step belongs to

    struct Decision {
        KnobFollower::Next next;
        quint64 generation;  // of the chain the next step belongs to
    };

    // Who asks: a step of the chain, or a timed poll.
    enum class From { Chain, TimedPoll };
    // The follower's decision under the chain's lock; none once the window's poll was switched off.
    template <class Decide>
    Decision decide(Decide&& how, From from = From::Chain) const;
    // Reads one VFO's record, keeps it for the sharing ports and shows it.
    VfoReading read(CatPort& port, bool vfoB) const;
    // Posts the step decided.
    void go(Decision decision) const;

    // The timed poll's hooks: a chain already running (the poll is not needed), its first read (true: stop the poll
    // there, following has begun), the poll stopped there, and the poll's end (flags: nothing when it did not get so
    // far).
    bool chainRunning() const;
    std::optional<quint64> startsAtFirstRead(const QByteArray& currentVfo) const;  // the new chain's
    void cutPoll(quint64 mark, const QByteArray& currentVfo, quint64 chainGeneration) const;
    void afterPoll(const StatusReply& status, const FlagsReply* flags, qint64 startedMs) const;
};
