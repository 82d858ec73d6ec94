// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkTestBytes.h"
#include "StatusDecoder.h"

#include <QRandomGenerator>
#include <QTest>

namespace {
// A whole 32-byte record: VFO-A bytes 1-16, VFO-B bytes 17-32, each set by its 1-based position.
struct Record {
    QByteArray bytes = QByteArray(32, '\0');
    Record& set(int position, int value)
    {
        bytes[position - 1] = static_cast<char>(value);
        return *this;
    }
    Record& frequency(int base, quint32 count)  // base 0 for VFO-A, 16 for VFO-B
    {
        return set(base + 2, count >> 24)
            .set(base + 3, (count >> 16) & 0xFF)
            .set(base + 4, (count >> 8) & 0xFF)
            .set(base + 5, count & 0xFF);
    }
};

StatusView decode(const QByteArray& reply)
{
    StatusRecord store;
    return decodeStatus(store, reply);
}
}  // namespace

class TestStatusDecoder : public QObject {
    Q_OBJECT
private slots:
    // --- the edge cases of the status record ---

    void bytes0016E360Give937Point50KHzShownWithOneBlank()
    {
        const StatusView v = decode(Record().set(2, 0x00).set(3, 0x16).set(4, 0xE3).set(5, 0x60).bytes);
        QCOMPARE(v.a.kHz, 937.50);
        QCOMPARE(v.a.freqText, QStringLiteral("937.50 "));
    }

    void clarifierFFFFIsZero()
    {
        QCOMPARE(decodeClarifier(0xFF, 0xFF), 0.0);
        const StatusView v = decode(Record().set(6, 0xFF).set(7, 0xFF).bytes);
        QCOMPARE(v.a.clarKHz, 0.0);
        QCOMPARE(v.a.clarText, QStringLiteral("0.00 "));
    }

    void clarifierFFFEIsMinusOneSixteenHundredthKHz()
    {
        QCOMPARE(decodeClarifier(0xFF, 0xFE), -1.0 / 1600.0);
        const StatusView v = decode(Record().set(6, 0xFF).set(7, 0xFE).bytes);
        QCOMPARE(v.a.clarKHz, -1.0 / 1600.0);
    }

    void modeByte0x80ShowsDataUserAndStoresCodeZero()
    {
        const StatusView v = decode(Record().set(8, 0x80).bytes);
        QVERIFY(v.a.mode.has_value());
        QCOMPARE(v.a.mode->caption, QStringLiteral("Data USER"));
        QCOMPARE(v.a.mode->code, 0);
    }

    // --- fields ---

    void frequencyIsABigEndianCountOfSixteenHundredthsKHz_data()
    {
        QTest::addColumn<quint32>("count");
        QTest::addColumn<double>("kHz");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << quint32(0) << 0.0 << QStringLiteral("0.00 ");
        QTest::newRow("937.5") << quint32(1500000) << 937.5 << QStringLiteral("937.50 ");
        QTest::newRow("14 250 kHz") << quint32(22800000) << 14250.0 << QStringLiteral("14,250.00 ");
        QTest::newRow("7 050.01 kHz") << quint32(11280016) << 7050.01 << QStringLiteral("7,050.01 ");
        QTest::newRow("one step is below 10 Hz") << quint32(1) << 0.0 << QStringLiteral("0.00 ");
        QTest::newRow("fifteen steps round up to 10 Hz") << quint32(15) << 0.01 << QStringLiteral("0.01 ");
        QTest::newRow("fourteen steps stay below") << quint32(14) << 0.0 << QStringLiteral("0.00 ");
        QTest::newRow("largest count") << quint32(0xFFFFFFFF) << 2684354.56 << QStringLiteral("2,684,354.56 ");
    }
    void frequencyIsABigEndianCountOfSixteenHundredthsKHz()
    {
        QFETCH(quint32, count);
        QFETCH(double, kHz);
        QFETCH(QString, text);
        QCOMPARE(decodeFrequency(count >> 24, (count >> 16) & 0xFF, (count >> 8) & 0xFF, count & 0xFF), count / 1600.0);
        const StatusView v = decode(Record().frequency(0, count).frequency(16, count).bytes);
        QCOMPARE(v.a.kHz, kHz);
        QCOMPARE(v.a.freqText, text);
        QCOMPARE(v.b.kHz, kHz);
        QCOMPARE(v.b.freqText, text);
    }

