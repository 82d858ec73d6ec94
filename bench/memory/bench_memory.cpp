// SPDX-License-Identifier: GPL-3.0-or-later
// Times a full memory read-out and an upload of 108 channels through the memory window, against the
// virtual radio at 4800 baud, and sets them beside what the line and the fixed waits alone need. A
// 1 ms timer on the GUI thread measures the longest the window went without handling events.

#include "FakeMemoryDialogs.h"
#include "MemFile.h"
#include "Mem_Frm.h"
#include "SimConsoleHost.h"
#include "SimHost.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>

namespace {
constexpr int CommandBytes = 5;

// Runs the event loop until done() holds; returns the wall time and the longest gap between ticks of a
// 1 ms timer, that is the longest the GUI thread was busy.
struct Run {
    double ms = 0;
    double longestStallMs = 0;
};
Run runUntil(const std::function<void()>& start, const std::function<bool()>& done)
{
    QElapsedTimer wall;
    QElapsedTimer sinceTick;
    double longest = 0;
    QTimer tick;
    tick.setInterval(1);
    QObject::connect(&tick, &QTimer::timeout, [&] {
        longest = std::max(longest, sinceTick.nsecsElapsed() / 1e6);
        sinceTick.restart();
    });
    tick.start();
    wall.start();
    sinceTick.start();
    start();
    longest = std::max(longest, sinceTick.nsecsElapsed() / 1e6);
    sinceTick.restart();
    while (!done())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    return {wall.nsecsElapsed() / 1e6, longest};
}

double lineMs(int bytes)
{
    return bytes * 11.0 * 1000.0 / 4800.0;
}
}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    SimHost sim;
    QString error;
    if (!sim.start(&error)) {
        std::fprintf(stderr, "virtual radio: %s\n", qPrintable(error));
        return 1;
    }
    int maskedUploaded = 0;
    for (int n = 1; n <= 113; ++n) {
        MemoryChannel c;
        c.data.freq10Hz = 180000 + qint64(n) * 24571;
        c.data.modeByte = n % 7;
        c.masked = n % 9 == 0;
        if (c.masked && n <= 108)
            ++maskedUploaded;
        sim.radio().setChannel(n, c);
    }

    SimConsoleHost host(sim.devicePath());
    FakeMemoryDialogs dialogs;
    Mem_Frm w(host, &dialogs);
    w.show();
    host.link().waitForIdle();

    std::printf("memory window against the virtual radio at 4800 baud (8 data, 2 stop bits: 11 bits a byte)\n\n");

    // Full read-out: "Get Mem" posts the read of all channels, then the selected channel again.
    const int readoutBytes = CommandBytes + 1863 + CommandBytes + 16;
    const Run readout =
        runUntil([&] { w.Bouton[4]->click(); }, [&] { return !w.readingAll() && host.link().pendingJobs() == 0; });
    std::printf("full read-out (Get Mem)\n");
    std::printf("  measured              %8.0f ms\n", readout.ms);
    std::printf("  line limit            %8.0f ms  (%d bytes)\n", lineMs(readoutBytes), readoutBytes);
    std::printf("  prescribed waits      %8d ms  (5000 + 250)\n", 5000 + 250);
    std::printf("  longest GUI stall     %8.1f ms\n\n", readout.longestStallMs);

    QTemporaryDir dir;
    w.setCurrentFile(dir.filePath(QStringLiteral("bench.ymp")));
    if (!w.SaveMemFile(Mem_Frm::Report::Quiet)) {
        std::fprintf(stderr, "could not save the read-out\n");
        return 1;
    }

    // Upload: 4 opening commands; per channel mode, frequency and write (and the mask); back to VFO.
    const int uploadBytes = CommandBytes * (4 + 108 * 3 + maskedUploaded + 1);
    const int uploadWaits = 108 * 100 + maskedUploaded * 50 + 50;
    dialogs.confirmAnswer = true;
    const Run upload =
        runUntil([&] { w.Bouton[5]->click(); }, [&] { return !w.uploading() && host.link().pendingJobs() == 0; });
    std::printf("upload of 108 channels (%d masked)\n", maskedUploaded);
    std::printf("  measured              %8.0f ms\n", upload.ms);
    std::printf("  line limit            %8.0f ms  (%d bytes)\n", lineMs(uploadBytes), uploadBytes);
    std::printf("  prescribed waits      %8d ms\n", uploadWaits);
    std::printf("  longest GUI stall     %8.1f ms\n", upload.longestStallMs);

    w.close();
    sim.stop();
    return 0;
}
