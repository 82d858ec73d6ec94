// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The byte layouts the virtual radio answers with, and the decoding of the values it is sent.

#include "RadioState.h"

#include <QByteArray>
#include <optional>

// Mode code of instruction 0x0C (0 LSB ... 11 PKT FM) to mode byte and qualifier; nothing for 7 and
// codes outside the table.
struct ModeBytes {
    int modeByte = 0;
    bool secondVariant = false;
};
std::optional<ModeBytes> modeBytesForCode(int code);

// Row of the filter window (0 2.4K, 1 2.0K, 2 500, 3 250, 4 Thru/6.0K) to the code the radio reports
// in byte 9 of a record; nothing for a row outside 0..4.
std::optional<int> filterCodeForRow(int row);

// Frequency of instructions 0x0A/0x8A: packed BCD, P1 the lowest digit pair, in units of 10 Hz.
// Nothing when a nibble is not a decimal digit.
std::optional<qint64> decodeBcdFrequency(quint8 p1, quint8 p2, quint8 p3, quint8 p4);

// Byte 9 (0-based 8): bit 7 the mode qualifier, bits 4-6 the 8.2 MHz filter, bits 0-2 the 455 kHz filter.
int qualifierByte(const VfoState& v);
// Byte 10 (0-based 9): clarifier, repeater shift and antenna bits.
int flagsByte(const VfoState& v);

// The 16-byte VFO record: byte 1 free, 2-5 frequency (1/1600 kHz, big-endian), 6-7 clarifier in the
// one's-complement form the program decodes, 8 mode, 9 qualifier/filters, 10 flags, 11-16 free.
QByteArray encodeVfoRecord(const VfoState& v);

// The 16-byte memory channel record: the VFO shape, with bit 7 of byte 1 the mask and the clarifier
// as a plain signed 16-bit value.
QByteArray encodeChannelRecord(const MemoryChannel& c);

// The clarifier's two bytes in each form, from a count of 1/1600 kHz.
quint16 onesComplementClarifier(int units);
quint16 twosComplementClarifier(int units);

// Frequencies in records count 1/1600 kHz: 16 to a 10 Hz step.
constexpr qint64 RecordUnitsPer10Hz = 16;