    void clarifierIsSignedOnesComplement_data()
    {
        QTest::addColumn<int>("high");
        QTest::addColumn<int>("low");
        QTest::addColumn<double>("kHz");
        QTest::addColumn<QString>("text");
        QTest::newRow("00 00") << 0x00 << 0x00 << 0.0 << QStringLiteral("0.00 ");
        QTest::newRow("00 10") << 0x00 << 0x10 << 16 / 1600.0 << QStringLiteral("0.01 ");
        QTest::newRow("03 E8") << 0x03 << 0xE8 << 1000 / 1600.0 << QStringLiteral("0.63 ");
        QTest::newRow("06 40") << 0x06 << 0x40 << 1.0 << QStringLiteral("1.00 ");
        QTest::newRow("7F FF") << 0x7F << 0xFF << 32767 / 1600.0 << QStringLiteral("20.48 ");
        QTest::newRow("80 00") << 0x80 << 0x00 << -32767 / 1600.0 << QStringLiteral("-20.48 ");
        QTest::newRow("FF 00") << 0xFF << 0x00 << -255 / 1600.0 << QStringLiteral("-0.16 ");
        QTest::newRow("F9 BF") << 0xF9 << 0xBF << -1600 / 1600.0 << QStringLiteral("-1.00 ");
        QTest::newRow("FF FF") << 0xFF << 0xFF << 0.0 << QStringLiteral("0.00 ");
    }
    void clarifierIsSignedOnesComplement()
    {
        QFETCH(int, high);
        QFETCH(int, low);
        QFETCH(double, kHz);
        QFETCH(QString, text);
        QCOMPARE(decodeClarifier(high, low), kHz);
        const StatusView v = decode(Record().set(6, high).set(7, low).set(22, high).set(23, low).bytes);
        QCOMPARE(v.a.clarKHz, kHz);
        QCOMPARE(v.a.clarText, text);
        QCOMPARE(v.b.clarKHz, kHz);
        QCOMPARE(v.b.clarText, text);
    }

