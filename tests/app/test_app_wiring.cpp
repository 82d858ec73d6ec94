// SPDX-License-Identifier: GPL-3.0-or-later
// The main window with the real windows and the network server wired to it, on a fake port
// answered by the virtual radio's model.
#include "AppWindows.h"
#include "ConsoleFixture.h"
#include "Frm_Filt.h"
#include "LinkRig.h"
#include "Mem_Frm.h"
#include "NativePort.h"
#include "NetworkControl.h"
#include "RigctlServer.h"
#include "Twips.h"
#include "VirtualRadio.h"
#include "frmAbout.h"
#include "frmOptions.h"
#include "frm_Navig.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTcpSocket>
#include <QTest>

namespace {
constexpr int MList = 22, KPad = 25, Filters = 26, Edsp = 27, Notch = 28;

struct AppFixture {
    AppFixture()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  p->setDevice(QStringLiteral("/dev/ttyS0"));
                  QString e;
                  p->open(&e);
                  p->responder = [this](const QByteArray& command) { return radio.handle(command); };
                  return p;
              },
              clock, RadioLink::Mode::Inline)
    {
        form = std::make_unique<Form1>(link, store, windows, prompts);
        windows.setHost(form.get());
        network = std::make_unique<NetworkControl>(*form, store);
    }
    ~AppFixture()
    {
        network.reset();
        windows.closeAll();
        form.reset();
    }
    template <class W>
    W* shown() const
    {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* t = qobject_cast<W*>(w); t && t->isVisible())
                return t;
        return nullptr;
    }

    VirtualRadio radio;
    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    MemorySettingsStore store;
    AppWindows windows;
    FakePrompts prompts;
    RadioLink link;
    std::unique_ptr<Form1> form;
    std::unique_ptr<NetworkControl> network;
};
}  // namespace

class TestAppWiring : public QObject {
    Q_OBJECT
private slots:
    void mListOpensTheMemoryWindowAnewAfterItWasClosed()
    {
        AppFixture f;
        f.form->Key_Click(MList);
        Mem_Frm* first = f.shown<Mem_Frm>();
        QVERIFY(first);
        QCOMPARE(first->windowTitle(), QStringLiteral("FT-1000 Memory"));
        QPointer<Mem_Frm> gone(first);
        first->close();
        QTRY_VERIFY(gone.isNull());
        f.form->Key_Click(MList);
        QVERIFY(f.shown<Mem_Frm>());
    }

    void kPadOpensTheNavigatorAndThePollFeedsItsDisplay()
    {
        AppFixture f;
        f.form->Key_Click(KPad);
        frm_Navig* nav = f.shown<frm_Navig>();
        QVERIFY(nav);
        f.form->Get_Status32(0);
        QVERIFY(!f.form->Label2[1]->text().isEmpty());
        QCOMPARE(nav->Lbl_VFO->text().trimmed(), f.form->Label2[1]->text().trimmed());
    }

    void thePollLightsTheFilterWindowEvenWhenItIsHidden()
    {
        AppFixture f;
        f.radio.handle(CatCommand::make(Op::FilterSelect, 0, 0, 0, 1).bytes());  // main 8.2 MHz 2.4 kHz
        f.form->Get_Status32(0);
        f.form->Key_Click(Filters);
        Frm_Filt* filt = f.shown<Frm_Filt>();
        QVERIFY(filt);
        QCOMPARE(f.radio.filterByte(VirtualRadio::Vfo::A) & 0x70, 0x10);
        const QColor lit = filt->filtA[0]->palette().color(QPalette::Button);
        QCOMPARE(lit, fromBgr(0xC0FFFF));
        QVERIFY(filt->filtA[4]->palette().color(QPalette::Button) != lit);
    }

