// SPDX-License-Identifier: GPL-3.0-or-later
// The server's radio over the radio link: the bytes each set sends, and the snapshot the poll feeds.

#include "CatCommand.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "FlagsDecoder.h"
#include "LinkRig.h"
#include "PollCache.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "StatusDecoder.h"

#include <QTest>
#include <memory>
#include <utility>

namespace {

struct OnFakeLink {
    OnFakeLink()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  QString e;
                  p->open(&e);
                  return p;
              },
              clock, RadioLink::Mode::Inline),
          backend(link, clock)
    {
    }
    QStringList writes() const { return port->writtenHex(); }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    RadioLink link;
    LinkRig backend;
    RigClient client{backend, QStringLiteral("test")};
};

StatusView status(double kHzA, int modeA, double kHzB, int modeB)
{
    StatusView v;
    v.a.kHz = kHzA;
    v.a.mode = ModeDecode{QString(), modeA};
    v.b.kHz = kHzB;
    v.b.mode = ModeDecode{QString(), modeB};
    return v;
}

FlagsView flags(bool split, bool xmit)
{
    FlagsView f;
    f.decoded = true;
    f.split = split;
    f.xmit = xmit;
    return f;
}

}  // namespace

class TestLinkRig : public QObject {
    Q_OBJECT
private slots:
    void nothingIsKnownBeforeThePoll()
    {
        OnFakeLink r;
        QVERIFY(!r.backend.state().haveStatus);
        QCOMPARE(r.backend.state().modeA, -1);
    }