    void receiveClarifierIsAddedToTheShownFrequency_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<bool>("tx");
        QTest::addColumn<bool>("rx");
        QTest::addColumn<double>("kHz");
        QTest::newRow("clarifier off") << 0 << false << false << 14250.0;
        QTest::newRow("transmit clarifier only") << 1 << true << false << 14250.0;
        QTest::newRow("receive clarifier") << 2 << false << true << 14251.0;
        QTest::newRow("both") << 3 << true << true << 14251.0;
        QTest::newRow("other bits do not count") << 0xFC << false << false << 14250.0;
    }
    void receiveClarifierIsAddedToTheShownFrequency()
    {
        QFETCH(int, flags);
        QFETCH(bool, tx);
        QFETCH(bool, rx);
        QFETCH(double, kHz);
        Record r;
        r.frequency(0, 22800000).set(6, 0x06).set(7, 0x40).set(10, flags);  // +1.00 kHz
        r.frequency(16, 22800000).set(22, 0x06).set(23, 0x40).set(26, flags);
        const StatusView v = decode(r.bytes);
        QCOMPARE(v.a.txClar, tx);
        QCOMPARE(v.a.rxClar, rx);
        QCOMPARE(v.a.kHz, kHz);
        QCOMPARE(v.b.txClar, tx);
        QCOMPARE(v.b.rxClar, rx);
        QCOMPARE(v.b.kHz, kHz);
        QCOMPARE(v.a.flagsByte, flags);
    }

    void eachVfoHasItsOwnClarifierIndications()
    {
        const StatusView v = decode(Record().set(10, 1).set(26, 2).bytes);
        QVERIFY(v.a.txClar);
        QVERIFY(!v.a.rxClar);
        QVERIFY(!v.b.txClar);
        QVERIFY(v.b.rxClar);
    }

    void negativeReceiveClarifierLowersTheFrequency()
    {
        Record r;
        r.frequency(0, 22800000).set(6, 0xF9).set(7, 0xBF).set(10, 2);  // -1.00 kHz
        const StatusView v = decode(r.bytes);
        QCOMPARE(v.a.kHz, 14249.0);
        QCOMPARE(v.a.freqText, QStringLiteral("14,249.00 "));
    }

    void modeTableInOrder_data()
    {
        QTest::addColumn<int>("modeByte");
        QTest::addColumn<int>("nextByte");
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("code");
        const int any[] = {0x00, 0x7F, 0x80, 0xFF};
        for (int next : any) {
            const QByteArray suffix = QByteArray(" next ") + QByteArray::number(next, 16);
            QTest::newRow("0" + suffix) << 0 << next << true << QStringLiteral("LSB") << 0;
            QTest::newRow("1" + suffix) << 1 << next << true << QStringLiteral("USB") << 1;
            QTest::newRow("4" + suffix) << 4 << next << true << QStringLiteral("FM") << 6;
            QTest::newRow("128" + suffix) << 128 << next << true << QStringLiteral("Data USER") << 0;
            QTest::newRow("129" + suffix) << 129 << next << true << QStringLiteral("Data USER") << 0;
            QTest::newRow("255" + suffix) << 255 << next << true << QStringLiteral("Data USER") << 0;
        }
        const int first[] = {0x00, 0x7F};
        const int second[] = {0x80, 0xFF};
        for (int next : first) {
            const QByteArray suffix = QByteArray(" next ") + QByteArray::number(next, 16);
            QTest::newRow("2" + suffix) << 2 << next << true << QStringLiteral("CW N") << 2;
            QTest::newRow("3" + suffix) << 3 << next << true << QStringLiteral("AM") << 4;
            QTest::newRow("5" + suffix) << 5 << next << true << QStringLiteral("RTTY N") << 8;
            QTest::newRow("6" + suffix) << 6 << next << true << QStringLiteral("PKT LSB") << 10;
        }
        for (int next : second) {
            const QByteArray suffix = QByteArray(" next ") + QByteArray::number(next, 16);
            QTest::newRow("2" + suffix) << 2 << next << true << QStringLiteral("CW R") << 3;
            QTest::newRow("3" + suffix) << 3 << next << true << QStringLiteral("AM Sync") << 5;
            QTest::newRow("5" + suffix) << 5 << next << true << QStringLiteral("RTTY R") << 9;
            QTest::newRow("6" + suffix) << 6 << next << true << QStringLiteral("PKT FM") << 11;
        }
        const int outside[] = {7, 8, 16, 64, 100, 127};
        for (int mode : outside) {
            QTest::newRow(QByteArray("outside " + QByteArray::number(mode)).constData())
                << mode << 0 << false << QString() << 0;
            QTest::newRow(QByteArray("outside " + QByteArray::number(mode) + " next 80").constData())
                << mode << 0x80 << false << QString() << 0;
        }
    }
    void modeTableInOrder()
    {
        QFETCH(int, modeByte);
        QFETCH(int, nextByte);
        QFETCH(bool, matches);
        QFETCH(QString, caption);
        QFETCH(int, code);
        const auto m = decodeMode(modeByte, nextByte);
        QCOMPARE(m.has_value(), matches);
        if (matches) {
            QCOMPARE(m->caption, caption);
            QCOMPARE(m->code, code);
            QVERIFY(m->code != 7);
        }
        // Both VFOs use the table: byte 8 with byte 9, byte 24 with byte 25.
        const StatusView v =
            decode(Record().set(8, modeByte).set(9, nextByte).set(24, modeByte).set(25, nextByte).bytes);
        QCOMPARE(v.a.mode.has_value(), matches);
        QCOMPARE(v.b.mode.has_value(), matches);
        if (matches) {
            QCOMPARE(v.a.mode->caption, caption);
            QCOMPARE(v.b.mode->code, code);
        }
        QCOMPARE(v.a.filterByte, nextByte);
        QCOMPARE(v.b.filterByte, nextByte);
    }

    void vfoModesAreDecodedApart()
    {
        const StatusView v = decode(Record().set(8, 1).set(24, 2).set(25, 0x80).bytes);
        QCOMPARE(v.a.mode->caption, QStringLiteral("USB"));
        QCOMPARE(v.b.mode->caption, QStringLiteral("CW R"));
    }

    void repeaterAndAntennaCaptions_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<bool>("rptrVisible");
        QTest::addColumn<QString>("rptrCaption");
        QTest::addColumn<QString>("antCaption");
        QTest::newRow("nothing") << 0x00 << false << QString() << QStringLiteral("  ANT A");
        QTest::newRow("shift plus") << 0x04 << true << QStringLiteral("  RPTR +") << QStringLiteral("  ANT A");
        QTest::newRow("shift minus") << 0x08 << true << QStringLiteral("  RPTR -") << QStringLiteral("  ANT A");
        QTest::newRow("both shifts: minus wins")
            << 0x0C << true << QStringLiteral("  RPTR -") << QStringLiteral("  ANT A");
        QTest::newRow("antenna B") << 0x10 << false << QString() << QStringLiteral("  ANT B");
        QTest::newRow("receive antenna") << 0x20 << false << QString() << QStringLiteral("  ANT Rx");
        QTest::newRow("receive antenna wins over B") << 0x30 << false << QString() << QStringLiteral("  ANT Rx");
        QTest::newRow("clarifier bits only") << 0x03 << false << QString() << QStringLiteral("  ANT A");
        QTest::newRow("everything") << 0xFF << true << QStringLiteral("  RPTR -") << QStringLiteral("  ANT Rx");
    }
    void repeaterAndAntennaCaptions()
    {
        QFETCH(int, flags);
        QFETCH(bool, rptrVisible);
        QFETCH(QString, rptrCaption);
        QFETCH(QString, antCaption);
        const StatusView v = decode(Record().set(10, flags).bytes);
        QCOMPARE(v.rptrVisible, rptrVisible);
        QCOMPARE(v.rptrCaption, rptrCaption);
        QCOMPARE(v.antCaption, antCaption);
    }

    void repeaterAndAntennaFollowVfoAOnly()
    {
        const StatusView v = decode(Record().set(26, 0x3C).bytes);
        QVERIFY(!v.rptrVisible);
        QCOMPARE(v.antCaption, QStringLiteral("  ANT A"));
    }

    void diagnosticDumpsListEachHalfWithItsTotal()
    {
        const StatusView v = decode(counting(32, 1));
        QCOMPARE(v.dumpA, QStringLiteral("16-a Bytes flags = 1+2+3+4+5+6+7+8+9+10+11+12+13+14+15+16+total = 136"));
        QCOMPARE(v.dumpB,
                 QStringLiteral("16-b Bytes flags = 17+18+19+20+21+22+23+24+25+26+27+28+29+30+31+32+total = 392"));
    }

    void diagnosticDumpsOfAShortRecord()
    {
        const StatusView v = decode(bytes({255, 0, 7}));
        QCOMPARE(v.dumpA, QStringLiteral("16-a Bytes flags = 255+0+7+total = 262"));
        QCOMPARE(v.dumpB, QStringLiteral("16-b Bytes flags = total = 0"));
        const StatusView w = decode(counting(18, 1));
        QCOMPARE(w.dumpB, QStringLiteral("16-b Bytes flags = 17+18+total = 35"));
    }

    void emptyReplyMeansNoLinkAndKeepsTheStore()
    {
        StatusRecord store;
        store.b.fill(5);
        const StatusView v = decodeStatus(store, QByteArray());
        QVERIFY(v.noLink);
        QVERIFY(v.dumpA.isEmpty());
        for (int i = 0; i <= 32; ++i)
            QCOMPARE(store.b[i], 5);
    }

    void shortReplyKeepsTheEarlierBytes()
    {
        StatusRecord store;
        decodeStatus(store, Record().frequency(0, 22800000).frequency(16, 11280000).bytes);
        // Now only the first four bytes arrive: bytes 2-4 change, byte 5 and VFO-B keep their values.
        const StatusView v = decodeStatus(store, bytes({0, 0, 0, 0}));
        QCOMPARE(store.b[5], 0x80);
        QCOMPARE(v.a.kHz, 0.08);  // a count of 0x80
        QCOMPARE(v.b.kHz, 7050.0);
        QVERIFY(!v.noLink);
    }

    void longReplyIsCutAtByte32()
    {
        StatusRecord store;
        const StatusView v = decodeStatus(store, counting(48, 1));
        QCOMPARE(store.b[32], 32);
        QCOMPARE(v.dumpB,
                 QStringLiteral("16-b Bytes flags = 17+18+19+20+21+22+23+24+25+26+27+28+29+30+31+32+total = 392"));
    }

    void randomRepliesOfEveryLengthNeverCrash()
    {
        QRandomGenerator random(20240601);
        for (int length = 0; length <= 100; ++length) {
            for (int round = 0; round < 20; ++round) {
                QByteArray reply(length, '\0');
                for (char& c : reply)
                    c = static_cast<char>(random.bounded(256));
                StatusRecord store;
                store.b[0] = -1;
                const StatusView v = decodeStatus(store, reply);
                QCOMPARE(v.noLink, length == 0);
                QCOMPARE(store.b[0], -1);  // the store counts from 1
                for (int i = 1; i <= std::min(length, 32); ++i)
                    QCOMPARE(store.b[i], int(static_cast<quint8>(reply[i - 1])));
                if (length > 0) {
                    QVERIFY(v.a.freqText.endsWith(u' '));
                    QVERIFY(v.a.kHz >= -21.0);
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestStatusDecoder)
#include "test_status_decoder.moc"
