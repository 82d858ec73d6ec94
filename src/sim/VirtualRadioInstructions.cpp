// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's answer to each instruction of the CAT table: what it changes in the state.
#include "VirtualRadio.h"

#include "CatCommand.h"
#include "RadioRecords.h"

#include <algorithm>

namespace {
// Step sizes of instructions 0x07/0x08, by P4, in 10 Hz units.
constexpr qint64 StepSmall10Hz = 10000;   // 100 kHz
constexpr qint64 StepLarge10Hz = 100000;  // 1 MHz
constexpr qint64 Wrap10Hz = 3000000;      // the tuning range wraps at 30 MHz

// Clarifier instruction parameters.
constexpr int RxClarOff = 0x00, RxClarOn = 0x01, TxClarOff = 0x80, TxClarOn = 0x81, ClarClear = 0xFF;

// Filter selection: P1 says which IF of which receiver.
constexpr int FilterSub = 0, FilterMain82 = 1, FilterMain455 = 2;
constexpr int SubFilterBase = 0x80;

void setBool(bool& target, int p4)
{
    if (p4 == 0 || p4 == 1)
        target = p4 == 1;
}
}  // namespace

RadioReply VirtualRadio::execute(const CatCommand& c)
{
    const int p4 = c.p4;
    switch (c.op) {
        case Op::Split:
            setBool(split_, p4);
            break;
        case Op::RecallMemory:
            if (validChannel(p4))
                recall(p4);
            break;
        case Op::WriteMemory:
            if (!validChannel(p4))
                break;
            if (c.p3 == 0) {
                channels_[p4].data = main();
                channels_[p4].masked = false;
                if (memoryMode_ && p4 == currentChannel_)
                    memoryTune_ = false;
            } else if (c.p3 == 1) {
                channels_[p4].masked = true;
            } else if (c.p3 == 2) {
                channels_[p4].masked = false;
            }
            break;
        case Op::VfoSelect:
            // Chooses the VFO the main receiver works (0 VFO-A, 1 VFO-B), leaving a recalled channel.
            if (p4 == 0 || p4 == 1) {
                inUse_ = p4 == 0 ? Vfo::A : Vfo::B;
                memoryMode_ = false;
                memoryTune_ = false;
            }
            break;
        case Op::MemoryToVfoA:
            if (validChannel(p4)) {
                vfoA_ = channels_[p4].data;
                currentChannel_ = p4;
                memoryMode_ = false;
                memoryTune_ = false;
            }
            break;
        case Op::StepUp:
        case Op::StepDown: {
            if (p4 != 0 && p4 != 1)
                break;
            const qint64 step = (p4 == 0 ? StepSmall10Hz : StepLarge10Hz) * (c.op == Op::StepUp ? 1 : -1);
            changeMain([step](VfoState& v) {
                qint64 f = v.freq10Hz + step;
                if (f > RadioLimits::MaxFreq10Hz)
                    f -= Wrap10Hz;
                if (f < RadioLimits::MinFreq10Hz)
                    f += Wrap10Hz;
                v.freq10Hz = std::clamp(f, RadioLimits::MinFreq10Hz, RadioLimits::MaxFreq10Hz);
            });
            break;
        }
        case Op::Clarifier:
            if (p4 == RxClarOff || p4 == RxClarOn)
                changeMain([p4](VfoState& v) { v.rxClar = p4 == RxClarOn; });
            else if (p4 == TxClarOff || p4 == TxClarOn)
                changeMain([p4](VfoState& v) { v.txClar = p4 == TxClarOn; });
            else if (p4 == ClarClear)
                changeMain([](VfoState& v) { v.clar10Hz = 0; });
            break;
        case Op::SetVfoA:
        case Op::SetVfoB: {
            const auto f = decodeBcdFrequency(c.p1, c.p2, c.p3, c.p4);
            if (!f || *f < RadioLimits::MinFreq10Hz || *f > RadioLimits::MaxFreq10Hz)
                break;  // the radio refuses what it cannot tune
            // The VFO in use is the main receiver's: on a recalled channel, that retunes the channel.
            const Vfo target = c.op == Op::SetVfoA ? Vfo::A : Vfo::B;
            if (target == inUse_)
                changeMain([&f](VfoState& v) { v.freq10Hz = *f; });
            else
                stored(target).freq10Hz = *f;
            break;
        }
        case Op::SetMode:
            if (const auto m = modeBytesForCode(p4))
                changeMain([&m](VfoState& v) {
                    v.modeByte = m->modeByte;
                    v.secondVariant = m->secondVariant;
                });
            break;
        case Op::Ptt:
            setBool(transmitting_, p4);
            break;
        case Op::StatusRequest:
            return {statusReply(c)};
        case Op::Edsp:
            edsp_[p4] = c.p3;
            break;
        case Op::Tuner:
            setBool(tunerOn_, p4);
            break;
        case Op::TunerStart:
            tunerOn_ = true;
            ++tunerStarts_;
            break;
        case Op::Dual:
            setBool(dual_, p4);
            break;
        case Op::RepeaterShift:
            if (p4 >= 0 && p4 <= 2)
                changeMain([p4](VfoState& v) { v.shift = p4; });
            break;
        case Op::CopyAtoB:
            // VFO-A as the main receiver shows it (a recalled channel included) when it is in use.
            vfoB_ = inUse_ == Vfo::A ? main() : vfoA_;
            break;
        case Op::FilterSelect:
            setFilter(c.p1, p4);
            break;
        case Op::ReadMeter:
            return {meterReply(c.p1)};
        case Op::ReadFlags:
            return {flagsReply()};
        default:
            break;  // an instruction this radio does not know: no answer
    }
    return {};
}

void VirtualRadio::setFilter(int receiverSelector, int row)
{
    if (receiverSelector == FilterSub) {
        // The sub receiver's codes do not say which IF: both of its IFs take the row.
        const auto code = filterCodeForRow(row - SubFilterBase);
        if (!code)
            return;
        sub().filter82 = *code;
        sub().filter455 = *code;
        return;
    }
    const auto code = filterCodeForRow(row);
    if (!code)
        return;
    if (receiverSelector == FilterMain82)
        changeMain([&code](VfoState& v) { v.filter82 = *code; });
    else if (receiverSelector == FilterMain455)
        changeMain([&code](VfoState& v) { v.filter455 = *code; });
}
