// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's memory channels: what they hold when it is switched on, the recall, the full
// block the memory read-out asks for, and their accessors.
#include "VirtualRadio.h"

#include "CatCommand.h"
#include "RadioRecords.h"

namespace {
using Lock = std::lock_guard<std::mutex>;

MemoryChannel presetChannel(double kHz, int modeCode, bool masked = false)
{
    MemoryChannel c;
    c.data.freq10Hz = static_cast<qint64>(kHz * 100 + 0.5);
    const auto m = modeBytesForCode(modeCode);
    c.data.modeByte = m->modeByte;
    c.data.secondVariant = m->secondVariant;
    c.masked = masked;
    return c;
}
}  // namespace

void VirtualRadio::presetChannels()
{
    // Channels nobody has written hold the radio's blank data and are masked.
    for (int n = 1; n <= RadioLimits::Channels; ++n)
        channels_[n] = presetChannel(7000.0, 0, true);
    const struct {
        int n;
        double kHz;
        int mode;
    } presets[] = {{1, 3573.0, 1},   {2, 7074.0, 1},   {3, 10136.0, 1},  {4, 14074.0, 1},   {5, 14200.0, 1},
                   {6, 18100.0, 1},  {7, 21074.0, 1},  {8, 7030.0, 2},   {9, 3650.0, 0},    {10, 9580.0, 4},
                   {11, 28074.0, 1}, {12, 14060.0, 3}, {13, 29600.0, 6}, {100, 14000.0, 2}, {101, 14350.0, 1},
                   {109, 7150.0, 0}, {110, 14230.0, 1}};
    for (const auto& p : presets)
        channels_[p.n] = presetChannel(p.kHz, p.mode);
    channels_[5].data.clar10Hz = -25;  // -0.25 kHz
    channels_[10].data.antennaB = true;
    channels_[14] = presetChannel(21300.0, 1, /*masked=*/true);  // written once, then hidden
}

void VirtualRadio::recall(int channel)
{
    currentChannel_ = channel;
    working_ = channels_[channel].data;
    memoryMode_ = true;
    memoryTune_ = false;
}

QByteArray VirtualRadio::memoryBlock() const
{
    // The block starts with 55 bytes the program skips: here the flags, both VFO records and the
    // current channel, then zeros.
    QByteArray header = flagsReply() + encodeVfoRecord(main()) + encodeVfoRecord(sub());
    header += static_cast<char>(currentChannel_ - 1);
    header.append(ReplySize::MemoryHeader - header.size(), '\0');
    QByteArray block = header;
    for (int n = 1; n <= RadioLimits::Channels; ++n)
        block += encodeChannelRecord(channels_[n]);
    return block;
}

int VirtualRadio::currentChannel() const
{
    Lock lock(mutex_);
    return currentChannel_;
}

void VirtualRadio::setCurrentChannel(int channel)
{
    Lock lock(mutex_);
    if (validChannel(channel))
        currentChannel_ = channel;
}

MemoryChannel VirtualRadio::channel(int number) const
{
    Lock lock(mutex_);
    return validChannel(number) ? channels_[number] : MemoryChannel{};
}

void VirtualRadio::setChannel(int number, const MemoryChannel& c)
{
    Lock lock(mutex_);
    if (validChannel(number))
        channels_[number] = c;
}
