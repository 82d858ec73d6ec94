// SPDX-License-Identifier: GPL-3.0-or-later
// The program's sharing ports as a user starts them for one run: each port is announced on standard
// output and answers clients, hamlib's TS-2000 client reads the virtual radio through the text port,
// nothing is stored, and the program closing with clients still attached leaves neither a terminal
// nor a link behind.

#include "BlockingClient.h"
#include "CatCommand.h"
#include "RigctlProcess.h"
#include "VirtualRadio.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {
constexpr int WaitMs = 20000;        // a guard against a hang, not a measurement
constexpr int ProgramRunMs = 12000;  // long enough for the clients below, then the program quits
}  // namespace

class TestE2eSharing : public QObject {
    Q_OBJECT
private slots:
    void portsForTheRunAnswerAndCloseWithClientsAttached()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString runtime = dir.filePath(QStringLiteral("run"));
        QVERIFY(QDir().mkpath(runtime));
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QString ini = dir.filePath(QStringLiteral("s.ini"));

        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(FT1000CAT_EXE),
                {QStringLiteral("--simulate"), QStringLiteral("--settings"), ini, QStringLiteral("--share"),
                 QStringLiteral("native,text"), QStringLiteral("--screenshot"),
                 dir.filePath(QStringLiteral("s.png")) + QStringLiteral(",%1").arg(ProgramRunMs)});
        QVERIFY(p.waitForStarted());

        // One line per port on standard output, with its terminal.
        QString out;
        const QRegularExpression lines(
            QStringLiteral("Native port: (/dev/\\S+)\\n(?:.*\\n)*?Text port: (/dev/\\S+)\\n"));
        QRegularExpressionMatch m;
        QDeadlineTimer deadline(WaitMs);
        while (!(m = lines.match(out)).hasMatch() && !deadline.hasExpired() && p.state() == QProcess::Running) {
            p.waitForReadyRead(100);
            out += QString::fromLocal8Bit(p.readAllStandardOutput());
        }
        QVERIFY2(m.hasMatch(), qPrintable(out));
        const QString nativeTerminal = m.captured(1);
        const QString textTerminal = m.captured(2);
        const QString nativeLink = runtime + QStringLiteral("/ft1000cat/native");
        const QString textLink = runtime + QStringLiteral("/ft1000cat/text");
        QCOMPARE(QFileInfo(nativeLink).symLinkTarget(), nativeTerminal);
        QCOMPARE(QFileInfo(textLink).symLinkTarget(), textTerminal);
        QCOMPARE(QFileInfo(textTerminal).permissions() &
                     (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                 QFileDevice::Permissions());

        // Clients on both ports, as other programs would open them, and left open.
        BlockingClient text = BlockingClient::pty(textLink);
        BlockingClient native = BlockingClient::pty(nativeLink);
        QVERIFY(text.isOpen() && native.isOpen());
        QVERIFY(text.write("ID;"));
        QCOMPARE(text.readUntil(';'), QByteArray("ID019;"));
        const QByteArray vfoA = QStringLiteral("FA%1;")
                                    .arg(VirtualRadio().mainReceiver().freq10Hz * 10, 11, 10, QLatin1Char('0'))
                                    .toLatin1();
        QByteArray fa;
        for (QDeadlineTimer polled(WaitMs); fa != vfoA && !polled.hasExpired();) {
            QVERIFY(text.write("FA;"));
            fa = text.readUntil(';');
        }
        QCOMPARE(fa, vfoA);
        QVERIFY(native.write(CatCommand::make(Op::ReadFlags, 1).bytes()));
        QCOMPARE(native.readCount(ReplySize::Flags).size(), ReplySize::Flags);
        QVERIFY(native.write(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes()));
        QCOMPARE(native.readCount(ReplySize::VfoRecord).size(), ReplySize::VfoRecord);

        if (!RigctlRun::program().isEmpty()) {
            const RigctlRun r = RigctlRun::run(QStringLiteral("2014"), textLink, {QStringLiteral("f")});
            QCOMPARE(r.out, QString::number(VirtualRadio().mainReceiver().freq10Hz * 10) + u'\n');
        }

        // The program ends on its own with both clients still attached.
        QVERIFY(p.waitForFinished(WaitMs + ProgramRunMs));
        QCOMPARE(p.exitCode(), 0);
        QVERIFY(!QFileInfo(nativeLink).isSymLink());
        QVERIFY(!QFileInfo(textLink).isSymLink());
        QVERIFY(!QFileInfo::exists(nativeTerminal));
        QVERIFY(!QFileInfo::exists(textTerminal));
        // The client's side reads the end of the line rather than hanging.
        QCOMPARE(text.readFor(100), QByteArray());

        // For this run only: nothing stored.
        QSettings stored(ini, QSettings::IniFormat);
        QVERIFY(!stored.contains(QStringLiteral("Sharing/Native")));
        QVERIFY(!stored.contains(QStringLiteral("Sharing/Text")));
    }

    void aWrongShareListIsRefused()
    {
        QProcess p;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(FT1000CAT_EXE),
                {QStringLiteral("--simulate"), QStringLiteral("--share"), QStringLiteral("serial")});
        QVERIFY(p.waitForFinished(WaitMs));
        QCOMPARE(p.exitCode(), 2);
        QVERIFY(QString::fromLocal8Bit(p.readAllStandardError()).contains(QStringLiteral("--share")));
    }
};

QTEST_GUILESS_MAIN(TestE2eSharing)
#include "test_e2e_sharing.moc"
