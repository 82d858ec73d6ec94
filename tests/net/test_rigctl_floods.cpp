// SPDX-License-Identifier: GPL-3.0-or-later
// Clients that misbehave on purpose: one that sends and never reads, one that says nothing at all,
// one that quits without reading. The server must keep its own memory and its turns bounded, keep
// answering a well-behaved client meanwhile, and free the places they hold.

#include "FakeRig.h"
#include "RigctlServer.h"

#include <QTcpSocket>
#include <QTest>
#include <memory>

namespace {

constexpr int GuardMs = 10000;  // a guard against a hang, not a measurement
constexpr int ShortCloseMs = 300;
// A reader that takes almost nothing from the system: what the server sends it piles up there.
constexpr qint64 NonReaderBuffer = 1024;
// Enough dump_state requests that their replies fill every buffer between the two ends of the
// loopback many times over.
constexpr int FloodLines = 60000;
// More than any one reply the server makes (a dump_state is the longest, well under this).
constexpr qint64 LargestReply = 8 * 1024;

std::unique_ptr<QTcpSocket> connectTo(quint16 port, qint64 readBuffer = 0)
{
    auto s = std::make_unique<QTcpSocket>();
    s->setReadBufferSize(readBuffer);
    s->connectToHost(QHostAddress::LocalHost, port);
    s->waitForConnected(GuardMs);
    return s;
}

QByteArray ask(QTcpSocket& s, const QByteArray& line)
{
    s.write(line);
    QByteArray got;
    QDeadlineTimer deadline(GuardMs);
    while (!got.endsWith('\n') && !deadline.hasExpired()) {
        QTest::qWait(1);
        got += s.readAll();
    }
    return got;
}

QByteArray repeated(const QByteArray& line, int times)
{
    QByteArray out;
    out.reserve(line.size() * times);
    for (int i = 0; i < times; ++i)
        out += line;
    return out;
}

}  // namespace

class TestRigctlFloods : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        rig = std::make_unique<FakeRig>();
        server = std::make_unique<RigctlServer>(*rig);
        server->setStalledCloseMs(ShortCloseMs);
        QVERIFY(server->listen(QStringLiteral("127.0.0.1"), 0));
        port = server->serverPort();
    }
    void cleanup()
    {
        server.reset();
        rig.reset();
    }

    void aClientThatNeverReadsIsHeldAtTheLimitThenClosed_andTheOthersAreServed()
    {
        auto good = connectTo(port);
        QCOMPARE(ask(*good, "f\n"), QByteArray("14074000\n"));
        auto flood = connectTo(port, NonReaderBuffer);
        QTRY_COMPARE_WITH_TIMEOUT(server->clientCount(), 2, GuardMs);
        flood->write(repeated("\\dump_state\n", FloodLines));
        // A client that does not read cannot see its connection go: the server's count tells.
        int answered = 0;
        QDeadlineTimer deadline(GuardMs);
        while (server->clientCount() == 2 && !deadline.hasExpired()) {
            if (ask(*good, "f\n") == "14074000\n")
                ++answered;
        }
        QCOMPARE(server->clientCount(), 1);
        QVERIFY(answered > 0);
        // The server stopped reading once the replies waiting in its own buffer passed the limit:
        // at most one reply more than the limit was ever held.
        QVERIFY(server->mostUnsentBytes() >= RigctlServer::MaxUnsentBytes);
        QVERIFY2(server->mostUnsentBytes() < RigctlServer::MaxUnsentBytes + LargestReply,
                 qPrintable(QString::number(server->mostUnsentBytes())));
        // No turn of the event loop served one client more than its share of lines.
        QVERIFY(server->mostLinesInATurn() <= RigctlServer::MaxLinesPerTurn);
        QCOMPARE(ask(*good, "f\n"), QByteArray("14074000\n"));
    }

    void aClientThatSendsLinesFasterThanATurnIsServedOverSeveralTurns()
    {
        auto c = connectTo(port);
        constexpr int Lines = 500;
        c->write(repeated("f\n", Lines));
        QByteArray got;
        QDeadlineTimer deadline(GuardMs);
        while (got.count('\n') < Lines && !deadline.hasExpired()) {
            QTest::qWait(1);
            got += c->readAll();
        }
        QCOMPARE(got, repeated("14074000\n", Lines));
        QCOMPARE(server->mostLinesInATurn(), RigctlServer::MaxLinesPerTurn);
    }

    void aQuittingClientsPlaceIsFreeAtOnce()
    {
        std::vector<std::unique_ptr<QTcpSocket>> quiet;
        for (int i = 0; i < RigctlServer::MaxClients; ++i)
            quiet.push_back(connectTo(port, NonReaderBuffer));
        QTRY_COMPARE_WITH_TIMEOUT(server->clientCount(), RigctlServer::MaxClients, GuardMs);
        for (auto& q : quiet)
            q->write("q\n");
        QTRY_COMPARE_WITH_TIMEOUT(server->clientCount(), 0, GuardMs);
        auto late = connectTo(port);
        QCOMPARE(ask(*late, "f\n"), QByteArray("14074000\n"));
    }

    void anIdleClientIsClosed_aTalkingOneIsNot()
    {
        server->setIdleTimeoutMs(ShortCloseMs);
        auto idle = connectTo(port);
        auto talking = connectTo(port);
        QTRY_COMPARE_WITH_TIMEOUT(server->clientCount(), 2, GuardMs);
        QDeadlineTimer deadline(GuardMs);
        while (idle->state() == QAbstractSocket::ConnectedState && !deadline.hasExpired()) {
            QCOMPARE(ask(*talking, "f\n"), QByteArray("14074000\n"));
            QTest::qWait(ShortCloseMs / 4);
        }
        QCOMPARE(idle->state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(ask(*talking, "f\n"), QByteArray("14074000\n"));
        QCOMPARE(server->clientCount(), 1);
    }

    void noIdleTimeOutByDefault()
    {
        QCOMPARE(server->idleTimeoutMs(), 0);
        server->setIdleTimeoutMs(ShortCloseMs);
        server->setIdleTimeoutMs(0);
        auto c = connectTo(port);
        QTest::qWait(3 * ShortCloseMs);
        QCOMPARE(ask(*c, "f\n"), QByteArray("14074000\n"));
    }

private:
    std::unique_ptr<FakeRig> rig;
    std::unique_ptr<RigctlServer> server;
    quint16 port = 0;
};

QTEST_GUILESS_MAIN(TestRigctlFloods)
#include "test_rigctl_floods.moc"
