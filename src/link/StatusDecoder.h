// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Decoding of the 32-byte status record (VFO-A in bytes 1-16, VFO-B in bytes 17-32).

#include <QByteArray>
#include <QString>
#include <array>
#include <optional>

// The record store: bytes indexed 1 to 32. A short reply overwrites only the bytes it has.
struct StatusRecord {
    std::array<int, 33> b{};
};

struct ModeDecode {
    QString caption;
    int code = 0;
};
// The mode table of the status record; nothing for a mode byte outside it.
std::optional<ModeDecode> decodeMode(int modeByte, int qualifierByte);

// Clarifier offset in kHz from its two bytes, the radio's one's-complement form for negatives.
double decodeClarifier(int high, int low);
// A 32-bit big-endian count of 1/1600 kHz.
double decodeFrequency(int b1, int b2, int b3, int b4);

struct VfoStatus {
    double kHz = 0;  // with the receive clarifier added when it is on, rounded to 10 Hz
    double clarKHz = 0;
    QString freqText;  // "###,##0.#0 "
    QString clarText;  // "#0.#0 "
    bool txClar = false;
    bool rxClar = false;
    std::optional<ModeDecode> mode;  // nothing: caption and code stay as they were
    int filterByte = 0;
    int flagsByte = 0;
};

struct StatusView {
    bool noLink = false;  // empty reply: "No Link  " in the VFO-A display, nothing else changes
    VfoStatus a, b;
    QString dumpA, dumpB;  // the diagnostic texts of Label15 and Label16
    // VFO-A repeater shift and antenna indications.
    bool rptrVisible = false;
    QString rptrCaption;  // empty: unchanged
    QString antCaption;
};

inline const QString NoLinkText = QStringLiteral("No Link  ");

StatusView decodeStatus(StatusRecord& store, const QByteArray& reply);
