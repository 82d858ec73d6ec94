// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob over the whole chain: the virtual radio on a pseudo-terminal with its knob
// turning, a threaded fast link on the real serial adapter, the main window's poll, the network
// server and the native sharing port. What each shows climbs with the knob, and once the knob rests
// each shows the radio's own frequency.
#include "ConsoleFixture.h"
#include "LinkRig.h"
#include "NativePort.h"
#include "NetworkControl.h"
#include "PtyClient.h"
#include "QtSerialPort.h"
#include "RealClock.h"
#include "RigctlServer.h"
#include "SimHost.h"

#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

namespace {
constexpr int WaitMs = 5000;
constexpr int SampleMs = 40;
constexpr int TurnMs = 1500;

qint64 hzOfRecord(const QByteArray& vfoRecord)
{
    StatusRecord store;
    return qRound64(decodeStatus(store, vfoRecord + QByteArray(16, '\0')).a.kHz * 1000.0);
}

// Each series must never go down, and must have moved at least `moves` times.
void checkClimbs(const QList<qint64>& series, int moves, const char* what)
{
    int changes = 0;
    for (int i = 1; i < series.size(); ++i) {
        QVERIFY2(series[i] >= series[i - 1], what);
        changes += series[i] != series[i - 1] ? 1 : 0;
    }
    QVERIFY2(changes >= moves, qPrintable(QStringLiteral("%1: %2 changes").arg(QLatin1String(what)).arg(changes)));
}
}  // namespace

class TestFollowKnobSim : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;

private slots:
    void initTestCase()
    {
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }

    void everyViewClimbsWithTheKnobAndEndsOnTheRadiosFrequency()
    {
        SimHost sim;
        QString error;
        QVERIFY2(sim.start(&error), qPrintable(error));
        const QString path = sim.devicePath();
        RadioLink link(
            [path] {
                auto p = std::make_unique<QtSerialPort>();
                p->setDevice(path);
                QString e;
                p->setSettings(QStringLiteral("4800,n,8,2"), &e);
                p->open(&e);
                return p;
            },
            std::make_shared<RealClock>());
        QVERIFY(link.portOpen());
        link.setFastLink(true);
        MemorySettingsStore store;
        FakeWindows windows;
        FakePrompts prompts;
        auto form = std::make_unique<Form1>(link, store, windows, prompts);
        auto network = std::make_unique<NetworkControl>(*form, store);
        QVERIFY2(network->start(NetworkSettings::Endpoint{QStringLiteral("127.0.0.1"), 0}, &error), qPrintable(error));
        auto native = std::make_unique<NativePort>(network->backend(), form->pollCache());
        QVERIFY2(native->open(&error), qPrintable(error));
        form->setFollowKnob(true);
        form->setPollEnabled(true);
        QTRY_VERIFY_WITH_TIMEOUT(network->backend().state().haveStatus, WaitMs);

        QTcpSocket client;
        client.connectToHost(QStringLiteral("127.0.0.1"), network->server()->serverPort());
        QVERIFY(client.waitForConnected(WaitMs));
        PtyClient nativeClient(native->linkPath());
        const auto serverF = [&]() -> qint64 {
            client.write("f\n");
            QByteArray r;
            QDeadlineTimer deadline(WaitMs);
            while (!r.contains('\n') && !deadline.hasExpired()) {
                QTest::qWait(1);
                r += client.readAll();
            }
            return r.trimmed().toLongLong();
        };
        const auto nativeA = [&]() -> qint64 {
            nativeClient.write(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes());
            return hzOfRecord(nativeClient.read(ReplySize::VfoRecord));
        };
        const auto shownA = [&] { return qRound64(form->vfoKHz(1) * 1000.0); };

        bool followed = false;
        QList<qint64> label, server, nativeSeries;
        sim.turnKnob({2000, TurnMs / 1000.0});  // 2 kHz/s: a step every 5 ms
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < TurnMs + 300) {
            QTest::qWait(SampleMs);
            followed = followed || form->followingKnob();
            label << shownA();
            server << serverF();
            nativeSeries << nativeA();
        }
        QVERIFY(followed);
        checkClimbs(label, 10, "the main window's label");
        checkClimbs(server, 10, "the server's f");
        checkClimbs(nativeSeries, 10, "the native port's VFO-A record");

        // At rest: every view shows the radio's own frequency.
        const qint64 radioHz = sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz * 10;
        QTRY_COMPARE_WITH_TIMEOUT(shownA(), radioHz, WaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(serverF(), radioHz, WaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(nativeA(), radioHz, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!form->followingKnob(), WaitMs);

        form->setPollEnabled(false);
        native.reset();
        network.reset();
        link.waitForIdle();
        form.reset();
        link.shutdown();
        sim.stop();
    }
};

QTEST_MAIN(TestFollowKnobSim)
#include "test_follow_knob_sim.moc"
