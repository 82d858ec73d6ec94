// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkRig.h"

#include "CatPort.h"
#include "Clock.h"
#include "FlagsDecoder.h"
#include "MeterDecoder.h"
#include "PollCache.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "StatusDecoder.h"
#include "Timing.h"

#include <QLoggingCategory>
#include <QObject>
#include <mutex>

#include <cmath>

Q_LOGGING_CATEGORY(lcRig, "rig", QtWarningMsg)

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

// A client's jobs still waiting on the link: each holds one count for as long as it exists, so a job
// that ran, was replaced by a newer one or was dropped by a closing link gives its count back.
struct WaitingCount {
    explicit WaitingCount(std::shared_ptr<std::atomic<int>> c) : count(std::move(c)) { ++*count; }
    ~WaitingCount() { --*count; }
    WaitingCount(const WaitingCount&) = delete;
    WaitingCount& operator=(const WaitingCount&) = delete;
    std::shared_ptr<std::atomic<int>> count;
};

// Where a client's replies go: the link thread delivers under the lock, and a client that closes
// takes the context away under it, so no reply is handed to a context that is gone. Recursive,
// because an inline link delivers at once, on the same thread.
struct LinkRig::Replies {
    std::recursive_mutex mutex;
    QObject* context = nullptr;
};

struct LinkRig::Client {
    QString door;
    std::shared_ptr<std::atomic<int>> waiting = std::make_shared<std::atomic<int>>(0);
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    std::shared_ptr<Replies> replies = std::make_shared<Replies>();
};

LinkRig::LinkRig(RadioLink& link, std::shared_ptr<Clock> clock)
    : link_(link),
      clock_(clock ? std::move(clock) : std::make_shared<RealClock>()),
      abandoned_(std::make_shared<std::atomic<bool>>(false))
{
}

LinkRig::~LinkRig()
{
    while (!clients_.empty())
        closeClient(clients_.begin()->first);
}

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
    state_.noLink = status.noLink;
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
        if (!status.antCaption.isEmpty())
            state_.antennaText = status.antCaption.trimmed();
    }
    if (flags.decoded && !flags.markV) {
        state_.split = settle(split_, flags.split);
        state_.ptt = settle(ptt_, flags.xmit);
        state_.dual = flags.dual;
        state_.tuner = flags.tuner;
        state_.lockText = flags.lockVisible ? flags.lockCaption : QString();
    }
}

void LinkRig::setTransmitMeter(int selector, int percent)
{
    const TransmitMeter* meter = transmitMeter(selector - MeterSelector::TransmitBase);
    state_.transmitMeterName = meter != nullptr ? QString::fromLatin1(meter->caption) : QString();
    state_.transmitMeterPercent = percent;
}

Rig::ClientId LinkRig::openClient(const QString& door)
{
    const ClientId id = nextClient_++;
    auto client = std::make_unique<Client>();
    client->door = door;
    client->replies->context = client->context.get();
    clients_.emplace(id, std::move(client));
    return id;
}

void LinkRig::closeClient(ClientId client)
{
    const auto it = clients_.find(client);
    if (it == clients_.end())
        return;
    if (keyHolder_ == client) {
        qCWarning(lcRig).noquote() << "unkeying: the" << it->second->door << "client that keyed has gone";
        unkey();
    }
    {
        std::lock_guard lock(it->second->replies->mutex);
        it->second->replies->context = nullptr;
    }
    clients_.erase(it);  // its context goes, and with it any reply still on its way there
}

int LinkRig::clientJobsWaiting(ClientId client) const
{
    const auto it = clients_.find(client);
    return it == clients_.end() ? 0 : it->second->waiting->load();
}

Refusal LinkRig::mayPost(ClientId client) const
{
    if (!linkUp())
        return Refusal::LinkDown;
    if (clientJobsWaiting(client) >= MaxWaitingJobsPerClient)
        return Refusal::Busy;
    return Refusal::None;
}

Refusal LinkRig::mayKey(ClientId client) const
{
    if (!linkUp())
        return Refusal::LinkDown;
    if (!txAuthorized_)
        return Refusal::NotAuthorized;
    if (scopeShown_)
        return Refusal::ScopeSweeping;
    return mayPost(client);
}

void LinkRig::postSet(ClientId client, const CatCommand& changes, std::function<void(CatPort&)> job,
                      std::optional<int> replaceKey)
{
    postJob(client, PollCache::recordsChangedBy(changes), std::move(job), replaceKey);
}

void LinkRig::postJob(ClientId client, unsigned records, std::function<void(CatPort&)> job,
                      std::optional<int> replaceKey)
{
    std::shared_ptr<WaitingCount> counted;
    if (const auto it = clients_.find(client); it != clients_.end())
        counted = std::make_shared<WaitingCount>(it->second->waiting);
    if (!cache_)
        records = 0;
    if (records != 0)
        cache_->setPosted(records);
    auto wrapped = [job = std::move(job), counted, abandoned = abandoned_, cache = cache_, records](CatPort& port) {
        if (abandoned->load()) {
            if (records != 0)
                cache->setDropped(records);
            return;
        }
        job(port);
        if (records != 0)
            cache->setSent(records);
    };
    if (!replaceKey) {
        link_.post(std::move(wrapped));
        return;
    }
    // Replacing a set that still waited: the one in its place will report being sent, once.
    if (!link_.postReplacing(*replaceKey, std::move(wrapped)) && records != 0)
        cache_->setDropped(records);
}

void LinkRig::setTxAuthorized(bool on)
{
    txAuthorized_ = on;
    if (!on && keyHolder_ != NoClient) {
        qCWarning(lcRig) << "unkeying: Authorize Tx withdrawn";
        unkey();
    }
}

