// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextSession.h"

#include "RadioRange.h"
#include "TextDialect.h"

#include <optional>

namespace {
constexpr int NameChars = 2;

bool allDigits(const QByteArray& text)
{
    if (text.isEmpty())
        return false;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

// A VFO digit: 0 VFO-A, 1 VFO-B.
std::optional<RigVfo> vfoDigit(const QByteArray& param)
{
    if (param == "0")
        return RigVfo::A;
    if (param == "1")
        return RigVfo::B;
    return std::nullopt;
}

QByteArray vfoDigitText(RigVfo vfo)
{
    return vfo == RigVfo::B ? QByteArrayLiteral("1") : QByteArrayLiteral("0");
}

TextSession::Result answer(const QByteArray& bytes)
{
    return TextSession::Result{bytes, false};
}

const TextSession::Result Accepted{};
const TextSession::Result Refused{TextReply::Refused, false};

TextSession::Result outcome(Refusal r)
{
    return r == Refusal::None ? Accepted : Refused;
}
}  // namespace

TextSession::Result TextSession::handle(const QByteArray& command)
{
    if (command.size() < NameChars)
        return Refused;
    const QByteArray name = command.left(NameChars);
    const QByteArray param = command.mid(NameChars);

    // Sets that take no parameter.
    if (command == "TX")
        return key(true);
    if (command == "RX")
        return key(false);

    if (param.isEmpty() || command == "SM0")
        return read(command);
    if (name == "AI" || name == "VX" || name == "PS" || name == "SA")
        return allDigits(param) ? Accepted : Refused;
    if (name == "FA" || name == "FB")
        return setFrequency(name == "FB" ? RigVfo::B : RigVfo::A, param);
    if (name == "MD")
        return setMode(param);
    if (name == "FR")
        return setReceiveVfo(param);
    if (name == "FT")
        return setTransmitVfo(param);
    if (name == "TX")
        return param == "0" || param == "1" ? key(true) : Refused;
    return Refused;
}

TextSession::Result TextSession::read(const QByteArray& command) const
{
    if (command == "ID")
        return answer(TextReply::Identity);
    if (command == "AI")
        return answer(TextReply::AutoInfoOff);
    if (command == "PS")
        return answer(TextReply::PowerOn);
    if (command == "SA")
        return answer(TextReply::SatelliteOff);

    // The rest come from the polled state: none before the first status record came in.
    const RigState s = rig_.state();
    if (!s.haveStatus)
        return Refused;
    if (command == "FA")
        return answer("FA" + frequencyField(s.vfoAHz) + ';');
    if (command == "FB")
        return answer("FB" + frequencyField(s.vfoBHz) + ';');
    if (command == "MD") {
        const std::optional<int> digit = textModeDigit(rxVfo_ == RigVfo::B ? s.modeB : s.modeA);
        return digit ? answer("MD" + QByteArray::number(*digit) + ';') : Refused;
    }
    if (command == "FR")
        return answer("FR" + vfoDigitText(rxVfo_) + ';');
    if (command == "FT")
        return answer("FT" + vfoDigitText(s.split ? RigVfo::B : rxVfo_) + ';');
    if (command == "SM0") {
        const QByteArray steps = QByteArray::number(sMeterSteps(s.mainSMeterRaw));
        return answer("SM0" + steps.rightJustified(TextField::SMeterDigits, '0') + ';');
    }
    if (command == "IF")
        return answer(info(s));
    return Refused;
}

QByteArray TextSession::info(const RigState& s) const
{
    // While transmitting in split the record shows the transmit VFO, as the radio's display does;
    // clients know to take the other VFO for the receive VFO then.
    const RigVfo shown = s.ptt && s.split ? transmitVfo(s) : rxVfo_;
    const bool onB = shown == RigVfo::B;
    const ClarifierState& clar = onB ? s.clarifierB : s.clarifierA;
    InfoFields f;
    f.hz = onB ? s.vfoBHz : s.vfoAHz;
    f.clarifierHz = clar.offsetHz;
    f.rxClarifier = clar.rxOn;
    f.txClarifier = clar.txOn;
    f.memoryChannel = s.memoryChannel;
    f.transmitting = s.ptt;
    f.modeDigit = textModeDigit(onB ? s.modeB : s.modeA).value_or(0);
    f.vfo = onB ? 1 : 0;
    f.split = s.split;
    return infoRecord(f);
}

TextSession::Result TextSession::setFrequency(RigVfo vfo, const QByteArray& param)
{
    if (param.size() != TextField::FrequencyDigits || !allDigits(param))
        return Refused;
    const qint64 hz = param.toLongLong();
    if (hz < RadioRange::RxLowHz || hz > RadioRange::RxHighHz || !rig_.linkUp())
        return Refused;
    return outcome(rig_.setFrequency(vfo, hz));
}

TextSession::Result TextSession::setMode(const QByteArray& param)
{
    if (param.size() != 1 || !allDigits(param))
        return Refused;
    const std::optional<int> code = modeCodeForTextDigit(param.toInt());
    if (!code || !rig_.linkUp())
        return Refused;
    return outcome(rxVfo_ == RigVfo::B ? rig_.setModeB(*code) : rig_.setMode(*code));
}

TextSession::Result TextSession::setReceiveVfo(const QByteArray& param)
{
    const std::optional<RigVfo> vfo = vfoDigit(param);
    if (!vfo)
        return Refused;
    const RigState s = rig_.state();
    if (s.split) {
        if (!rig_.linkUp())
            return Refused;
        if (rig_.setSplit(false) != Refusal::None)
            return Refused;
    }
    rxVfo_ = *vfo;
    return Accepted;
}

TextSession::Result TextSession::setTransmitVfo(const QByteArray& param)
{
    const std::optional<RigVfo> vfo = vfoDigit(param);
    if (!vfo)
        return Refused;
    const bool split = *vfo != rxVfo_;
    if (split && rxVfo_ == RigVfo::B)
        return Refused;  // receive on B, transmit on A: not this radio's split
    if (rig_.state().split != split) {
        if (!rig_.linkUp())
            return Refused;
        return outcome(rig_.setSplit(split));
    }
    return Accepted;
}

TextSession::Result TextSession::key(bool on)
{
    const Refusal r = rig_.setPtt(on);
    if (r == Refusal::NotAuthorized || r == Refusal::ScopeSweeping)
        return Result{TextReply::Refused, true, r};
    return outcome(r);
}

void TextSession::releaseKey()
{
    if (rig_.holdsKey())
        rig_.setPtt(false);
}
