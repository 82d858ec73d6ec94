// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob: while a VFO's frequency moves, its record alone is read and shown, back to
// back. Every step runs on the link thread, decides the next one and posts it itself, so the line
// does not sit idle while the window paints; a job posted meanwhile is already queued and goes
// first. The full poll while following is made of steps too (the VFO records, the meters, the
// flags), so nothing posted waits longer than one of them.
#include "Form1Follow.h"
#include "Clock.h"
#include "FlagsDecoder.h"
#include "Form1.h"
#include "PollCache.h"
#include "Procedures.h"
#include "RadioLink.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <mutex>

namespace {
constexpr double StepsPerKHz = 100.0;  // the radio's 10 Hz steps

// The frequency a VFO's record shows, in 10 Hz steps; nothing for a record that did not come whole.
std::optional<qint64> stepsOfRecord(const QByteArray& record, bool vfoB)
{
    if (record.size() != ReplySize::VfoRecord)
        return std::nullopt;
    StatusRecord store;
    const QByteArray blank(ReplySize::VfoRecord, '\0');
    const StatusView v = decodeStatus(store, vfoB ? blank + record : record + blank);
    return std::llround((vfoB ? v.b.kHz : v.a.kHz) * StepsPerKHz);
}
// A full poll that failed ends following: the timed poll, which copes with a misbehaving radio,
// takes over.
KnobFollower::Next failed(KnobFollower& follower, qint64)
{
    follower.rest();
    return KnobFollower::Next::TimedPoll;
}
}  // namespace

// The follower and what the link thread needs to know of the window, under one lock.
struct Form1::FollowChain {
    std::mutex mutex;
    KnobFollower follower;
    qint64 postedMs = 0;   // when the last step of the chain was asked for
    bool pollOn = false;   // the window's poll runs: only then does following start or go on
    bool allowed = false;  // Follow Knob is checked (the fast link is asked on the link itself)
    // The last flags said VFO operation: the first half of the both-VFOs reply is then the record
    // that VFO-A's reading shows, and a full poll while VFO-A is followed need not read it again.
    bool vfoMode = false;
    bool running = false;                        // a step of the chain is on its way: a poll does not start another
    quint64 generation = 0;                      // of the chain running, or of the last one
    int selector = MeterSelector::TransmitBase;  // the transmit meter the window shows
};

template <class Decide>
Form1::FollowSteps::Decision Form1::FollowSteps::decide(Decide&& how, From from) const
{
    using Next = KnobFollower::Next;
    std::lock_guard lock(chain->mutex);
    FollowChain& c = *chain;
    const bool allowed = c.allowed && link->fastLink();
    if (allowed != c.follower.enabled())
        c.follower.setEnabled(allowed);
    c.postedMs = link->clock().nowMs();
    // A step of a chain the window has since let go of (it stalled, the poll was switched off):
    // it ends there, and touches nothing.
    if (from == From::Chain && generation != c.generation)
        return {Next::TimedPoll, generation};
    // A timed poll queued before following began leaves the running chain alone: one chain only.
    if (from == From::TimedPoll && c.running)
        return {Next::TimedPoll, c.generation};
    Next next = Next::TimedPoll;
    if (c.pollOn)
        next = how(c.follower, c.postedMs);
    else
        c.follower.rest();
    const bool step = next != Next::TimedPoll;
    if (from == From::TimedPoll && step)
        ++c.generation;
    c.running = step;
    return {next, c.generation};
}

VfoReading Form1::FollowSteps::read(CatPort& port, bool vfoB) const
{
    const quint64 mark = cache->pollStarting();
    const VfoReading reading = readVfoRecord(port, vfoB);
    cache->storeReading(mark, reading, vfoB);
    back([record = reading.record, vfoB](Form1& f) { f.showReading(record, vfoB); });
    return reading;
}

struct Form1::ReadingJob {
    FollowSteps s;
    bool vfoB;

    void operator()(CatPort& port) const
    {
        const VfoReading reading = s.read(port, vfoB);
        const auto vfo = vfoB ? KnobFollower::Vfo::B : KnobFollower::Vfo::A;
        s.go(s.decide([&](KnobFollower& f, qint64 now) {
            return f.afterReading(vfo, stepsOfRecord(reading.record, vfoB), now);
        }));
    }
};

