// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What a sharing port needs of the radio: the polled state, read without touching the wire, and
// setters that queue the radio's own commands.
//
// The names and types are those of the network server's backend (RigBackend), so one backend can
// serve the server and the ports alike: a class deriving from both overrides each setter once. The
// ports need a little more than the server: the clarifiers, the memory channel and VFO-B's mode.

#include "RigBackend.h"

#include <QtGlobal>

struct ClarifierState {
    bool rxOn = false;
    bool txOn = false;
    int offsetHz = 0;  // signed, whole Hz
};

struct SharedRigState {
    RigSnapshot rig;  // both VFOs, both modes, split, transmitting, the main S-meter
    ClarifierState clarifierA;
    ClarifierState clarifierB;
    int memoryChannel = 0;  // the channel number shown on the radio
};

// This radio's main receiver always works VFO-A; it transmits on VFO-B while split is on.
inline RigVfo transmitVfo(const RigSnapshot& s)
{
    return s.split ? RigVfo::B : RigVfo::A;
}

class SharedRig {
public:
    virtual ~SharedRig() = default;

    virtual SharedRigState sharedState() const = 0;
    // False while the serial port is closed: sets are refused rather than silently dropped.
    virtual bool linkUp() const = 0;
    // Setup > Authorize Tx.
    virtual bool txAuthorized() const = 0;

    // Each posts the radio's command and updates the state to what the radio will then hold.
    virtual void setFrequency(RigVfo vfo, qint64 hz) = 0;
    virtual void setMode(int modeCode) = 0;   // the main receiver: VFO-A
    virtual void setModeB(int modeCode) = 0;  // VFO-B, leaving VFO-A in use afterwards
    virtual void setSplit(bool on) = 0;
    virtual void setPtt(bool on) = 0;
};
