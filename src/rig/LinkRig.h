// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The radio behind the program's radio link, as every door sees it.
//
// Gets read a state that the main window's poll keeps up to date through update(); nothing of it
// touches the wire. Sets are posted as jobs on the link thread, so they run between polls and never
// interleave with one, and they use the radio's own instructions. After a set the state holds
// what the radio will hold (a frequency rounded down to the radio's 10 Hz steps) until a poll
// confirms it or a short hold runs out, so a client that sets and reads back at once sees its value
// even when a poll that started before the set reports the old one.
//
// Frequencies are the VFO frequencies without the receive clarifier, in Hz.
//
// Every door uses the same object: one state, one set of holds and one transmit gate, which knows
// the client whose key holds the transmitter.

#include "CatCommand.h"
#include "Rig.h"

#include <QtGlobal>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>

class CatPort;
class Clock;
class PollCache;
class RadioLink;
struct StatusView;
struct FlagsView;

class LinkRig final : public Rig {
public:
    // How long a set value outlives polls that disagree with it: one poll still on the wire when
    // the set was posted, the pause, and the next whole poll.
    static constexpr int HoldMs = 2000;
    // The jobs one client may have waiting on the link: enough for a program's burst on a band
    // change (frequency, mode, split, the other VFO), too few to starve the poll and the window.
    static constexpr int MaxWaitingJobsPerClient = 8;

    // The clock only times the holds; the wall clock when none is given.
    explicit LinkRig(RadioLink& link, std::shared_ptr<Clock> clock = nullptr);
    ~LinkRig() override;

    // From the poll, on the thread that owns this object. A status view with noLink keeps the
    // last values; a flags view not decoded, or of the model check, changes none of the flags.
    void update(const StatusView& status, const FlagsView& flags, int mainSMeterRaw);
    // The transmit meter the poll read (its selector, 0x80 + the meter's index) and its gauge.
    void setTransmitMeter(int selector, int percent);
    // "Authorize Tx": withdrawing it while a client keeps the transmitter keyed unkeys it.
    void setTxAuthorized(bool on);
    // The band scope shown: its sweep retunes the radio, so no client may key meanwhile, and one
    // that holds the key is unkeyed.
    void setScopeShown(bool shown);
    // The serial port is about to be closed (by the operator or the program): a client's key is
    // released first.
    void releaseKeyBeforePortCloses();
    // The program is closing: client jobs still waiting are dropped, not run; the unkey is not.
    void abandonClientJobs();
    // The poll's replies that the native sharing port answers from: a set made here makes the
    // records it changes wait there for the next poll too, whichever front door it came through.
    void setPollCache(std::shared_ptr<PollCache> cache) { cache_ = std::move(cache); }

    RigState state() const override { return state_; }
    bool linkUp() const override;
    bool txAuthorized() const override { return txAuthorized_; }
    bool scopeShown() const { return scopeShown_; }

    ClientId openClient(const QString& door) override;
    void closeClient(ClientId client) override;
    bool holdsKey(ClientId client) const override { return client != NoClient && keyHolder_ == client; }
    int clientJobsWaiting(ClientId client) const;

    Refusal setFrequency(ClientId client, RigVfo vfo, qint64 hz) override;
    Refusal setMode(ClientId client, int modeCode) override;
    Refusal setModeB(ClientId client, int modeCode) override;
    Refusal setSplit(ClientId client, bool on) override;
    Refusal setPtt(ClientId client, bool on) override;
    Refusal send(ClientId client, const CatCommand& set) override;
    Refusal ask(ClientId client, const CatCommand& read, std::function<void(const QByteArray&)> done) override;

private:
    static constexpr ClientId NoClient = 0;
    struct Client;
    struct Replies;

    // Why the client may not have another job waiting now (None when it may).
    Refusal mayPost(ClientId client) const;
    Refusal mayKey(ClientId client) const;
    // Posts the job of a set whose effect on the polled records is that of `changes`, as the
    // client's. With a key, a set of the same key still waiting on the link is replaced (latest wins).
    void postSet(ClientId client, const CatCommand& changes, std::function<void(CatPort&)> job,
                 std::optional<int> replaceKey = {});
    // The same with the records it changes given (none for a read).
    void postJob(ClientId client, unsigned records, std::function<void(CatPort&)> job,
                 std::optional<int> replaceKey = {});
    // Sends the key's command (on or off) and remembers whose it is.
    void key(ClientId client, const CatCommand& command, bool on);
    // The unkey of a client's key, whatever else waits: it is never abandoned nor capped.
    void unkey();

    template <typename T>
    struct Hold {
        std::optional<T> value;
        qint64 until = 0;
    };
    template <typename T>
    void hold(Hold<T>& h, T value);
    template <typename T>
    T settle(Hold<T>& h, T polled);

    RadioLink& link_;
    std::shared_ptr<Clock> clock_;
    std::shared_ptr<PollCache> cache_;
    RigState state_;
    bool txAuthorized_ = false;
    bool scopeShown_ = false;
    std::map<ClientId, std::unique_ptr<Client>> clients_;
    ClientId nextClient_ = NoClient + 1;
    ClientId keyHolder_ = NoClient;  // the client whose PTT keyed the transmitter
    std::shared_ptr<std::atomic<bool>> abandoned_;
    Hold<qint64> freqA_, freqB_;
    Hold<int> modeA_, modeB_;
    Hold<bool> split_, ptt_;
};
