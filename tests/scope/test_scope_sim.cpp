// SPDX-License-Identifier: GPL-3.0-or-later
// Sweeps end to end: the scope on a threaded link with the real serial adapter, over the virtual
// radio's pseudo-terminal, in real time. The samples arrive while the window's event loop runs.

#include "BandScope.h"
#include "BandSignals.h"
#include "FakeScopeHost.h"
#include "PanBox.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RealClock.h"
#include "SLevel.h"
#include "SimHost.h"
#include "WaterfallView.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>

class TestScopeSim : public QObject {
    Q_OBJECT
private slots:
    void redSweep_overThePseudoTerminal_drawsWhatTheRadioHears()
    {
        SimHost sim;
        QString error;
        QVERIFY2(sim.start(&error), qPrintable(error));
        const QString path = sim.devicePath();
        auto link = std::make_unique<RadioLink>(
            [path] {
                auto port = std::make_unique<QtSerialPort>();
                port->setDevice(path);
                port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
                port->open(nullptr);
                return std::unique_ptr<SerialPort>(std::move(port));
            },
            std::make_shared<RealClock>(), RadioLink::Mode::Threaded);
        RadioLink* linkPtr = link.get();
        FakeScopeHost host(std::move(link));
        QTRY_VERIFY(host.portOpen() || linkPtr->portOpen());
        linkPtr->runBlocking([](CatPort&) {});
        QVERIFY(linkPtr->portOpen());

        BandScope scope(host);
        host.scope = &scope;
        scope.presetLists();
        scope.resize(680, 196);
        scope.show();
        QVERIFY(QTest::qWaitForWindowExposed(&scope));

        host.vfoA = 14070.0;
        scope.keyClick(48);
        scope.panCombo(1)->setCurrentIndex(scope.panCombo(1)->findText(QStringLiteral("25 Khz")));
        scope.panCombo(2)->setCurrentIndex(scope.panCombo(2)->findText(QStringLiteral("0.5 Khz")));
        scope.keyClick(52);
        const SweepPlan plan = scope.currentPlan();
        QCOMPARE(plan.samples, 51);
        sim.clearLog();

        QSignalSpy finished(&scope, &BandScope::sweepFinished);
        scope.keyClick(49);
        QVERIFY(scope.busy());
        // The click returned at once; the samples come in while this thread's loop runs.
        QVERIFY(host.mainSMeter.isEmpty());
        QVERIFY(finished.wait(30000));
        linkPtr->waitForIdle();

        // On the radio: tune, meter read, 51 times, then the tune back to the centre.
        // (The last frame is still on its way down the line when the job that wrote it ends.)
        QTRY_COMPARE_WITH_TIMEOUT(sim.log().size(), 2 * 51 + 1, 5000);
        const QList<SimHost::LogEntry> log = sim.log();
        for (int i = 0; i < 51; ++i) {
            QCOMPARE(log[2 * i].command, setFreqCommand(plan.sample10Hz(i), 1).bytes());
            QCOMPARE(log[2 * i + 1].command, CatCommand::make(Op::ReadMeter).bytes());
        }
        QCOMPARE(log.last().command, setFreqCommand(1407000, 1).bytes());

        // Every sample answered, and each bar stands at what the radio's S-meter read there.
        const BandSignals band;
        QCOMPARE(host.mainSMeter.size(), 51);
        const QList<QLineF> lines = scope.panBox()->plotLines();
        for (int i = 0; i < 51; ++i) {
            const int level = band.sMeterAt(plan.sample10Hz(i)) * 100 / 255;
            QCOMPARE(host.mainSMeter[i], level);
            const double x = SweepPlan::toKHz(plan.sample10Hz(i) - plan.start10Hz);
            QVERIFY2(lines.contains(QLineF(x, 100 - level, x, 100)), qPrintable(QString::number(x)));
        }
        QCOMPARE(host.pollChanges.last(), true);
        QVERIFY(!scope.busy());

        const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (!dir.isEmpty()) {
            QDir().mkpath(dir);
            scope.grab().save(dir + QStringLiteral("/band_scope_sim.png"));
        }
    }

