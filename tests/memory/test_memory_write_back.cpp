// SPDX-License-Identifier: GPL-3.0-or-later
// Writing changed channels back, run inline on a fake port and clock, the virtual radio's model
// answering: the exact commands and waits, the backup, the read-back and the radio put back.
#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "MemoryWriteBack.h"
#include "VirtualRadio.h"

#include <QTest>

namespace {
struct Wire {
    FakeClock clock;
    FakeSerialPort serial{&clock};
    CatPort port{serial, clock};
    VirtualRadio radio;
    QList<QByteArray> admitted;                   // what the radio acted on
    std::function<bool(const QByteArray&)> deaf;  // commands the radio does not hear
    std::function<void(const QByteArray&, QByteArray&)> reshape;
    Wire()
    {
        QString e;
        serial.open(&e);
        serial.responder = [this](const QByteArray& c) {
            if (deaf && deaf(c))
                return QByteArray();
            QByteArray reply = radio.handle(c);
            if (reshape)
                reshape(c, reply);
            return reply;
        };
    }
    QStringList sent() const
    {
        QStringList out;
        for (const QString& e : clock.events)
            if (!e.startsWith(QLatin1String("read")))
                out << e;
        return out;
    }
};

WriteBackChannel wanted(int channel, qint64 tenHz, int mode, bool masked)
{
    return WriteBackChannel{channel, tenHz, mode, masked};
}

QString hex2(int v)
{
    return QStringLiteral("%1").arg(v & 0xFF, 2, 16, QLatin1Char('0')).toUpper();
}
}  // namespace

