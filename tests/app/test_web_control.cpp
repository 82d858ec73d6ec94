// SPDX-License-Identifier: GPL-3.0-or-later
// Setup > "Web Panel...": the dialog, the stored settings and codes, the run's own --web, the status
// bar, and a code made anew ending its sessions; the panel on a fake radio.
#include "ConsoleFixture.h"
#include "FakeRig.h"
#include "WebClient.h"
#include "WebControl.h"
#include "WebDialog.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTcpServer>
#include <QTest>
#include <QTimer>

namespace {
quint16 freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

struct Fixture : ConsoleFixture {
    Fixture() { control = std::make_unique<WebControl>(*form, store, rig); }
    ~Fixture() { control.reset(); }
    QAction* setupItem(const QString& caption) const
    {
        for (QAction* a : form->setupMenu()->actions())
            if (a->text() == caption)
                return a;
        return nullptr;
    }
    QLabel* status() const { return form->findChild<QLabel*>(QStringLiteral("webStatus")); }
    void throughTheDialog(const std::function<void(WebDialog&)>& act)
    {
        bool seen = false;
        QTimer::singleShot(0, form.get(), [&] {
            auto* d = qobject_cast<WebDialog*>(QApplication::activeModalWidget());
            QVERIFY(d);
            seen = true;
            act(*d);
        });
        setupItem(QStringLiteral("Web Panel..."))->trigger();
        QVERIFY(seen);
    }

    FakeRig rig;
    std::unique_ptr<WebControl> control;
};
}  // namespace

class TestWebControl : public QObject {
    Q_OBJECT
private slots:
    void offByDefaultWithCodesMadeAndStored()
    {
        Fixture f;
        QVERIFY(f.setupItem(QStringLiteral("Web Panel...")));
        QString error;
        QVERIFY(f.control->start({}, &error));
        QVERIFY(!f.control->listening());
        QVERIFY(f.status()->isHidden());
        QVERIFY(AccessCodes::wellFormed(f.store.values.value("Web/ControlCode").toLatin1()));
        QVERIFY(AccessCodes::wellFormed(f.store.values.value("Web/ViewCode").toLatin1()));
        QCOMPARE(f.store.values.value("Web/Enabled"), QStringLiteral("0"));
    }

    void theDialogSwitchesThePanelOnAndShowsItsLinks()
    {
        Fixture f;
        f.control->start({}, nullptr);
        const quint16 port = freePort();
        QString controlLink;
        f.throughTheDialog([&](WebDialog& d) {
            QVERIFY(!d.enabled->isChecked());
            QCOMPARE(d.address->text(), QStringLiteral("127.0.0.1"));
            QCOMPARE(d.port->value(), 8073);
            d.enabled->setChecked(true);
            d.port->setValue(port);
            controlLink = d.controlLink->text();
            d.copyControl->click();
            QCOMPARE(QGuiApplication::clipboard()->text(), controlLink);
            d.accept();
        });
        const QString code = f.store.values.value("Web/ControlCode");
        QCOMPARE(controlLink, QStringLiteral("http://127.0.0.1:%1/#%2").arg(port).arg(code));
        QVERIFY(f.control->listening());
        QCOMPARE(f.store.values.value("Web/Enabled"), QStringLiteral("1"));
        QCOMPARE(f.store.values.value("Web/Port"), QString::number(port));
        QVERIFY(!f.status()->isHidden());
        QCOMPARE(f.status()->text(), QStringLiteral("Web http://127.0.0.1:%1/, 0 sessions").arg(port));

        WebClient browser(QStringLiteral("http://127.0.0.1:%1").arg(port));
        QCOMPARE(browser.login(code.toLatin1()).status, 200);
        PanelSocket ws(QStringLiteral("ws://127.0.0.1:%1/ws").arg(port), browser.origin(), browser.cookie);
        QVERIFY(ws.waitOpen());
        QTRY_COMPARE(f.status()->text(), QStringLiteral("Web http://127.0.0.1:%1/, 1 session").arg(port));
    }

    void theDialogWarnsOfClearTextBeyondTheLoopback()
    {
        Fixture f;
        f.throughTheDialog([&](WebDialog& d) {
            QVERIFY(d.clearTextWarning->isHidden());
            d.address->setText(QStringLiteral("0.0.0.0"));
            QVERIFY(!d.clearTextWarning->isHidden());
            QVERIFY(d.clearTextWarning->text().contains("clear text"));
            QVERIFY(d.clearTextWarning->text().contains("SSH tunnel"));
            d.certFile->setText(QStringLiteral("/etc/cert.pem"));
            d.keyFile->setText(QStringLiteral("/etc/key.pem"));
            QVERIFY(d.clearTextWarning->isHidden());
            QVERIFY(d.controlLink->text().startsWith("https://"));
            d.reject();
        });
        QCOMPARE(f.store.values.value("Web/Address", QStringLiteral("unset")), QStringLiteral("unset"));
    }

    void aCodeMadeAnewEndsTheSessionsOfTheOld()
    {
        Fixture f;
        const quint16 port = freePort();
        f.store.values.insert("Web/Enabled", "1");
        f.store.values.insert("Web/Port", QString::number(port));
        QVERIFY(f.control->start({}, nullptr));
        QVERIFY(f.control->listening());
        const QByteArray oldCode = f.store.values.value("Web/ControlCode").toLatin1();
        WebClient browser(QStringLiteral("http://127.0.0.1:%1").arg(port));
        QCOMPARE(browser.login(oldCode).status, 200);
        PanelSocket ws(QStringLiteral("ws://127.0.0.1:%1/ws").arg(port), browser.origin(), browser.cookie);
        QVERIFY(ws.waitOpen());
        f.throughTheDialog([&](WebDialog& d) {
            const QString before = d.controlLink->text();
            d.newControl->click();
            QVERIFY(d.controlLink->text() != before);
            d.accept();
        });
        const QByteArray newCode = f.store.values.value("Web/ControlCode").toLatin1();
        QVERIFY(newCode != oldCode);
        QTRY_VERIFY(ws.ws.state() != QAbstractSocket::ConnectedState);
        QCOMPARE(browser.login(oldCode).status, 403);
        QCOMPARE(browser.login(newCode).status, 200);
    }

    void theRunsOwnEndpointStoresNothing()
    {
        Fixture f;
        const quint16 port = freePort();
        WebControl::RunOptions run;
        run.endpoint = WebSettings::Endpoint{QStringLiteral("127.0.0.1"), port};
        QString error;
        QVERIFY2(f.control->start(run, &error), qPrintable(error));
        QVERIFY(f.control->listening());
        QCOMPARE(f.control->address(), QStringLiteral("http://127.0.0.1:%1/").arg(port));
        QCOMPARE(f.store.values.value("Web/Enabled"), QStringLiteral("0"));
        QCOMPARE(f.store.values.value("Web/Port", QStringLiteral("unset")), QStringLiteral("8073"));
    }

    void aCertificateWithoutAKeyIsRefused()
    {
        Fixture f;
        WebControl::RunOptions run;
        run.certFile = QStringLiteral("/etc/cert.pem");
        QString error;
        QVERIFY(!f.control->start(run, &error));
        QVERIFY(error.contains("--web-key"));
    }
};

QTEST_MAIN(TestWebControl)
#include "test_web_control.moc"
