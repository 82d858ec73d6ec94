// SPDX-License-Identifier: GPL-3.0-or-later
#include "SweepJob.h"

#include "CatPort.h"
#include "MeterDecoder.h"
#include "Procedures.h"
#include "ScopeLog.h"

namespace {
CatCommand meterRequest(int receiver)
{
    return CatCommand::make(Op::ReadMeter, 0, 0, 0, receiver - 1);
}
}  // namespace

QByteArray readScopeMeter(CatPort& port, int receiver)
{
    return port.request(meterRequest(receiver), Wait::ScopeMeter);
}

SweepOutcome runSweepPass(CatPort& port, const SweepPlan& plan, int receiver, const std::atomic<bool>& cancel,
                          const SweepCallbacks& callbacks)
{
    SweepOutcome out;
    qCDebug(lcScope) << "sweep" << plan.startKHz() << "to" << plan.endKHz() << "in" << plan.samples << "samples, rx"
                     << receiver;
    for (int i = 0; i < plan.samples; ++i) {
        SweepSample s;
        s.index = i;
        s.freq10Hz = plan.sample10Hz(i);
        SetFreq(port, s.freq10Hz, receiver);
        const bool slept = port.sleep(Wait::ScopeTune);
        if (callbacks.tuned)
            callbacks.tuned(s);
        const QByteArray reply = slept ? readScopeMeter(port, receiver) : QByteArray();
        s.replied = !reply.isEmpty();
        if (s.replied) {
            s.raw = static_cast<quint8>(reply.at(0));
            s.level = meterPercent(s.raw);
        }
        if (callbacks.sample)
            callbacks.sample(s);
        ++out.samplesRun;
        // A closed or vanished port, or a program that is closing, ends the pass as a cancel does.
        if (cancel.load() || port.cancelled() || !slept || !port.isOpen()) {
            out.cancelled = i + 1 < plan.samples;
            break;
        }
    }
    return out;
}

void tuneToCentre(CatPort& port, double centreKHz, int receiver)
{
    SetFreq(port, setFreqArgument(centreKHz), receiver);
}
