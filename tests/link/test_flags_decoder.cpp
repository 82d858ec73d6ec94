// SPDX-License-Identifier: GPL-3.0-or-later
#include "FlagsDecoder.h"
#include "LinkTestBytes.h"

#include <QRandomGenerator>
#include <QTest>

namespace {
FlagsView decodeSix(int arg, const QByteArray& six)
{
    return decodeFlags(arg, static_cast<int>(six.size()), six);
}

QByteArray withByte(int position, int value)
{
    QByteArray six(6, '\0');
    six[position - 1] = static_cast<char>(value);
    return six;
}

// The indications of a view as one list of names, so a table can say which ones are on.
QStringList shown(const FlagsView& v)
{
    QStringList on;
    if (v.split)
        on << QStringLiteral("SPLIT");
    if (v.dual)
        on << QStringLiteral("DUAL");
    if (v.xmit)
        on << QStringLiteral("XMIT");
    if (v.vfo)
        on << QStringLiteral("VFO");
    if (v.mem)
        on << QStringLiteral("MEM");
    if (v.mtun)
        on << QStringLiteral("M-TUN");
    if (v.qmb)
        on << QStringLiteral("QMB");
    if (v.tuner)
        on << QStringLiteral("TUNER");
    if (v.lockVisible)
        on << QStringLiteral("lock");
    if (v.vfoAMuted)
        on << QStringLiteral("A muted");
    if (v.vfoBMuted)
        on << QStringLiteral("B muted");
    return on;
}
}  // namespace

class TestFlagsDecoder : public QObject {
    Q_OBJECT
private slots:
    void byte3Value0x0CShowsABLk()
    {
        const FlagsView v = decodeSix(1, withByte(3, 0x0C));
        QVERIFY(v.decoded);
        QVERIFY(v.lockVisible);
        QCOMPARE(v.lockCaption, QStringLiteral("A/B Lk"));
    }

