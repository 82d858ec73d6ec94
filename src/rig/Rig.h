// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What every door to the radio (the network server, the sharing ports) needs of it: the polled state,
// read without touching the wire, and setters that queue the radio's own commands. A door answers
// every get from the state, so its client never waits for the serial line.
//
// Each client of a door opens a client of the rig (RigClient does it for its lifetime) and makes its
// sets as that client. So the rig knows who keyed the transmitter, and unkeys it when that client
// goes, when transmitting stops being authorised or the scope starts sweeping, and before the
// program closes the serial port; and it can cap what one client keeps waiting on the link.

#include "CatCommand.h"
#include "RigState.h"

#include <QByteArray>
#include <QString>
#include <functional>

// Why a set was not passed on to the radio.
enum class Refusal {
    None,           // passed on
    LinkDown,       // the serial port is closed
    NotAuthorized,  // a key while Setup > Authorize Tx is unchecked
    ScopeSweeping,  // a key while the band scope is shown: its sweep retunes the radio
    Busy,           // the client has as many jobs waiting on the link as it may
};

class Rig {
public:
    using ClientId = int;

    virtual ~Rig() = default;

    virtual RigState state() const = 0;
    // False while the serial port is closed: sets are refused rather than silently dropped.
    virtual bool linkUp() const = 0;
    // Setup > Authorize Tx.
    virtual bool txAuthorized() const = 0;

    // door: a name for the log ("network", "native port"...).
    virtual ClientId openClient(const QString& door) = 0;
    // The client is gone: a transmitter it keyed is unkeyed. Sets it made still go out.
    virtual void closeClient(ClientId client) = 0;
    // Whether the client's key is the one holding the transmitter.
    virtual bool holdsKey(ClientId client) const = 0;

    // Each posts the radio's command and updates the state to what the radio will then hold.
    virtual Refusal setFrequency(ClientId client, RigVfo vfo, qint64 hz) = 0;
    virtual Refusal setMode(ClientId client, int modeCode) = 0;  // the main receiver: VFO-A
    // VFO-B's mode: the radio's mode command acts on the VFO in use, so VFO-B is made the VFO in use
    // for it and VFO-A again after it, all as one job.
    virtual Refusal setModeB(ClientId client, int modeCode) = 0;
    virtual Refusal setSplit(ClientId client, bool on) = 0;
    // Keying is gated; unkeying never is (but for a closed port).
    virtual Refusal setPtt(ClientId client, bool on) = 0;
    // Any set of the instruction table, as the radio's own five bytes (the native port). The
    // instructions that transmit (PTT with any P4 but 0, the tuner's start) pass the same gate as
    // setPtt, and a PTT is remembered as setPtt's is.
    virtual Refusal send(ClientId client, const CatCommand& set) = 0;
    // A read the poll does not make, asked of the radio: done() gets the reply as it came (empty
    // when none), on the rig's thread, unless the client has been closed meanwhile.
    virtual Refusal ask(ClientId client, const CatCommand& read, std::function<void(const QByteArray&)> done) = 0;
};

// A door's client of the rig, for as long as this object lives.
class RigClient {
public:
    RigClient(Rig& rig, const QString& door) : rig_(rig), id_(rig.openClient(door)) {}
    ~RigClient() { rig_.closeClient(id_); }
    RigClient(const RigClient&) = delete;
    RigClient& operator=(const RigClient&) = delete;

    Rig& rig() const { return rig_; }
    Rig::ClientId id() const { return id_; }

    RigState state() const { return rig_.state(); }
    bool linkUp() const { return rig_.linkUp(); }
    bool txAuthorized() const { return rig_.txAuthorized(); }
    bool holdsKey() const { return rig_.holdsKey(id_); }
    Refusal setFrequency(RigVfo vfo, qint64 hz) { return rig_.setFrequency(id_, vfo, hz); }
    Refusal setMode(int modeCode) { return rig_.setMode(id_, modeCode); }
    Refusal setModeB(int modeCode) { return rig_.setModeB(id_, modeCode); }
    Refusal setSplit(bool on) { return rig_.setSplit(id_, on); }
    Refusal setPtt(bool on) { return rig_.setPtt(id_, on); }
    Refusal send(const CatCommand& set) { return rig_.send(id_, set); }
    Refusal ask(const CatCommand& read, std::function<void(const QByteArray&)> done)
    {
        return rig_.ask(id_, read, std::move(done));
    }

private:
    Rig& rig_;
    Rig::ClientId id_;
};
