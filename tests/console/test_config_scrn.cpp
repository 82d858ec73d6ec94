// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConfigScrn.h"
#include "FakeConsoleHost.h"
#include "PortCatalog.h"
#include "Prompts.h"

#include <QDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <memory>

namespace {
class RecordingPrompts final : public Prompts {
public:
    QMessageBox::StandardButton message(QWidget*, QMessageBox::Icon icon, const QString& title, const QString& text,
                                        QMessageBox::StandardButtons) override
    {
        boxes << title + u'|' + text;
        icons << icon;
        return QMessageBox::Ok;
    }
    std::optional<QString> input(QWidget*, const QString&, const QString&, const QString&, QPoint) override
    {
        return std::nullopt;
    }
    void execDialog(QDialog*) override {}
    QStringList boxes;
    QList<QMessageBox::Icon> icons;
};

struct DialogFixture {
    // The host's port starts open on Com 2 with the given line settings.
    explicit DialogFixture(const QString& settings = QStringLiteral("4800,n,8,2"), bool open = true)
    {
        host.port->setDevice(PortCatalog::numberedDevice(2));
        QString e;
        host.port->setSettings(settings, &e);
        if (!open)
            host.port->close();
        dialog = std::make_unique<ConfigScrn>(host, prompts);
    }
    ~DialogFixture()
    {
        // The dialog goes while its host is still there: its last act uses the host.
        dialog.reset();
    }
    FakeConsoleHost host;
    RecordingPrompts prompts;
    std::unique_ptr<ConfigScrn> dialog;
};
}  // namespace

class TestConfigScrn : public QObject {
    Q_OBJECT
private slots:
    void captions()
    {
        DialogFixture f;
        ConfigScrn& d = *f.dialog;
        QCOMPARE(d.windowTitle(), QStringLiteral("Configuration"));
        QStringList groups;
        for (auto* g : d.findChildren<QGroupBox*>())
            groups << g->objectName() + u'=' + g->title();
        groups.sort();
        QCOMPARE(groups, (QStringList{"Frame1=&Speed", "Frame2=&Bits", "Frame3=Bits &Stop", "Frame4=&Parity",
                                      "Frame6=Radio Port"}));
        QCOMPARE(d.NoParity->text(), QStringLiteral("None"));
        QCOMPARE(d.EvenParity->text(), QStringLiteral("Even"));
        QCOMPARE(d.OddParity->text(), QStringLiteral("Odd"));
        QCOMPARE(d.Data7->text(), QStringLiteral("7"));
        QCOMPARE(d.Data8->text(), QStringLiteral("8"));
        QCOMPARE(d.Stop1->text(), QStringLiteral("1"));
        QCOMPARE(d.Stop2->text(), QStringLiteral("2"));
        QCOMPARE(d.OKButton->text(), QStringLiteral("&Ok"));
        QVERIFY(d.OKButton->isDefault());
        QCOMPARE(d.CancelButton->text(), QStringLiteral("Cancel"));
        QCOMPARE(d.HelpButton->text(), QStringLiteral("Help"));
        d.Form_Load();
        QStringList speeds;
        for (int i = 0; i < d.BaudR->count(); ++i)
            speeds << d.BaudR->item(i)->text();
        QCOMPARE(speeds, (QStringList{"300", "1200", "2400", "4800", "9600", "19200", "38400", "57600"}));
        QStringList ports;
        for (int i = 0; i <= 8; ++i)
            ports << d.ComP->item(i)->text();
        QCOMPARE(ports, (QStringList{"None", "Com 1", "Com 2", "Com 3", "Com 4", "Com 5", "Com 6", "Com 7", "Com 8"}));
    }

