// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryWriteBack.h"

#include "CatPort.h"
#include "FlagsDecoder.h"
#include "MemoryJobs.h"
#include "MemoryLog.h"
#include "MemoryReadout.h"
#include "Procedures.h"
#include "StatusDecoder.h"

#include <cmath>

namespace {
constexpr int VfoA = 1;
constexpr int FlagsArg = 1;
constexpr int CountsPer10Hz = 16;  // the records count 1/1600 kHz
constexpr int PhaseSteps = 3;      // backup read, write, read-back

int byteAt(const QByteArray& b, int i)
{
    return static_cast<quint8>(b[i]);
}

qint64 baseFreq10Hz(const QByteArray& record)
{
    const quint32 count = (quint32(byteAt(record, 1)) << 24) | (quint32(byteAt(record, 2)) << 16) |
                          (quint32(byteAt(record, 3)) << 8) | quint32(byteAt(record, 4));
    return std::llround(double(count) / CountsPer10Hz);
}

RadioPlace findPlace(CatPort& port)
{
    RadioPlace place;
    const FlagsReply flags = GetFlags(port, FlagsArg);
    const FlagsView view = decodeFlags(FlagsArg, flags.waiting, flags.bytes);
    place.onMemory = view.decoded && (view.mem || view.mtun) && !view.vfo;
    place.channel = queryStartChannel(port).value_or(1);
    if (place.onMemory) {
        // VFO-A is not what the radio shows while it is on a channel.
        backToVfo(port);
        port.sleep(Wait::Upload);
    }
    const VfoReading a = readVfoRecord(port, false);
    if (a.record.size() >= ChannelDecodedBytes) {
        if (const std::optional<ModeDecode> mode = decodeMode(byteAt(a.record, 7), byteAt(a.record, 8))) {
            place.vfoAKnown = true;
            place.vfoAFreq10Hz = baseFreq10Hz(a.record);
            place.vfoAMode = mode->code;
        }
    }
    return place;
}

void putBack(CatPort& port, const RadioPlace& place)
{
    if (!place.onMemory) {
        // The memory pointer back on its channel, then VFO operation.
        recallChannel(port, place.channel);
    }
    backToVfo(port);
    port.sleep(Wait::Upload);
    if (place.vfoAKnown) {
        port.send(CatCommand::make(Op::SetMode, place.vfoAMode));
        port.sleep(Wait::Upload);
        SetFreq(port, place.vfoAFreq10Hz, VfoA);
        port.sleep(Wait::Upload);
    }
    if (place.onMemory) {
        recallChannel(port, place.channel);
        port.sleep(Wait::Upload);
    }
}

bool lost(CatPort& port)
{
    return !port.isOpen() || port.failed();
}
}  // namespace

namespace WriteBack {

Held heldIn(const QByteArray& record)
{
    const ChannelDecode d = decodeChannel(record, ChannelMode{QString(), -1});
    Held h;
    h.freq10Hz = std::llround(d.shownKHz * 100.0);
    if (d.mode.code >= 0)
        h.modeCode = d.mode.code;
    h.masked = d.masked;
    return h;
}

bool matches(const WriteBackChannel& wanted, const QByteArray& record)
{
    if (record.size() < ChannelDecodedBytes)
        return false;
    const Held h = heldIn(record);
    return h.freq10Hz == wanted.freq10Hz && h.modeCode == wanted.modeCode && h.masked == wanted.masked;
}

WriteBackResult run(CatPort& port, const QList<WriteBackChannel>& channels, const SaveBackup& saveBackup,
                    const Progress& progress, const std::atomic<bool>* cancel)
{
    WriteBackResult result;
    if (!port.isOpen() || channels.isEmpty())
        return result;
    result.ran = true;
    const int steps = PhaseSteps * static_cast<int>(channels.size());
    int done = 0;
    const auto step = [&] {
        ++done;
        if (progress)
            progress(done * 100 / steps);
    };
    const auto cancelled = [&] { return (cancel && cancel->load()) || port.cancelled(); };

    result.place = findPlace(port);

    // Nothing is written without a backup of everything about to be overwritten.
    for (const WriteBackChannel& c : channels) {
        if (cancelled()) {
            result.cancelled = true;
            break;
        }
        const std::optional<QByteArray> reply = readOneChannel(port, c.channel);
        const std::optional<QByteArray> record = reply ? singleChannelRecord(*reply) : std::nullopt;
        if (!record) {
            result.backupError = QStringLiteral("The radio did not answer the read of channel %1.").arg(c.channel);
            break;
        }
        result.backup.append({c.channel, *record});
        step();
    }
    if (result.backupError.isEmpty() && !result.cancelled && saveBackup)
        result.backupError = saveBackup(result.backup);
    if (!result.backupError.isEmpty() || result.cancelled) {
        qCWarning(lcMemory) << "write-back: nothing written:" << result.backupError << result.cancelled;
        putBack(port, result.place);
        return result;
    }

    recallChannel(port, channels.first().channel);
    port.send(CatCommand::make(Op::Clarifier, ClarifierParam::RxOff));
    port.send(CatCommand::make(Op::Clarifier, ClarifierParam::TxOff));
    port.send(CatCommand::make(Op::Clarifier, ClarifierParam::ClearOffset));
    for (const WriteBackChannel& c : channels) {
        if (cancelled()) {
            result.cancelled = true;
            break;
        }
        if (lost(port)) {
            result.portLost = true;
            break;
        }
        port.send(CatCommand::make(Op::SetMode, c.modeCode));
        port.sleep(Wait::Upload);
        SetFreq(port, c.freq10Hz, VfoA);
        port.send(CatCommand::make(Op::WriteMemory, c.channel, MemoryWrite::WriteVfoA));
        port.sleep(Wait::Upload);
        port.send(CatCommand::make(Op::WriteMemory, c.channel, c.masked ? MemoryWrite::Mask : MemoryWrite::Unmask));
        port.sleep(Wait::Upload);
        if (lost(port)) {
            result.portLost = true;
            result.differing.append(c.channel);
            break;
        }
        result.written.append(c.channel);
        step();
    }
    if (result.portLost)
        return result;

    for (const WriteBackChannel& c : channels) {
        if (!result.written.contains(c.channel))
            continue;
        const std::optional<QByteArray> reply = readOneChannel(port, c.channel);
        const std::optional<QByteArray> record = reply ? singleChannelRecord(*reply) : std::nullopt;
        if (!record || !matches(c, *record))
            result.differing.append(c.channel);
        step();
    }
    putBack(port, result.place);
    qCDebug(lcMemory) << "write-back:" << result.written << "differing" << result.differing;
    return result;
}

}  // namespace WriteBack
