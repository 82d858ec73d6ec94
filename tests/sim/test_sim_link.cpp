// SPDX-License-Identifier: GPL-3.0-or-later
// The real serial adapter against the virtual radio on a pseudo-terminal, in real time: the
// program's own procedures and decoders must read what the radio holds.

#include "CatPort.h"
#include "FlagsDecoder.h"
#include "MeterDecoder.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioRecords.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <QTest>
#include <atomic>
#include <memory>

namespace {
using Vfo = VirtualRadio::Vfo;

VfoState tuned(qint64 freq10Hz, int modeCode)
{
    VfoState v;
    v.freq10Hz = freq10Hz;
    const auto m = modeBytesForCode(modeCode);
    v.modeByte = m->modeByte;
    v.secondVariant = m->secondVariant;
    return v;
}
}  // namespace

class TestSimLink : public QObject {
    Q_OBJECT

    std::unique_ptr<SimHost> host;
    std::unique_ptr<QtSerialPort> serial;
    RealClock clock;
    std::unique_ptr<CatPort> port;

    StatusView poll()
    {
        const StatusReply r = Get_Status32(*port);
        StatusRecord store;
        return decodeStatus(store, r.record);
    }

private slots:
    void init()
    {
        host = std::make_unique<SimHost>();
        QString error;
        QVERIFY2(host->start(&error), qPrintable(error));
        serial = std::make_unique<QtSerialPort>();
        serial->setDevice(host->devicePath());
        QVERIFY(serial->setSettings(QStringLiteral("4800,n,8,2"), &error));
        QVERIFY2(serial->open(&error), qPrintable(error));
        port = std::make_unique<CatPort>(*serial, clock);
    }

    void cleanup()
    {
        port.reset();
        serial.reset();
        host.reset();
    }

    void statusPoll_readsTheFrequenciesAndModesTheRadioHolds()
    {
        host->radio().setVfo(Vfo::A, tuned(1425000, 1));
        host->radio().setVfo(Vfo::B, tuned(707400, 3));
        const StatusReply r = Get_Status32(*port);
        QVERIFY(r.ran);
        QCOMPARE(r.record.size(), 32);
        StatusRecord store;
        const StatusView v = decodeStatus(store, r.record);
        QVERIFY(!v.noLink);
        QCOMPARE(v.a.freqText, QStringLiteral("14,250.00 "));
        QCOMPARE(v.a.mode->caption, QStringLiteral("USB"));
        QCOMPARE(v.b.freqText, QStringLiteral("7,074.00 "));
        QCOMPARE(v.b.mode->caption, QStringLiteral("CW R"));
    }

    void setFreq_changesWhatTheNextPollReads()
    {
        SetFreq(*port, 705000, 1);
        SetFreq(*port, 2107400, 2);
        port->send(CatCommand::make(Op::SetMode, 4));
        const StatusView v = poll();
        QCOMPARE(v.a.freqText, QStringLiteral("7,050.00 "));
        QCOMPARE(v.a.mode->caption, QStringLiteral("AM"));
        QCOMPARE(v.b.freqText, QStringLiteral("21,074.00 "));
        QCOMPARE(host->radio().vfo(Vfo::A).freq10Hz, qint64(705000));
    }

    void flags_readSixBytesAndIdentifyTheMarkV()
    {
        FlagsReply f = GetFlags(*port, 0);
        QCOMPARE(f.waiting, 6);
        QVERIFY(decodeFlags(0, f.waiting, f.bytes).markV);
        host->radio().setSplit(true);
        f = GetFlags(*port, 1);
        const FlagsView v = decodeFlags(1, f.waiting, f.bytes);
        QVERIFY(v.decoded);
        QVERIFY(v.split);
        QVERIFY(v.vfo);
    }

    void meters_allFourAnswerWithTheRadiosReadings()
    {
        host->radio().setVfo(Vfo::A, tuned(1420000, 1));  // on a signal
        const MeterReplies m = readMeters(*port, 0x80);
        QVERIFY(m.complete());
        QCOMPARE(m.mainS.size(), 5);
        QCOMPARE(firstByte(m.mainS), host->radio().sMeter(Vfo::A));
        QCOMPARE(firstByte(m.subS), host->radio().sMeter(Vfo::B));
        QCOMPARE(firstByte(m.transmit), 0);
        const MeterView v =
            decodeMeters(firstByte(m.mainS), firstByte(m.subS), firstByte(m.transmit), firstByte(m.pitch));
        QCOMPARE(v.pitchHz, 750);
        QVERIFY(v.mainPercent > 50);
    }

