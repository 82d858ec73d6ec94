// SPDX-License-Identifier: GPL-3.0-or-later
// bench_sharing: the three front doors at once against the virtual radio on a pseudo-terminal, with
// the real serial adapter and clock and the 250 ms poll: a network client, a text-port client and a
// native-port client, each on a thread of its own reading as fast as it can; then a fourth client
// sets through each door in turn, waiting each time until the radio holds the set, while the three
// read on. Prints per link mode (exact, fast): the latency of a read through each door (median, p99)
// with the readers alone and with the sets, of a set until the radio holds it, and the poll rate
// without clients, with the three readers, and with the sets too.

#include "BenchServing.h"
#include "BlockingClient.h"
#include "NativePort.h"
#include "SimRig.h"
#include "TextPort.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {
using Bench::percentile;
using Bench::serveFor;
constexpr int SettleMs = 1000;
constexpr int WindowMs = 8000;
constexpr int SetsWindowMs = 20000;  // a set takes up to a poll: more time for a sample of them
constexpr int HoldGuardMs = 5000;

enum Door { Network, Text, Native, Doors };
const char* const DoorNames[Doors] = {"network", "text port", "native port"};

struct Sample {
    std::vector<double> floodReadMs;  // the three clients only reading
    std::vector<double> readMs;       // the same while sets come through every door
    std::vector<double> setMs;
    int faults = 0;
};

struct Figures {
    double idlePollsPerSecond = 0;
    double floodPollsPerSecond = 0;
    double setsPollsPerSecond = 0;
    Sample doors[Doors];
};

double msSince(const QElapsedTimer& t)
{
    return static_cast<double>(t.nsecsElapsed()) / 1e6;
}

// Waits until the radio holds what was set: false when it does not within the guard.
bool heldWithin(const std::function<bool()>& holds, const QElapsedTimer& t)
{
    while (!holds()) {
        if (t.elapsed() > HoldGuardMs)
            return false;
        QThread::usleep(200);
    }
    return true;
}

// One client reading as fast as it can until `stop`; each read's time goes to `into` as it is then.
void readUntil(const std::atomic<bool>& stop, const std::atomic<std::vector<double>*>& into, int& faults,
               const std::function<bool()>& read)
{
    while (!stop.load()) {
        QElapsedTimer t;
        t.start();
        if (read())
            into.load()->push_back(msSince(t));
        else
            ++faults;
    }
}

// The poll rate over the window while the event loop serves the ports.
double pollRate(SimRig& rig, int windowMs = WindowMs)
{
    serveFor(SettleMs);
    const int before = rig.polls;
    serveFor(windowMs);
    return (rig.polls - before) * 1000.0 / windowMs;
}

