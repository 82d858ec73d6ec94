// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelDecoder.h"
#include "MemRecord.h"

#include <QTest>

namespace {
QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

MemoryRow row(const QString& chan, const QString& freq, const QString& mode, const QString& clar, const QString& ant,
              const QString& mde, quint32 colour = MemoryColour::Unmasked)
{
    MemoryRow r;
    r.cells = {chan, freq, mode, clar, ant, mde};
    r.colour = colour;
    return r;
}
}  // namespace

class TestMemRecord : public QObject {
    Q_OBJECT
private slots:
    void encode_isExactly29LittleEndianBytes()
    {
        MemRecord r;
        r.chan = " Chan 12";
        r.freq = 1415770.0f;
        r.mode = "USB    ";
        r.clar = -74.0f;
        r.ant = "B ";
        r.mde = 1;
        r.masked = -1;
        const QByteArray expected = QByteArray(" Chan 12") + hex("d0d2ac49") + QByteArray("USB    ") + hex("000094c2") +
                                    QByteArray("B ") + hex("0100") + hex("ffff");
        QCOMPARE(expected.size(), 29);
        QCOMPARE(r.encode(), expected);
        QCOMPARE(MemRecord::decode(expected), r);
    }

    void clearedRecord_isSpacesAndZerosNotMasked()
    {
        const QByteArray expected = QByteArray(8, ' ') + hex("00000000") + QByteArray(7, ' ') + hex("00000000") +
                                    QByteArray(2, ' ') + hex("0000") + hex("0000");
        QCOMPARE(MemRecord{}.encode(), expected);
        QVERIFY(!MemRecord{}.isMasked());
    }

    void shortBytes_decodeAsAClearedRecordBeyondTheirEnd()
    {
        QCOMPARE(MemRecord::decode({}), MemRecord{});
        const MemRecord r = MemRecord::decode(QByteArray(" Chan 9"));
        QCOMPARE(r.chan, QByteArray(" Chan 9 "));
        QCOMPARE(r.freq, 0.0f);
        QCOMPARE(r.mode, QByteArray(7, ' '));
        QCOMPARE(r.masked, qint16(0));
    }