    void loadStopsThePollClosesThePortAndSelectsItsSettings()
    {
        DialogFixture f;
        f.dialog->Form_Load();
        QCOMPARE(f.host.pollChanges, QList<bool>{false});
        QVERIFY(!f.host.port->isOpen());
        QVERIFY(f.dialog->portWasOpen());
        QCOMPARE(f.dialog->ComP->currentRow(), 2);
        QCOMPARE(f.dialog->BaudR->currentRow(), 3);
        QVERIFY(f.dialog->NoParity->isChecked());
        QVERIFY(f.dialog->Data8->isChecked());
        QVERIFY(f.dialog->Stop2->isChecked());
        QCOMPARE(f.dialog->parityLetter(), QStringLiteral("N"));
        QCOMPARE(f.dialog->dataBits(), QStringLiteral("8"));
        QCOMPARE(f.dialog->stopBits(), QStringLiteral("2"));
    }

    void loadWithThePortClosedSelectsNone()
    {
        DialogFixture f(QStringLiteral("9600,E,7,1"), false);
        f.dialog->Form_Load();
        QVERIFY(!f.dialog->portWasOpen());
        QCOMPARE(f.dialog->ComP->currentRow(), 0);
        QCOMPARE(f.dialog->BaudR->currentRow(), 4);
        QVERIFY(f.dialog->EvenParity->isChecked());
        QVERIFY(f.dialog->Data7->isChecked());
        QVERIFY(f.dialog->Stop1->isChecked());
    }

    void unknownSpeedLoadsUnselectedAndOkFailsWithError2()
    {
        DialogFixture f(QStringLiteral("1234,N,8,2"));
        f.dialog->show();
        f.dialog->Form_Load();
        QVERIFY(f.dialog->BaudR->selectedItems().isEmpty());
        f.dialog->OKButton_Click();
        QCOMPARE(f.prompts.boxes.size(), 1);
        QVERIFY(f.prompts.boxes[0].startsWith(QStringLiteral("Comm Port Error 2|")));
        QVERIFY(f.prompts.boxes[0].size() > QStringLiteral("Comm Port Error 2|").size());
        QCOMPARE(f.prompts.icons[0], QMessageBox::Warning);
        QVERIFY(f.dialog->isVisible());
        QVERIFY(!f.host.pollOn);
        QVERIFY(f.host.store.values.isEmpty());
    }

    void markOrSpaceParityLoadsWithNoParitySelected_data()
    {
        QTest::addColumn<QString>("settings");
        QTest::newRow("m") << "4800,m,8,2";
        QTest::newRow("s") << "4800,s,8,2";
    }
    void markOrSpaceParityLoadsWithNoParitySelected()
    {
        QFETCH(QString, settings);
        DialogFixture f(settings);
        f.dialog->Form_Load();
        QVERIFY(!f.dialog->NoParity->isChecked());
        QVERIFY(!f.dialog->EvenParity->isChecked());
        QVERIFY(!f.dialog->OddParity->isChecked());
        QVERIFY(f.dialog->parityLetter().isEmpty());
    }

    void oneAndAHalfStopBitsLoadAsOne()
    {
        DialogFixture f(QStringLiteral("4800,N,8,1.5"));
        f.dialog->Form_Load();
        QVERIFY(f.dialog->Stop1->isChecked());
    }

    void choosingNoneSavesZeroTwiceAndLeavesThePortClosed()
    {
        DialogFixture f;
        f.dialog->Form_Load();
        f.dialog->ComP->setCurrentRow(0);
        f.dialog->OKButton_Click();
        QVERIFY(f.prompts.boxes.isEmpty());
        QVERIFY(!f.host.port->isOpen());
        QCOMPARE(f.host.store.values.value("CommPort/Com:"), QStringLiteral("0"));
        QCOMPARE(f.host.store.values.value("Radio/Type"), QStringLiteral("0"));
        QCOMPARE(f.host.store.values.value("CommPort/Set"), QStringLiteral("4800,N,8,2"));
        QVERIFY(f.host.pollOn);
    }

