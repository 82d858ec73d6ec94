// SPDX-License-Identifier: GPL-3.0-or-later
// Settings files edited by hand or mangled: numbers too large for the program's whole numbers fall
// back to the default instead of overflowing.
#include "MemorySettingsStore.h"

#include <QTest>

class TestBadSettingsNumbers : public QObject {
    Q_OBJECT
private slots:
    void wholeNumberReadsTheLeadingNumber_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("expected");
        QTest::newRow("plain") << "7035" << 7035;
        QTest::newRow("fraction dropped") << "3.9" << 3;
        QTest::newRow("negative fraction dropped") << "-3.9" << -3;
        QTest::newRow("text after") << "12 twips" << 12;
        QTest::newRow("no number") << "wide" << 10410;
        QTest::newRow("empty") << "" << 10410;
        QTest::newRow("largest int") << "2147483647" << 2147483647;
        QTest::newRow("smallest int") << "-2147483648" << int(-2147483647 - 1);
        QTest::newRow("just past the largest") << "2147483648" << 10410;
        QTest::newRow("just past the smallest") << "-2147483649" << 10410;
        QTest::newRow("far too large") << QString(400, u'9') << 10410;
        QTest::newRow("far too small") << QStringLiteral("-") + QString(40, u'9') << 10410;
    }
    void wholeNumberReadsTheLeadingNumber()
    {
        QFETCH(QString, stored);
        QFETCH(int, expected);
        MemorySettingsStore s;
        s.setValue(QStringLiteral("Startup"), QStringLiteral("Width"), stored);
        QCOMPARE(s.wholeNumber(QStringLiteral("Startup"), QStringLiteral("Width"), 10410), expected);
    }

    void missingKeyGivesTheFallback()
    {
        MemorySettingsStore s;
        QCOMPARE(s.wholeNumber(QStringLiteral("Radio"), QStringLiteral("Type"), 1), 1);
    }
};

QTEST_GUILESS_MAIN(TestBadSettingsNumbers)
#include "test_bad_settings_numbers.moc"
