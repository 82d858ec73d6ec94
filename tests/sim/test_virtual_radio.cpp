// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatCommand.h"
#include "FlagsDecoder.h"
#include "MeterDecoder.h"
#include "NumberFormat.h"
#include "Procedures.h"
#include "RadioRecords.h"
#include "StatusDecoder.h"
#include "VirtualRadio.h"

#include <QRandomGenerator>
#include <QTest>
#include <atomic>
#include <thread>

namespace {
using Vfo = VirtualRadio::Vfo;

QByteArray cmd(int op, int p4 = 0, int p3 = 0, int p2 = 0, int p1 = 0)
{
    return CatCommand::make(op, p4, p3, p2, p1).bytes();
}

int at(const QByteArray& b, int i)
{
    return static_cast<quint8>(b[i]);
}

// A poll the way the program does it: bytes 1-16 of the current-VFO reply, 17-32 of the both-VFOs reply.
StatusView poll(VirtualRadio& radio)
{
    QByteArray record = radio.handle(cmd(Op::StatusRequest, StatusKind::CurrentVfo));
    record += radio.handle(cmd(Op::StatusRequest, StatusKind::BothVfos)).mid(16, 16);
    StatusRecord store;
    return decodeStatus(store, record);
}

FlagsView flags(VirtualRadio& radio, int arg = 1)
{
    const QByteArray f = radio.handle(cmd(Op::ReadFlags, arg));
    return decodeFlags(arg, static_cast<int>(f.size()), f);
}

// The memory window's decode of a channel record, as plain values.
struct ChannelView {
    bool masked;
    double kHz;  // frequency plus clarifier
    double clarKHz;
    std::optional<ModeDecode> mode;
    QString antenna;
};
ChannelView decodeChannel(const QByteArray& r)
{
    ChannelView v;
    v.masked = at(r, 0) & 0x80;
    const double freq = decodeFrequency(at(r, 1), at(r, 2), at(r, 3), at(r, 4));
    v.clarKHz = static_cast<qint16>((at(r, 5) << 8) | at(r, 6)) / 1600.0;
    v.kHz = roundToTenHz(freq + v.clarKHz);
    v.mode = decodeMode(at(r, 7), at(r, 8));
    v.antenna = (at(r, 9) & 0x10) ? QStringLiteral("B") : QStringLiteral("A");
    if (at(r, 9) & 0x20)
        v.antenna = QStringLiteral("Rx");
    return v;
}

QByteArray channelRecord(VirtualRadio& radio, int n)
{
    return radio.handle(cmd(Op::StatusRequest, StatusKind::OneChannel, 0, 0, n));
}

VfoState tuned(qint64 freq10Hz)
{
    VfoState v;
    v.freq10Hz = freq10Hz;
    return v;
}
}  // namespace

class TestVirtualRadio : public QObject {
    Q_OBJECT
private slots:
    // --- Reply layouts and lengths ---

