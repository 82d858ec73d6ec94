// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob: while a VFO's frequency moves, its record alone is read and shown, back to
// back. The link thread decides after each reading whether to read again and posts that reading
// itself, so the line does not sit idle while the window paints; a job posted meanwhile is already
// queued and goes first. The window decides after each full poll, and runs the full polls.
#include "Clock.h"
#include "Form1.h"
#include "PollCache.h"
#include "Procedures.h"
#include "RadioLink.h"

#include <cmath>
#include <mutex>

namespace {
constexpr double StepsPerKHz = 100.0;  // the radio's 10 Hz steps

qint64 steps(double kHz)
{
    return std::llround(kHz * StepsPerKHz);
}

// The frequency a VFO's record alone shows, in 10 Hz steps.
qint64 stepsOfRecord(const QByteArray& record, bool vfoB)
{
    StatusRecord store;
    const QByteArray blank(ReplySize::VfoRecord, '\0');
    const StatusView v = decodeStatus(store, vfoB ? blank + record : record + blank);
    return steps(vfoB ? v.b.kHz : v.a.kHz);
}
}  // namespace

// The follower, shared by the window and the link thread's readings.
struct Form1::FollowChain {
    std::mutex mutex;
    KnobFollower follower;
    qint64 postedMs = 0;  // when the last step of the chain was asked for
};

// One reading, on the link thread; it posts the next one itself.
struct Form1::ReadingJob {
    bool vfoB;
    std::shared_ptr<FollowChain> chain;
    std::function<void(Delivery)> back;
    std::shared_ptr<PollCache> cache;
    RadioLink* link;

    void operator()(CatPort& port) const
    {
        const quint64 mark = cache->pollStarting();
        const VfoReading reading = readVfoRecord(port, vfoB);
        cache->storeReading(mark, reading, vfoB);
        const bool b = vfoB;
        back([reading, b](Form1& f) { f.showReading(reading, b); });
        std::optional<qint64> seen;
        if (!reading.record.isEmpty())
            seen = stepsOfRecord(reading.record, vfoB);
        KnobFollower::Next next;
        {
            std::lock_guard lock(chain->mutex);
            const qint64 now = link->clock().nowMs();
            next = chain->follower.afterReading(vfoB ? KnobFollower::Vfo::B : KnobFollower::Vfo::A, seen, now);
            chain->postedMs = now;
        }
        switch (next) {
            case KnobFollower::Next::ReadA:
            case KnobFollower::Next::ReadB:
                link->post(ReadingJob{next == KnobFollower::Next::ReadB, chain, back, cache, link});
                return;
            case KnobFollower::Next::FullPoll:
                back([](Form1& f) { f.followFullPoll(); });
                return;
            case KnobFollower::Next::TimedPoll:
                return;
        }
    }
};

std::shared_ptr<Form1::FollowChain> Form1::makeFollowChain()
{
    return std::make_shared<FollowChain>();
}

void Form1::setFollowKnob(bool on)
{
    followKnob_ = on;
    syncFollower();
}

bool Form1::followingKnob() const
{
    std::lock_guard lock(follow_->mutex);
    return follow_->follower.following();
}

void Form1::restFollowing()
{
    std::lock_guard lock(follow_->mutex);
    follow_->follower.rest();
}

void Form1::syncFollower()
{
    const bool allowed = followKnob_ && link_.fastLink();
    std::lock_guard lock(follow_->mutex);
    if (allowed != follow_->follower.enabled())
        follow_->follower.setEnabled(allowed);
}

bool Form1::followingOn()
{
    std::lock_guard lock(follow_->mutex);
    if (!follow_->follower.following())
        return false;
    // A chain held up behind a long job (an upload) gives way to the timed poll; its reading, when
    // it comes, is shown and ends there.
    if (link_.clock().nowMs() - follow_->postedMs < FollowStallMs)
        return true;
    follow_->follower.rest();
    return false;
}

void Form1::followAfterPoll(bool statusCame, qint64 pollStartedMs)
{
    syncFollower();
    std::optional<qint64> a, b;
    if (statusCame) {
        a = steps(vfoA_);
        b = steps(vfoB_);
    }
    KnobFollower::Next next;
    {
        std::lock_guard lock(follow_->mutex);
        next = follow_->follower.afterPoll(a, b, pollStartedMs);
        follow_->postedMs = link_.clock().nowMs();
    }
    // A poll switched off (a sweep, an upload, the port dialog) ends following with it.
    if (!pollEnabled() || !portOpen()) {
        restFollowing();
        return;
    }
    if (next == KnobFollower::Next::ReadA || next == KnobFollower::Next::ReadB)
        link_.post(ReadingJob{next == KnobFollower::Next::ReadB, follow_, courier(), pollCache_, &link_});
    else if (next == KnobFollower::Next::FullPoll)
        Get_Status32(0);
}

void Form1::followFullPoll()
{
    if (!pollEnabled() || !portOpen()) {
        restFollowing();
        return;
    }
    Get_Status32(0);
}

void Form1::showReading(const VfoReading& reading, bool vfoB)
{
    if (reading.record.isEmpty() || lastRecord_.size() != 2 * ReplySize::VfoRecord)
        return;
    const QByteArray record = vfoB ? lastRecord_.left(ReplySize::VfoRecord) + reading.record
                                   : reading.record + lastRecord_.mid(ReplySize::VfoRecord);
    showStatus(record);
    emit readingShown();
}
