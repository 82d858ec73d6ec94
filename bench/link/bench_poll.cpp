// SPDX-License-Identifier: GPL-3.0-or-later
// bench_poll: the status poll against the virtual radio over a pseudo-terminal, with the real serial
// adapter and the real clock. Prints the wall time of one Get_Status32 + GetFlags against what the
// radio's protocol makes it cost: the fixed waits, and the time the bytes take on a 4800 baud line.

#include "CatPort.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RealClock.h"
#include "SimHost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <algorithm>
#include <cmath>
#include <vector>

namespace {
constexpr int Polls = 50;
constexpr int CommandBytes = 5;
constexpr int Commands = 3;  // status P4 = 2, status P4 = 3, flags

double percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    const double rank = p * (static_cast<double>(v.size()) - 1);
    const auto lo = static_cast<size_t>(std::floor(rank));
    const auto hi = static_cast<size_t>(std::ceil(rank));
    return v[lo] + (v[hi] - v[lo]) * (rank - static_cast<double>(lo));
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);

    SimHost host;
    QString error;
    if (!host.start(&error)) {
        err << "bench_poll: " << error << '\n';
        return 1;
    }
    QtSerialPort serial;
    serial.setDevice(host.devicePath());
    serial.setSettings(QStringLiteral("4800,n,8,2"), nullptr);
    if (!serial.open(&error)) {
        err << "bench_poll: " << error << '\n';
        return 1;
    }
    RealClock clock;
    CatPort port(serial, clock);

    std::vector<double> wallMs;
    qint64 bytesIn = 0;
    int shortPolls = 0;
    for (int i = 0; i < Polls; ++i) {
        QElapsedTimer t;
        t.start();
        const StatusReply status = Get_Status32(port);
        const FlagsReply flags = GetFlags(port, 1);
        wallMs.push_back(static_cast<double>(t.nsecsElapsed()) / 1e6);
        // The record keeps 16 bytes of each status reply, but the P4 = 3 reply brought 32.
        bytesIn += status.record.size() + ReplySize::VfoRecord + flags.bytes.size();
        if (status.record.size() != ReplySize::BothVfos || flags.waiting != ReplySize::Flags)
            ++shortPolls;
    }

    const int waits = Wait::StatusCurrentVfo + Wait::StatusBothVfos + Wait::Flags;
    const int bytesPerPoll = Commands * CommandBytes + ReplySize::VfoRecord + ReplySize::BothVfos + ReplySize::Flags;
    const double lineMs = SimLine::lineMs(bytesPerPoll);
    const double median = percentile(wallMs, 0.5);
    const double p99 = percentile(wallMs, 0.99);
    const double budget = waits + lineMs;

    out << "polls                          " << Polls << " (Get_Status32 + GetFlags, " << shortPolls
        << " with a short reply)\n";
    out << "bytes received per poll        " << (static_cast<double>(bytesIn) / Polls) << '\n';
    out << "median wall time               " << QString::number(median, 'f', 1) << " ms\n";
    out << "p99 wall time                  " << QString::number(p99, 'f', 1) << " ms\n";
    out << "prescribed waits               " << waits << " ms (" << Wait::StatusCurrentVfo << " + "
        << Wait::StatusBothVfos << " + " << Wait::Flags << ")\n";
    out << "line time of the bytes         " << QString::number(lineMs, 'f', 1) << " ms (" << bytesPerPoll
        << " bytes at " << SimLine::Baud << " baud, " << SimLine::BitsPerByte << " bits a byte)\n";
    out << "median / waits                 " << QString::number(median / waits, 'f', 3) << '\n';
    out << "median / (waits + line time)   " << QString::number(median / budget, 'f', 3)
        << (median <= 1.1 * budget ? "  (within 10%)" : "  (over 10%)") << '\n';
    out << "p99 / (waits + line time)      " << QString::number(p99 / budget, 'f', 3) << '\n';
    return 0;
}