    void masked_isExactlyMinusOne_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("masked");
        QTest::newRow("FF FF") << hex("ffff") << true;
        QTest::newRow("01 00 (1)") << hex("0100") << false;
        QTest::newRow("00 00") << hex("0000") << false;
        QTest::newRow("FE FF (-2)") << hex("feff") << false;
        QTest::newRow("FF 00 (255)") << hex("ff00") << false;
    }
    void masked_isExactlyMinusOne()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, masked);
        QByteArray rec = MemRecord{}.encode();
        rec.replace(27, 2, bytes);
        const MemRecord r = MemRecord::decode(rec);
        QCOMPARE(r.isMasked(), masked);
        QCOMPARE(rowFromRecord(r).colour, masked ? MemoryColour::Masked : MemoryColour::Unmasked);
    }

    void maskedValueOne_loadsAsUnmasked()
    {
        MemRecord r;
        r.masked = 1;
        QCOMPARE(rowFromRecord(MemRecord::decode(r.encode())).colour, MemoryColour::Unmasked);
    }

    void chanField_isPaddedOrCutTo8()
    {
        QCOMPARE(fixedText(QStringLiteral(" P 1"), 8), QByteArray(" P 1    "));
        QCOMPARE(fixedText(QStringLiteral(" Chan 12"), 8), QByteArray(" Chan 12"));
        QCOMPARE(fixedText(QStringLiteral(" Chan 123456"), 8), QByteArray(" Chan 12"));
        QCOMPARE(fixedText(QStringLiteral("AM Sync and more"), 7), QByteArray("AM Sync"));
        QCOMPARE(fixedText(QString(), 2), QByteArray("  "));
    }

    void record100_chanIsP1AndFourSpaces_andLoadsBackAsP1()
    {
        QString reason;
        const auto r = recordFromRow(row(" P 1", "7,050.00 ", "LSB", "0.00 ", "A", "0"), &reason);
        QVERIFY2(r, qPrintable(reason));
        QCOMPARE(r->chan, QByteArray(" P 1    "));
        QCOMPARE(r->encode().left(8), QByteArray(" P 1    "));
        QCOMPARE(rowFromRecord(*r).cells[0], QStringLiteral(" P 1"));
    }

    void rowToRecord_readsNumbersWithThousandsSeparators()
    {
        QString reason;
        const auto r = recordFromRow(row(" Chan 12", "14,157.70 ", "AM Sync", "-0.74 ", "Rx", "5"), &reason);
        QVERIFY2(r, qPrintable(reason));
        QCOMPARE(r->freq, 1415770.0f);
        QCOMPARE(r->clar, -74.0f);
        QCOMPARE(r->mode, QByteArray("AM Sync"));
        QCOMPARE(r->ant, QByteArray("Rx"));
        QCOMPARE(r->mde, qint16(5));
        QCOMPARE(r->masked, qint16(0));
    }

    void rowToRecord_maskedColourGivesMinusOne()
    {
        QString reason;
        const auto r =
            recordFromRow(row(" Chan 1", "7,000.00 ", "CW N", "0.00 ", "A", "2", MemoryColour::Masked), &reason);
        QVERIFY(r);
        QCOMPARE(r->masked, qint16(-1));
        QCOMPARE(r->encode().mid(27), hex("ffff"));
    }

    void rowToRecord_modeCodeIsRounded()
    {
        QString reason;
        QCOMPARE(recordFromRow(row(" Chan 1", "1.00 ", "", "0.00 ", "", "10.6"), &reason)->mde, qint16(11));
        QCOMPARE(recordFromRow(row(" Chan 1", "1.00 ", "", "0.00 ", "", ""), &reason)->mde, qint16(0));
    }

    void rowToRecord_emptyOrNonNumericFrequencyOrClarifierFails_data()
    {
        QTest::addColumn<QString>("freq");
        QTest::addColumn<QString>("clar");
        QTest::newRow("empty frequency") << ""
                                         << "0.00 ";
        QTest::newRow("blank frequency") << "   "
                                         << "0.00 ";
        QTest::newRow("text frequency") << "No Link  "
                                        << "0.00 ";
        QTest::newRow("empty clarifier") << "14,000.00 "
                                         << "";
        QTest::newRow("text clarifier") << "14,000.00 "
                                        << "abc";
    }
    void rowToRecord_emptyOrNonNumericFrequencyOrClarifierFails()
    {
        QFETCH(QString, freq);
        QFETCH(QString, clar);
        QString reason;
        QVERIFY(!recordFromRow(row(" Chan 1", freq, "USB", clar, "A", "1"), &reason));
        QVERIFY(!reason.isEmpty());
    }

    void recordToRow_showsTheCellsAndColour()
    {
        MemRecord r;
        r.chan = " Chan 7 ";
        r.freq = 702500.0f;
        r.mode = "CW R   ";
        r.clar = 54.0f;
        r.ant = "B ";
        r.mde = 3;
        r.masked = -1;
        const MemoryRow w = rowFromRecord(r);
        QCOMPARE(w.cells[0], QStringLiteral(" Chan 7"));
        QCOMPARE(w.cells[1], QStringLiteral("7,025.00 "));
        QCOMPARE(w.cells[2], QStringLiteral("CW R"));
        QCOMPARE(w.cells[3], QStringLiteral("0.54 "));
        QCOMPARE(w.cells[4], QStringLiteral("B"));
        QCOMPARE(w.cells[5], QStringLiteral("3"));
        QCOMPARE(w.colour, MemoryColour::Masked);
    }

    void recordToRow_clearedRecordShowsBlankTextsAndZeros()
    {
        const MemoryRow w = rowFromRecord(MemRecord{});
        QCOMPARE(w.cells[0], QStringLiteral(" "));
        QCOMPARE(w.cells[1], QStringLiteral("0.00 "));
        QCOMPARE(w.cells[2], QString());
        QCOMPARE(w.cells[3], QStringLiteral("0.00 "));
        QCOMPARE(w.cells[4], QString());
        QCOMPARE(w.cells[5], QStringLiteral("0"));
        QCOMPARE(w.colour, MemoryColour::Unmasked);
    }

    void singlePrecision_holdsEvery10HzStepUpTo30MHz()
    {
        for (qint64 tenHz = 0; tenHz <= 3000000; tenHz += 997) {
            const QString text = rowFromRecord([&] {
                                     MemRecord r;
                                     r.freq = static_cast<float>(tenHz);
                                     return r;
                                 }())
                                     .cells[1];
            QString reason;
            const auto back = recordFromRow(row(" Chan 1", text, "", "0.00 ", "", "0"), &reason);
            QVERIFY(back);
            QCOMPARE(qint64(back->freq), tenHz);
        }
    }

    void cellNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<double>("value");
        QTest::newRow("plain") << "937.50 " << true << 937.5;
        QTest::newRow("thousands") << "14,157.70 " << true << 14157.7;
        QTest::newRow("negative") << "-20.48 " << true << -20.48;
        QTest::newRow("leading blank") << " 1.00" << true << 1.0;
        QTest::newRow("empty") << "" << false << 0.0;
        QTest::newRow("letters") << "abc" << false << 0.0;
        QTest::newRow("trailing letters") << "14.0 kHz" << false << 0.0;
    }
    void cellNumber()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        QFETCH(double, value);
        const auto v = ::cellNumber(text);
        QCOMPARE(bool(v), ok);
        if (ok)
            QCOMPARE(*v, value);
    }

    void randomBytes_decodeAndShowWithoutCrashing()
    {
        quint32 seed = 12345;
        for (int i = 0; i < 2000; ++i) {
            QByteArray b(29, '\0');
            for (char& c : b) {
                seed = seed * 1103515245u + 12345u;
                c = char(seed >> 16);
            }
            const MemoryRow w = rowFromRecord(MemRecord::decode(b));
            QVERIFY(!w.cells[1].isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(TestMemRecord)
#include "test_mem_record.moc"
