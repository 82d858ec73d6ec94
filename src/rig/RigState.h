// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The radio's state as every door to it sees it: what the poll last read, with each set a client made
// shown at once (until a poll confirms it).

#include <QString>
#include <QtGlobal>

// The two VFOs as the doors name them.
enum class RigVfo { A = 1, B = 2 };

struct ClarifierState {
    bool rxOn = false;
    bool txOn = false;
    int offsetHz = 0;  // signed, whole Hz
};

struct RigState {
    bool haveStatus = false;  // false until the first status record came in: gets are refused
    qint64 vfoAHz = 0;        // the VFO frequencies without the receive clarifier
    qint64 vfoBHz = 0;
    int modeA = -1;  // the radio's mode codes (0 LSB, 1 USB, ... 11 PKT FM); -1 not known yet
    int modeB = -1;
    bool split = false;
    bool ptt = false;
    int mainSMeterRaw = 0;  // 0..255, the main receiver's S-meter byte
    ClarifierState clarifierA;
    ClarifierState clarifierB;
    int memoryChannel = 0;  // the channel number shown on the radio; the poll does not read it
    // What the main window shows beside the frequencies, for a door that shows the radio (the web
    // panel) rather than answers a program.
    bool noLink = false;  // the last status request had no reply: "No Link"
    bool dual = false;
    bool tuner = false;
    QString lockText;              // "A Lock", "B Lock", "A/B Lk"; empty while no VFO is locked
    QString antennaText;           // "ANT A", "ANT B" or "ANT Rx"; empty until the first status record
    QString transmitMeterName;     // the transmit meter the main window reads: "PO", "ALC", "SWR"...
    int transmitMeterPercent = 0;  // its gauge, 0..100
};

// This radio's main receiver always works VFO-A; it transmits on VFO-B while split is on.
inline RigVfo transmitVfo(const RigState& s)
{
    return s.split ? RigVfo::B : RigVfo::A;
}
