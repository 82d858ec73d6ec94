// SPDX-License-Identifier: GPL-3.0-or-later
#include "RigctlSession.h"

#include "DumpState.h"
#include "SMeterCalibration.h"

#include <cmath>

namespace {

const QString StrengthLevel = QStringLiteral("STRENGTH");
const QString ListQuery = QStringLiteral("?");

bool parseInt(const QString& text, int* value)
{
    bool ok = false;
    *value = text.toInt(&ok);
    return ok;
}

}  // namespace

QString vfoName(RigVfo vfo)
{
    return vfo == RigVfo::B ? QStringLiteral("VFOB") : QStringLiteral("VFOA");
}

RigctlSession::Result RigctlSession::handleLine(const QString& line)
{
    Result result;
    const ParsedLine p = parseCommandLine(line);
    if (p.empty)
        return result;
    const Outcome o = execute(p, result);
    result.reply = format(p, o);
    return result;
}

std::optional<RigVfo> RigctlSession::resolve(VfoToken token) const
{
    switch (token) {
        case VfoToken::A:
        case VfoToken::Rx:
            return RigVfo::A;
        case VfoToken::B:
            return RigVfo::B;
        case VfoToken::Current:
            return current_;
        case VfoToken::Tx:
            return backend_.state().split ? RigVfo::B : RigVfo::A;
        case VfoToken::Unusable:
            break;
    }
    return std::nullopt;
}

RigctlSession::Outcome RigctlSession::execute(const ParsedLine& p, Result& result)
{
    Outcome o;
    RigVfo target = current_;
    if (p.vfo) {
        const auto resolved = resolve(*p.vfo);
        if (!resolved) {
            o.code = Rprt::InvalidVfo;
            return o;
        }
        target = *resolved;
    }
    const RigState s = backend_.state();
    switch (p.command) {
        case RigCommand::Unknown:
            o.code = Rprt::NotAvailable;
            return o;
        case RigCommand::GetFreq:
            return getFreq(target);
        case RigCommand::SetFreq:
            return setFreq(target, p.args);
        case RigCommand::GetMode:
            return getMode(target, QStringLiteral("Mode"), QStringLiteral("Passband"));
        case RigCommand::SetMode:
            return setMode(target, p.args);
        case RigCommand::GetVfo:
            o.labels << QStringLiteral("VFO");
            o.values << vfoName(current_);
            return o;
        case RigCommand::SetVfo:
            return setVfo(p.args);
        case RigCommand::GetSplitVfo:
            o.labels << QStringLiteral("Split") << QStringLiteral("TX VFO");
            o.values << QString::number(s.split ? 1 : 0) << vfoName(s.split ? RigVfo::B : RigVfo::A);
            return o;
        case RigCommand::SetSplitVfo:
            return setSplit(p.args);
        case RigCommand::GetSplitFreq: {
            Outcome f = getFreq(RigVfo::B);
            if (!f.labels.isEmpty())
                f.labels = QStringList{QStringLiteral("TX Frequency")};
            return f;
        }
        case RigCommand::SetSplitFreq:
            return setFreq(RigVfo::B, p.args);
        case RigCommand::GetSplitMode:
            return getMode(RigVfo::B, QStringLiteral("TX Mode"), QStringLiteral("TX Passband"));
        case RigCommand::SetSplitMode:
            return setMode(RigVfo::B, p.args);
        case RigCommand::GetPtt:
            o.labels << QStringLiteral("PTT");
            o.values << QString::number(s.ptt ? 1 : 0);
            return o;
        case RigCommand::SetPtt:
            return setPtt(p.args, result);
        case RigCommand::GetLevel:
            return getLevel(p.args);
        case RigCommand::GetPowerstat:
            // The server only runs beside a radio that is switched on.
            o.labels << QStringLiteral("Power Status");
            o.values << QStringLiteral("1");
            return o;
        case RigCommand::GetLockMode:
            o.labels << QStringLiteral("Locked");
            o.values << QStringLiteral("0");
            o.codeAfterValues = true;
            return o;
        case RigCommand::SetPowerstat:
        case RigCommand::SetLockMode:
            // Accepted and ignored: the program does not switch the radio off or lock it for a client.
            return o;
        case RigCommand::ChkVfo:
            o.labels << QStringLiteral("ChkVFO");
            o.values << QStringLiteral("0");
            return o;
        case RigCommand::DumpState:
            o.values = dumpStateLines();
            o.raw = true;
            return o;
        case RigCommand::Quit:
            result.close = true;
            return o;
    }
    o.code = Rprt::NotAvailable;
    return o;
}

RigctlSession::Outcome RigctlSession::getFreq(RigVfo vfo)
{
    Outcome o;
    const RigState s = backend_.state();
    if (!s.haveStatus) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.labels << QStringLiteral("Frequency");
    o.values << QString::number(vfo == RigVfo::B ? s.vfoBHz : s.vfoAHz);
    return o;
}

RigctlSession::Outcome RigctlSession::setFreq(RigVfo vfo, const QStringList& args)
{
    Outcome o;
    bool ok = false;
    const double hz = args.isEmpty() ? 0.0 : args.front().toDouble(&ok);
    if (!ok || !std::isfinite(hz) || hz < DumpStateValue::RxLowHz || hz > DumpStateValue::RxHighHz) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    if (!backend_.linkUp()) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.code = codeFor(backend_.setFrequency(vfo, std::llround(hz)));
    return o;
}

