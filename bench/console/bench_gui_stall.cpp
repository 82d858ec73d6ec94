// SPDX-License-Identifier: GPL-3.0-or-later
// How still the main window's event loop stays while it polls the virtual radio: a 1 ms timer
// measures how late each of its ticks comes; the process's CPU time and resident memory are printed
// at the end. Usage: bench_gui_stall [seconds] (default 30).
#include "Form1.h"
#include "MemorySettingsStore.h"
#include "Prompts.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SecondaryWindows.h"
#include "SimHost.h"

#include <sys/resource.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {
class NoWindows final : public SecondaryWindows {
public:
    void showMemory() override {}
    void openMemoryFile() override {}
    void showNavigator() override {}
    void showFilters() override {}
    void showAbout() override {}
    void showEdsp(int) override {}
    void selectEdspOption(int) override {}
    bool edspOptionSelected(int) override { return false; }
    void clearTxEdspOptions() override {}
    void statusDecoded(const StatusView&) override { ++decodes; }
    int navigatorWidthTwips() override { return 3000; }
    bool confirmCloseAll() override { return true; }
    void closeAll() override {}
    int decodes = 0;
};

class NoPrompts final : public Prompts {
public:
    QMessageBox::StandardButton message(QWidget*, QMessageBox::Icon, const QString&, const QString&,
                                        QMessageBox::StandardButtons) override
    {
        return QMessageBox::No;
    }
    std::optional<QString> input(QWidget*, const QString&, const QString&, const QString&, QPoint) override
    {
        return std::nullopt;
    }
    void execDialog(QDialog*) override {}
};

long residentKb()
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return -1;
}

double cpuSeconds()
{
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return u.ru_utime.tv_sec + u.ru_utime.tv_usec / 1e6 + u.ru_stime.tv_sec + u.ru_stime.tv_usec / 1e6;
}
}  // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? std::max(1, atoi(argv[1])) : 30;

    SimHost sim;
    QString error;
    if (!sim.start(&error)) {
        std::fprintf(stderr, "cannot start the virtual radio: %s\n", qPrintable(error));
        return 1;
    }
    MemorySettingsStore settings;
    NoWindows windows;
    NoPrompts prompts;
    RadioLink link([] { return std::make_unique<QtSerialPort>(); }, std::make_shared<RealClock>());
    auto form = std::make_unique<Form1>(link, settings, windows, prompts);
    form->setPortOverride(sim.devicePath());
    const double cpuBefore = cpuSeconds();
    form->Form_Load();
    form->show();

    // The first second holds the window's first paint (fonts, style sheet); it is reported apart.
    constexpr qint64 WarmUpNs = 1'000'000'000;
    std::vector<double> lateMs;
    lateMs.reserve(static_cast<size_t>(seconds) * 1000);
    double warmUpLongest = 0;
    std::pair<double, double> longestAt{0, 0};  // seconds into the run, lateness in ms
    constexpr double StallMs = 16.0;            // a frame at 60 Hz: what a person notices
    std::vector<std::pair<double, double>> stalls;
    QElapsedTimer clock;
    clock.start();
    qint64 last = clock.nsecsElapsed();
    QTimer probe;
    probe.setTimerType(Qt::PreciseTimer);
    probe.setInterval(1);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        const double late = std::max(0.0, (now - last) / 1e6 - 1.0);
        if (now < WarmUpNs) {
            warmUpLongest = std::max(warmUpLongest, late);
        } else {
            lateMs.push_back(late);
            if (late > StallMs)
                stalls.push_back({now / 1e9, late});
            if (late > longestAt.second)
                longestAt = {now / 1e9, late};
        }
        last = now;
    });
    probe.start();
    QTimer::singleShot(seconds * 1000, &app, [&] {
        probe.stop();  // before quitting, so leaving the loop is not counted as a stall
        app.quit();
    });
    app.exec();
    probe.stop();
    const double wall = clock.nsecsElapsed() / 1e9;
    const double cpu = cpuSeconds() - cpuBefore;

    // The 1 ms probe wakes the process a thousand times a second and so costs CPU of its own: the
    // program's own CPU use is measured over a second period with the probe off.
    const double quietCpuBefore = cpuSeconds();
    QElapsedTimer quietClock;
    quietClock.start();
    QTimer::singleShot(seconds * 1000, &app, [&] { app.quit(); });
    app.exec();
    const double quietWall = quietClock.nsecsElapsed() / 1e9;
    const double quietCpu = cpuSeconds() - quietCpuBefore;
    const int polls = windows.decodes;
    const QString shown = form->Label2[1]->text();
    form->close();
    form.reset();
    link.shutdown();
    sim.stop();

    std::sort(lateMs.begin(), lateMs.end());
    const double longest = lateMs.empty() ? 0 : lateMs.back();
    const double p99 = lateMs.empty() ? 0 : lateMs[static_cast<size_t>(0.99 * (lateMs.size() - 1))];
    const double median = lateMs.empty() ? 0 : lateMs[lateMs.size() / 2];
    std::printf("bench_gui_stall: %.1f s of polling the virtual radio (%d status decodes, VFO-A shows \"%s\")\n", wall,
                polls, qPrintable(shown));
    std::printf("  1 ms probe ticks measured: %zu\n", lateMs.size());
    std::printf("  first second (first paint): longest %.3f ms\n", warmUpLongest);
    std::printf("  event loop lateness after: median %.3f ms, p99 %.3f ms, longest %.3f ms (at %.1f s)\n", median, p99,
                longest, longestAt.first);
    std::printf("  stalls over %.0f ms: %zu", StallMs, stalls.size());
    for (const auto& [at, ms] : stalls)
        std::printf("  [%.1f ms at %.1f s]", ms, at);
    std::printf("\n");
    std::printf("  CPU time with the probe:   %.2f s (%.1f %% of one core)\n", cpu, 100.0 * cpu / wall);
    std::printf("  CPU time while polling:    %.2f s over %.1f s (%.1f %% of one core, probe off)\n", quietCpu,
                quietWall, 100.0 * quietCpu / quietWall);
    std::printf("  resident memory (VmRSS):   %ld kB\n", residentKb());
    return 0;
}
