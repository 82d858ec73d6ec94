// SPDX-License-Identifier: GPL-3.0-or-later
#include "Procedures.h"

#include "CatPort.h"

CatCommand setFreqCommand(qint64 frq, int vfo)
{
    const int op = vfo == 1 ? Op::SetVfoA : vfo == 2 ? Op::SetVfoB : 0;
    // The digits of the number, from the right, into a store of eight places.
    int digit[9] = {};
    qint64 rest = frq < 0 ? -frq : frq;
    for (int k = 1; k <= 8 && rest > 0; ++k) {
        digit[k] = static_cast<int>(rest % 10);
        rest /= 10;
    }
    return CatCommand::make(op, digit[7] + 16 * digit[8], digit[5] + 16 * digit[6], digit[3] + 16 * digit[4],
                            digit[1] + 16 * digit[2]);
}

void SetFreq(CatPort& port, qint64 frq, int vfo)
{
    if (!port.isOpen())
        return;
    port.send(setFreqCommand(frq, vfo));
}

StatusReply Get_Status32(CatPort& port, const std::function<bool(const QByteArray&)>& goOn)
{
    StatusReply r;
    if (!port.isOpen())
        return r;
    r.ran = true;
    r.currentVfo = port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), Wait::StatusCurrentVfo,
                                /*clearFirst=*/true);
    if (goOn && !goOn(r.currentVfo)) {
        r.cut = true;
        r.record = r.currentVfo;
        return r;
    }
    r.bothVfos = port.request(CatCommand::make(Op::StatusRequest, StatusKind::BothVfos), Wait::StatusBothVfos);
    r.record = r.currentVfo + r.bothVfos.mid(ReplySize::VfoRecord, ReplySize::VfoRecord);
    return r;
}

VfoReading readVfoRecord(CatPort& port, bool vfoB)
{
    VfoReading r;
    if (!port.isOpen())
        return r;
    r.ran = true;
    const CatCommand command =
        CatCommand::make(Op::StatusRequest, vfoB ? StatusKind::BothVfos : StatusKind::CurrentVfo);
    r.reply = port.request(command, replyWaitMs(command), /*clearFirst=*/true);
    if (r.reply.size() == expectedReplyBytes(command))
        r.record = r.reply.right(ReplySize::VfoRecord);
    return r;
}

FlagsReply GetFlags(CatPort& port, int arg)
{
    FlagsReply r;
    if (!port.isOpen())
        return r;
    r.ran = true;
    r.bytes = port.request(CatCommand::make(Op::ReadFlags, arg), Wait::Flags, /*clearFirst=*/false, &r.waiting);
    return r;
}

MeterReplies readMeters(CatPort& port, int selector)
{
    MeterReplies m;
    readReceiveMeters(port, m);
    readTransmitMeters(port, selector, m);
    return m;
}

void readReceiveMeters(CatPort& port, MeterReplies& into)
{
    if (!port.isOpen())
        return;
    into.ran = true;
    into.mainS = port.request(CatCommand::make(Op::ReadMeter, 0, 0, 0, MeterSelector::MainS), Wait::Meter, true);
    into.subS = port.request(CatCommand::make(Op::ReadMeter, 0, 0, 0, MeterSelector::SubS), Wait::Meter, true);
}

void readTransmitMeters(CatPort& port, int selector, MeterReplies& into)
{
    if (!port.isOpen())
        return;
    into.ran = true;
    into.transmit = port.request(CatCommand::make(Op::ReadMeter, 0, 0, 0, selector), Wait::Meter, true);
    into.pitch = port.request(CatCommand::make(Op::ReadMeter, 0, 0, 0, MeterSelector::CwPitch), Wait::Meter, true);
}

int firstByte(const QByteArray& reply)
{
    return reply.isEmpty() ? 0 : static_cast<quint8>(reply[0]);
}
