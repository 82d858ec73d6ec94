// SPDX-License-Identifier: GPL-3.0-or-later
// bench_follow: the main window's display while the virtual radio's knob turns, for the exact link,
// the fast link, and the fast link following the knob, side by side. The virtual radio on a
// pseudo-terminal with the real serial adapter, the real main window's poll, and the network server
// fed by it. The knob turns at 1 kHz/s and at 10 kHz/s for 5 s each, with replies starting at once
// and 30 ms late. Prints per case: display updates per second while the knob turns, the lag from the
// radio reaching a frequency to the display showing it (median, p99), the longest the meters and
// flags went without a full poll while turning, polls per second with the knob at rest, and the lag
// of the server's f (median, p99).

#include "BenchServing.h"
#include "ConsoleFixture.h"
#include "LinkRig.h"
#include "NetworkControl.h"
#include "QtSerialPort.h"
#include "RealClock.h"
#include "RigctlServer.h"
#include "SimHost.h"

#include <QApplication>
#include <QTcpSocket>
#include <QTextStream>
#include <QThread>
#include <atomic>
#include <mutex>
#include <vector>

namespace {
using Bench::percentile;
using Bench::serveFor;
constexpr int SettleMs = 1500;
constexpr int RestMs = 3000;
constexpr int TurnS = 5;
constexpr int AfterTurnMs = 500;
constexpr int ClientPauseMs = 10;
constexpr int GuardMs = 5000;
constexpr int HzPerStep = 10;

struct Case {
    QString name;
    bool fast;
    bool follow;
};

struct Figures {
    double updatesPerS = 0, lagMedian = 0, lagP99 = 0, worstMeterAgeMs = 0, restPollsPerS = 0;
    double fLagMedian = 0, fLagP99 = 0;
};

Figures measure(const Case& c, double hzPerS, int replyDelayMs, QTextStream& err)
{
    Figures f;
    SimHost sim;
    sim.setReplyDelayMs(replyDelayMs);
    QString error;
    if (!sim.start(&error)) {
        err << "bench_follow: " << error << Qt::endl;
        return f;
    }
    const QString path = sim.devicePath();
    RadioLink link(
        [path] {
            auto p = std::make_unique<QtSerialPort>();
            p->setDevice(path);
            QString e;
            p->setSettings(QStringLiteral("4800,n,8,2"), &e);
            p->open(&e);
            return p;
        },
        std::make_shared<RealClock>());
    link.setFastLink(c.fast);
    MemorySettingsStore store;
    FakeWindows windows;
    FakePrompts prompts;
    auto form = std::make_unique<Form1>(link, store, windows, prompts);
    auto network = std::make_unique<NetworkControl>(*form, store);
    network->start(NetworkSettings::Endpoint{QStringLiteral("127.0.0.1"), 0}, &error);
    form->setFollowKnob(c.follow);
    form->setPollEnabled(true);
    serveFor(SettleMs);

    // At rest: the polls per second.
    std::vector<qint64> pollsAt;
    QObject::connect(form.get(), &Form1::pollFinished, [&] { pollsAt.push_back(sim.elapsedMs()); });
    const qint64 restStart = sim.elapsedMs();
    serveFor(RestMs);
    const auto pollsIn = [&](qint64 from, qint64 to) {
        return std::count_if(pollsAt.begin(), pollsAt.end(), [&](qint64 t) { return t >= from && t < to; });
    };
    f.restPollsPerS = 1000.0 * double(pollsIn(restStart, restStart + RestMs)) / RestMs;

    // Turning: every change of the display, with the time the radio reached what it shows.
    const qint64 startHz = qRound64(form->vfoKHz(1) * 1000.0);
    std::vector<double> lags;
    qint64 lastShown = startHz;
    int changes = 0;
    const auto lagOf = [&](qint64 hz, qint64 atMs) -> std::optional<double> {
        const auto reached = sim.knobReachedStepAtMs((hz - startHz) / HzPerStep);
        if (!reached || hz == startHz)
            return std::nullopt;
        return double(atMs - *reached);
    };
    QObject::connect(form.get(), &Form1::statusShown, [&](const StatusView&) {
        const qint64 hz = qRound64(form->vfoKHz(1) * 1000.0);
        if (hz == lastShown)
            return;
        lastShown = hz;
        ++changes;
        if (const auto lag = lagOf(hz, sim.elapsedMs()))
            lags.push_back(*lag);
    });

    // A well-behaved network client reading f all along.
    std::vector<double> fLags;
    std::mutex fMutex;
    std::atomic<bool> stop{false};
    std::thread client([&, port = network->server()->serverPort()] {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, port);
        if (!socket.waitForConnected(GuardMs))
            return;
        qint64 last = startHz;
        while (!stop) {
            socket.write("f\n");
            socket.flush();
            QByteArray reply;
            while (!reply.contains('\n') && socket.waitForReadyRead(GuardMs))
                reply += socket.readAll();
            const qint64 hz = reply.trimmed().toLongLong();
            const qint64 at = sim.elapsedMs();
            if (hz != last) {
                last = hz;
                if (const auto lag = lagOf(hz, at)) {
                    std::lock_guard lock(fMutex);
                    fLags.push_back(*lag);
                }
            }
            QThread::msleep(ClientPauseMs);
        }
    });

