// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemorySettingsStore.h"
#include "SettingsStore.h"

#include <QTest>

class TestLeadingNumber : public QObject {
    Q_OBJECT
private slots:
    void readsTheLeadingNumberOfAText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("fallback");
        QTest::addColumn<double>("expected");
        QTest::addColumn<bool>("found");
        QTest::newRow("number and unit") << QStringLiteral("12.5 Khz") << -7.0 << 12.5 << true;
        QTest::newRow("minutes") << QStringLiteral("10 mn") << -7.0 << 10.0 << true;
        QTest::newRow("letters only") << QStringLiteral("abc") << -7.0 << -7.0 << false;
        QTest::newRow("letters, other fallback") << QStringLiteral("abc") << 1.0 << 1.0 << false;
        QTest::newRow("negative") << QStringLiteral("-1") << -7.0 << -1.0 << true;
        QTest::newRow("plus sign") << QStringLiteral("+3") << -7.0 << 3.0 << true;
        QTest::newRow("blanks around") << QStringLiteral(" 7 ") << -7.0 << 7.0 << true;
        QTest::newRow("empty") << QString() << -7.0 << -7.0 << false;
        QTest::newRow("blank") << QStringLiteral("   ") << 4.0 << 4.0 << false;
        QTest::newRow("zero") << QStringLiteral("0") << -7.0 << 0.0 << true;
        QTest::newRow("leading point") << QStringLiteral(".5") << -7.0 << 0.5 << true;
        QTest::newRow("trailing point") << QStringLiteral("5.") << -7.0 << 5.0 << true;
        QTest::newRow("point only") << QStringLiteral(".") << -7.0 << -7.0 << false;
        QTest::newRow("sign only") << QStringLiteral("-") << -7.0 << -7.0 << false;
        QTest::newRow("two points") << QStringLiteral("1.2.3") << -7.0 << 1.2 << true;
        QTest::newRow("number then letters") << QStringLiteral("750 Hz") << -7.0 << 750.0 << true;
        QTest::newRow("letters then number") << QStringLiteral("Hz 750") << -7.0 << -7.0 << false;
        QTest::newRow("real port number") << QStringLiteral("2.0") << -7.0 << 2.0 << true;
        QTest::newRow("twips") << QStringLiteral("10410") << -7.0 << 10410.0 << true;
    }
    void readsTheLeadingNumberOfAText()
    {
        QFETCH(QString, text);
        QFETCH(double, fallback);
        QFETCH(double, expected);
        QFETCH(bool, found);
        bool wasFound = !found;
        QCOMPARE(leadingNumber(text, fallback, &wasFound), expected);
        QCOMPARE(wasFound, found);
        QCOMPARE(leadingNumber(text, fallback), expected);
    }

    void defaultFallbackIsZero() { QCOMPARE(leadingNumber(QStringLiteral("abc")), 0.0); }

    void storeNumberReadsStoredTextTheSameWay()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Radio"), QStringLiteral("Type"), QStringLiteral("abc"));
        store.setValue(QStringLiteral("Startup"), QStringLiteral("Top"), QStringLiteral(" 1200 "));
        QCOMPARE(store.number(QStringLiteral("Radio"), QStringLiteral("Type"), 1.0), 1.0);
        QCOMPARE(store.number(QStringLiteral("Startup"), QStringLiteral("Top"), 400.0), 1200.0);
        QCOMPARE(store.number(QStringLiteral("Startup"), QStringLiteral("Left"), 0.0), 0.0);
        QCOMPARE(store.number(QStringLiteral("Startup"), QStringLiteral("Width"), 10410.0), 10410.0);
    }
};

QTEST_GUILESS_MAIN(TestLeadingNumber)
#include "test_leading_number.moc"
