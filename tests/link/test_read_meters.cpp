// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkTestBytes.h"
#include "MeterDecoder.h"
#include "Procedures.h"

#include <QTest>

namespace {
// A radio that answers each meter request with a five-byte reply whose first byte is given per selector.
void answerMeters(FakeSerialPort& serial, int mainS, int subS, int transmit, int pitch)
{
    serial.responder = [=](const QByteArray& c) {
        const int selector = static_cast<quint8>(c[0]);
        const int value = selector == 0x00 ? mainS : selector == 0x01 ? subS : selector == 0xF1 ? pitch : transmit;
        return QByteArray(1, static_cast<char>(value)) + QByteArray(4, '\0');
    };
}
}  // namespace

class TestReadMeters : public QObject {
    Q_OBJECT
private slots:
    void fourRequestsEachClearSendSleep50Read_data()
    {
        QTest::addColumn<int>("selector");
        QTest::addColumn<QString>("transmitFrame");
        QTest::newRow("PO") << 0x80 << QStringLiteral("80 00 00 00 F7");
        QTest::newRow("ALC") << 0x81 << QStringLiteral("81 00 00 00 F7");
        QTest::newRow("SWR") << 0x85 << QStringLiteral("85 00 00 00 F7");
        QTest::newRow("Mic") << 0x86 << QStringLiteral("86 00 00 00 F7");
    }
    void fourRequestsEachClearSendSleep50Read()
    {
        QFETCH(int, selector);
        QFETCH(QString, transmitFrame);
        FakeLine line;
        answerMeters(line.serial, 10, 20, 30, 40);
        const MeterReplies m = readMeters(line.port, selector);
        QVERIFY(m.ran);
        QVERIFY(m.complete());
        const QStringList frames{QStringLiteral("00 00 00 00 F7"), QStringLiteral("01 00 00 00 F7"), transmitFrame,
                                 QStringLiteral("F1 00 00 00 F7")};
        QStringList expected;
        for (const QString& f : frames)
            expected << QStringLiteral("read 0") << QStringLiteral("write ") + f << QStringLiteral("sleep 50")
                     << QStringLiteral("read 5");
        QCOMPARE(line.clock.events, expected);
        QCOMPARE(firstByte(m.mainS), 10);
        QCOMPARE(firstByte(m.subS), 20);
        QCOMPARE(firstByte(m.transmit), 30);
        QCOMPARE(firstByte(m.pitch), 40);
    }

    void staleBytesAreDroppedBeforeEachRequest()
    {
        FakeLine line;
        line.serial.inject(bytes({0xEE, 0xEE}));
        answerMeters(line.serial, 1, 2, 3, 4);
        const MeterReplies m = readMeters(line.port, 0x80);
        QCOMPARE(line.clock.events.first(), QStringLiteral("read 2"));
        QCOMPARE(firstByte(m.mainS), 1);
    }

    void oneMissingReplyMakesTheReadIncomplete_data()
    {
        QTest::addColumn<int>("silent");  // which of the four requests gets no reply
        QTest::newRow("main S") << 0;
        QTest::newRow("sub S") << 1;
        QTest::newRow("transmit") << 2;
        QTest::newRow("pitch") << 3;
    }
    void oneMissingReplyMakesTheReadIncomplete()
    {
        QFETCH(int, silent);
        FakeLine line;
        for (int i = 0; i < 4; ++i)
            line.serial.queueReply(i == silent ? QByteArray() : counting(5, 50));
        const MeterReplies m = readMeters(line.port, 0x80);
        QVERIFY(m.ran);
        QVERIFY(!m.complete());
        QCOMPARE(line.serial.writes.size(), 4);  // all four are still asked
    }

    void everyReplyPresentIsComplete()
    {
        FakeLine line;
        for (int i = 0; i < 4; ++i)
            line.serial.queueReply(bytes({0}));
        QVERIFY(readMeters(line.port, 0x80).complete());
    }

    void closedPortWritesNothing()
    {
        FakeLine line(false);
        const MeterReplies m = readMeters(line.port, 0x80);
        QVERIFY(!m.ran);
        QVERIFY(!m.complete());
        QVERIFY(line.clock.events.isEmpty());
    }

    void firstByteOfAMissingReplyIsZero()
    {
        QCOMPARE(firstByte(QByteArray()), 0);
        QCOMPARE(firstByte(bytes({0xFF, 1})), 255);
        QCOMPARE(firstByte(bytes({0x80})), 128);
    }

    void readingsShowOnTheMeterLine()
    {
        FakeLine line;
        answerMeters(line.serial, 255, 0, 128, 0xF0);
        const MeterReplies m = readMeters(line.port, 0x80);
        const MeterView v =
            decodeMeters(firstByte(m.mainS), firstByte(m.subS), firstByte(m.transmit), firstByte(m.pitch));
        QCOMPARE(v.line, QStringLiteral("S-Meters 1-2 = 255 + 0 + 128"));
        QCOMPARE(v.mainPercent, 100);
        QCOMPARE(v.subPercent, 0);
        QCOMPARE(v.transmitPercent, 50);
        QCOMPARE(v.pitchText, QStringLiteral("1050 Hz"));
    }
};

QTEST_GUILESS_MAIN(TestReadMeters)
#include "test_read_meters.moc"
