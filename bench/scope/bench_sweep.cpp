// SPDX-License-Identifier: GPL-3.0-or-later
// A full-width sweep against the virtual radio over its pseudo-terminal: 5000 kHz at 100 kHz
// (51 samples) with the real serial adapter on the threaded link. Prints the total and per-sample
// time, the overhead over the fixed waits (the time on the line passes inside them),
// and the longest stall of the window's thread while the sweep ran.

#include "BandScope.h"
#include "MemorySettingsStore.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "ScopeHost.h"
#include "SimHost.h"
#include "SweepPlan.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

namespace {
class BenchHost : public ScopeHost {
public:
    explicit BenchHost(RadioLink& link) : link_(link) {}
    RadioLink& link() override { return link_; }
    bool portOpen() const override { return link_.portOpen(); }
    void setPollEnabled(bool) override {}
    double vfoKHz(int) const override { return 14250.0; }
    void setFrequencyDisplay(int, const QString&) override { ++labels; }
    void setMainSMeter(int) override { ++samples; }
    bool dualShown() const override { return false; }
    void pressKey(int index) override
    {
        if (scope)
            scope->keyClick(index);
    }
    SettingsStore& settings() override { return store; }
    QString askPlotFile(const QString&) override { return {}; }
    bool confirmPlotFiles(const QString&, const QString&) override { return false; }
    void showScopeError(const QString&, const QString&) override {}
    BandScope* scope = nullptr;
    MemorySettingsStore store;
    int labels = 0;
    int samples = 0;

private:
    RadioLink& link_;
};

void choose(QComboBox* c, const char* entry)
{
    c->setCurrentIndex(c->findText(QString::fromLatin1(entry)));
}
}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    SimHost sim;
    QString error;
    if (!sim.start(&error)) {
        std::fprintf(stderr, "virtual radio: %s\n", qPrintable(error));
        return 1;
    }
    const QString path = sim.devicePath();
    RadioLink link(
        [path] {
            auto port = std::make_unique<QtSerialPort>();
            port->setDevice(path);
            port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
            port->open(nullptr);
            return std::unique_ptr<SerialPort>(std::move(port));
        },
        std::make_shared<RealClock>(), RadioLink::Mode::Threaded);
    link.runBlocking([](CatPort&) {});
    if (!link.portOpen()) {
        std::fprintf(stderr, "could not open %s\n", qPrintable(path));
        return 1;
    }

    BenchHost host(link);
    BandScope scope(host);
    host.scope = &scope;
    scope.presetLists();
    scope.resize(680, 196);
    scope.show();
    scope.keyClick(48);
    choose(scope.panCombo(1), "5000 KHz");
    choose(scope.panCombo(2), "100 Khz");
    scope.keyClick(52);
    const SweepPlan plan = scope.currentPlan();
    // Let the window show and paint itself before the measurement starts.
    QElapsedTimer settle;
    settle.start();
    while (settle.elapsed() < 300)
        app.processEvents(QEventLoop::AllEvents, 20);

    // The window's thread: a 2 ms timer whose late ticks show how long the thread was held up.
    QElapsedTimer sinceTick;
    qint64 longestGap = 0;
    int gapsOverAFrame = 0;  // 16 ms
    QTimer probe;
    probe.setInterval(2);
    probe.setTimerType(Qt::PreciseTimer);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        const qint64 gap = sinceTick.restart();
        longestGap = std::max(longestGap, gap);
        gapsOverAFrame += gap > 16 ? 1 : 0;
    });

    QEventLoop loop;
    QObject::connect(&scope, &BandScope::sweepFinished, &loop, &QEventLoop::quit);
    sim.clearLog();
    QElapsedTimer total;
    total.start();
    sinceTick.start();
    probe.start();
    scope.keyClick(49);
    loop.exec();
    link.waitForIdle();  // the tune back to the centre
    const double ms = total.nsecsElapsed() / 1e6;
    probe.stop();
    // The tune back's frame is still on the line when its job ends.
    QElapsedTimer drain;
    drain.start();
    while (sim.log().size() < 2 * plan.samples + 1 && drain.elapsed() < 2000)
        app.processEvents(QEventLoop::AllEvents, 10);

    const int n = plan.samples;
    const double waits = 150.0;  // 50 ms after tuning, 100 ms after the meter request
    // The commands' and the reply's time on the line (5 bytes each) pass inside the waits: the
    // bytes are written before the wait begins and the reply is complete before it ends.
    const double lineTime = SimLine::lineMs(5) * 3;
    const double perSample = ms / n;
    std::printf("sweep 5000 kHz at 100 kHz over %s: %d samples (%d drawn, %d labels), %d commands at the radio\n",
                qPrintable(path), n, host.samples, host.labels, static_cast<int>(sim.log().size()));
    std::printf("total %.1f ms, %.2f ms a sample\n", ms, perSample);
    std::printf("overhead over the waits (%.0f ms a sample): %.2f %%\n", waits, 100.0 * (perSample - waits) / waits);
    std::printf("  (line time of tune, request and reply, %.1f ms a sample, lies inside the waits)\n", lineTime);
    std::printf(
        "longest stall of the window's thread during the sweep: %lld ms (probe every 2 ms); "
        "%d stalls over 16 ms\n",
        static_cast<long long>(longestGap), gapsOverAFrame);
    sim.stop();
    return 0;
}