Figures measure(bool fast, QTextStream& err)
{
    Figures f;
    SimRig rig;
    QString error;
    if (!rig.start(&error)) {
        err << "bench_sharing: " << error << Qt::endl;
        return f;
    }
    rig.link->setFastLink(fast);
    NativePort native(*rig.backend, rig.cache);
    TextPort text(*rig.backend);
    if (!native.open(&error) || !text.open(&error)) {
        err << "bench_sharing: " << error << Qt::endl;
        return f;
    }
    f.idlePollsPerSecond = pollRate(rig);

    // Three readers, one per door; their samples go first to the flood figures, then to the others.
    std::atomic<bool> stop{false};
    std::atomic<int> finished{0};
    std::atomic<std::vector<double>*> into[Doors];
    for (int d = 0; d < Doors; ++d)
        into[d] = &f.doors[d].floodReadMs;
    std::vector<std::thread> clients;
    clients.emplace_back([&, port = rig.port()] {
        BlockingClient c = BlockingClient::tcp(port);
        readUntil(stop, into[Network], f.doors[Network].faults,
                  [&] { return c.write("f\n") && c.readUntil('\n').endsWith('\n'); });
        ++finished;
    });
    clients.emplace_back([&, path = text.linkPath()] {
        BlockingClient c = BlockingClient::pty(path);
        readUntil(stop, into[Text], f.doors[Text].faults,
                  [&] { return c.write("FA;") && c.readUntil(';').size() == 14; });
        ++finished;
    });
    clients.emplace_back([&, path = native.linkPath()] {
        BlockingClient c = BlockingClient::pty(path);
        const QByteArray flags = CatCommand::make(Op::ReadFlags, 1).bytes();
        const QByteArray record = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes();
        int reads = 0;
        readUntil(stop, into[Native], f.doors[Native].faults, [&] {
            const bool status = ++reads % 2 == 0;
            const int size = status ? ReplySize::VfoRecord : ReplySize::Flags;
            return c.write(status ? record : flags) && c.readCount(size).size() == size;
        });
        ++finished;
    });
    f.floodPollsPerSecond = pollRate(rig);

    // Now a fourth client sets through each door in turn, each set until the radio holds it, while
    // the readers go on. Its text and native sets have no reply, so it shares those ports' terminals.
    for (int d = 0; d < Doors; ++d)
        into[d] = &f.doors[d].readMs;  // the readers are between requests for a moment at most
    std::atomic<bool> stopSets{false};
    VirtualRadio& radio = rig.sim.radio();
    clients.emplace_back([&, port = rig.port(), textPath = text.linkPath(), nativePath = native.linkPath()] {
        BlockingClient net = BlockingClient::tcp(port);
        BlockingClient txt = BlockingClient::pty(textPath);
        BlockingClient nat = BlockingClient::pty(nativePath);
        for (int n = 1; !stopSets.load(); ++n) {
            const Door door = static_cast<Door>(n % Doors);
            QElapsedTimer t;
            t.start();
            bool ok = false;
            if (door == Network) {
                const qint64 hz = 14000000 + (n % 100) * 1000;
                ok = net.write(QByteArray("F ") + QByteArray::number(hz) + '\n') && net.readUntil('\n') == "RPRT 0\n" &&
                     heldWithin([&] { return radio.vfo(VirtualRadio::Vfo::A).freq10Hz * 10 == hz; }, t);
            } else if (door == Text) {
                const qint64 hz = 7000000 + (n % 100) * 1000;
                ok = txt.write(QStringLiteral("FB%1;").arg(hz, 11, 10, QLatin1Char('0')).toLatin1()) &&
                     heldWithin([&] { return radio.vfo(VirtualRadio::Vfo::B).freq10Hz * 10 == hz; }, t);
            } else {
                const int mode = n % 2 == 0 ? ModeCode::Lsb : ModeCode::Usb;  // the mode byte is the code
                ok = nat.write(CatCommand::make(Op::SetMode, mode).bytes()) &&
                     heldWithin([&] { return radio.vfo(VirtualRadio::Vfo::A).modeByte == mode; }, t);
            }
            if (ok)
                f.doors[door].setMs.push_back(msSince(t));
            else
                ++f.doors[door].faults;
        }
        ++finished;
    });
    f.setsPollsPerSecond = pollRate(rig, SetsWindowMs);
    stopSets = true;
    stop = true;
    QElapsedTimer ending;
    ending.start();
    while (finished.load() < int(clients.size()) && ending.elapsed() < HoldGuardMs * 2)
        serveFor(10);  // each client finishes its request
    for (std::thread& t : clients)
        t.join();
    native.close();
    text.close();
    rig.stop();
    return f;
}

QString medianAndP99(const std::vector<double>& v, int decimals)
{
    return QStringLiteral("%1/%2 ms")
        .arg(percentile(v, 0.5), 0, 'f', decimals)
        .arg(percentile(v, 0.99), 0, 'f', decimals);
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    QTemporaryDir runtime;  // the ports' links, apart from a running program's
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));

    out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
               .arg(QStringLiteral("mode"), -6)
               .arg(QStringLiteral("door"), -12)
               .arg(QStringLiteral("reads only"), 20)
               .arg(QStringLiteral("reads during sets"), 20)
               .arg(QStringLiteral("sets"), 5)
               .arg(QStringLiteral("set held median/p99"), 21)
               .arg(QStringLiteral("faults"), 7)
        << Qt::endl;
    for (const bool fast : {false, true}) {
        const Figures f = measure(fast, err);
        const QString mode = fast ? QStringLiteral("fast") : QStringLiteral("exact");
        for (int d = 0; d < Doors; ++d) {
            const Sample& s = f.doors[d];
            out << QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
                       .arg(mode, -6)
                       .arg(QString::fromLatin1(DoorNames[d]), -12)
                       .arg(QStringLiteral("%1 x %2").arg(s.floodReadMs.size()).arg(medianAndP99(s.floodReadMs, 2)), 20)
                       .arg(QStringLiteral("%1 x %2").arg(s.readMs.size()).arg(medianAndP99(s.readMs, 2)), 20)
                       .arg(s.setMs.size(), 5)
                       .arg(medianAndP99(s.setMs, 0), 21)
                       .arg(s.faults, 7)
                << Qt::endl;
        }
        const auto percentOfIdle = [&](double rate) {
            return f.idlePollsPerSecond > 0 ? 100.0 * rate / f.idlePollsPerSecond : 0.0;
        };
        out << QStringLiteral("%1 polls/s: %2 without clients, %3 with three reading (%4 %), %5 with sets too (%6 %)")
                   .arg(mode, -6)
                   .arg(f.idlePollsPerSecond, 0, 'f', 2)
                   .arg(f.floodPollsPerSecond, 0, 'f', 2)
                   .arg(percentOfIdle(f.floodPollsPerSecond), 0, 'f', 0)
                   .arg(f.setsPollsPerSecond, 0, 'f', 2)
                   .arg(percentOfIdle(f.setsPollsPerSecond), 0, 'f', 0)
            << Qt::endl;
    }
    return 0;
}
