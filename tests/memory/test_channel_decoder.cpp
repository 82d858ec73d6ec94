// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelBytes.h"
#include "ChannelDecoder.h"
#include "ChannelNames.h"

#include <QTest>

using ChannelBytes::Channel;

class TestChannelDecoder : public QObject {
    Q_OBJECT
private slots:
    void gridNames_data()
    {
        QTest::addColumn<int>("channel");
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QString>("label");
        QTest::newRow("1") << 1 << " Chan 1"
                           << " Chan 1";
        QTest::newRow("7") << 7 << " Chan 7"
                           << " Chan 7";
        QTest::newRow("99") << 99 << " Chan 99"
                            << " Chan 99";
        QTest::newRow("100") << 100 << " P 1"
                             << " P1";
        QTest::newRow("102") << 102 << " P 3"
                             << " P3";
        QTest::newRow("108") << 108 << " P 9"
                             << " P9";
        QTest::newRow("109") << 109 << " QMB 1"
                             << " QMB 1";
        QTest::newRow("110") << 110 << " QMB 2"
                             << " QMB 2";
        QTest::newRow("113") << 113 << " QMB 5"
                             << " QMB 5";
    }
    void gridNames()
    {
        QFETCH(int, channel);
        QFETCH(QString, grid);
        QFETCH(QString, label);
        QCOMPARE(gridChannelName(channel), grid);
        QCOMPARE(labelChannelName(channel), label);
    }

    void channel100_isP1InTheGridAndP1WithoutBlankInTheLabel()
    {
        QCOMPARE(gridChannelName(100), QStringLiteral(" P 1"));
        QCOMPARE(labelChannelName(100), QStringLiteral(" P1"));
    }

    void clarifier_data()
    {
        QTest::addColumn<int>("high");
        QTest::addColumn<int>("low");
        QTest::addColumn<double>("kHz");
        QTest::newRow("80 00 is -20.48") << 0x80 << 0x00 << -20.48;
        QTest::newRow("00 00 is 0") << 0x00 << 0x00 << 0.0;
        QTest::newRow("FF FF is -1/1600") << 0xFF << 0xFF << -1.0 / 1600;
        QTest::newRow("7F FF is the largest") << 0x7F << 0xFF << 32767.0 / 1600;
        QTest::newRow("03 E8 is 0.625") << 0x03 << 0xE8 << 0.625;
    }
    void clarifier()
    {
        QFETCH(int, high);
        QFETCH(int, low);
        QFETCH(double, kHz);
        QCOMPARE(decodeChannelClarifier(high, low), kHz);
    }

    void clarifier8000_showsMinus20_48()
    {
        Channel c;
        c.count = 22652320;
        c.clar = static_cast<qint16>(0x8000);
        const ChannelDecode d = decodeChannel(ChannelBytes::record(c), {});
        QCOMPARE(d.clarKHz, -20.48);
        QCOMPARE(d.clarText, QStringLiteral("-20.48 "));
    }

    void clarifierZero_showsZero()
    {
        Channel c;
        c.count = 22652320;
        const ChannelDecode d = decodeChannel(ChannelBytes::record(c), {});
        QCOMPARE(d.clarKHz, 0.0);
        QCOMPARE(d.clarText, QStringLiteral("0.00 "));
    }

    void frequency0159A5A0_shows14157_70()
    {
        Channel c;
        c.count = 0x0159A5A0;
        QCOMPARE(c.count, quint32(22652320));
        const ChannelDecode d = decodeChannel(ChannelBytes::record(c), {});
        QCOMPARE(d.freqText, QStringLiteral("14,157.70 "));
        QCOMPARE(d.shownKHz, 14157.70);
    }

    void shownFrequency_isTheSumOfFrequencyAndClarifier()
    {
        Channel c;
        c.count = 22652320;  // 14 157.70
        c.clar = 1600;       // +1.00
        QCOMPARE(decodeChannel(ChannelBytes::record(c), {}).freqText, QStringLiteral("14,158.70 "));
        c.clar = -1600;
        QCOMPARE(decodeChannel(ChannelBytes::record(c), {}).freqText, QStringLiteral("14,156.70 "));
    }

    void shownFrequency_roundsDownTo10HzAfterAddingOneHertz()
    {
        // 16 counts are 10 Hz; the added 0.001 kHz (1.6 counts) lifts 15 counts over the step.
        Channel c;
        c.count = 22652320 + 14;  // 14 157.70875 kHz
        QCOMPARE(decodeChannel(ChannelBytes::record(c), {}).freqText, QStringLiteral("14,157.70 "));
        c.count = 22652320 + 15;  // 14 157.709375 kHz
        QCOMPARE(decodeChannel(ChannelBytes::record(c), {}).freqText, QStringLiteral("14,157.71 "));
    }

    void smallFrequency_usesTheShortPattern()
    {
        Channel c;
        c.count = 1500000;  // 937.50 kHz
        QCOMPARE(decodeChannel(ChannelBytes::record(c), {}).freqText, QStringLiteral("937.50 "));
    }

