// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmAbout.h"

#include <QDir>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>

class TestAboutWindow : public QObject {
    Q_OBJECT
private slots:
    void load_fillsCaptionAndLabels()
    {
        frmAbout w(QStringLiteral("Tovra's FT-1000 CAT"));
        QCOMPARE(w.windowTitle(), QStringLiteral("About Tovra's FT-1000 CAT"));
        QCOMPARE(w.lblTitle->text(), QStringLiteral("Tovra's FT-1000 CAT"));
        QCOMPARE(w.lblVersion->text(), QStringLiteral("Version 1.2.0"));
        QCOMPARE(w.lblDescription->text(),
                 QStringLiteral("This is a CAT program for the Yaesu FT-1000 MP family. It provides a Scope function "
                                "allowing you to plot a spectrum analyser alike graph"));
        QCOMPARE(w.lblNotice->text(), QStringLiteral("This program is FreeWare .\r"));
    }

    void ok_closesAndUnloads()
    {
        QPointer<frmAbout> w = new frmAbout(QStringLiteral("Tovra's FT-1000 CAT"));
        w->show();
        QTest::mouseClick(w->cmdOK, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(w.isNull());
    }

    void screenshot()
    {
        frmAbout w(QStringLiteral("Tovra's FT-1000 CAT"));
        w.show();
        const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT", QDir::tempPath());
        QDir().mkpath(dir);
        QVERIFY(w.grab().save(QDir(dir).filePath(QStringLiteral("about.png"))));
    }
};

QTEST_MAIN(TestAboutWindow)
#include "test_about_window.moc"
