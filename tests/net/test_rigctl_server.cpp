// SPDX-License-Identifier: GPL-3.0-or-later
// The TCP server on the loopback: several clients, the order of replies, the limits, and the
// transmitter safety rules.

#include "FakeRig.h"
#include "RigctlServer.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <memory>

namespace {

constexpr int WaitMs = 5000;  // a guard against a hang, not a measurement

class Client {
public:
    explicit Client(quint16 port)
    {
        socket.connectToHost(QHostAddress::LocalHost, port);
        socket.waitForConnected(WaitMs);
    }
    void send(const QByteArray& bytes)
    {
        socket.write(bytes);
        socket.flush();
    }
    // Spins the event loop until the reply holds this many lines (or the guard runs out).
    QByteArray lines(int count)
    {
        QDeadlineTimer deadline(WaitMs);
        while (received.count('\n') < count && !deadline.hasExpired()) {
            QTest::qWait(1);
            received += socket.readAll();
        }
        const qsizetype end = nthNewline(count);
        const QByteArray out = received.left(end);
        received.remove(0, end);
        return out;
    }
    QByteArray ask(const QByteArray& line, int replyLines = 1)
    {
        send(line);
        return lines(replyLines);
    }
    bool waitClosed()
    {
        QDeadlineTimer deadline(WaitMs);
        while (socket.state() != QAbstractSocket::UnconnectedState && !deadline.hasExpired())
            QTest::qWait(1);
        return socket.state() == QAbstractSocket::UnconnectedState;
    }

    QTcpSocket socket;
    QByteArray received;

private:
    qsizetype nthNewline(int count) const
    {
        qsizetype pos = 0;
        for (int i = 0; i < count; ++i) {
            const qsizetype nl = received.indexOf('\n', pos);
            if (nl < 0)
                return received.size();
            pos = nl + 1;
        }
        return pos;
    }
};

}  // namespace

