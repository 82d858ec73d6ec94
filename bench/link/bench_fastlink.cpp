// SPDX-License-Identifier: GPL-3.0-or-later
// bench_fastlink: the exact and the fast link side by side, against the virtual radio on a
// pseudo-terminal with the real serial adapter and clock, with replies starting at once and 30 ms late,
// straight from the line and through an adapter that hands the bytes over in 16 ms bursts.
// Prints per mode: one full poll (status, meters, flags: median, p99), polls per second on the 250 ms
// timer, the full memory read-out, and how long a network client's F takes while the poll runs; each
// beside the time its bytes need on a 4800 baud 8N2 line.

#include "BenchServing.h"
#include "SimRig.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTcpSocket>
#include <QTextStream>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <thread>
#include <utility>
#include <vector>

namespace {
using Bench::percentile;
using Bench::serveFor;
using Bench::whileServing;
constexpr int Polls = 30;
constexpr int RateWindowMs = 6000;
constexpr int Sets = 50;
constexpr int MaxSetPauseMs = 600;  // sets come at random moments of the poll cycle
constexpr int GuardMs = 5000;
constexpr int UsbBurstMs = 16;  // the most common adapter chips' default
constexpr int CommandBytes = 5;
constexpr int PollCommands = 7;  // two status requests, four meters, flags
constexpr int PollReplyBytes = ReplySize::VfoRecord + ReplySize::BothVfos + 4 * ReplySize::Meter + ReplySize::Flags;

struct Figures {
    double pollMedian = 0, pollP99 = 0, pollsPerSecond = 0, readOutMs = 0, setMedian = 0, setP99 = 0;
    double replyMedian = 0, idleSetMedian = 0;
    int shortPolls = 0, readOutBytes = 0;
};

// F from a network client at random moments: the time until the reply, and until the radio holds it.
void setsFromAClient(SimRig& rig, std::vector<double>& replyMs, std::vector<double>& holdMs)
{
    const quint16 serverPort = rig.port();
    whileServing([&] {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, serverPort);
        if (!socket.waitForConnected(GuardMs))
            return;
        socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QElapsedTimer t;
        for (int i = 0; i < Sets; ++i) {
            const qint64 hz = 14070000 + 1000 * (i % 2 == 0 ? i + 1 : -(i + 1));
            t.start();
            socket.write(QStringLiteral("F %1\n").arg(hz).toLatin1());
            socket.flush();
            QByteArray reply;
            while (!reply.contains('\n') && socket.waitForReadyRead(GuardMs))
                reply += socket.readAll();
            replyMs.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
            while (rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz != hz / 10 && t.elapsed() < GuardMs)
                QThread::usleep(200);
            holdMs.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
            QThread::msleep(QRandomGenerator::global()->bounded(MaxSetPauseMs));
        }
    });
}

