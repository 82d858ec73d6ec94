// SPDX-License-Identifier: GPL-3.0-or-later
// Times "Write Changed" of 1, 10 and 108 channels through the memory window against the virtual radio
// at 4800 baud, exact and with the fast link, beside "Upld Mem" of the whole file, and shows which
// share of each is fixed waits: the write commands' own 50 ms waits, and the read waits (the backup
// reads, the read-backs and finding where the radio is), which the fast link may cut short.

#include "FakeMemoryDialogs.h"
#include "Mem_Frm.h"
#include "MemoryEditor.h"
#include "SimConsoleHost.h"
#include "SimHost.h"
#include "Timing.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

namespace {
double timeUntil(const std::function<void()>& start, const std::function<bool()>& done)
{
    QElapsedTimer wall;
    wall.start();
    start();
    while (!done())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    return wall.nsecsElapsed() / 1e6;
}

// The fixed waits of a write of n channels from VFO operation.
int writeWaitsMs(int n)
{
    return n * 3 * Wait::Upload;
}
int readWaitsMs(int n)
{
    const int place = Wait::Flags + Wait::ChannelQueryShort + Wait::StatusCurrentVfo;
    return place + 2 * n * Wait::OneChannel;
}
constexpr int PutBackWaitsMs = 3 * Wait::Upload;

void row(const char* what, double ms, int writeWaits, int readWaits, bool fast)
{
    std::printf("  %-28s %8.0f ms   write waits %6d ms (%3.0f %%)", what, ms, writeWaits, 100.0 * writeWaits / ms);
    if (fast)  // the reads end when their replies are in: the waits are only ceilings
        std::printf("   read ceilings %6d ms\n", readWaits);
    else
        std::printf("   read waits %6d ms (%3.0f %%)\n", readWaits, 100.0 * readWaits / ms);
}
}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    std::printf("Write Changed against the virtual radio at 4800 baud, beside Upld Mem of 108 channels\n");
    std::printf(
        "(write waits: the upload's 50 ms after each mode, write and mask; read waits: the fixed waits\n"
        " after each read, ceilings with the fast link)\n\n");
    for (const bool fast : {false, true}) {
        SimHost sim;
        QString error;
        if (!sim.start(&error)) {
            std::fprintf(stderr, "virtual radio: %s\n", qPrintable(error));
            return 1;
        }
        SimConsoleHost host(sim.devicePath());
        host.link().setFastLink(fast);
        FakeMemoryDialogs dialogs;
        dialogs.confirmAnswer = true;
        Mem_Frm w(host, &dialogs);
        QTemporaryDir dir;
        w.setBackupFolder(dir.filePath(QStringLiteral("backups")));
        w.setCurrentFile(dir.filePath(QStringLiteral("bench.ymp")));
        w.show();
        host.link().waitForIdle();
        timeUntil([&] { w.Bouton[4]->click(); }, [&] { return !w.readingAll() && host.link().pendingJobs() == 0; });
        if (!w.SaveMemFile(Mem_Frm::Report::Quiet)) {
            std::fprintf(stderr, "could not save the read-out\n");
            return 1;
        }

        std::printf("%s link\n", fast ? "fast" : "exact");
        const int masked = [&] {
            int m = 0;
            for (int n = 1; n <= 108; ++n)
                m += w.table().colour(n) == 0x0040C0 ? 1 : 0;
            return m;
        }();
        const double upload =
            timeUntil([&] { w.Bouton[5]->click(); }, [&] { return !w.uploading() && host.link().pendingJobs() == 0; });
        row("Upld Mem, 108 channels", upload, 108 * 2 * Wait::Upload + masked * Wait::Upload + Wait::Upload, 0, fast);

        int step = 0;
        for (const int count : {1, 10, 108}) {
            ++step;
            for (int n = 1; n <= count; ++n)
                w.editor().setCell(n, 1, QString::number(1000 + 100 * n + step) + QStringLiteral(".00"));
            const double ms = timeUntil([&] { w.WriteChanged->click(); },
                                        [&] { return !w.writingBack() && host.link().pendingJobs() == 0; });
            const QByteArray label = QStringLiteral("Write Changed, %1 channel%2")
                                         .arg(count)
                                         .arg(count == 1 ? QString() : QStringLiteral("s"))
                                         .toLatin1();
            row(label.constData(), ms, writeWaitsMs(count) + PutBackWaitsMs, readWaitsMs(count), fast);
            if (!dialogs.errors.isEmpty()) {
                std::fprintf(stderr, "  error: %s\n", qPrintable(dialogs.errors.last().text));
                dialogs.errors.clear();
            }
        }
        std::printf("\n");
        dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Discard;
        w.close();
        sim.stop();
    }
    return 0;
}
