// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberFormat.h"

#include <QTest>
#include <limits>

class TestNumberFormat : public QObject {
    Q_OBJECT
private slots:
    void patterns_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("expected");
        // The frequency display.
        QTest::newRow("freq 937.5") << 937.5 << Pattern::Frequency << QStringLiteral("937.50 ");
        QTest::newRow("freq 14250") << 14250.0 << Pattern::Frequency << QStringLiteral("14,250.00 ");
        QTest::newRow("freq 0") << 0.0 << Pattern::Frequency << QStringLiteral("0.00 ");
        QTest::newRow("freq 0.05") << 0.05 << Pattern::Frequency << QStringLiteral("0.05 ");
        QTest::newRow("freq 999.999 carries") << 999.999 << Pattern::Frequency << QStringLiteral("1,000.00 ");
        QTest::newRow("freq 29999.99") << 29999.99 << Pattern::Frequency << QStringLiteral("29,999.99 ");
        QTest::newRow("freq millions") << 1234567.8 << Pattern::Frequency << QStringLiteral("1,234,567.80 ");
        // The memory table.
        QTest::newRow("channel 14157.7") << 14157.7 << Pattern::ChannelFrequency << QStringLiteral("14,157.70 ");
        QTest::newRow("channel 937.5") << 937.5 << Pattern::ChannelFrequency << QStringLiteral("937.50 ");
        // The clarifier offset.
        QTest::newRow("offset -20.48") << -20.48 << Pattern::Offset << QStringLiteral("-20.48 ");
        QTest::newRow("offset 0") << 0.0 << Pattern::Offset << QStringLiteral("0.00 ");
        QTest::newRow("offset -0.5") << -0.5 << Pattern::Offset << QStringLiteral("-0.50 ");
        QTest::newRow("offset tiny negative is zero") << -0.001 << Pattern::Offset << QStringLiteral("0.00 ");
        QTest::newRow("offset 9.99") << 9.99 << Pattern::Offset << QStringLiteral("9.99 ");
        QTest::newRow("offset no grouping") << 1234.5 << Pattern::Offset << QStringLiteral("1234.50 ");
        // The scope centre.
        QTest::newRow("centre 14250") << 14250.0 << Pattern::Centre << QStringLiteral("14250.00 ");
        QTest::newRow("centre 7.1") << 7.1 << Pattern::Centre << QStringLiteral("7.10 ");
        // The quick memory captions.
        QTest::newRow("quick memory 7050") << 7050.0 << Pattern::QuickMemory << QStringLiteral("7,050.00");
        // The key-pad entry of the navigator.
        QTest::newRow("entry none 0") << 0.0 << Pattern::EntryNone << QStringLiteral("  .000.00 ");
        QTest::newRow("entry none 0.5") << 0.5 << Pattern::EntryNone << QStringLiteral("  .500.00 ");
        QTest::newRow("entry one digit 1") << 1.0 << Pattern::EntryOneDigit << QStringLiteral(" 1.000.00 ");
        QTest::newRow("entry one digit 7.05") << 7.05 << Pattern::EntryOneDigit << QStringLiteral(" 7.050.00 ");
        QTest::newRow("entry two digits 14.25") << 14.25 << Pattern::EntryTwoDigits << QStringLiteral("14.250.00 ");
        QTest::newRow("entry two digits 3.5") << 3.5 << Pattern::EntryTwoDigits << QStringLiteral("03.500.00 ");
        QTest::newRow("entry two digits 21.01234")
            << 21.01234 << Pattern::EntryTwoDigits << QStringLiteral("21.012.34 ");
        // The scope's scale and read-out.
        QTest::newRow("scope label 14.25") << 14.25 << Pattern::ScopeLabel << QStringLiteral("14.250");
        QTest::newRow("scope label 0.5") << 0.5 << Pattern::ScopeLabel << QStringLiteral(".500");
        QTest::newRow("scope readout 14.2505") << 14.2505 << Pattern::ScopeReadout << QStringLiteral("14.250.5");
        QTest::newRow("scope readout 0") << 0.0 << Pattern::ScopeReadout << QStringLiteral("0.000.0");
        // Rounding: half away from zero at the last place.
        QTest::newRow("round 0.125 up") << 0.125 << Pattern::Offset << QStringLiteral("0.13 ");
        QTest::newRow("round -0.125 down") << -0.125 << Pattern::Offset << QStringLiteral("-0.13 ");
        QTest::newRow("round 1.994") << 1.994 << Pattern::Offset << QStringLiteral("1.99 ");
        QTest::newRow("round 1.996") << 1.996 << Pattern::Offset << QStringLiteral("2.00 ");
        QTest::newRow("round 14157.696") << 14157.696 << Pattern::Frequency << QStringLiteral("14,157.70 ");
        // Patterns beyond the program's own.
        QTest::newRow("no decimal point") << 1234.4 << QStringLiteral("#,##0") << QStringLiteral("1,234");
        QTest::newRow("optional trailing digit dropped") << 1.5 << QStringLiteral("0.0#") << QStringLiteral("1.5");
        QTest::newRow("optional trailing digit kept") << 1.25 << QStringLiteral("0.0#") << QStringLiteral("1.25");
        QTest::newRow("literal prefix") << 5.0 << QStringLiteral("F=0") << QStringLiteral("F=5");
    }
    void patterns()
    {
        QFETCH(double, value);
        QFETCH(QString, pattern);
        QFETCH(QString, expected);
        QCOMPARE(formatNumber(value, pattern), expected);
    }

    void nonsenseValuesStayDefined()
    {
        QCOMPARE(formatNumber(std::numeric_limits<double>::quiet_NaN(), Pattern::Frequency), QStringLiteral("0.00 "));
        QCOMPARE(formatNumber(std::numeric_limits<double>::infinity(), Pattern::Offset), QStringLiteral("0.00 "));
        QVERIFY(formatNumber(1e300, Pattern::Frequency).endsWith(u' '));
        QVERIFY(!formatNumber(-1e300, Pattern::Offset).isEmpty());
    }

    void roundToTenHz_data()
    {
        QTest::addColumn<double>("kHz");
        QTest::addColumn<double>("rounded");
        QTest::newRow("exact") << 14250.0 << 14250.0;
        QTest::newRow("937.5") << 937.5 << 937.5;
        QTest::newRow("drops below 10 Hz") << 14250.00875 << 14250.0;
        QTest::newRow("nudged up by a millihertz") << 14250.009375 << 14250.01;
        QTest::newRow("down, not to nearest") << 7050.0081 << 7050.0;
        QTest::newRow("0.000625") << 0.000625 << 0.0;
        QTest::newRow("negative floors") << -0.0125 << -0.02;
    }
    void roundToTenHz()
    {
        QFETCH(double, kHz);
        QFETCH(double, rounded);
        QCOMPARE(::roundToTenHz(kHz), rounded);
    }
};

QTEST_GUILESS_MAIN(TestNumberFormat)
#include "test_number_format.moc"
