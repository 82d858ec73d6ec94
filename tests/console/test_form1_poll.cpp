// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleFixture.h"
#include "LevelGauge.h"
#include "PollCache.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace {
QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray b;
    for (int v : values)
        b.append(static_cast<char>(v));
    return b;
}

// VFO-A: 14,250.00 kHz with a +0.5 kHz receive clarifier, USB, repeater +, antenna B.
QByteArray vfoARecord()
{
    return bytes({0, 0x01, 0x5B, 0xE6, 0x80, 0x03, 0x20, 1, 0, 2 | 4 | 16, 0, 0, 0, 0, 0, 0});
}
// VFO-B: 7,050.00 kHz, clarifier FF FE, CW reverse, transmit clarifier on.
QByteArray vfoBRecord()
{
    return bytes({0, 0x00, 0xAC, 0x1E, 0x80, 0xFF, 0xFE, 2, 0x80, 1, 0, 0, 0, 0, 0, 0});
}

struct Radio {
    QByteArray a = vfoARecord();
    QByteArray b = vfoBRecord();
    int mainS = 128, subS = 255, transmit = 0, pitch = 0xF0;
    bool silentSub = false;
    QByteArray flags = bytes({0x83, 0x20, 0x0E, 0, 0, 0x01});
    QStringList meterSelectors;

    QByteArray answer(const QByteArray& c)
    {
        const int op = static_cast<quint8>(c[4]);
        const int p1 = static_cast<quint8>(c[0]);
        const int p4 = static_cast<quint8>(c[3]);
        if (op == 0x10 && p4 == 2)
            return a;
        if (op == 0x10 && p4 == 3)
            return b.isEmpty() ? QByteArray() : QByteArray(16, '\x55') + b;
        if (op == 0xF7) {
            meterSelectors << QString::number(p1, 16);
            const int v = p1 == 0 ? mainS : p1 == 1 ? subS : p1 == 0xF1 ? pitch : transmit;
            if (p1 == 1 && silentSub)
                return {};
            return bytes({v, 0, 0, 0, 0xF7});
        }
        if (op == 0xFA)
            return flags;
        return {};
    }
};

struct PollFixture : ConsoleFixture {
    Radio radio;
    PollFixture()
    {
        port->responder = [this](const QByteArray& c) { return radio.answer(c); };
    }
};
}  // namespace

class TestForm1Poll : public QObject {
    Q_OBJECT
private slots:
    void thePollKeepsItsRepliesAsTheRadioGaveThem()
    {
        PollFixture f;
        f.form->Mtr_Click(5);  // SWR
        f.form->Timer1_Timer();
        const PollCache& cache = *f.form->pollCache();
        const auto held = [&](const CatCommand& c) { return cache.answer(c).bytes; };
        QCOMPARE(held(CatCommand::make(0x10, 2)), vfoARecord());
        QCOMPARE(held(CatCommand::make(0x10, 3)), QByteArray(16, '\x55') + vfoBRecord());
        QCOMPARE(held(CatCommand::make(0xF7, 0, 0, 0, 0x00)), bytes({128, 0, 0, 0, 0xF7}));
        QCOMPARE(held(CatCommand::make(0xF7, 0, 0, 0, 0x01)), bytes({255, 0, 0, 0, 0xF7}));
        QCOMPARE(held(CatCommand::make(0xF7, 0, 0, 0, 0x85)), bytes({0, 0, 0, 0, 0xF7}));
        QCOMPARE(held(CatCommand::make(0xF7, 0, 0, 0, 0xF1)), bytes({0xF0, 0, 0, 0, 0xF7}));
        QCOMPARE(held(CatCommand::make(0xFA, 1)), bytes({0x83, 0x20, 0x0E, 0, 0, 0x01}));
        QCOMPARE(cache.answer(CatCommand::make(0xF7, 0, 0, 0, 0x80)).holding, PollCache::Holding::NotPolled);
    }

