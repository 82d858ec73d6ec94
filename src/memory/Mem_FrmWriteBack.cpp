// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's "Write Changed": the changed channels 1..108 of the table written into the
// radio after a backup of what they held, each read back; and "Restore Backup...", which puts a
// backup into the table as changes.
#include "Mem_Frm.h"

#include "CatPort.h"
#include "ChannelNames.h"
#include "ConsoleHost.h"
#include "MemRecord.h"
#include "MemoryBackups.h"
#include "MemoryDialogs.h"
#include "MemoryEditor.h"
#include "MemoryGridModel.h"
#include "MemoryLog.h"
#include "MemoryWriteBack.h"
#include "RadioLink.h"

#include <QAction>
#include <QDateTime>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <cmath>

namespace {
using namespace MemoryWindow;

const QString PortClosedText =
    QStringLiteral("The radio's port is closed: nothing was written. Open the port (Setup > Com Port) first.");
const QString BackupFilter = QStringLiteral("Yaesu Mem Files (*.ymp)|*.ymp|All Files (*.*)|*.*");
constexpr double TenHzPerKHz = 100.0;

QString channelList(const QList<int>& channels)
{
    QStringList names;
    for (int c : channels)
        names << QStringLiteral("%1 (%2)").arg(c).arg(gridChannelName(c).trimmed());
    return names.join(QStringLiteral(", "));
}

QString askText(const QList<int>& channels)
{
    return QStringLiteral(
               "You are about to write %1 changed channel%2 into the radio: %3.\n\n"
               "What the radio holds in %4 now is read and saved as a backup first.")
        .arg(channels.size())
        .arg(channels.size() == 1 ? QString() : QStringLiteral("s"))
        .arg(channelList(channels))
        .arg(channels.size() == 1 ? QStringLiteral("it") : QStringLiteral("them"));
}
}  // namespace

// One write as the link thread runs it: the window asks it to stop, the link tells how it went.
struct Mem_Frm::WriteRun {
    std::atomic<bool> cancel{false};
    std::atomic<bool> finished{false};
    WriteBackResult result;  // complete once finished is set
    QString backupPath;
};

void Mem_Frm::buildWriteBack()
{
    // In the File menu, above "Close", after the CSV items.
    mnuWriteChanged = new QAction(WriteChangedMenuCaption, mnu_bar);
    mnuWriteChanged->setObjectName(QStringLiteral("mnuWriteChanged"));
    mnuRestoreBackup = new QAction(RestoreBackupMenuCaption, mnu_bar);
    mnuRestoreBackup->setObjectName(QStringLiteral("mnuRestoreBackup"));
    mnu_bar->insertAction(mnu_file[5], mnuWriteChanged);
    mnu_bar->insertAction(mnu_file[5], mnuRestoreBackup);
    mnu_bar->insertSeparator(mnu_file[5]);
    connect(mnuWriteChanged, &QAction::triggered, this, &Mem_Frm::WriteChangedClick);
    connect(mnuRestoreBackup, &QAction::triggered, this, &Mem_Frm::restoreBackupClick);
    connect(WriteChanged, &QPushButton::clicked, this, &Mem_Frm::WriteChangedClick);
    connect(CancelWrite, &QPushButton::clicked, this, [this] {
        stopConfirmed_ = true;  // the operator is told where it stopped
        cancelWriteBack();
    });
    updateEditState();
}

void Mem_Frm::WriteChangedClick()
{
    if (uploading_ || writing_)
        return;
    if (!host_.portOpen()) {
        dialogs_->error(dialogParent(), ErrorTitle, PortClosedText);
        return;
    }
    const QList<int> channels = editor_->unwrittenChannels(Channels::First, Channels::Uploaded);
    if (channels.isEmpty()) {
        dialogs_->inform(dialogParent(), WriteChangedCaption,
                         QStringLiteral("No channel among 1 to 108 differs from what the radio holds."));
        return;
    }
    QList<WriteBackChannel> wanted;
    for (int c : channels) {
        const MemoryRow& row = model_->channelRow(c);
        const std::optional<double> kHz = cellNumber(row.cells[MemoryColumn::Freq]);
        if (!kHz) {
            dialogs_->error(dialogParent(), ErrorTitle,
                            QStringLiteral("Channel %1 has no frequency: nothing was written.").arg(c));
            return;
        }
        wanted.append({c, std::llround(*kHz * TenHzPerKHz),
                       static_cast<int>(cellNumber(row.cells[MemoryColumn::Mde]).value_or(0)),
                       row.colour == MemoryColour::Masked});
    }
    QString text = askText(channels);
    if (!editor_->unwrittenChannels(Channels::LastP + 1, Channels::Count).isEmpty())
        text += QStringLiteral(
            "\n\nThe changed quick memory channels (QMB, 109 to 113) are not written: no write "
            "reaches them, as no upload does.");
    if (!dialogs_->confirm(dialogParent(), WriteChangedTitle, text))
        return;

    writing_ = true;
    host_.setPollEnabled(false);
    Progress->setValue(0);
    Progress->setVisible(true);
    CancelWrite->setVisible(true);
    setRadioKeysEnabled(false);
    stopConfirmed_ = false;
    afterUpload_ = AfterUpload::Stay;
    writeRun_ = std::make_shared<WriteRun>();
    showEditReason({});
    updateEditState();

    QPointer<Mem_Frm> self(this);
    RadioLink* link = &host_.link();
    ConsoleHost* host = &host_;
    QWidget* hostWindow = host_.window();
    const QString folder = backupFolder_;
    const std::shared_ptr<WriteRun> run = writeRun_;
    link->post([link, self, host, hostWindow, folder, run, wanted](CatPort& port) {
        const auto saveBackup = [folder, run](const QList<std::pair<int, QByteArray>>& records) {
            QString error;
            const std::optional<QString> path =
                MemoryBackups::save(folder, records, QDateTime::currentDateTime(), &error);
            if (!path)
                return error;
            run->backupPath = *path;
            MemoryBackups::prune(folder);
            return QString();
        };
        run->result = WriteBack::run(
            port, wanted, saveBackup,
            [link, self](int percent) {
                link->deliver(self.data(), [self, percent] {
                    if (self)
                        self->Progress->setValue(percent);
                });
            },
            &run->cancel);
        run->finished = true;
        link->deliver(hostWindow, [host] { host->setPollEnabled(true); });
        link->deliver(self.data(), [self, run] {
            if (self)
                self->finishWriteBack(run);
        });
    });
}

