// SPDX-License-Identifier: GPL-3.0-or-later
#include "NavigatorJobs.h"

#include "CatPort.h"
#include "Procedures.h"
#include "SliderTuning.h"
#include "StatusDecoder.h"
#include "Stepper.h"

#include <cmath>

namespace {
constexpr int FrequencyLastByte = 5;  // bytes 2-5 of the record hold the frequency
int byteAt(const QByteArray& b, int oneBased)
{
    return static_cast<quint8>(b[oneBased - 1]);
}
}  // namespace

std::optional<double> ReadVfoFreq(CatPort& port)
{
    if (!port.isOpen())
        return std::nullopt;
    const QByteArray r =
        port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), Wait::NavigatorRead);
    if (r.size() < FrequencyLastByte)
        return std::nullopt;
    return decodeFrequency(byteAt(r, 2), byteAt(r, 3), byteAt(r, 4), byteAt(r, 5));
}

void sendFrequency(CatPort& port, qint64 frq, int vfo)
{
    SetFreq(port, frq, vfo);
}

void sendMode(CatPort& port, int mode)
{
    port.send(CatCommand::make(Op::SetMode, mode));
}

void recallQuickMemory(CatPort& port, int mode, qint64 frq)
{
    sendMode(port, mode);
    SetFreq(port, frq, 1);
}

std::optional<double> stepperTick(CatPort& port, const StepperState& step, double kHz)
{
    if (!port.isOpen() || !step.held())
        return std::nullopt;
    port.send(CatCommand::make(step.StepOp, step.StepSel));
    port.sleep(Wait::Stepper);
    const StepOutcome o = applyStep(kHz, step.StepKHz);
    if (o.reread)
        return ReadVfoFreq(port).value_or(o.kHz);
    return o.kHz;
}

double releaseTick(CatPort& port, double kHz)
{
    port.clear();
    const double now = ReadVfoFreq(port).value_or(kHz);
    port.clear();
    return now;
}

std::optional<SliderTick> sliderTick(CatPort& port, int v, double kHz)
{
    if (!port.isOpen())
        return std::nullopt;
    SliderTick t;
    t.kHz = ReadVfoFreq(port).value_or(kHz);
    if (const auto next = SliderTuning::nextFrequency(t.kHz, v)) {
        t.kHz = *next;
        SetFreq(port, std::llround(*next * 100), 1);
        t.sent = true;
    }
    return t;
}
