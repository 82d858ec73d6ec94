// SPDX-License-Identifier: GPL-3.0-or-later
// The ft1000-sim executable: prints its device path, answers there as the chosen model, and ends
// cleanly on SIGTERM.

#include "CatPort.h"
#include "FlagsDecoder.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RealClock.h"
#include "StatusDecoder.h"

#include <QProcess>
#include <QTest>

class TestSimExecutable : public QObject {
    Q_OBJECT

    static QString readPath(QProcess& sim)
    {
        while (!sim.canReadLine() && sim.waitForReadyRead(5000)) {
        }
        return QString::fromLocal8Bit(sim.readLine()).trimmed();
    }

private slots:
    void model_isTheOneAskedFor_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("markV");
        QTest::newRow("default") << QStringList{} << true;
        QTest::newRow("markv") << QStringList{"--model", "markv"} << true;
        QTest::newRow("mp") << QStringList{"--model", "mp"} << false;
    }
    void model_isTheOneAskedFor()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, markV);
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), arguments);
        QVERIFY(sim.waitForStarted());
        const QString path = readPath(sim);
        QVERIFY2(path.startsWith(u"/dev/"), qPrintable(path));

        QtSerialPort serial;
        serial.setDevice(path);
        QString error;
        QVERIFY2(serial.open(&error), qPrintable(error));
        RealClock clock;
        CatPort port(serial, clock);
        QCOMPARE(Get_Status32(port).record.size(), 32);
        const FlagsReply f = GetFlags(port, 0);
        QCOMPARE(decodeFlags(0, f.waiting, f.bytes).markV, markV);
        serial.close();

        sim.terminate();  // SIGTERM
        QVERIFY(sim.waitForFinished(5000));
        QCOMPARE(sim.exitStatus(), QProcess::NormalExit);
        QCOMPARE(sim.exitCode(), 0);
    }

    void aMalformedKnobIsRefused()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--knob"), QStringLiteral("fast")});
        QVERIFY(sim.waitForFinished(5000));
        QCOMPARE(sim.exitCode(), 2);
        QVERIFY(sim.readAllStandardError().contains("--knob takes HZ_PER_S[,SECONDS]"));
    }

    void theKnobTurnsVfoA()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--knob"), QStringLiteral("20000,0.5")});
        QVERIFY(sim.waitForStarted());
        const QString path = readPath(sim);
        QtSerialPort serial;
        serial.setDevice(path);
        QString error;
        QVERIFY2(serial.open(&error), qPrintable(error));
        RealClock clock;
        CatPort port(serial, clock);
        QTest::qWait(700);  // the turn is over: 10 kHz up from the radio's 14,074.00 at start
        StatusRecord store;
        QCOMPARE(decodeStatus(store, Get_Status32(port).record).a.kHz, 14084.0);
        serial.close();
        sim.terminate();
        QVERIFY(sim.waitForFinished(5000));
    }

    void throughAnAdaptersBursts_theRadioStillAnswersWhole()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--burst-ms"), QStringLiteral("16")});
        QVERIFY(sim.waitForStarted());
        const QString path = readPath(sim);
        QtSerialPort serial;
        serial.setDevice(path);
        QString error;
        QVERIFY2(serial.open(&error), qPrintable(error));
        RealClock clock;
        CatPort port(serial, clock);
        port.setFastLink(true);
        StatusRecord store;
        QCOMPARE(decodeStatus(store, Get_Status32(port).record).a.kHz, 14074.0);
        serial.close();
        sim.terminate();
        QVERIFY(sim.waitForFinished(5000));
    }

    void aBadBurstTimeIsRefused()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--burst-ms"), QStringLiteral("-1")});
        QVERIFY(sim.waitForFinished(5000));
        QCOMPARE(sim.exitCode(), 2);
        QVERIFY(sim.readAllStandardError().contains("burst time"));
    }

    void unknownModel_isRefused()
    {
        QProcess sim;
        sim.start(QStringLiteral(SIM_EXECUTABLE), {QStringLiteral("--model"), QStringLiteral("ft991")});
        QVERIFY(sim.waitForFinished(5000));
        QCOMPARE(sim.exitCode(), 2);
        QVERIFY(sim.readAllStandardOutput().isEmpty());
        QVERIFY(sim.readAllStandardError().contains("unknown model"));
    }
};

QTEST_GUILESS_MAIN(TestSimExecutable)
#include "test_sim_executable.moc"
