// SPDX-License-Identifier: GPL-3.0-or-later
// Setup > "Sharing Ports...": the dialog, the stored choice, the run's own --share, the status bar
// and the ports' links, with the text port on a fake radio.
#include "ConsoleFixture.h"
#include "FakeRig.h"
#include "SharingControl.h"
#include "SharingDialog.h"
#include "TextPort.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>

namespace {
// A second port for the control to handle, standing for the native one: a text port under the
// native port's link name.
std::unique_ptr<SharingPort> textPortNamed(Rig& rig, const QString& name)
{
    return std::make_unique<SharingPortOf<TextPort>>(std::make_unique<TextPort>(rig, name), name);
}

struct Fixture {
    explicit Fixture(bool withNative = true)
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  p->setDevice(QStringLiteral("/dev/ttyS0"));
                  p->open(nullptr);
                  return p;
              },
              clock, RadioLink::Mode::Inline)
    {
        form = std::make_unique<Form1>(link, store, windows, prompts);
        control = std::make_unique<SharingControl>(*form, store,
                                                   withNative ? textPortNamed(rig, QStringLiteral("native")) : nullptr,
                                                   textPortNamed(rig, QStringLiteral("text")));
    }
    ~Fixture()
    {
        control.reset();
        form.reset();
    }
    QAction* setupItem(const QString& caption) const
    {
        for (QAction* a : form->setupMenu()->actions())
            if (a->text() == caption)
                return a;
        return nullptr;
    }
    QLabel* status(const QString& name) const { return form->findChild<QLabel*>(name + QStringLiteral("PortStatus")); }
    // Runs the dialog from the menu; `act` sees it shown and closes it.
    void throughTheDialog(const std::function<void(SharingDialog&)>& act)
    {
        bool seen = false;
        QTimer::singleShot(0, form.get(), [&] {
            auto* d = qobject_cast<SharingDialog*>(QApplication::activeModalWidget());
            QVERIFY(d);
            seen = true;
            act(*d);
        });
        setupItem(QStringLiteral("Sharing Ports..."))->trigger();
        QVERIFY(seen);
    }

    FakeRig rig{FakeRig::SharingScene};
    std::shared_ptr<FakeClock> clock;
    MemorySettingsStore store;
    FakeWindows windows;
    FakePrompts prompts;
    RadioLink link;
    std::unique_ptr<Form1> form;
    std::unique_ptr<SharingControl> control;
};

bool isLink(const QString& path)
{
    return QFileInfo(path).isSymLink();
}
}  // namespace

class TestSharingControl : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;
    QString linkOf(const QString& name) const { return runtime.path() + QStringLiteral("/ft1000cat/") + name; }

