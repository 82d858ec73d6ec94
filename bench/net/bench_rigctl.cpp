// SPDX-License-Identifier: GPL-3.0-or-later
// bench_rigctl: how fast the network server answers with the poll running on the virtual radio.
// Prints: the latency of "f" (median, p99), the time from "F" until the virtual radio holds the new
// frequency (median, p99), and the poll rate with no clients and with 4 clients each sending 10
// requests a second.

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
#include <vector>

namespace {
using Bench::percentile;
using Bench::serveFor;
using Bench::whileServing;

constexpr int GetRequests = 1000;
constexpr int SetRequests = 25;
constexpr int MaxSetPauseMs = 700;  // sets come at random moments of the poll cycle
constexpr int LoadClients = 4;
constexpr int LoadRatePerSecond = 10;
constexpr int RateWindowMs = 8000;
constexpr int GuardMs = 5000;

// A blocking client on its own thread, as a logging program would be.
class BlockingClient {
public:
    explicit BlockingClient(quint16 port)
    {
        socket_.connectToHost(QHostAddress::LocalHost, port);
        ok_ = socket_.waitForConnected(GuardMs);
        socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    }
    bool ok() const { return ok_; }
    QByteArray ask(const QByteArray& line)
    {
        socket_.write(line);
        socket_.flush();
        QByteArray reply;
        while (!reply.contains('\n')) {
            if (!socket_.waitForReadyRead(GuardMs))
                return {};
            reply += socket_.readAll();
        }
        return reply;
    }

private:
    QTcpSocket socket_;
    bool ok_ = false;
};

}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    SimRig rig;
    QString error;
    if (!rig.start(&error)) {
        out << "bench_rigctl: " << error << Qt::endl;
        return 1;
    }
    while (!rig.backend->state().haveStatus)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    const quint16 port = rig.port();

    // 1. "f" round trips, one after another, with the poll running.
    std::vector<double> getMs;
    whileServing([&] {
        BlockingClient c(port);
        QElapsedTimer t;
        for (int i = 0; i < GetRequests && c.ok(); ++i) {
            t.start();
            if (c.ask("f\n").isEmpty())
                break;
            getMs.push_back(t.nsecsElapsed() / 1e6);
        }
    });
    out << QStringLiteral("f over the network (%1 requests, poll running): median %2 ms, p99 %3 ms, max %4 ms")
               .arg(getMs.size())
               .arg(percentile(getMs, 0.5), 0, 'f', 3)
               .arg(percentile(getMs, 0.99), 0, 'f', 3)
               .arg(percentile(getMs, 1.0), 0, 'f', 3)
        << Qt::endl;

    // 2. "F" until the virtual radio holds the new frequency.
    std::vector<double> setMs;
    whileServing([&] {
        BlockingClient c(port);
        QElapsedTimer t;
        for (int i = 0; i < SetRequests && c.ok(); ++i) {
            const qint64 hz = 14070000 + 1000 * (i % 2 == 0 ? i + 1 : -(i + 1));
            t.start();
            if (c.ask(QStringLiteral("F %1\n").arg(hz).toLatin1()) != "RPRT 0\n")
                break;
            while (rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz != hz / 10 && t.elapsed() < GuardMs)
                QThread::usleep(200);
            setMs.push_back(t.nsecsElapsed() / 1e6);
            QThread::msleep(QRandomGenerator::global()->bounded(MaxSetPauseMs));
        }
    });
    out << QStringLiteral("F until the radio holds it (%1 sets): median %2 ms, p99 %3 ms, max %4 ms")
               .arg(setMs.size())
               .arg(percentile(setMs, 0.5), 0, 'f', 1)
               .arg(percentile(setMs, 0.99), 0, 'f', 1)
               .arg(percentile(setMs, 1.0), 0, 'f', 1)
        << Qt::endl;

    // 3. Poll rate, alone and with 4 clients at 10 requests a second each.
    int before = rig.polls;
    serveFor(RateWindowMs);
    const double idleRate = (rig.polls - before) * 1000.0 / RateWindowMs;

    std::atomic<bool> stop{false};
    std::atomic<int> answered{0};
    std::vector<std::thread> clients;
    std::vector<double> loadMs[LoadClients];
    for (int k = 0; k < LoadClients; ++k) {
        clients.emplace_back([&, k] {
            BlockingClient c(port);
            const QByteArray requests[] = {"f\n", "m\n", "l STRENGTH\n", "s\n", "t\n"};
            QElapsedTimer t;
            for (int i = 0; !stop && c.ok(); ++i) {
                t.start();
                if (c.ask(requests[i % 5]).isEmpty())
                    break;
                loadMs[k].push_back(t.nsecsElapsed() / 1e6);
                ++answered;
                QThread::msleep(1000 / LoadRatePerSecond);
            }
        });
    }
    before = rig.polls;
    serveFor(RateWindowMs);
    const double loadRate = (rig.polls - before) * 1000.0 / RateWindowMs;
    stop = true;
    whileServing([&] {
        for (std::thread& t : clients)
            t.join();
    });
    std::vector<double> all;
    for (const auto& v : loadMs)
        all.insert(all.end(), v.begin(), v.end());
    out << QStringLiteral("poll rate: %1 polls/s with no client, %2 polls/s with %3 clients at %4 requests/s each")
               .arg(idleRate, 0, 'f', 2)
               .arg(loadRate, 0, 'f', 2)
               .arg(LoadClients)
               .arg(LoadRatePerSecond)
        << Qt::endl;
    out << QStringLiteral("  their %1 replies: median %2 ms, p99 %3 ms")
               .arg(answered.load())
               .arg(percentile(all, 0.5), 0, 'f', 3)
               .arg(percentile(all, 0.99), 0, 'f', 3)
        << Qt::endl;
    rig.stop();
    return 0;
}
