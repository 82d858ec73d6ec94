// SPDX-License-Identifier: GPL-3.0-or-later
#include "AboutText.h"

#include <QTest>

class TestAboutText : public QObject {
    Q_OBJECT
private slots:
    void caption_isAboutAndTitle()
    {
        QCOMPARE(AboutText::caption(QStringLiteral("Tovra's FT-1000 CAT")),
                 QStringLiteral("About Tovra's FT-1000 CAT"));
    }

    void versionLine_fromTheBuild_is120()
    {
        QCOMPARE(AboutText::versionLine(AboutText::buildVersion()), QStringLiteral("Version 1.2.0"));
    }

    void versionLine_joinsThreeNumbers()
    {
        QCOMPARE(AboutText::versionLine({3, 14, 15}), QStringLiteral("Version 3.14.15"));
    }

    void description_isOneCaptionWithoutLineBreaks()
    {
        const QString d = AboutText::description();
        QCOMPARE(d,
                 QStringLiteral("This is a CAT program for the Yaesu FT-1000 MP family. It provides a Scope function "
                                "allowing you to plot a spectrum analyser alike graph"));
        QVERIFY(!d.contains(u'\n'));
        QVERIFY(!d.contains(u'\r'));
    }

    void notice_endsWithCarriageReturn()
    {
        QCOMPARE(AboutText::notice(), QStringLiteral("This program is FreeWare .\r"));
    }
};

QTEST_GUILESS_MAIN(TestAboutText)
#include "test_about_text.moc"