// The full poll while following: the VFO records, the receivers' meters, the transmit meter and
// the CW pitch, the flags, with a reading of the followed VFO between each two of them, so the
// display is never held for more than one of them. What the readings already bring is not read
// again: with VFO operation and VFO-A followed, the both-VFOs reply alone gives both records.
struct Form1::FullPollJob {
    enum class Step { Records, Reading, ReceiveMeters, TransmitMeters, Flags };
    static constexpr Step Steps[] = {Step::Records,        Step::Reading, Step::ReceiveMeters, Step::Reading,
                                     Step::TransmitMeters, Step::Reading, Step::Flags};
    static_assert(std::count(std::begin(Steps), std::end(Steps), Step::Reading) == KnobFollower::ReadingsInFullPoll,
                  "the follower times the full poll by the readings it carries");
    FollowSteps s;
    int at = 0;  // in Steps
    qint64 startedMs = 0;
    std::optional<qint64> a, b;
    MeterReplies meters;

    void operator()(CatPort& port) const
    {
        bool vfoMode = false, followingA = false;
        int selector = 0;
        {
            std::lock_guard lock(s.chain->mutex);
            if (s.generation != s.chain->generation)
                return;  // let go of by the window
            if (!s.chain->pollOn || !s.chain->follower.following()) {
                s.chain->running = false;
                return;  // switched off meanwhile: the timed poll takes over
            }
            vfoMode = s.chain->vfoMode;
            followingA = s.chain->follower.followingA();
            selector = s.chain->selector;
        }
        FullPollJob next = *this;
        ++next.at;
        switch (Steps[at]) {
            case Step::Records: {
                next.startedMs = port.clock().nowMs();
                const bool bothFromOne = vfoMode && followingA;
                if (!bothFromOne)
                    next.a = stepsOfRecord(s.read(port, false).record, false);
                const quint64 mark = s.cache->pollStarting();
                const VfoReading both = readVfoRecord(port, true);
                s.cache->storeReading(mark, both, true);
                next.b = stepsOfRecord(both.record, true);
                if (bothFromOne && !both.record.isEmpty()) {
                    next.a = stepsOfRecord(both.reply.left(ReplySize::VfoRecord), false);
                    s.back([reply = both.reply](Form1& f) { f.showStatus(reply); });
                } else {
                    s.back([record = both.record](Form1& f) { f.showReading(record, true, /*counted=*/false); });
                }
                if (!next.a || !next.b)
                    return s.go(s.decide(failed));
                break;
            }
            case Step::Reading: {
                const bool vfoB = !followingA;
                const std::optional<qint64> seen = stepsOfRecord(s.read(port, vfoB).record, vfoB);
                const auto vfo = vfoB ? KnobFollower::Vfo::B : KnobFollower::Vfo::A;
                // The poll goes on whatever the reading says, unless it failed or the knob rests:
                // then the timed poll, which reads everything, takes over.
                if (s.decide([&](KnobFollower& f, qint64 now) { return f.afterReading(vfo, seen, now); }).next ==
                    KnobFollower::Next::TimedPoll)
                    return;
                (vfoB ? next.b : next.a) = seen;
                break;
            }
            case Step::ReceiveMeters:
                readReceiveMeters(port, next.meters);
                if (next.meters.mainS.isEmpty() || next.meters.subS.isEmpty())
                    return s.go(s.decide(failed));
                break;
            case Step::TransmitMeters: {
                const quint64 mark = s.cache->pollStarting();
                readTransmitMeters(port, selector, next.meters);
                s.cache->storeMeters(mark, selector, next.meters);
                s.back([m = next.meters](Form1& f) { f.showMeters(m); });
                if (!next.meters.complete())
                    return s.go(s.decide(failed));
                break;
            }
            case Step::Flags: {
                const quint64 mark = s.cache->pollStarting();
                const FlagsReply flags = ::GetFlags(port, 1);
                s.cache->storeFlags(mark, flags);
                s.back([flags](Form1& f) {
                    f.showFlags(1, flags);
                    emit f.pollFinished();
                });
                noteVfoMode(s, flags);
                s.go(s.decide([this](KnobFollower& f, qint64 now) { return f.afterPoll(a, b, startedMs, now); }));
                return;
            }
        }
        s.link->post(next);
    }

    static void noteVfoMode(const FollowSteps& s, const FlagsReply& flags)
    {
        const FlagsView v = decodeFlags(1, flags.waiting, flags.bytes);
        if (!v.decoded || v.markV)
            return;
        std::lock_guard lock(s.chain->mutex);
        s.chain->vfoMode = v.vfo && !v.mem && !v.mtun;
    }
};

