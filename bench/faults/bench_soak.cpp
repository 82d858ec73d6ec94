// SPDX-License-Identifier: GPL-3.0-or-later
// Soak: the main window's poll (status, meters, flags, decoded on the window's thread) against the
// virtual radio with random faults of every kind switched on, seeded, for a given time, with the port
// watch bringing the radio back after each close. The poller runs in a child process, so a crash is
// counted (and the child started again) rather than ending the run.
//
//   bench_soak [SECONDS] [--seed N] [--rate R]     (default 3600 s, seed 1, rate 0.2)
//
// Prints polls done, faults injected, crashes, the poller's resident memory at start and end, and
// its CPU use.

#include "FlagsDecoder.h"
#include "LineFaults.h"
#include "MeterDecoder.h"
#include "PortWatch.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <sys/resource.h>
#include <unistd.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <memory>

namespace {
constexpr int PollIntervalMs = 250;
constexpr int ReportEveryMs = 10000;
const char* const AllFaults = "drop,corrupt,truncate,late,double,unsolicited,silent,close";

qint64 residentKb()
{
    QFile f(QStringLiteral("/proc/self/statm"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> fields = f.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() * (::sysconf(_SC_PAGESIZE) / 1024) : -1;
}

qint64 cpuMs()
{
    rusage u{};
    ::getrusage(RUSAGE_SELF, &u);
    return (qint64(u.ru_utime.tv_sec) + u.ru_stime.tv_sec) * 1000 + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1000;
}

// The poll of the main window, without the window.
class Poller : public QObject {
public:
    explicit Poller(RadioLink& link) : link_(link)
    {
        timer_.setInterval(PollIntervalMs);
        connect(&timer_, &QTimer::timeout, this, &Poller::tick);
        timer_.start();
    }
    std::atomic<qint64> polls{0};
    qint64 noLink = 0;

private:
    void tick()
    {
        if (!link_.portOpen())
            return;
        link_.postMerged(JobKind::Poll, [this, link = &link_](CatPort& port) {
            const StatusReply status = Get_Status32(port);
            if (!status.ran)
                return;
            ++polls;
            link->deliver(this, [this, record = status.record] { noLink += decodeStatus(store_, record).noLink; });
            if (status.record.isEmpty())
                return;
            const MeterReplies m = readMeters(port, MeterSelector::TransmitBase);
            link->deliver(this, [m] {
                decodeMeters(firstByte(m.mainS), firstByte(m.subS), firstByte(m.transmit), firstByte(m.pitch));
            });
            if (!m.complete())
                return;
            const FlagsReply f = GetFlags(port, 1);
            link->deliver(this, [f] { decodeFlags(1, f.waiting, f.bytes); });
        });
    }

    RadioLink& link_;
    QTimer timer_;
    StatusRecord store_;
};

// The child: polls for the given time and reports on stdout, one "key=value ..." line at a time.
int runChild(int seconds, quint32 seed, double rate)
{
    QTemporaryDir dir;
    SimHost host;
    host.setLinkPath(dir.filePath(QStringLiteral("radio")));
    QString error;
    if (!host.start(&error)) {
        std::fprintf(stderr, "bench_soak: %s\n", qPrintable(error));
        return 3;
    }
    host.faults().setSeed(seed);
    host.faults().setRandom(*parseLineFaults(QLatin1String(AllFaults)), rate);
    const QString device = host.devicePath();
    auto clock = std::make_shared<RealClock>();
    auto owned = std::make_unique<RadioLink>(
        [device] {
            auto port = std::make_unique<QtSerialPort>();
            port->setDevice(device);
            port->open(nullptr);
            return std::unique_ptr<SerialPort>(std::move(port));
        },
        clock);
    RadioLink& link = *owned;
    PortWatch watch(link);
    watch.start();
    Poller poller(link);

    const auto report = [&](const char* kind) {
        std::printf("%s polls=%lld faults=%llu closures=%d nolink=%lld rss_kb=%lld cpu_ms=%lld\n", kind,
                    static_cast<long long>(poller.polls.load()),
                    static_cast<unsigned long long>(host.faults().injected()), host.closures(),
                    static_cast<long long>(poller.noLink), static_cast<long long>(residentKb()),
                    static_cast<long long>(cpuMs()));
        std::fflush(stdout);
    };
    // The start figure once the first polls have run and the buffers have their working size.
    QTimer::singleShot(std::min(ReportEveryMs, seconds * 500), [&] { report("start"); });
    QTimer progress;
    progress.setInterval(ReportEveryMs);
    QObject::connect(&progress, &QTimer::timeout, [&] { report("progress"); });
    progress.start();
    QTimer::singleShot(seconds * 1000, [&] {
        report("end");
        QCoreApplication::quit();
    });
    const int rc = QCoreApplication::exec();
    // The link goes before the poller and the watch: a job still running delivers to them.
    link.shutdown();
    owned.reset();
    host.stop();
    return rc;
}

struct Figures {
    qint64 polls = 0, faults = 0, closures = 0, noLink = 0, rssKb = -1, cpuMs = 0;
};

Figures parse(const QByteArray& line)
{
    Figures f;
    for (const QByteArray& field : line.trimmed().split(' ')) {
        const qsizetype eq = field.indexOf('=');
        if (eq < 0)
            continue;
        const QByteArray key = field.left(eq);
        const qint64 v = field.mid(eq + 1).toLongLong();
        if (key == "polls")
            f.polls = v;
        else if (key == "faults")
            f.faults = v;
        else if (key == "closures")
            f.closures = v;
        else if (key == "nolink")
            f.noLink = v;
        else if (key == "rss_kb")
            f.rssKb = v;
        else if (key == "cpu_ms")
            f.cpuMs = v;
    }
    return f;
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    int seconds = 3600;
    quint32 seed = 1;
    double rate = 0.2;
    bool child = false;
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == u"--seed" && i + 1 < args.size())
            seed = args[++i].toUInt();
        else if (args[i] == u"--rate" && i + 1 < args.size())
            rate = args[++i].toDouble();
        else if (args[i] == u"--child")
            child = true;
        else if (args[i].toInt() > 0)
            seconds = args[i].toInt();
        else {
            std::fprintf(stderr, "usage: bench_soak [SECONDS] [--seed N] [--rate R]\n");
            return 2;
        }
    }
    if (child)
        return runChild(seconds, seed, rate);

    std::printf("soak: %d s of polling, faults %s at rate %.2f, seed %u\n", seconds, AllFaults, rate, seed);
    std::fflush(stdout);
    QElapsedTimer wall;
    wall.start();
    Figures total;
    Figures first, last;
    bool haveFirst = false;
    int crashes = 0;
    int run = 0;
    while (wall.elapsed() < qint64(seconds) * 1000) {
        const int left = std::max(1, int((qint64(seconds) * 1000 - wall.elapsed()) / 1000));
        QProcess p;
        p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p.start(QCoreApplication::applicationFilePath(),
                {QString::number(left), QStringLiteral("--child"), QStringLiteral("--seed"),
                 QString::number(seed + run), QStringLiteral("--rate"), QString::number(rate)});
        ++run;
        Figures latest;
        while (p.state() != QProcess::NotRunning || p.canReadLine()) {
            if (!p.canReadLine()) {
                p.waitForReadyRead(1000);
                continue;
            }
            const QByteArray line = p.readLine();
            const Figures f = parse(line);
            latest = f;
            if (line.startsWith("start") && !haveFirst) {
                first = f;
                haveFirst = true;
            }
            if (line.startsWith("progress") || line.startsWith("end"))
                std::printf("  %.0f s: %s", wall.elapsed() / 1000.0, line.constData());
            std::fflush(stdout);
        }
        p.waitForFinished(-1);
        total.polls += latest.polls;
        total.faults += latest.faults;
        total.closures += latest.closures;
        total.noLink += latest.noLink;
        total.cpuMs += latest.cpuMs;
        last = latest;
        if (p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
            ++crashes;
            std::printf("  poller ended abnormally (%s, code %d): started again\n",
                        p.exitStatus() == QProcess::CrashExit ? "crash" : "exit", p.exitCode());
        }
    }
    const double wallS = wall.elapsed() / 1000.0;
    std::printf("polls done:       %lld (%.1f a second)\n", static_cast<long long>(total.polls), total.polls / wallS);
    std::printf("faults injected:  %lld (terminal closed %lld times; %lld polls showed No Link)\n",
                static_cast<long long>(total.faults), static_cast<long long>(total.closures),
                static_cast<long long>(total.noLink));
    std::printf("crashes:          %d\n", crashes);
    std::printf("resident memory:  start %lld kB, end %lld kB, growth %lld kB\n", static_cast<long long>(first.rssKb),
                static_cast<long long>(last.rssKb), static_cast<long long>(last.rssKb - first.rssKb));
    std::printf("CPU:              %.1f s over %.0f s (%.2f %% of one core)\n", total.cpuMs / 1000.0, wallS,
                100.0 * total.cpuMs / 1000.0 / wallS);
    return crashes == 0 ? 0 : 1;
}
