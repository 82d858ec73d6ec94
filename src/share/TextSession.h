// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One text-port client's conversation: each command (as the framer cut it, without its ';') becomes
// its reply, answered from the radio's polled state; sets go to the radio and are never answered,
// unless refused ("?;"), because a client checks each set with "ID;" and takes any other reply for
// a fault.
//
// VFOs, as the network server has them: this radio's main receiver always works VFO-A, and no VFO
// swap goes on the wire. "FR1;" only makes VFO-B this client's receive VFO, the one "MD" and "IF"
// speak of; "FR;" reads it back, and other clients are not affected. So a client that sets VFO-B's
// mode the dialect's way, "FR1;MDn;FR0;", sets VFO-B's mode on the radio, and VFO-A is the VFO in
// use before and after. Split is the radio's own: receive on VFO-A, transmit on VFO-B; "FRn;" ends
// it, "FT1;" from a client receiving on VFO-A starts it. The other way round (receive on B,
// transmit on A) this radio cannot do, and is refused.

#include "Rig.h"

#include <QByteArray>

class TextSession {
public:
    // The session is one client of the rig for as long as it lives.
    explicit TextSession(Rig& rig) : rig_(rig, QStringLiteral("text port")) {}

    struct Result {
        QByteArray reply;        // empty for an accepted set
        bool refusedTx = false;  // a key request refused: not authorised, or the scope sweeping
        Refusal why = Refusal::None;
    };
    Result handle(const QByteArray& command);

    // The port's client is taken to be gone (the port switched off, or silent while keyed): a
    // transmitter it keyed is unkeyed.
    void releaseKey();
    RigClient& client() { return rig_; }

    RigVfo receiveVfo() const { return rxVfo_; }

private:
    Result read(const QByteArray& command) const;
    Result setFrequency(RigVfo vfo, const QByteArray& param);
    Result setMode(const QByteArray& param);
    Result setReceiveVfo(const QByteArray& param);
    Result setTransmitVfo(const QByteArray& param);
    Result key(bool on);
    QByteArray info(const RigState& s) const;

    RigClient rig_;
    RigVfo rxVfo_ = RigVfo::A;
};
