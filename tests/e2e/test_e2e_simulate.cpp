// SPDX-License-Identifier: GPL-3.0-or-later
// The built program on its virtual radio, as a person would start it: it must show the radio.
#include "NumberFormat.h"
#include "VirtualRadio.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct Run {
    int exitCode = -1;
    QMap<QString, QString> state;
    QString errors;
};

Run runProgram(const QStringList& arguments)
{
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(FT1000CAT_EXE), arguments);
    Run r;
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
        return r;
    }
    r.exitCode = p.exitCode();
    r.errors = QString::fromLocal8Bit(p.readAllStandardError());
    for (const QString& line : QString::fromLocal8Bit(p.readAllStandardOutput()).split(u'\n')) {
        const qsizetype eq = line.indexOf(u'=');
        if (eq > 0)
            r.state.insert(line.left(eq), line.mid(eq + 1));
    }
    return r;
}

QString outputFolder()
{
    const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
    return out.isEmpty() ? QDir::tempPath() : out;
}

QString expectedVfoA()
{
    return formatNumber(VirtualRadio().mainReceiver().freq10Hz / 100.0, Pattern::Frequency);
}
}  // namespace

class TestE2eSimulate : public QObject {
    Q_OBJECT
private slots:
    void largeWindowShowsTheVirtualRadio()
    {
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("ft1000cat.ini"));
        const QString png = outputFolder() + QStringLiteral("/e2e-main-large.png");
        QFile::remove(png);
        const Run r =
            runProgram({QStringLiteral("--simulate"), QStringLiteral("--settings"), ini, QStringLiteral("--screenshot"),
                        png + QStringLiteral(",3000"), QStringLiteral("--dump-state")});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.state.value(QStringLiteral("Label2(1)")), expectedVfoA());
        QCOMPARE(r.state.value(QStringLiteral("title")), QStringLiteral(" FT-1000 MP Mark-V"));
        QVERIFY(r.state.value(QStringLiteral("Label5")).startsWith(QStringLiteral("S-Meters 1-2 = ")));
        const QImage shot(png);
        QVERIFY(!shot.isNull());
        QCOMPARE(shot.width(), 694);
        // The port of this run is not kept; the window's settings are.
        QSettings saved(ini, QSettings::IniFormat);
        QVERIFY(!saved.contains(QStringLiteral("CommPort/Com:")));
        QCOMPARE(saved.value(QStringLiteral("Startup/Width")).toString(), QStringLiteral("10410"));
    }

    void smallWindowFromItsStoredWidth()
    {
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("ft1000cat.ini"));
        {
            QSettings s(ini, QSettings::IniFormat);
            s.setValue(QStringLiteral("Startup/Width"), QStringLiteral("7035"));
        }
        const QString png = outputFolder() + QStringLiteral("/e2e-main-small.png");
        QFile::remove(png);
        const Run r = runProgram({QStringLiteral("--simulate"), QStringLiteral("--model"), QStringLiteral("mp"),
                                  QStringLiteral("--settings"), ini, QStringLiteral("--screenshot"),
                                  png + QStringLiteral(",3000"), QStringLiteral("--dump-state")});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.state.value(QStringLiteral("Label2(1)")), expectedVfoA());
        QCOMPARE(r.state.value(QStringLiteral("title")), QStringLiteral("Tovra's FT-1000 CAT"));
        const QImage shot(png);
        QVERIFY(!shot.isNull());
        QCOMPARE(shot.width(), 469);
        QSettings saved(ini, QSettings::IniFormat);
        QCOMPARE(saved.value(QStringLiteral("Startup/Width")).toString(), QStringLiteral("7035"));
    }

    void fastLinkForTheRunOnlyAndThePollRateInTheStatusBar_data()
    {
        QTest::addColumn<bool>("fast");
        QTest::newRow("exact") << false;
        QTest::newRow("--fast-link") << true;
    }
    void fastLinkForTheRunOnlyAndThePollRateInTheStatusBar()
    {
        QFETCH(bool, fast);
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("ft1000cat.ini"));
        QStringList args{QStringLiteral("--simulate"), QStringLiteral("--settings"), ini,
                         QStringLiteral("--screenshot"), dir.filePath(QStringLiteral("s.png")) + QStringLiteral(",4000"),
                         QStringLiteral("--dump-state")};
        if (fast)
            args << QStringLiteral("--fast-link");
        const Run r = runProgram(args);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.state.value(QStringLiteral("Label2(1)")), expectedVfoA());
        QCOMPARE(r.state.value(QStringLiteral("fastLink")), fast ? QStringLiteral("1") : QStringLiteral("0"));
        const QString rate = r.state.value(QStringLiteral("pollRate"));
        QVERIFY2(QRegularExpression(QStringLiteral("^\\d+\\.\\d polls/s$")).match(rate).hasMatch(), qPrintable(rate));
        // --fast-link is for the run: nothing of it is stored.
        QSettings saved(ini, QSettings::IniFormat);
        QVERIFY(!saved.contains(QStringLiteral("Settings/FastLink")));
    }

    void versionIsTheProjectVersion()
    {
        QProcess p;
        p.start(QStringLiteral(FT1000CAT_EXE),
                {QStringLiteral("--version"), QStringLiteral("-platform"), QStringLiteral("offscreen")});
        QVERIFY(p.waitForFinished(20000));
        QCOMPARE(QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed(), QStringLiteral("ft1000cat 1.2.0"));
    }

    void helpListsTheOptions()
    {
        QProcess p;
        p.start(QStringLiteral(FT1000CAT_EXE),
                {QStringLiteral("--help"), QStringLiteral("-platform"), QStringLiteral("offscreen")});
        QVERIFY(p.waitForFinished(20000));
        const QString help = QString::fromLocal8Bit(p.readAllStandardOutput());
        for (const char* option :
             {"--simulate", "--model", "--port", "--settings", "--rigctld", "--fast-link", "--version"})
            QVERIFY2(help.contains(QLatin1String(option)), option);
    }

    void rigctldClientReadsAndSetsTheVirtualRadio()
    {
        quint16 port = 0;
        {
            QTcpServer probe;
            QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
            port = probe.serverPort();
        }
        QTemporaryDir dir;
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(FT1000CAT_EXE),
                {QStringLiteral("--simulate"), QStringLiteral("--settings"), dir.filePath(QStringLiteral("s.ini")),
                 QStringLiteral("--rigctld"), QStringLiteral("127.0.0.1:%1").arg(port), QStringLiteral("--screenshot"),
                 dir.filePath(QStringLiteral("s.png")) + QStringLiteral(",15000")});
        QVERIFY(p.waitForStarted());
        QTcpSocket client;
        QTRY_VERIFY_WITH_TIMEOUT(
            (client.connectToHost(QStringLiteral("127.0.0.1"), port), client.waitForConnected(200)), 10000);
        auto ask = [&](const QByteArray& line) {
            client.write(line);
            QByteArray r;
            while (!r.contains('\n') && client.waitForReadyRead(3000))
                r += client.readAll();
            return r.trimmed();
        };
        // Until the first poll has answered, reads say the radio is not there yet.
        QByteArray f;
        QTRY_VERIFY_WITH_TIMEOUT(!(f = ask("f\n")).startsWith("RPRT"), 10000);
        QCOMPARE(f, QByteArray::number(VirtualRadio().mainReceiver().freq10Hz * 10));
        QCOMPARE(ask("F 14074055\n"), QByteArray("RPRT 0"));
        QTRY_COMPARE_WITH_TIMEOUT(ask("f\n"), QByteArray("14074050"), 10000);
        client.write("q\n");
        client.waitForDisconnected(3000);
        QVERIFY(p.waitForFinished(30000));
        QCOMPARE(p.exitCode(), 0);
    }

    void rigctldWithABadEndpointIsRefused()
    {
        const Run r = runProgram({QStringLiteral("--simulate"), QStringLiteral("--rigctld"), QStringLiteral("nope")});
        QCOMPARE(r.exitCode, 2);
    }

    void simulateAndPortTogetherAreRefused()
    {
        const Run r = runProgram({QStringLiteral("--simulate"), QStringLiteral("--port"), QStringLiteral("/dev/null")});
        QCOMPARE(r.exitCode, 2);
    }
};

QTEST_GUILESS_MAIN(TestE2eSimulate)
#include "test_e2e_simulate.moc"
