// SPDX-License-Identifier: GPL-3.0-or-later
// Hamlib's mode and VFO names against this radio's mode codes.

#include "HamlibNames.h"

#include <QTest>

class TestHamlibNames : public QObject {
    Q_OBJECT
private slots:
    void modeNamesMapToTheRadiosCodes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("code");
        QTest::newRow("LSB") << "LSB" << 0;
        QTest::newRow("USB") << "USB" << 1;
        QTest::newRow("CW") << "CW" << 2;
        QTest::newRow("CWR") << "CWR" << 3;
        QTest::newRow("AM") << "AM" << 4;
        QTest::newRow("FM") << "FM" << 6;
        QTest::newRow("RTTY") << "RTTY" << 8;
        QTest::newRow("RTTYR") << "RTTYR" << 9;
        QTest::newRow("PKTLSB") << "PKTLSB" << 10;
        QTest::newRow("PKTFM") << "PKTFM" << 11;
    }
    void modeNamesMapToTheRadiosCodes()
    {
        QFETCH(QString, name);
        QFETCH(int, code);
        QCOMPARE(modeCodeForName(name), std::optional<int>(code));
        QCOMPARE(modeNameForCode(code), name);
    }

    void modesThisRadioLacksHaveNoCode_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* n : {"PKTUSB", "WFM", "AMS", "SAM", "usb", "", "ECSSUSB"})
            QTest::newRow(n) << QString::fromLatin1(n);
    }
    void modesThisRadioLacksHaveNoCode()
    {
        QFETCH(QString, name);
        QVERIFY(!modeCodeForName(name));
    }

    void amSyncIsNamedAm() { QCOMPARE(modeNameForCode(ModeCode::AmSync), QStringLiteral("AM")); }

    void codesOutsideTheTableHaveNoName()
    {
        QVERIFY(modeNameForCode(7).isEmpty());
        QVERIFY(modeNameForCode(-1).isEmpty());
        QVERIFY(modeNameForCode(12).isEmpty());
    }

    void vfoNames_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("token");  // -1: not a VFO name
        QTest::newRow("VFOA") << "VFOA" << int(VfoToken::A);
        QTest::newRow("Main") << "Main" << int(VfoToken::A);
        QTest::newRow("VFOB") << "VFOB" << int(VfoToken::B);
        QTest::newRow("Sub") << "Sub" << int(VfoToken::B);
        QTest::newRow("currVFO") << "currVFO" << int(VfoToken::Current);
        QTest::newRow("TX") << "TX" << int(VfoToken::Tx);
        QTest::newRow("RX") << "RX" << int(VfoToken::Rx);
        QTest::newRow("VFOC") << "VFOC" << int(VfoToken::Unusable);
        QTest::newRow("MEM") << "MEM" << int(VfoToken::Unusable);
        QTest::newRow("number") << "14074000" << -1;
        QTest::newRow("mode") << "USB" << -1;
    }
    void vfoNames()
    {
        QFETCH(QString, text);
        QFETCH(int, token);
        const auto t = parseVfoToken(text);
        QCOMPARE(t.has_value(), token >= 0);
        if (t)
            QCOMPARE(int(*t), token);
    }
};

QTEST_APPLESS_MAIN(TestHamlibNames)
#include "test_hamlib_names.moc"
