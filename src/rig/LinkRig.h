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
// Every door uses the same object: one state, one set of holds and one transmit gate.

#include "CatCommand.h"
#include "Rig.h"

#include <QtGlobal>
#include <functional>
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

    // The clock only times the holds; the wall clock when none is given.
    explicit LinkRig(RadioLink& link, std::shared_ptr<Clock> clock = nullptr);
    ~LinkRig() override;

    // From the poll, on the thread that owns this object. A status view with noLink keeps the
    // last values; a flags view not decoded, or of the model check, changes none of the flags.
    void update(const StatusView& status, const FlagsView& flags, int mainSMeterRaw);
    // "Authorize Tx": withdrawing it while a client keeps the transmitter keyed unkeys it.
    void setTxAuthorized(bool on);
    // The poll's replies that the native sharing port answers from: a set made here makes the
    // records it changes wait there for the next poll too, whichever front door it came through.
    void setPollCache(std::shared_ptr<PollCache> cache) { cache_ = std::move(cache); }

    RigState state() const override { return state_; }
    bool linkUp() const override;
    bool txAuthorized() const override { return txAuthorized_; }
    void setFrequency(RigVfo vfo, qint64 hz) override;
    void setMode(int modeCode) override;
    void setModeB(int modeCode) override;
    void setSplit(bool on) override;
    void setPtt(bool on) override;

private:
    // Posts the job of a set whose effect on the polled records is that of `changes`.
    // With a key, a set of the same key still waiting on the link is replaced (latest wins).
    void postSet(const CatCommand& changes, std::function<void(CatPort&)> job, std::optional<int> replaceKey = {});

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
    bool netKeyed_ = false;  // the last PTT a client sent was "on"
    Hold<qint64> freqA_, freqB_;
    Hold<int> modeA_, modeB_;
    Hold<bool> split_, ptt_;
};
