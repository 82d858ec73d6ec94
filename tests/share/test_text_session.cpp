// SPDX-License-Identifier: GPL-3.0-or-later
// One text-port client's conversation against a fake radio: every read with its exact reply, every
// set with no reply and the radio call it makes, and each bad input answered "?;".

#include "FakeRig.h"
#include "TextSession.h"

#include <QTest>

class TestTextSession : public QObject {
    Q_OBJECT
private:
    FakeRig rig{FakeRig::SharingScene};

    QByteArray send(TextSession& s, const char* command) { return s.handle(QByteArray(command)).reply; }

private slots:
    void init() { rig = FakeRig(FakeRig::SharingScene); }

    void fixedReads_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("ID") << QByteArray("ID") << QByteArray("ID019;");
        QTest::newRow("AI") << QByteArray("AI") << QByteArray("AI0;");
        QTest::newRow("PS") << QByteArray("PS") << QByteArray("PS1;");
        QTest::newRow("SA") << QByteArray("SA") << QByteArray("SA0;");
    }
    void fixedReads()
    {
        QFETCH(QByteArray, command);
        QFETCH(QByteArray, reply);
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, reply);
        // even before the first poll
        rig.values.haveStatus = false;
        QCOMPARE(s.handle(command).reply, reply);
        QVERIFY(rig.calls.isEmpty());
    }

    void frequencyReads()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "FA"), QByteArray("FA00014076000;"));
        QCOMPARE(send(s, "FB"), QByteArray("FB00007074000;"));
        rig.values.vfoAHz = 29999990;
        QCOMPARE(send(s, "FA"), QByteArray("FA00029999990;"));
    }

    void modeReadIsTheReceiveVfosMode_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("LSB") << ModeCode::Lsb << QByteArray("MD1;");
        QTest::newRow("USB") << ModeCode::Usb << QByteArray("MD2;");
        QTest::newRow("CW") << ModeCode::Cw << QByteArray("MD3;");
        QTest::newRow("FM") << ModeCode::Fm << QByteArray("MD4;");
        QTest::newRow("AM") << ModeCode::Am << QByteArray("MD5;");
        QTest::newRow("RTTY") << ModeCode::Rtty << QByteArray("MD6;");
        QTest::newRow("CW-R") << ModeCode::CwR << QByteArray("MD7;");
        QTest::newRow("RTTY-R") << ModeCode::RttyR << QByteArray("MD9;");
        QTest::newRow("AM sync") << ModeCode::AmSync << QByteArray("MD5;");
        QTest::newRow("PKT LSB") << ModeCode::PktLsb << QByteArray("MD1;");
        QTest::newRow("PKT FM") << ModeCode::PktFm << QByteArray("MD4;");
    }
    void modeReadIsTheReceiveVfosMode()
    {
        QFETCH(int, code);
        QFETCH(QByteArray, reply);
        rig.values.modeA = code;
        TextSession s(rig);
        QCOMPARE(send(s, "MD"), reply);
    }

    void modeReadOfAnUnknownModeIsRefused()
    {
        rig.values.modeA = -1;
        TextSession s(rig);
        QCOMPARE(send(s, "MD"), QByteArray("?;"));
    }

    void receiveAndTransmitVfoReads()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "FR"), QByteArray("FR0;"));
        QCOMPARE(send(s, "FT"), QByteArray("FT0;"));
        rig.values.split = true;
        QCOMPARE(send(s, "FR"), QByteArray("FR0;"));
        QCOMPARE(send(s, "FT"), QByteArray("FT1;"));
    }

    void sMeterRead_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("no signal") << 0 << QByteArray("SM00000;");
        QTest::newRow("S9") << 120 << QByteArray("SM00014;");
        QTest::newRow("full scale") << 255 << QByteArray("SM00030;");
    }
    void sMeterRead()
    {
        QFETCH(int, raw);
        QFETCH(QByteArray, reply);
        rig.values.mainSMeterRaw = raw;
        TextSession s(rig);
        QCOMPARE(send(s, "SM0"), reply);
    }

    void infoRecordOfVfoA()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "IF"), QByteArray("IF000140760000010+0000000000020000010;"));
    }

    void infoRecordCarriesTheRadiosState()
    {
        rig.values.clarifierA = ClarifierState{true, true, -250};
        rig.values.memoryChannel = 7;
        rig.values.modeA = ModeCode::Cw;
        rig.values.split = true;
        TextSession s(rig);
        //                                  freq       step offs  rt 0 mc t m v s s tn s
        QCOMPARE(send(s, "IF"), QByteArray("IF00014076000"
                                           "0010"
                                           "-00250"
                                           "11"
                                           "0"
                                           "07"
                                           "0"
                                           "3"
                                           "0"
                                           "0"
                                           "1"
                                           "0"
                                           "01"
                                           "0;"));
    }

    void infoRecordWhileTransmittingInSplitShowsTheTransmitVfo()
    {
        rig.values.split = true;
        rig.values.ptt = true;
        TextSession s(rig);
        const QByteArray r = send(s, "IF");
        QCOMPARE(r.mid(2, 11), QByteArray("00007074000"));
        QCOMPARE(r.mid(28, 1), QByteArray("1"));  // transmitting
        QCOMPARE(r.mid(29, 1), QByteArray("1"));  // VFO-B's LSB
        QCOMPARE(r.mid(30, 1), QByteArray("1"));  // the VFO shown: B
        QCOMPARE(r.mid(32, 1), QByteArray("1"));  // split
    }

    void infoRecordWhileTransmittingWithoutSplitShowsVfoA()
    {
        rig.values.ptt = true;
        TextSession s(rig);
        QCOMPARE(send(s, "IF").mid(2, 11), QByteArray("00014076000"));
    }

    void readsBeforeTheFirstPollAreRefused_data()
    {
        QTest::addColumn<QByteArray>("command");
        for (const char* c : {"FA", "FB", "MD", "FR", "FT", "SM0", "IF"})
            QTest::newRow(c) << QByteArray(c);
    }
    void readsBeforeTheFirstPollAreRefused()
    {
        QFETCH(QByteArray, command);
        rig.values.haveStatus = false;
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, QByteArray("?;"));
    }

    void frequencySetsAreNotAnswered()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "FA00014074000"), QByteArray());
        QCOMPARE(send(s, "FB00007000005"), QByteArray());
        QCOMPARE(rig.calls, QStringList({"freq A 14074000", "freq B 7000005"}));
        // read back at once, at the radio's 10 Hz step
        QCOMPARE(send(s, "FA"), QByteArray("FA00014074000;"));
        QCOMPARE(send(s, "FB"), QByteArray("FB00007000000;"));
    }

    void modeSetOnVfoA_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("code");
        QTest::newRow("MD1 LSB") << QByteArray("MD1") << ModeCode::Lsb;
        QTest::newRow("MD2 USB") << QByteArray("MD2") << ModeCode::Usb;
        QTest::newRow("MD3 CW") << QByteArray("MD3") << ModeCode::Cw;
        QTest::newRow("MD4 FM") << QByteArray("MD4") << ModeCode::Fm;
        QTest::newRow("MD5 AM") << QByteArray("MD5") << ModeCode::Am;
        QTest::newRow("MD6 RTTY") << QByteArray("MD6") << ModeCode::Rtty;
        QTest::newRow("MD7 CW-R") << QByteArray("MD7") << ModeCode::CwR;
        QTest::newRow("MD9 RTTY-R") << QByteArray("MD9") << ModeCode::RttyR;
    }
    void modeSetOnVfoA()
    {
        QFETCH(QByteArray, command);
        QFETCH(int, code);
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, QByteArray());
        QCOMPARE(rig.calls, QStringList{QStringLiteral("mode A %1").arg(code)});
    }

    void aModeTheRadioLacksIsRefused_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("MD0") << QByteArray("MD0");
        QTest::newRow("MD8") << QByteArray("MD8");
    }
    void aModeTheRadioLacksIsRefused()
    {
        QFETCH(QByteArray, command);
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, QByteArray("?;"));
        QVERIFY(rig.calls.isEmpty());
    }

    void vfoBsModeIsSetTheDialectsWayAndVfoAStaysInUse()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "FR1"), QByteArray());
        QCOMPARE(send(s, "MD3"), QByteArray());
        QCOMPARE(send(s, "FR0"), QByteArray());
        QCOMPARE(rig.calls, QStringList{"mode B 2"});
        QCOMPARE(s.receiveVfo(), RigVfo::A);
        QCOMPARE(send(s, "MD"), QByteArray("MD2;"));  // VFO-A's USB, untouched
        QCOMPARE(rig.values.modeB, ModeCode::Cw);
    }

    void receivingOnVfoBReadsVfoB()
    {
        rig.values.clarifierB = ClarifierState{true, false, 120};
        TextSession s(rig);
        QCOMPARE(send(s, "FR1"), QByteArray());
        QVERIFY(rig.calls.isEmpty());  // nothing for the radio: its main receiver stays on VFO-A
        QCOMPARE(send(s, "FR"), QByteArray("FR1;"));
        QCOMPARE(send(s, "FT"), QByteArray("FT1;"));
        QCOMPARE(send(s, "MD"), QByteArray("MD1;"));
        QCOMPARE(send(s, "IF"), QByteArray("IF000070740000010+0012010000011000010;"));
        // FA and FB still name the VFOs themselves
        QCOMPARE(send(s, "FA"), QByteArray("FA00014076000;"));
    }

    void eachClientHasItsOwnReceiveVfo()
    {
        TextSession one(rig);
        TextSession two(rig);
        send(one, "FR1");
        QCOMPARE(send(two, "FR"), QByteArray("FR0;"));
    }

    void receiveVfoSetEndsSplit()
    {
        rig.values.split = true;
        TextSession s(rig);
        QCOMPARE(send(s, "FR0"), QByteArray());
        QCOMPARE(rig.calls, QStringList{"split 0"});
        QCOMPARE(send(s, "FT"), QByteArray("FT0;"));
    }

    void receiveVfoSetWithoutSplitSendsNothing()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "FR0"), QByteArray());
        QVERIFY(rig.calls.isEmpty());
    }

    void transmitVfoBStartsSplit()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "FT1"), QByteArray());
        QCOMPARE(rig.calls, QStringList{"split 1"});
        QCOMPARE(send(s, "FT"), QByteArray("FT1;"));
        QCOMPARE(send(s, "FR"), QByteArray("FR0;"));
        QCOMPARE(send(s, "IF").mid(32, 1), QByteArray("1"));
        QCOMPARE(send(s, "FT1"), QByteArray());  // already split: nothing more
        QCOMPARE(send(s, "FT0"), QByteArray());
        QCOMPARE(rig.calls, QStringList({"split 1", "split 0"}));
    }

    void transmitOnVfoAWhileReceivingOnVfoBIsRefused()
    {
        TextSession s(rig);
        send(s, "FR1");
        QCOMPARE(send(s, "FT0"), QByteArray("?;"));
        QVERIFY(rig.calls.isEmpty());
        QCOMPARE(send(s, "FT1"), QByteArray());  // receive and transmit on B: no split
        QVERIFY(rig.calls.isEmpty());
    }

    void keyingWhileAuthorised_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("TX") << QByteArray("TX");
        QTest::newRow("TX0") << QByteArray("TX0");
        QTest::newRow("TX1") << QByteArray("TX1");
    }
    void keyingWhileAuthorised()
    {
        QFETCH(QByteArray, command);
        rig.authorized = true;
        TextSession s(rig);
        const TextSession::Result r = s.handle(command);
        QCOMPARE(r.reply, QByteArray());
        QVERIFY(!r.refusedTx);
        QCOMPARE(rig.calls, QStringList{"ptt 1"});
        QCOMPARE(send(s, "RX"), QByteArray());
        QCOMPARE(rig.calls, QStringList({"ptt 1", "ptt 0"}));
    }

    void keyingWithoutAuthorisationIsRefusedAndSendsNothing_data() { keyingWhileAuthorised_data(); }
    void keyingWithoutAuthorisationIsRefusedAndSendsNothing()
    {
        QFETCH(QByteArray, command);
        TextSession s(rig);
        const TextSession::Result r = s.handle(command);
        QCOMPARE(r.reply, QByteArray("?;"));
        QVERIFY(r.refusedTx);
        QVERIFY(rig.calls.isEmpty());
    }

    void unkeyingNeedsNoAuthorisation()
    {
        TextSession s(rig);
        QCOMPARE(send(s, "RX"), QByteArray());
        QCOMPARE(rig.calls, QStringList{"ptt 0"});
    }

    void acceptedAndIgnoredSets_data()
    {
        QTest::addColumn<QByteArray>("command");
        for (const char* c : {"AI0", "AI1", "AI2", "VX0", "VX1", "PS0", "PS1", "SA0", "SA1"})
            QTest::newRow(c) << QByteArray(c);
    }
    void acceptedAndIgnoredSets()
    {
        QFETCH(QByteArray, command);
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, QByteArray());
        QVERIFY(rig.calls.isEmpty());
    }

    void setsWhileTheLinkIsDownAreRefused_data()
    {
        QTest::addColumn<QByteArray>("command");
        for (const char* c : {"FA00014074000", "FB00014074000", "MD2", "TX", "RX"})
            QTest::newRow(c) << QByteArray(c);
    }
    void setsWhileTheLinkIsDownAreRefused()
    {
        QFETCH(QByteArray, command);
        rig.up = false;
        rig.authorized = true;
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, QByteArray("?;"));
        QVERIFY(rig.calls.isEmpty());
    }

    void badInputIsRefused_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("unknown command") << QByteArray("XX");
        QTest::newRow("unknown command with parameter") << QByteArray("KY TEST");
        QTest::newRow("one letter") << QByteArray("F");
        QTest::newRow("frequency too short") << QByteArray("FA1407600");
        QTest::newRow("frequency too long") << QByteArray("FA000140760000");
        QTest::newRow("frequency not digits") << QByteArray("FA0001407600X");
        QTest::newRow("frequency with sign") << QByteArray("FA+0014076000");
        QTest::newRow("frequency below the radio's range") << QByteArray("FA00000099990");
        QTest::newRow("frequency above the radio's range") << QByteArray("FA00030000010");
        QTest::newRow("mode not a digit") << QByteArray("MDX");
        QTest::newRow("mode two digits") << QByteArray("MD12");
        QTest::newRow("receive VFO 2") << QByteArray("FR2");
        QTest::newRow("receive VFO not a digit") << QByteArray("FRA");
        QTest::newRow("transmit VFO 2") << QByteArray("FT2");
        QTest::newRow("key with a bad parameter") << QByteArray("TX2");
        QTest::newRow("unkey with a parameter") << QByteArray("RX1");
        QTest::newRow("sub-receiver S-meter") << QByteArray("SM1");
        QTest::newRow("S-meter without receiver") << QByteArray("SM");
        QTest::newRow("identity with a parameter") << QByteArray("ID1");
        QTest::newRow("information record with a parameter") << QByteArray("IF1");
        QTest::newRow("auto information not a digit") << QByteArray("AIX");
        QTest::newRow("voice read") << QByteArray("VX");
    }
    void badInputIsRefused()
    {
        QFETCH(QByteArray, command);
        rig.authorized = true;
        TextSession s(rig);
        QCOMPARE(s.handle(command).reply, QByteArray("?;"));
        QVERIFY(rig.calls.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestTextSession)
#include "test_text_session.moc"
