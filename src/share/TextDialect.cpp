// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextDialect.h"

#include "CatCommand.h"

#include <algorithm>

namespace {
constexpr int SMeterRawMax = 255;

// Right-aligned decimal digits, zero-filled.
QByteArray digits(qint64 value, int width)
{
    return QByteArray::number(value).rightJustified(width, '0');
}

char flag(bool on)
{
    return on ? '1' : '0';
}
}  // namespace

std::optional<int> textModeDigit(int modeCode)
{
    switch (modeCode) {
        case ModeCode::Lsb:
        case ModeCode::PktLsb:
            return TextMode::Lsb;
        case ModeCode::Usb:
            return TextMode::Usb;
        case ModeCode::Cw:
            return TextMode::Cw;
        case ModeCode::CwR:
            return TextMode::CwR;
        case ModeCode::Am:
        case ModeCode::AmSync:
            return TextMode::Am;
        case ModeCode::Fm:
        case ModeCode::PktFm:
            return TextMode::Fm;
        case ModeCode::Rtty:
            return TextMode::Fsk;
        case ModeCode::RttyR:
            return TextMode::FskR;
        default:
            return std::nullopt;
    }
}

std::optional<int> modeCodeForTextDigit(int digit)
{
    switch (digit) {
        case TextMode::Lsb:
            return ModeCode::Lsb;
        case TextMode::Usb:
            return ModeCode::Usb;
        case TextMode::Cw:
            return ModeCode::Cw;
        case TextMode::Fm:
            return ModeCode::Fm;
        case TextMode::Am:
            return ModeCode::Am;
        case TextMode::Fsk:
            return ModeCode::Rtty;
        case TextMode::CwR:
            return ModeCode::CwR;
        case TextMode::FskR:
            return ModeCode::RttyR;
        default:
            return std::nullopt;
    }
}

int sMeterSteps(int raw)
{
    const int clamped = std::clamp(raw, 0, SMeterRawMax);
    return (clamped * TextField::MaxSMeter + SMeterRawMax / 2) / SMeterRawMax;
}

QByteArray frequencyField(qint64 hz)
{
    constexpr qint64 Largest = 99999999999LL;
    return digits(std::clamp<qint64>(hz, 0, Largest), TextField::FrequencyDigits);
}

QByteArray infoRecord(const InfoFields& f)
{
    constexpr int StepDigits = 4;
    constexpr int OffsetDigits = 5;
    constexpr int ChannelDigits = 2;
    constexpr int ToneDigits = 2;
    const int offset = std::clamp(f.clarifierHz, -TextField::MaxClarifierHz, TextField::MaxClarifierHz);

    QByteArray r("IF");
    r += frequencyField(f.hz);
    r += digits(TextField::StepHz, StepDigits);
    r += offset < 0 ? '-' : '+';
    r += digits(offset < 0 ? -offset : offset, OffsetDigits);
    r += flag(f.rxClarifier);
    r += flag(f.txClarifier);
    r += '0';  // a TS-2000 field this radio has nothing for
    r += digits(std::clamp(f.memoryChannel, 0, TextField::MaxMemoryChannel), ChannelDigits);
    r += flag(f.transmitting);
    r += static_cast<char>('0' + std::clamp(f.modeDigit, 0, 9));
    r += static_cast<char>('0' + (f.vfo == 1 ? 1 : 0));
    r += '0';  // scan
    r += flag(f.split);
    r += '0';  // tone
    r += digits(TextField::ToneNumber, ToneDigits);
    r += '0';  // repeater shift
    r += ';';
    return r;
}