    void thePollFillsTheSnapshot()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.5, 0), flags(true, false), 150);
        const RigState s = r.backend.state();
        QVERIFY(s.haveStatus);
        QCOMPARE(s.vfoAHz, 14074000);
        QCOMPARE(s.vfoBHz, 7074500);
        QCOMPARE(s.modeA, 1);
        QCOMPARE(s.modeB, 0);
        QVERIFY(s.split);
        QVERIFY(!s.ptt);
        QCOMPARE(s.mainSMeterRaw, 150);
        QVERIFY(r.writes().isEmpty());
    }

    void theReceiveClarifierIsNotPartOfTheFrequency()
    {
        OnFakeLink r;
        StatusView v = status(14074.5, 1, 7074.0, 0);  // the display: 14 074.00 + 0.50 kHz
        v.a.rxClar = true;
        v.a.clarKHz = 0.5;
        r.backend.update(v, FlagsView{}, 0);
        QCOMPARE(r.backend.state().vfoAHz, 14074000);
    }

    void noLinkKeepsTheLastValues()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(false, false), 100);
        StatusView none;
        none.noLink = true;
        r.backend.update(none, FlagsView{}, 0);
        QCOMPARE(r.backend.state().vfoAHz, 14074000);
        QCOMPARE(r.backend.state().mainSMeterRaw, 100);
    }

    void thePanelIndicationsComeWithThePoll()
    {
        OnFakeLink r;
        StatusView v = status(14074.0, 1, 7074.0, 0);
        v.antCaption = QStringLiteral("  ANT B");
        FlagsView f = flags(false, false);
        f.dual = true;
        f.tuner = true;
        f.lockVisible = true;
        f.lockCaption = QStringLiteral("A/B Lk");
        r.backend.update(v, f, 0);
        RigState s = r.backend.state();
        QVERIFY(!s.noLink);
        QVERIFY(s.dual);
        QVERIFY(s.tuner);
        QCOMPARE(s.lockText, QStringLiteral("A/B Lk"));
        QCOMPARE(s.antennaText, QStringLiteral("ANT B"));

        r.backend.update(v, flags(false, false), 0);  // unlocked, single receive
        s = r.backend.state();
        QVERIFY(!s.dual);
        QVERIFY(s.lockText.isEmpty());

        StatusView none;
        none.noLink = true;
        r.backend.update(none, FlagsView{}, 0);
        s = r.backend.state();
        QVERIFY(s.noLink);
        QCOMPARE(s.antennaText, QStringLiteral("ANT B"));  // the last values stay
        QCOMPARE(s.vfoAHz, 14074000);
    }

    void theTransmitMeterIsTheOneTheWindowReads_data()
    {
        QTest::addColumn<int>("selector");
        QTest::addColumn<QString>("name");
        QTest::newRow("PO") << 0x80 << "PO";
        QTest::newRow("ALC") << 0x81 << "ALC";
        QTest::newRow("SWR") << 0x85 << "SWR";
        QTest::newRow("Mic") << 0x86 << "Mic";
        QTest::newRow("no meter 2") << 0x82 << "";
    }
    void theTransmitMeterIsTheOneTheWindowReads()
    {
        QFETCH(int, selector);
        QFETCH(QString, name);
        OnFakeLink r;
        r.backend.setTransmitMeter(selector, 37);
        QCOMPARE(r.backend.state().transmitMeterName, name);
        QCOMPARE(r.backend.state().transmitMeterPercent, 37);
        QVERIFY(r.writes().isEmpty());
    }

    void aModeOutsideTheTableKeepsTheLastMode()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 2, 7074.0, 0), FlagsView{}, 0);
        StatusView v = status(14074.0, 2, 7074.0, 0);
        v.a.mode.reset();
        r.backend.update(v, FlagsView{}, 0);
        QCOMPARE(r.backend.state().modeA, 2);
    }

    void undecodedFlagsChangeNothing()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, true), 0);
        FlagsView f = flags(false, false);
        f.decoded = false;
        r.backend.update(status(14074.0, 1, 7074.0, 0), f, 0);
        QVERIFY(r.backend.state().split);
        QVERIFY(r.backend.state().ptt);
    }

    void theModelCheckChangesNoFlag()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, false), 0);
        FlagsView f = flags(false, true);
        f.markV = true;
        r.backend.update(status(14074.0, 1, 7074.0, 0), f, 0);
        QVERIFY(r.backend.state().split);
        QVERIFY(!r.backend.state().ptt);
    }

    void setFrequencySendsSetFreqInTenHzUnits_data()
    {
        QTest::addColumn<int>("vfo");
        QTest::addColumn<qint64>("hz");
        QTest::addColumn<QString>("bytes");
        QTest::addColumn<qint64>("held");
        QTest::newRow("VFO-A 14 074 055 Hz") << 1 << qint64(14074055) << "05 74 40 01 0A" << qint64(14074050);
        QTest::newRow("VFO-B 7 074 000 Hz") << 2 << qint64(7074000) << "00 74 70 00 8A" << qint64(7074000);
        QTest::newRow("VFO-A 100 kHz") << 1 << qint64(100000) << "00 00 01 00 0A" << qint64(100000);
        QTest::newRow("VFO-B 29 999 999 Hz") << 2 << qint64(29999999) << "99 99 99 02 8A" << qint64(29999990);
    }
    void setFrequencySendsSetFreqInTenHzUnits()
    {
        QFETCH(int, vfo);
        QFETCH(qint64, hz);
        QFETCH(QString, bytes);
        QFETCH(qint64, held);
        OnFakeLink r;
        r.client.setFrequency(vfo == 2 ? RigVfo::B : RigVfo::A, hz);
        QCOMPARE(r.writes(), QStringList{bytes});
        QCOMPARE(vfo == 2 ? r.backend.state().vfoBHz : r.backend.state().vfoAHz, held);
    }

    void setModeSendsTheModeInstruction_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("bytes");
        QTest::newRow("LSB") << 0 << "00 00 00 00 0C";
        QTest::newRow("USB") << 1 << "00 00 00 01 0C";
        QTest::newRow("CW-R") << 3 << "00 00 00 03 0C";
        QTest::newRow("FM") << 6 << "00 00 00 06 0C";
        QTest::newRow("PKT FM") << 11 << "00 00 00 0B 0C";
    }
    void setModeSendsTheModeInstruction()
    {
        QFETCH(int, code);
        QFETCH(QString, bytes);
        OnFakeLink r;
        r.client.setMode(code);
        QCOMPARE(r.writes(), QStringList{bytes});
        QCOMPARE(r.backend.state().modeA, code);
    }

    void vfoBModeIsOneJobOfThreeCommandsWithTheirWaits()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, false), 0);
        r.client.setModeB(1);
        // VFO-B in use, USB, VFO-A in use again: nothing of a poll can come between them.
        QCOMPARE(r.clock->events, (QStringList{"write 00 00 00 01 05", "sleep 50", "write 00 00 00 01 0C", "sleep 50",
                                               "write 00 00 00 00 05", "sleep 50"}));
        QCOMPARE(r.backend.state().modeB, 1);
        QCOMPARE(r.backend.state().modeA, 1);
    }

    void aPollThatStartedBeforeVfoBModeDoesNotUndoIt()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, false), 0);
        r.client.setModeB(2);
        r.clock->advance(600);
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, false), 0);  // still LSB
        QCOMPARE(r.backend.state().modeB, 2);
        r.backend.update(status(14074.0, 1, 7074.0, 2), flags(true, false), 0);  // confirmed
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, false), 0);  // turned on the panel
        QCOMPARE(r.backend.state().modeB, 0);
    }

    void vfoBModeWithThePortClosedSendsNothing()
    {
        OnFakeLink r;
        r.link.runBlocking([](CatPort& port) { port.serial().close(); });
        r.client.setModeB(1);
        QVERIFY(r.writes().isEmpty());
    }

    void setSplitSendsTheSplitInstruction()
    {
        OnFakeLink r;
        r.client.setSplit(true);
        r.client.setSplit(false);
        QCOMPARE(r.writes(), (QStringList{"00 00 00 01 01", "00 00 00 00 01"}));
    }

    void setPttSendsThePttInstruction()
    {
        OnFakeLink r;
        r.backend.setTxAuthorized(true);
        r.client.setPtt(true);
        QVERIFY(r.backend.state().ptt);
        r.client.setPtt(false);
        QCOMPARE(r.writes(), (QStringList{"00 00 00 01 0F", "00 00 00 00 0F"}));
    }

    void aSetIsOneWriteWithNoWaitOrRead()
    {
        OnFakeLink r;
        r.client.setFrequency(RigVfo::A, 14074000);
        QCOMPARE(r.clock->events, QStringList{"write 00 74 40 01 0A"});
    }

    void aWaitingFrequencySetIsReplacedByTheNextOfItsVfo()
    {
        OnFakeLink r;
        // Clients set while the link is busy with a long job; the link runs what waits after it.
        bool once = false;  // the handler stays set: clearing it would destroy it while it runs
        r.clock->onSleep = [&r, &once](int) {
            if (std::exchange(once, true))
                return;
            r.client.setFrequency(RigVfo::A, 14074000);
            r.client.setMode(2);
            r.client.setFrequency(RigVfo::B, 7074000);
            r.client.setFrequency(RigVfo::A, 14075000);
            r.client.setFrequency(RigVfo::A, 14076000);
        };
        r.link.post([](CatPort& port) { port.sleep(1000); });
        // The set before the mode stays before it; of the two after it only the last goes out.
        QCOMPARE(r.writes(), (QStringList{"00 74 40 01 0A", "00 00 00 02 0C", "00 74 70 00 8A", "00 76 40 01 0A"}));
        QCOMPARE(r.backend.state().vfoAHz, 14076000);
    }

    void aPollThatStartedBeforeTheSetDoesNotUndoIt()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(false, false), 0);
        r.client.setFrequency(RigVfo::A, 14076000);
        r.client.setMode(2);
        r.client.setSplit(true);
        r.clock->advance(600);
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(false, false), 0);  // the old values
        QCOMPARE(r.backend.state().vfoAHz, 14076000);
        QCOMPARE(r.backend.state().modeA, 2);
        QVERIFY(r.backend.state().split);
    }

    void thePollConfirmingTheSetEndsTheHold()
    {
        OnFakeLink r;
        r.client.setFrequency(RigVfo::A, 14076000);
        r.backend.update(status(14076.0, 1, 7074.0, 0), FlagsView{}, 0);
        // From now on the radio is believed at once: the operator turned the dial.
        r.backend.update(status(14080.0, 1, 7074.0, 0), FlagsView{}, 0);
        QCOMPARE(r.backend.state().vfoAHz, 14080000);
    }

    void aSetTheRadioIgnoredGivesWayAfterTheHold()
    {
        OnFakeLink r;
        r.client.setFrequency(RigVfo::B, 7076000);
        r.clock->advance(LinkRig::HoldMs);
        r.backend.update(status(14074.0, 1, 7074.0, 0), FlagsView{}, 0);
        QCOMPARE(r.backend.state().vfoBHz, 7074000);
    }

    void withdrawingAuthorizationUnkeysANetworkPtt()
    {
        OnFakeLink r;
        r.backend.setTxAuthorized(true);
        QVERIFY(r.backend.txAuthorized());
        r.client.setPtt(true);
        r.backend.setTxAuthorized(false);
        QVERIFY(!r.backend.txAuthorized());
        QCOMPARE(r.writes(), (QStringList{"00 00 00 01 0F", "00 00 00 00 0F"}));
        QVERIFY(!r.backend.state().ptt);
    }

    void withdrawingAuthorizationWithoutANetworkPttSendsNothing()
    {
        OnFakeLink r;
        r.backend.setTxAuthorized(true);
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(false, true), 0);  // keyed on the panel
        r.backend.setTxAuthorized(false);
        QVERIFY(r.writes().isEmpty());
    }

    void theSharedStateCarriesTheSnapshotAndTheClarifiers()
    {
        OnFakeLink r;
        StatusView v = status(14074.5, 1, 7074.0, 0);
        v.a.rxClar = true;
        v.a.clarKHz = 0.5;
        v.b.txClar = true;
        v.b.clarKHz = -1.25;
        r.backend.update(v, flags(true, false), 120);
        const Rig& rig = r.backend;
        const RigState s = rig.state();
        QCOMPARE(s.vfoAHz, 14074000);
        QCOMPARE(s.vfoBHz, 7074000);
        QVERIFY(s.split);
        QCOMPARE(s.mainSMeterRaw, 120);
        QVERIFY(s.clarifierA.rxOn);
        QVERIFY(!s.clarifierA.txOn);
        QCOMPARE(s.clarifierA.offsetHz, 500);
        QVERIFY(!s.clarifierB.rxOn);
        QVERIFY(s.clarifierB.txOn);
        QCOMPARE(s.clarifierB.offsetHz, -1250);
        QCOMPARE(s.memoryChannel, 0);
    }

    void noLinkKeepsTheClarifiers()
    {
        OnFakeLink r;
        StatusView v = status(14074.0, 1, 7074.0, 0);
        v.a.txClar = true;
        v.a.clarKHz = 0.2;
        r.backend.update(v, FlagsView{}, 0);
        StatusView none;
        none.noLink = true;
        r.backend.update(none, FlagsView{}, 0);
        QVERIFY(r.backend.state().clarifierA.txOn);
        QCOMPARE(r.backend.state().clarifierA.offsetHz, 200);
    }

    void aSetThroughTheSharedPathShowsInBothViews()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(false, false), 0);
        Rig& rig = r.backend;
        r.client.setFrequency(RigVfo::B, 7076000);
        r.client.setSplit(true);
        QCOMPARE(r.writes(), (QStringList{"00 76 70 00 8A", "00 00 00 01 01"}));
        // One state behind both front doors: the server sees what a sharing port set.
        QCOMPARE(r.backend.state().vfoBHz, 7076000);
        QVERIFY(r.backend.state().split);
        QCOMPARE(rig.state().vfoBHz, 7076000);
    }

    void setModeBIsTheVfoBModeJob()
    {
        OnFakeLink r;
        r.backend.update(status(14074.0, 1, 7074.0, 0), flags(true, false), 0);
        Rig& rig = r.backend;
        r.client.setModeB(ModeCode::Cw);
        QCOMPARE(r.clock->events, (QStringList{"write 00 00 00 01 05", "sleep 50", "write 00 00 00 02 0C", "sleep 50",
                                               "write 00 00 00 00 05", "sleep 50"}));
        QCOMPARE(rig.state().modeB, ModeCode::Cw);
        QCOMPARE(r.backend.state().modeB, ModeCode::Cw);
    }

    void theSharedGateIsTheServersGate()
    {
        OnFakeLink r;
        const Rig& rig = r.backend;
        QVERIFY(!rig.txAuthorized());
        r.backend.setTxAuthorized(true);
        QVERIFY(rig.txAuthorized());
        QVERIFY(rig.linkUp());
        r.link.runBlocking([](CatPort& port) { port.serial().close(); });
        QVERIFY(!rig.linkUp());
    }

    void aSetMakesThePolledRecordsItChangesWaitForTheNextPoll()
    {
        OnFakeLink r;
        auto cache = std::make_shared<PollCache>();
        r.backend.setPollCache(cache);
        StatusReply polled;
        polled.currentVfo = QByteArray(ReplySize::VfoRecord, 'a');
        cache->storeStatus(cache->pollStarting(), polled);
        FlagsReply flagsRead;
        flagsRead.bytes = QByteArray(ReplySize::Flags, 'f');
        cache->storeFlags(cache->pollStarting(), flagsRead);
        const CatCommand currentVfo = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo);
        const CatCommand flagsCommand = CatCommand::make(Op::ReadFlags, 1);
        r.client.setSplit(true);
        QCOMPARE(cache->answer(flagsCommand).holding, PollCache::Holding::Stale);
        QCOMPARE(cache->answer(currentVfo).holding, PollCache::Holding::Current);
        r.client.setFrequency(RigVfo::A, 14076000);
        QCOMPARE(cache->answer(currentVfo).holding, PollCache::Holding::Stale);
        cache->storeStatus(cache->pollStarting(), polled);
        cache->storeFlags(cache->pollStarting(), flagsRead);
        QCOMPARE(cache->answer(currentVfo).holding, PollCache::Holding::Current);
        QCOMPARE(cache->answer(flagsCommand).holding, PollCache::Holding::Current);
    }

    void linkUpFollowsThePort()
    {
        OnFakeLink r;
        QVERIFY(r.backend.linkUp());
        r.link.runBlocking([](CatPort& port) { port.serial().close(); });
        QVERIFY(!r.backend.linkUp());
        r.client.setFrequency(RigVfo::A, 14074000);  // the job finds the port closed
        QVERIFY(r.writes().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLinkRig)
#include "test_link_rig.moc"
