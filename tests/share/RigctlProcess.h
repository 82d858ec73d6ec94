// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// hamlib's rigctl as a test runs it against a sharing port: one process, one command, with the test's
// event loop serving the port while the client runs.

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <QTest>

struct RigctlRun {
    static constexpr int GuardMs = 20000;  // a guard against a hang, not a measurement
    // A set has no reply, so the client may end before the port has read its last command: the
    // port is served this long after the client ends, before a test looks at what it did.
    static constexpr int PortReadsMs = 200;

    QString out;
    QString err;

    // The installed client, or empty (Debian package libhamlib-utils).
    static QString program() { return QStandardPaths::findExecutable(QStringLiteral("rigctl")); }

    // rigctl -m <model> -r <device> <command...>
    static RigctlRun run(const QString& model, const QString& device, const QStringList& command)
    {
        QProcess p;
        p.start(program(), QStringList{"-m", model, "-r", device} + command);
        if (!p.waitForStarted(GuardMs))
            return {};
        QDeadlineTimer deadline(GuardMs);
        while (p.state() != QProcess::NotRunning && !deadline.hasExpired())
            QTest::qWait(5);
        if (p.state() != QProcess::NotRunning) {
            p.kill();
            p.waitForFinished();
        }
        QTest::qWait(PortReadsMs);
        return RigctlRun{QString::fromLocal8Bit(p.readAllStandardOutput()),
                         QString::fromLocal8Bit(p.readAllStandardError())};
    }
};

// In a test's initTestCase(): the tests with hamlib's client are skipped where it is not installed.
#define SKIP_WITHOUT_RIGCTL()                                                                               \
    do {                                                                                                    \
        if (RigctlRun::program().isEmpty())                                                                 \
            QSKIP(                                                                                          \
                "hamlib's rigctl is not installed (Debian package libhamlib-utils): the tests with a real " \
                "client are skipped");                                                                      \
    } while (false)
