// SPDX-License-Identifier: GPL-3.0-or-later
// The text port over the whole chain, as the field's own client drives it: hamlib's rigctl for the
// Kenwood TS-2000 (model 2014) on the port, the network server's backend behind it, a threaded link
// to the virtual radio, the poll running. Each answer is checked, and each set in the five-byte
// commands the radio received.

#include "RigctlProcess.h"
#include "SimRig.h"
#include "TextPort.h"

#include <QTemporaryDir>
#include <QTest>

namespace {
constexpr int WaitMs = 10000;  // a guard against a hang, not a measurement

// The instruction bytes of the sets the text port may cause.
const QList<quint8> SetOps{Op::SetVfoA, Op::SetVfoB, Op::SetMode, Op::Split, Op::Ptt, Op::VfoSelect};
}  // namespace

class TestTextPortRadio : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;
    SimRig rig;
    std::unique_ptr<TextPort> port;

    RigctlRun run(const QStringList& command)
    {
        rig.sim.clearLog();
        const RigctlRun r = RigctlRun::run(QStringLiteral("2014"), port->linkPath(), command);
        rig.link->waitForIdle();
        return r;
    }

    // The sets the radio received since the last run, in hexadecimal as they went on the wire.
    QStringList setsReceived() const
    {
        QStringList l;
        for (const SimHost::LogEntry& e : rig.sim.log()) {
            if (SetOps.contains(quint8(e.command[4])))
                l << QString::fromLatin1(e.command.toHex(' ').toUpper());
        }
        return l;
    }

    void waitForPolls(int count)
    {
        const int target = rig.polls + count;
        QTRY_VERIFY_WITH_TIMEOUT(rig.polls >= target, WaitMs);
    }

private slots:
    void initTestCase()
    {
        SKIP_WITHOUT_RIGCTL();
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        QString error;
        QVERIFY2(rig.start(&error), qPrintable(error));
        QTRY_VERIFY_WITH_TIMEOUT(rig.backend->state().haveStatus, WaitMs);
        port = std::make_unique<TextPort>(*rig.backend);
        QVERIFY2(port->open(&error), qPrintable(error));
    }
    void cleanupTestCase()
    {
        port.reset();
        rig.stop();
    }

    void readsAndSetsTheFrequency()
    {
        VfoState a = rig.sim.radio().vfo(VirtualRadio::Vfo::A);
        a.freq10Hz = 1407400;
        rig.sim.radio().setVfo(VirtualRadio::Vfo::A, a);
        waitForPolls(2);
        QCOMPARE(run({"f"}).out, QStringLiteral("14074000\n"));
        QVERIFY(setsReceived().isEmpty());
        const RigctlRun r = run({"F", "14076000"});
        QCOMPARE(r.err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 76 40 01 0A"}, WaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(1407600), WaitMs);
        QCOMPARE(run({"f"}).out, QStringLiteral("14076000\n"));
    }

    void readsAndSetsTheMode()
    {
        VfoState a = rig.sim.radio().vfo(VirtualRadio::Vfo::A);
        a.modeByte = 2;  // CW
        a.secondVariant = false;
        rig.sim.radio().setVfo(VirtualRadio::Vfo::A, a);
        waitForPolls(2);
        QCOMPARE(run({"m"}).out.section('\n', 0, 0), QStringLiteral("CW"));
        const RigctlRun r = run({"M", "USB", "2400"});
        QCOMPARE(r.err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 00 00 01 0C"}, WaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::A).modeByte, 1, WaitMs);
        QCOMPARE(run({"m"}).out.section('\n', 0, 0), QStringLiteral("USB"));
    }

    void readsAndSelectsTheVfoWithoutTheRadio()
    {
        QCOMPARE(run({"v"}).out, QStringLiteral("VFOA\n"));
        QCOMPARE(run({"V", "VFOB"}).err, QString());
        QVERIFY(setsReceived().isEmpty());
        QCOMPARE(run({"v"}).out, QStringLiteral("VFOB\n"));
        QCOMPARE(run({"V", "VFOA"}).err, QString());
        QCOMPARE(run({"v"}).out, QStringLiteral("VFOA\n"));
        QVERIFY(setsReceived().isEmpty());
    }

    void readsAndSetsSplitAndTheSplitFrequency()
    {
        QCOMPARE(run({"s"}).out, QStringLiteral("0\nVFOA\n"));
        QCOMPARE(run({"S", "1", "VFOB"}).err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 00 00 01 01"}, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(rig.sim.radio().split(), WaitMs);
        QCOMPARE(run({"s"}).out, QStringLiteral("1\nVFOB\n"));
        QCOMPARE(run({"I", "14080000"}).err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 80 40 01 8A"}, WaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::B).freq10Hz, qint64(1408000), WaitMs);
        QCOMPARE(run({"i"}).out, QStringLiteral("14080000\n"));
        QCOMPARE(run({"S", "0", "VFOA"}).err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 00 00 00 01"}, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.sim.radio().split(), WaitMs);
    }

    void keysOnlyWhenAuthorised()
    {
        QCOMPARE(run({"t"}).out, QStringLiteral("0\n"));
        QTest::ignoreMessage(QtWarningMsg, "text port: transmit refused, Authorize Tx is off");
        run({"T", "1"});
        QVERIFY(setsReceived().isEmpty());
        QVERIFY(!rig.sim.radio().transmitting());
        rig.backend->setTxAuthorized(true);
        QCOMPARE(run({"T", "1"}).err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 00 00 01 0F"}, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(rig.sim.radio().transmitting(), WaitMs);
        QCOMPARE(run({"t"}).out, QStringLiteral("1\n"));
        QCOMPARE(run({"T", "0"}).err, QString());
        QTRY_COMPARE_WITH_TIMEOUT(setsReceived(), QStringList{"00 00 00 00 0F"}, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.sim.radio().transmitting(), WaitMs);
        rig.backend->setTxAuthorized(false);
    }
};

QTEST_GUILESS_MAIN(TestTextPortRadio)
#include "test_text_port_radio.moc"
