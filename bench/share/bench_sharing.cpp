// bench_sharing: the three front doors at once against the virtual radio on a pseudo-terminal, with
// the real serial adapter and clock and the 250 ms poll: a network client, a text-port client and a
// native-port client, each on a thread of its own reading as fast as it can and now and then setting
// something and waiting until the radio holds it. Prints per link mode (exact, fast): the latency of a
// read through each door (median, p99), of a set until the radio holds it, and the poll rate with the
// three clients beside the rate without any.

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
constexpr int SetEvery = 10;  // one set among this many requests
constexpr int HoldGuardMs = 5000;

enum Door { Network, Text, Native, Doors };
const char* const DoorNames[Doors] = {"network", "text port", "native port"};

struct Sample {
    std::vector<double> readMs;
    std::vector<double> setMs;
    int faults = 0;
};

struct Figures {
    double idlePollsPerSecond = 0;
    double busyPollsPerSecond = 0;
    Sample doors[Doors];
};

double msSince(const QElapsedTimer& t)
{
    return static_cast<double>(t.nsecsElapsed()) / 1e6;
}

// Waits until the radio holds what was set; the time since `t` started, or a fault.
bool heldWithin(const std::function<bool()>& holds, const QElapsedTimer& t)
{
    while (!holds()) {
        if (t.elapsed() > HoldGuardMs)
            return false;
        QThread::usleep(200);
    }
    return true;
}

// One client's loop: reads as fast as it can, every SetEvery-th request a set, until `stop`.
void runClient(const std::atomic<bool>& stop, Sample& s, const std::function<bool()>& read,
               const std::function<bool(int, const QElapsedTimer&)>& set)
{
    for (int i = 1; !stop.load(); ++i) {
        QElapsedTimer t;
        t.start();
        if (i % SetEvery == 0) {
            if (set(i / SetEvery, t))
                s.setMs.push_back(msSince(t));
            else
                ++s.faults;
        } else if (read()) {
            s.readMs.push_back(msSince(t));
        } else {
            ++s.faults;
        }
    }
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
    NativePort native(*rig.backend, *rig.link, rig.cache);
    TextPort text(*rig.backend);
    if (!native.open(&error) || !text.open(&error)) {
        err << "bench_sharing: " << error << Qt::endl;
        return f;
    }

    serveFor(SettleMs);
    int before = rig.polls;
    serveFor(WindowMs);
    f.idlePollsPerSecond = (rig.polls - before) * 1000.0 / WindowMs;

    VirtualRadio& radio = rig.sim.radio();
    std::atomic<bool> stop{false};
    std::atomic<int> finished{0};
    std::vector<std::thread> clients;
    clients.emplace_back([&, port = rig.port()] {
        BlockingClient c = BlockingClient::tcp(port);
        runClient(
            stop, f.doors[Network],
            [&] { return c.write("f\n") && c.readUntil('\n').endsWith('\n'); },
            [&](int n, const QElapsedTimer& t) {
                const qint64 hz = 14000000 + (n % 100) * 1000;
                return c.write(QByteArray("F ") + QByteArray::number(hz) + '\n') && c.readUntil('\n') == "RPRT 0\n" &&
                       heldWithin([&] { return radio.vfo(VirtualRadio::Vfo::A).freq10Hz * 10 == hz; }, t);
            });
        ++finished;
    });
    clients.emplace_back([&, path = text.linkPath()] {
        BlockingClient c = BlockingClient::pty(path);
        runClient(
            stop, f.doors[Text], [&] { return c.write("FA;") && c.readUntil(';').size() == 14; },
            [&](int n, const QElapsedTimer& t) {
                const qint64 hz = 7000000 + (n % 100) * 1000;
                return c.write(QStringLiteral("FB%1;").arg(hz, 11, 10, QLatin1Char('0')).toLatin1()) &&
                       heldWithin([&] { return radio.vfo(VirtualRadio::Vfo::B).freq10Hz * 10 == hz; }, t);
            });
        ++finished;
    });
    clients.emplace_back([&, path = native.linkPath()] {
        BlockingClient c = BlockingClient::pty(path);
        const QByteArray flags = CatCommand::make(Op::ReadFlags, 1).bytes();
        const QByteArray record = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes();
        int reads = 0;
        runClient(
            stop, f.doors[Native],
            [&] {
                const bool status = ++reads % 2 == 0;
                const int size = status ? ReplySize::VfoRecord : ReplySize::Flags;
                return c.write(status ? record : flags) && c.readCount(size).size() == size;
            },
            [&](int n, const QElapsedTimer& t) {
                const int mode = n % 2 == 0 ? ModeCode::Lsb : ModeCode::Usb;  // the mode byte is the code
                return c.write(CatCommand::make(Op::SetMode, mode).bytes()) &&
                       heldWithin([&] { return radio.vfo(VirtualRadio::Vfo::A).modeByte == mode; }, t);
            });
        ++finished;
    });
    serveFor(SettleMs);
    before = rig.polls;
    serveFor(WindowMs);
    f.busyPollsPerSecond = (rig.polls - before) * 1000.0 / WindowMs;
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
               .arg(QStringLiteral("reads"), 6)
               .arg(QStringLiteral("read median/p99"), 18)
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
                       .arg(s.readMs.size(), 6)
                       .arg(QStringLiteral("%1/%2 ms")
                                .arg(percentile(s.readMs, 0.5), 0, 'f', 2)
                                .arg(percentile(s.readMs, 0.99), 0, 'f', 2),
                            18)
                       .arg(s.setMs.size(), 5)
                       .arg(QStringLiteral("%1/%2 ms")
                                .arg(percentile(s.setMs, 0.5), 0, 'f', 0)
                                .arg(percentile(s.setMs, 0.99), 0, 'f', 0),
                            21)
                       .arg(s.faults, 7)
                << Qt::endl;
        }
        out << QStringLiteral("%1 polls/s: %2 without clients, %3 with the three (%4 %)")
                   .arg(mode, -6)
                   .arg(f.idlePollsPerSecond, 0, 'f', 2)
                   .arg(f.busyPollsPerSecond, 0, 'f', 2)
                   .arg(f.idlePollsPerSecond > 0 ? 100.0 * f.busyPollsPerSecond / f.idlePollsPerSecond : 0.0, 0, 'f',
                        0)
            << Qt::endl;
    }
    return 0;
}