    const qint64 turnStart = sim.elapsedMs();
    sim.turnKnob({hzPerS, double(TurnS)});
    serveFor(TurnS * 1000 + AfterTurnMs);
    stop = true;
    while (client.joinable()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        client.join();
    }
    const qint64 turnEnd = turnStart + TurnS * 1000;
    f.updatesPerS = double(changes) / TurnS;
    f.lagMedian = percentile(lags, 0.5);
    f.lagP99 = percentile(lags, 0.99);
    qint64 worst = 0;
    qint64 previous = turnStart;
    for (const qint64 t : pollsAt) {
        if (t < turnStart || t > turnEnd)
            continue;
        worst = std::max(worst, t - previous);
        previous = t;
    }
    f.worstMeterAgeMs = double(std::max(worst, turnEnd - previous));
    f.fLagMedian = percentile(fLags, 0.5);
    f.fLagP99 = percentile(fLags, 0.99);

    form->setPollEnabled(false);
    network.reset();
    link.waitForIdle();
    form.reset();
    link.shutdown();
    sim.stop();
    return f;
}
}  // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    // Modes named on the command line are the only ones run (all three without any).
    const QStringList only = app.arguments().mid(1);
    const Case cases[] = {{QStringLiteral("exact"), false, false},
                          {QStringLiteral("fast"), true, false},
                          {QStringLiteral("fast+follow"), true, true}};
    out << "knob  delay  mode         updates/s  lag med  lag p99  meters worst  rest polls/s  f lag med  f lag p99\n";
    for (const double hzPerS : {1000.0, 10000.0}) {
        for (const int delay : {0, 30}) {
            for (const Case& c : cases) {
                if (!only.isEmpty() && !only.contains(c.name))
                    continue;
                const Figures f = measure(c, hzPerS, delay, err);
                out << QStringLiteral("%1  %2  %3  %4  %5  %6  %7  %8  %9  %10\n")
                           .arg(QStringLiteral("%1k").arg(hzPerS / 1000, 0, 'f', 0), 3)
                           .arg(QStringLiteral("%1ms").arg(delay), 5)
                           .arg(c.name, -11)
                           .arg(f.updatesPerS, 9, 'f', 1)
                           .arg(QStringLiteral("%1ms").arg(f.lagMedian, 0, 'f', 0), 7)
                           .arg(QStringLiteral("%1ms").arg(f.lagP99, 0, 'f', 0), 7)
                           .arg(QStringLiteral("%1ms").arg(f.worstMeterAgeMs, 0, 'f', 0), 12)
                           .arg(f.restPollsPerS, 12, 'f', 2)
                           .arg(QStringLiteral("%1ms").arg(f.fLagMedian, 0, 'f', 0), 9)
                           .arg(QStringLiteral("%1ms").arg(f.fLagP99, 0, 'f', 0), 9);
                out.flush();
            }
        }
    }
    return 0;
}
