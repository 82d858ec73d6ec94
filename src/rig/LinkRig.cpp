// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkRig.h"

#include "CatPort.h"
#include "Clock.h"
#include "FlagsDecoder.h"
#include "PollCache.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "StatusDecoder.h"

#include <cmath>

namespace {
constexpr int HzPerStep = 10;  // the radio's frequency unit on the wire
constexpr int HzPerKHz = 1000;
constexpr int SetFreqVfoA = 1;
constexpr int SetFreqVfoB = 2;
// P4 of the VFO selection instruction: the VFO the radio's main controls then work.
constexpr int SelectVfoA = 0;
constexpr int SelectVfoB = 1;

// The VFO frequency in Hz from the decoded status: the display figure less the receive
// clarifier when it is on, on the radio's 10 Hz grid.
qint64 vfoHz(const VfoStatus& v)
{
    const double kHz = v.kHz - (v.rxClar ? v.clarKHz : 0.0);
    return std::llround(kHz * HzPerKHz / HzPerStep) * HzPerStep;
}

ClarifierState clarifier(const VfoStatus& v)
{
    return {v.rxClar, v.txClar, static_cast<int>(std::lround(v.clarKHz * HzPerKHz))};
}
}  // namespace

LinkRig::LinkRig(RadioLink& link, std::shared_ptr<Clock> clock)
    : link_(link), clock_(clock ? std::move(clock) : std::make_shared<RealClock>())
{
}

LinkRig::~LinkRig() = default;

bool LinkRig::linkUp() const
{
    return link_.portOpen();
}

template <typename T>
void LinkRig::hold(Hold<T>& h, T value)
{
    h.value = value;
    h.until = clock_->nowMs() + HoldMs;
}

template <typename T>
T LinkRig::settle(Hold<T>& h, T polled)
{
    if (!h.value)
        return polled;
    if (*h.value == polled || clock_->nowMs() >= h.until) {
        h.value.reset();
        return polled;
    }
    return *h.value;
}

void LinkRig::update(const StatusView& status, const FlagsView& flags, int mainSMeterRaw)
{
    if (!status.noLink) {
        state_.haveStatus = true;
        state_.vfoAHz = settle(freqA_, vfoHz(status.a));
        state_.vfoBHz = settle(freqB_, vfoHz(status.b));
        if (status.a.mode)
            state_.modeA = settle(modeA_, status.a.mode->code);
        if (status.b.mode)
            state_.modeB = settle(modeB_, status.b.mode->code);
        state_.mainSMeterRaw = mainSMeterRaw;
        state_.clarifierA = clarifier(status.a);
        state_.clarifierB = clarifier(status.b);
    }
    if (flags.decoded && !flags.markV) {
        state_.split = settle(split_, flags.split);
        state_.ptt = settle(ptt_, flags.xmit);
    }
}

void LinkRig::postSet(const CatCommand& changes, std::function<void(CatPort&)> job, std::optional<int> replaceKey)
{
    const auto post = [this, &replaceKey](std::function<void(CatPort&)> j) {
        if (replaceKey)
            return link_.postReplacing(*replaceKey, std::move(j));
        link_.post(std::move(j));
        return true;
    };
    if (!cache_) {
        post(std::move(job));
        return;
    }
    const unsigned records = PollCache::recordsChangedBy(changes);
    cache_->setPosted(records);
    const bool posted = post([job = std::move(job), cache = cache_, records](CatPort& port) {
        job(port);
        cache->setSent(records);
    });
    // Replacing a set that still waited: the one in its place will report being sent, once.
    if (!posted)
        cache_->setDropped(records);
}

void LinkRig::setTxAuthorized(bool on)
{
    txAuthorized_ = on;
    if (!on && netKeyed_)
        setPtt(false);
}

void LinkRig::setFrequency(RigVfo vfo, qint64 hz)
{
    const qint64 steps = hz / HzPerStep;  // the radio holds whole 10 Hz steps: round down
    const int which = vfo == RigVfo::B ? SetFreqVfoB : SetFreqVfoA;
    // Latest wins: a set of this VFO still waiting on the link is replaced, from whichever client.
    postSet(
        setFreqCommand(steps, which), [steps, which](CatPort& port) { SetFreq(port, steps, which); },
        vfo == RigVfo::B ? JobKey::FrequencyB : JobKey::FrequencyA);
    if (vfo == RigVfo::B) {
        state_.vfoBHz = steps * HzPerStep;
        hold(freqB_, state_.vfoBHz);
    } else {
        state_.vfoAHz = steps * HzPerStep;
        hold(freqA_, state_.vfoAHz);
    }
}

void LinkRig::setMode(int modeCode)
{
    const CatCommand command = CatCommand::make(Op::SetMode, modeCode);
    postSet(command, [command](CatPort& port) {
        if (port.isOpen())
            port.send(command);
    });
    state_.modeA = modeCode;
    hold(modeA_, modeCode);
}

void LinkRig::setModeB(int modeCode)
{
    // One job, so no poll runs while VFO-B is the VFO in use: its first record would show VFO-B.
    postSet(CatCommand::make(Op::VfoSelect, SelectVfoB), [modeCode](CatPort& port) {
        if (!port.isOpen())
            return;
        port.send(CatCommand::make(Op::VfoSelect, SelectVfoB));
        port.sleep(Wait::VfoModeStep);
        port.send(CatCommand::make(Op::SetMode, modeCode));
        port.sleep(Wait::VfoModeStep);
        port.send(CatCommand::make(Op::VfoSelect, SelectVfoA));
        port.sleep(Wait::VfoModeStep);
    });
    state_.modeB = modeCode;
    hold(modeB_, modeCode);
}

void LinkRig::setSplit(bool on)
{
    const CatCommand command = CatCommand::make(Op::Split, on ? 1 : 0);
    postSet(command, [command](CatPort& port) {
        if (port.isOpen())
            port.send(command);
    });
    state_.split = on;
    hold(split_, on);
}

void LinkRig::setPtt(bool on)
{
    const CatCommand command = CatCommand::make(Op::Ptt, on ? 1 : 0);
    postSet(command, [command](CatPort& port) {
        if (port.isOpen())
            port.send(command);
    });
    state_.ptt = on;
    hold(ptt_, on);
    netKeyed_ = on;
}