    void notchKeyGoesThroughTheEdspDialog()
    {
        AppFixture f;
        f.form->Key_Click(Edsp);
        QVERIFY(f.shown<frmOptions>());
        f.port->writes.clear();
        // Neither button of the pair is selected in a fresh dialog, so the key selects "Off"; the
        // menu mark toggles whichever was chosen.
        f.form->Key_Click(Notch);
        QCOMPARE(f.port->writtenHex(), QStringList{QStringLiteral("00 00 00 4B 75")});
        QVERIFY(f.form->edspMenuChecked(false, 9));
        f.form->Key_Click(Notch);
        QCOMPARE(f.port->writtenHex().last(), QStringLiteral("00 00 10 4B 75"));
        QVERIFY(!f.form->edspMenuChecked(false, 9));
    }

    void contourOffSendsEqualizationOffOnceAndNothingWhenItIsAlreadySelected()
    {
        AppFixture f;
        f.port->writes.clear();
        // The dialog is loaded hidden; "Equalization Off" is not selected in a fresh one, so the item
        // sends its command and sets the menu marks.
        f.form->mnu_EDSPR[1]->trigger();
        QVERIFY(!f.shown<frmOptions>());
        QCOMPARE(f.port->writtenHex(), QStringList{QStringLiteral("00 00 00 4E 75")});
        QVERIFY(f.form->edspMenuChecked(false, 1));
        QVERIFY(!f.form->edspMenuChecked(false, 0));
        f.port->writes.clear();
        f.form->mnu_EDSPR[1]->trigger();
        QVERIFY(f.port->writes.isEmpty());
    }

    void aboutShowsTheAboutBox()
    {
        AppFixture f;
        f.form->mnu_Hlp_Click(2);
        frmAbout* about = f.shown<frmAbout>();
        QVERIFY(about);
        QCOMPARE(about->windowTitle(), QStringLiteral("About Tovra's FT-1000 CAT"));
        QCOMPARE(about->lblVersion->text(), QStringLiteral("Version 1.2.0"));
    }

    void setupMenuOffersNetworkControl()
    {
        AppFixture f;
        QStringList items;
        for (QAction* a : f.form->setupMenu()->actions())
            items << a->text();
        QCOMPARE(items.last(), QStringLiteral("Network Control..."));
        // The items of the menu keep their indices: the new one comes after them.
        QCOMPARE(items.mid(0, 3),
                 (QStringList{QStringLiteral("Com Port"), QStringLiteral("-"), QStringLiteral("Authorize Tx")}));
    }

    void networkClientsReadWhatThePollShows()
    {
        AppFixture f;
        QString error;
        QVERIFY2(f.network->start(NetworkSettings::Endpoint{QStringLiteral("127.0.0.1"), 0}, &error),
                 qPrintable(error));
        QVERIFY(f.network->listening());
        auto* status = f.form->findChild<QLabel*>(QStringLiteral("networkStatus"));
        QVERIFY(status);
        QVERIFY(status->text().startsWith(QStringLiteral("rigctld 127.0.0.1:")));
        f.form->Get_Status32(0);

        QTcpSocket client;
        client.connectToHost(QStringLiteral("127.0.0.1"), f.network->server()->serverPort());
        QVERIFY(client.waitForConnected(5000));
        client.write("f\n");
        QByteArray reply;
        QTRY_VERIFY((reply += client.readAll()).contains('\n'));
        const qint64 hz = f.radio.mainReceiver().freq10Hz * 10;
        QCOMPARE(reply.trimmed(), QByteArray::number(hz));
        QTRY_VERIFY(status->text().endsWith(QStringLiteral("1 client")));
    }

    void networkTransmitFollowsTheTransmitPermission()
    {
        AppFixture f;
        QString error;
        QVERIFY(f.network->start(NetworkSettings::Endpoint{QStringLiteral("127.0.0.1"), 0}, &error));
        f.form->Get_Status32(0);
        QTcpSocket client;
        client.connectToHost(QStringLiteral("127.0.0.1"), f.network->server()->serverPort());
        QVERIFY(client.waitForConnected(5000));
        auto ask = [&](const QByteArray& line) {
            client.write(line);
            QByteArray r;
            [&] { QTRY_VERIFY((r += client.readAll()).contains('\n')); }();
            return r.trimmed();
        };
        f.port->writes.clear();
        QCOMPARE(ask("T 1\n"), QByteArray("RPRT -9"));
        QVERIFY(f.port->writes.isEmpty());
        f.form->mnu_Stup_Click(2);  // Authorize Tx
        QCOMPARE(ask("T 1\n"), QByteArray("RPRT 0"));
        QCOMPARE(f.port->writtenHex(), QStringList{QStringLiteral("00 00 00 01 0F")});
        // Closing the window unkeys the transmitter before the port is closed.
        f.form->close();
        QCOMPARE(f.port->writtenHex().last(), QStringLiteral("00 00 00 00 0F"));
    }

