// SPDX-License-Identifier: GPL-3.0-or-later
#include "CwCentre.h"

#include <QTest>

class TestCwCentre : public QObject {
    Q_OBJECT
private slots:
    void atLoad_guard15Code45DesignCaption()
    {
        const CwCentre c;
        QCOMPARE(c.guard(), 15);
        QCOMPARE(c.filterCode(), 0x45);
        QCOMPARE(c.position(), 75);
        QCOMPARE(c.caption(), QStringLiteral(" Cent = 750 Hz"));
    }

    void beforeAfFiltersVisit_movesSendNothingButCaptionFollows()
    {
        CwCentre c;
        QVERIFY(!c.move(80).has_value());
        QCOMPARE(c.caption(), QStringLiteral(" Cent = 800Hz"));
        QCOMPARE(c.position(), 80);
    }

    void afterAfFiltersVisit_eachMoveSendsCentreAndFilterCode()
    {
        CwCentre c;
        c.afFiltersVisited();
        QCOMPARE(c.guard(), 0);
        QCOMPARE(c.move(90).value().hex(), QStringLiteral("00 00 5A 45 75"));
        c.setFilterCode(0x47);
        QCOMPARE(c.move(91).value().hex(), QStringLiteral("00 00 5B 47 75"));
    }

    void unchangedPosition_sendsNothing()
    {
        CwCentre c;
        c.afFiltersVisited();
        QVERIFY(!c.move(75).has_value());
    }

    void outOfRange_isClampedTo127()
    {
        CwCentre c;
        c.move(300);
        QCOMPARE(c.position(), 127);
    }

    void pitchCaption_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("position");
        QTest::newRow("750 Hz") << "750 Hz" << 75;
        QTest::newRow("half rounds down to even") << "745 Hz" << 74;
        QTest::newRow("half rounds up to even") << "755 Hz" << 76;
        QTest::newRow("above half") << "747" << 75;
        QTest::newRow("below half") << "743 Hz" << 74;
        QTest::newRow("design caption is not a number") << "CW Pitch" << 0;
        QTest::newRow("empty") << "" << 0;
    }
    void pitchCaption()
    {
        QFETCH(QString, caption);
        QFETCH(int, position);
        QCOMPARE(CwCentre::positionFromPitch(caption), position);
    }

    void loadPitch_isQuietBecauseOfTheGuard()
    {
        CwCentre c;
        QVERIFY(!c.loadPitch(QStringLiteral("600 Hz")).has_value());
        QCOMPARE(c.position(), 60);
        QCOMPARE(c.caption(), QStringLiteral(" Cent = 600Hz"));
    }

    void loadPitch_sameAsDesign_keepsDesignCaption()
    {
        CwCentre c;
        c.loadPitch(QStringLiteral("750 Hz"));
        QCOMPARE(c.caption(), QStringLiteral(" Cent = 750 Hz"));
    }
};

QTEST_GUILESS_MAIN(TestCwCentre)
#include "test_cw_centre.moc"