class TestMemoryWriteBack : public QObject {
    Q_OBJECT
private slots:
    void fromVfo_exactSequence_backupThenWritesThenReadBackThenPutBack()
    {
        Wire w;
        w.radio.setCurrentChannel(9);
        VfoState a = w.radio.vfo(VirtualRadio::Vfo::A);
        a.freq10Hz = 705000;  // 7,050.00 kHz
        w.radio.setVfo(VirtualRadio::Vfo::A, a);
        QList<std::pair<int, QByteArray>> saved;
        QList<int> progress;
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(3, 1419550, 3, false), wanted(12, 2107400, 1, true)},
            [&](const QList<std::pair<int, QByteArray>>& records) {
                saved = records;
                return QString();
            },
            [&](int p) { progress << p; }, nullptr);
        QVERIFY(r.ran);
        QCOMPARE(r.written, (QList<int>{3, 12}));
        QVERIFY(r.differing.isEmpty());
        QVERIFY(!r.place.onMemory);
        QCOMPARE(r.place.channel, 9);
        QCOMPARE(r.place.vfoAFreq10Hz, qint64(705000));

        const QStringList expected{
            // Where the radio is.
            "write 00 00 00 01 FA", "sleep 100", "write 00 00 00 01 10", "sleep 150", "write 00 00 00 02 10",
            "sleep 100",
            // The backup reads.
            "write 03 00 00 04 10", "sleep 250", "write 0C 00 00 04 10", "sleep 250",
            // The upload's opening, from the first channel written.
            "write 00 00 00 03 02", "write 00 00 00 00 09", "write 00 00 00 80 09", "write 00 00 00 FF 09",
            // Channel 3: CW R, 14,195.50 kHz, unmasked.
            "write 00 00 00 03 0C", "sleep 50", "write 50 95 41 01 0A", "write 00 00 00 03 03", "sleep 50",
            "write 00 00 02 03 03", "sleep 50",
            // Channel 12: USB, 21,074.00 kHz, masked.
            "write 00 00 00 01 0C", "sleep 50", "write 00 74 10 02 0A", "write 00 00 00 0C 03", "sleep 50",
            "write 00 00 01 0C 03", "sleep 50",
            // The read-backs.
            "write 03 00 00 04 10", "sleep 250", "write 0C 00 00 04 10", "sleep 250",
            // Put back: the memory pointer, VFO operation, VFO-A's mode and frequency.
            "write 00 00 00 09 02", "write 00 00 00 00 05", "sleep 50", "write 00 00 00 01 0C", "sleep 50",
            "write 00 50 70 00 0A", "sleep 50"};
        QCOMPARE(w.sent(), expected);

        // The backup holds the channels as they were.
        QCOMPARE(saved.size(), 2);
        QCOMPARE(saved[0].first, 3);
        QCOMPARE(WriteBack::heldIn(saved[0].second).freq10Hz, qint64(1013600));  // the radio's 10,136.00
        QCOMPARE(saved[1].first, 12);
        // The radio holds the new channels, and is back where it was.
        QCOMPARE(w.radio.channel(3).data.freq10Hz, qint64(1419550));
        QCOMPARE(w.radio.channel(12).masked, true);
        QCOMPARE(w.radio.vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(705000));
        QCOMPARE(w.radio.modeCode(VirtualRadio::Vfo::A), 1);
        QVERIFY(!w.radio.memoryMode());
        QCOMPARE(w.radio.currentChannel(), 9);
        QCOMPARE(progress.last(), 100);
    }

    void fromMemory_vfoAReadOnVfo_thenTheChannelRecalledAgain()
    {
        Wire w;
        w.radio.handle(QByteArray::fromHex("0000000702"));  // on channel 7
        QVERIFY(w.radio.memoryMode());
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(2, 1000000, 1, false)}, [](const auto&) { return QString(); }, {}, nullptr);
        QVERIFY(r.place.onMemory);
        QCOMPARE(r.place.channel, 7);
        const QStringList sent = w.sent();
        QCOMPARE(sent.mid(4, 4),
                 (QStringList{"write 00 00 00 00 05", "sleep 50", "write 00 00 00 02 10", "sleep 100"}));
        QCOMPARE(sent.last(2), (QStringList{"write 00 00 00 07 02", "sleep 50"}));
        QVERIFY(w.radio.memoryMode());
        QCOMPARE(w.radio.currentChannel(), 7);
        QCOMPARE(w.radio.channel(2).data.freq10Hz, qint64(1000000));
    }

    void backupReadUnanswered_nothingWritten()
    {
        Wire w;
        const QByteArray readOf5 = QByteArray::fromHex("0500000410");
        w.deaf = [&](const QByteArray& c) { return c == readOf5; };
        const MemoryChannel before = w.radio.channel(4);
        bool saveAsked = false;
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(4, 1000000, 1, false), wanted(5, 1000000, 1, false)},
            [&](const auto&) {
                saveAsked = true;
                return QString();
            },
            {}, nullptr);
        QVERIFY(r.backupError.contains("channel 5"));
        QVERIFY(!saveAsked);
        QVERIFY(r.written.isEmpty());
        QCOMPARE(w.radio.channel(4), before);
        for (const QString& c : w.serial.writtenHex())
            QVERIFY2(!c.endsWith(QLatin1String(" 03")), qPrintable(c));
    }

    void backupNotSaved_nothingWritten()
    {
        Wire w;
        const MemoryChannel before = w.radio.channel(4);
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(4, 1000000, 1, false)}, [](const auto&) { return QStringLiteral("disk full"); }, {},
            nullptr);
        QCOMPARE(r.backupError, QStringLiteral("disk full"));
        QVERIFY(r.written.isEmpty());
        QCOMPARE(w.radio.channel(4), before);
        QVERIFY(!w.serial.writtenHex().contains("00 00 00 04 03"));
    }

    void readBackDiffers_isNamed()
    {
        Wire w;
        int readsOf6 = 0;
        w.reshape = [&](const QByteArray& c, QByteArray& reply) {
            if (c == QByteArray::fromHex("0600000410") && ++readsOf6 == 2)
                reply[4] = char(reply[4] ^ 0x40);  // the read-back answers another frequency
        };
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(5, 1000000, 1, false), wanted(6, 1100000, 1, false)}, [](const auto&) { return QString(); },
            {}, nullptr);
        QCOMPARE(r.written, (QList<int>{5, 6}));
        QCOMPARE(r.differing, QList<int>{6});
    }

    void writeNotHeard_readBackDiffers()
    {
        Wire w;
        w.deaf = [](const QByteArray& c) { return c == QByteArray::fromHex("0000000503"); };
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(5, 1000000, 4, false)}, [](const auto&) { return QString(); }, {}, nullptr);
        QCOMPARE(r.differing, QList<int>{5});
    }

    void cancelBeforeTheSecondChannel_firstWrittenAndReadBack_radioPutBack()
    {
        Wire w;
        std::atomic<bool> cancel{false};
        QList<int> progress;
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(20, 1000000, 1, false), wanted(21, 1000100, 1, false), wanted(22, 1000200, 1, false)},
            [](const auto&) { return QString(); },
            [&](int p) {
                progress << p;
                if (progress.size() == 4)  // three backup reads, then the first write
                    cancel = true;
            },
            &cancel);
        QVERIFY(r.cancelled);
        QCOMPARE(r.written, QList<int>{20});
        QCOMPARE(w.radio.channel(20).data.freq10Hz, qint64(1000000));
        QVERIFY(w.radio.channel(21).data.freq10Hz != 1000100);
        const QStringList writes = w.serial.writtenHex();
        QVERIFY(!writes.contains("00 00 00 15 03"));
        QCOMPARE(writes.count("14 00 00 04 10"), 2);  // backup and read-back of channel 20
        QCOMPARE(writes.count("15 00 00 04 10"), 1);  // backup only
        QVERIFY(!w.radio.memoryMode());
    }

    void closedPort_nothing()
    {
        Wire w;
        w.serial.close();
        const WriteBackResult r = WriteBack::run(
            w.port, {wanted(1, 1000000, 1, false)}, [](const auto&) { return QString(); }, {}, nullptr);
        QVERIFY(!r.ran);
        QVERIFY(w.serial.writes.isEmpty());
    }

    void matches_comparesFrequencyModeAndMask()
    {
        VirtualRadio radio;
        const QByteArray record = radio.handle(QByteArray::fromHex("0100000410"));  // 3,573.00 USB
        QVERIFY(WriteBack::matches(wanted(1, 357300, 1, false), record));
        QVERIFY(!WriteBack::matches(wanted(1, 357310, 1, false), record));
        QVERIFY(!WriteBack::matches(wanted(1, 357300, 0, false), record));
        QVERIFY(!WriteBack::matches(wanted(1, 357300, 1, true), record));
        QVERIFY(!WriteBack::matches(wanted(1, 357300, 1, false), record.left(5)));
        Q_UNUSED(hex2);
    }
};

QTEST_GUILESS_MAIN(TestMemoryWriteBack)
#include "test_memory_write_back.moc"
