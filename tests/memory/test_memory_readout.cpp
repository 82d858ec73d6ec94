// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelBytes.h"
#include "MemoryReadout.h"

#include <QTest>

class TestMemoryReadout : public QObject {
    Q_OBJECT
private slots:
    void fullReply_gives113RecordsAfterSkipping55Bytes()
    {
        const QByteArray reply = ChannelBytes::fullReadout();
        QCOMPARE(reply.size(), 1863);
        const QList<ChannelRecord> records = splitAllChannels(reply);
        QCOMPARE(records.size(), 113);
        for (int n = 1; n <= 113; ++n) {
            QCOMPARE(records[n - 1].channel, n);
            QCOMPARE(records[n - 1].bytes, ChannelBytes::record(ChannelBytes::sample(n)));
        }
    }

    void firstRecordStartsAtByte56()
    {
        QByteArray reply(55, '\0');
        reply += QByteArray(16, char(0x11));
        const QList<ChannelRecord> records = splitAllChannels(reply);
        QCOMPARE(records.size(), 1);
        QCOMPARE(records[0].bytes, QByteArray(16, char(0x11)));
        // Changing byte 55 (1-based) does not change record 1; changing byte 56 does.
        QByteArray other = reply;
        other[54] = char(0x99);
        QCOMPARE(splitAllChannels(other)[0].bytes, records[0].bytes);
        other[55] = char(0x99);
        QVERIFY(splitAllChannels(other)[0].bytes != records[0].bytes);
    }

    void replyEndingInsideARecord_stopsAtTheLastCompleteRecord_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("records");
        QTest::newRow("header only") << 55 << 0;
        QTest::newRow("inside the header") << 30 << 0;
        QTest::newRow("one byte short of record 1") << 70 << 0;
        QTest::newRow("record 1 exactly") << 71 << 1;
        QTest::newRow("inside record 2") << 80 << 1;
        QTest::newRow("inside record 60") << 55 + 59 * 16 + 9 << 59;
        QTest::newRow("one byte short of the end") << 1862 << 112;
    }
    void replyEndingInsideARecord_stopsAtTheLastCompleteRecord()
    {
        QFETCH(int, length);
        QFETCH(int, records);
        const QByteArray reply = ChannelBytes::fullReadout().left(length);
        const QList<ChannelRecord> r = splitAllChannels(reply);
        QCOMPARE(r.size(), records);
        for (const ChannelRecord& c : r)
            QCOMPARE(c.bytes.size(), 16);
    }

    void oversizedReply_takesOnly113Records()
    {
        const QByteArray reply = ChannelBytes::fullReadout() + QByteArray(100, char(0x42));
        const QList<ChannelRecord> r = splitAllChannels(reply);
        QCOMPARE(r.size(), 113);
        QCOMPARE(r.last().channel, 113);
    }

    void emptyReply_givesNoRecords() { QVERIFY(splitAllChannels({}).isEmpty()); }

    void singleChannel_startsAtByte1()
    {
        const QByteArray rec = ChannelBytes::record(ChannelBytes::sample(3));
        QCOMPARE(singleChannelRecord(rec), std::optional<QByteArray>(rec));
        QCOMPARE(singleChannelRecord(rec + QByteArray(5, 'x')), std::optional<QByteArray>(rec));
    }

    void singleChannel_shortReplyHasNoRecord()
    {
        const QByteArray rec = ChannelBytes::record(ChannelBytes::sample(3));
        QVERIFY(!singleChannelRecord(rec.left(15)));
        QVERIFY(!singleChannelRecord({}));
    }
};

QTEST_GUILESS_MAIN(TestMemoryReadout)
#include "test_memory_readout.moc"
