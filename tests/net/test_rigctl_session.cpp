// SPDX-License-Identifier: GPL-3.0-or-later
// A client's command lines and the exact replies, against a radio whose state the test arranges.

#include "DumpState.h"
#include "FakeRig.h"
#include "RigctlSession.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

namespace {
QByteArray reply(RigctlSession& s, const QString& line)
{
    return s.handleLine(line).reply;
}
}  // namespace

class TestRigctlSession : public QObject {
    Q_OBJECT
private slots:
    // One line against the standard scene (VFO-A 14 074 000 Hz USB, VFO-B 7 074 000 Hz LSB, no
    // split, receiving, S-meter at S9, transmitting not authorized): the reply and the sets made.
    void plainReplies_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QStringList>("calls");
        const QStringList none;
        QTest::newRow("f") << "f" << QByteArray("14074000\n") << none;
        QTest::newRow("\\get_freq") << "\\get_freq" << QByteArray("14074000\n") << none;
        QTest::newRow("f VFOB") << "f VFOB" << QByteArray("7074000\n") << none;
        QTest::newRow("f Sub") << "f Sub" << QByteArray("7074000\n") << none;
        QTest::newRow("f Main") << "f Main" << QByteArray("14074000\n") << none;
        QTest::newRow("f VFOC") << "f VFOC" << QByteArray("RPRT -16\n") << none;
        QTest::newRow("F whole Hz") << "F 14074055" << QByteArray("RPRT 0\n") << QStringList{"freq A 14074055"};
        QTest::newRow("F a real number") << "F 7074000.000000" << QByteArray("RPRT 0\n")
                                         << QStringList{"freq A 7074000"};
        QTest::newRow("F with an exponent") << "F 1.4074e7" << QByteArray("RPRT 0\n") << QStringList{"freq A 14074000"};
        QTest::newRow("F rounds to the Hz")
            << "F 14074000.6" << QByteArray("RPRT 0\n") << QStringList{"freq A 14074001"};
        QTest::newRow("F VFOB") << "F VFOB 3573000" << QByteArray("RPRT 0\n") << QStringList{"freq B 3573000"};
        QTest::newRow("\\set_freq") << "\\set_freq 21074000" << QByteArray("RPRT 0\n")
                                    << QStringList{"freq A 21074000"};
        QTest::newRow("F without a number") << "F" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("F not a number") << "F abc" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("F below the range") << "F 99999" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("F above the range") << "F 30000001" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("F negative") << "F -14074000" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("F nan") << "F nan" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("m") << "m" << QByteArray("USB\n2400\n") << none;
        QTest::newRow("m VFOB") << "m VFOB" << QByteArray("LSB\n2400\n") << none;
        QTest::newRow("M USB 2400") << "M USB 2400" << QByteArray("RPRT 0\n") << QStringList{"mode A 1"};
        QTest::newRow("M LSB -1") << "M LSB -1" << QByteArray("RPRT 0\n") << QStringList{"mode A 0"};
        QTest::newRow("M CW 0") << "M CW 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 2"};
        QTest::newRow("M CWR 500") << "M CWR 500" << QByteArray("RPRT 0\n") << QStringList{"mode A 3"};
        QTest::newRow("M AM 0") << "M AM 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 4"};
        QTest::newRow("M FM 0") << "M FM 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 6"};
        QTest::newRow("M RTTY 0") << "M RTTY 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 8"};
        QTest::newRow("M RTTYR 0") << "M RTTYR 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 9"};
        QTest::newRow("M PKTLSB 0") << "M PKTLSB 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 10"};
        QTest::newRow("M PKTFM 0") << "M PKTFM 0" << QByteArray("RPRT 0\n") << QStringList{"mode A 11"};
        QTest::newRow("M without a passband") << "M USB" << QByteArray("RPRT 0\n") << QStringList{"mode A 1"};
        QTest::newRow("M PKTUSB is not this radio's") << "M PKTUSB 0" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("M WFM is not this radio's") << "M WFM 0" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("M lower case") << "M usb 0" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("M passband not a number") << "M USB wide" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("M without a mode") << "M" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("M ? lists the modes")
            << "M ?" << QByteArray("USB LSB CW CWR AM FM RTTY RTTYR PKTLSB PKTFM\n") << none;
        QTest::newRow("M VFOB with its own mode") << "M VFOB LSB 0" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("M VFOB with another mode")
            << "M VFOB USB 0" << QByteArray("RPRT 0\n") << QStringList{"mode B 1"};
        QTest::newRow("v") << "v" << QByteArray("VFOA\n") << none;
        QTest::newRow("V VFOA") << "V VFOA" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("V Main") << "V Main" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("V currVFO") << "V currVFO" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("V VFOC") << "V VFOC" << QByteArray("RPRT -16\n") << none;
        QTest::newRow("V nonsense") << "V nonsense" << QByteArray("RPRT -16\n") << none;
        QTest::newRow("V alone") << "V" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("s") << "s" << QByteArray("0\nVFOA\n") << none;
        QTest::newRow("S 1 VFOB") << "S 1 VFOB" << QByteArray("RPRT 0\n") << QStringList{"split 1"};
        QTest::newRow("S 1 Sub") << "S 1 Sub" << QByteArray("RPRT 0\n") << QStringList{"split 1"};
        QTest::newRow("S 1 without a VFO") << "S 1" << QByteArray("RPRT 0\n") << QStringList{"split 1"};
        QTest::newRow("S 0 VFOA") << "S 0 VFOA" << QByteArray("RPRT 0\n") << QStringList{"split 0"};
        QTest::newRow("S VFOA 1 VFOB") << "S VFOA 1 VFOB" << QByteArray("RPRT 0\n") << QStringList{"split 1"};
        QTest::newRow("S 1 VFOA cannot be") << "S 1 VFOA" << QByteArray("RPRT -16\n") << none;
        QTest::newRow("S 1 VFOC") << "S 1 VFOC" << QByteArray("RPRT -16\n") << none;
        QTest::newRow("S 2 VFOB") << "S 2 VFOB" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("S alone") << "S" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("i") << "i" << QByteArray("7074000\n") << none;
        QTest::newRow("I") << "I 7076000" << QByteArray("RPRT 0\n") << QStringList{"freq B 7076000"};
        QTest::newRow("\\set_split_freq")
            << "\\set_split_freq 14076000" << QByteArray("RPRT 0\n") << QStringList{"freq B 14076000"};
        QTest::newRow("x") << "x" << QByteArray("LSB\n2400\n") << none;
        QTest::newRow("X with VFO-B's mode") << "X LSB 2400" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("X with another mode") << "X CW 500" << QByteArray("RPRT 0\n") << QStringList{"mode B 2"};
        QTest::newRow("X USB 2400") << "X USB 2400" << QByteArray("RPRT 0\n") << QStringList{"mode B 1"};
        QTest::newRow("X VFOB PKTFM 0") << "X VFOB PKTFM 0" << QByteArray("RPRT 0\n") << QStringList{"mode B 11"};
        QTest::newRow("\\set_split_mode")
            << "\\set_split_mode RTTYR 500" << QByteArray("RPRT 0\n") << QStringList{"mode B 9"};
        QTest::newRow("X unknown mode") << "X SSB 500" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("t") << "t" << QByteArray("0\n") << none;
        QTest::newRow("T 1 not authorized") << "T 1" << QByteArray("RPRT -9\n") << none;
        QTest::newRow("T 2 not authorized") << "T 2" << QByteArray("RPRT -9\n") << none;
        QTest::newRow("T 0 needs no authorization") << "T 0" << QByteArray("RPRT 0\n") << QStringList{"ptt 0"};
        QTest::newRow("T 4") << "T 4" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("T alone") << "T" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("l STRENGTH at S9") << "l STRENGTH" << QByteArray("0\n") << none;
        QTest::newRow("l VFOA STRENGTH") << "l VFOA STRENGTH" << QByteArray("0\n") << none;
        QTest::newRow("\\get_level STRENGTH") << "\\get_level STRENGTH" << QByteArray("0\n") << none;
        QTest::newRow("l ?") << "l ?" << QByteArray("STRENGTH\n") << none;
        QTest::newRow("l AF") << "l AF" << QByteArray("RPRT -11\n") << none;
        QTest::newRow("l alone") << "l" << QByteArray("RPRT -1\n") << none;
        QTest::newRow("\\get_powerstat") << "\\get_powerstat" << QByteArray("1\n") << none;
        QTest::newRow("\\set_powerstat 0") << "\\set_powerstat 0" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("\\get_lock_mode") << "\\get_lock_mode" << QByteArray("0\nRPRT 0\n") << none;
        QTest::newRow("\\set_lock_mode 1") << "\\set_lock_mode 1" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("\\chk_vfo") << "\\chk_vfo" << QByteArray("0\n") << none;
        QTest::newRow("q") << "q" << QByteArray("RPRT 0\n") << none;
        QTest::newRow("unknown letter") << "z" << QByteArray("RPRT -11\n") << none;
        QTest::newRow("unknown long name") << "\\get_ctcss_tone" << QByteArray("RPRT -11\n") << none;
        QTest::newRow("L") << "L AF 0.5" << QByteArray("RPRT -11\n") << none;
        QTest::newRow("leading blanks") << "   f" << QByteArray("14074000\n") << none;
    }
    void plainReplies()
    {
        QFETCH(QString, line);
        QFETCH(QByteArray, reply);
        QFETCH(QStringList, calls);
        FakeRig rig;
        RigctlSession session(rig);
        QCOMPARE(session.handleLine(line).reply, reply);
        QCOMPARE(rig.calls, calls);
    }

    void vfoBModeIsRefusedWhileTransmittingOrUnknown_data()
    {
        QTest::addColumn<QString>("scene");
        QTest::newRow("transmitting") << "ptt";
        QTest::newRow("no link") << "down";
        QTest::newRow("before the first poll") << "nostatus";
    }
    void vfoBModeIsRefusedWhileTransmittingOrUnknown()
    {
        QFETCH(QString, scene);
        FakeRig rig;
        rig.values.ptt = scene == u"ptt";
        rig.up = scene != u"down";
        rig.values.haveStatus = scene != u"nostatus";
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("X USB 2400")), QByteArray("RPRT -9\n"));
        QCOMPARE(reply(session, QStringLiteral("M VFOB CW 500")), QByteArray("RPRT -9\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void vfoBModeAlreadySoSendsNothingEvenWhileTransmitting()
    {
        FakeRig rig;
        rig.values.ptt = true;
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("X LSB 2400")), QByteArray("RPRT 0\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void afterVfoBModeXReadsTheNewMode()
    {
        FakeRig rig;
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("X USB 2400")), QByteArray("RPRT 0\n"));
        QCOMPARE(reply(session, QStringLiteral("x")), QByteArray("USB\n2400\n"));
        QCOMPARE(reply(session, QStringLiteral("m")), QByteArray("USB\n2400\n"));  // VFO-A untouched
    }

    void extendedReplies_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("+f") << "+f" << QByteArray("get_freq:\nFrequency: 14074000\nRPRT 0\n");
        QTest::newRow("+\\get_freq") << "+\\get_freq" << QByteArray("get_freq:\nFrequency: 14074000\nRPRT 0\n");
        QTest::newRow(";f") << ";f" << QByteArray("get_freq:;Frequency: 14074000;RPRT 0\n");
        QTest::newRow("|f") << "|f" << QByteArray("get_freq:|Frequency: 14074000|RPRT 0\n");
        QTest::newRow(",f") << ",f" << QByteArray("get_freq:,Frequency: 14074000,RPRT 0\n");
        QTest::newRow("+f VFOB") << "+f VFOB" << QByteArray("get_freq: VFOB\nFrequency: 7074000\nRPRT 0\n");
        QTest::newRow("+F") << "+F 14074000" << QByteArray("set_freq: 14074000\nRPRT 0\n");
        QTest::newRow(";F") << ";F 14074000" << QByteArray("set_freq: 14074000;RPRT 0\n");
        QTest::newRow("+m") << "+m" << QByteArray("get_mode:\nMode: USB\nPassband: 2400\nRPRT 0\n");
        QTest::newRow("|m") << "|m" << QByteArray("get_mode:|Mode: USB|Passband: 2400|RPRT 0\n");
        QTest::newRow("+M") << "+M CW 500" << QByteArray("set_mode: CW 500\nRPRT 0\n");
        QTest::newRow("+v") << "+v" << QByteArray("get_vfo:\nVFO: VFOA\nRPRT 0\n");
        QTest::newRow("+V") << "+V VFOB" << QByteArray("set_vfo: VFOB\nRPRT 0\n");
        QTest::newRow("+s") << "+s" << QByteArray("get_split_vfo:\nSplit: 0\nTX VFO: VFOA\nRPRT 0\n");
        QTest::newRow("+i") << "+i" << QByteArray("get_split_freq:\nTX Frequency: 7074000\nRPRT 0\n");
        QTest::newRow("+x") << "+x" << QByteArray("get_split_mode:\nTX Mode: LSB\nTX Passband: 2400\nRPRT 0\n");
        QTest::newRow("+t") << "+t" << QByteArray("get_ptt:\nPTT: 0\nRPRT 0\n");
        QTest::newRow("+T 1 refused") << "+T 1" << QByteArray("set_ptt: 1\nRPRT -9\n");
        QTest::newRow("+l") << "+l STRENGTH" << QByteArray("get_level: STRENGTH\nLevel Value: 0\nRPRT 0\n");
        QTest::newRow("+get_powerstat") << "+\\get_powerstat"
                                        << QByteArray("get_powerstat:\nPower Status: 1\nRPRT 0\n");
        QTest::newRow("+get_lock_mode") << "+\\get_lock_mode" << QByteArray("get_lock_mode:\nLocked: 0\nRPRT 0\n");
        QTest::newRow("+chk_vfo") << "+\\chk_vfo" << QByteArray("chk_vfo:\nChkVFO: 0\nRPRT 0\n");
        QTest::newRow("+F error") << "+F" << QByteArray("set_freq:\nRPRT -1\n");
        QTest::newRow("+unknown") << "+z" << QByteArray("RPRT -11\n");
        QTest::newRow("+q") << "+q" << QByteArray("quit:\nRPRT 0\n");
    }
    void extendedReplies()
    {
        QFETCH(QString, line);
        QFETCH(QByteArray, reply);
        FakeRig rig;
        RigctlSession session(rig);
        QCOMPARE(session.handleLine(line).reply, reply);
    }

    void extendedDumpStateCarriesTheWholeBlock()
    {
        FakeRig rig;
        RigctlSession session(rig);
        const QByteArray r = reply(session, QStringLiteral(";\\dump_state"));
        QVERIFY(r.startsWith("dump_state:;1;2;2;"));
        QVERIFY(r.endsWith(";done;RPRT 0\n"));
        QCOMPARE(r.count('\n'), 1);
    }

    void dumpStateIsTheBlockEndingInDone()
    {
        FakeRig rig;
        RigctlSession session(rig);
        const QByteArray r = reply(session, QStringLiteral("\\dump_state"));
        QVERIFY(r.endsWith("\ndone\n"));
        const QList<QByteArray> lines = r.chopped(1).split('\n');
        QCOMPARE(lines.size(), dumpStateLines().size());
        QCOMPARE(lines.at(0), QByteArray("1"));  // protocol version
        QCOMPARE(lines.at(1), QByteArray("2"));  // model
        QCOMPARE(lines.at(2), QByteArray("2"));  // ITU region
    }

    void dumpStateRangeLinesHaveSevenFields()
    {
        const QStringList l = dumpStateLines();
        // Receive range, its end, transmit range, its end.
        for (int i = 3; i <= 6; ++i)
            QCOMPARE(l.at(i).split(u' ').size(), 7);
        const QStringList rx = l.at(3).split(u' ');
        QCOMPARE(rx.at(0).toDouble(), 100000.0);
        QCOMPARE(rx.at(1).toDouble(), 30000000.0);
        QCOMPARE(rx.at(5), QStringLiteral("0x3"));  // VFOA | VFOB
        const QStringList tx = l.at(5).split(u' ');
        QCOMPARE(tx.at(5), QStringLiteral("0x3"));
        QVERIFY(tx.at(3).toInt() > 0 && tx.at(4).toInt() > tx.at(3).toInt());
        QCOMPARE(l.at(4), QStringLiteral("0 0 0 0 0 0 0"));
        QCOMPARE(l.at(6), QStringLiteral("0 0 0 0 0 0 0"));
    }

    void dumpStateModeMaskCoversEveryModeName()
    {
        const unsigned mask = dumpStateLines().at(3).split(u' ').at(2).toUInt(nullptr, 16);
        const unsigned bits[] = {ModeBit::USB, ModeBit::LSB,  ModeBit::CW,    ModeBit::CWR,    ModeBit::AM,
                                 ModeBit::FM,  ModeBit::RTTY, ModeBit::RTTYR, ModeBit::PKTLSB, ModeBit::PKTFM};
        for (unsigned b : bits)
            QVERIFY(mask & b);
        QCOMPARE(mask & 0x800u, 0u);  // PKTUSB: not this radio's
    }

    void dumpStateAdvertisesOnlyTheStrengthLevel()
    {
        const QStringList l = dumpStateLines();
        const int firstKey = l.indexOf(QStringLiteral("vfo_ops=0x0"));
        QVERIFY(firstKey > 6);
        // The six masks just before the key=value lines: get/set func, get/set level, get/set parm.
        const QStringList masks = l.mid(firstKey - 6, 6);
        QCOMPARE(masks, (QStringList{"0x0", "0x0", "0x40000000", "0x0", "0x0", "0x0"}));
    }

    void dumpStateKeyValueLines()
    {
        const QStringList l = dumpStateLines();
        const int firstKey = l.indexOf(QStringLiteral("vfo_ops=0x0"));
        QCOMPARE(l.mid(firstKey),
                 (QStringList{"vfo_ops=0x0", "ptt_type=0x1", "targetable_vfo=0x0", "has_set_vfo=1", "has_get_vfo=1",
                              "has_set_freq=1", "has_get_freq=1", "timeout=1000", "rig_model=2", "done"}));
    }

    void dumpStateTimeoutCoversTheWorstReply()
    {
        // Replies never wait on the radio; the time-out must still leave room for a busy network.
        QVERIFY(DumpStateValue::TimeoutMs >= 500);
    }

    void dumpStatePairListsEndWithZeroPairs()
    {
        const QStringList l = dumpStateLines();
        // Tuning steps at 7, its end at 8; filters from 9 up to the next "0 0".
        QCOMPARE(l.at(7).split(u' ').size(), 2);
        QCOMPARE(l.at(8), QStringLiteral("0 0"));
        const int filtersEnd = l.indexOf(QStringLiteral("0 0"), 9);
        QVERIFY(filtersEnd > 9);
        for (int i = 9; i < filtersEnd; ++i)
            QCOMPARE(l.at(i).split(u' ').size(), 2);
        // max_rit, max_xit, max_ifshift, announces, preamps, attenuators.
        QCOMPARE(l.mid(filtersEnd + 1, 6), (QStringList{"9990", "9990", "0", "0", "0", "0"}));
    }

    void vfoBMakesFreqAndModeTargetVfoB()
    {
        FakeRig rig;
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("V VFOB")), QByteArray("RPRT 0\n"));
        QCOMPARE(reply(session, QStringLiteral("v")), QByteArray("VFOB\n"));
        QCOMPARE(reply(session, QStringLiteral("f")), QByteArray("7074000\n"));
        QCOMPARE(reply(session, QStringLiteral("m")), QByteArray("LSB\n2400\n"));
        QCOMPARE(reply(session, QStringLiteral("F 7076000")), QByteArray("RPRT 0\n"));
        QCOMPARE(reply(session, QStringLiteral("f currVFO")), QByteArray("7076000\n"));
        QCOMPARE(reply(session, QStringLiteral("f VFOA")), QByteArray("14074000\n"));
        QCOMPARE(rig.calls, QStringList{"freq B 7076000"});
    }

    void subIsAnAliasOfVfoB()
    {
        FakeRig rig;
        RigctlSession session(rig);
        reply(session, QStringLiteral("V Sub"));
        QCOMPARE(session.currentVfo(), RigVfo::B);
        reply(session, QStringLiteral("V Main"));
        QCOMPARE(session.currentVfo(), RigVfo::A);
    }

    void selectingAVfoSendsNothing()
    {
        FakeRig rig;
        RigctlSession session(rig);
        reply(session, QStringLiteral("V VFOB"));
        reply(session, QStringLiteral("V VFOA"));
        QVERIFY(rig.calls.isEmpty());
    }

    void afterFTheNextFReadsTheRadiosTenHzStep()
    {
        FakeRig rig;
        RigctlSession session(rig);
        reply(session, QStringLiteral("F 14074055"));
        QCOMPARE(reply(session, QStringLiteral("f")), QByteArray("14074050\n"));
    }

    void theTxVfoIsVfoBWhileSplitIsOn()
    {
        FakeRig rig;
        rig.values.split = true;
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("s")), QByteArray("1\nVFOB\n"));
        QCOMPARE(reply(session, QStringLiteral("f TX")), QByteArray("7074000\n"));
        QCOMPARE(reply(session, QStringLiteral("f RX")), QByteArray("14074000\n"));
    }

    void amSyncReadsAsAm()
    {
        FakeRig rig;
        rig.values.modeA = 5;
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("m")), QByteArray("AM\n6000\n"));
    }

    void modeReadsOfEveryCode_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("0") << 0 << QByteArray("LSB\n2400\n");
        QTest::newRow("1") << 1 << QByteArray("USB\n2400\n");
        QTest::newRow("2") << 2 << QByteArray("CW\n500\n");
        QTest::newRow("3") << 3 << QByteArray("CWR\n500\n");
        QTest::newRow("4") << 4 << QByteArray("AM\n6000\n");
        QTest::newRow("5") << 5 << QByteArray("AM\n6000\n");
        QTest::newRow("6") << 6 << QByteArray("FM\n8000\n");
        QTest::newRow("8") << 8 << QByteArray("RTTY\n500\n");
        QTest::newRow("9") << 9 << QByteArray("RTTYR\n500\n");
        QTest::newRow("10") << 10 << QByteArray("PKTLSB\n2400\n");
        QTest::newRow("11") << 11 << QByteArray("PKTFM\n8000\n");
        QTest::newRow("unknown") << -1 << QByteArray("RPRT -9\n");
    }
    void modeReadsOfEveryCode()
    {
        QFETCH(int, code);
        QFETCH(QByteArray, reply);
        FakeRig rig;
        rig.values.modeA = code;
        RigctlSession session(rig);
        QCOMPARE(session.handleLine(QStringLiteral("m")).reply, reply);
    }

    void strengthFollowsTheCalibration_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("0") << 0 << QByteArray("-54\n");
        QTest::newRow("60") << 60 << QByteArray("-27\n");
        QTest::newRow("120") << 120 << QByteArray("0\n");
        QTest::newRow("255") << 255 << QByteArray("60\n");
    }
    void strengthFollowsTheCalibration()
    {
        QFETCH(int, raw);
        QFETCH(QByteArray, reply);
        FakeRig rig;
        rig.values.mainSMeterRaw = raw;
        RigctlSession session(rig);
        QCOMPARE(session.handleLine(QStringLiteral("l STRENGTH")).reply, reply);
    }

    void authorizedPttKeysAndReportsIt()
    {
        FakeRig rig;
        rig.authorized = true;
        RigctlSession session(rig);
        const RigctlSession::Result r = session.handleLine(QStringLiteral("T 1"));
        QCOMPARE(r.reply, QByteArray("RPRT 0\n"));
        QCOMPARE(r.pttKeyed, std::optional<bool>(true));
        QCOMPARE(rig.calls, QStringList{"ptt 1"});
        QCOMPARE(reply(session, QStringLiteral("t")), QByteArray("1\n"));
        QCOMPARE(session.handleLine(QStringLiteral("T 0")).pttKeyed, std::optional<bool>(false));
    }

    void refusedPttReportsNoChange()
    {
        FakeRig rig;
        RigctlSession session(rig);
        QVERIFY(!session.handleLine(QStringLiteral("T 1")).pttKeyed);
    }

    void noKeyWhileTheScopeSweeps()
    {
        FakeRig rig;
        rig.authorized = true;
        rig.scopeShown = true;
        RigctlSession session(rig);
        QCOMPARE(session.handleLine(QStringLiteral("T 1")).reply, QByteArray("RPRT -9\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void aSetRefusedForABacklogIsAnError()
    {
        FakeRig rig;
        rig.busy = true;
        RigctlSession session(rig);
        QCOMPARE(session.handleLine(QStringLiteral("F 14074000")).reply, QByteArray("RPRT -9\n"));
        QCOMPARE(session.handleLine(QStringLiteral("M LSB 0")).reply, QByteArray("RPRT -9\n"));
        QCOMPARE(session.handleLine(QStringLiteral("X LSB 0")).reply, QByteArray("RPRT 0\n"));  // already so
        QCOMPARE(session.handleLine(QStringLiteral("X USB 0")).reply, QByteArray("RPRT -9\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void theSessionIsOneClientOfTheRigForItsLifetime()
    {
        FakeRig rig;
        rig.authorized = true;
        {
            RigctlSession session(rig);
            QCOMPARE(rig.open.size(), size_t(1));
            session.handleLine(QStringLiteral("T 1"));
        }
        QVERIFY(rig.open.empty());
        QCOMPARE(rig.calls, (QStringList{"ptt 1", "ptt 0"}));  // its key went with it
    }

    void quitAsksToClose()
    {
        FakeRig rig;
        RigctlSession session(rig);
        QVERIFY(session.handleLine(QStringLiteral("q")).close);
        QVERIFY(!session.handleLine(QStringLiteral("f")).close);
    }

    void blankLineGetsNoReply()
    {
        FakeRig rig;
        RigctlSession session(rig);
        QVERIFY(session.handleLine(QString()).reply.isEmpty());
    }

    void getsBeforeTheFirstStatusAreRefused()
    {
        FakeRig rig;
        rig.values.haveStatus = false;
        RigctlSession session(rig);
        QCOMPARE(reply(session, QStringLiteral("f")), QByteArray("RPRT -9\n"));
        QCOMPARE(reply(session, QStringLiteral("m")), QByteArray("RPRT -9\n"));
        QCOMPARE(reply(session, QStringLiteral("l STRENGTH")), QByteArray("RPRT -9\n"));
        // Those that need no reading still answer.
        QCOMPARE(reply(session, QStringLiteral("\\chk_vfo")), QByteArray("0\n"));
        QCOMPARE(reply(session, QStringLiteral("v")), QByteArray("VFOA\n"));
    }

    void setsAreRefusedWhileThePortIsClosed()
    {
        FakeRig rig;
        rig.up = false;
        rig.authorized = true;
        RigctlSession session(rig);
        for (const char* line : {"F 14074000", "M USB 0", "S 1 VFOB", "T 1", "I 7000000"})
            QCOMPARE(reply(session, QLatin1String(line)), QByteArray("RPRT -9\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void garbageOnlyEverGetsTheKnownCodes()
    {
        // Random printable and unprintable lines, some starting with real command letters.
        FakeRig rig;
        RigctlSession session(rig);
        QRandomGenerator gen(4532);
        const QString starts = QStringLiteral("fFmMvVsSiIxXtTlq\\+;|,zZ ");
        static const QRegularExpression rprt(QStringLiteral("RPRT (-?\\d+)"));
        for (int n = 0; n < 3000; ++n) {
            QString line(starts.at(gen.bounded(starts.size())));
            const int len = gen.bounded(40);
            for (int i = 0; i < len; ++i)
                line += QChar(gen.bounded(n % 2 ? 32 : 1, n % 2 ? 127 : 256));
            line.remove(u'\n');
            const RigctlSession::Result r = session.handleLine(line);
            if (parseCommandLine(line).empty)
                continue;
            QVERIFY2(r.reply.endsWith('\n'), qPrintable(line));
            auto it = rprt.globalMatch(QString::fromLatin1(r.reply));
            while (it.hasNext()) {
                const int code = it.next().captured(1).toInt();
                QVERIFY2(QList<int>({0, -1, -4, -9, -11, -16}).contains(code), qPrintable(line));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestRigctlSession)
#include "test_rigctl_session.moc"
