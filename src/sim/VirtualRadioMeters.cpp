// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's meters: the S-meters from the signals on the bands, the transmit meters while
// keyed, the CW pitch.
#include "VirtualRadio.h"

#include "CatCommand.h"
#include "RadioRecords.h"

#include <iterator>

namespace {
using Lock = std::lock_guard<std::mutex>;

// Transmit meter readings while the transmitter is keyed, by selector - 0x80 (PO, ALC, -, IC, VCC, SWR, Mic).
constexpr int TransmitReadings[] = {150, 70, 0, 130, 205, 25, 90};

constexpr int MeterReplyFiller = 0;  // not used by the program
}  // namespace

QByteArray VirtualRadio::meterReply(int selector) const
{
    int reading = 0;
    if (selector == MeterSelector::MainS)
        reading = signals_.sMeterAt(main().freq10Hz);
    else if (selector == MeterSelector::SubS)
        reading = signals_.sMeterAt(sub().freq10Hz);
    else if (selector == MeterSelector::CwPitch)
        reading = cwPitchByte_;
    else
        reading = transmitMeter(selector);
    QByteArray r(ReplySize::Meter, static_cast<char>(MeterReplyFiller));
    r[0] = static_cast<char>(reading);
    r[ReplySize::Meter - 1] = static_cast<char>(Op::ReadMeter);
    return r;
}

int VirtualRadio::transmitMeter(int selector) const
{
    const int index = selector - MeterSelector::TransmitBase;
    if (!transmitting_ || index < 0 || index >= static_cast<int>(std::size(TransmitReadings)))
        return 0;
    return TransmitReadings[index];
}

int VirtualRadio::cwPitchByte() const
{
    Lock lock(mutex_);
    return cwPitchByte_;
}

void VirtualRadio::setCwPitchByte(int value)
{
    Lock lock(mutex_);
    cwPitchByte_ = value & 0xFF;
}

int VirtualRadio::sMeter(Vfo which) const
{
    Lock lock(mutex_);
    return signals_.sMeterAt(which == Vfo::A ? main().freq10Hz : sub().freq10Hz);
}

void VirtualRadio::addSignal(const BandSignal& s)
{
    Lock lock(mutex_);
    signals_.add(s);
}

void VirtualRadio::clearSignals()
{
    Lock lock(mutex_);
    signals_.clear();
}
