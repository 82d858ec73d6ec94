// SPDX-License-Identifier: GPL-3.0-or-later
// All three front doors at once on one link to the virtual radio: a network client, a client of the
// text port and a client of the native port, each on a thread of its own as another program would be,
// while the poll runs. Each client's sets reach the radio in its order and none is lost but for a
// frequency that a newer one of the same VFO replaced while it waited; the clients' reads of what the
// poll reads never reach the radio. Then a client that opens and closes each port again and again.

#include "BlockingClient.h"
#include "NativePort.h"
#include "SimRig.h"
#include "TextPort.h"

#include <QTemporaryDir>
#include <QTest>
#include <thread>

namespace {
constexpr int WaitMs = 20000;  // a guard against a hang, not a measurement
constexpr int Rounds = 12;     // sets per client
constexpr int Reopenings = 100;

QByteArray frame(int op, int p4 = 0, int p1 = 0)
{
    return CatCommand::make(op, p4, 0, 0, p1).bytes();
}

int fromBcd(quint8 b)
{
    return (b >> 4) * 10 + (b & 0x0F);
}

// The frequency in Hz of a set-frequency command as the radio receives it (P1 first, BCD).
qint64 setHz(const QByteArray& c)
{
    qint64 steps = 0;
    for (int i = 3; i >= 0; --i)
        steps = steps * 100 + fromBcd(static_cast<quint8>(c[i]));
    return steps * 10;
}

bool isStatus(const QByteArray& c, int kind)
{
    return quint8(c[4]) == Op::StatusRequest && quint8(c[3]) == kind;
}

// True when `got` holds elements of `sent` only, in its order (each at most once).
bool inOrderWithin(const QList<qint64>& got, const QList<qint64>& sent)
{
    qsizetype at = 0;
    for (qint64 v : got) {
        while (at < sent.size() && sent[at] != v)
            ++at;
        if (at == sent.size())
            return false;
        ++at;
    }
    return true;
}

struct Outcome {
    QString fault;  // empty when every reply was as expected
    QList<qint64> sets;
};
}  // namespace