void LinkRig::setScopeShown(bool shown)
{
    scopeShown_ = shown;
    if (shown && keyHolder_ != NoClient) {
        qCWarning(lcRig) << "unkeying: the band scope is sweeping";
        unkey();
    }
}

void LinkRig::releaseKeyBeforePortCloses()
{
    if (keyHolder_ == NoClient)
        return;
    qCWarning(lcRig) << "unkeying before the serial port closes";
    unkey();
}

void LinkRig::abandonClientJobs()
{
    abandoned_->store(true);
    releaseKeyBeforePortCloses();
}

void LinkRig::unkey()
{
    const CatCommand command = CatCommand::make(Op::Ptt, 0);
    if (cache_)
        cache_->setPosted(PollCache::recordsChangedBy(command));
    link_.post([command, cache = cache_](CatPort& port) {
        if (port.isOpen())
            port.send(command);
        if (cache)
            cache->setSent(PollCache::recordsChangedBy(command));
    });
    keyHolder_ = NoClient;
    state_.ptt = false;
    hold(ptt_, false);
}

Refusal LinkRig::setFrequency(ClientId client, RigVfo vfo, qint64 hz)
{
    if (const Refusal r = mayPost(client); r != Refusal::None)
        return r;
    const qint64 steps = hz / HzPerStep;  // the radio holds whole 10 Hz steps: round down
    const int which = vfo == RigVfo::B ? SetFreqVfoB : SetFreqVfoA;
    // Latest wins: a set of this VFO still waiting on the link is replaced, from whichever client.
    postSet(
        client, setFreqCommand(steps, which), [steps, which](CatPort& port) { SetFreq(port, steps, which); },
        vfo == RigVfo::B ? JobKey::FrequencyB : JobKey::FrequencyA);
    if (vfo == RigVfo::B) {
        state_.vfoBHz = steps * HzPerStep;
        hold(freqB_, state_.vfoBHz);
    } else {
        state_.vfoAHz = steps * HzPerStep;
        hold(freqA_, state_.vfoAHz);
    }
    return Refusal::None;
}

namespace {
std::function<void(CatPort&)> sendJob(const CatCommand& command)
{
    return [command](CatPort& port) {
        if (port.isOpen())
            port.send(command);
    };
}
}  // namespace

Refusal LinkRig::setMode(ClientId client, int modeCode)
{
    if (const Refusal r = mayPost(client); r != Refusal::None)
        return r;
    const CatCommand command = CatCommand::make(Op::SetMode, modeCode);
    postSet(client, command, sendJob(command));
    state_.modeA = modeCode;
    hold(modeA_, modeCode);
    return Refusal::None;
}

Refusal LinkRig::setModeB(ClientId client, int modeCode)
{
    if (const Refusal r = mayPost(client); r != Refusal::None)
        return r;
    // One job, so no poll runs while VFO-B is the VFO in use: its first record would show VFO-B.
    postSet(client, CatCommand::make(Op::VfoSelect, SelectVfoB), [modeCode](CatPort& port) {
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
    return Refusal::None;
}

Refusal LinkRig::setSplit(ClientId client, bool on)
{
    if (const Refusal r = mayPost(client); r != Refusal::None)
        return r;
    const CatCommand command = CatCommand::make(Op::Split, on ? 1 : 0);
    postSet(client, command, sendJob(command));
    state_.split = on;
    hold(split_, on);
    return Refusal::None;
}

void LinkRig::key(ClientId client, const CatCommand& command, bool on)
{
    postSet(client, command, sendJob(command));
    state_.ptt = on;
    hold(ptt_, on);
    // Whoever unkeys, the transmitter is then free.
    keyHolder_ = on ? client : NoClient;
}

Refusal LinkRig::setPtt(ClientId client, bool on)
{
    // An unkey is never held back by the client's waiting jobs: it must reach the radio.
    if (const Refusal r = on ? mayKey(client) : linkUp() ? Refusal::None : Refusal::LinkDown; r != Refusal::None)
        return r;
    key(client, CatCommand::make(Op::Ptt, on ? 1 : 0), on);
    return Refusal::None;
}

Refusal LinkRig::send(ClientId client, const CatCommand& set)
{
    if (set.op == Op::Ptt && set.p4 == 0)
        return setPtt(client, false);
    if (set.op == Op::Ptt) {
        // Whatever the P4, the radio may take it as a key: gate it as one and remember it.
        if (const Refusal r = mayKey(client); r != Refusal::None)
            return r;
        key(client, set, true);
        return Refusal::None;
    }
    const Refusal r = set.op == Op::TunerStart ? mayKey(client) : mayPost(client);
    if (r != Refusal::None)
        return r;
    postSet(client, set, sendJob(set));
    return Refusal::None;
}

Refusal LinkRig::ask(ClientId client, const CatCommand& read, std::function<void(const QByteArray&)> done)
{
    const auto it = clients_.find(client);
    if (it == clients_.end())
        return Refusal::LinkDown;
    if (const Refusal r = mayPost(client); r != Refusal::None)
        return r;
    // A read changes no record the poll holds.
    constexpr unsigned NoRecords = 0;
    postJob(client, NoRecords,
            [read, done = std::move(done), replies = it->second->replies, link = &link_](CatPort& port) {
                const QByteArray reply = port.isOpen() ? port.request(read, replyWaitMs(read), true) : QByteArray();
                std::lock_guard lock(replies->mutex);
                if (replies->context)
                    link->deliver(replies->context, [done, reply] { done(reply); });
            });
    return Refusal::None;
}
