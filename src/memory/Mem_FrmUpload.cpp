// The memory window's keys that act on the radio, and the upload of a memory file into it.
#include "Mem_Frm.h"

#include "CatPort.h"
#include "ConsoleHost.h"
#include "MemoryDialogs.h"
#include "MemoryPanel.h"
#include "PressButton.h"
#include "RadioLink.h"

#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>

namespace {
using namespace MemoryWindow;
}  // namespace

void Mem_Frm::Bouton_Click(int index)
{
    const int channel = HScroll1->value();
    switch (index) {
        case MemoryKey::Close: {
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
            ReadMemory(1);
            setHeightTwips(ExpandedTwips);
            enableUpload();
            enableSaveMenu();
            ReadMemory(0);
            break;
        case MemoryKey::Upload:
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
    if (on)
        Bouton[MemoryKey::GetMem]->setEnabled(!readingAll_);
    HScroll1->setEnabled(on);
}

void Mem_Frm::UploadMemory()
{
    if (uploading_)
        return;
    uploading_ = true;
    host_.setPollEnabled(false);
    Progress->setValue(0);
    Progress->setVisible(true);
    setRadioKeysEnabled(false);
    cancel_ = std::make_shared<std::atomic<bool>>(false);

    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    ConsoleHost* host = &host_;
    QWidget* hostWindow = host_.window();
    const QString path = currentFile_;
    const std::shared_ptr<std::atomic<bool>> cancel = cancel_;
    link->post([link, self, host, hostWindow, path, cancel](CatPort& port) {
        const UploadResult result = ::UploadMemory(
            port, path,
            [link, self](int percent, int) {
                link->deliver(self.data(), [self, percent] {
                    if (self)
                        self->Progress->setValue(percent);
                });
            },
            cancel.get());
        // The poll comes back even when this window is gone by now.
        link->deliver(hostWindow, [host] { host->setPollEnabled(true); });
        link->deliver(self.data(), [self, result] {
            if (self)
                self->finishUpload(result);
        });
    });
}

void Mem_Frm::finishUpload(const UploadResult& result)
{
    uploading_ = false;
    Progress->setVisible(readingAll_);
    setRadioKeysEnabled(true);
    if (!result.fileError.isEmpty()) {
        dialogs_->error(this, ErrorTitle,
                        QStringLiteral("Could not read the memory file \"%1\".\n%2\nNo channel was written.")
                            .arg(currentFile_, result.fileError));
    }
}

void Mem_Frm::cancelUpload()
{
    if (cancel_)
        cancel_->store(true);
}
