// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the fault tests share: the process's CPU time, a stable device path for the virtual radio,
// and the display text a frequency should produce.

#include "CatCommand.h"
#include "LineFaults.h"
#include "NumberFormat.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <sys/resource.h>
#include <QElapsedTimer>
#include <QString>
#include <QTest>
#include <functional>

namespace FaultRun {
// CPU time of the whole process (every thread: window, link, virtual radio), in milliseconds.
inline qint64 cpuMs()
{
    rusage u{};
    ::getrusage(RUSAGE_SELF, &u);
    return (qint64(u.ru_utime.tv_sec) + u.ru_stime.tv_sec) * 1000 + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1000;
}

// The share of one core the process used over a stretch of wall time.
class CpuMeter {
public:
    CpuMeter() : cpu0_(cpuMs()) { wall_.start(); }
    double share() const
    {
        const qint64 wall = std::max<qint64>(1, wall_.elapsed());
        return double(cpuMs() - cpu0_) / double(wall);
    }

private:
    qint64 cpu0_;
    QElapsedTimer wall_;
};

// A process that spins has one core busy; a polling program idles between its waits. Sanitizer builds
// cost several times the CPU of a plain one, so the bound is generous and still far from a spin.
constexpr double MaxCpuShare = 0.5;

inline QString frequencyText(qint64 freq10Hz)
{
    return formatNumber(freq10Hz / 100.0, Pattern::Frequency);
}

// Polls that reached the radio: each begins with the request for the current VFO's record.
inline int pollsSeen(const SimHost& host)
{
    static const QByteArray first = QByteArray::fromHex("0000000210");  // 00 00 00 02 10
    int n = 0;
    const QList<SimHost::LogEntry> log = host.log();  // const: iterating never detaches the shared copy
    for (const SimHost::LogEntry& e : log)
        n += e.command == first;
    return n;
}

inline void tuneVfoA(SimHost& host, qint64 freq10Hz)
{
    VfoState a = host.radio().vfo(VirtualRadio::Vfo::A);
    a.freq10Hz = freq10Hz;
    host.radio().setVfo(VirtualRadio::Vfo::A, a);
}

inline void rows()
{
    QTest::addColumn<LineFault>("fault");
    for (int k = 0; k < LineFaultLimits::Kinds; ++k) {
        const auto f = static_cast<LineFault>(k);
        QTest::newRow(qPrintable(lineFaultName(f))) << f;
    }
}

// One fault against a polling program whose VFO-A display `shown` reads: the program keeps going
// while the fault lasts, does not spin, shows "No Link  " while the radio says nothing, and shows the
// radio's (changed) frequency again within two polls once the radio behaves. A QTest failure is
// recorded in the running test; the caller returns when QTest::currentTestFailed().
inline void faultScenario(SimHost& host, LineFault fault, const std::function<QString()>& shown)
{
    constexpr qint64 Before = 2120000;  // 21,200.00 kHz
    constexpr qint64 After = 1407400;   // 14,074.00 kHz
    tuneVfoA(host, Before);
    QTRY_COMPARE_WITH_TIMEOUT(shown(), frequencyText(Before), 8000);

    const CpuMeter cpu;
    host.faults().setForced(fault, true);
    if (fault == LineFault::Silent || fault == LineFault::Close)
        QTRY_COMPARE_WITH_TIMEOUT(shown(), NoLinkText, 5000);
    QTest::qWait(2000);
    if (fault == LineFault::Silent || fault == LineFault::Close)
        QCOMPARE(shown(), NoLinkText);
    QVERIFY2(cpu.share() < MaxCpuShare, qPrintable(QStringLiteral("CPU share %1").arg(cpu.share())));
    if (fault != LineFault::Unsolicited)
        QVERIFY(host.faults().injected(fault) > 0);

    // The radio changes while it misbehaves; the display must follow once it behaves again.
    tuneVfoA(host, After);
    host.faults().setForced(fault, false);
    if (fault == LineFault::Late)
        QTest::qWait(LineFaultLimits::LateMaxMs + 100);  // the last late replies are still on their way
    if (fault == LineFault::Close)
        QTRY_VERIFY_WITH_TIMEOUT(host.pluggedIn(), 5000);
    const int pollsBefore = pollsSeen(host);
    QElapsedTimer waited;
    waited.start();
    while (shown() != frequencyText(After) && waited.elapsed() < 8000)
        QTest::qWait(5);
    const int polls = pollsSeen(host) - pollsBefore;
    QCOMPARE(shown(), frequencyText(After));
    QVERIFY2(polls <= 2, qPrintable(QStringLiteral("%1 polls before the display was right").arg(polls)));
    QVERIFY2(cpu.share() < MaxCpuShare, qPrintable(QStringLiteral("CPU share %1").arg(cpu.share())));
}
}  // namespace FaultRun

Q_DECLARE_METATYPE(LineFault)
