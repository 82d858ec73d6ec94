// SPDX-License-Identifier: GPL-3.0-or-later
// The server as a real hamlib client sees it: rigctl (network rig, model 2) against the server
// running over a threaded radio link on the virtual radio, with the poll running. Each set is
// checked on the virtual radio's state and in the log of the bytes it received.

#include "SMeterCalibration.h"
#include "SimRig.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTest>

namespace {

constexpr int WaitMs = 10000;  // a guard against a hang, not a measurement

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

QString hexOf(const QByteArray& b)
{
    return QString::fromLatin1(b.toHex(' ').toUpper());
}

// The commands of one poll, in the order the poll sends them.
const QStringList PollSequence{"00 00 00 02 10", "00 00 00 03 10", "00 00 00 00 F7", "01 00 00 00 F7",
                               "80 00 00 00 F7", "F1 00 00 00 F7", "00 00 00 01 FA"};
// The instruction bytes a set of the server may send.
const QList<quint8> SetOps{Op::SetVfoA, Op::SetVfoB, Op::SetMode, Op::Split, Op::Ptt, Op::VfoSelect};

}  // namespace

class TestRigctlIntegration : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        rigctl = QStandardPaths::findExecutable(QStringLiteral("rigctl"));
        if (rigctl.isEmpty())
            QSKIP(
                "hamlib's rigctl is not installed (Debian package libhamlib-utils): the tests with a real "
                "client are skipped");
        QString error;
        QVERIFY2(rig.start(&error), qPrintable(error));
        // The first poll fills the snapshot.
        QTRY_VERIFY_WITH_TIMEOUT(rig.backend->state().haveStatus, WaitMs);
    }
    void cleanupTestCase() { rig.stop(); }

    void openAndReadTheFrequency()
    {
        VfoState a = rig.sim.radio().vfo(VirtualRadio::Vfo::A);
        a.freq10Hz = 1420000;
        rig.sim.radio().setVfo(VirtualRadio::Vfo::A, a);
        waitForPolls(2);
        const Run r = run({"f"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QStringLiteral("14200000\n"));
    }

    void aSetFrequencyIsReadBackInTheRadiosTenHzSteps()
    {
        rig.sim.clearLog();
        QCOMPARE(run({"F", "14074055"}).exitCode, 0);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(1407405), WaitMs);
        QVERIFY(received().contains("05 74 40 01 0A"));
        QCOMPARE(run({"f"}).out, QStringLiteral("14074050\n"));
        waitForPolls(2);  // and the poll agrees
        QCOMPARE(run({"f"}).out, QStringLiteral("14074050\n"));
    }

    void theNextFAfterAnFReadsTheNewFrequencyAtOnce()
    {
        // On one raw connection, with no wait between the two lines: the answer comes from the
        // snapshot the set updated, not from a poll.
        QTcpSocket s;
        s.connectToHost(QHostAddress::LocalHost, rig.port());
        QVERIFY(s.waitForConnected(WaitMs));
        s.write("F 14075125\nf\n");
        QByteArray reply;
        QDeadlineTimer deadline(WaitMs);
        while (reply.count('\n') < 2 && !deadline.hasExpired()) {
            QTest::qWait(1);
            reply += s.readAll();
        }
        QCOMPARE(reply, QByteArray("RPRT 0\n14075120\n"));
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(1407512), WaitMs);
    }

    void modeSetAndGet_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("passband");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("bytes");
        QTest::addColumn<QString>("readBack");
        QTest::newRow("CW") << "CW"
                            << "500" << 2 << "00 00 00 02 0C"
                            << "CW\n500\n";
        QTest::newRow("PKTLSB") << "PKTLSB"
                                << "0" << 10 << "00 00 00 0A 0C"
                                << "PKTLSB\n2400\n";
        QTest::newRow("RTTYR") << "RTTYR"
                               << "-1" << 9 << "00 00 00 09 0C"
                               << "RTTYR\n500\n";
        QTest::newRow("USB") << "USB"
                             << "2400" << 1 << "00 00 00 01 0C"
                             << "USB\n2400\n";
    }
    void modeSetAndGet()
    {
        QFETCH(QString, mode);
        QFETCH(QString, passband);
        QFETCH(int, code);
        QFETCH(QString, bytes);
        QFETCH(QString, readBack);
        rig.sim.clearLog();
        QCOMPARE(run({"M", mode, passband}).exitCode, 0);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().modeCode(VirtualRadio::Vfo::A), code, WaitMs);
        QVERIFY(received().contains(bytes));
        QCOMPARE(run({"m"}).out, readBack);
    }

    void anUnsupportedModeIsRefusedAndNothingSent()
    {
        rig.sim.clearLog();
        const Run r = run({"M", "PKTUSB", "0"});
        // rigctl prints a command's error on its standard output.
        QVERIFY2(r.out.contains(QStringLiteral("set_mode: error")), qPrintable(r.out));
        QVERIFY2(r.out.contains(QStringLiteral("Invalid parameter")), qPrintable(r.out));
        QVERIFY(setsReceived().isEmpty());
    }

    void vfoBIsSelectedInTheServerAndSetWithItsOwnInstruction()
    {
        VfoState b = rig.sim.radio().vfo(VirtualRadio::Vfo::B);
        b.freq10Hz = 357300;
        rig.sim.radio().setVfo(VirtualRadio::Vfo::B, b);
        waitForPolls(2);
        const qint64 vfoA = rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz;
        rig.sim.clearLog();
        const Run r = run({"V", "VFOB", "F", "7076000", "f"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QStringLiteral("7076000\n"));
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::B).freq10Hz, qint64(707600), WaitMs);
        QVERIFY(received().contains(setFreqCommand(707600, 2).hex()));
        // The VFOs are never swapped on the radio.
        for (const QString& c : received())
            QVERIFY2(!c.endsWith(QStringLiteral(" 05")), qPrintable(c));
        QCOMPARE(rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, vfoA);
    }

    void splitOnAndOff()
    {
        rig.sim.clearLog();
        QCOMPARE(run({"S", "1", "VFOB"}).exitCode, 0);
        QTRY_VERIFY_WITH_TIMEOUT(rig.sim.radio().split(), WaitMs);
        QVERIFY(received().contains("00 00 00 01 01"));
        QCOMPARE(run({"s"}).out, QStringLiteral("1\nVFOB\n"));
        QCOMPARE(run({"S", "0", "VFOA"}).exitCode, 0);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.sim.radio().split(), WaitMs);
        QVERIFY(received().contains("00 00 00 00 01"));
        QCOMPARE(run({"s"}).out, QStringLiteral("0\nVFOA\n"));
    }

    void splitWithItsOwnModeOnVfoB()
    {
        VfoState b = rig.sim.radio().vfo(VirtualRadio::Vfo::B);
        b.modeByte = 0;  // LSB
        rig.sim.radio().setVfo(VirtualRadio::Vfo::B, b);
        const VfoState a = rig.sim.radio().vfo(VirtualRadio::Vfo::A);
        waitForPolls(2);
        rig.sim.clearLog();
        const Run r = run({"S", "1", "VFOB", "s", "I", "14076000", "i", "X", "USB", "2400", "x"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QStringLiteral("1\nVFOB\n14076000\nUSB\n2400\n"));
        // Done when VFO-A is the VFO in use again.
        QTRY_VERIFY_WITH_TIMEOUT(received().contains(QStringLiteral("00 00 00 00 05")), WaitMs);
        QCOMPARE(rig.sim.radio().vfoInUse(), VirtualRadio::Vfo::A);
        QCOMPARE(rig.sim.radio().vfo(VirtualRadio::Vfo::B).modeByte, 1);  // USB
        QCOMPARE(rig.sim.radio().vfo(VirtualRadio::Vfo::B).freq10Hz, qint64(1407600));
        QCOMPARE(rig.sim.radio().vfo(VirtualRadio::Vfo::A), a);
        QCOMPARE(setsReceived(), (QStringList{"00 00 00 01 01", "00 76 40 01 8A", "00 00 00 01 05", "00 00 00 01 0C",
                                              "00 00 00 00 05"}));
        // The three follow each other on the wire: no poll reads the radio while VFO-B is in use.
        const QStringList log = received();
        const qsizetype at = log.indexOf(QStringLiteral("00 00 00 01 05"));
        QCOMPARE(log.mid(at, 3), (QStringList{"00 00 00 01 05", "00 00 00 01 0C", "00 00 00 00 05"}));
        waitForPolls(2);
        QCOMPARE(run({"x"}).out, QStringLiteral("USB\n2400\n"));
        QCOMPARE(run({"S", "0", "VFOA"}).exitCode, 0);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.sim.radio().split(), WaitMs);
    }

    void pttWithoutAuthorizationIsRefusedAndNothingSent()
    {
        rig.backend->setTxAuthorized(false);
        rig.sim.clearLog();
        const Run r = run({"T", "1"});
        QVERIFY2(r.out.contains(QStringLiteral("set_ptt: error")), qPrintable(r.out));
        QVERIFY2(r.out.contains(QStringLiteral("rejected")), qPrintable(r.out));
        waitForPolls(1);
        QVERIFY(!rig.sim.radio().transmitting());
        QVERIFY(setsReceived().isEmpty());
        QCOMPARE(run({"t"}).out, QStringLiteral("0\n"));
    }

    void pttWithAuthorizationKeysAndTheClientLeavingUnkeys()
    {
        rig.backend->setTxAuthorized(true);
        rig.sim.clearLog();
        QProcess p;
        p.start(rigctl, {"-m", "2", "-r", endpoint()});
        QVERIFY(p.waitForStarted(WaitMs));
        p.write("T 1\n");
        QTRY_VERIFY_WITH_TIMEOUT(rig.sim.radio().transmitting(), WaitMs);
        QVERIFY(received().contains("00 00 00 01 0F"));
        QCOMPARE(run({"t"}).out, QStringLiteral("1\n"));  // another client sees it
        p.closeWriteChannel();                            // the keying client goes away
        QTRY_VERIFY_WITH_TIMEOUT(p.state() == QProcess::NotRunning, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!rig.sim.radio().transmitting(), WaitMs);
        const QStringList sets = setsReceived();
        QCOMPARE(sets.filter(QStringLiteral(" 0F")), (QStringList{"00 00 00 01 0F", "00 00 00 00 0F"}));
        rig.backend->setTxAuthorized(false);
    }

    void strengthIsTheMainSMeterInDbOverS9()
    {
        VfoState a = rig.sim.radio().vfo(VirtualRadio::Vfo::A);
        a.freq10Hz = 1420000;  // on a strong signal
        rig.sim.radio().setVfo(VirtualRadio::Vfo::A, a);
        const int raw = rig.sim.radio().sMeter(VirtualRadio::Vfo::A);
        QTRY_COMPARE_WITH_TIMEOUT(rig.backend->state().mainSMeterRaw, raw, WaitMs);
        const Run r = run({"l", "STRENGTH"});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out.trimmed().toInt(), sMeterDbOverS9(raw));
        QVERIFY(sMeterDbOverS9(raw) > 0);
    }

    void twoClientsWhileThePollRunsNeverInterleaveOnTheWire()
    {
        rig.sim.clearLog();
        const int pollsBefore = rig.polls;
        QProcess one, two;
        one.start(rigctl, {"-m", "2",    "-r", endpoint(), "F", "14074000", "M", "CW", "0", "F",    "14075000", "S",
                           "1",  "VFOB", "F",  "14076000", "M", "USB",      "0", "S",  "0", "VFOA", "f"});
        two.start(rigctl, {"-m", "2", "-r", endpoint(), "I", "14080000", "f", "I", "14081000", "m", "I", "14082000",
                           "s", "I", "14083000", "i"});
        QTRY_VERIFY_WITH_TIMEOUT(one.state() == QProcess::NotRunning && two.state() == QProcess::NotRunning, WaitMs);
        QCOMPARE(one.exitCode(), 0);
        QCOMPARE(two.exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::B).freq10Hz, qint64(1408300), WaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(1407600), WaitMs);
        waitForPolls(2);
        QVERIFY(rig.polls - pollsBefore >= 2);

        // Every poll in the log is whole, and nothing but a set's single command stands between polls.
        QStringList log = received();
        // The log was cleared while the link was busy: polls follow each other closely, so it may
        // start in the middle of one; that poll's tail is not looked at.
        while (!log.isEmpty() && log.front() != PollSequence.front() && PollSequence.contains(log.front()))
            log.removeFirst();
        int polls = 0;
        for (int i = 0; i < log.size();) {
            if (log.at(i) == PollSequence.front()) {
                for (int k = 1; k < PollSequence.size() && i + k < log.size(); ++k)
                    QVERIFY2(log.at(i + k) == PollSequence.at(k),
                             qPrintable(QStringLiteral("poll broken at %1: %2").arg(i + k).arg(log.at(i + k))));
                i += PollSequence.size();
                ++polls;
                continue;
            }
            const quint8 op = static_cast<quint8>(log.at(i).right(2).toUInt(nullptr, 16));
            QVERIFY2(SetOps.contains(op), qPrintable(QStringLiteral("not a set at %1: %2").arg(i).arg(log.at(i))));
            ++i;
        }
        QVERIFY(polls >= 2);
        // Each client's sets all arrived, but for a frequency set that a newer one of the same VFO
        // replaced while it waited (latest wins): those that arrived came in the client's order,
        // and the last of each VFO arrived.
        const QStringList sets = setsReceived();
        for (const char* c : {"00 00 00 02 0C", "00 00 00 01 01", "00 00 00 01 0C", "00 00 00 00 01"})
            QVERIFY2(sets.contains(QString::fromLatin1(c)), c);
        const QList<QList<qint64>> tuned{{1407400, 1407500, 1407600}, {1408000, 1408100, 1408200, 1408300}};
        for (int vfo = 1; vfo <= 2; ++vfo) {
            QStringList order;
            for (const qint64 f : tuned[vfo - 1])
                order << setFreqCommand(f, vfo).hex();
            QStringList arrived;
            for (const QString& c : sets)
                if (order.contains(c))
                    arrived << c;
            QVERIFY2(!arrived.isEmpty() && arrived.last() == order.last(), qPrintable(arrived.join(u',')));
            for (qsizetype i = 1; i < arrived.size(); ++i)
                QVERIFY2(order.indexOf(arrived[i - 1]) < order.indexOf(arrived[i]), qPrintable(arrived.join(u',')));
        }
    }