    void modeTable_data()
    {
        QTest::addColumn<int>("modeByte");
        QTest::addColumn<int>("qualifier");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("code");
        QTest::newRow("LSB") << 0 << 0 << "LSB" << 0;
        QTest::newRow("LSB any") << 0 << 0x80 << "LSB" << 0;
        QTest::newRow("USB") << 1 << 0 << "USB" << 1;
        QTest::newRow("USB any") << 1 << 0x80 << "USB" << 1;
        QTest::newRow("CW N") << 2 << 0 << "CW N" << 2;
        QTest::newRow("CW R") << 2 << 0x80 << "CW R" << 3;
        QTest::newRow("AM") << 3 << 0 << "AM" << 4;
        QTest::newRow("AM Sync") << 3 << 0x80 << "AM Sync" << 5;
        QTest::newRow("FM") << 4 << 0 << "FM" << 6;
        QTest::newRow("FM any") << 4 << 0x80 << "FM" << 6;
        QTest::newRow("RTTY N") << 5 << 0 << "RTTY N" << 8;
        QTest::newRow("RTTY R") << 5 << 0x80 << "RTTY R" << 9;
        QTest::newRow("PKT LSB") << 6 << 0 << "PKT LSB" << 10;
        QTest::newRow("PKT FM") << 6 << 0x80 << "PKT FM" << 11;
        QTest::newRow("bit 7 alone") << 0x80 << 0 << "DataUSR" << 1;
        QTest::newRow("bit 7 with USB") << 0x81 << 0 << "DataUSR" << 1;
        QTest::newRow("bit 7 with PKT R") << 0x86 << 0x80 << "DataUSR" << 1;
        QTest::newRow("FF") << 0xFF << 0 << "DataUSR" << 1;
        // The qualifier is only bit 7 of the next byte: the filter bits do not count.
        QTest::newRow("CW N with filter bits") << 2 << 0x55 << "CW N" << 2;
    }
    void modeTable()
    {
        QFETCH(int, modeByte);
        QFETCH(int, qualifier);
        QFETCH(QString, caption);
        QFETCH(int, code);
        const ChannelMode m = decodeChannelMode(modeByte, qualifier, {QStringLiteral("previous"), 99});
        QCOMPARE(m.caption, caption);
        QCOMPARE(m.code, code);
    }

    void modeByte81_showsDataUsrWithCode1()
    {
        Channel c;
        c.mode = 0x81;
        const ChannelDecode d = decodeChannel(ChannelBytes::record(c), {});
        QCOMPARE(d.mode.caption, QStringLiteral("DataUSR"));
        QCOMPARE(d.mode.code, 1);
    }

    void modeCode7_isNeverProduced()
    {
        for (int m = 0; m < 256; ++m)
            for (int q : {0, 0x80})
                QVERIFY(decodeChannelMode(m, q, {QStringLiteral("x"), -1}).code != 7);
    }

    void modeByteOutsideTable_keepsCaptionAndCode_data()
    {
        QTest::addColumn<int>("modeByte");
        for (int m : {7, 8, 0x10, 0x7F})
            QTest::addRow("%d", m) << m;
    }
    void modeByteOutsideTable_keepsCaptionAndCode()
    {
        QFETCH(int, modeByte);
        Channel c;
        c.mode = modeByte;
        const ChannelDecode d = decodeChannel(ChannelBytes::record(c), {QStringLiteral("AM Sync"), 5});
        QCOMPARE(d.mode.caption, QStringLiteral("AM Sync"));
        QCOMPARE(d.mode.code, 5);
    }

    void antenna_data()
    {
        QTest::addColumn<int>("byte9");
        QTest::addColumn<QString>("antenna");
        QTest::newRow("clear is A") << 0x00 << "A";
        QTest::newRow("bit 4 is B") << 0x10 << "B";
        QTest::newRow("bit 5 is Rx") << 0x20 << "Rx";
        QTest::newRow("bits 4 and 5: Rx replaces B") << 0x30 << "Rx";
        QTest::newRow("other bits ignored") << 0xCF << "A";
    }
    void antenna()
    {
        QFETCH(int, byte9);
        QFETCH(QString, antenna);
        Channel c;
        c.antenna = byte9;
        QCOMPARE(decodeChannel(ChannelBytes::record(c), {}).antenna, antenna);
    }

    void mask_isBit7OfByte0()
    {
        Channel c;
        QVERIFY(!decodeChannel(ChannelBytes::record(c), {}).masked);
        c.masked = true;
        QVERIFY(decodeChannel(ChannelBytes::record(c), {}).masked);
        QByteArray r = ChannelBytes::record({});
        r[0] = char(0x7F);  // every other bit: still not masked
        QVERIFY(!decodeChannel(r, {}).masked);
    }

    void colours_areTheMaskedAndUnmaskedValues()
    {
        QCOMPARE(MemoryColour::of(true), quint32(0x0040C0));
        QCOMPARE(MemoryColour::of(false), quint32(0x80C0FF));
        QCOMPARE(MemoryColour::Masked, quint32(16576));
    }

    void onlyTheFirstTenBytesAreDecoded()
    {
        QByteArray a = ChannelBytes::record(ChannelBytes::sample(12));
        QByteArray b = a;
        for (int i = 10; i < 16; ++i)
            b[i] = char(0xFF - i);
        const ChannelDecode da = decodeChannel(a, {});
        const ChannelDecode db = decodeChannel(b, {});
        QCOMPARE(da.freqText, db.freqText);
        QCOMPARE(da.mode.caption, db.mode.caption);
        QCOMPARE(decodeChannel(a.left(10), {}).freqText, da.freqText);
    }
};

QTEST_GUILESS_MAIN(TestChannelDecoder)
#include "test_channel_decoder.moc"
