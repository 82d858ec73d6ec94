// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Writing changed channels back into the radio, as one link-thread job:
//
//   1. where the radio is: its flags (VFO or memory), its channel, VFO-A's frequency and mode (on a
//      channel the radio goes to VFO-A for that read);
//   2. a backup: each channel about to be overwritten read alone, and the records handed to
//      saveBackup; a read that does not come back whole, or a backup that cannot be saved, stops
//      everything before a channel is written;
//   3. the upload's own sequence, for these channels only: the first one recalled and the clarifier
//      cleared, then for each its mode (50 ms), VFO-A's frequency, the write (50 ms), and the mask or
//      unmask as the row says (50 ms); a cancel stops between channels;
//   4. each written channel read back, its frequency, mode and mask compared;
//   5. the radio put back: VFO-A's frequency and mode as they were, and the VFO or the channel it
//      was on (from VFO operation, the memory pointer goes back to its channel too).

#include "ChannelDecoder.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <atomic>
#include <functional>
#include <optional>

class CatPort;

struct WriteBackChannel {
    int channel = 0;      // 1..108
    qint64 freq10Hz = 0;  // the table's frequency
    int modeCode = 0;
    bool masked = false;
};

// Where the radio was before the write, and where it goes back to.
struct RadioPlace {
    bool onMemory = false;   // recalled channel (MEM or M-TUN) rather than a VFO
    int channel = 1;         // the radio's channel, counted from 1
    bool vfoAKnown = false;  // VFO-A's record came back whole
    qint64 vfoAFreq10Hz = 0;
    int vfoAMode = 0;
};

struct WriteBackResult {
    bool ran = false;  // false: the port was closed, nothing was sent
    RadioPlace place;
    QList<std::pair<int, QByteArray>> backup;  // channel, its 16-byte record as read before the write
    QString backupError;                       // why the backup failed: then nothing was written
    QList<int> written;                        // channels whose commands all went out
    QList<int> differing;                      // written, but read back otherwise (or not at all)
    bool cancelled = false;
    bool portLost = false;
};

namespace WriteBack {
// The value a channel record holds, for the read-back comparison: the shown frequency in 10 Hz, the
// mode code (nothing for a mode byte outside the table) and the mask.
struct Held {
    qint64 freq10Hz = 0;
    std::optional<int> modeCode;
    bool masked = false;
};
Held heldIn(const QByteArray& record);
bool matches(const WriteBackChannel& wanted, const QByteArray& record);

// Progress: the share done of the backup reads, the writes and the read-backs together.
using Progress = std::function<void(int percent)>;
// Returns an empty string when the backup is saved, the reason otherwise.
using SaveBackup = std::function<QString(const QList<std::pair<int, QByteArray>>& records)>;

WriteBackResult run(CatPort& port, const QList<WriteBackChannel>& channels, const SaveBackup& saveBackup,
                    const Progress& progress, const std::atomic<bool>* cancel);
}  // namespace WriteBack