private:
    QString endpoint() const { return QStringLiteral("127.0.0.1:%1").arg(rig.port()); }

    // rigctl with the given commands; the event loop keeps running so the server can answer.
    Run run(const QStringList& commands)
    {
        QProcess p;
        p.start(rigctl, QStringList{"-m", "2", "-r", endpoint()} + commands);
        Run r;
        if (!p.waitForStarted(WaitMs))
            return r;
        QDeadlineTimer deadline(WaitMs);
        while (p.state() != QProcess::NotRunning && !deadline.hasExpired())
            QTest::qWait(2);
        if (p.state() != QProcess::NotRunning) {
            p.kill();
            p.waitForFinished();
            return r;
        }
        r.exitCode = p.exitCode();
        r.out = QString::fromLocal8Bit(p.readAllStandardOutput());
        r.err = QString::fromLocal8Bit(p.readAllStandardError());
        return r;
    }

    void waitForPolls(int count)
    {
        const int target = rig.polls + count;
        QTRY_VERIFY_WITH_TIMEOUT(rig.polls >= target, WaitMs);
    }

    // What the virtual radio received since its log was last cleared, one command each.
    QStringList received() const
    {
        QStringList l;
        for (const SimHost::LogEntry& e : rig.sim.log())
            l << hexOf(e.command);
        return l;
    }
    QStringList setsReceived() const
    {
        QStringList l;
        for (const QString& c : received()) {
            if (SetOps.contains(static_cast<quint8>(c.right(2).toUInt(nullptr, 16))))
                l << c;
        }
        return l;
    }

    QString rigctl;
    SimRig rig;
};

QTEST_GUILESS_MAIN(TestRigctlIntegration)
#include "test_rigctl_integration.moc"