    void wholePoll_statusMetersFlagsInOrderInTheLog()
    {
        host->clearLog();
        const StatusView v = poll();
        QVERIFY(!v.noLink);
        readMeters(*port, 0x83);
        GetFlags(*port, 1);
        const QList<SimHost::LogEntry> log = host->log();
        QStringList sent;
        for (const auto& e : log)
            sent << hexBytes(e.command);
        QCOMPARE(sent, (QStringList{"00 00 00 02 10", "00 00 00 03 10", "00 00 00 00 F7", "01 00 00 00 F7",
                                    "83 00 00 00 F7", "F1 00 00 00 F7", "00 00 00 01 FA"}));
        for (int i = 1; i < log.size(); ++i)
            QVERIFY(log[i].atMs >= log[i - 1].atMs);
    }

    void fullMemoryReadOut_returns1863Bytes()
    {
        MemoryChannel c;
        c.data.freq10Hz = 1415770;
        host->radio().setChannel(113, c);
        const QByteArray r =
            port->request(CatCommand::make(Op::StatusRequest, StatusKind::AllMemories), Wait::AllMemories);
        QCOMPARE(r.size(), ReplySize::AllMemories);
        const QByteArray last = r.mid(55 + 112 * 16, 16);
        QCOMPARE(decodeFrequency(quint8(last[1]), quint8(last[2]), quint8(last[3]), quint8(last[4])), 14157.70);
    }

    void replies_arePacedAtTheLineRate()
    {
        // 1863 bytes take over four seconds at 4800 baud: a short wait sees only the start of them.
        const QByteArray early = port->request(CatCommand::make(Op::StatusRequest, StatusKind::AllMemories), 200);
        QVERIFY2(early.size() < 200, qPrintable(QString::number(early.size())));
        port->sleep(Wait::AllMemories);
        QCOMPARE(early.size() + port->read().size(), ReplySize::AllMemories);
    }

    void oneChannel_readsTheChannelRecord()
    {
        const QByteArray r =
            port->request(CatCommand::make(Op::StatusRequest, StatusKind::OneChannel, 0, 0, 4), Wait::OneChannel);
        QCOMPARE(r.size(), 16);
        QCOMPARE(decodeFrequency(quint8(r[1]), quint8(r[2]), quint8(r[3]), quint8(r[4])), 14074.0);
    }

    void strayByte_isDroppedSoTheNextCommandLinesUp()
    {
        port->sendRaw(QByteArray(1, '\x10'));
        port->sleep(SimLine::FrameTimeoutMs * 2);
        const StatusView v = poll();
        QVERIFY(!v.noLink);
        QCOMPARE(host->radio().vfo(Vfo::A).freq10Hz, qint64(1407400));
        QCOMPARE(v.a.freqText, QStringLiteral("14,074.00 "));
    }

    void unknownInstruction_isLoggedAndUnanswered()
    {
        host->clearLog();
        const QByteArray r = port->request(CatCommand::make(0x55, 1, 2, 3, 4), 100, true);
        QVERIFY(r.isEmpty());
        QCOMPARE(host->log().size(), 1);
        QCOMPARE(hexBytes(host->log().first().command), QStringLiteral("04 03 02 01 55"));
    }

    void faultHook_lateReplyMissesAShortWait()
    {
        struct Late : FaultHook {
            void shape(const QByteArray&, RadioReply& reply) override { reply.extraDelayMs = 400; }
        };
        host->radio().setFaultHook(std::make_shared<Late>());
        const QByteArray early =
            port->request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), Wait::StatusCurrentVfo, true);
        QVERIFY(early.isEmpty());
        port->sleep(600);
        QCOMPARE(port->read().size(), ReplySize::VfoRecord);
    }

    void faultHook_unsolicitedBytesReachTheClient()
    {
        struct Chatty : FaultHook {
            std::atomic<bool> sent{false};
            QByteArray unsolicited(qint64) override
            {
                return sent.exchange(true) ? QByteArray() : QByteArray("\x55\xAA");
            }
        };
        host->radio().setFaultHook(std::make_shared<Chatty>());
        port->sleep(200);
        QCOMPARE(port->read(), QByteArray("\x55\xAA"));
    }

    void device_staysOpenableBetweenClients()
    {
        serial->close();
        QString error;
        QVERIFY2(serial->open(&error), qPrintable(error));
        QCOMPARE(poll().a.freqText, QStringLiteral("14,074.00 "));
    }

    void stop_takesTheDeviceAway()
    {
        const QString path = host->devicePath();
        serial->close();
        host->stop();
        QtSerialPort again;
        again.setDevice(path);
        QString error;
        const bool opened = again.open(&error);
        // The number may be reused by another terminal at once; when it is not, opening fails.
        if (opened) {
            again.close();
            QSKIP("the pseudo-terminal number was taken again by another program");
        }
        QVERIFY(!opened);
    }
};

QTEST_GUILESS_MAIN(TestSimLink)
#include "test_sim_link.moc"
