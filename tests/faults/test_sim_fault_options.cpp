// SPDX-License-Identifier: GPL-3.0-or-later
// The ft1000-sim executable's fault switches: faults named on the command line hit its replies, with
// the chosen rate and seed, it serves on a stable path when asked, it can start its replies late, and
// bad switches are refused.
#include "CatCommand.h"
#include "QtSerialPort.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QByteArray StatusA = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes();

QString readPath(QProcess& sim)
{
    while (!sim.canReadLine() && sim.waitForReadyRead(5000)) {
    }
    return QString::fromLocal8Bit(sim.readLine()).trimmed();
}

// The sizes of n status replies, each collected over 150 ms.
QList<int> replySizes(const QString& device, int n)
{
    QtSerialPort port;
    port.setDevice(device);
    QList<int> sizes;
    if (!port.open(nullptr))
        return sizes;
    for (int i = 0; i < n; ++i) {
        port.readAll();
        port.write(StatusA);
        QTest::qWait(150);
        sizes << static_cast<int>(port.readAll().size());
    }
    return sizes;
}

void finish(QProcess& sim)
{
    sim.terminate();
    sim.waitForFinished(5000);
}
}  // namespace

class TestSimFaultOptions : public QObject {
    Q_OBJECT
private slots:
    void namedFaultHitsEveryReplyAtRateOne()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--fault"), QStringLiteral("double"),
                                                   QStringLiteral("--fault-rate"), QStringLiteral("1")});
        QVERIFY(sim.waitForStarted());
        const QString path = readPath(sim);
        QVERIFY2(path.startsWith(u"/dev/"), qPrintable(path));
        QCOMPARE(replySizes(path, 3), (QList<int>{32, 32, 32}));
        finish(sim);
        QCOMPARE(sim.exitCode(), 0);
        QVERIFY(sim.readAllStandardError().contains("3 faults injected"));
    }

    void rateZeroLeavesRepliesClean()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE),
                  {QStringLiteral("--fault"), QStringLiteral("silent"), QStringLiteral("--fault-rate"),
                   QStringLiteral("0"), QStringLiteral("--seed"), QStringLiteral("5")});
        QVERIFY(sim.waitForStarted());
        QCOMPARE(replySizes(readPath(sim), 3), (QList<int>{16, 16, 16}));
        finish(sim);
    }

    void stableLinkPathIsServed()
    {
        QTemporaryDir dir;
        const QString link = dir.filePath(QStringLiteral("ft1000"));
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--link"), link});
        QVERIFY(sim.waitForStarted());
        QCOMPARE(readPath(sim), link);
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(replySizes(link, 1), QList<int>{16});
        finish(sim);
        QVERIFY(!QFileInfo(link).isSymLink());
    }

    void replyDelayStartsEveryReplyLate()
    {
        // 200 ms late: nothing has come when the 150 ms are up.
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--reply-delay"), QStringLiteral("200")});
        QVERIFY(sim.waitForStarted());
        QCOMPARE(replySizes(readPath(sim), 1), QList<int>{0});
        finish(sim);
        QCOMPARE(sim.exitCode(), 0);
    }

    void badSwitchesAreRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown fault") << QStringList{"--fault", "drop,flood"} << "unknown fault \"flood\"";
        QTest::newRow("rate above one") << QStringList{"--fault", "drop", "--fault-rate", "1.5"} << "fault rate";
        QTest::newRow("rate not a number") << QStringList{"--fault", "drop", "--fault-rate", "often"} << "fault rate";
        QTest::newRow("seed not a number") << QStringList{"--fault", "drop", "--seed", "x"} << "seed";
        QTest::newRow("reply delay not a number") << QStringList{"--reply-delay", "soon"} << "reply delay";
        QTest::newRow("reply delay below zero") << QStringList{"--reply-delay", "-5"} << "reply delay";
    }
    void badSwitchesAreRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), arguments);
        QVERIFY(sim.waitForFinished(5000));
        QCOMPARE(sim.exitCode(), 2);
        const QString err = QString::fromLocal8Bit(sim.readAllStandardError());
        QVERIFY2(err.contains(message), qPrintable(err));
    }
};

QTEST_GUILESS_MAIN(TestSimFaultOptions)
#include "test_sim_fault_options.moc"
