// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The radio's CAT frame: four parameter bytes then the instruction byte, written in one piece.

#include <QByteArray>
#include <QString>
#include <cstdint>

namespace Op {
// Every instruction byte the program sends.
constexpr quint8 Split = 0x01;          // P4: 0 off, 1 on
constexpr quint8 RecallMemory = 0x02;   // P4: channel
constexpr quint8 WriteMemory = 0x03;    // P3: 0 write VFO-A, 1 mask, 2 unmask; P4: channel
constexpr quint8 VfoSelect = 0x05;      // P4: the VFO the main controls work: 0 VFO-A (back to VFO), 1 VFO-B
constexpr quint8 MemoryToVfoA = 0x06;   // P4: channel
constexpr quint8 StepUp = 0x07;         // P4: 0 100 kHz, 1 1 MHz
constexpr quint8 StepDown = 0x08;       // P4 as StepUp
constexpr quint8 Clarifier = 0x09;      // P4: 00/01 rx off/on, 80/81 tx off/on, FF clear
constexpr quint8 SetVfoA = 0x0A;        // BCD frequency
constexpr quint8 SetMode = 0x0C;        // P4: mode code
constexpr quint8 Ptt = 0x0F;            // P4: 1 transmit, 0 receive
constexpr quint8 StatusRequest = 0x10;  // P4: 0 full block, 1 channel, 2 current VFO, 3 both VFOs, 4 one channel (P1)
constexpr quint8 Edsp = 0x75;           // P3 value, P4 function
constexpr quint8 Tuner = 0x81;          // P4: 0 off, 1 on
constexpr quint8 TunerStart = 0x82;
constexpr quint8 Dual = 0x83;           // P4: 0 off, 1 on
constexpr quint8 RepeaterShift = 0x84;  // P4: 0 none, 1 plus, 2 minus
constexpr quint8 CopyAtoB = 0x85;
constexpr quint8 SetVfoB = 0x8A;       // BCD frequency
constexpr quint8 FilterSelect = 0x8C;  // P1: 1 main 8.2 MHz, 2 main 455 kHz, 0 sub; P4: row
constexpr quint8 ReadMeter = 0xF7;     // P1: meter selector
constexpr quint8 ReadFlags = 0xFA;     // P4: from the caller
}  // namespace Op

// Whether the byte is an instruction of the table above: the only ones a sharing client may send.
constexpr bool isTableInstruction(quint8 op)
{
    switch (op) {
        case Op::Split:
        case Op::RecallMemory:
        case Op::WriteMemory:
        case Op::VfoSelect:
        case Op::MemoryToVfoA:
        case Op::StepUp:
        case Op::StepDown:
        case Op::Clarifier:
        case Op::SetVfoA:
        case Op::SetMode:
        case Op::Ptt:
        case Op::StatusRequest:
        case Op::Edsp:
        case Op::Tuner:
        case Op::TunerStart:
        case Op::Dual:
        case Op::RepeaterShift:
        case Op::CopyAtoB:
        case Op::SetVfoB:
        case Op::FilterSelect:
        case Op::ReadMeter:
        case Op::ReadFlags:
            return true;
        default:
            return false;
    }
}

// The radio's mode codes, as instruction 0x0C takes them and the status record decodes them.
namespace ModeCode {
constexpr int Lsb = 0;
constexpr int Usb = 1;
constexpr int Cw = 2;
constexpr int CwR = 3;
constexpr int Am = 4;
constexpr int AmSync = 5;
constexpr int Fm = 6;
constexpr int Rtty = 8;
constexpr int RttyR = 9;
constexpr int PktLsb = 10;
constexpr int PktFm = 11;
}  // namespace ModeCode

// P4 of Op::Clarifier.
namespace ClarifierParam {
constexpr quint8 RxOff = 0x00;
constexpr quint8 RxOn = 0x01;
constexpr quint8 TxOff = 0x80;
constexpr quint8 TxOn = 0x81;
constexpr quint8 ClearOffset = 0xFF;
}  // namespace ClarifierParam

// P3 of Op::WriteMemory.
namespace MemoryWrite {
constexpr quint8 WriteVfoA = 0;
constexpr quint8 Mask = 1;
constexpr quint8 Unmask = 2;
}  // namespace MemoryWrite

namespace StatusKind {
// P4 values of Op::StatusRequest.
constexpr quint8 AllMemories = 0;
constexpr quint8 CurrentChannel = 1;
constexpr quint8 CurrentVfo = 2;
constexpr quint8 BothVfos = 3;
constexpr quint8 OneChannel = 4;
}  // namespace StatusKind

namespace MeterSelector {
constexpr quint8 MainS = 0x00;
constexpr quint8 SubS = 0x01;
constexpr quint8 TransmitBase = 0x80;  // + Mtr index (0x80..0x86)
constexpr quint8 CwPitch = 0xF1;
}  // namespace MeterSelector

// Reply sizes of the radio, in bytes.
namespace ReplySize {
constexpr int VfoRecord = 16;
constexpr int BothVfos = 32;
constexpr int CurrentChannel = 1;
constexpr int ChannelRecord = 16;
constexpr int MemoryHeader = 55;
constexpr int MemoryChannels = 113;
constexpr int AllMemories = MemoryHeader + MemoryChannels * ChannelRecord;  // 1863
constexpr int Meter = 5;
constexpr int Flags = 6;
}  // namespace ReplySize

struct CatCommand {
    quint8 p1 = 0;
    quint8 p2 = 0;
    quint8 p3 = 0;
    quint8 p4 = 0;
    quint8 op = 0;

    // Each parameter is taken from the low byte of a whole number, as the radio expects.
    static CatCommand make(int op, int p4 = 0, int p3 = 0, int p2 = 0, int p1 = 0)
    {
        return CatCommand{static_cast<quint8>(p1 & 0xFF), static_cast<quint8>(p2 & 0xFF),
                          static_cast<quint8>(p3 & 0xFF), static_cast<quint8>(p4 & 0xFF),
                          static_cast<quint8>(op & 0xFF)};
    }

    QByteArray bytes() const
    {
        QByteArray b(5, '\0');
        b[0] = static_cast<char>(p1);
        b[1] = static_cast<char>(p2);
        b[2] = static_cast<char>(p3);
        b[3] = static_cast<char>(p4);
        b[4] = static_cast<char>(op);
        return b;
    }

    // "00 00 00 01 0C": the form used in logs and tests.
    QString hex() const { return QString::fromLatin1(bytes().toHex(' ').toUpper()); }

    bool operator==(const CatCommand&) const = default;
};

inline QString hexBytes(const QByteArray& b)
{
    return QString::fromLatin1(b.toHex(' ').toUpper());
}
