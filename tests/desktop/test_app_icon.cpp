// SPDX-License-Identifier: GPL-3.0-or-later
// The program's icon comes from the executable itself, so windows show it on any desktop.
#include "AppIcon.h"
#include "frmAbout.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QWidget>

class TestAppIcon : public QObject {
    Q_OBJECT
private slots:
    void holdsEveryRendering()
    {
        const QIcon icon = appIcon();
        QVERIFY(!icon.isNull());
        const QList<QSize> sizes = icon.availableSizes();
        for (int s : {48, 128, 256})
            QVERIFY2(sizes.contains(QSize(s, s)), qPrintable(QString::number(s)));
        // Not a blank square: the cabinet is drawn in the middle, the corners stay transparent.
        const QImage image = icon.pixmap(QSize(128, 128)).toImage();
        QCOMPARE(image.size(), QSize(128, 128));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(64, 64)), 255);
    }

    void windowsShowItWithoutAnIconTheme()
    {
        QIcon::setThemeName(QStringLiteral("no-such-theme"));
        QIcon::setFallbackThemeName(QStringLiteral("no-such-theme"));
        QApplication::setWindowIcon(appIcon());
        QWidget window;
        window.show();
        QVERIFY(!window.windowIcon().isNull());
        QCOMPARE(window.windowIcon().pixmap(48, 48).toImage(), appIcon().pixmap(48, 48).toImage());
    }

    void theAboutBoxShowsIt()
    {
        frmAbout about(QStringLiteral("Tovra's FT-1000 CAT"));
        QVERIFY(about.lblIcon);
        const QPixmap shown = about.lblIcon->pixmap();
        QVERIFY(!shown.isNull());
        QCOMPARE(shown.toImage(), appIcon().pixmap(shown.size()).toImage());
    }
};

QTEST_MAIN(TestAppIcon)
#include "test_app_icon.moc"
