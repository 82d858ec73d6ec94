// SPDX-License-Identifier: GPL-3.0-or-later
// The one transmit gate below every door: who keyed, when the key is released, what may key, and
// how much one client may keep waiting on the link.

#include "CatCommand.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "LinkRig.h"
#include "RadioLink.h"

#include <QSemaphore>
#include <QTest>
#include <atomic>
#include <memory>

namespace {
const QString Key = QStringLiteral("00 00 00 01 0F");
const QString Unkey = QStringLiteral("00 00 00 00 0F");

struct Inline {
    Inline()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  p->open(nullptr);
                  return p;
              },
              clock, RadioLink::Mode::Inline),
          rig(link, clock)
    {
        rig.setTxAuthorized(true);
    }
    QStringList writes() const { return port->writtenHex(); }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    RadioLink link;
    LinkRig rig;
};

// A threaded link whose first job holds it until the test lets go, so that jobs wait behind it.
struct Held {
    Held()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  p->open(nullptr);
                  port = p.get();
                  return p;
              },
              clock, RadioLink::Mode::Threaded),
          rig(link, clock)
    {
        rig.setTxAuthorized(true);
    }
    void hold()
    {
        link.post([this](CatPort&) { gate.acquire(); });
    }
    void letGo()
    {
        gate.release();
        link.waitForIdle();
    }
    QStringList writes() const { return port.load()->writtenHex(); }

    std::shared_ptr<FakeClock> clock;
    std::atomic<FakeSerialPort*> port{nullptr};
    QSemaphore gate;
    RadioLink link;
    LinkRig rig;
};
}  // namespace

class TestTransmitGate : public QObject {
    Q_OBJECT
private slots:
    void aKeyIsRefusedWithoutAuthorizeTx()
    {
        Inline s;
        s.rig.setTxAuthorized(false);
        RigClient c(s.rig, QStringLiteral("test"));
        QCOMPARE(c.setPtt(true), Refusal::NotAuthorized);
        QCOMPARE(c.send(CatCommand::make(Op::Ptt, 1)), Refusal::NotAuthorized);
        QCOMPARE(c.send(CatCommand::make(Op::TunerStart, 0)), Refusal::NotAuthorized);
        QVERIFY(s.writes().isEmpty());
        QVERIFY(!c.holdsKey());
    }

    // Any P4 but 0 may key the radio: each is gated as a key and remembered as one.
    void everyNonZeroPttIsAKey_data()
    {
        QTest::addColumn<int>("p4");
        QTest::newRow("1") << 1;
        QTest::newRow("2") << 2;
        QTest::newRow("FF") << 0xFF;
    }
    void everyNonZeroPttIsAKey()
    {
        QFETCH(int, p4);
        Inline s;
        s.rig.setTxAuthorized(false);
        {
            RigClient c(s.rig, QStringLiteral("native port"));
            QCOMPARE(c.send(CatCommand::make(Op::Ptt, p4)), Refusal::NotAuthorized);
            QVERIFY(s.writes().isEmpty());
            s.rig.setTxAuthorized(true);
            QCOMPARE(c.send(CatCommand::make(Op::Ptt, p4)), Refusal::None);
            QVERIFY(c.holdsKey());
            QVERIFY(s.rig.state().ptt);
        }
        // The client went: its key is released.
        QCOMPARE(s.writes().last(), Unkey);
    }

    void withdrawingAuthorizeTxUnkeysTheClientsKey()
    {
        Inline s;
        RigClient c(s.rig, QStringLiteral("native port"));
        QCOMPARE(c.setPtt(true), Refusal::None);
        s.rig.setTxAuthorized(false);
        QCOMPARE(s.writes(), (QStringList{Key, Unkey}));
        QVERIFY(!c.holdsKey());
        QVERIFY(!s.rig.state().ptt);
    }

    void withdrawingAuthorizeTxWithNoKeySendsNothing()
    {
        Inline s;
        RigClient c(s.rig, QStringLiteral("network"));
        s.rig.setTxAuthorized(false);
        QVERIFY(s.writes().isEmpty());
    }

    void theKeyingClientGoingUnkeysAndAnotherGoingDoesNot()
    {
        Inline s;
        auto keyer = std::make_unique<RigClient>(s.rig, QStringLiteral("network"));
        auto other = std::make_unique<RigClient>(s.rig, QStringLiteral("network"));
        QCOMPARE(keyer->setPtt(true), Refusal::None);
        other.reset();
        QCOMPARE(s.writes(), QStringList{Key});
        keyer.reset();
        QCOMPARE(s.writes(), (QStringList{Key, Unkey}));
    }

    void whoeverUnkeysFreesTheTransmitter()
    {
        Inline s;
        RigClient a(s.rig, QStringLiteral("network"));
        RigClient b(s.rig, QStringLiteral("text port"));
        QCOMPARE(a.setPtt(true), Refusal::None);
        QCOMPARE(b.setPtt(false), Refusal::None);
        QVERIFY(!a.holdsKey());
        QCOMPARE(b.setPtt(true), Refusal::None);
        QVERIFY(b.holdsKey());
        QVERIFY(!a.holdsKey());
    }

    void noKeyWhileTheScopeSweepsAndShowingItUnkeys()
    {
        Inline s;
        RigClient c(s.rig, QStringLiteral("network"));
        QCOMPARE(c.setPtt(true), Refusal::None);
        s.rig.setScopeShown(true);
        QCOMPARE(s.writes(), (QStringList{Key, Unkey}));
        QCOMPARE(c.setPtt(true), Refusal::ScopeSweeping);
        QCOMPARE(c.send(CatCommand::make(Op::Ptt, 1)), Refusal::ScopeSweeping);
        QCOMPARE(c.send(CatCommand::make(Op::TunerStart, 0)), Refusal::ScopeSweeping);
        QCOMPARE(s.writes(), (QStringList{Key, Unkey}));
        // Other sets still go: only keying is held back.
        QCOMPARE(c.setMode(ModeCode::Usb), Refusal::None);
        s.rig.setScopeShown(false);
        QCOMPARE(c.setPtt(true), Refusal::None);
        QCOMPARE(s.writes().last(), Key);
    }