    void replyLength_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("length");
        QTest::newRow("all memories") << cmd(Op::StatusRequest, StatusKind::AllMemories) << 1863;
        QTest::newRow("current channel") << cmd(Op::StatusRequest, StatusKind::CurrentChannel) << 1;
        QTest::newRow("current VFO") << cmd(Op::StatusRequest, StatusKind::CurrentVfo) << 16;
        QTest::newRow("both VFOs") << cmd(Op::StatusRequest, StatusKind::BothVfos) << 32;
        QTest::newRow("channel 1") << cmd(Op::StatusRequest, StatusKind::OneChannel, 0, 0, 1) << 16;
        QTest::newRow("channel 113") << cmd(Op::StatusRequest, StatusKind::OneChannel, 0, 0, 113) << 16;
        QTest::newRow("status kind 5") << cmd(Op::StatusRequest, 5) << 0;
        QTest::newRow("main S-meter") << cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::MainS) << 5;
        QTest::newRow("sub S-meter") << cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::SubS) << 5;
        QTest::newRow("PO meter") << cmd(Op::ReadMeter, 0, 0, 0, 0x80) << 5;
        QTest::newRow("CW pitch") << cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::CwPitch) << 5;
        QTest::newRow("flags arg 0") << cmd(Op::ReadFlags, 0) << 6;
        QTest::newRow("flags arg 1") << cmd(Op::ReadFlags, 1) << 6;
        QTest::newRow("split") << cmd(Op::Split, 1) << 0;
        QTest::newRow("mode") << cmd(Op::SetMode, 1) << 0;
        QTest::newRow("set VFO-A") << setFreqCommand(1425000, 1).bytes() << 0;
        QTest::newRow("EDSP") << cmd(Op::Edsp, 0x41, 150) << 0;
        QTest::newRow("PTT") << cmd(Op::Ptt, 0) << 0;
    }
    void replyLength()
    {
        QFETCH(QByteArray, command);
        QFETCH(int, length);
        VirtualRadio radio;
        QCOMPARE(radio.handle(command).size(), length);
    }

    void vfoRecord_carriesFrequencyClarifierModeFiltersAndFlags()
    {
        VirtualRadio radio;
        VfoState a;
        a.freq10Hz = 1425025;  // 14 250.25 kHz -> 22 800 400 = 0x015BE810
        a.clar10Hz = 12;       // +0.12 kHz -> 192 = 0x00C0
        a.modeByte = 2;
        a.secondVariant = true;
        a.filter82 = 3;
        a.filter455 = 2;
        a.txClar = true;
        a.shift = 2;
        a.antennaB = true;
        radio.setVfo(Vfo::A, a);
        const QByteArray r = radio.handle(cmd(Op::StatusRequest, StatusKind::CurrentVfo));
        QCOMPARE(r.toHex(' '), QByteArray("00 01 5b e8 10 00 c0 02 b2 19 00 00 00 00 00 00"));
    }

    void bothVfos_areVfoAThenVfoB()
    {
        VirtualRadio radio;
        radio.setVfo(Vfo::A, tuned(1400000));
        radio.setVfo(Vfo::B, tuned(705000));
        const QByteArray r = radio.handle(cmd(Op::StatusRequest, StatusKind::BothVfos));
        QCOMPARE(r.left(16), radio.handle(cmd(Op::StatusRequest, StatusKind::CurrentVfo)));
        QCOMPARE(decodeFrequency(at(r, 17), at(r, 18), at(r, 19), at(r, 20)), 7050.0);
    }

    void statusPoll_decodesWhatTheRadioHolds()
    {
        VirtualRadio radio;
        VfoState a = tuned(1425000);
        a.rxClar = true;
        a.clar10Hz = -50;
        a.shift = 1;
        VfoState b = tuned(707400);
        b.modeByte = 5;
        b.secondVariant = true;
        b.rxAntenna = true;
        radio.setVfo(Vfo::A, a);
        radio.setVfo(Vfo::B, b);
        const StatusView v = poll(radio);
        QVERIFY(!v.noLink);
        QCOMPARE(v.a.freqText, QStringLiteral("14,249.50 "));  // receive clarifier added
        QCOMPARE(v.a.clarKHz, -0.5);
        QVERIFY(v.a.rxClar);
        QCOMPARE(v.a.mode->caption, QStringLiteral("USB"));
        QCOMPARE(v.rptrCaption, QStringLiteral("  RPTR +"));
        QCOMPARE(v.antCaption, QStringLiteral("  ANT A"));
        QCOMPARE(v.b.freqText, QStringLiteral("7,074.00 "));
        QCOMPARE(v.b.mode->caption, QStringLiteral("RTTY R"));
        QCOMPARE(v.b.flagsByte & 0x20, 0x20);
    }

    void clarifier_encodesSoTheProgramsDecodeGivesItBack_data()
    {
        QTest::addColumn<int>("units");  // 1/1600 kHz
        QTest::newRow("zero") << 0;
        QTest::newRow("minus one unit") << -1;
        QTest::newRow("minus 10 Hz") << -16;
        QTest::newRow("minus 9.99 kHz") << -999 * 16;
        QTest::newRow("plus 10 Hz") << 16;
        QTest::newRow("plus 9.99 kHz") << 999 * 16;
    }
    void clarifier_encodesSoTheProgramsDecodeGivesItBack()
    {
        QFETCH(int, units);
        const quint16 raw = onesComplementClarifier(units);
        QCOMPARE(decodeClarifier(raw >> 8, raw & 0xFF), units / 1600.0);
    }

    void clarifier_minusOneUnitIsFFFE() { QCOMPARE(onesComplementClarifier(-1), quint16(0xFFFE)); }

    // --- Mode codes ---

    void modeCode_roundTripsThroughTheProgramsDecoder_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("modeByte");
        QTest::addColumn<bool>("second");
        QTest::addColumn<QString>("caption");
        QTest::newRow("LSB") << 0 << 0 << false << "LSB";
        QTest::newRow("USB") << 1 << 1 << false << "USB";
        QTest::newRow("CW") << 2 << 2 << false << "CW N";
        QTest::newRow("CW-R") << 3 << 2 << true << "CW R";
        QTest::newRow("AM") << 4 << 3 << false << "AM";
        QTest::newRow("AM sync") << 5 << 3 << true << "AM Sync";
        QTest::newRow("FM") << 6 << 4 << false << "FM";
        QTest::newRow("RTTY") << 8 << 5 << false << "RTTY N";
        QTest::newRow("RTTY-R") << 9 << 5 << true << "RTTY R";
        QTest::newRow("PKT LSB") << 10 << 6 << false << "PKT LSB";
        QTest::newRow("PKT FM") << 11 << 6 << true << "PKT FM";
    }
    void modeCode_roundTripsThroughTheProgramsDecoder()
    {
        QFETCH(int, code);
        QFETCH(int, modeByte);
        QFETCH(bool, second);
        QFETCH(QString, caption);
        VirtualRadio radio;
        radio.handle(cmd(Op::SetMode, code == 0 ? 1 : 0));  // start from another mode
        radio.handle(cmd(Op::SetMode, code));
        const QByteArray r = radio.handle(cmd(Op::StatusRequest, StatusKind::CurrentVfo));
        QCOMPARE(at(r, 7), modeByte);
        QCOMPARE(bool(at(r, 8) & 0x80), second);
        const StatusView v = poll(radio);
        QCOMPARE(v.a.mode->caption, caption);
        QCOMPARE(v.a.mode->code, code);
        QCOMPARE(radio.modeCode(Vfo::A), code);
    }

    void modeCode_keepsTheFilterBits()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::FilterSelect, 2, 0, 0, 1));  // 8.2 MHz 500 Hz
        const int before = radio.filterByte(Vfo::A) & 0x77;
        radio.handle(cmd(Op::SetMode, 3));
        QCOMPARE(radio.filterByte(Vfo::A) & 0x77, before);
        QCOMPARE(radio.filterByte(Vfo::A) & 0x80, 0x80);
    }

    void modeCode_sevenAndOutOfTableChangeNothing_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("7") << 7;
        QTest::newRow("12") << 12;
        QTest::newRow("255") << 255;
    }
    void modeCode_sevenAndOutOfTableChangeNothing()
    {
        QFETCH(int, code);
        VirtualRadio radio;
        radio.handle(cmd(Op::SetMode, 4));
        radio.handle(cmd(Op::SetMode, code));
        QCOMPARE(radio.modeCode(Vfo::A), 4);
    }

    void dataUserModeByte_decodesAsDataUser()
    {
        VirtualRadio radio;
        VfoState a = radio.vfo(Vfo::A);
        a.modeByte = 0x80;
        radio.setVfo(Vfo::A, a);
        QCOMPARE(poll(radio).a.mode->caption, QStringLiteral("Data USER"));
    }

    // --- Frequencies ---

    void bcd_decodesLowPairFirst_data()
    {
        QTest::addColumn<int>("p1");
        QTest::addColumn<int>("p2");
        QTest::addColumn<int>("p3");
        QTest::addColumn<int>("p4");
        QTest::addColumn<qint64>("value");
        QTest::newRow("7 050.00 kHz") << 0x00 << 0x50 << 0x70 << 0x00 << qint64(705000);
        QTest::newRow("14 250.00 kHz") << 0x00 << 0x50 << 0x42 << 0x01 << qint64(1425000);
        QTest::newRow("all digits") << 0x78 << 0x56 << 0x34 << 0x12 << qint64(12345678);
        QTest::newRow("zero") << 0 << 0 << 0 << 0 << qint64(0);
    }
    void bcd_decodesLowPairFirst()
    {
        QFETCH(int, p1);
        QFETCH(int, p2);
        QFETCH(int, p3);
        QFETCH(int, p4);
        QFETCH(qint64, value);
        QCOMPARE(decodeBcdFrequency(p1, p2, p3, p4), std::optional<qint64>(value));
    }

    void bcd_nibbleAboveNineIsRefused()
    {
        QVERIFY(!decodeBcdFrequency(0x0A, 0, 0, 0));
        QVERIFY(!decodeBcdFrequency(0, 0, 0xF0, 0));
    }

    void setFreq_roundTripsThroughTheProgramsEncoder_data()
    {
        QTest::addColumn<qint64>("frq");
        QTest::addColumn<QString>("shown");
        QTest::newRow("160 m") << qint64(184300) << "1,843.00 ";
        QTest::newRow("40 m") << qint64(705000) << "7,050.00 ";
        QTest::newRow("20 m odd") << qint64(1425025) << "14,250.25 ";
        QTest::newRow("top of range") << qint64(3000000) << "30,000.00 ";
        QTest::newRow("bottom of range") << qint64(10000) << "100.00 ";
    }
    void setFreq_roundTripsThroughTheProgramsEncoder()
    {
        QFETCH(qint64, frq);
        QFETCH(QString, shown);
        VirtualRadio radio;
        radio.handle(setFreqCommand(frq, 1).bytes());
        radio.handle(setFreqCommand(frq, 2).bytes());
        QCOMPARE(radio.vfo(Vfo::A).freq10Hz, frq);
        QCOMPARE(radio.vfo(Vfo::B).freq10Hz, frq);
        const StatusView v = poll(radio);
        QCOMPARE(v.a.freqText, shown);
        QCOMPARE(v.b.freqText, shown);
    }

    void setFreq_vfoBLeavesVfoAAlone()
    {
        VirtualRadio radio;
        const qint64 a = radio.vfo(Vfo::A).freq10Hz;
        radio.handle(setFreqCommand(2107400, 2).bytes());
        QCOMPARE(radio.vfo(Vfo::A).freq10Hz, a);
        QCOMPARE(radio.vfo(Vfo::B).freq10Hz, qint64(2107400));
    }

    void setFreq_outsideTheTuningRangeIsRefused_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("zero") << setFreqCommand(0, 1).bytes();
        QTest::newRow("99.99 kHz") << setFreqCommand(9999, 1).bytes();
        QTest::newRow("30 000.01 kHz") << setFreqCommand(3000001, 1).bytes();
        QTest::newRow("not BCD") << cmd(Op::SetVfoA, 0x01, 0x4A, 0x00, 0x00);
    }
    void setFreq_outsideTheTuningRangeIsRefused()
    {
        QFETCH(QByteArray, command);
        VirtualRadio radio;
        const qint64 before = radio.vfo(Vfo::A).freq10Hz;
        radio.handle(command);
        QCOMPARE(radio.vfo(Vfo::A).freq10Hz, before);
    }

    void step_movesVfoA_data()
    {
        QTest::addColumn<qint64>("from");
        QTest::addColumn<int>("op");
        QTest::addColumn<int>("p4");
        QTest::addColumn<qint64>("to");
        QTest::newRow("up 100 kHz") << qint64(1420000) << int(Op::StepUp) << 0 << qint64(1430000);
        QTest::newRow("up 1 MHz") << qint64(1420000) << int(Op::StepUp) << 1 << qint64(1520000);
        QTest::newRow("down 100 kHz") << qint64(1420000) << int(Op::StepDown) << 0 << qint64(1410000);
        QTest::newRow("down 1 MHz") << qint64(1420000) << int(Op::StepDown) << 1 << qint64(1320000);
        QTest::newRow("up past 30 MHz wraps") << qint64(2950000) << int(Op::StepUp) << 1 << qint64(50000);
        QTest::newRow("unknown size") << qint64(1420000) << int(Op::StepUp) << 2 << qint64(1420000);
    }
    void step_movesVfoA()
    {
        QFETCH(qint64, from);
        QFETCH(int, op);
        QFETCH(int, p4);
        QFETCH(qint64, to);
        VirtualRadio radio;
        radio.setVfo(Vfo::A, tuned(from));
        radio.handle(cmd(op, p4));
        QCOMPARE(radio.vfo(Vfo::A).freq10Hz, to);
        QVERIFY(radio.vfo(Vfo::A).freq10Hz >= RadioLimits::MinFreq10Hz);
    }

    // --- Flags ---

    void flags_showSplitDualTransmitTuner()
    {
        VirtualRadio radio;
        FlagsView f = flags(radio);
        QVERIFY(f.decoded);
        QVERIFY(!f.split && !f.dual && !f.xmit && !f.tuner);
        QVERIFY(f.vfo && !f.mem);
        radio.handle(cmd(Op::Split, 1));
        radio.handle(cmd(Op::Dual, 1));
        radio.handle(cmd(Op::Ptt, 1));
        radio.handle(cmd(Op::Tuner, 1));
        f = flags(radio);
        QVERIFY(f.split && f.dual && f.xmit && f.tuner);
        QVERIFY(radio.split() && radio.dual() && radio.transmitting() && radio.tunerOn());
        radio.handle(cmd(Op::Split, 0));
        radio.handle(cmd(Op::Dual, 0));
        radio.handle(cmd(Op::Ptt, 0));
        radio.handle(cmd(Op::Tuner, 0));
        f = flags(radio);
        QVERIFY(!f.split && !f.dual && !f.xmit && !f.tuner);
    }

    void flags_locksAndMuting()
    {
        VirtualRadio radio;
        radio.setLocks(true, true);
        radio.setMuted(true, false);
        FlagsView f = flags(radio);
        QCOMPARE(f.lockCaption, QStringLiteral("A/B Lk"));
        QCOMPARE(f.frameA, QStringLiteral(" VFO-A MUTED "));
        QCOMPARE(f.frameB, QStringLiteral(" VFO-B "));
        radio.setLocks(false, true);
        radio.setMuted(false, true);
        f = flags(radio);
        QCOMPARE(f.lockCaption, QStringLiteral("B Lock"));
        QCOMPARE(f.frameA, QStringLiteral(" VFO-A "));
        QCOMPARE(f.frameB, QStringLiteral(" VFO-B MUTED "));
    }

    void flags_markVIdentifiesItself()
    {
        VirtualRadio radio(VirtualRadio::Model::MarkV);
        const QByteArray f = radio.handle(cmd(Op::ReadFlags, 0));
        QCOMPARE(at(f, 3), 3);
        QCOMPARE(at(f, 4), 0x93);
        QVERIFY(decodeFlags(0, 6, f).markV);
    }

    void flags_plainMpDoesNotPassTheModelCheck()
    {
        VirtualRadio radio(VirtualRadio::Model::MP);
        const QByteArray f = radio.handle(cmd(Op::ReadFlags, 0));
        QVERIFY(!decodeFlags(0, 6, f).markV);
        radio.setModel(VirtualRadio::Model::MarkV);
        QVERIFY(flags(radio, 0).markV);
    }

    // --- Memory channels ---

    void channelRecord_layout()
    {
        VirtualRadio radio;
        MemoryChannel c;
        c.data.freq10Hz = 1415770;  // 14 157.70 kHz: count 0x0159A5A0
        c.data.clar10Hz = -2048;    // -20.48 kHz: 80 00 as a signed value
        c.data.modeByte = 3;
        c.data.secondVariant = true;
        c.data.antennaB = true;
        c.masked = true;
        radio.setChannel(20, c);
        const QByteArray r = channelRecord(radio, 20);
        QCOMPARE(r.size(), 16);
        QCOMPARE(r.left(10).toHex(' '), QByteArray("80 01 59 a5 a0 80 00 03 91 10"));
        const ChannelView v = decodeChannel(r);
        QVERIFY(v.masked);
        QCOMPARE(v.clarKHz, -20.48);
        QCOMPARE(v.mode->caption, QStringLiteral("AM Sync"));
        QCOMPARE(v.antenna, QStringLiteral("B"));
    }

    void channelRecord_presetsHoldSampleStations()
    {
        VirtualRadio radio;
        const ChannelView ch4 = decodeChannel(channelRecord(radio, 4));
        QVERIFY(!ch4.masked);
        QCOMPARE(ch4.kHz, 14074.0);
        QCOMPARE(ch4.mode->caption, QStringLiteral("USB"));
        const ChannelView ch5 = decodeChannel(channelRecord(radio, 5));
        QCOMPARE(ch5.kHz, 14199.75);  // the memory window shows frequency plus clarifier
        QVERIFY(decodeChannel(channelRecord(radio, 14)).masked);
    }

    void channelRecord_outsideOneTo113GivesNoReply_data()
    {
        QTest::addColumn<int>("channel");
        QTest::newRow("0") << 0;
        QTest::newRow("114") << 114;
        QTest::newRow("200") << 200;
        QTest::newRow("255") << 255;
    }
    void channelRecord_outsideOneTo113GivesNoReply()
    {
        QFETCH(int, channel);
        VirtualRadio radio;
        QVERIFY(channelRecord(radio, channel).isEmpty());
        QCOMPARE(radio.channel(channel), MemoryChannel{});
    }

    void allMemories_are55BytesThenEveryChannelRecordInOrder()
    {
        VirtualRadio radio;
        MemoryChannel c;
        c.data.freq10Hz = 2830000;
        radio.setChannel(113, c);
        const QByteArray block = radio.handle(cmd(Op::StatusRequest, StatusKind::AllMemories));
        QCOMPARE(block.size(), ReplySize::AllMemories);
        for (int n = 1; n <= 113; ++n)
            QCOMPARE(block.mid(55 + 16 * (n - 1), 16), channelRecord(radio, n));
        QCOMPARE(decodeChannel(block.mid(1847, 16)).kHz, 28300.0);
    }

    void currentChannel_isReportedCountingFromZero()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::RecallMemory, 12));
        QCOMPARE(radio.handle(cmd(Op::StatusRequest, StatusKind::CurrentChannel)), QByteArray(1, char(11)));
        QCOMPARE(radio.currentChannel(), 12);
    }

    void recall_entersMemoryModeAndShowsTheChannel()
    {
        VirtualRadio radio;
        const qint64 vfoA = radio.vfo(Vfo::A).freq10Hz;
        radio.handle(cmd(Op::RecallMemory, 9));  // 3 650.00 kHz LSB
        QVERIFY(radio.memoryMode());
        const FlagsView f = flags(radio);
        QVERIFY(f.mem && !f.vfo && !f.mtun);
        const StatusView v = poll(radio);
        QCOMPARE(v.a.freqText, QStringLiteral("3,650.00 "));
        QCOMPARE(v.a.mode->caption, QStringLiteral("LSB"));
        QCOMPARE(radio.vfo(Vfo::A).freq10Hz, vfoA);
    }

    void recall_quickMemoryChannelShowsQmb()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::RecallMemory, 110));
        QVERIFY(flags(radio).qmb);
        radio.handle(cmd(Op::RecallMemory, 10));
        QVERIFY(!flags(radio).qmb);
    }

    void recall_invalidChannelChangesNothing()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::RecallMemory, 0));
        radio.handle(cmd(Op::RecallMemory, 114));
        QVERIFY(!radio.memoryMode());
        QCOMPARE(radio.currentChannel(), 1);
    }

    void retuneInMemoryMode_isMemoryTuneAndLeavesTheChannel()
    {
        VirtualRadio radio;
        const MemoryChannel before = radio.channel(4);
        radio.handle(cmd(Op::RecallMemory, 4));
        radio.handle(setFreqCommand(1407600, 1).bytes());
        QVERIFY(radio.memoryTune());
        const FlagsView f = flags(radio);
        QVERIFY(f.mtun && !f.mem && !f.vfo);
        QCOMPARE(poll(radio).a.freqText, QStringLiteral("14,076.00 "));
        QCOMPARE(radio.channel(4), before);
    }

    void vfoSelect_zeroReturnsToVfo()
    {
        VirtualRadio radio;
        const qint64 vfoA = radio.vfo(Vfo::A).freq10Hz;
        radio.handle(cmd(Op::RecallMemory, 9));
        radio.handle(cmd(Op::VfoSelect, 0));
        QVERIFY(!radio.memoryMode());
        QVERIFY(flags(radio).vfo);
        QCOMPARE(radio.mainReceiver().freq10Hz, vfoA);
    }

    void vfoSelect_oneMakesVfoBTheVfoInUse()
    {
        // 14 000.00 kHz USB on VFO-A, 7 000.00 kHz LSB on VFO-B.
        VirtualRadio radio;
        radio.setVfo(Vfo::A, tuned(1400000));
        VfoState b = tuned(700000);
        b.modeByte = 0;
        radio.setVfo(Vfo::B, b);
        radio.handle(QByteArray::fromHex("0000000105"));
        QCOMPARE(radio.vfoInUse(), Vfo::B);
        // The main receiver, and with it the first half of the status record, works VFO-B now.
        const StatusView s = poll(radio);
        QCOMPARE(s.a.freqText, QStringLiteral("7,000.00 "));
        QCOMPARE(s.a.mode->caption, QStringLiteral("LSB"));
        QCOMPARE(s.b.freqText, QStringLiteral("14,000.00 "));
        QCOMPARE(s.b.mode->caption, QStringLiteral("USB"));
        // Nothing was exchanged: each VFO keeps what it holds.
        QCOMPARE(radio.vfo(Vfo::A), tuned(1400000));
        QCOMPARE(radio.vfo(Vfo::B), b);
    }

    void vfoSelect_modeActsOnTheVfoInUseUntilVfoAIsInUseAgain()
    {
        VirtualRadio radio;
        radio.setVfo(Vfo::A, tuned(1400000));  // USB
        VfoState b = tuned(700000);
        b.modeByte = 0;  // LSB
        radio.setVfo(Vfo::B, b);
        radio.handle(QByteArray::fromHex("0000000105"));
        radio.handle(QByteArray::fromHex("000000020C"));  // CW
        radio.handle(QByteArray::fromHex("0000000005"));
        QCOMPARE(radio.vfoInUse(), Vfo::A);
        QCOMPARE(radio.vfo(Vfo::B).modeByte, 2);
        QCOMPARE(radio.vfo(Vfo::B).freq10Hz, qint64(700000));
        QCOMPARE(radio.vfo(Vfo::A), tuned(1400000));
        const StatusView s = poll(radio);
        QCOMPARE(s.a.freqText, QStringLiteral("14,000.00 "));
        QCOMPARE(s.a.mode->caption, QStringLiteral("USB"));
        QCOMPARE(s.b.mode->caption, QStringLiteral("CW N"));
    }

    void vfoSelect_eachVfoKeepsItsOwnFrequencyInstruction()
    {
        VirtualRadio radio;
        radio.setVfo(Vfo::A, tuned(1400000));
        radio.setVfo(Vfo::B, tuned(700000));
        radio.handle(QByteArray::fromHex("0000000105"));
        radio.handle(QByteArray::fromHex("000141010A"));  // VFO-A to 14 101.00 kHz
        radio.handle(QByteArray::fromHex("002070008A"));  // VFO-B to 7 020.00 kHz
        QCOMPARE(radio.vfo(Vfo::A).freq10Hz, qint64(1410100));
        QCOMPARE(radio.vfo(Vfo::B).freq10Hz, qint64(702000));
        QCOMPARE(poll(radio).a.freqText, QStringLiteral("7,020.00 "));
    }

    void vfoSelect_oneLeavesARecalledChannelForVfoB()
    {
        VirtualRadio radio;
        radio.setVfo(Vfo::B, tuned(700000));
        radio.handle(cmd(Op::RecallMemory, 9));
        radio.handle(QByteArray::fromHex("0000000105"));
        QVERIFY(!radio.memoryMode());
        QVERIFY(flags(radio).vfo);
        QCOMPARE(radio.mainReceiver(), tuned(700000));
    }

    void writeMemory_storesVfoAAndUnmasks()
    {
        VirtualRadio radio;
        QVERIFY(radio.channel(50).masked);
        radio.handle(setFreqCommand(2107400, 1).bytes());
        radio.handle(cmd(Op::SetMode, 9));
        radio.handle(cmd(Op::WriteMemory, 50, 0));
        const ChannelView v = decodeChannel(channelRecord(radio, 50));
        QVERIFY(!v.masked);
        QCOMPARE(v.kHz, 21074.0);
        QCOMPARE(v.mode->caption, QStringLiteral("RTTY R"));
    }

    void writeMemory_maskAndUnmask()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::WriteMemory, 4, 1));
        QVERIFY(radio.channel(4).masked);
        QVERIFY(decodeChannel(channelRecord(radio, 4)).masked);
        radio.handle(cmd(Op::WriteMemory, 4, 2));
        QVERIFY(!radio.channel(4).masked);
        QCOMPARE(radio.channel(4).data.freq10Hz, qint64(1407400));
    }

    void writeMemory_afterRecallStoresTheRetunedData()
    {
        // What an upload does: recall channel 1, then per channel mode, frequency and write.
        VirtualRadio radio;
        radio.handle(cmd(Op::RecallMemory, 1));
        radio.handle(cmd(Op::SetMode, 6));
        radio.handle(setFreqCommand(2960000, 1).bytes());
        radio.handle(cmd(Op::WriteMemory, 30, 0));
        radio.handle(cmd(Op::WriteMemory, 30, 1));
        radio.handle(cmd(Op::VfoSelect, 0));
        const ChannelView v = decodeChannel(channelRecord(radio, 30));
        QCOMPARE(v.kHz, 29600.0);
        QCOMPARE(v.mode->caption, QStringLiteral("FM"));
        QVERIFY(v.masked);
        QCOMPARE(radio.channel(1).data.freq10Hz, qint64(357300));
    }

    void memoryToVfoA_copiesTheChannelAndGoesToVfo()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::RecallMemory, 9));
        radio.handle(cmd(Op::MemoryToVfoA, 10));  // 9 580.00 kHz AM, antenna B
        QVERIFY(!radio.memoryMode());
        QCOMPARE(radio.vfo(Vfo::A), radio.channel(10).data);
        const StatusView v = poll(radio);
        QCOMPARE(v.a.freqText, QStringLiteral("9,580.00 "));
        QCOMPARE(v.antCaption, QStringLiteral("  ANT B"));
    }

    // --- Other commands ---

    void clarifier_commands()
    {
        VirtualRadio radio;
        VfoState a = radio.vfo(Vfo::A);
        a.clar10Hz = 30;
        radio.setVfo(Vfo::A, a);
        radio.handle(cmd(Op::Clarifier, 0x01));
        QVERIFY(radio.vfo(Vfo::A).rxClar);
        radio.handle(cmd(Op::Clarifier, 0x81));
        QVERIFY(radio.vfo(Vfo::A).txClar);
        StatusView v = poll(radio);
        QVERIFY(v.a.rxClar && v.a.txClar);
        QCOMPARE(v.a.clarKHz, 0.3);
        radio.handle(cmd(Op::Clarifier, 0x00));
        radio.handle(cmd(Op::Clarifier, 0x80));
        QVERIFY(!radio.vfo(Vfo::A).rxClar && !radio.vfo(Vfo::A).txClar);
        radio.handle(cmd(Op::Clarifier, 0xFF));
        QCOMPARE(radio.vfo(Vfo::A).clar10Hz, 0);
        QCOMPARE(poll(radio).a.clarKHz, 0.0);
    }

    void edsp_keepsTheLastValuePerFunction()
    {
        VirtualRadio radio;
        QVERIFY(!radio.edspValue(0x41));
        radio.handle(cmd(Op::Edsp, 0x41, 150));
        radio.handle(cmd(Op::Edsp, 0x42, 15));
        radio.handle(cmd(Op::Edsp, 0x41, 0x96 - 1));
        QCOMPARE(radio.edspValue(0x41), std::optional<int>(0x95));
        QCOMPARE(radio.edspValue(0x42), std::optional<int>(15));
        QCOMPARE(radio.edspSettings().size(), 2);
    }

    void tuner_startCountsAndSwitchesOn()
    {
        VirtualRadio radio;
        radio.handle(cmd(Op::TunerStart));
        radio.handle(cmd(Op::TunerStart));
        QCOMPARE(radio.tunerStarts(), 2);
        QVERIFY(radio.tunerOn());
        QVERIFY(flags(radio).tuner);
    }

    void repeaterShift_cyclesThroughTheFlags_data()
    {
        QTest::addColumn<int>("p4");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<QString>("caption");
        QTest::newRow("none") << 0 << false << "";
        QTest::newRow("plus") << 1 << true << "  RPTR +";
        QTest::newRow("minus") << 2 << true << "  RPTR -";
    }
    void repeaterShift_cyclesThroughTheFlags()
    {
        QFETCH(int, p4);
        QFETCH(bool, visible);
        QFETCH(QString, caption);
        VirtualRadio radio;
        radio.handle(cmd(Op::SetMode, 6));
        radio.handle(cmd(Op::RepeaterShift, 2));
        radio.handle(cmd(Op::RepeaterShift, p4));
        const StatusView v = poll(radio);
        QCOMPARE(v.rptrVisible, visible);
        QCOMPARE(v.rptrCaption, caption);
    }

    void copyAToB()
    {
        VirtualRadio radio;
        radio.handle(setFreqCommand(1820000, 1).bytes());
        radio.handle(cmd(Op::SetMode, 2));
        radio.handle(cmd(Op::CopyAtoB));
        QCOMPARE(radio.vfo(Vfo::B), radio.vfo(Vfo::A));
        QCOMPARE(poll(radio).b.mode->caption, QStringLiteral("CW N"));
    }

    void filterSelection_setsTheBitsTheFilterWindowTests_data()
    {
        QTest::addColumn<int>("p1");
        QTest::addColumn<int>("p4");
        QTest::addColumn<bool>("vfoA");
        QTest::addColumn<int>("mask");
        QTest::addColumn<int>("bits");
        // 8.2 MHz column: bits 4-6; rows 2.4K, 2.0K, 500, 250, Thru.
        QTest::newRow("main 8.2 2.4K") << 1 << 0 << true << 0x70 << 0x10;
        QTest::newRow("main 8.2 2.0K") << 1 << 1 << true << 0x70 << 0x20;
        QTest::newRow("main 8.2 500") << 1 << 2 << true << 0x70 << 0x30;
        QTest::newRow("main 8.2 250") << 1 << 3 << true << 0x70 << 0x40;
        QTest::newRow("main 8.2 Thru") << 1 << 4 << true << 0x70 << 0x00;
        // 455 kHz column: bits 0-2; rows 2.4K, 2.0K, 500, 250, 6.0K.
        QTest::newRow("main 455 2.4K") << 2 << 0 << true << 0x07 << 0x01;
        QTest::newRow("main 455 2.0K") << 2 << 1 << true << 0x07 << 0x02;
        QTest::newRow("main 455 500") << 2 << 2 << true << 0x07 << 0x03;
        QTest::newRow("main 455 250") << 2 << 3 << true << 0x07 << 0x04;
        QTest::newRow("main 455 6.0K") << 2 << 4 << true << 0x07 << 0x00;
        QTest::newRow("sub 2.4K") << 0 << 0x80 << false << 0x77 << 0x11;
        QTest::newRow("sub 500") << 0 << 0x82 << false << 0x77 << 0x33;
        QTest::newRow("sub Thru/6.0K") << 0 << 0x84 << false << 0x77 << 0x00;
    }
    void filterSelection_setsTheBitsTheFilterWindowTests()
    {
        QFETCH(int, p1);
        QFETCH(int, p4);
        QFETCH(bool, vfoA);
        QFETCH(int, mask);
        QFETCH(int, bits);
        VirtualRadio radio;
        const int otherRow = p1 == 0 ? (p4 == 0x83 ? 0x82 : 0x83) : (p4 == 1 ? 2 : 1);
        radio.handle(cmd(Op::FilterSelect, otherRow, 0, 0, p1));  // another row first, so the change shows
        radio.handle(cmd(Op::FilterSelect, p4, 0, 0, p1));
        QCOMPARE(radio.filterByte(vfoA ? Vfo::A : Vfo::B) & mask, bits);
        const StatusView v = poll(radio);
        QCOMPARE((vfoA ? v.a.filterByte : v.b.filterByte) & mask, bits);
    }

    void filterSelection_unknownRowChangesNothing()
    {
        VirtualRadio radio;
        const int a = radio.filterByte(Vfo::A);
        const int b = radio.filterByte(Vfo::B);
        radio.handle(cmd(Op::FilterSelect, 5, 0, 0, 1));
        radio.handle(cmd(Op::FilterSelect, 4, 0, 0, 0));  // the sub receiver wants 0x80 + row
        radio.handle(cmd(Op::FilterSelect, 0, 0, 0, 3));
        QCOMPARE(radio.filterByte(Vfo::A), a);
        QCOMPARE(radio.filterByte(Vfo::B), b);
    }

    // --- Meters ---

    void sMeter_risesAcrossASignal_data()
    {
        QTest::addColumn<double>("centreKHz");
        QTest::newRow("20 m digital") << 14074.0;
        QTest::newRow("20 m phone") << 14200.0;
        QTest::newRow("40 m digital") << 7074.0;
        QTest::newRow("80 m digital") << 3573.0;
        QTest::newRow("15 m digital") << 21074.0;
    }
    void sMeter_risesAcrossASignal()
    {
        QFETCH(double, centreKHz);
        VirtualRadio radio;
        const auto meterAt = [&](double kHz) {
            radio.handle(setFreqCommand(qRound64(kHz * 100), 1).bytes());
            const QByteArray r = radio.handle(cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::MainS));
            return at(r, 0);
        };
        const int farBelow = meterAt(centreKHz - 5);
        const int edge = meterAt(centreKHz - 1);
        const int centre = meterAt(centreKHz);
        const int farAbove = meterAt(centreKHz + 5);
        QVERIFY2(centre > edge && edge > farBelow,
                 qPrintable(QStringLiteral("%1 %2 %3").arg(farBelow).arg(edge).arg(centre)));
        QVERIFY(centre >= 100);
        QVERIFY(farBelow < BandSignals::NoiseFloor + BandSignals::NoiseRipple);
        QVERIFY(farAbove < BandSignals::NoiseFloor + BandSignals::NoiseRipple);
    }

    void sMeter_subReadsAtVfoB()
    {
        VirtualRadio radio;
        radio.setVfo(Vfo::A, tuned(1410000));  // empty band
        radio.setVfo(Vfo::B, tuned(1420000));  // on the phone signal
        const int mainS = at(radio.handle(cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::MainS)), 0);
        const int subS = at(radio.handle(cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::SubS)), 0);
        QVERIFY(subS > mainS + 100);
        QCOMPARE(subS, radio.sMeter(Vfo::B));
    }

    void sMeter_addedSignalIsHeard()
    {
        VirtualRadio radio;
        radio.clearSignals();
        radio.setVfo(Vfo::A, tuned(1000000));
        QVERIFY(radio.sMeter(Vfo::A) < BandSignals::NoiseFloor + BandSignals::NoiseRipple);
        radio.addSignal({10000.0, 2.0, 240});
        QCOMPARE(radio.sMeter(Vfo::A), 240);
    }

    void transmitMeters_readZeroUnlessTransmitting_data()
    {
        QTest::addColumn<int>("selector");
        QTest::addColumn<bool>("readsWhenKeyed");
        QTest::newRow("PO") << 0x80 << true;
        QTest::newRow("ALC") << 0x81 << true;
        QTest::newRow("IC") << 0x83 << true;
        QTest::newRow("VCC") << 0x84 << true;
        QTest::newRow("SWR") << 0x85 << true;
        QTest::newRow("Mic") << 0x86 << true;
        QTest::newRow("0x87") << 0x87 << false;
    }
    void transmitMeters_readZeroUnlessTransmitting()
    {
        QFETCH(int, selector);
        QFETCH(bool, readsWhenKeyed);
        VirtualRadio radio;
        QCOMPARE(at(radio.handle(cmd(Op::ReadMeter, 0, 0, 0, selector)), 0), 0);
        radio.handle(cmd(Op::Ptt, 1));
        QCOMPARE(at(radio.handle(cmd(Op::ReadMeter, 0, 0, 0, selector)), 0) > 0, readsWhenKeyed);
        radio.handle(cmd(Op::Ptt, 0));
        QCOMPARE(at(radio.handle(cmd(Op::ReadMeter, 0, 0, 0, selector)), 0), 0);
    }

    void cwPitch_readsAsTheProgramScalesIt()
    {
        VirtualRadio radio;
        const auto pitch = [&] { return at(radio.handle(cmd(Op::ReadMeter, 0, 0, 0, MeterSelector::CwPitch)), 0); };
        QCOMPARE(pitch(), 0x90);
        QCOMPARE(cwPitchHz(pitch()), 750);
        radio.setCwPitchByte(0xF0);
        QCOMPARE(cwPitchHz(pitch()), 1050);
    }

    // --- Bad input ---

    void unknownOpcode_givesNoReplyAndChangesNothing_data()
    {
        QTest::addColumn<int>("op");
        for (const int op : {0x00, 0x04, 0x0B, 0x0E, 0x11, 0x20, 0x80, 0x8B, 0xF8, 0xFF})
            QTest::newRow(qPrintable(QStringLiteral("0x%1").arg(op, 2, 16, QLatin1Char('0')))) << op;
    }
    void unknownOpcode_givesNoReplyAndChangesNothing()
    {
        QFETCH(int, op);
        VirtualRadio radio;
        const QByteArray before = radio.handle(cmd(Op::StatusRequest, StatusKind::AllMemories));
        QVERIFY(radio.handle(cmd(op, 1, 1, 1, 1)).isEmpty());
        QCOMPARE(radio.handle(cmd(Op::StatusRequest, StatusKind::AllMemories)), before);
    }

    void partialOrLongInput_isIgnored_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one byte") << QByteArray(1, char(Op::StatusRequest));
        QTest::newRow("four bytes") << cmd(Op::StatusRequest, 3).left(4);
        QTest::newRow("six bytes") << cmd(Op::StatusRequest, 3) + char(0);
        QTest::newRow("two commands") << cmd(Op::Split, 1) + cmd(Op::Split, 1);
    }
    void partialOrLongInput_isIgnored()
    {
        QFETCH(QByteArray, input);
        VirtualRadio radio;
        QVERIFY(radio.handle(input).isEmpty());
        QVERIFY(!radio.split());
    }

    void garbage_neverCrashesAndRepliesOnlyInKnownLengths()
    {
        VirtualRadio radio;
        QRandomGenerator random(1000);
        const QList<int> lengths{0, 1, 5, 6, 16, 32, 1863};
        for (int i = 0; i < 20000; ++i) {
            QByteArray b(5, '\0');
            for (char& c : b)
                c = static_cast<char>(random.bounded(256));
            const QByteArray r = radio.handle(b);
            QVERIFY2(lengths.contains(static_cast<int>(r.size())), qPrintable(b.toHex(' ')));
        }
        // Still a radio afterwards.
        radio.handle(cmd(Op::VfoSelect, 0));
        radio.handle(setFreqCommand(1425000, 1).bytes());
        QCOMPARE(poll(radio).a.freqText.trimmed(), QStringLiteral("14,250.00"));
    }

    // --- Faults and threads ---

    void faultHook_canDropCommandsAndReshapeReplies()
    {
        struct Hook : FaultHook {
            bool admit(const QByteArray& command) override { return static_cast<quint8>(command[4]) != Op::Split; }
            void shape(const QByteArray&, RadioReply& reply) override
            {
                reply.bytes.truncate(3);
                reply.extraDelayMs = 40;
            }
        };
        VirtualRadio radio;
        radio.setFaultHook(std::make_shared<Hook>());
        QVERIFY(radio.hasFaultHook());
        radio.handle(cmd(Op::Split, 1));
        QVERIFY(!radio.split());
        const RadioReply r = radio.respond(cmd(Op::StatusRequest, StatusKind::BothVfos));
        QCOMPARE(r.bytes.size(), 3);
        QCOMPARE(r.extraDelayMs, 40);
        radio.setFaultHook(nullptr);
        QCOMPARE(radio.handle(cmd(Op::StatusRequest, StatusKind::BothVfos)).size(), 32);
    }

    void concurrentUse_keepsTheStateWhole()
    {
        VirtualRadio radio;
        std::atomic<bool> bad{false};
        std::thread writer([&] {
            for (int i = 0; i < 2000; ++i)
                radio.handle(setFreqCommand(i % 2 ? 1425000 : 705000, 1).bytes());
        });
        for (int i = 0; i < 2000; ++i) {
            const QByteArray r = radio.handle(cmd(Op::StatusRequest, StatusKind::CurrentVfo));
            const double kHz = decodeFrequency(at(r, 1), at(r, 2), at(r, 3), at(r, 4));
            if (kHz != 14250.0 && kHz != 7050.0 && kHz != 14074.0)
                bad = true;
        }
        writer.join();
        QVERIFY(!bad);
    }
};

QTEST_GUILESS_MAIN(TestVirtualRadio)
#include "test_virtual_radio.moc"
