// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What a page may ask of the radio, one JSON object a WebSocket message:
//   {"t":"tune","vfo":"A","hz":14250000}   go to a frequency (VFO "A" or "B")
//   {"t":"step","vfo":"A","hz":-100}       move by a step, up to 10 MHz either way
//   {"t":"band","index":5}                 a band key of the navigator's band plan (VFO-A)
//   {"t":"mode","vfo":"A","mode":1}        a mode code
//   {"t":"split","on":true}
//   {"t":"copyAB"}  {"t":"swapAB"}         the main window's "A > B" and "A <> B"
//   {"t":"recall","channel":12}            a memory channel, 1 to 113
//   {"t":"ptt","on":true}                  the transmit key held (repeated) or let go
// Anything else, a field missing or of the wrong type, a number out of range or not whole, is refused
// with a reason.

#include "RigState.h"

#include <QByteArray>
#include <QString>
#include <optional>

struct PanelCommand {
    enum class Kind { Tune, Step, Band, Mode, Split, CopyAToB, SwapAB, Recall, Ptt };
    Kind kind = Kind::Tune;
    RigVfo vfo = RigVfo::A;
    qint64 hz = 0;    // Tune: the frequency; Step: the step
    int value = 0;    // Band: the key's index; Mode: the code; Recall: the channel
    bool on = false;  // Split, Ptt

    static constexpr qint64 MaxStepHz = 10000000;
};

struct ParsedPanelCommand {
    std::optional<PanelCommand> command;
    QString error;  // why there is none
};

ParsedPanelCommand parsePanelCommand(const QByteArray& message);