bool Mem_Frm::writeRunFinished() const
{
    return !writing_ || !writeRun_ || writeRun_->finished.load();
}

void Mem_Frm::cancelWriteBack()
{
    if (writeRun_)
        writeRun_->cancel.store(true);
}

void Mem_Frm::finishWriteBack(const std::shared_ptr<WriteRun>& run)
{
    if (!writing_ || run != writeRun_)
        return;
    const WriteBackResult& r = run->result;
    writing_ = false;
    Progress->setVisible(readingAll_);
    CancelWrite->setVisible(false);
    setRadioKeysEnabled(true);
    lastBackup_ = run->backupPath;

    QList<int> confirmed;
    for (int c : r.written)
        if (!r.differing.contains(c))
            confirmed << c;
    editor_->markWritten(confirmed);
    qCDebug(lcMemory) << "write changed:" << confirmed << "differing" << r.differing << "backup" << lastBackup_;

    if (!r.ran) {
        dialogs_->error(dialogParent(), ErrorTitle, PortClosedText);
    } else if (!r.backupError.isEmpty()) {
        dialogs_->error(
            dialogParent(), WriteChangedCaption,
            QStringLiteral("Nothing was written: the backup of the channels failed.\n%1").arg(r.backupError));
    } else if (r.portLost) {
        dialogs_->error(dialogParent(), WriteChangedCaption,
                        QStringLiteral("The radio's port failed during the write, which stopped there. Written and "
                                       "checked: %1. The other changed channels stay marked.")
                            .arg(confirmed.isEmpty() ? QStringLiteral("none") : channelList(confirmed)));
    } else {
        if (!r.differing.isEmpty())
            dialogs_->error(
                dialogParent(), WriteChangedCaption,
                QStringLiteral("The radio reads back otherwise than written in %1: %2. %3 stay%4 marked; "
                               "the backup is \"%5\".")
                    .arg(r.differing.size() == 1 ? QStringLiteral("this channel") : QStringLiteral("these channels"))
                    .arg(channelList(r.differing))
                    .arg(r.differing.size() == 1 ? QStringLiteral("It") : QStringLiteral("They"))
                    .arg(r.differing.size() == 1 ? QStringLiteral("s") : QString())
                    .arg(lastBackup_));
        if (r.cancelled && stopConfirmed_)
            dialogs_->inform(
                dialogParent(), UploadStoppedTitle,
                r.written.isEmpty()
                    ? QStringLiteral("The write stopped before a channel was written; the radio's memory is "
                                     "as it was.")
                    : QStringLiteral("The write stopped after channel %1: written %2. The channels not "
                                     "written stay marked.")
                          .arg(r.written.last())
                          .arg(channelList(r.written)));
    }
    stopConfirmed_ = false;
    updateEditState();
    afterStop();
}

void Mem_Frm::restoreBackupClick()
{
    FileDialogRequest request;
    request.filters = dialogFilters(BackupFilter);
    request.selectedFilter = request.filters.value(0);
    request.defaultSuffix = DefaultSuffix;
    request.file = lastBackup_.isEmpty() ? backupFolder_ : lastBackup_;
    request.kind = FileDialogRequest::Kind::Open;
    request.title = RestoreBackupTitle;
    if (const std::optional<QString> chosen = dialogs_->chooseFile(dialogParent(), request))
        RestoreBackup(*chosen);
}

bool Mem_Frm::RestoreBackup(const QString& path)
{
    QMap<int, MemoryRow> rows;
    QString error;
    if (!MemoryBackups::load(path, &rows, &error)) {
        dialogs_->error(dialogParent(), RestoreBackupTitle,
                        QStringLiteral("Could not read the backup \"%1\".\n%2").arg(path, error));
        return false;
    }
    if (!editor_->putRows(rows, QStringLiteral("Restore Backup")))
        dialogs_->inform(dialogParent(), RestoreBackupTitle,
                         QStringLiteral("The table already holds what the backup \"%1\" holds.").arg(path));
    return true;
}
