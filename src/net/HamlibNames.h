// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The names and numbers a rigctld client speaks: mode names and their bits, VFO names, reply codes.

#include "CatCommand.h"

#include <QString>
#include <QStringList>
#include <optional>

// The only reply codes the server sends ("RPRT n").
namespace Rprt {
constexpr int Ok = 0;
constexpr int InvalidArgument = -1;
constexpr int NotImplemented = -4;
constexpr int Rejected = -9;
constexpr int NotAvailable = -11;  // also every unknown command
constexpr int InvalidVfo = -16;
}  // namespace Rprt

// Hamlib's mode bits for the modes this radio has.
namespace ModeBit {
constexpr unsigned AM = 0x1;
constexpr unsigned CW = 0x2;
constexpr unsigned USB = 0x4;
constexpr unsigned LSB = 0x8;
constexpr unsigned RTTY = 0x10;
constexpr unsigned FM = 0x20;
constexpr unsigned CWR = 0x80;
constexpr unsigned RTTYR = 0x100;
constexpr unsigned PKTLSB = 0x400;
constexpr unsigned PKTFM = 0x1000;
constexpr unsigned All = AM | CW | USB | LSB | RTTY | FM | CWR | RTTYR | PKTLSB | PKTFM;
}  // namespace ModeBit

// The radio's mode code for a hamlib mode name; nothing for a name this radio has no mode for.
std::optional<int> modeCodeForName(const QString& name);
// The hamlib name of one of the radio's mode codes (AM synchronous reads as AM); empty when unknown.
QString modeNameForCode(int code);
// The passband reported for a mode code, in Hz: the radio's usual filter for that mode.
int defaultPassbandHz(int code);
// Every mode name a client may send, in the order "M ?" lists them.
QStringList modeNames();

// A VFO token as a client writes it.
enum class VfoToken {
    A,         // VFOA, Main
    B,         // VFOB, Sub
    Current,   // currVFO: the connection's current VFO
    Tx,        // TX: VFO-B while split is on, else VFO-A
    Rx,        // RX: always VFO-A, the main receiver
    Unusable,  // a hamlib VFO name this radio has no counterpart for (VFOC, MEM, ...)
};
// Nothing when the text is not a VFO name at all (so it is a command argument).
std::optional<VfoToken> parseVfoToken(const QString& text);
