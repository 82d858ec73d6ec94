// SPDX-License-Identifier: GPL-3.0-or-later
// The text dialect's values: mode digits both ways, the S-meter scale, and the 38-character
// information record field by field.

#include "CatCommand.h"
#include "TextDialect.h"

#include <QTest>
#include <optional>

namespace {
// The record's fields: name, first position, length.
struct Field {
    const char* name;
    int at;
    int length;
};
constexpr Field InfoLayout[] = {
    {"name", 0, 2},          {"frequency", 2, 11},    {"step", 13, 4},        {"clarifier offset", 17, 6},
    {"rx clarifier", 23, 1}, {"tx clarifier", 24, 1}, {"unused", 25, 1},      {"memory channel", 26, 2},
    {"transmitting", 28, 1}, {"mode", 29, 1},         {"vfo", 30, 1},         {"scan", 31, 1},
    {"split", 32, 1},        {"tone", 33, 1},         {"tone number", 34, 2}, {"shift", 36, 1},
    {"end", 37, 1},
};

QByteArray field(const QByteArray& record, const char* name)
{
    for (const Field& f : InfoLayout) {
        if (qstrcmp(f.name, name) == 0)
            return record.mid(f.at, f.length);
    }
    return {};
}
}  // namespace

class TestTextDialect : public QObject {
    Q_OBJECT
private slots:
    void radioModeToDigit_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("digit");
        QTest::newRow("LSB") << ModeCode::Lsb << 1;
        QTest::newRow("USB") << ModeCode::Usb << 2;
        QTest::newRow("CW") << ModeCode::Cw << 3;
        QTest::newRow("FM") << ModeCode::Fm << 4;
        QTest::newRow("AM") << ModeCode::Am << 5;
        QTest::newRow("RTTY as FSK") << ModeCode::Rtty << 6;
        QTest::newRow("CW-R") << ModeCode::CwR << 7;
        QTest::newRow("RTTY-R as FSK-R") << ModeCode::RttyR << 9;
        QTest::newRow("AM synchronous as AM") << ModeCode::AmSync << 5;
        QTest::newRow("packet LSB as LSB") << ModeCode::PktLsb << 1;
        QTest::newRow("packet FM as FM") << ModeCode::PktFm << 4;
    }
    void radioModeToDigit()
    {
        QFETCH(int, code);
        QFETCH(int, digit);
        QCOMPARE(textModeDigit(code), std::optional<int>(digit));
    }

    void unknownRadioModeHasNoDigit()
    {
        QCOMPARE(textModeDigit(-1), std::nullopt);
        QCOMPARE(textModeDigit(7), std::nullopt);
        QCOMPARE(textModeDigit(12), std::nullopt);
    }

    void digitToRadioMode_data()
    {
        QTest::addColumn<int>("digit");
        QTest::addColumn<int>("code");
        QTest::newRow("1 LSB") << 1 << ModeCode::Lsb;
        QTest::newRow("2 USB") << 2 << ModeCode::Usb;
        QTest::newRow("3 CW") << 3 << ModeCode::Cw;
        QTest::newRow("4 FM") << 4 << ModeCode::Fm;
        QTest::newRow("5 AM") << 5 << ModeCode::Am;
        QTest::newRow("6 FSK") << 6 << ModeCode::Rtty;
        QTest::newRow("7 CW-R") << 7 << ModeCode::CwR;
        QTest::newRow("9 FSK-R") << 9 << ModeCode::RttyR;
    }
    void digitToRadioMode()
    {
        QFETCH(int, digit);
        QFETCH(int, code);
        QCOMPARE(modeCodeForTextDigit(digit), std::optional<int>(code));
        // and back: each digit the radio has reads as itself
        QCOMPARE(textModeDigit(code), std::optional<int>(digit));
    }

    void digitsTheRadioLacksHaveNoMode()
    {
        QCOMPARE(modeCodeForTextDigit(0), std::nullopt);
        QCOMPARE(modeCodeForTextDigit(8), std::nullopt);
        QCOMPARE(modeCodeForTextDigit(10), std::nullopt);
        QCOMPARE(modeCodeForTextDigit(-1), std::nullopt);
    }

    void sMeterScale_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<int>("steps");
        QTest::newRow("bottom") << 0 << 0;
        QTest::newRow("top") << 255 << 30;
        QTest::newRow("middle") << 128 << 15;
        QTest::newRow("rounds down below half a step") << 4 << 0;
        QTest::newRow("rounds up from half a step") << 5 << 1;
        QTest::newRow("below range clamps") << -20 << 0;
        QTest::newRow("above range clamps") << 400 << 30;
    }
    void sMeterScale()
    {
        QFETCH(int, raw);
        QFETCH(int, steps);
        QCOMPARE(sMeterSteps(raw), steps);
    }

    void frequencyIsElevenDigits()
    {
        QCOMPARE(frequencyField(14076000), QByteArray("00014076000"));
        QCOMPARE(frequencyField(0), QByteArray("00000000000"));
        QCOMPARE(frequencyField(-5), QByteArray("00000000000"));
        QCOMPARE(frequencyField(123456789012LL), QByteArray("99999999999"));
    }

    void infoRecordOfAQuietVfoA()
    {
        InfoFields f;
        f.hz = 14076000;
        f.modeDigit = 2;
        const QByteArray r = infoRecord(f);
        QCOMPARE(r, QByteArray("IF000140760000010+0000000000020000010;"));
        QCOMPARE(r.size(), TextField::InfoRecordChars);
    }

    void infoRecordFieldByField()
    {
        InfoFields f;
        f.hz = 7074120;
        f.clarifierHz = -1230;
        f.rxClarifier = true;
        f.txClarifier = false;
        f.memoryChannel = 42;
        f.transmitting = true;
        f.modeDigit = 7;
        f.vfo = 1;
        f.split = true;
        const QByteArray r = infoRecord(f);
        QCOMPARE(r.size(), TextField::InfoRecordChars);
        QCOMPARE(field(r, "name"), QByteArray("IF"));
        QCOMPARE(field(r, "frequency"), QByteArray("00007074120"));
        QCOMPARE(field(r, "step"), QByteArray("0010"));
        QCOMPARE(field(r, "clarifier offset"), QByteArray("-01230"));
        QCOMPARE(field(r, "rx clarifier"), QByteArray("1"));
        QCOMPARE(field(r, "tx clarifier"), QByteArray("0"));
        QCOMPARE(field(r, "unused"), QByteArray("0"));
        QCOMPARE(field(r, "memory channel"), QByteArray("42"));
        QCOMPARE(field(r, "transmitting"), QByteArray("1"));
        QCOMPARE(field(r, "mode"), QByteArray("7"));
        QCOMPARE(field(r, "vfo"), QByteArray("1"));
        QCOMPARE(field(r, "scan"), QByteArray("0"));
        QCOMPARE(field(r, "split"), QByteArray("1"));
        QCOMPARE(field(r, "tone"), QByteArray("0"));
        QCOMPARE(field(r, "tone number"), QByteArray("01"));
        QCOMPARE(field(r, "shift"), QByteArray("0"));
        QCOMPARE(field(r, "end"), QByteArray(";"));
    }

    void infoRecordPositiveOffsetAndTransmitClarifier()
    {
        InfoFields f;
        f.clarifierHz = 9990;
        f.txClarifier = true;
        const QByteArray r = infoRecord(f);
        QCOMPARE(field(r, "clarifier offset"), QByteArray("+09990"));
        QCOMPARE(field(r, "rx clarifier"), QByteArray("0"));
        QCOMPARE(field(r, "tx clarifier"), QByteArray("1"));
    }

    void infoRecordKeepsItsWidthAtTheLimits()
    {
        InfoFields f;
        f.hz = 999999999999LL;
        f.clarifierHz = -200000;
        f.memoryChannel = 112;
        f.modeDigit = 0;
        const QByteArray r = infoRecord(f);
        QCOMPARE(r.size(), TextField::InfoRecordChars);
        QCOMPARE(field(r, "clarifier offset"), QByteArray("-99999"));
        QCOMPARE(field(r, "memory channel"), QByteArray("99"));
        QCOMPARE(field(r, "mode"), QByteArray("0"));
    }
};

QTEST_APPLESS_MAIN(TestTextDialect)
#include "test_text_dialect.moc"
