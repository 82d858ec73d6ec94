// SPDX-License-Identifier: GPL-3.0-or-later
// The sharing port's pseudo-terminal: a client opens the stable link, writes and gets replies; the
// terminal is raw and survives clients that come and go; the link is private and goes on close.

#include "PtyClient.h"
#include "ShareFolder.h"
#include "SharePty.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <thread>

#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace {
constexpr int ReopenCount = 100;

mode_t modeOf(const QString& path)
{
    struct stat st {};
    ::stat(QFile::encodeName(path).constData(), &st);
    return st.st_mode & 07777;
}

// How many of this process's descriptors are open on the device.
int openDescriptorsOf(const QString& device)
{
    if (device.isEmpty())
        return 0;
    int count = 0;
    const QDir fds(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo& fd : fds.entryInfoList(QDir::System | QDir::NoDotAndDotDot)) {
        if (fd.symLinkTarget() == device)
            ++count;
    }
    return count;
}

// A port that answers every read with "<" + what came + ">".
struct EchoPort {
    SharePty pty{QStringLiteral("text")};
    QList<QByteArray> reads;
    EchoPort()
    {
        pty.setReceiver([this](const QByteArray& b) {
            reads.append(b);
            pty.write("<" + b + ">");
        });
    }
};
}  // namespace

class TestSharePty : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;