    void onePollSendsStatusMetersAndFlagsInOrder()
    {
        PollFixture f;
        f.form->Timer1_Timer();
        QCOMPARE(f.takeEvents(), (QStringList{"read 0",
                                              "write 00 00 00 02 10",
                                              "sleep 100",
                                              "read 16",
                                              "write 00 00 00 03 10",
                                              "sleep 200",
                                              "read 32",
                                              "read 0",
                                              "write 00 00 00 00 F7",
                                              "sleep 50",
                                              "read 5",
                                              "read 0",
                                              "write 01 00 00 00 F7",
                                              "sleep 50",
                                              "read 5",
                                              "read 0",
                                              "write 80 00 00 00 F7",
                                              "sleep 50",
                                              "read 5",
                                              "read 0",
                                              "write F1 00 00 00 F7",
                                              "sleep 50",
                                              "read 5",
                                              "write 00 00 00 01 FA",
                                              "sleep 100",
                                              "read 6"}));
    }

    void pollPaintsEveryLabelOfAKnownRecord()
    {
        PollFixture f;
        f.form->Timer1_Timer();
        Form1& w = *f.form;
        QCOMPARE(w.Label2[1]->text(), QStringLiteral("14,250.50 "));
        QCOMPARE(w.Label2[2]->text(), QStringLiteral("7,050.00 "));
        QCOMPARE(w.vfoKHz(1), 14250.5);
        QCOMPARE(w.vfoKHz(2), 7050.0);
        QCOMPARE(w.Label3[1]->text(), QStringLiteral("0.50 "));
        QCOMPARE(w.Label3[2]->text(), QStringLiteral("0.00 "));  // FF FE: -1/1600 kHz
        // VFO-A clarifier: receive only; VFO-B: transmit only.
        QVERIFY(!w.Label3[3]->isHidden());
        QVERIFY(!w.Label3[5]->isHidden());
        QVERIFY(w.Label3[7]->isHidden());
        QVERIFY(!w.Label3[4]->isHidden());
        QVERIFY(w.Label3[6]->isHidden());
        QVERIFY(!w.Label3[8]->isHidden());
        QCOMPARE(w.Label1[1]->text(), QStringLiteral("USB"));
        QCOMPARE(w.Label1[2]->text(), QStringLiteral("CW R"));
        QCOMPARE(w.modeCode(), 1);  // follows VFO-A
        QVERIFY(!w.Label1[6]->isHidden());
        QCOMPARE(w.Label1[6]->text(), QStringLiteral("  RPTR +"));
        QCOMPARE(w.Label1[7]->text(), QStringLiteral("  ANT B"));
        QCOMPARE(w.Label15->text(),
                 QStringLiteral("16-a Bytes flags = 0+1+91+230+128+3+32+1+0+22+0+0+0+0+0+0+total = 508"));
        QVERIFY(w.Label16->text().startsWith(QStringLiteral("16-b Bytes flags = 0+0+172+30+128+255+254+2+128+1+")));
        // Flags.
        QVERIFY(!w.Label1[3]->isHidden());  // SPLIT
        QVERIFY(!w.Label1[0]->isHidden());  // DUAL
        QVERIFY(!w.Label1[5]->isHidden());  // XMIT
        QVERIFY(!w.Label1[8]->isHidden());  // VFO
        QVERIFY(w.Label1[9]->isHidden());   // MEM
        QVERIFY(w.Label1[10]->isHidden());  // M-TUN
        QVERIFY(w.Label1[11]->isHidden());  // QMB
        QVERIFY(!w.Label1[4]->isHidden());  // TUNER
        QVERIFY(!w.Label1[13]->isHidden());
        QCOMPARE(w.Label1[13]->text(), QStringLiteral("A/B Lk"));
        QCOMPARE(w.Frame[6]->title(), QStringLiteral(" VFO-A "));
        QCOMPARE(w.Frame[7]->title(), QStringLiteral(" VFO-B MUTED "));
        QCOMPARE(w.Label4->text(), QStringLiteral(" 6 Bytes flags = 131+32+14+0+0+1+"));
        QCOMPARE(f.windows.decodes, 1);
    }