class TestRigctlServer : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        rig = std::make_unique<FakeRig>();
        server = std::make_unique<RigctlServer>(*rig);
        QVERIFY(server->listen(QStringLiteral("127.0.0.1"), 0));
        port = server->serverPort();
    }
    void cleanup()
    {
        server.reset();
        rig.reset();
    }

    void aClientGetsItsReply()
    {
        Client c(port);
        QCOMPARE(c.ask("f\n"), QByteArray("14074000\n"));
    }

    void listensOnTheLoopbackByName()
    {
        RigctlServer other(*rig);
        QVERIFY(other.listen(QStringLiteral("localhost"), 0));
        QCOMPARE(other.serverAddress(), QHostAddress(QHostAddress::LocalHost));
        QString error;
        QVERIFY(!other.listen(QStringLiteral("not an address"), 0, &error));
        QVERIFY(!error.isEmpty());
    }

    void linesSentTogetherAreAnsweredInOrder()
    {
        Client c(port);
        c.send("f\nm\nv\n\\chk_vfo\nz\nF 7074000\nf\n");
        QCOMPARE(c.lines(8), QByteArray("14074000\nUSB\n2400\nVFOA\n0\nRPRT -11\nRPRT 0\n7074000\n"));
    }

    void aLineInPiecesIsAnsweredWhenComplete()
    {
        Client c(port);
        c.send("\\get_");
        QTest::qWait(20);
        c.send("fre");
        QTest::qWait(20);
        QCOMPARE(c.socket.bytesAvailable(), 0);
        QCOMPARE(c.ask("q\r\n"), QByteArray("14074000\n"));  // "\get_freq" is complete only now
        QCOMPARE(c.socket.state(), QAbstractSocket::ConnectedState);
    }

    void crLfLinesAreAnswered()
    {
        Client c(port);
        QCOMPARE(c.ask("f\r\nv\r\n", 2), QByteArray("14074000\nVFOA\n"));
    }

    void severalClientsAtOnceEachGetTheirOwnReplies()
    {
        Client a(port), b(port), c(port);
        a.send("V VFOB\n");
        b.send("f\n");
        c.send("m\n");
        a.send("f\n");
        QCOMPARE(a.lines(2), QByteArray("RPRT 0\n7074000\n"));
        QCOMPARE(b.lines(1), QByteArray("14074000\n"));
        QCOMPARE(c.lines(2), QByteArray("USB\n2400\n"));
        QCOMPARE(server->clientCount(), 3);
    }

    void clientCountFollowsConnections()
    {
        QSignalSpy spy(server.get(), &RigctlServer::clientCountChanged);
        {
            Client a(port);
            QTRY_COMPARE(server->clientCount(), 1);
            Client b(port);
            QTRY_COMPARE(server->clientCount(), 2);
        }
        QTRY_COMPARE(server->clientCount(), 0);
        QCOMPARE(spy.last().at(0).toInt(), 0);
        QVERIFY(spy.count() >= 4);
    }

    void quitAnswersAndCloses()
    {
        Client c(port);
        QCOMPARE(c.ask("q\n"), QByteArray("RPRT 0\n"));
        QVERIFY(c.waitClosed());
        QTRY_COMPARE(server->clientCount(), 0);
    }

    void aLineOfTheLimitIsAnswered()
    {
        Client c(port);
        QCOMPARE(c.ask(QByteArray(1024, 'x') + '\n'), QByteArray("RPRT -11\n"));
        QCOMPARE(c.socket.state(), QAbstractSocket::ConnectedState);
    }

    void aLineLongerThanTheLimitClosesThatClient()
    {
        Client other(port);
        Client c(port);
        c.send("f\n" + QByteArray(1025, 'x'));
        QCOMPARE(c.lines(1), QByteArray("14074000\n"));
        QVERIFY(c.waitClosed());
        QCOMPARE(other.ask("v\n"), QByteArray("VFOA\n"));
    }

    void aSeventeenthClientIsTurnedAway()
    {
        std::vector<std::unique_ptr<Client>> clients;
        for (int i = 0; i < RigctlServer::MaxClients; ++i) {
            clients.push_back(std::make_unique<Client>(port));
            QCOMPARE(clients.back()->ask("v\n"), QByteArray("VFOA\n"));
        }
        QCOMPARE(server->clientCount(), 16);
        Client extra(port);
        QVERIFY(extra.waitClosed());
        QCOMPARE(server->clientCount(), 16);
        // A place that frees up is taken again.
        clients.pop_back();
        QTRY_COMPARE(server->clientCount(), 15);
        Client late(port);
        QCOMPARE(late.ask("v\n"), QByteArray("VFOA\n"));
    }

    void pttWithoutAuthorizationIsRefusedAndNothingPosted()
    {
        Client c(port);
        QCOMPARE(c.ask("T 1\n"), QByteArray("RPRT -9\n"));
        QVERIFY(rig->calls.isEmpty());
        QCOMPARE(c.ask("t\n"), QByteArray("0\n"));
    }

    void theKeyingClientsDisconnectUnkeys()
    {
        rig->authorized = true;
        {
            Client c(port);
            QCOMPARE(c.ask("T 1\n"), QByteArray("RPRT 0\n"));
            QCOMPARE(rig->calls, QStringList{"ptt 1"});
        }
        QTRY_COMPARE(rig->calls, (QStringList{"ptt 1", "ptt 0"}));
        QVERIFY(!rig->values.ptt);
    }

    void anotherClientsDisconnectDoesNotUnkey()
    {
        rig->authorized = true;
        Client keyer(port);
        {
            Client reader(port);
            QCOMPARE(keyer.ask("T 1\n"), QByteArray("RPRT 0\n"));
            QCOMPARE(reader.ask("t\n"), QByteArray("1\n"));
        }
        QTRY_COMPARE(server->clientCount(), 1);
        QCOMPARE(rig->calls, QStringList{"ptt 1"});
    }

    void aClientThatUnkeyedLeavesNothingToUndo()
    {
        rig->authorized = true;
        {
            Client c(port);
            c.ask("T 1\n");
            c.ask("T 0\n");
        }
        QTRY_COMPARE(server->clientCount(), 0);
        QCOMPARE(rig->calls, (QStringList{"ptt 1", "ptt 0"}));
    }

    void stoppingTheServerUnkeys()
    {
        rig->authorized = true;
        Client c(port);
        c.ask("T 1\n");
        server->stop();
        QCOMPARE(rig->calls, (QStringList{"ptt 1", "ptt 0"}));
        QVERIFY(c.waitClosed());
        QVERIFY(!server->isListening());
    }

    void destroyingTheServerUnkeys()
    {
        rig->authorized = true;
        Client c(port);
        c.ask("T 1\n");
        server.reset();
        QCOMPARE(rig->calls, (QStringList{"ptt 1", "ptt 0"}));
    }

    void garbageDoesNotStopTheServer()
    {
        Client good(port);
        {
            Client bad(port);
            QRandomGenerator gen(1000);
            for (int n = 0; n < 50; ++n) {
                QByteArray junk(gen.bounded(1, 200), '\0');
                for (char& ch : junk)
                    ch = static_cast<char>(gen.bounded(256));
                bad.send(junk);
            }
            bad.send("\nv\n");
            QTest::qWait(50);
        }
        QCOMPARE(good.ask("f\n"), QByteArray("14074000\n"));
        QVERIFY(rig->calls.filter(QStringLiteral("ptt 1")).isEmpty());
    }

private:
    std::unique_ptr<FakeRig> rig;
    std::unique_ptr<RigctlServer> server;
    quint16 port = 0;
};

QTEST_GUILESS_MAIN(TestRigctlServer)
#include "test_rigctl_server.moc"
