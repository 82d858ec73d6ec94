// SPDX-License-Identifier: GPL-3.0-or-later
#include "RadioRecords.h"

#include "CatCommand.h"

namespace {
constexpr int QualifierBit = 0x80;
constexpr int MaskedBit = 0x80;

namespace FlagBit {
constexpr int TxClar = 0x01;
constexpr int RxClar = 0x02;
constexpr int ShiftPlus = 0x04;
constexpr int ShiftMinus = 0x08;
constexpr int AntennaB = 0x10;
constexpr int RxAntenna = 0x20;
}  // namespace FlagBit

void putBigEndian32(QByteArray& b, int at, quint32 value)
{
    b[at] = static_cast<char>((value >> 24) & 0xFF);
    b[at + 1] = static_cast<char>((value >> 16) & 0xFF);
    b[at + 2] = static_cast<char>((value >> 8) & 0xFF);
    b[at + 3] = static_cast<char>(value & 0xFF);
}

void putBigEndian16(QByteArray& b, int at, quint16 value)
{
    b[at] = static_cast<char>((value >> 8) & 0xFF);
    b[at + 1] = static_cast<char>(value & 0xFF);
}

// The shape both records share (0-based): 1-4 frequency, 5-6 clarifier, 7 mode, 8 qualifier, 9 flags.
QByteArray encodeCommon(const VfoState& v, quint16 clarifier)
{
    QByteArray b(ReplySize::VfoRecord, '\0');
    putBigEndian32(b, 1, static_cast<quint32>(v.freq10Hz * RecordUnitsPer10Hz));
    putBigEndian16(b, 5, clarifier);
    b[7] = static_cast<char>(v.modeByte & 0xFF);
    b[8] = static_cast<char>(qualifierByte(v));
    b[9] = static_cast<char>(flagsByte(v));
    return b;
}
}  // namespace

std::optional<ModeBytes> modeBytesForCode(int code)
{
    switch (code) {
        case ModeCode::Lsb:
            return ModeBytes{0, false};  // LSB
        case ModeCode::Usb:
            return ModeBytes{1, false};  // USB
        case ModeCode::Cw:
            return ModeBytes{2, false};  // CW
        case ModeCode::CwR:
            return ModeBytes{2, true};  // CW reverse
        case ModeCode::Am:
            return ModeBytes{3, false};  // AM
        case ModeCode::AmSync:
            return ModeBytes{3, true};  // AM synchronous
        case ModeCode::Fm:
            return ModeBytes{4, false};  // FM
        case ModeCode::Rtty:
            return ModeBytes{5, false};  // RTTY normal
        case ModeCode::RttyR:
            return ModeBytes{5, true};  // RTTY reverse
        case ModeCode::PktLsb:
            return ModeBytes{6, false};  // packet LSB
        case ModeCode::PktFm:
            return ModeBytes{6, true};  // packet FM
        default:
            return std::nullopt;
    }
}

std::optional<int> filterCodeForRow(int row)
{
    // The window's rows 0..3 are codes 1..4; its last row (Thru / 6.0K) is code 0.
    static constexpr int codes[] = {1, 2, 3, 4, 0};
    if (row < 0 || row > 4)
        return std::nullopt;
    return codes[row];
}

std::optional<qint64> decodeBcdFrequency(quint8 p1, quint8 p2, quint8 p3, quint8 p4)
{
    qint64 value = 0;
    for (const quint8 pair : {p4, p3, p2, p1}) {
        const int high = pair >> 4;
        const int low = pair & 0x0F;
        if (high > 9 || low > 9)
            return std::nullopt;
        value = value * 100 + high * 10 + low;
    }
    return value;
}

int qualifierByte(const VfoState& v)
{
    return (v.secondVariant ? QualifierBit : 0) | ((v.filter82 & 0x07) << 4) | (v.filter455 & 0x07);
}

int flagsByte(const VfoState& v)
{
    int f = 0;
    if (v.txClar)
        f |= FlagBit::TxClar;
    if (v.rxClar)
        f |= FlagBit::RxClar;
    if (v.shift == 1)
        f |= FlagBit::ShiftPlus;
    if (v.shift == 2)
        f |= FlagBit::ShiftMinus;
    if (v.antennaB)
        f |= FlagBit::AntennaB;
    if (v.rxAntenna)
        f |= FlagBit::RxAntenna;
    return f;
}

quint16 onesComplementClarifier(int units)
{
    // Negative offsets are sent inverted: -1 unit is FF FE, and FF FF reads back as 0.
    return units < 0 ? static_cast<quint16>(0xFFFF + units) : static_cast<quint16>(units);
}

quint16 twosComplementClarifier(int units)
{
    return static_cast<quint16>(static_cast<qint16>(units));
}

QByteArray encodeVfoRecord(const VfoState& v)
{
    return encodeCommon(v, onesComplementClarifier(v.clar10Hz * RecordUnitsPer10Hz));
}

QByteArray encodeChannelRecord(const MemoryChannel& c)
{
    QByteArray b = encodeCommon(c.data, twosComplementClarifier(c.data.clar10Hz * RecordUnitsPer10Hz));
    if (c.masked)
        b[0] = static_cast<char>(MaskedBit);
    return b;
}
