// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's keys that act on the radio, and the upload of a memory file into it.
#include "Mem_Frm.h"

#include "CatPort.h"
#include "ChannelNames.h"
#include "ConsoleHost.h"
#include "MemoryDialogs.h"
#include "MemoryPanel.h"
#include "PressButton.h"
#include "RadioLink.h"

#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <utility>

namespace {
using namespace MemoryWindow;

const QString PortClosedText =
    QStringLiteral("The radio's port is closed: nothing was uploaded. Open the port (Setup > Com Port) first.");

QString saveFirstText(const QString& file)
{
    return QStringLiteral(
               "The table differs from the memory file \"%1\", and the upload writes that file into "
               "the radio.\n\nSave the table to the file first, so that the radio gets this list?")
        .arg(file);
}

QString portLostText(const UploadResult& r)
{
    QString text = QStringLiteral("The radio's port failed during the upload, which stopped there.\n");
    if (r.channelsWritten >= 1)
        text += QStringLiteral("The last channel written is %1 (%2).")
                    .arg(r.channelsWritten)
                    .arg(gridChannelName(r.channelsWritten).trimmed());
    else
        text += QStringLiteral("No channel was written.");
    if (r.failedDuring >= 1)
        text += QStringLiteral(" Channel %1 (%2) may be partly written.")
                    .arg(r.failedDuring)
                    .arg(gridChannelName(r.failedDuring).trimmed());
    text += QStringLiteral(" The channels after it keep what the radio held; upload again once the radio is back.");
    return text;
}

QString stoppedText(int lastWritten)
{
    if (lastWritten < 1)
        return QStringLiteral("The upload stopped before channel 1 was written; the radio's memory is as it was.");
    return QStringLiteral(
               "The upload stopped after channel %1 (%2): channels 1 to %1 were written, the others "
               "keep what the radio held.")
        .arg(lastWritten)
        .arg(gridChannelName(lastWritten).trimmed());
}
}  // namespace

// One upload as the link thread runs it: the window asks it to stop, the link tells how far it got.
// Shared, so that a window closing while the program ends can still tell the operator where the
// upload stopped.
struct Mem_Frm::UploadRun {
    std::atomic<bool> cancel{false};
    std::atomic<bool> finished{false};
    UploadResult result;  // complete once finished is set
};

void Mem_Frm::Bouton_Click(int index)
{
    const int channel = HScroll1->value();
    switch (index) {
        case MemoryKey::Close: {
            // An upload is not cut short without the operator's word; stopped, the key does its work
            // once the link has ended the upload.
            if (uploading_ || writing_) {
                if (!confirmStopUpload())
                    break;
                if (uploading_ || writing_) {
                    afterUpload_ = AfterUpload::PressClose;
                    break;
                }
            }
            // Changes that would be lost are asked about before anything goes to the radio.
            if (!closeConfirmed_ && !confirmUnsaved())
                break;
            closeConfirmed_ = true;
            const int start = StartChannel;
            if (MemState == 0) {
                // Put the radio's memory pointer back where it was, then back to the VFO.
                send([start](CatPort& port) {
                    recallChannel(port, start);
                    backToVfo(port);
                });
            } else if (MemState == 1 && channel != start) {
                send([channel](CatPort& port) { recallChannel(port, channel); });
            }
            close();
            break;
        }
        case MemoryKey::MemoryToA:
            send([channel](CatPort& port) { memoryToVfoA(port, channel); });
            MemState = 0;
            break;
        case MemoryKey::Mask: {
            const bool mask = Bouton[MemoryKey::Mask]->text() == MaskCaption;
            send([channel, mask](CatPort& port) { setChannelMask(port, channel, mask); });
            selectGridRow(channel);
            ReadMemory(0);
            break;
        }
        case MemoryKey::VfoMem:
            if (host_.indicatorVisible(MainIndicator::Vfo) || host_.indicatorVisible(MainIndicator::MemoryTune)) {
                send([channel](CatPort& port) { recallChannel(port, channel); });
                MemState = 1;
                StartChannel = channel;
            } else {
                send([](CatPort& port) { backToVfo(port); });
                MemState = 0;
            }
            break;
        case MemoryKey::GetMem:
            if (!mayReplaceTable())
                break;
            ReadMemory(1);
            setHeightTwips(ExpandedTwips);
            enableUpload();
            enableSaveMenu();
            ReadMemory(0);
            break;
        case MemoryKey::Upload:
            if (!host_.portOpen()) {
                dialogs_->error(dialogParent(), ErrorTitle, PortClosedText);
                break;
            }
            // The upload writes the file into the radio: a table that differs from it (imported,
            // read from the radio, changed) is saved first, so that "this list" is what the radio gets.
            if (tableDiffersFromFile()) {
                if (!dialogs_->saveBeforeUpload(dialogParent(), UploadTitle, saveFirstText(currentFile_)))
                    break;
                if (!SaveMemFile(Report::Message))
                    break;
            }
            if (dialogs_->confirm(this, UploadTitle, UploadText))
                UploadMemory();
            break;
        default:
            break;
    }
}