void Form1::FollowSteps::go(Decision decision) const
{
    FollowSteps steps = *this;
    steps.generation = decision.generation;
    switch (decision.next) {
        case KnobFollower::Next::ReadA:
        case KnobFollower::Next::ReadB:
            link->post(ReadingJob{steps, decision.next == KnobFollower::Next::ReadB});
            return;
        case KnobFollower::Next::FullPoll:
            link->post(FullPollJob{steps, 0, 0, std::nullopt, std::nullopt, {}});
            return;
        case KnobFollower::Next::TimedPoll:
            return;
    }
}

bool Form1::FollowSteps::chainRunning() const
{
    std::lock_guard lock(chain->mutex);
    return chain->running;
}

std::optional<quint64> Form1::FollowSteps::startsAtFirstRead(const QByteArray& currentVfo) const
{
    const Decision d = decide(
        [&](KnobFollower& f, qint64 now) {
            return f.startsAtFirstRead(stepsOfRecord(currentVfo, false), now) ? KnobFollower::Next::ReadA
                                                                              : KnobFollower::Next::TimedPoll;
        },
        From::TimedPoll);
    if (d.next == KnobFollower::Next::TimedPoll)
        return std::nullopt;
    return d.generation;
}

void Form1::FollowSteps::cutPoll(quint64 mark, const QByteArray& currentVfo, quint64 chainGeneration) const
{
    VfoReading reading;
    reading.ran = true;
    reading.reply = currentVfo;
    if (currentVfo.size() == ReplySize::VfoRecord)
        reading.record = currentVfo;
    cache->storeReading(mark, reading, false);
    back([record = reading.record](Form1& f) { f.showReading(record, false); });
    go({KnobFollower::Next::ReadA, chainGeneration});
}

void Form1::FollowSteps::afterPoll(const StatusReply& status, const FlagsReply* flags, qint64 startedMs) const
{
    // Only a poll that read everything starts following: the meters and flags are then fresh.
    if (!flags)
        return go(decide(failed, From::TimedPoll));
    FullPollJob::noteVfoMode(*this, *flags);
    std::optional<qint64> a, b;
    if (status.record.size() == 2 * ReplySize::VfoRecord) {
        a = stepsOfRecord(status.record.left(ReplySize::VfoRecord), false);
        b = stepsOfRecord(status.record.mid(ReplySize::VfoRecord), true);
    }
    go(decide([&](KnobFollower& f, qint64 now) { return f.afterPoll(a, b, startedMs, now); }, From::TimedPoll));
}

Form1::FollowSteps Form1::followSteps()
{
    return FollowSteps{follow_, courier(), pollCache_, &link_};
}

std::shared_ptr<Form1::FollowChain> Form1::makeFollowChain()
{
    return std::make_shared<FollowChain>();
}

void Form1::setFollowKnob(bool on)
{
    followKnob_ = on;
    std::lock_guard lock(follow_->mutex);
    follow_->allowed = on;
    if (!on) {
        letGoOfChain();
        follow_->follower.setEnabled(false);
    }
}

bool Form1::followingKnob() const
{
    std::lock_guard lock(follow_->mutex);
    return follow_->follower.following();
}

void Form1::setFollowPollOn(bool on)
{
    std::lock_guard lock(follow_->mutex);
    follow_->pollOn = on;
    if (!on)
        letGoOfChain();
}

void Form1::letGoOfChain()
{
    follow_->follower.rest();
    follow_->running = false;
    ++follow_->generation;
}

bool Form1::followingOn()
{
    std::lock_guard lock(follow_->mutex);
    follow_->selector = meterSelector_;
    if (!follow_->follower.following())
        return false;
    // A chain held up behind a long job (an upload) gives way to the timed poll; its reading, when
    // it comes, is shown and ends there.
    if (link_.clock().nowMs() - follow_->postedMs < FollowStallMs)
        return true;
    letGoOfChain();
    return false;
}

void Form1::showReading(const QByteArray& record, bool vfoB, bool counted)
{
    if (record.isEmpty() || lastRecord_.size() != 2 * ReplySize::VfoRecord)
        return;
    showStatus(vfoB ? lastRecord_.left(ReplySize::VfoRecord) + record : record + lastRecord_.mid(ReplySize::VfoRecord));
    if (counted)
        emit readingShown();
}
