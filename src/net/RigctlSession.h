// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One client's conversation: turns each command line into its reply, answering gets from the
// backend's snapshot and handing sets to the backend.
//
// VFO selection: this radio's main receiver always works VFO-A, and the server never swaps the
// VFOs (no A<>B on the wire). "V VFOB" only makes VFO-B this connection's current VFO, the target
// of later f/F/m/M without a VFO token. Each connection has its own current VFO, so one client's
// V never changes what another client's f reads. Split means receive on VFO-A, transmit on VFO-B,
// so the TX VFO is VFO-B while split is on (and VFO-A otherwise), and i/I/x/X address VFO-B.
// Mode is set with the radio's mode command, which acts on the VFO in use: VFO-A's directly; VFO-B's
// by making VFO-B the VFO in use for that one command and VFO-A again right after it. That is sent
// only when VFO-B's mode differs, and never while transmitting.

#include "Rig.h"
#include "RigctlParser.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

class RigctlSession {
public:
    // The session is one client of the rig for as long as it lives: a key it holds is released
    // when it goes.
    explicit RigctlSession(Rig& backend) : backend_(backend, QStringLiteral("network")) {}

    struct Result {
        QByteArray reply;              // empty only for a blank line
        bool close = false;            // "q": close the connection after the reply
        std::optional<bool> pttKeyed;  // this line keyed (true) or unkeyed (false) the transmitter
    };
    Result handleLine(const QString& line);

    RigVfo currentVfo() const { return current_; }

private:
    // What one command produced: values, then a reply code.
    struct Outcome {
        QStringList labels;  // for the extended form, one per value
        QStringList values;
        int code = 0;
        bool codeAfterValues = false;  // plain form: "RPRT n" follows the values (get_lock_mode)
        bool raw = false;              // values are whole lines printed as they are (dump_state)
    };
    Outcome execute(const ParsedLine& p, Result& result);
    Outcome getFreq(RigVfo vfo);
    Outcome setFreq(RigVfo vfo, const QStringList& args);
    Outcome getMode(RigVfo vfo, const QString& label, const QString& passbandLabel);
    Outcome setMode(RigVfo vfo, const QStringList& args);
    Outcome setModeB(int code);
    Outcome setVfo(const QStringList& args);
    Outcome setSplit(const QStringList& args);
    Outcome setPtt(const QStringList& args, Result& result);
    Outcome getLevel(const QStringList& args);
    std::optional<RigVfo> resolve(VfoToken token) const;

    static QByteArray format(const ParsedLine& p, const Outcome& o);
    static int codeFor(Refusal refusal);

    RigClient backend_;
    RigVfo current_ = RigVfo::A;
};

QString vfoName(RigVfo vfo);