RigctlSession::Outcome RigctlSession::getMode(RigVfo vfo, const QString& label, const QString& passbandLabel)
{
    Outcome o;
    const RigState s = backend_.state();
    const int code = vfo == RigVfo::B ? s.modeB : s.modeA;
    const QString name = modeNameForCode(code);
    if (!s.haveStatus || name.isEmpty()) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.labels << label << passbandLabel;
    o.values << name << QString::number(defaultPassbandHz(code));
    return o;
}

RigctlSession::Outcome RigctlSession::setMode(RigVfo vfo, const QStringList& args)
{
    Outcome o;
    if (args.isEmpty()) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    if (args.front() == ListQuery) {
        o.labels << QStringLiteral("Modes");
        o.values << modeNames().join(u' ');
        return o;
    }
    const auto code = modeCodeForName(args.front());
    int passband = 0;
    // The passband is accepted (-1 no change, 0 default, or a width) but the filters stay as the
    // operator chose them: the mode command carries no width.
    if (!code || (args.size() > 1 && !parseInt(args.at(1), &passband))) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    if (vfo == RigVfo::B)
        return setModeB(*code);
    if (!backend_.linkUp()) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.code = codeFor(backend_.setMode(*code));
    return o;
}

RigctlSession::Outcome RigctlSession::setModeB(int code)
{
    Outcome o;
    const RigState s = backend_.state();
    // Before the first poll neither VFO-B's mode nor the transmit state is known.
    if (!s.haveStatus || !backend_.linkUp()) {
        o.code = Rprt::Rejected;
        return o;
    }
    if (s.modeB == code)
        return o;  // already so: nothing to send
    // Making VFO-B the VFO in use while transmitting would move the transmitter.
    if (s.ptt) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.code = codeFor(backend_.setModeB(code));
    return o;
}

RigctlSession::Outcome RigctlSession::setVfo(const QStringList& args)
{
    Outcome o;
    if (args.isEmpty()) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    const auto token = parseVfoToken(args.front());
    const auto vfo = token ? resolve(*token) : std::nullopt;
    if (!vfo) {
        o.code = Rprt::InvalidVfo;
        return o;
    }
    current_ = *vfo;
    return o;
}

RigctlSession::Outcome RigctlSession::setSplit(const QStringList& args)
{
    Outcome o;
    int split = 0;
    if (args.isEmpty() || !parseInt(args.front(), &split) || (split != 0 && split != 1)) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    if (args.size() > 1) {
        const auto token = parseVfoToken(args.at(1));
        // Transmitting on VFO-A while receiving on VFO-B would need the VFOs swapped.
        const bool txOnB = token && (*token == VfoToken::B || *token == VfoToken::Tx ||
                                     (*token == VfoToken::Current && current_ == RigVfo::B));
        if (!token || *token == VfoToken::Unusable || (split == 1 && !txOnB)) {
            o.code = Rprt::InvalidVfo;
            return o;
        }
    }
    if (!backend_.linkUp()) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.code = codeFor(backend_.setSplit(split == 1));
    return o;
}

RigctlSession::Outcome RigctlSession::setPtt(const QStringList& args, Result& result)
{
    // 0 receive; 1, 2 and 3 (mic, data) all key the transmitter.
    constexpr int MaxPtt = 3;
    Outcome o;
    int ptt = 0;
    if (args.isEmpty() || !parseInt(args.front(), &ptt) || ptt < 0 || ptt > MaxPtt) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    const bool on = ptt != 0;
    // The rig's gate: the link up, and for a key Authorize Tx and no scope sweeping.
    o.code = codeFor(backend_.setPtt(on));
    if (o.code == Rprt::Ok)
        result.pttKeyed = on;
    return o;
}

int RigctlSession::codeFor(Refusal refusal)
{
    return refusal == Refusal::None ? Rprt::Ok : Rprt::Rejected;
}

RigctlSession::Outcome RigctlSession::getLevel(const QStringList& args)
{
    Outcome o;
    if (args.isEmpty()) {
        o.code = Rprt::InvalidArgument;
        return o;
    }
    if (args.front() == ListQuery) {
        o.labels << QStringLiteral("Levels");
        o.values << StrengthLevel;
        return o;
    }
    if (args.front() != StrengthLevel) {
        o.code = Rprt::NotAvailable;
        return o;
    }
    const RigState s = backend_.state();
    if (!s.haveStatus) {
        o.code = Rprt::Rejected;
        return o;
    }
    o.labels << QStringLiteral("Level Value");
    o.values << QString::number(sMeterDbOverS9(s.mainSMeterRaw));
    return o;
}

QByteArray RigctlSession::format(const ParsedLine& p, const Outcome& o)
{
    const QString rprt = QStringLiteral("RPRT %1").arg(o.code);
    QStringList records;
    if (!p.extended) {
        // Plain: a get prints its values, one a line; a set, or any failure, prints its code.
        if (o.code != Rprt::Ok || o.values.isEmpty())
            return (rprt + u'\n').toLatin1();
        records = o.values;
        if (o.codeAfterValues)
            records << rprt;
        return (records.join(u'\n') + u'\n').toLatin1();
    }
    if (p.command == RigCommand::Unknown)
        return (rprt + u'\n').toLatin1();
    // Extended: the command echoed with its arguments, each value with its label, then the code.
    QString head = p.name + u':';
    if (p.vfo)
        head += u' ' + p.vfoText;
    for (const QString& a : p.args)
        head += u' ' + a;
    records << head;
    if (o.code == Rprt::Ok) {
        for (int i = 0; i < o.values.size(); ++i) {
            if (o.raw || i >= o.labels.size())
                records << o.values.at(i);
            else
                records << o.labels.at(i) + QStringLiteral(": ") + o.values.at(i);
        }
    }
    records << rprt;
    return (records.join(p.separator) + u'\n').toLatin1();
}