void Mem_Frm::enableUpload()
{
    Bouton[MemoryKey::Upload]->setEnabled(!uploading_);
    Btn_Diag[1]->setEnabled(true);
}

void Mem_Frm::setRadioKeysEnabled(bool on)
{
    for (int i = MemoryKey::MemoryToA; i <= MemoryKey::Upload; ++i)
        Bouton[i]->setEnabled(on);
    if (on) {
        Bouton[MemoryKey::GetMem]->setEnabled(!readingAll_);
        updateMaskKey();
    }
    HScroll1->setEnabled(on);
}

void Mem_Frm::UploadMemory()
{
    if (uploading_ || writing_)
        return;
    if (!host_.portOpen()) {
        dialogs_->error(dialogParent(), ErrorTitle, PortClosedText);
        return;
    }
    uploading_ = true;
    host_.setPollEnabled(false);
    Progress->setValue(0);
    Progress->setVisible(true);
    setRadioKeysEnabled(false);
    stopConfirmed_ = false;
    afterUpload_ = AfterUpload::Stay;
    run_ = std::make_shared<UploadRun>();
    updateEditState();

    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    ConsoleHost* host = &host_;
    QWidget* hostWindow = host_.window();
    const QString path = currentFile_;
    const std::shared_ptr<UploadRun> run = run_;
    link->post([link, self, host, hostWindow, path, run](CatPort& port) {
        run->result = ::UploadMemory(
            port, path,
            [link, self](int percent, int) {
                link->deliver(self.data(), [self, percent] {
                    if (self)
                        self->Progress->setValue(percent);
                });
            },
            &run->cancel);
        run->finished = true;
        // The poll comes back even when this window is gone by now.
        link->deliver(hostWindow, [host] { host->setPollEnabled(true); });
        link->deliver(self.data(), [self, run] {
            if (self)
                self->finishUpload(run);
        });
    });
}

void Mem_Frm::finishUpload(const std::shared_ptr<UploadRun>& run)
{
    // Told once: the close that waited for it may have told it already.
    if (!uploading_ || run != run_)
        return;
    const UploadResult& result = run->result;
    uploading_ = false;
    Progress->setVisible(readingAll_);
    setRadioKeysEnabled(true);
    if (!result.ran) {
        dialogs_->error(dialogParent(), ErrorTitle, PortClosedText);
    } else if (result.portLost) {
        dialogs_->error(dialogParent(), UploadStoppedTitle, portLostText(result));
    } else if (!result.fileError.isEmpty()) {
        dialogs_->error(dialogParent(), ErrorTitle,
                        QStringLiteral("Could not read the memory file \"%1\".\n%2\nNo channel was written.")
                            .arg(currentFile_, result.fileError));
    } else if (stopConfirmed_) {
        dialogs_->inform(dialogParent(), UploadStoppedTitle, stoppedText(result.channelsWritten));
    }
    stopConfirmed_ = false;
    updateEditState();
    afterStop();
}

void Mem_Frm::afterStop()
{
    switch (std::exchange(afterUpload_, AfterUpload::Stay)) {
        case AfterUpload::PressClose:
            Bouton_Click(MemoryKey::Close);
            break;
        case AfterUpload::Close:
            close();
            break;
        case AfterUpload::Stay:
            break;
    }
}

bool Mem_Frm::confirmStopUpload()
{
    if ((!uploading_ && !writing_) || stopConfirmed_)
        return true;
    if (!dialogs_->ask(dialogParent(), Caption, StopUploadText))
        return false;
    // The upload or write may have ended while the question was open.
    if (uploading_ || writing_) {
        stopConfirmed_ = true;
        cancelUpload();
        cancelWriteBack();
    }
    return true;
}

bool Mem_Frm::mayCloseNow()
{
    if (!uploading_ && !writing_)
        return true;
    if (!confirmStopUpload())
        return false;
    const bool finished = uploading_ ? run_->finished.load() : writeRunFinished();
    if ((uploading_ || writing_) && !finished) {
        // The window goes once the link has ended the upload after the channel being written.
        if (afterUpload_ == AfterUpload::Stay)
            afterUpload_ = AfterUpload::Close;
        return false;
    }
    // The link has ended it already (the program is closing and waited for the link): the operator
    // is told now, before the window goes.
    afterUpload_ = AfterUpload::Stay;
    if (uploading_)
        finishUpload(run_);
    if (writing_)
        finishWriteBack(writeRun_);
    return true;
}

void Mem_Frm::cancelUpload()
{
    if (run_)
        run_->cancel.store(true);
}
