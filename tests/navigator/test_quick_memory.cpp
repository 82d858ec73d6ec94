// SPDX-License-Identifier: GPL-3.0-or-later
#include "QuickMemory.h"

#include <QTest>

class TestQuickMemory : public QObject {
    Q_OBJECT
private slots:
    void defaultCaptionsGiveQmbThenEmpty()
    {
        const QStringList c = QuickMemory::decodeCaptions(QuickMemory::DefaultCaptions);
        QCOMPARE(c.size(), 8);
        QCOMPARE(c[0], QStringLiteral("QMB"));
        for (int i = 1; i < 8; ++i)
            QVERIFY(c[i].isEmpty());
    }

    void defaultModesAreAllUsb()
    {
        QCOMPARE(QuickMemory::decodeModes(QuickMemory::DefaultModes), (QList<int>{1, 1, 1, 1, 1, 1, 1, 1}));
    }

    void captionsCutIntoNineCharacterFields()
    {
        const QString stored =
            QStringLiteral("14,250.00 7,045.00QMB      ") + QString(9, u' ') + QStringLiteral("28,500.00");
        const QStringList c = QuickMemory::decodeCaptions(stored);
        QCOMPARE(c.mid(0, 5), (QStringList{"14,250.00", "7,045.00", "QMB", "", "28,500.00"}));
        QVERIFY(c[5].isEmpty() && c[7].isEmpty());
    }

    void modesCutIntoTwoCharacterFields()
    {
        QCOMPARE(QuickMemory::decodeModes(QStringLiteral(" 0 21011 6 4 8 9")), (QList<int>{0, 2, 10, 11, 6, 4, 8, 9}));
    }

    void shortModeStringLeavesZero()
    {
        QCOMPARE(QuickMemory::decodeModes(QStringLiteral(" 2 3")), (QList<int>{2, 3, 0, 0, 0, 0, 0, 0}));
    }

    void encodeRoundTrips()
    {
        const QStringList captions{"14,250.00", "1,843.00", "QMB", "", "", "500.00", "", "29,999.99"};
        const QString stored = QuickMemory::encodeCaptions(captions);
        QCOMPARE(stored.size(), 72);
        QCOMPARE(stored.left(18), QStringLiteral("14,250.001,843.00 "));
        QCOMPARE(QuickMemory::decodeCaptions(stored), captions);
        const QList<int> modes{1, 0, 11, 6, 4, 5, 2, 10};
        QCOMPARE(QuickMemory::encodeModes(modes), QStringLiteral(" 1 011 6 4 5 210"));
        QCOMPARE(QuickMemory::decodeModes(QuickMemory::encodeModes(modes)), modes);
    }

    void defaultModesEncodeAsTheDefaultString()
    {
        QCOMPARE(QuickMemory::encodeModes({1, 1, 1, 1, 1, 1, 1, 1}), QuickMemory::DefaultModes);
    }

    void captionForFrequency()
    {
        QCOMPARE(QuickMemory::captionFor(14250.0), QStringLiteral("14,250.00"));
        QCOMPARE(QuickMemory::captionFor(1843.0), QStringLiteral("1,843.00"));
        QCOMPARE(QuickMemory::captionFor(500.0), QStringLiteral("500.00"));
        QCOMPARE(QuickMemory::captionFor(7045.37), QStringLiteral("7,045.37"));
    }

    void recallableOnlyWithAFrequency()
    {
        QVERIFY(!QuickMemory::recallable(QStringLiteral("QMB")));
        QVERIFY(!QuickMemory::recallable(QString()));
        QVERIFY(QuickMemory::recallable(QStringLiteral("14,250.00")));
    }

    void captionAsTenHertzUnits_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<qlonglong>("tenHz");
        QTest::newRow("14,250.00") << "14,250.00" << 1425000LL;
        QTest::newRow("1,843.00") << "1,843.00" << 184300LL;
        QTest::newRow("7,045.37") << "7,045.37" << 704537LL;
        QTest::newRow("29,999.99") << "29,999.99" << 2999999LL;
        QTest::newRow("500.01") << "500.01" << 50001LL;
    }
    void captionAsTenHertzUnits()
    {
        QFETCH(QString, caption);
        QFETCH(qlonglong, tenHz);
        QCOMPARE(QuickMemory::captionTenHz(caption), std::optional<qint64>(tenHz));
    }

    void captionThatIsNoFrequencyGivesNothing() { QVERIFY(!QuickMemory::captionTenHz(QStringLiteral("QMB"))); }
};

QTEST_GUILESS_MAIN(TestQuickMemory)
#include "test_quick_memory.moc"