    void everyFlagBit_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("mask");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("byte 1 bit 0") << 1 << 0x01 << QStringList{QStringLiteral("SPLIT")};
        QTest::newRow("byte 1 bit 1") << 1 << 0x02 << QStringList{QStringLiteral("DUAL")};
        QTest::newRow("byte 1 bit 2") << 1 << 0x04 << QStringList{};
        QTest::newRow("byte 1 bit 3") << 1 << 0x08 << QStringList{};
        QTest::newRow("byte 1 bit 4") << 1 << 0x10 << QStringList{};
        QTest::newRow("byte 1 bit 5") << 1 << 0x20 << QStringList{};
        QTest::newRow("byte 1 bit 6") << 1 << 0x40 << QStringList{QStringLiteral("A muted")};
        QTest::newRow("byte 1 bit 7") << 1 << 0x80 << QStringList{QStringLiteral("XMIT")};
        QTest::newRow("byte 2 bit 0") << 2 << 0x01 << QStringList{};
        QTest::newRow("byte 2 bit 1") << 2 << 0x02 << QStringList{};
        QTest::newRow("byte 2 bit 2") << 2 << 0x04 << QStringList{};
        QTest::newRow("byte 2 bit 3") << 2 << 0x08 << QStringList{QStringLiteral("QMB")};
        QTest::newRow("byte 2 bit 4") << 2 << 0x10 << QStringList{QStringLiteral("M-TUN")};
        QTest::newRow("byte 2 bit 5") << 2 << 0x20 << QStringList{QStringLiteral("VFO")};
        QTest::newRow("byte 2 bit 6") << 2 << 0x40 << QStringList{QStringLiteral("MEM")};
        QTest::newRow("byte 2 bit 7") << 2 << 0x80 << QStringList{};
        QTest::newRow("byte 3 bit 0") << 3 << 0x01 << QStringList{};
        QTest::newRow("byte 3 bit 1") << 3 << 0x02 << QStringList{QStringLiteral("TUNER")};
        QTest::newRow("byte 3 bit 2") << 3 << 0x04 << QStringList{QStringLiteral("lock")};
        QTest::newRow("byte 3 bit 3") << 3 << 0x08 << QStringList{QStringLiteral("lock")};
        QTest::newRow("byte 3 bit 4") << 3 << 0x10 << QStringList{};
        QTest::newRow("byte 3 bit 5") << 3 << 0x20 << QStringList{};
        QTest::newRow("byte 3 bit 6") << 3 << 0x40 << QStringList{};
        QTest::newRow("byte 3 bit 7") << 3 << 0x80 << QStringList{};
        QTest::newRow("byte 4 all") << 4 << 0xFF << QStringList{};
        QTest::newRow("byte 5 all") << 5 << 0xFF << QStringList{};
        QTest::newRow("byte 6 bit 0") << 6 << 0x01 << QStringList{QStringLiteral("B muted")};
        QTest::newRow("byte 6 bit 1") << 6 << 0x02 << QStringList{QStringLiteral("A muted")};
        QTest::newRow("byte 6 bits 2-7") << 6 << 0xFC << QStringList{};
    }
    void everyFlagBit()
    {
        QFETCH(int, position);
        QFETCH(int, mask);
        QFETCH(QStringList, expected);
        const FlagsView v = decodeSix(1, withByte(position, mask));
        QVERIFY(v.decoded);
        QVERIFY(!v.markV);
        QCOMPARE(shown(v), expected);
    }

    void lockCaptions_data()
    {
        QTest::addColumn<int>("byte3");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<QString>("caption");
        QTest::newRow("no lock") << 0x00 << false << QString();
        QTest::newRow("A only") << 0x08 << true << QStringLiteral("A Lock");
        QTest::newRow("B only") << 0x04 << true << QStringLiteral("B Lock");
        QTest::newRow("both") << 0x0C << true << QStringLiteral("A/B Lk");
        QTest::newRow("both with tuner") << 0x0E << true << QStringLiteral("A/B Lk");
        QTest::newRow("tuner only") << 0x02 << false << QString();
    }
    void lockCaptions()
    {
        QFETCH(int, byte3);
        QFETCH(bool, visible);
        QFETCH(QString, caption);
        const FlagsView v = decodeSix(1, withByte(3, byte3));
        QCOMPARE(v.lockVisible, visible);
        QCOMPARE(v.lockCaption, caption);
    }

    void mutedFrames_data()
    {
        QTest::addColumn<int>("byte1");
        QTest::addColumn<int>("byte6");
        QTest::addColumn<QString>("frameA");
        QTest::addColumn<QString>("frameB");
        QTest::newRow("none") << 0x00 << 0x00 << QStringLiteral(" VFO-A ") << QStringLiteral(" VFO-B ");
        QTest::newRow("A by byte 1") << 0x40 << 0x00 << QStringLiteral(" VFO-A MUTED ") << QStringLiteral(" VFO-B ");
        QTest::newRow("A by byte 6") << 0x00 << 0x02 << QStringLiteral(" VFO-A MUTED ") << QStringLiteral(" VFO-B ");
        QTest::newRow("A by both") << 0x40 << 0x02 << QStringLiteral(" VFO-A MUTED ") << QStringLiteral(" VFO-B ");
        QTest::newRow("B") << 0x00 << 0x01 << QStringLiteral(" VFO-A ") << QStringLiteral(" VFO-B MUTED ");
        QTest::newRow("A and B") << 0x40 << 0x01 << QStringLiteral(" VFO-A MUTED ") << QStringLiteral(" VFO-B MUTED ");
        QTest::newRow("byte 6 both") << 0x00 << 0x03 << QStringLiteral(" VFO-A MUTED ")
                                     << QStringLiteral(" VFO-B MUTED ");
    }
    void mutedFrames()
    {
        QFETCH(int, byte1);
        QFETCH(int, byte6);
        QFETCH(QString, frameA);
        QFETCH(QString, frameB);
        const FlagsView v = decodeSix(1, bytes({byte1, 0, 0, 0, 0, byte6}));
        QCOMPARE(v.frameA, frameA);
        QCOMPARE(v.frameB, frameB);
    }

    void dumpListsTheSixValues()
    {
        const FlagsView v = decodeSix(1, bytes({1, 2, 3, 4, 5, 255}));
        QCOMPARE(v.dump, QStringLiteral(" 6 Bytes flags = 1+2+3+4+5+255+"));
    }

    void markVAnswerAtStartUpOnlySetsTheTitle()
    {
        const FlagsView v = decodeSix(0, bytes({0xFF, 0xFF, 0xFF, 3, 0x93, 0xFF}));
        QVERIFY(v.decoded);
        QVERIFY(v.markV);
        QVERIFY(shown(v).isEmpty());
        QVERIFY(v.lockCaption.isEmpty());
        QVERIFY(v.frameA.isEmpty());
        QCOMPARE(v.dump, QStringLiteral(" 6 Bytes flags = 255+255+255+3+147+255+"));
        QCOMPARE(MarkVTitle, QStringLiteral(" FT-1000 MP Mark-V"));
    }

    void modelCheckNeedsArgumentZeroAndBothBytes_data()
    {
        QTest::addColumn<int>("arg");
        QTest::addColumn<int>("byte4");
        QTest::addColumn<int>("byte5");
        QTest::addColumn<bool>("markV");
        QTest::newRow("start-up, Mark-V") << 0 << 3 << 0x93 << true;
        QTest::newRow("poll, Mark-V bytes") << 1 << 3 << 0x93 << false;
        QTest::newRow("other argument") << 2 << 3 << 0x93 << false;
        QTest::newRow("byte 4 differs") << 0 << 2 << 0x93 << false;
        QTest::newRow("byte 5 differs") << 0 << 3 << 0x92 << false;
        QTest::newRow("plain MP") << 0 << 0 << 0 << false;
    }
    void modelCheckNeedsArgumentZeroAndBothBytes()
    {
        QFETCH(int, arg);
        QFETCH(int, byte4);
        QFETCH(int, byte5);
        QFETCH(bool, markV);
        const FlagsView v = decodeSix(arg, bytes({0x01, 0, 0, byte4, byte5, 0}));
        QCOMPARE(v.markV, markV);
        QCOMPARE(v.split, !markV);  // when the model check does not apply, the flags are decoded
    }

    void otherLengthsChangeNothing_data()
    {
        QTest::addColumn<int>("waiting");
        QTest::addColumn<int>("length");
        QTest::newRow("5 waiting") << 5 << 5;
        QTest::newRow("7 waiting") << 7 << 7;
        QTest::newRow("nothing") << 0 << 0;
        QTest::newRow("6 counted, fewer read") << 6 << 3;
        QTest::newRow("7 counted, 6 read") << 7 << 6;
    }
    void otherLengthsChangeNothing()
    {
        QFETCH(int, waiting);
        QFETCH(int, length);
        const FlagsView v = decodeFlags(0, waiting, QByteArray(length, '\xFF'));
        QVERIFY(!v.decoded);
        QVERIFY(v.dump.isEmpty());
        QVERIFY(shown(v).isEmpty());
        QVERIFY(!v.markV);
    }

    void sixCountedThenMoreReadUsesTheFirstSix()
    {
        const FlagsView v = decodeFlags(1, 6, bytes({1, 0, 0, 0, 0, 0, 0xFF}));
        QVERIFY(v.decoded);
        QCOMPARE(v.dump, QStringLiteral(" 6 Bytes flags = 1+0+0+0+0+0+"));
    }

    void randomRepliesOfEveryLengthNeverCrash()
    {
        QRandomGenerator random(6);
        for (int length = 0; length <= 100; ++length) {
            for (int round = 0; round < 20; ++round) {
                QByteArray reply(length, '\0');
                for (char& c : reply)
                    c = static_cast<char>(random.bounded(256));
                const int arg = random.bounded(2);
                const FlagsView asCounted = decodeFlags(arg, length, reply);
                QCOMPARE(asCounted.decoded, length == 6);
                // A count that disagrees with what was read must not reach past the bytes.
                const FlagsView claimsSix = decodeFlags(arg, 6, reply);
                QCOMPARE(claimsSix.decoded, length >= 6);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestFlagsDecoder)
#include "test_flags_decoder.moc"