    void okOpensTheChosenPortAndSavesIt()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        f.dialog->ComP->setCurrentRow(3);
        f.dialog->BaudR->setCurrentRow(4);
        f.dialog->OddParity->click();
        f.dialog->Data7->click();
        f.dialog->Stop1->click();
        f.dialog->OKButton_Click();
        QVERIFY(f.prompts.boxes.isEmpty());
        QVERIFY(f.host.port->isOpen());
        QCOMPARE(f.host.port->device(), PortCatalog::numberedDevice(3));
        QCOMPARE(f.host.port->settings(), QStringLiteral("9600,O,7,1"));
        QCOMPARE(f.host.store.values.value("CommPort/Com:"), QStringLiteral("3"));
        QCOMPARE(f.host.store.values.value("CommPort/Set"), QStringLiteral("9600,O,7,1"));
        QCOMPARE(f.host.store.values.value("Radio/Type"), QStringLiteral("3"));
        QVERIFY(f.host.pollOn);
        QVERIFY(!f.dialog->isVisible());
    }

    void successfulOkWaits50msBeforeSaving()
    {
        DialogFixture f;
        f.dialog->Form_Load();
        bool savedBeforeTheWait = true;
        f.host.clock->onSleep = [&](int) { savedBeforeTheWait = f.host.store.values.contains("CommPort/Com:"); };
        f.host.clock->events.clear();
        f.dialog->OKButton_Click();
        QVERIFY(f.host.clock->events.contains(QStringLiteral("sleep 50")));
        QVERIFY(!savedBeforeTheWait);
        QVERIFY(f.host.store.values.contains("CommPort/Com:"));
    }

    void otherDevicePathIsSavedAsPortNine()
    {
        DialogFixture f;
        f.dialog->Form_Load();
        f.dialog->ComP->setCurrentRow(-1);
        f.dialog->DevicePath->setText(QStringLiteral("/dev/pts/9"));
        QCOMPARE(f.dialog->chosenPortNumber(), PortCatalog::OtherDevice);
        f.dialog->OKButton_Click();
        QVERIFY(f.host.port->isOpen());
        QCOMPARE(f.host.port->device(), QStringLiteral("/dev/pts/9"));
        QCOMPARE(f.host.store.values.value("CommPort/Com:"), QStringLiteral("9"));
        QCOMPARE(f.host.store.values.value("CommPort/Device"), QStringLiteral("/dev/pts/9"));
    }

    void openedOtherDeviceShowsAsItsEntry()
    {
        DialogFixture f;
        f.host.port->setDevice(QStringLiteral("/dev/pts/3"));
        f.dialog->Form_Load();
        QVERIFY(f.dialog->ComP->currentRow() > 8);
        QCOMPARE(f.dialog->ComP->currentItem()->text(), QStringLiteral("/dev/pts/3"));
        QCOMPARE(f.dialog->DevicePath->text(), QStringLiteral("/dev/pts/3"));
    }

    void portThatWillNotOpenGivesError3AndForgetsThePort()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        f.host.port->refusedDevices << PortCatalog::numberedDevice(5);
        f.dialog->ComP->setCurrentRow(5);
        f.dialog->OKButton_Click();
        QCOMPARE(f.prompts.boxes, QStringList{"Comm Port Error 3|No such file or directory"});
        QCOMPARE(f.host.port->device(), QString());
        QVERIFY(!f.host.port->isOpen());
        QVERIFY(f.dialog->isVisible());
        QVERIFY(f.host.store.values.isEmpty());
        QVERIFY(!f.host.pollOn);
    }

    void noPortChosenGivesError1()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        f.dialog->ComP->setCurrentRow(-1);
        f.dialog->DevicePath->clear();
        f.dialog->OKButton_Click();
        QCOMPARE(f.prompts.boxes, QStringList{"Comm Port Error 1|Invalid port number"});
        QVERIFY(f.dialog->isVisible());
        QVERIFY(f.host.store.values.isEmpty());
    }

    void reopeningAPortThatWasOpenCanFailWithError1()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        QString e;
        f.host.port->open(&e);  // open again behind the dialog's back
        f.host.port->openError = QStringLiteral("Device busy");
        f.dialog->ComP->setCurrentRow(4);
        f.dialog->OKButton_Click();
        QCOMPARE(f.prompts.boxes, QStringList{"Comm Port Error 1|Device busy"});
        QCOMPARE(f.host.port->device(), QString());
        QVERIFY(f.dialog->isVisible());
    }

    void cancelReopensAPortThatWasOpen()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        QVERIFY(!f.host.port->isOpen());
        f.dialog->CancelButton_Click();
        QVERIFY(f.host.port->isOpen());
        QVERIFY(f.host.pollOn);
        QVERIFY(!f.dialog->isVisible());
        QVERIFY(f.host.store.values.isEmpty());
    }

    void cancelLeavesAClosedPortClosed()
    {
        DialogFixture f(QStringLiteral("4800,n,8,2"), false);
        f.dialog->Form_Load();
        f.dialog->CancelButton_Click();
        QVERIFY(!f.host.port->isOpen());
        QVERIFY(f.host.pollOn);
    }

    void escapeActsAsCancel()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        QTest::keyClick(f.dialog.get(), Qt::Key_Escape);
        QVERIFY(f.host.port->isOpen());
        QVERIFY(!f.dialog->isVisible());
    }

    void helpDoesNothing()
    {
        DialogFixture f;
        f.dialog->show();
        f.dialog->Form_Load();
        f.host.clock->events.clear();
        f.dialog->HelpButton->click();
        QVERIFY(f.dialog->isVisible());
        QVERIFY(f.host.clock->events.isEmpty());
        QVERIFY(f.host.store.values.isEmpty());
        QVERIFY(f.prompts.boxes.isEmpty());
    }

    void optionButtonsRecordTheirLetters()
    {
        DialogFixture f;
        f.dialog->Form_Load();
        f.dialog->EvenParity->click();
        QCOMPARE(f.dialog->parityLetter(), QStringLiteral("E"));
        f.dialog->OddParity->click();
        QCOMPARE(f.dialog->parityLetter(), QStringLiteral("O"));
        f.dialog->NoParity->click();
        QCOMPARE(f.dialog->parityLetter(), QStringLiteral("N"));
        f.dialog->Data7->click();
        QCOMPARE(f.dialog->dataBits(), QStringLiteral("7"));
        f.dialog->Stop1->click();
        QCOMPARE(f.dialog->stopBits(), QStringLiteral("1"));
    }

    void destroyingTheDialogRunsTheOkStepsOnceMore()
    {
        FakeConsoleHost host;
        RecordingPrompts prompts;
        host.port->setDevice(PortCatalog::numberedDevice(2));
        {
            ConfigScrn d(host, prompts);
            d.Form_Load();
            d.ComP->setCurrentRow(4);
            d.CancelButton_Click();
            QVERIFY(host.store.values.isEmpty());
        }
        QCOMPARE(host.store.values.value("CommPort/Com:"), QStringLiteral("4"));
        QCOMPARE(host.port->device(), PortCatalog::numberedDevice(4));
        QVERIFY(host.port->isOpen());
    }

    void runOnAPortForThisRunOnlyStoresNothingWhenTheDialogGoes()
    {
        FakeConsoleHost host;
        RecordingPrompts prompts;
        host.port->setDevice(QStringLiteral("/dev/pts/7"));
        {
            ConfigScrn d(host, prompts);
            d.setRerunOkOnRelease(false);
            d.Form_Load();
            d.CancelButton_Click();
        }
        QVERIFY(host.store.values.isEmpty());
        QCOMPARE(host.port->device(), QStringLiteral("/dev/pts/7"));
    }

    void dialogNeverLoadedDoesNothingWhenDestroyed()
    {
        FakeConsoleHost host;
        RecordingPrompts prompts;
        {
            ConfigScrn d(host, prompts);
        }
        QVERIFY(host.store.values.isEmpty());
        QVERIFY(host.pollChanges.isEmpty());
    }

    void screenshot()
    {
        DialogFixture f;
        f.dialog->Form_Load();
        f.dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.dialog.get()));
        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (out.isEmpty())
            QSKIP("FT_TEST_OUTPUT not set");
        QVERIFY(f.dialog->grab().save(out + QStringLiteral("/configscrn.png")));
    }
};

QTEST_MAIN(TestConfigScrn)
#include "test_config_scrn.moc"
