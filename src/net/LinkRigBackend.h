// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The network server's view of the radio behind the program's radio link.
//
// Gets read a snapshot that the main window's poll keeps up to date through update(); nothing of it
// touches the wire. Sets are posted as jobs on the link thread, so they run between polls and never
// interleave with one, and they use the radio's own instructions. After a set the snapshot holds
// what the radio will hold (a frequency rounded down to the radio's 10 Hz steps) until a poll
// confirms it or a short hold runs out, so a client that sets and reads back at once sees its value
// even when a poll that started before the set reports the old one.
//
// Frequencies are the VFO frequencies without the receive clarifier, in Hz.
//
// The sharing ports use the same object through SharedRig: one snapshot, one set of holds and one
// transmit gate for every front door.

#include "CatCommand.h"
#include "RigBackend.h"
#include "SharedRig.h"

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

class LinkRigBackend final : public RigBackend, public SharedRig {
public:
    // How long a set value outlives polls that disagree with it: one poll still on the wire when
    // the set was posted, the pause, and the next whole poll.
    static constexpr int HoldMs = 2000;

    // The clock only times the holds; the wall clock when none is given.
    explicit LinkRigBackend(RadioLink& link, std::shared_ptr<Clock> clock = nullptr);
    ~LinkRigBackend() override;

    // From the poll, on the thread that owns this object. A status view with noLink keeps the
    // last values; a flags view not decoded, or of the model check, changes none of the flags.
    void update(const StatusView& status, const FlagsView& flags, int mainSMeterRaw);
    // "Authorize Tx": withdrawing it while a client keeps the transmitter keyed unkeys it.
    void setTxAuthorized(bool on);
    // The poll's replies that the native sharing port answers from: a set made here makes the
    // records it changes wait there for the next poll too, whichever front door it came through.
    void setPollCache(std::shared_ptr<PollCache> cache) { cache_ = std::move(cache); }

    RigSnapshot snapshot() const override { return snap_; }
    // The snapshot with the clarifiers of the last status record; the poll does not read the memory
    // channel, so it stays 0.
    SharedRigState sharedState() const override;
    bool linkUp() const override;
    bool txAuthorized() const override { return txAuthorized_; }
    void setFrequency(RigVfo vfo, qint64 hz) override;
    void setMode(int modeCode) override;
    void setVfoBMode(int modeCode) override;
    void setModeB(int modeCode) override { setVfoBMode(modeCode); }
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
    RigSnapshot snap_;
    ClarifierState clarA_, clarB_;
    bool txAuthorized_ = false;
    bool netKeyed_ = false;  // the last PTT a client sent was "on"
    Hold<qint64> freqA_, freqB_;
    Hold<int> modeA_, modeB_;
    Hold<bool> split_, ptt_;
};