    void waterfall_threeSweepsOfTheVirtualRadio_newestOnTop_andTheirExport()
    {
        SimHost sim;
        QString error;
        QVERIFY2(sim.start(&error), qPrintable(error));
        const QString path = sim.devicePath();
        auto link = std::make_unique<RadioLink>(
            [path] {
                auto port = std::make_unique<QtSerialPort>();
                port->setDevice(path);
                port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
                port->open(nullptr);
                return std::unique_ptr<SerialPort>(std::move(port));
            },
            std::make_shared<RealClock>(), RadioLink::Mode::Threaded);
        RadioLink* linkPtr = link.get();
        FakeScopeHost host(std::move(link));
        linkPtr->runBlocking([](CatPort&) {});
        QVERIFY(linkPtr->portOpen());

        BandScope scope(host);
        host.scope = &scope;
        scope.presetLists();
        scope.resize(680, 330);
        scope.show();
        QVERIFY(QTest::qWaitForWindowExposed(&scope));
        scope.setWaterfallShown(true);
        QTRY_COMPARE(scope.waterfallView()->width(), scope.panBox()->width());

        // 5 kHz at 0.5 kHz round 14150: eleven samples a pass, continuous, on an empty stretch of band.
        host.vfoA = 14150.0;
        scope.keyClick(48);
        scope.panCombo(1)->setCurrentIndex(scope.panCombo(1)->findText(QStringLiteral("5 Khz")));
        scope.panCombo(2)->setCurrentIndex(scope.panCombo(2)->findText(QStringLiteral("0.5 Khz")));
        scope.keyClick(52);
        const SweepPlan plan = scope.currentPlan();
        QCOMPARE(plan.samples, 11);
        scope.scan(0)->setChecked(true);
        const BandSignal station{14150.0, 1.2, 230};
        QSignalSpy finished(&scope, &BandScope::sweepFinished);
        scope.keyClick(49);

        // A station comes on the air at the centre once the first pass has ended; the pass under way
        // reaches the centre about 0.8 s after it starts.
        QTRY_COMPARE_WITH_TIMEOUT(scope.waterfall().rowCount(), 1, 10000);
        sim.radio().addSignal(station);
        QTRY_COMPARE_WITH_TIMEOUT(scope.waterfall().rowCount(), 3, 20000);
        scope.keyClick(53);
        QVERIFY(finished.wait(10000));
        linkPtr->waitForIdle();
        QCOMPARE(scope.waterfall().rowCount(), 3);  // the pass Cancel cut short adds no row

        // Newest on top: the two rows with the station above the one without it.
        const QImage img = scope.waterfallView()->image();
        const int centre =
            static_cast<int>(std::floor(scope.panBox()->toPixels(QPointF(2.5, 0), scope.panBox()->scale()).x()));
        const QRgb on = levelColour(230 * 100 / 255);
        QCOMPARE(QRgb(img.pixel(centre, 0)), on);
        QCOMPARE(QRgb(img.pixel(centre, 1)), on);
        QVERIFY(img.pixel(centre, 2) != on);
        QCOMPARE(QRgb(img.pixel(0, 3)), WaterfallModel::Background);

        // The export: the picture, and the last whole pass as the radio's S-meter read it.
        QTemporaryDir dir;
        const QString png = dir.filePath(QStringLiteral("sim.png"));
        QVERIFY(scope.savePlot(png));
        QVERIFY(!QImage(png).isNull());
        BandSignals band;
        band.add(station);
        QByteArray expected = "Frequency_kHz,S_level_raw,S_units\r\n";
        for (int i = 0; i < plan.samples; ++i) {
            const int raw = band.sMeterAt(plan.sample10Hz(i));
            expected += QByteArray::number(plan.sample10Hz(i) / 100.0, 'f', 2) + ',' + QByteArray::number(raw) + ',' +
                        sUnitText(raw).toLatin1() + "\r\n";
        }
        QFile csv(dir.filePath(QStringLiteral("sim-sweep.csv")));
        QVERIFY(csv.open(QIODevice::ReadOnly));
        const QByteArray written = csv.readAll();
        QCOMPARE(written, expected);
        QVERIFY(written.contains("14150.00,230,S9+"));  // the station at the centre

        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (!out.isEmpty()) {
            QDir().mkpath(out);
            QFile::copy(png, out + QStringLiteral("/band_scope_sim_waterfall.png"));
        }
    }
};

QTEST_MAIN(TestScopeSim)
#include "test_scope_sim.moc"