    void mutedDisplayChangesItsLook()
    {
        PollFixture f;
        const QString normal = f.form->Label2[2]->styleSheet();
        f.form->Timer1_Timer();
        QVERIFY(f.form->Label2[2]->styleSheet() != normal);
        QCOMPARE(f.form->Label2[1]->styleSheet(), normal);
    }

    void emptyReplyShowsNoLinkAndNothingElse()
    {
        PollFixture f;
        f.form->Timer1_Timer();
        f.takeEvents();
        f.port->responder = nullptr;
        f.form->Timer1_Timer();
        QCOMPARE(f.form->Label2[1]->text(), QStringLiteral("No Link  "));
        QCOMPARE(f.form->Label2[2]->text(), QStringLiteral("7,050.00 "));
        QCOMPARE(f.form->Label1[1]->text(), QStringLiteral("USB"));
        QCOMPARE(f.form->axPanel1->level(), 50);
        // No meters, no flags after an empty status reply.
        QCOMPARE(f.takeEvents(), (QStringList{"read 0", "write 00 00 00 02 10", "sleep 100", "read 0",
                                              "write 00 00 00 03 10", "sleep 200", "read 0"}));
    }

    void shortReplyKeepsTheEarlierBytes()
    {
        PollFixture f;
        f.form->Timer1_Timer();
        // VFO-A moves to 3,500.00 kHz; the VFO-B half does not come.
        f.radio.a = bytes({0, 0x00, 0x55, 0x73, 0x00, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        f.radio.b.clear();
        f.form->Timer1_Timer();
        QCOMPARE(f.form->Label2[1]->text(), QStringLiteral("3,500.00 "));
        QCOMPARE(f.form->Label2[2]->text(), QStringLiteral("7,050.00 "));
        QCOMPARE(f.form->Label1[2]->text(), QStringLiteral("CW R"));
        QCOMPARE(f.form->Label1[1]->text(), QStringLiteral("LSB"));
    }

    void portClosedPollDoesNothing()
    {
        ConsoleFixture f(false);
        f.form->Timer1_Timer();
        QVERIFY(f.clock->events.isEmpty());
    }

    void metersFillTheGaugesAndPitch()
    {
        PollFixture f;
        f.form->Timer1_Timer();
        QCOMPARE(f.form->axPanel1->level(), 50);
        QCOMPARE(f.form->axPanel3->level(), 100);
        QCOMPARE(f.form->axPanel2->level(), 0);
        QCOMPARE(f.form->mainSMeterValue(), 128);
        QCOMPARE(f.form->Label5->text(), QStringLiteral("S-Meters 1-2 = 128 + 255 + 0"));
        QCOMPARE(f.form->Label1[12]->text(), QStringLiteral("1050 Hz"));
    }

    void pitchByteZeroShows300Hz()
    {
        PollFixture f;
        f.radio.pitch = 0;
        f.form->Timer1_Timer();
        QCOMPARE(f.form->Label1[12]->text(), QStringLiteral("300 Hz"));
    }

    void oneMissingMeterReplyLeavesEveryMeterAndSkipsTheFlags()
    {
        PollFixture f;
        f.form->Timer1_Timer();
        f.radio.mainS = 255;
        f.radio.silentSub = true;
        f.radio.pitch = 0;
        f.radio.flags = bytes({0, 0, 0, 0, 0, 0});
        f.takeEvents();
        f.form->Timer1_Timer();
        QCOMPARE(f.form->axPanel1->level(), 50);
        QCOMPARE(f.form->axPanel3->level(), 100);
        QCOMPARE(f.form->Label1[12]->text(), QStringLiteral("1050 Hz"));
        QVERIFY(!f.form->Label1[3]->isHidden());
        QVERIFY(!f.takeEvents().join(u'|').contains(QStringLiteral("FA")));
    }

    void flagsOfAnotherLengthChangeNothing()
    {
        PollFixture f;
        f.radio.flags = bytes({0x83, 0x20, 0x0E, 0, 0});
        f.form->Timer1_Timer();
        QVERIFY(f.form->Label1[3]->isHidden());
        QVERIFY(f.form->Label4->text().isEmpty());
    }

    void startupFlagsIdentifyAMarkVAndTouchNothingElse()
    {
        PollFixture f;
        f.radio.flags = bytes({0x83, 0x20, 0x0E, 3, 0x93, 0x01});
        f.form->GetFlags(0);
        QCOMPARE(f.form->windowTitle(), QStringLiteral(" FT-1000 MP Mark-V"));
        QVERIFY(f.form->Label1[3]->isHidden());
        QCOMPARE(f.form->Frame[7]->title(), QStringLiteral(" VFO-B "));
        // Later polls (argument 1) decode the same bytes as flags.
        f.form->Timer1_Timer();
        QVERIFY(!f.form->Label1[3]->isHidden());
    }

    void plainMpKeepsTheTitle()
    {
        PollFixture f;
        f.form->GetFlags(0);
        QCOMPARE(f.form->windowTitle(), QStringLiteral("Tovra's FT-1000 CAT"));
        QVERIFY(!f.form->Label1[3]->isHidden());
    }

    void meterChoiceSetsSelectorAndScale_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("selector");
        QTest::addColumn<QString>("scale");
        QTest::newRow("PO") << 0 << "80"
                            << "......20....50....100......200...300..400W";
        QTest::newRow("ALC") << 1 << "81"
                             << "_______ALC_______";
        QTest::newRow("IC") << 3 << "83"
                            << "0 . . . . . . . 10 . . . . . . . 20 . . . . . . . 30A";
        QTest::newRow("VCC") << 4 << "84"
                             << "0 . . . . . . . 10 . . . . . . . 20 . . . . . . . 30V";
        QTest::newRow("SWR") << 5 << "85"
                             << "1.0 . 1.5 . 2.0 . 3.0 . . . . . . . . . . . . . .";
        QTest::newRow("Mic") << 6 << "86"
                             << "                             MIC";
    }
    void meterChoiceSetsSelectorAndScale()
    {
        QFETCH(int, index);
        QFETCH(QString, selector);
        QFETCH(QString, scale);
        PollFixture f;
        if (index != 0)
            f.form->Mtr[0 == index ? 1 : 0]->click();  // start from another choice
        f.form->Mtr[index]->click();
        QCOMPARE(f.form->meterSelector(), 0x80 + index);
        QCOMPARE(f.form->Label[11]->text(), scale);
        f.form->Timer1_Timer();
        QCOMPARE(f.radio.meterSelectors, (QStringList{"0", "1", selector, "f1"}));
    }

    void poIsChosenWhenTheWindowOpens()
    {
        PollFixture f;
        QVERIFY(f.form->Mtr[0]->isChecked());
        QVERIFY(!f.form->Mtr[2]);
        QCOMPARE(f.form->meterSelector(), 0x80);
        QCOMPARE(f.form->Label[11]->text(), QStringLiteral("......20....50....100......200...300..400W"));
    }

    void timerRunsThePollEvery250ms()
    {
        PollFixture f;
        QCOMPARE(f.form->timer1()->interval(), 250);
        QVERIFY(!f.form->pollEnabled());
        f.form->setPollEnabled(true);
        QVERIFY(f.form->pollEnabled());
        QTRY_VERIFY(f.port->writtenHex().contains(QStringLiteral("00 00 00 02 10")));
    }

    void otherWindowsStatusReadSkipsTheMeters()
    {
        PollFixture f;
        f.form->Get_Status32(1);
        QCOMPARE(f.port->writtenHex(), (QStringList{"00 00 00 02 10", "00 00 00 03 10"}));
        QCOMPARE(f.form->Label2[1]->text(), QStringLiteral("14,250.50 "));
    }
};

QTEST_MAIN(TestForm1Poll)
#include "test_form1_poll.moc"