Figures measure(bool fast, int replyDelayMs, int burstMs, QTextStream& err)
{
    Figures f;
    SimRig rig;
    rig.sim.setReplyDelayMs(replyDelayMs);
    rig.sim.setBurstMs(burstMs);
    QString error;
    if (!rig.start(&error)) {
        err << "bench_fastlink: " << error << Qt::endl;
        return f;
    }
    rig.link->setFastLink(fast);

    // One full poll, timed on the link thread, with the timer off.
    rig.timer.stop();
    rig.link->waitForIdle();
    std::vector<double> pollMs;
    for (int i = 0; i < Polls; ++i) {
        rig.link->runBlocking([&](CatPort& port) {
            QElapsedTimer t;
            t.start();
            const StatusReply s = Get_Status32(port);
            const MeterReplies m = readMeters(port, MeterSelector::TransmitBase);
            const FlagsReply fl = GetFlags(port, 1);
            pollMs.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
            if (s.record.size() != ReplySize::BothVfos || !m.complete() || fl.waiting != ReplySize::Flags)
                ++f.shortPolls;
        });
    }
    f.pollMedian = percentile(pollMs, 0.5);
    f.pollP99 = percentile(pollMs, 0.99);

    // The full read-out.
    rig.link->runBlocking([&](CatPort& port) {
        QElapsedTimer t;
        t.start();
        const QByteArray all =
            port.request(CatCommand::make(Op::StatusRequest, StatusKind::AllMemories), Wait::AllMemories);
        f.readOutMs = static_cast<double>(t.nsecsElapsed()) / 1e6;
        f.readOutBytes = static_cast<int>(all.size());
    });

    // The poll on its timer.
    rig.timer.start(SimRig::PollMs);
    serveFor(1000);
    const int before = rig.polls;
    serveFor(RateWindowMs);
    f.pollsPerSecond = (rig.polls - before) * 1000.0 / RateWindowMs;

    // F from a network client while the poll runs: until the reply, and until the radio holds it.
    std::vector<double> replyMs, holdMs;
    setsFromAClient(rig, replyMs, holdMs);
    f.replyMedian = percentile(replyMs, 0.5);
    f.setMedian = percentile(holdMs, 0.5);
    f.setP99 = percentile(holdMs, 0.99);

    // The same with the poll off: what a set costs by itself.
    rig.timer.stop();
    rig.link->waitForIdle();
    std::vector<double> idleReplyMs, idleHoldMs;
    setsFromAClient(rig, idleReplyMs, idleHoldMs);
    f.idleSetMedian = percentile(idleHoldMs, 0.5);
    rig.stop();
    return f;
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const double pollLimit = SimLine::lineMs(PollCommands * CommandBytes + PollReplyBytes);
    const double readOutLimit = SimLine::lineMs(CommandBytes + ReplySize::AllMemories);
    const int pollWaits = Wait::StatusCurrentVfo + Wait::StatusBothVfos + 4 * Wait::Meter + Wait::Flags;

    out << QStringLiteral("line-time limit of one poll: %1 bytes x 11 / 4800 = %2 ms (fixed waits %3 ms)")
               .arg(PollCommands * CommandBytes + PollReplyBytes)
               .arg(pollLimit, 0, 'f', 1)
               .arg(pollWaits)
        << Qt::endl;
    out << QStringLiteral("line-time limit of the read-out: %1 bytes = %2 ms")
               .arg(CommandBytes + ReplySize::AllMemories)
               .arg(readOutLimit, 0, 'f', 1)
        << Qt::endl;
    // Straight from the line, and through a USB adapter that hands the bytes over every 16 ms.
    const std::pair<int, int> cases[] = {{0, 0}, {30, 0}, {0, UsbBurstMs}, {30, UsbBurstMs}};
    for (const auto& [delay, burst] : cases) {
        out << Qt::endl
            << QStringLiteral("reply delay %1 ms%2")
                   .arg(delay)
                   .arg(burst > 0 ? QStringLiteral(", bytes handed over in %1 ms bursts").arg(burst) : QString())
            << Qt::endl;
        out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
                   .arg(QStringLiteral("mode"), -6)
                   .arg(QStringLiteral("poll median (x limit)"), 24)
                   .arg(QStringLiteral("poll p99"), 10)
                   .arg(QStringLiteral("polls/s"), 8)
                   .arg(QStringLiteral("read-out (x limit)"), 20)
                   .arg(QStringLiteral("F held median/p99"), 20)
                   .arg(QStringLiteral("F answered"), 11)
                   .arg(QStringLiteral("F held, no poll"), 16)
            << Qt::endl;
        for (const bool fast : {false, true}) {
            const Figures f = measure(fast, delay, burst, err);
            out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
                       .arg(fast ? QStringLiteral("fast") : QStringLiteral("exact"), -6)
                       .arg(QStringLiteral("%1 ms (%2)")
                                .arg(f.pollMedian, 0, 'f', 1)
                                .arg(f.pollMedian / pollLimit, 0, 'f', 2),
                            24)
                       .arg(QStringLiteral("%1 ms").arg(f.pollP99, 0, 'f', 1), 10)
                       .arg(f.pollsPerSecond, 8, 'f', 2)
                       .arg(QStringLiteral("%1 ms (%2)")
                                .arg(f.readOutMs, 0, 'f', 0)
                                .arg(f.readOutMs / readOutLimit, 0, 'f', 3),
                            20)
                       .arg(QStringLiteral("%1/%2 ms").arg(f.setMedian, 0, 'f', 0).arg(f.setP99, 0, 'f', 0), 20)
                       .arg(QStringLiteral("%1 ms").arg(f.replyMedian, 0, 'f', 1), 11)
                       .arg(QStringLiteral("%1 ms").arg(f.idleSetMedian, 0, 'f', 1), 16)
                << Qt::endl;
            if (f.shortPolls > 0 || f.readOutBytes != ReplySize::AllMemories)
                out << QStringLiteral("  (%1 polls with a short reply; read-out %2 bytes)")
                           .arg(f.shortPolls)
                           .arg(f.readOutBytes)
                    << Qt::endl;
        }
    }
    return 0;
}
