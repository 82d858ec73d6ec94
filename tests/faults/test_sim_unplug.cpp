// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio that goes away and comes back at the same path, and a terminal closed by a
// fault, seen through the real serial adapter.
#include "CatCommand.h"
#include "QtSerialPort.h"
#include "SimHost.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QByteArray StatusA = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes();

// Sends the command and collects the reply for a while.
QByteArray ask(QtSerialPort& port, const QByteArray& command, int waitMs = 150)
{
    port.readAll();
    port.write(command);
    QTest::qWait(waitMs);
    return port.readAll();
}
}  // namespace

class TestSimUnplug : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    QString linkPath() const { return dir.filePath(QStringLiteral("radio")); }

private slots:
    void linkPathLeadsToTheTerminalWhilePluggedIn()
    {
        SimHost host;
        host.setLinkPath(linkPath());
        QString error;
        QVERIFY2(host.start(&error), qPrintable(error));
        QCOMPARE(host.devicePath(), linkPath());
        QVERIFY(host.pluggedIn());
        QCOMPARE(QFileInfo(linkPath()).symLinkTarget(), host.terminalPath());

        QtSerialPort port;
        port.setDevice(host.devicePath());
        QVERIFY2(port.open(&error), qPrintable(error));
        QCOMPARE(ask(port, StatusA).size(), 16);
    }

    void unplugClosesTheTerminalAndRemovesThePath()
    {
        SimHost host;
        host.setLinkPath(linkPath());
        QVERIFY(host.start());
        QtSerialPort port;
        port.setDevice(host.devicePath());
        QVERIFY(port.open(nullptr));

        host.unplug();
        QVERIFY(!host.pluggedIn());
        QVERIFY(!QFileInfo::exists(linkPath()));
        QVERIFY(host.terminalPath().isEmpty());
        QCOMPARE(host.closures(), 1);
        QTRY_VERIFY((port.readAll(), port.failed()));
        port.close();
        QVERIFY(!port.open(nullptr));  // nothing there to open
    }

    void replugBringsTheSamePathBack()
    {
        SimHost host;
        host.setLinkPath(linkPath());
        QVERIFY(host.start());
        host.unplug();
        QString error;
        QVERIFY2(host.replug(&error), qPrintable(error));
        QVERIFY(host.pluggedIn());
        QVERIFY(QFileInfo::exists(linkPath()));
        QtSerialPort port;
        port.setDevice(linkPath());
        QVERIFY2(port.open(&error), qPrintable(error));
        QCOMPARE(ask(port, StatusA).size(), 16);
        QVERIFY(host.replug());  // already in: nothing changes
        QCOMPARE(host.closures(), 1);
    }

    void unplugAndReplugWorkBeforeStart()
    {
        SimHost host;
        host.setLinkPath(linkPath());
        host.unplug();  // nothing to close yet
        QCOMPARE(host.closures(), 0);
        QVERIFY(host.start());
        QVERIFY(QFileInfo::exists(linkPath()));
    }

    void stopRemovesTheLinkPath()
    {
        {
            SimHost host;
            host.setLinkPath(linkPath());
            QVERIFY(host.start());
            QVERIFY(QFileInfo::exists(linkPath()));
        }
        QVERIFY(!QFileInfo(linkPath()).isSymLink());
    }

    void closeFaultTakesTheTerminalAwayForAWhile()
    {
        SimHost host;
        host.setLinkPath(linkPath());
        QVERIFY(host.start());
        QtSerialPort port;
        port.setDevice(linkPath());
        QVERIFY(port.open(nullptr));
        host.faults().setForced(LineFault::Close, true);
        port.write(StatusA);
        QTRY_VERIFY(!host.pluggedIn());
        QVERIFY(!QFileInfo::exists(linkPath()));
        QTRY_VERIFY((port.readAll(), port.failed()));
        QCOMPARE(host.faults().injected(LineFault::Close), 1u);
        host.faults().setForced(LineFault::Close, false);
        // Back by itself after the forced close's time.
        QTRY_VERIFY_WITH_TIMEOUT(host.pluggedIn(), 5000);
        port.close();
        QVERIFY(port.open(nullptr));
        QCOMPARE(ask(port, StatusA).size(), 16);
        QCOMPARE(host.closures(), 1);
    }

    void faultyRepliesReachTheSerialPort()
    {
        SimHost host;
        QVERIFY(host.start());
        QtSerialPort port;
        port.setDevice(host.devicePath());
        QVERIFY(port.open(nullptr));
        host.faults().setForced(LineFault::Double, true);
        QCOMPARE(ask(port, StatusA).size(), 32);
        host.faults().setForced(LineFault::Double, false);
        host.faults().setForced(LineFault::Silent, true);
        QCOMPARE(ask(port, StatusA).size(), 0);
        host.faults().setForced(LineFault::Silent, false);
        host.faults().setForced(LineFault::Late, true);
        QCOMPARE(ask(port, StatusA, 150).size(), 0);               // not within the wait ...
        QTRY_COMPARE_WITH_TIMEOUT(port.bytesWaiting(), 16, 2000);  // ... but afterwards
        host.faults().setForced(LineFault::Late, false);
        host.faults().setForced(LineFault::Unsolicited, true);
        QTRY_VERIFY(port.bytesWaiting() > 0);
    }
};

QTEST_GUILESS_MAIN(TestSimUnplug)
#include "test_sim_unplug.moc"
