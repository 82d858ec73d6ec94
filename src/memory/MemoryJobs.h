// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The memory window's exchanges with the radio, as link-thread jobs: exactly the bytes and waits the
// radio needs, nothing else on the wire.

#include "MemRecord.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <atomic>
#include <functional>
#include <optional>

class CatPort;

// A read that did not run because the port was closed is nothing; an empty reply is an empty array.
std::optional<QByteArray> readOneChannel(CatPort& port, int channel);
std::optional<QByteArray> readAllChannels(CatPort& port);

// The channel the radio is on, counted from 1 (the radio counts from 0): first reply byte + 1.
std::optional<int> queryStartChannel(CatPort& port);

// Recall, write, mask and unmask a channel; back to VFO operation; memory to VFO-A.
void recallChannel(CatPort& port, int channel);
void backToVfo(CatPort& port);
void memoryToVfoA(CatPort& port, int channel);
void setChannelMask(CatPort& port, int channel, bool masked);

struct UploadResult {
    bool ran = false;         // false: the port was closed, nothing was sent
    int channelsWritten = 0;  // 108 when complete; with portLost, the last channel sent before it
    bool cancelled = false;
    // The port failed or closed under the upload: it stopped there. When the failure showed only
    // after a channel's commands went out, that channel (failedDuring) may be partly written.
    bool portLost = false;
    int failedDuring = 0;
    QString fileError;  // the memory file could not be read: no channel was written
};

// Writes channels 1..108 from the memory file at path: the clarifier is cleared first, then each
// channel gets its mode, VFO-A its frequency, the channel VFO-A, and the mask when the record has it;
// the radio goes back to VFO operation at the end. progress(percent, channel) follows each channel.
// cancel, when set, stops the upload before the next channel (the radio still goes back to VFO). A
// port that fails or closes stops it too, the progress staying at the last channel sent.
UploadResult UploadMemory(CatPort& port, const QString& path, const std::function<void(int, int)>& progress,
                          const std::atomic<bool>* cancel = nullptr);

// How far an upload is after a channel: channel / 108 x 100, rounded (50 after 54, 100 after 108).
int uploadPercent(int channel);