    void noClientKeysWhileTheScopeIsShown()
    {
        AppFixture f;
        QString error;
        QVERIFY(f.network->start(NetworkSettings::Endpoint{QStringLiteral("127.0.0.1"), 0}, &error));
        f.form->Get_Status32(0);
        f.form->mnu_Stup_Click(2);  // Authorize Tx
        QTcpSocket client;
        client.connectToHost(QStringLiteral("127.0.0.1"), f.network->server()->serverPort());
        QVERIFY(client.waitForConnected(5000));
        auto ask = [&](const QByteArray& line) {
            client.write(line);
            QByteArray r;
            [&] { QTRY_VERIFY((r += client.readAll()).contains('\n')); }();
            return r.trimmed();
        };
        QCOMPARE(ask("T 1\n"), QByteArray("RPRT 0"));
        f.port->writes.clear();
        f.form->Key_Click(FrontPanel::KeyIndex::Scope);  // the scope shown: the key is released at once
        QVERIFY(f.network->backend().scopeShown());
        QCOMPARE(f.port->writtenHex().value(0), QStringLiteral("00 00 00 00 0F"));
        QCOMPARE(ask("T 1\n"), QByteArray("RPRT -9"));
        QVERIFY(!f.port->writtenHex().contains(QStringLiteral("00 00 00 01 0F")));
        f.form->Key_Click(FrontPanel::KeyIndex::Scope);  // hidden again
        QVERIFY(!f.network->backend().scopeShown());
        QCOMPARE(ask("T 1\n"), QByteArray("RPRT 0"));
    }

    void aNativePortsKeyIsReleasedBeforeTheWindowClosesThePort()
    {
        AppFixture f;
        NativePort native(f.network->backend(), f.form->pollCache());
        f.form->Get_Status32(0);
        f.form->mnu_Stup_Click(2);  // Authorize Tx
        f.port->writes.clear();
        native.receive(CatCommand::make(Op::Ptt, 1).bytes());
        QCOMPARE(f.port->writtenHex(), QStringList{QStringLiteral("00 00 00 01 0F")});
        f.form->close();
        QCOMPARE(f.port->writtenHex(),
                 (QStringList{QStringLiteral("00 00 00 01 0F"), QStringLiteral("00 00 00 00 0F")}));
        QVERIFY(!f.link.portOpen());
    }

    void withdrawingAuthorizeTxUnkeysANativePortsKey()
    {
        AppFixture f;
        NativePort native(f.network->backend(), f.form->pollCache());
        f.form->Get_Status32(0);
        f.form->mnu_Stup_Click(2);
        native.receive(CatCommand::make(Op::Ptt, 2).bytes());  // any P4 but 0 keys
        f.port->writes.clear();
        f.form->mnu_Stup_Click(2);  // Authorize Tx unchecked
        QCOMPARE(f.port->writtenHex(), QStringList{QStringLiteral("00 00 00 00 0F")});
    }

    void openingThePortDialogReleasesAClientsKeyFirst()
    {
        AppFixture f;
        NativePort native(f.network->backend(), f.form->pollCache());
        f.form->Get_Status32(0);
        f.form->mnu_Stup_Click(2);
        native.receive(CatCommand::make(Op::Ptt, 1).bytes());
        f.port->writes.clear();
        f.form->showConfigScrn(false);
        QCOMPARE(f.port->writtenHex(), QStringList{QStringLiteral("00 00 00 00 0F")});
        QVERIFY(!f.link.portOpen());
    }
};

QTEST_MAIN(TestAppWiring)
#include "test_app_wiring.moc"