    void theKeyIsReleasedBeforeThePortCloses()
    {
        Inline s;
        RigClient c(s.rig, QStringLiteral("native port"));
        s.rig.releaseKeyBeforePortCloses();
        QVERIFY(s.writes().isEmpty());  // nobody keyed: nothing to send
        QCOMPARE(c.setPtt(true), Refusal::None);
        s.rig.releaseKeyBeforePortCloses();
        QCOMPARE(s.writes(), (QStringList{Key, Unkey}));
    }

    void theTunersStartIsGatedButHoldsNoKey()
    {
        Inline s;
        RigClient c(s.rig, QStringLiteral("native port"));
        QCOMPARE(c.send(CatCommand::make(Op::TunerStart, 0)), Refusal::None);
        QVERIFY(!c.holdsKey());
        QCOMPARE(s.writes(), QStringList{QStringLiteral("00 00 00 00 82")});
    }

    void nothingGoesWithThePortClosed()
    {
        Inline s;
        RigClient c(s.rig, QStringLiteral("network"));
        s.link.runBlocking([](CatPort& port) { port.serial().close(); });
        QCOMPARE(c.setPtt(true), Refusal::LinkDown);
        QCOMPARE(c.setFrequency(RigVfo::A, 14074000), Refusal::LinkDown);
        QCOMPARE(c.send(CatCommand::make(Op::Split, 1)), Refusal::LinkDown);
    }

    void oneClientMayKeepOnlySoManyJobsWaiting()
    {
        Held s;
        RigClient flood(s.rig, QStringLiteral("network"));
        RigClient other(s.rig, QStringLiteral("text port"));
        s.hold();
        int accepted = 0;
        for (int i = 0; i < 3 * LinkRig::MaxWaitingJobsPerClient; ++i)
            accepted += flood.setModeB(i % 2 == 0 ? ModeCode::Usb : ModeCode::Lsb) == Refusal::None ? 1 : 0;
        QCOMPARE(accepted, LinkRig::MaxWaitingJobsPerClient);
        QCOMPARE(s.rig.clientJobsWaiting(flood.id()), LinkRig::MaxWaitingJobsPerClient);
        QCOMPARE(flood.setMode(ModeCode::Cw), Refusal::Busy);
        // Another client is not held back by the first one's backlog, and an unkey never is.
        QCOMPARE(other.setSplit(true), Refusal::None);
        QCOMPARE(flood.setPtt(false), Refusal::None);
        s.letGo();
        QCOMPARE(s.rig.clientJobsWaiting(flood.id()), 0);
        // Each VFO-B mode job is three writes; then the split and the unkey.
        QCOMPARE(s.writes().size(), 3 * LinkRig::MaxWaitingJobsPerClient + 2);
        QCOMPARE(flood.setMode(ModeCode::Cw), Refusal::None);
    }

    void aReplacedFrequencySetGivesItsPlaceBack()
    {
        Held s;
        RigClient c(s.rig, QStringLiteral("network"));
        s.hold();
        for (int i = 0; i < 3 * LinkRig::MaxWaitingJobsPerClient; ++i)
            QCOMPARE(c.setFrequency(RigVfo::A, 14000000 + i * 10), Refusal::None);
        QCOMPARE(s.rig.clientJobsWaiting(c.id()), 1);
        s.letGo();
        QCOMPARE(s.writes().size(), 1);
    }

    void closingTheProgramAbandonsWaitingClientJobsButNotTheUnkey()
    {
        Held s;
        RigClient c(s.rig, QStringLiteral("network"));
        QCOMPARE(c.setPtt(true), Refusal::None);
        s.link.waitForIdle();
        s.hold();
        for (int i = 0; i < LinkRig::MaxWaitingJobsPerClient - 1; ++i)
            QCOMPARE(c.setModeB(ModeCode::Cw), Refusal::None);
        s.rig.abandonClientJobs();
        s.letGo();
        QCOMPARE(s.writes(), (QStringList{Key, Unkey}));
        QCOMPARE(s.rig.clientJobsWaiting(c.id()), 0);
    }

    // A question put to the radio for a client that has gone is not answered into the void.
    void aReplyForAClosedClientIsDropped()
    {
        Held s;
        s.port.load()->responder = [](const QByteArray&) { return QByteArray(16, 'r'); };
        auto c = std::make_unique<RigClient>(s.rig, QStringLiteral("native port"));
        int answers = 0;
        s.hold();
        QCOMPARE(c->ask(CatCommand::make(Op::StatusRequest, 4, 0, 0, 5), [&](const QByteArray&) { ++answers; }),
                 Refusal::None);
        c.reset();
        s.letGo();
        QCoreApplication::processEvents();
        QCOMPARE(answers, 0);
        // A living client gets its reply on its own thread.
        RigClient d(s.rig, QStringLiteral("native port"));
        QByteArray got;
        QCOMPARE(d.ask(CatCommand::make(Op::StatusRequest, 4, 0, 0, 5), [&](const QByteArray& r) { got = r; }),
                 Refusal::None);
        QTRY_COMPARE(got, QByteArray(16, 'r'));
    }
};

QTEST_GUILESS_MAIN(TestTransmitGate)
#include "test_transmit_gate.moc"
