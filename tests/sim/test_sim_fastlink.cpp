// SPDX-License-Identifier: GPL-3.0-or-later
// The fast link against the virtual radio on a pseudo-terminal, with the real serial adapter and
// clock: a fast poll decodes what an exact poll decodes, for a radio that answers at once and for
// one that starts each reply 30 ms late.

#include "FlagsDecoder.h"
#include "MeterDecoder.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <QTest>

namespace {
struct Decoded {
    StatusView status;
    FlagsView flags;
    int mainS = -1;
    int statusBytes = 0;
};

// The poll as the main window runs it: status, meters, flags.
Decoded poll(RadioLink& link)
{
    Decoded d;
    link.runBlocking([&](CatPort& port) {
        const StatusReply s = Get_Status32(port);
        StatusRecord store;
        d.statusBytes = static_cast<int>(s.record.size());
        d.status = decodeStatus(store, s.record);
        const MeterReplies m = readMeters(port, MeterSelector::TransmitBase);
        d.mainS = firstByte(m.mainS);
        const FlagsReply f = GetFlags(port, 1);
        d.flags = decodeFlags(1, f.waiting, f.bytes);
    });
    return d;
}

// The same reads with the flags before the meters. A radio that starts its replies 30 ms late
// overruns the exact mode's 50 ms meter waits, and the tail of the last meter reply spills into the
// flags read that follows; read this way, the exact mode's flags are a reference in both cases.
Decoded reference(RadioLink& link)
{
    Decoded d;
    link.runBlocking([&](CatPort& port) {
        const StatusReply s = Get_Status32(port);
        StatusRecord store;
        d.statusBytes = static_cast<int>(s.record.size());
        d.status = decodeStatus(store, s.record);
        const FlagsReply f = GetFlags(port, 1);
        d.flags = decodeFlags(1, f.waiting, f.bytes);
        const MeterReplies m = readMeters(port, MeterSelector::TransmitBase);
        d.mainS = firstByte(m.mainS);
    });
    return d;
}
}  // namespace

class TestSimFastLink : public QObject {
    Q_OBJECT
private slots:
    void fastPollDecodesWhatTheExactPollDecodes_data()
    {
        QTest::addColumn<int>("replyDelay");
        QTest::addColumn<int>("burstMs");
        QTest::newRow("replies at once") << 0 << 0;
        QTest::newRow("replies 30 ms late") << 30 << 0;
        QTest::newRow("replies through an adapter's 16 ms bursts") << 0 << 16;
        QTest::newRow("replies 30 ms late through an adapter's 16 ms bursts") << 30 << 16;
    }
    void fastPollDecodesWhatTheExactPollDecodes()
    {
        QFETCH(int, replyDelay);
        QFETCH(int, burstMs);
        SimHost host(VirtualRadio::Model::MP);
        host.setReplyDelayMs(replyDelay);
        host.setBurstMs(burstMs);
        QString error;
        QVERIFY2(host.start(&error), qPrintable(error));
        VfoState a;
        a.freq10Hz = 707400;  // 7 074.00 kHz LSB
        a.modeByte = 0;
        VfoState b;
        b.freq10Hz = 2107600;  // 21 076.00 kHz CW
        b.modeByte = 2;
        b.clar10Hz = 120;
        b.rxClar = true;
        host.radio().setVfo(VirtualRadio::Vfo::A, a);
        host.radio().setVfo(VirtualRadio::Vfo::B, b);
        host.radio().setSplit(true);
        host.radio().setDual(true);

        const QString path = host.devicePath();
        RadioLink link(
            [path] {
                auto port = std::make_unique<QtSerialPort>();
                port->setDevice(path);
                port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
                port->open(nullptr);
                return std::unique_ptr<SerialPort>(std::move(port));
            },
            std::make_shared<RealClock>());
        QVERIFY(link.portOpen());

        const Decoded exact = reference(link);
        // The exact mode's overrun meter reply (30 ms late) still has its tail on the line: let it
        // arrive and drop it, so that the fast poll starts on a quiet line as a poll of its own would.
        link.runBlocking([](CatPort& port) {
            port.sleep(Wait::StatusBothVfos);
            port.clear();
        });
        link.setFastLink(true);
        const Decoded fast = poll(link);

        QCOMPARE(exact.statusBytes, 32);
        QCOMPARE(fast.statusBytes, 32);
        QCOMPARE(exact.status.a.freqText, QStringLiteral("7,074.00 "));
        QCOMPARE(fast.status.a.freqText, exact.status.a.freqText);
        QCOMPARE(fast.status.b.freqText, exact.status.b.freqText);
        QCOMPARE(fast.status.b.clarText, exact.status.b.clarText);
        QVERIFY(exact.status.a.mode && fast.status.a.mode && exact.status.b.mode && fast.status.b.mode);
        QCOMPARE(exact.status.a.mode->caption, QStringLiteral("LSB"));
        QCOMPARE(fast.status.a.mode->caption, exact.status.a.mode->caption);
        QCOMPARE(fast.status.b.mode->caption, exact.status.b.mode->caption);
        QCOMPARE(fast.status.dumpA, exact.status.dumpA);
        QCOMPARE(fast.status.dumpB, exact.status.dumpB);
        QVERIFY(exact.flags.decoded);
        QVERIFY(fast.flags.decoded);
        QVERIFY(fast.flags.split);
        QVERIFY(fast.flags.dual);
        QCOMPARE(fast.flags.dump, exact.flags.dump);
        // A meter reply 30 ms late ends right at the 50 ms wait: the exact mode may or may not have its
        // first byte then, so the meters are compared only for the radio that answers at once.
        if (replyDelay == 0)
            QCOMPARE(fast.mainS, exact.mainS);
        // The fast poll's seven commands, in the main window's order.
        const QList<SimHost::LogEntry> log = host.log();
        QCOMPARE(log.size(), 14);
        QStringList fastCommands;
        for (int i = 7; i < 14; ++i)
            fastCommands << hexBytes(log[i].command);
        QCOMPARE(fastCommands, (QStringList{QStringLiteral("00 00 00 02 10"), QStringLiteral("00 00 00 03 10"),
                                            QStringLiteral("00 00 00 00 F7"), QStringLiteral("01 00 00 00 F7"),
                                            QStringLiteral("80 00 00 00 F7"), QStringLiteral("F1 00 00 00 F7"),
                                            QStringLiteral("00 00 00 01 FA")}));
        link.shutdown();
    }
};

QTEST_GUILESS_MAIN(TestSimFastLink)
#include "test_sim_fastlink.moc"
