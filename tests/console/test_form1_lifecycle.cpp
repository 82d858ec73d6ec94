// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandScope.h"
#include "ConsoleFixture.h"
#include "PortCatalog.h"
#include "PressButton.h"
#include "Twips.h"

#include <QAction>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {
// A main window on a closed port, started with the given settings.
struct StartFixture : ConsoleFixture {
    explicit StartFixture(const QMap<QString, QString>& values = {}) : ConsoleFixture(false) { store.values = values; }
    void start()
    {
        form->setProgramFolder(emptyFolder.path());
        form->Form_Load();
    }
    QTemporaryDir emptyFolder;
};

QMap<QString, QString> portOne()
{
    return {{"CommPort/Com:", "1"}, {"Radio/Type", "1"}};
}
}  // namespace

class TestForm1Lifecycle : public QObject {
    Q_OBJECT
private slots:
    void freshInstallationAsksForAPort()
    {
        StartFixture f;
        f.prompts.answers = {QMessageBox::No};
        f.start();
        QCOMPARE(f.prompts.messages.size(), 1);
        const auto& m = f.prompts.messages[0];
        QCOMPARE(m.title, QStringLiteral("Configuration Error !"));
        QCOMPARE(m.text,
                 QStringLiteral("You need a Serial Port to control your Radio,\rWould you like to select one now ?"));
        QCOMPARE(m.buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(m.icon, QMessageBox::Warning);
        QCOMPARE(f.prompts.modalDialogs, 0);
        QVERIFY(!f.port->isOpen());
        QVERIFY(f.port->writes.isEmpty());
        // The poll still runs, finding the port closed.
        QVERIFY(f.form->pollEnabled());
    }

    void freshInstallationDefaults()
    {
        StartFixture f;
        f.prompts.answers = {QMessageBox::No};
        f.start();
        QCOMPARE(f.form->windowTitle(), QStringLiteral("Tovra's FT-1000 CAT"));
        QCOMPARE(f.form->width(), Twips::toPixels(10410));
        QCOMPARE(f.form->height(), Twips::toPixels(3990));
        QCOMPARE(f.form->pos(), QPoint(0, Twips::toPixels(400)));
        QCOMPARE(f.form->mnu_Bar[4]->text(), QStringLiteral("Small"));
        QVERIFY(f.form->Key[24]->isEnabled());
        QCOMPARE(f.form->radioType(), 1);
    }

    void freshInstallationHasTransmitUnauthorized()
    {
        StartFixture f(portOne());
        f.start();
        QVERIFY(!f.form->mnu_Stup[2]->isChecked());
        QVERIFY(!f.form->Key[1]->isEnabled());
        QVERIFY(!f.form->Key[32]->isEnabled());
    }

    void yesShowsThePortDialogModally()
    {
        StartFixture f;
        f.prompts.answers = {QMessageBox::Yes};
        QDialog* shown = nullptr;
        f.prompts.onDialog = [&](QDialog* d) { shown = d; };
        f.start();
        QCOMPARE(f.prompts.modalDialogs, 1);
        QVERIFY(shown);
        QCOMPARE(shown, static_cast<QDialog*>(f.form->configScrn()));
        QCOMPARE(shown->windowTitle(), QStringLiteral("Configuration"));
    }

    void storedPortOpensWithItsSettingsAndReadsTheFlagsOnce()
    {
        StartFixture f(portOne());
        f.store.values.insert("CommPort/Set", "9600,E,7,1");
        f.start();
        QVERIFY(f.prompts.messages.isEmpty());
        QVERIFY(f.port->isOpen());
        QCOMPARE(f.port->device(), PortCatalog::numberedDevice(1));
        QCOMPARE(f.port->settings(), QStringLiteral("9600,E,7,1"));
        QCOMPARE(f.port->writtenHex(), QStringList{"00 00 00 00 FA"});
        QVERIFY(f.form->pollEnabled());
    }

    void otherDeviceOpensItsPath()
    {
        StartFixture f({{"CommPort/Com:", "9"}, {"Radio/Type", "9"}, {"CommPort/Device", "/dev/pts/4"}});
        f.start();
        QVERIFY(f.port->isOpen());
        QCOMPARE(f.port->device(), QStringLiteral("/dev/pts/4"));
    }

    void radioTypeBelowOneAsks()
    {
        StartFixture f({{"CommPort/Com:", "1"}, {"Radio/Type", "0"}});
        f.prompts.answers = {QMessageBox::No};
        f.start();
        QCOMPARE(f.prompts.messages.size(), 1);
        QVERIFY(!f.port->isOpen());
    }

    void portThatWillNotOpenAsks()
    {
        StartFixture f(portOne());
        f.port->openError = QStringLiteral("Permission denied");
        f.prompts.answers = {QMessageBox::No};
        f.start();
        QCOMPARE(f.prompts.messages.size(), 1);
        QCOMPARE(f.prompts.messages[0].title, QStringLiteral("Configuration Error !"));
    }

    void portForThisRunIsOpenedAndNotPersisted()
    {
        StartFixture f;
        f.form->setPortOverride(QStringLiteral("/dev/pts/7"));
        f.start();
        QVERIFY(f.prompts.messages.isEmpty());
        QVERIFY(f.port->isOpen());
        QCOMPARE(f.port->device(), QStringLiteral("/dev/pts/7"));
        f.form->close();
        QVERIFY(!f.store.values.contains("CommPort/Com:"));
        QVERIFY(!f.store.values.contains("CommPort/Device"));
    }

    void storedWidth7035StartsSmallWithTheMenuOfferingLarge()
    {
        StartFixture f(portOne());
        f.store.values.insert("Startup/Width", "7035");
        f.start();
        QCOMPARE(f.form->width(), Twips::toPixels(7035));
        QCOMPARE(f.form->mnu_Bar[4]->text(), QStringLiteral("Large"));
        QCOMPARE(f.form->Frame[2]->width(), Twips::toPixels(6810));
        QVERIFY(!f.form->Key[24]->isEnabled());
    }

    void otherStoredWidthStartsLargeAndKeepsTheWidth()
    {
        StartFixture f(portOne());
        f.store.values.insert("Startup/Width", "9000");
        f.start();
        QCOMPARE(f.form->width(), Twips::toPixels(9000));
        QCOMPARE(f.form->mnu_Bar[4]->text(), QStringLiteral("Small"));
        QCOMPARE(f.form->Frame[2]->width(), Twips::toPixels(10205));
        f.form->close();
        QCOMPARE(f.store.values.value("Startup/Width"), QStringLiteral("9000"));
    }

    void positionIsRestored()
    {
        StartFixture f(portOne());
        f.store.values.insert("Startup/Top", "1500");
        f.store.values.insert("Startup/Left", "3000");
        f.start();
        QCOMPARE(f.form->pos(), QPoint(200, 100));
    }

    void closingSavesPlacementAndClosesThePort()
    {
        StartFixture f(portOne());
        f.start();
        f.form->move(30, 45);
        f.form->close();
        QVERIFY(!f.port->isOpen());
        QCOMPARE(f.store.values.value("Startup/Top"), QStringLiteral("675"));
        QCOMPARE(f.store.values.value("Startup/Left"), QStringLiteral("450"));
        QCOMPARE(f.store.values.value("Startup/Width"), QStringLiteral("10410"));
        QCOMPARE(f.store.values.value("Settings/TxInh"), QStringLiteral("0"));
        QVERIFY(f.windows.calls.contains(QStringLiteral("closeAll")));
    }

    void closingIsRefusedWhileTheOperatorLetsAnUploadGoOn()
    {
        StartFixture f(portOne());
        f.start();
        f.form->show();
        f.form->move(30, 45);
        f.windows.mayClose = false;
        QVERIFY(!f.form->close());
        QVERIFY(f.form->isVisible());
        QVERIFY(f.port->isOpen());
        QVERIFY(!f.store.values.contains("Startup/Top"));
        QVERIFY(!f.windows.calls.contains(QStringLiteral("closeAll")));
        QVERIFY(f.form->pollEnabled());
        // Asked again, the operator lets it close.
        f.windows.mayClose = true;
        QVERIFY(f.form->close());
        QVERIFY(!f.port->isOpen());
        QCOMPARE(f.windows.calls.filter(QStringLiteral("confirmCloseAll")).size(), 2);
        QVERIFY(f.windows.calls.indexOf(QStringLiteral("confirmCloseAll")) <
                f.windows.calls.indexOf(QStringLiteral("closeAll")));
    }

    void closingOffScreenKeepsThePreviousPosition()
    {
        StartFixture f(portOne());
        f.store.values.insert("Startup/Top", "600");
        f.store.values.insert("Startup/Left", "900");
        f.start();
        f.form->move(100000, 100000);
        f.form->close();
        QCOMPARE(f.store.values.value("Startup/Top"), QStringLiteral("600"));
        QCOMPARE(f.store.values.value("Startup/Left"), QStringLiteral("900"));
        QCOMPARE(f.store.values.value("Startup/Width"), QStringLiteral("10410"));
    }

    void authorizeTxSurvivesARestart()
    {
        MemorySettingsStore kept;
        {
            StartFixture f(portOne());
            f.start();
            f.form->mnu_Stup[2]->trigger();
            QVERIFY(f.form->mnu_Stup[2]->isChecked());
            f.form->close();
            QCOMPARE(f.store.values.value("Settings/TxInh"), QStringLiteral("1"));
            kept.values = f.store.values;
        }
        StartFixture g(kept.values);
        g.start();
        QVERIFY(g.form->mnu_Stup[2]->isChecked());
        QVERIFY(g.form->Key[1]->isEnabled());
        QVERIFY(g.form->Key[32]->isEnabled());
    }

    void storedTxInhMinusOneIsNotAuthorized()
    {
        StartFixture f(portOne());
        f.store.values.insert("Settings/TxInh", "-1");
        f.start();
        QVERIFY(!f.form->mnu_Stup[2]->isChecked());
        QVERIFY(!f.form->Key[1]->isEnabled());
        QVERIFY(!f.form->Key[32]->isEnabled());
    }

    void analyserBesideTheProgramEnablesItsKey()
    {
        StartFixture f(portOne());
        QTemporaryDir folder;
        QFile exe(folder.filePath(QStringLiteral("Spectrum Analyzer.exe")));
        QVERIFY(exe.open(QIODevice::WriteOnly));
        exe.close();
        f.form->setProgramFolder(folder.path());
        f.form->Form_Load();
        QVERIFY(f.form->analyserPresent());
        QVERIFY(f.form->Key[31]->isEnabled());
        QCOMPARE(f.form->Key[31]->text(), QStringLiteral("Spectr"));
    }

    void noAnalyserLeavesItsKeyDisabled()
    {
        StartFixture f(portOne());
        f.start();
        QVERIFY(!f.form->Key[31]->isEnabled());
        QCOMPARE(f.form->Key[31]->text(), QStringLiteral("- - -"));
    }

    void screenshotsOfBothLayouts()
    {
        StartFixture f(portOne());
        f.port->responder = [](const QByteArray& c) {
            const int op = static_cast<quint8>(c[4]);
            const int p4 = static_cast<quint8>(c[3]);
            const QByteArray a = QByteArray::fromHex("00015be6800320010016000000000000");
            const QByteArray b = QByteArray::fromHex("0000ac1e80fffe028001000000000000");
            if (op == 0x10 && p4 == 2)
                return a;
            if (op == 0x10 && p4 == 3)
                return QByteArray(16, '\0') + b.left(16);
            if (op == 0xF7)
                return QByteArray::fromHex("60000000f7");
            if (op == 0xFA)
                return QByteArray::fromHex("032000020000");
            return QByteArray();
        };
        f.start();
        f.form->Timer1_Timer();
        f.form->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.form.get()));
        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (out.isEmpty())
            QSKIP("FT_TEST_OUTPUT not set");
        QVERIFY(f.form->grab().save(out + QStringLiteral("/form1-large.png")));
        f.form->mnu_bar_Click(4);
        QVERIFY(f.form->grab().save(out + QStringLiteral("/form1-small.png")));
        f.form->mnu_bar_Click(4);
        f.form->Key_Click(24);
        QVERIFY(f.form->grab().save(out + QStringLiteral("/form1-scope.png")));
    }
};

QTEST_MAIN(TestForm1Lifecycle)
#include "test_form1_lifecycle.moc"
