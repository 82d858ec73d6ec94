// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob: while a VFO's frequency moves, its record alone is read and shown, back to
// back, each reading posted only after the last one is on the display, so anything else posted to
// the link meanwhile goes first.
#include "Clock.h"
#include "Form1.h"
#include "PollCache.h"
#include "Procedures.h"
#include "RadioLink.h"

#include <cmath>

namespace {
constexpr double StepsPerKHz = 100.0;  // the radio's 10 Hz steps

qint64 steps(double kHz)
{
    return std::llround(kHz * StepsPerKHz);
}
}  // namespace

void Form1::setFollowKnob(bool on)
{
    followKnob_ = on;
    syncFollower();
}

void Form1::syncFollower()
{
    const bool allowed = followKnob_ && link_.fastLink();
    if (allowed != follower_.enabled())
        follower_.setEnabled(allowed);
}

void Form1::followAfterPoll(bool statusCame)
{
    syncFollower();
    std::optional<qint64> a, b;
    if (statusCame) {
        a = steps(vfoA_);
        b = steps(vfoB_);
    }
    followNext(follower_.afterPoll(a, b, link_.clock().nowMs()));
}

void Form1::followNext(KnobFollower::Next next)
{
    // A poll switched off (a sweep, an upload, the port dialog) ends following with it.
    if (!pollEnabled() || !portOpen()) {
        follower_.rest();
        return;
    }
    followPostedMs_ = link_.clock().nowMs();
    switch (next) {
        case KnobFollower::Next::TimedPoll:
            return;
        case KnobFollower::Next::FullPoll:
            Get_Status32(0);
            return;
        case KnobFollower::Next::ReadA:
            readVfo(false);
            return;
        case KnobFollower::Next::ReadB:
            readVfo(true);
            return;
    }
}

bool Form1::followingOn()
{
    if (!follower_.following())
        return false;
    // A chain held up behind a long job (an upload) gives way to the timed poll; its reading, when
    // it comes, is shown and ends there.
    if (link_.clock().nowMs() - followPostedMs_ < FollowStallMs)
        return true;
    follower_.rest();
    return false;
}

void Form1::readVfo(bool vfoB)
{
    auto back = courier();
    link_.post([back, vfoB, cache = pollCache_](CatPort& port) {
        const quint64 mark = cache->pollStarting();
        const VfoReading reading = readVfoRecord(port, vfoB);
        cache->storeReading(mark, reading, vfoB);
        back([reading, vfoB](Form1& f) { f.showReading(reading, vfoB); });
    });
}

void Form1::showReading(const VfoReading& reading, bool vfoB)
{
    syncFollower();
    std::optional<qint64> seen;
    if (!reading.record.isEmpty() && lastRecord_.size() == 2 * ReplySize::VfoRecord) {
        const QByteArray record = vfoB ? lastRecord_.left(ReplySize::VfoRecord) + reading.record
                                       : reading.record + lastRecord_.mid(ReplySize::VfoRecord);
        showStatus(record);
        seen = steps(vfoB ? vfoB_ : vfoA_);
        emit readingShown();
    }
    followNext(follower_.afterReading(vfoB ? KnobFollower::Vfo::B : KnobFollower::Vfo::A, seen, link_.clock().nowMs()));
}
