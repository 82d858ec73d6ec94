// SPDX-License-Identifier: GPL-3.0-or-later
// bench_floods: two clients that flood the program on purpose, each beside a well-behaved network
// client asking "f" every 20 ms, against the virtual radio on a pseudo-terminal with the 250 ms
// poll. The first floods the network server with "\dump_state" lines and never reads a reply; the
// second writes VFO record reads to the native port in a loop while the radio is silent, and never
// reads either. Prints for a quiet stretch and for each flood: the program's largest resident
// memory, the longest gap of its event loop, and the well-behaved client's "f" latency (median, p99).

#include "BenchServing.h"
#include "BlockingClient.h"
#include "NativePort.h"
#include "SimRig.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QThread>
#include <atomic>
#include <csignal>
#include <functional>
#include <thread>
#include <vector>

namespace {
using Bench::percentile;
constexpr int WindowMs = 10000;
constexpr int AskEveryMs = 20;
constexpr int SampleEveryMs = 1;
constexpr int ChunkLines = 256;

qint64 residentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    return 0;
}

struct Figures {
    double peakMiB = 0;
    double longestGapMs = 0;
    std::vector<double> fMs;
    int fFailed = 0;
};

// Serves the event loop for the window while `flood` runs on a thread of its own, and a
// well-behaved client asks "f" beside it.
Figures measure(quint16 port, const std::function<void(const std::atomic<bool>&)>& flood)
{
    Figures f;
    std::atomic<bool> stop{false};
    std::vector<double> fMs;
    std::atomic<int> failed{0};
    std::thread good([&] {
        BlockingClient c = BlockingClient::tcp(port);
        while (!stop.load()) {
            QElapsedTimer t;
            t.start();
            if (c.write("f\n") && !c.readUntil('\n').isEmpty())
                fMs.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
            else
                ++failed;
            QThread::msleep(AskEveryMs);
        }
    });
    std::thread bad([&] {
        if (flood)
            flood(stop);
    });
    QElapsedTimer window;
    window.start();
    QElapsedTimer gap;
    gap.start();
    qint64 peak = residentKiB();
    while (window.elapsed() < WindowMs) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, SampleEveryMs);
        f.longestGapMs = std::max(f.longestGapMs, static_cast<double>(gap.nsecsElapsed()) / 1e6);
        gap.start();
        peak = std::max(peak, residentKiB());
    }
    stop = true;
    Bench::whileServing([&] {
        good.join();
        bad.join();
    });
    f.peakMiB = static_cast<double>(peak) / 1024.0;
    f.fMs = fMs;
    f.fFailed = failed.load();
    return f;
}

void print(QTextStream& out, const QString& what, const Figures& f)
{
    out << QStringLiteral(
               "%1: peak memory %2 MiB, longest event-loop gap %3 ms, f beside it: median %4 ms, "
               "p99 %5 ms (%6 answered, %7 failed)")
               .arg(what)
               .arg(f.peakMiB, 0, 'f', 1)
               .arg(f.longestGapMs, 0, 'f', 1)
               .arg(percentile(f.fMs, 0.5), 0, 'f', 2)
               .arg(percentile(f.fMs, 0.99), 0, 'f', 2)
               .arg(f.fMs.size())
               .arg(f.fFailed)
        << Qt::endl;
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    // A flooding client whose connection the server closes finds out by a failing write.
    std::signal(SIGPIPE, SIG_IGN);
    QTextStream out(stdout);
    SimRig rig;
    QString error;
    if (!rig.start(&error)) {
        out << "bench_floods: " << error << Qt::endl;
        return 1;
    }
    NativePort native(*rig.backend, rig.cache);
    if (!native.open(&error)) {
        out << "bench_floods: " << error << Qt::endl;
        return 1;
    }
    while (!rig.backend->state().haveStatus)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    const quint16 port = rig.port();

    print(out, QStringLiteral("quiet"), measure(port, nullptr));

    QByteArray dumps;
    for (int i = 0; i < ChunkLines; ++i)
        dumps += "\\dump_state\n";
    const Figures network = measure(port, [&](const std::atomic<bool>& stop) {
        BlockingClient c = BlockingClient::tcp(port);
        // Blocks once the server stops reading; the window's end closes the program's side.
        while (!stop.load() && c.write(dumps)) {
        }
    });
    print(out, QStringLiteral("network client sending \\dump_state, never reading"), network);
    out << QStringLiteral("  the server held at most %1 bytes of replies unsent, at most %2 lines of one client a turn")
               .arg(rig.server->mostUnsentBytes())
               .arg(rig.server->mostLinesInATurn())
        << Qt::endl;

    rig.sim.faults().setForced(LineFault::Silent, true);
    QByteArray reads;
    for (int i = 0; i < ChunkLines; ++i)
        reads += QByteArray::fromHex("0000000210");
    const Figures nativeFlood = measure(port, [&](const std::atomic<bool>& stop) {
        BlockingClient c = BlockingClient::pty(native.linkPath());
        while (!stop.load() && c.write(reads)) {
        }
    });
    rig.sim.faults().setForced(LineFault::Silent, false);
    print(out, QStringLiteral("native client reading status from a silent radio, never reading"), nativeFlood);
    native.close();
    rig.stop();
    return 0;
}
