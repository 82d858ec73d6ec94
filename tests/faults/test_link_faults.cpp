// SPDX-License-Identifier: GPL-3.0-or-later
// The radio link on its thread, with the real serial adapter, polling the misbehaving virtual radio
// the way the main window does (status, meters, flags, decoded on the window's thread), with the
// port watch that brings a lost device back. No window: this one also runs under the thread and
// address sanitizers. Built twice: once with the exact link, once with the fast link (FT_FAST_LINK).
#include "FaultRun.h"
#include "FlagsDecoder.h"
#include "MeterDecoder.h"
#include "PortWatch.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

namespace {
#ifdef FT_FAST_LINK
constexpr bool FastLink = true;
#else
constexpr bool FastLink = false;
#endif
// Built a third time with the radio behind a USB adapter that hands bytes over in bursts.
#ifdef FT_BURST_MS
constexpr int BurstMs = FT_BURST_MS;
#else
constexpr int BurstMs = 0;
#endif

// The main window's poll without the window: a 250 ms timer posting merged poll jobs.
class Poller : public QObject {
public:
    Poller(RadioLink& link) : link_(link)
    {
        timer_.setInterval(250);
        connect(&timer_, &QTimer::timeout, this, &Poller::tick);
        timer_.start();
    }

    QString shown;  // what the VFO-A display would read
    int meterReads = 0;
    int flagDecodes = 0;

private:
    void tick()
    {
        if (!link_.portOpen())
            return;
        link_.postTick(JobKind::Poll, [this, link = &link_](CatPort& port) {
            const StatusReply status = Get_Status32(port);
            if (!status.ran)
                return;
            link->deliver(this, [this, record = status.record] {
                const StatusView v = decodeStatus(store_, record);
                shown = v.noLink ? NoLinkText : v.a.freqText;
            });
            if (status.record.isEmpty())
                return;
            const MeterReplies m = readMeters(port, MeterSelector::TransmitBase);
            link->deliver(this, [this, m] {
                decodeMeters(firstByte(m.mainS), firstByte(m.subS), firstByte(m.transmit), firstByte(m.pitch));
                ++meterReads;
            });
            if (!m.complete())
                return;
            const FlagsReply f = GetFlags(port, 1);
            link->deliver(this, [this, f] { flagDecodes += decodeFlags(1, f.waiting, f.bytes).decoded; });
        });
    }

    RadioLink& link_;
    QTimer timer_;
    StatusRecord store_;
};

struct Bench {
    explicit Bench(const QString& linkPath)
    {
        host.setLinkPath(linkPath);
        host.setBurstMs(BurstMs);
        started = host.start(&error);
        const QString device = host.devicePath();
        link = std::make_unique<RadioLink>(
            [device] {
                auto port = std::make_unique<QtSerialPort>();
                port->setDevice(device);
                port->open(nullptr);
                return std::unique_ptr<SerialPort>(std::move(port));
            },
            clock);
        link->setFastLink(FastLink);
        watch = std::make_unique<PortWatch>(*link);
        watch->start();
        poller = std::make_unique<Poller>(*link);
    }
    ~Bench()
    {
        // The link goes first: a job still running delivers to the poller and the watch.
        link->shutdown();
        link.reset();
        poller.reset();
        watch.reset();
        host.stop();
    }

    SimHost host;
    QString error;
    bool started = false;
    std::shared_ptr<RealClock> clock = std::make_shared<RealClock>();
    std::unique_ptr<RadioLink> link;
    std::unique_ptr<PortWatch> watch;
    std::unique_ptr<Poller> poller;
};
}  // namespace

class TestLinkFaults : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    QString linkPath() const { return dir.filePath(QStringLiteral("radio")); }

private slots:
    void pollSurvivesEveryFault_data() { FaultRun::rows(); }
    void pollSurvivesEveryFault()
    {
        QFETCH(LineFault, fault);
        Bench b(linkPath());
        QVERIFY2(b.started, qPrintable(b.error));
        FaultRun::faultScenario(b.host, fault, [&] { return b.poller->shown; });
    }

    void pollSurvivesAllFaultsAtRandom()
    {
        Bench b(linkPath());
        QVERIFY(b.started);
        QTRY_COMPARE_WITH_TIMEOUT(b.poller->shown,
                                  FaultRun::frequencyText(b.host.radio().vfo(VirtualRadio::Vfo::A).freq10Hz), 5000);
        const FaultRun::CpuMeter cpu;
        b.host.faults().setSeed(42);
        b.host.faults().setRandom(
            *parseLineFaults(QStringLiteral("drop,corrupt,truncate,late,double,unsolicited,silent")), 0.3);
        QTest::qWait(4000);
        QVERIFY(b.host.faults().injected() > 5);
        QVERIFY(b.poller->meterReads > 0);
        b.host.faults().clear();
        FaultRun::tuneVfoA(b.host, 1800000);
        QTRY_COMPARE_WITH_TIMEOUT(b.poller->shown, FaultRun::frequencyText(1800000), 5000);
        // The flags are the poll's last read: the poll that showed the frequency decodes them at its
        // end (with three faults in ten replies, no poll of the faulty stretch may have had them whole).
        QTRY_VERIFY_WITH_TIMEOUT(b.poller->flagDecodes > 0, 3000);
        QVERIFY2(cpu.share() < FaultRun::MaxCpuShare, qPrintable(QString::number(cpu.share())));
    }

    void unpluggedRadioIsOpenedAgainWhenItComesBack()
    {
        Bench b(linkPath());
        QVERIFY(b.started);
        const qint64 freq = b.host.radio().vfo(VirtualRadio::Vfo::A).freq10Hz;
        QTRY_COMPARE_WITH_TIMEOUT(b.poller->shown, FaultRun::frequencyText(freq), 5000);
        b.host.unplug();
        QTRY_COMPARE_WITH_TIMEOUT(b.poller->shown, NoLinkText, 3000);
        QTRY_VERIFY_WITH_TIMEOUT(!b.link->portOpen(), 4000);
        QTRY_VERIFY(b.watch->lost());
        const FaultRun::CpuMeter cpu;
        QTest::qWait(3000);
        QVERIFY(!b.link->portOpen());
        QVERIFY2(cpu.share() < FaultRun::MaxCpuShare, qPrintable(QString::number(cpu.share())));
        b.host.clearLog();
        QVERIFY(b.host.replug());
        QTRY_VERIFY_WITH_TIMEOUT(b.link->portOpen(), 4000);
        QTRY_VERIFY(!b.watch->lost());
        FaultRun::tuneVfoA(b.host, 1000000);
        QTRY_COMPARE_WITH_TIMEOUT(b.poller->shown, FaultRun::frequencyText(1000000), 3000);
        // Nothing new on the wire: the first bytes after the return are a poll's.
        QCOMPARE(b.host.log().first().command.toHex(' '), QByteArray("00 00 00 02 10"));
    }
};

QTEST_GUILESS_MAIN(TestLinkFaults)
#include "test_link_faults.moc"
