// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryJobs.h"

#include "CatPort.h"
#include "ChannelNames.h"
#include "MemFile.h"
#include "MemoryLog.h"
#include "Procedures.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr int FirstUploaded = 1;

// The stored frequency as a whole number of 10 Hz; a file's garbage is sent as whatever digits it has.
qint64 tenHzOf(float freq)
{
    if (!std::isfinite(freq))
        return 0;
    return std::llround(std::clamp(double(freq), -1e15, 1e15));
}
constexpr int VfoA = 1;
}  // namespace

std::optional<QByteArray> readOneChannel(CatPort& port, int channel)
{
    if (!port.isOpen())
        return std::nullopt;
    return port.request(CatCommand::make(Op::StatusRequest, StatusKind::OneChannel, 0, 0, channel), Wait::OneChannel);
}

std::optional<QByteArray> readAllChannels(CatPort& port)
{
    if (!port.isOpen())
        return std::nullopt;
    return port.request(CatCommand::make(Op::StatusRequest, StatusKind::AllMemories), Wait::AllMemories);
}

std::optional<int> queryStartChannel(CatPort& port)
{
    if (!port.isOpen())
        return std::nullopt;
    const QByteArray reply =
        port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentChannel), Wait::ChannelQueryShort);
    return firstByte(reply) + 1;
}

void recallChannel(CatPort& port, int channel)
{
    port.send(CatCommand::make(Op::RecallMemory, channel));
}

void backToVfo(CatPort& port)
{
    port.send(CatCommand::make(Op::VfoSelect, 0));
}

void memoryToVfoA(CatPort& port, int channel)
{
    port.send(CatCommand::make(Op::MemoryToVfoA, channel));
}

void setChannelMask(CatPort& port, int channel, bool masked)
{
    port.send(CatCommand::make(Op::WriteMemory, channel, masked ? MemoryWrite::Mask : MemoryWrite::Unmask));
}

int uploadPercent(int channel)
{
    return static_cast<int>(std::lround(channel * 100.0 / Channels::Uploaded));
}

UploadResult UploadMemory(CatPort& port, const QString& path, const std::function<void(int, int)>& progress,
                          const std::atomic<bool>* cancel)
{
    UploadResult result;
    if (!port.isOpen())
        return result;
    result.ran = true;

    recallChannel(port, FirstUploaded);
    port.send(CatCommand::make(Op::Clarifier, ClarifierParam::RxOff));
    port.send(CatCommand::make(Op::Clarifier, ClarifierParam::TxOff));
    port.send(CatCommand::make(Op::Clarifier, ClarifierParam::ClearOffset));

    QList<MemRecord> records;
    if (!MemFile::load(path, &records, &result.fileError)) {
        qCWarning(lcMemory) << "upload: cannot read" << path << result.fileError;
        records.clear();
    }

    const auto lost = [&port] { return !port.isOpen() || port.failed(); };
    for (int i = FirstUploaded; i <= Channels::Uploaded && i <= records.size(); ++i) {
        if (cancel && cancel->load()) {
            result.cancelled = true;
            break;
        }
        if (lost()) {
            result.portLost = true;
            break;
        }
        const MemRecord& r = records[i - 1];
        bool awake = true;
        port.send(CatCommand::make(Op::SetMode, r.mde));
        awake &= port.sleep(Wait::Upload);
        SetFreq(port, tenHzOf(r.freq), VfoA);
        port.send(CatCommand::make(Op::WriteMemory, i, MemoryWrite::WriteVfoA));
        awake &= port.sleep(Wait::Upload);
        if (r.isMasked()) {
            port.send(CatCommand::make(Op::WriteMemory, i, MemoryWrite::Mask));
            awake &= port.sleep(Wait::Upload);
        }
        if (lost()) {
            // Some of this channel's commands may have gone nowhere.
            result.portLost = true;
            result.failedDuring = i;
            break;
        }
        result.channelsWritten = i;
        if (progress)
            progress(uploadPercent(i), i);
        if (!awake) {  // the link is shutting down
            result.cancelled = true;
            break;
        }
    }

    if (result.portLost) {
        qCWarning(lcMemory) << "upload: the port failed after channel" << result.channelsWritten;
        return result;
    }
    backToVfo(port);
    port.sleep(Wait::Upload);
    qCDebug(lcMemory) << "upload:" << result.channelsWritten << "channels";
    return result;
}