private slots:
    void initTestCase()
    {
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }

    void bothPortsStayClosedByDefault()
    {
        Fixture f;
        QString error;
        QVERIFY(f.control->start(std::nullopt, &error));
        QCOMPARE(f.control->openPorts(), SharingSettings{});
        QVERIFY(!isLink(linkOf(QStringLiteral("text"))));
        QVERIFY(!isLink(linkOf(QStringLiteral("native"))));
        QVERIFY(f.status(QStringLiteral("text"))->isHidden());
        QVERIFY(!f.store.contains(QStringLiteral("Sharing"), QStringLiteral("Text")));
    }

    void theStoredChoiceOpensItsPortsAndEachSaysWhere()
    {
        Fixture f;
        f.store.setValue(QStringLiteral("Sharing"), QStringLiteral("Text"), QStringLiteral("1"));
        f.store.setValue(QStringLiteral("Sharing"), QStringLiteral("Native"), QStringLiteral("1"));
        QSignalSpy lines(f.control.get(), &SharingControl::portOpened);
        QVERIFY(f.control->start(std::nullopt, nullptr));
        QCOMPARE(f.control->openPorts(), (SharingSettings{.native = true, .text = true}));
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(0).at(0).toString(),
                 QStringLiteral("Native port: %1").arg(f.control->nativePort()->terminalPath()));
        QCOMPARE(lines.at(1).at(0).toString(),
                 QStringLiteral("Text port: %1").arg(f.control->textPort()->terminalPath()));
        QVERIFY(f.control->textPort()->terminalPath().startsWith(QStringLiteral("/dev/pts/")));
        QCOMPARE(QFileInfo(linkOf(QStringLiteral("text"))).symLinkTarget(), f.control->textPort()->terminalPath());
        QCOMPARE(QFileInfo(linkOf(QStringLiteral("native"))).symLinkTarget(), f.control->nativePort()->terminalPath());
    }

    void theRunsOwnListOpensItsPortsAndStoresNothing()
    {
        Fixture f;
        f.store.setValue(QStringLiteral("Sharing"), QStringLiteral("Text"), QStringLiteral("0"));
        QVERIFY(f.control->start(SharingSettings{.native = false, .text = true}, nullptr));
        QCOMPARE(f.control->openPorts(), (SharingSettings{.native = false, .text = true}));
        QCOMPARE(f.store.value(QStringLiteral("Sharing"), QStringLiteral("Text")), QStringLiteral("0"));
        QVERIFY(!f.store.contains(QStringLiteral("Sharing"), QStringLiteral("Native")));
    }

    void theStatusBarCountsTheCommandsAnswered()
    {
        Fixture f;
        QVERIFY(f.control->start(SharingSettings{.native = false, .text = true}, nullptr));
        QLabel* label = f.status(QStringLiteral("text"));
        QVERIFY(label);
        QVERIFY(!label->isHidden());
        QCOMPARE(label->text(), QStringLiteral("Text port: 0"));
        QVERIFY(f.status(QStringLiteral("native"))->isHidden());
        const int fd = ::open(QFile::encodeName(linkOf(QStringLiteral("text"))).constData(), O_RDWR | O_NOCTTY);
        QVERIFY(fd >= 0);
        QCOMPARE(::write(fd, "ID;FA;FB;", 9), ssize_t(9));
        QTRY_COMPARE(label->text(), QStringLiteral("Text port: 3"));
        ::close(fd);
    }

    void switchingAPortOffRemovesItsLinkAndItsLabel()
    {
        Fixture f;
        QVERIFY(f.control->start(SharingSettings{.native = true, .text = true}, nullptr));
        QVERIFY(f.control->apply(SharingSettings{.native = true, .text = false}, nullptr));
        QVERIFY(!isLink(linkOf(QStringLiteral("text"))));
        QVERIFY(isLink(linkOf(QStringLiteral("native"))));
        QVERIFY(f.status(QStringLiteral("text"))->isHidden());
        QVERIFY(!f.status(QStringLiteral("native"))->isHidden());
    }

    void theWindowClosingClosesThePorts()
    {
        Fixture f;
        QVERIFY(f.control->start(SharingSettings{.native = true, .text = true}, nullptr));
        const QString terminal = f.control->textPort()->terminalPath();
        emit f.form->aboutToClose();
        QCOMPARE(f.control->openPorts(), SharingSettings{});
        QVERIFY(!isLink(linkOf(QStringLiteral("text"))));
        QVERIFY(!isLink(linkOf(QStringLiteral("native"))));
    }

    void theControlGoingLeavesNoLinkBehind()
    {
        Fixture f;
        QVERIFY(f.control->start(SharingSettings{.native = true, .text = true}, nullptr));
        f.control.reset();
        QVERIFY(!isLink(linkOf(QStringLiteral("text"))));
        QVERIFY(!isLink(linkOf(QStringLiteral("native"))));
    }

    void theMenuItemComesAfterTheOthers()
    {
        Fixture f;
        const QList<QAction*> items = f.form->setupMenu()->actions();
        QCOMPARE(items.last()->text(), QStringLiteral("Sharing Ports..."));
        QCOMPARE(items.first()->text(), QStringLiteral("Com Port"));
    }

    void theDialogShowsEachPortWithItsPathAndState()
    {
        Fixture f;
        QVERIFY(f.control->start(SharingSettings{.native = false, .text = true}, nullptr));
        f.throughTheDialog([&](SharingDialog& d) {
            QCOMPARE(d.windowTitle(), QStringLiteral("Sharing Ports"));
            QVERIFY(!d.native->isChecked());
            QVERIFY(d.text->isChecked());
            QCOMPARE(d.textPath->text(), linkOf(QStringLiteral("text")));
            QCOMPARE(d.nativePath->text(), linkOf(QStringLiteral("native")));  // where it will be
            QVERIFY(d.textPath->isReadOnly());
            QCOMPARE(d.textState->text(), QStringLiteral("Open on %1").arg(f.control->textPort()->terminalPath()));
            QCOMPARE(d.nativeState->text(), QStringLiteral("Closed"));
            d.reject();
        });
    }

    void theDialogKeepsTheDesktopsLookNotThePanels()
    {
        // The main window's dark panel style must not reach the dialogs it owns: its light text on
        // the desktop's light dialog background would be unreadable.
        Fixture f;
        QVERIFY(f.control->start(std::nullopt, nullptr));
        const QColor desktopText = QApplication::palette().color(QPalette::WindowText);
        const QColor desktopButtonText = QApplication::palette().color(QPalette::ButtonText);
        QColor stateText, boxText, buttonText;
        f.throughTheDialog([&](SharingDialog& d) {
            for (QWidget* w : std::initializer_list<QWidget*>{d.textState, d.text, d.copyText})
                w->ensurePolished();
            stateText = d.textState->palette().color(QPalette::WindowText);
            boxText = d.text->palette().color(QPalette::WindowText);
            buttonText = d.copyText->palette().color(QPalette::ButtonText);
            d.reject();
        });
        QCOMPARE(stateText, desktopText);
        QCOMPARE(boxText, desktopText);
        QCOMPARE(buttonText, desktopButtonText);
        // The panel keeps its own look.
        QLabel* onPanel = f.form->centralWidget()->findChild<QLabel*>();
        QVERIFY(onPanel);
        onPanel->ensurePolished();
        QVERIFY(onPanel->palette().color(QPalette::WindowText) != desktopText);
    }

    void theCopyButtonsPutThePathsOnTheClipboard()
    {
        Fixture f;
        f.throughTheDialog([&](SharingDialog& d) {
            QApplication::clipboard()->clear();
            QTest::mouseClick(d.copyText, Qt::LeftButton);
            QCOMPARE(QApplication::clipboard()->text(), linkOf(QStringLiteral("text")));
            QTest::mouseClick(d.copyNative, Qt::LeftButton);
            QCOMPARE(QApplication::clipboard()->text(), linkOf(QStringLiteral("native")));
            d.reject();
        });
    }

    void okStoresTheChoiceAndOpensAndClosesThePorts()
    {
        Fixture f;
        QSignalSpy lines(f.control.get(), &SharingControl::portOpened);
        f.throughTheDialog([](SharingDialog& d) {
            d.text->setChecked(true);
            d.accept();
        });
        QCOMPARE(f.store.value(QStringLiteral("Sharing"), QStringLiteral("Text")), QStringLiteral("1"));
        QCOMPARE(f.store.value(QStringLiteral("Sharing"), QStringLiteral("Native")), QStringLiteral("0"));
        QCOMPARE(f.control->openPorts(), (SharingSettings{.native = false, .text = true}));
        QCOMPARE(lines.size(), 1);
        QVERIFY(isLink(linkOf(QStringLiteral("text"))));
        f.throughTheDialog([](SharingDialog& d) {
            QVERIFY(d.text->isChecked());
            d.text->setChecked(false);
            d.native->setChecked(true);
            d.accept();
        });
        QCOMPARE(f.store.value(QStringLiteral("Sharing"), QStringLiteral("Text")), QStringLiteral("0"));
        QCOMPARE(f.store.value(QStringLiteral("Sharing"), QStringLiteral("Native")), QStringLiteral("1"));
        QCOMPARE(f.control->openPorts(), (SharingSettings{.native = true, .text = false}));
        QVERIFY(!isLink(linkOf(QStringLiteral("text"))));
    }

    void cancelChangesNothing()
    {
        Fixture f;
        f.throughTheDialog([](SharingDialog& d) {
            d.text->setChecked(true);
            d.native->setChecked(true);
            d.reject();
        });
        QCOMPARE(f.control->openPorts(), SharingSettings{});
        QVERIFY(!f.store.contains(QStringLiteral("Sharing"), QStringLiteral("Text")));
    }

    void mnemonicsReachTheCheckBoxes()
    {
        Fixture f;
        f.throughTheDialog([](SharingDialog& d) {
            d.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&d));
            // A mnemonic clicks its box with a short animation: the click follows a moment later.
            QTest::keyClick(d.windowHandle(), Qt::Key_T, Qt::AltModifier);
            QTRY_VERIFY(d.text->isChecked());
            QTest::keyClick(d.windowHandle(), Qt::Key_N, Qt::AltModifier);
            QTRY_VERIFY(d.native->isChecked());
            d.reject();
        });
    }

    void aBuildWithoutTheNativePortShowsOnlyTheText()
    {
        Fixture f(/*withNative=*/false);
        f.store.setValue(QStringLiteral("Sharing"), QStringLiteral("Native"), QStringLiteral("1"));
        QVERIFY(f.control->start(std::nullopt, nullptr));
        QCOMPARE(f.control->openPorts(), SharingSettings{});
        f.throughTheDialog([](SharingDialog& d) {
            QVERIFY(d.native->isHidden());
            QVERIFY(d.copyNative->isHidden());
            QVERIFY(!d.text->isHidden());
            d.text->setChecked(true);
            d.accept();
        });
        // What is stored for the missing port stays.
        QCOMPARE(f.store.value(QStringLiteral("Sharing"), QStringLiteral("Native")), QStringLiteral("1"));
        QCOMPARE(f.control->openPorts(), (SharingSettings{.native = false, .text = true}));
    }

    void screenshotOfTheDialog()
    {
        Fixture f;
        QVERIFY(f.control->start(SharingSettings{.native = false, .text = true}, nullptr));
        f.throughTheDialog([](SharingDialog& d) {
            const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
            if (!out.isEmpty())
                d.grab().save(out + QStringLiteral("/sharing-dialog.png"));
            d.reject();
        });
    }
};

QTEST_MAIN(TestSharingControl)
#include "test_sharing_control.moc"
