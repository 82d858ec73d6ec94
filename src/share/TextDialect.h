// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The values of the text dialect a sharing port speaks (the one loggers use for a Kenwood TS-2000):
// its mode digits, its S-meter scale, and the fixed-width fields of its replies.

#include <QByteArray>
#include <QtGlobal>
#include <optional>

namespace TextReply {
inline const QByteArray Refused = QByteArrayLiteral("?;");
inline const QByteArray Identity = QByteArrayLiteral("ID019;");  // the TS-2000's model number
inline const QByteArray AutoInfoOff = QByteArrayLiteral("AI0;");
inline const QByteArray PowerOn = QByteArrayLiteral("PS1;");
inline const QByteArray SatelliteOff = QByteArrayLiteral("SA0;");
}  // namespace TextReply

namespace TextMode {
// The dialect's mode digits.
constexpr int Lsb = 1;
constexpr int Usb = 2;
constexpr int Cw = 3;
constexpr int Fm = 4;
constexpr int Am = 5;
constexpr int Fsk = 6;
constexpr int CwR = 7;
constexpr int FskR = 9;
}  // namespace TextMode

namespace TextField {
constexpr int FrequencyDigits = 11;
constexpr int StepHz = 10;  // the "step" field of the information record: the radio's 10 Hz
constexpr int MaxSMeter = 30;
constexpr int SMeterDigits = 4;
constexpr int MaxClarifierHz = 99999;
constexpr int MaxMemoryChannel = 99;
constexpr int ToneNumber = 1;
constexpr int InfoRecordChars = 38;  // with the ';'
}  // namespace TextField

// The digit a client reads for one of the radio's mode codes; modes the dialect lacks read as their
// nearest kin (AM synchronous as AM, packet LSB as LSB, packet FM as FM). Nothing for an unknown code.
std::optional<int> textModeDigit(int modeCode);
// The radio's mode code for a digit a client sets; nothing for a digit the radio has no mode for.
std::optional<int> modeCodeForTextDigit(int digit);

// The main S-meter byte (0..255) on the dialect's 0..30 scale, rounded to the nearest step.
int sMeterSteps(int raw);

// Hz as 11 digits.
QByteArray frequencyField(qint64 hz);

// The fields of the information record ("IF"), in their order.
struct InfoFields {
    qint64 hz = 0;  // the receive VFO, or the transmit VFO while transmitting in split
    int clarifierHz = 0;
    bool rxClarifier = false;
    bool txClarifier = false;
    int memoryChannel = 0;
    bool transmitting = false;
    int modeDigit = 0;  // 0 when the mode is not known
    int vfo = 0;        // 0 VFO-A, 1 VFO-B
    bool split = false;
};
// The whole 38-character record, "IF" to ';'.
QByteArray infoRecord(const InfoFields& f);