private slots:
    void initTestCase()
    {
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }

    void opensWithAStableLinkToTheTerminal()
    {
        SharePty pty(QStringLiteral("text"));
        QString error;
        QVERIFY2(pty.open(&error), qPrintable(error));
        QVERIFY(pty.isOpen());
        QCOMPARE(pty.linkPath(), runtime.path() + QStringLiteral("/ft1000cat/text"));
        QVERIFY(pty.terminalPath().startsWith(QStringLiteral("/dev/pts/")));
        QVERIFY(QFileInfo(pty.linkPath()).isSymLink());
        QCOMPARE(QFileInfo(pty.linkPath()).symLinkTarget(), pty.terminalPath());
        QCOMPARE(modeOf(pty.terminalPath()), mode_t(0600));
        QCOMPARE(modeOf(runtime.path() + QStringLiteral("/ft1000cat")), mode_t(0700));
    }

    void aClientWritesAndGetsReplies()
    {
        EchoPort port;
        QVERIFY(port.pty.open());
        PtyClient client(port.pty.linkPath());
        QVERIFY(client.isOpen());
        QVERIFY(client.write("ID;"));
        QCOMPARE(client.read(5), QByteArray("<ID;>"));
    }

    void aClientThatWritesWithoutPauseIsReadInBoundedSharesOfTheEventLoop()
    {
        SharePty pty(QStringLiteral("native"));
        qint64 received = 0;
        pty.setReceiver([&](const QByteArray& b) { received += b.size(); });
        QVERIFY(pty.open());
        PtyClient client(pty.linkPath());
        constexpr int FloodBytes = 256 * 1024;
        // The client's end does not block: it writes what the terminal takes, again and again.
        std::thread writer([&] {
            const QByteArray flood(FloodBytes, '\x10');
            qsizetype done = 0;
            QDeadlineTimer guard(PtyClient::WaitMs);
            while (done < flood.size() && !guard.hasExpired()) {
                const ssize_t n =
                    ::write(client.fd(), flood.constData() + done, static_cast<size_t>(flood.size() - done));
                if (n > 0)
                    done += n;
                else
                    std::this_thread::yield();
            }
        });
        qint64 mostInATurn = 0;
        QDeadlineTimer deadline(PtyClient::WaitMs);
        while (received < FloodBytes && !deadline.hasExpired()) {
            const qint64 before = received;
            QCoreApplication::processEvents();
            mostInATurn = std::max(mostInATurn, received - before);
        }
        writer.join();
        QCOMPARE(received, qint64(FloodBytes));
        QVERIFY2(mostInATurn <= SharePty::MaxBytesPerTurn, qPrintable(QString::number(mostInATurn)));
    }

    void theTerminalIsRawAndDoesNotEcho()
    {
        SharePty pty(QStringLiteral("text"));
        QByteArray received;
        pty.setReceiver([&](const QByteArray& b) { received += b; });
        QVERIFY(pty.open());
        PtyClient client(pty.linkPath());
        termios t{};
        QCOMPARE(::tcgetattr(client.fd(), &t), 0);
        QVERIFY(!(t.c_lflag & (ECHO | ICANON)));
        // No line editing, no translation: every byte arrives as written, without waiting for a line.
        const QByteArray bytes("F\rA\n;\x03\x7f\x04", 8);
        QVERIFY(client.write(bytes));
        QTRY_COMPARE_WITH_TIMEOUT(received, bytes, PtyClient::WaitMs);
        QCOMPARE(client.readFor(20), QByteArray());  // and nothing echoed back
        // Replies are not translated either.
        pty.write("\n\r");
        QCOMPARE(client.read(2), QByteArray("\n\r"));
    }

    void severalClientsOneAfterAnotherFindThePort()
    {
        EchoPort port;
        QVERIFY(port.pty.open());
        for (int i = 0; i < ReopenCount; ++i) {
            PtyClient client(port.pty.linkPath());
            QVERIFY2(client.isOpen(), qPrintable(QString::number(i)));
            const QByteArray command = "FA" + QByteArray::number(i) + ';';
            QVERIFY(client.write(command));
            QCOMPARE(client.read(command.size() + 2), "<" + command + ">");
        }
        QCOMPARE(port.reads.size(), ReopenCount);
    }

    void theHostKeepsTheClientSideOpenBetweenClients()
    {
        // Without a descriptor of its own the host side would read nothing but errors (and wake its
        // loop without end) while no client has the port open.
        EchoPort port;
        QVERIFY(port.pty.open());
        QCOMPARE(openDescriptorsOf(port.pty.terminalPath()), 1);
        {
            PtyClient client(port.pty.linkPath());
            QCOMPARE(openDescriptorsOf(port.pty.terminalPath()), 2);
        }
        QCOMPARE(openDescriptorsOf(port.pty.terminalPath()), 1);
        const QString device = port.pty.terminalPath();
        port.pty.close();
        QCOMPARE(openDescriptorsOf(device), 0);
    }

    void theReceiverMayCloseThePort()
    {
        SharePty pty(QStringLiteral("text"));
        pty.setReceiver([&](const QByteArray&) { pty.close(); });
        QVERIFY(pty.open());
        const QString link = pty.linkPath();
        PtyClient client(link);
        QVERIFY(client.write("PS0;"));
        QTRY_VERIFY_WITH_TIMEOUT(!pty.isOpen(), PtyClient::WaitMs);
        QTest::qWait(10);
        QVERIFY(!QFileInfo(link).isSymLink());
        QVERIFY(pty.open());  // and it opens again
    }

    void theLinkIsRemovedOnClose()
    {
        SharePty pty(QStringLiteral("text"));
        QVERIFY(pty.open());
        const QString link = pty.linkPath();
        QVERIFY(QFileInfo(link).isSymLink());
        pty.close();
        QVERIFY(!pty.isOpen());
        QVERIFY(!QFileInfo(link).exists() && !QFileInfo(link).isSymLink());
        QVERIFY(pty.linkPath().isEmpty());
    }

    void theLinkIsRemovedWhenThePortGoes()
    {
        QString link;
        {
            SharePty pty(QStringLiteral("native"));
            QVERIFY(pty.open());
            link = pty.linkPath();
            QVERIFY(QFileInfo(link).isSymLink());
        }
        QVERIFY(!QFileInfo(link).isSymLink());
    }

    void aLinkTakenOverByAnotherPortIsLeftToIt()
    {
        SharePty first(QStringLiteral("text"));
        SharePty second(QStringLiteral("text"));
        QVERIFY(first.open());
        QVERIFY(second.open());
        QCOMPARE(first.linkPath(), second.linkPath());
        QCOMPARE(QFileInfo(second.linkPath()).symLinkTarget(), second.terminalPath());
        first.close();
        QCOMPARE(QFileInfo(second.linkPath()).symLinkTarget(), second.terminalPath());
    }

    void aStaleLinkIsReplaced()
    {
        const QString folder = ShareFolder::ensure();
        QVERIFY(!folder.isEmpty());
        const QString link = folder + QStringLiteral("/text");
        QFile::remove(link);
        QVERIFY(QFile::link(QStringLiteral("/nonexistent/pts/99"), link));
        SharePty pty(QStringLiteral("text"));
        QVERIFY(pty.open());
        QCOMPARE(QFileInfo(link).symLinkTarget(), pty.terminalPath());
    }

    void withoutRuntimeFolderAPrivateTemporaryFolderIsUsed()
    {
        QTemporaryDir temp;
        const QByteArray runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
        qunsetenv("XDG_RUNTIME_DIR");
        qputenv("TMPDIR", QFile::encodeName(temp.path()));
        SharePty pty(QStringLiteral("text"));
        const bool opened = pty.open();
        const QString link = pty.linkPath();
        pty.close();
        qputenv("XDG_RUNTIME_DIR", runtimeBefore);
        qunsetenv("TMPDIR");
        QVERIFY(opened);
        const QString folder = temp.path() + QStringLiteral("/ft1000cat-%1").arg(::getuid());
        QCOMPARE(link, folder + QStringLiteral("/text"));
        QCOMPARE(modeOf(folder), mode_t(0700));
    }

    void aFolderOthersCanEnterIsRefused()
    {
        QTemporaryDir temp;
        const QString folder = temp.path() + QStringLiteral("/ft1000cat");
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(::chmod(QFile::encodeName(folder).constData(), 0755) == 0);
        const QByteArray runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(temp.path()));
        SharePty pty(QStringLiteral("text"));
        QString error;
        const bool opened = pty.open(&error);
        qputenv("XDG_RUNTIME_DIR", runtimeBefore);
        QVERIFY(!opened);
        QVERIFY(error.contains(folder));
        QVERIFY(!pty.isOpen());
    }

    void aClientThatDoesNotReadDoesNotWedgeThePort()
    {
        EchoPort port;
        QVERIFY(port.pty.open());
        {
            PtyClient silent(port.pty.linkPath());
            const QByteArray chunk(200, 'x');
            for (int i = 0; i < 50; ++i) {
                silent.write(chunk);
                QTest::qWait(1);
            }
        }
        // The next client throws away what is left on the line, as clients do when they open a port.
        PtyClient next(port.pty.linkPath());
        QTest::qWait(20);
        ::tcflush(next.fd(), TCIOFLUSH);
        QVERIFY(next.write("ID;"));
        QCOMPARE(next.read(5), QByteArray("<ID;>"));
    }
};

QTEST_GUILESS_MAIN(TestSharePty)
#include "test_share_pty.moc"
