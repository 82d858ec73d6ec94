// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeypadEntry.h"
#include "Procedures.h"

#include <QTest>

class TestKeypadEntry : public QObject {
    Q_OBJECT

    static KeypadEntry entered()
    {
        KeypadEntry e;
        e.beginKeypad();
        e.enter(true);
        return e;
    }

private slots:
    void startsInBandMode()
    {
        KeypadEntry e;
        QCOMPARE(e.EntryPos(), 10);
        QVERIFY(e.bandMode());
    }

    void freqKeyWaitsForEnter()
    {
        KeypadEntry e;
        e.beginKeypad();
        QCOMPARE(e.EntryPos(), 0);
        QVERIFY(!e.digit(5));  // digits only after "Enter"
        QCOMPARE(e.EntryPos(), 0);
    }

    void enterStartsEntryAtZero()
    {
        KeypadEntry e;
        e.beginKeypad();
        QVERIFY(e.enter(true));
        QCOMPARE(e.EntryPos(), 1);
        QCOMPARE(e.EntryFreq(), 0.0);
        QCOMPARE(e.display(), QStringLiteral("  .000.00 "));
    }

    void enterIgnoredWhilePollStopped()
    {
        KeypadEntry e;
        e.beginKeypad();
        QVERIFY(!e.enter(false));
        QCOMPARE(e.EntryPos(), 0);
    }

    void enterIgnoredInBandMode()
    {
        KeypadEntry e;
        QVERIFY(!e.enter(true));
        QCOMPARE(e.EntryPos(), 10);
    }

    void enterIgnoredAfterDigits()
    {
        KeypadEntry e = entered();
        e.digit(7);
        QVERIFY(!e.enter(true));
        QCOMPARE(e.EntryPos(), 2);
        QCOMPARE(e.EntryFreq(), 7.0);
    }

    void digitsShowEveryIntermediateDisplay_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("posAfter");
        QTest::addColumn<qlonglong>("tenHz");
        QTest::addColumn<QString>("display");
        QTest::newRow("1") << "1" << 2 << 100000LL << " 1.000.00 ";
        QTest::newRow("14") << "14" << 3 << 1400000LL << "14.000.00 ";
        QTest::newRow("142") << "142" << 4 << 1420000LL << "14.200.00 ";
        QTest::newRow("1425") << "1425" << 5 << 1425000LL << "14.250.00 ";
        QTest::newRow("14250") << "14250" << 6 << 1425000LL << "14.250.00 ";
        QTest::newRow("142503") << "142503" << 7 << 1425030LL << "14.250.30 ";
        QTest::newRow("1425037") << "1425037" << 8 << 1425037LL << "14.250.37 ";
    }
    void digitsShowEveryIntermediateDisplay()
    {
        QFETCH(QString, typed);
        QFETCH(int, posAfter);
        QFETCH(qlonglong, tenHz);
        QFETCH(QString, display);
        KeypadEntry e = entered();
        for (QChar c : typed)
            QVERIFY(e.digit(c.digitValue()));
        QCOMPARE(e.EntryPos(), posAfter);
        QCOMPARE(e.entryTenHz(), tenHz);
        QCOMPARE(e.display(), display);
    }

    void digits1425000Give1425MHzAndEighthIgnored()
    {
        KeypadEntry e = entered();
        for (int d : {1, 4, 2, 5, 0, 0, 0})
            QVERIFY(e.digit(d));
        QCOMPARE(e.EntryFreq(), 14.25);
        QCOMPARE(e.EntryPos(), 8);
        QVERIFY(!e.digit(9));
        QCOMPARE(e.EntryFreq(), 14.25);
        QCOMPARE(e.EntryPos(), 8);
        QCOMPARE(e.display(), QStringLiteral("14.250.00 "));
    }

    void everyPlaceDownToTenHertz()
    {
        KeypadEntry e = entered();
        for (int d : {2, 9, 9, 9, 9, 9, 9})
            e.digit(d);
        QCOMPARE(e.entryTenHz(), 2999999);
        QCOMPARE(e.display(), QStringLiteral("29.999.99 "));
        QCOMPARE(setFreqCommand(*e.commit(), 1).hex(), QStringLiteral("99 99 99 02 0A"));
    }

    void singleDigitDisplayKeepsOneMegahertzDigit()
    {
        KeypadEntry e = entered();
        e.digit(7);
        QCOMPARE(e.display(), QStringLiteral(" 7.000.00 "));
        e.digit(0);
        QCOMPARE(e.display(), QStringLiteral("70.000.00 "));
    }

    void mainNeedsAtLeastOneDigit()
    {
        KeypadEntry e = entered();
        QVERIFY(!e.commit());
        QCOMPARE(e.EntryPos(), 1);
    }

    void commitInBandModeSendsNothing()
    {
        KeypadEntry e;
        QVERIFY(!e.commit());
        e.beginKeypad();
        QVERIFY(!e.commit());
    }

    void commitGivesFrequencyAndClearsEntry()
    {
        KeypadEntry e = entered();
        for (int d : {0, 7, 0, 4, 5})
            e.digit(d);
        QCOMPARE(e.commit(), std::optional<qint64>(704500));
        QCOMPARE(e.EntryPos(), 1);
        QCOMPARE(e.EntryFreq(), 0.0);
        // The next digits start a new frequency instead of extending the one sent.
        e.digit(2);
        e.digit(1);
        QCOMPARE(e.EntryFreq(), 21.0);
        QCOMPARE(e.commit(), std::optional<qint64>(2100000));
    }

    void partialEntryCommitsWhatWasTyped()
    {
        KeypadEntry e = entered();
        e.digit(3);
        QCOMPARE(e.commit(), std::optional<qint64>(300000));
    }

    void backToBandsRestoresBandMode()
    {
        KeypadEntry e = entered();
        e.digit(1);
        e.backToBands();
        QCOMPARE(e.EntryPos(), 10);
        QVERIFY(!e.digit(2));
    }

    void digitsPendingOnlyBetweenFirstDigitAndCommit()
    {
        KeypadEntry e = entered();
        QVERIFY(!e.digitsPending());
        e.digit(1);
        QVERIFY(e.digitsPending());
        e.commit();
        QVERIFY(!e.digitsPending());
        e.backToBands();
        QVERIFY(!e.digitsPending());
    }
};

QTEST_GUILESS_MAIN(TestKeypadEntry)
#include "test_keypad_entry.moc"