class TestSharingTogether : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;
    SimRig rig;
    std::unique_ptr<NativePort> native;
    std::unique_ptr<TextPort> text;

    // Runs the event loop until every client thread has finished.
    static void serveUntilDone(std::vector<std::thread>& clients, const std::atomic<int>& done)
    {
        QDeadlineTimer deadline(WaitMs * 6);
        while (done.load() < int(clients.size()) && !deadline.hasExpired())
            QTest::qWait(5);
        for (std::thread& t : clients)
            t.join();
    }

    QList<QByteArray> received() const
    {
        QList<QByteArray> l;
        for (const SimHost::LogEntry& e : rig.sim.log())
            l << e.command;
        return l;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        QString error;
        QVERIFY2(rig.start(&error), qPrintable(error));
        QTRY_VERIFY_WITH_TIMEOUT(rig.backend->state().haveStatus, WaitMs);
        native = std::make_unique<NativePort>(*rig.backend, rig.cache);
        text = std::make_unique<TextPort>(*rig.backend);
        QVERIFY2(native->open(&error), qPrintable(error));
        QVERIFY2(text->open(&error), qPrintable(error));
    }
    void cleanupTestCase()
    {
        native.reset();
        text.reset();
        rig.stop();
    }

    void threeClientsAtOnceLoseNoSetAndKeepTheirOrder()
    {
        rig.sim.clearLog();
        const int pollsBefore = rig.polls;
        std::atomic<int> done{0};
        Outcome net, txt, nat;
        std::vector<std::thread> clients;

        // The network client tunes VFO-A and reads it back after each set.
        clients.emplace_back([&, port = rig.port()] {
            BlockingClient c = BlockingClient::tcp(port);
            for (int i = 0; i < Rounds && net.fault.isEmpty(); ++i) {
                const qint64 hz = 14000000 + i * 1000;
                net.sets << hz;
                c.write(QByteArray("F ") + QByteArray::number(hz) + '\n');
                if (const QByteArray r = c.readUntil('\n'); r != "RPRT 0\n")
                    net.fault = QStringLiteral("F answered %1").arg(QString::fromLatin1(r));
                else if (const QByteArray f = c.readUntil('\n', 0); !f.isEmpty())
                    net.fault = QStringLiteral("unasked %1").arg(QString::fromLatin1(f));
                c.write("f\n");
                if (const QByteArray r = c.readUntil('\n'); r != QByteArray::number(hz) + '\n')
                    net.fault = QStringLiteral("f after F %1 answered %2").arg(hz).arg(QString::fromLatin1(r));
            }
            ++done;
        });

        // The text client tunes VFO-B, checking each set with ID; as hamlib does, and reads the
        // information record.
        clients.emplace_back([&, path = text->linkPath()] {
            BlockingClient c = BlockingClient::pty(path);
            for (int i = 0; i < Rounds && txt.fault.isEmpty(); ++i) {
                const qint64 hz = 7000000 + i * 1000;
                txt.sets << hz;
                c.write(QStringLiteral("FB%1;ID;").arg(hz, 11, 10, QLatin1Char('0')).toLatin1());
                if (const QByteArray r = c.readUntil(';'); r != "ID019;")
                    txt.fault = QStringLiteral("ID after FB answered %1").arg(QString::fromLatin1(r));
                c.write("IF;");
                if (const QByteArray r = c.readUntil(';'); r.size() != 38 || !r.startsWith("IF"))
                    txt.fault = QStringLiteral("IF answered %1").arg(QString::fromLatin1(r));
            }
            ++done;
        });

        // The native client changes VFO-A's mode and reads the record back, and reads the flags and
        // the main S-meter as fast as they come.
        const QList<int> modes{ModeCode::Usb, ModeCode::Cw, ModeCode::Lsb, ModeCode::Am};
        std::atomic<int> nativeStatusReads{0};
        clients.emplace_back([&, path = native->linkPath()] {
            BlockingClient c = BlockingClient::pty(path);
            for (int i = 0; i < Rounds && nat.fault.isEmpty(); ++i) {
                const int mode = modes[i % modes.size()];
                nat.sets << mode;
                c.write(frame(Op::SetMode, mode) + frame(Op::StatusRequest, StatusKind::CurrentVfo));
                ++nativeStatusReads;
                if (c.readCount(ReplySize::VfoRecord).size() != ReplySize::VfoRecord)
                    nat.fault = QStringLiteral("no record after mode %1").arg(mode);
                for (int k = 0; k < 3 && nat.fault.isEmpty(); ++k) {
                    c.write(frame(Op::ReadFlags, 1) + frame(Op::ReadMeter, 0, MeterSelector::MainS));
                    if (c.readCount(ReplySize::Flags + ReplySize::Meter).size() != ReplySize::Flags + ReplySize::Meter)
                        nat.fault = QStringLiteral("no flags and meter");
                }
            }
            ++done;
        });

        serveUntilDone(clients, done);
        QVERIFY2(net.fault.isEmpty(), qPrintable(net.fault));
        QVERIFY2(txt.fault.isEmpty(), qPrintable(txt.fault));
        QVERIFY2(nat.fault.isEmpty(), qPrintable(nat.fault));
        rig.link->waitForIdle();

        QList<qint64> vfoA, vfoB, modeSets;
        int flagsReads = 0, mainSReads = 0, currentReads = 0, bothReads = 0;
        for (const QByteArray& c : received()) {
            const quint8 op = quint8(c[4]);
            if (op == Op::SetVfoA)
                vfoA << setHz(c);
            else if (op == Op::SetVfoB)
                vfoB << setHz(c);
            else if (op == Op::SetMode)
                modeSets << quint8(c[3]);
            else if (op == Op::ReadFlags)
                ++flagsReads;
            else if (op == Op::ReadMeter && quint8(c[0]) == MeterSelector::MainS)
                ++mainSReads;
            else if (isStatus(c, StatusKind::CurrentVfo))
                ++currentReads;
            else if (isStatus(c, StatusKind::BothVfos))
                ++bothReads;
        }
        // Frequencies: in each client's order, the last one always there; a replaced one may be missing.
        QVERIFY(!vfoA.isEmpty() && vfoA.last() == net.sets.last());
        QVERIFY(inOrderWithin(vfoA, net.sets));
        QVERIFY(!vfoB.isEmpty() && vfoB.last() == txt.sets.last());
        QVERIFY(inOrderWithin(vfoB, txt.sets));
        QCOMPARE(rig.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz * 10, net.sets.last());
        QCOMPARE(rig.sim.radio().vfo(VirtualRadio::Vfo::B).freq10Hz * 10, txt.sets.last());
        // Other sets: every one, in order.
        QList<qint64> modesSent;
        for (qint64 m : nat.sets)
            modesSent << m;
        QCOMPARE(modeSets, modesSent);
        // The flags and the S-meter that the native client read 3 * Rounds times each came from the
        // poll: the radio saw them once per poll (one poll may straddle the start of the log).
        QVERIFY2(qAbs(flagsReads - bothReads) <= 1,
                 qPrintable(QStringLiteral("%1 flags reads, %2 polls").arg(flagsReads).arg(bothReads)));
        QVERIFY(qAbs(mainSReads - bothReads) <= 1);
        // The records read after a set waited for the poll; only one whose poll did not come within
        // the port's ceiling would have been asked of the radio.
        QVERIFY2(currentReads - bothReads < nativeStatusReads / 2,
                 qPrintable(QStringLiteral("%1 record reads, %2 polls").arg(currentReads).arg(bothReads)));
        // The poll went on all the while.
        QVERIFY(rig.polls - pollsBefore >= 3);
    }

    void aClientOpensAndClosesEachPortAHundredTimes()
    {
        std::atomic<int> done{0};
        QString fault;
        std::vector<std::thread> clients;
        clients.emplace_back([&, textPath = text->linkPath(), nativePath = native->linkPath()] {
            for (int i = 0; i < Reopenings && fault.isEmpty(); ++i) {
                BlockingClient t = BlockingClient::pty(textPath);
                t.write("ID;");
                if (const QByteArray r = t.readUntil(';'); r != "ID019;")
                    fault = QStringLiteral("text port, opening %1: %2").arg(i).arg(QString::fromLatin1(r));
                BlockingClient n = BlockingClient::pty(nativePath);
                n.write(frame(Op::ReadFlags, 1));
                if (n.readCount(ReplySize::Flags).size() != ReplySize::Flags)
                    fault = QStringLiteral("native port, opening %1: no flags").arg(i);
            }
            ++done;
        });
        serveUntilDone(clients, done);
        QVERIFY2(fault.isEmpty(), qPrintable(fault));
        QVERIFY(native->isOpen());
        QVERIFY(text->isOpen());
        QCOMPARE(QFileInfo(text->linkPath()).symLinkTarget(), text->terminalPath());
    }
};

QTEST_GUILESS_MAIN(TestSharingTogether)
#include "test_sharing_together.moc"
