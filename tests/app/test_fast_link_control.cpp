// SPDX-License-Identifier: GPL-3.0-or-later
// Setup > Fast Link: the stored choice, the menu item's check mark, the run's own --fast-link, and
// the link's mode following them.
#include "ConsoleFixture.h"
#include "FastLinkControl.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QTest>

namespace {
struct Fixture {
    explicit Fixture(const QString& stored = {})
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
        if (!stored.isNull())
            store.setValue(QStringLiteral("Settings"), QStringLiteral("FastLink"), stored);
        form = std::make_unique<Form1>(link, store, windows, prompts);
    }
    QAction* setupItem(const QString& caption) const
    {
        for (QAction* a : form->setupMenu()->actions())
            if (a->text() == caption)
                return a;
        return nullptr;
    }

    std::shared_ptr<FakeClock> clock;
    MemorySettingsStore store;
    FakeWindows windows;
    FakePrompts prompts;
    RadioLink link;
    std::unique_ptr<Form1> form;
};
}  // namespace

class TestFastLinkControl : public QObject {
    Q_OBJECT
private slots:
    void offByDefaultWithAnUncheckedItem()
    {
        Fixture f;
        FastLinkControl c(*f.form, f.store, false);
        QAction* item = f.setupItem(QStringLiteral("Fast Link"));
        QVERIFY(item);
        QVERIFY(item->isCheckable());
        QVERIFY(!item->isChecked());
        QVERIFY(!f.link.fastLink());
        QVERIFY(!f.store.contains(QStringLiteral("Settings"), QStringLiteral("FastLink")));
    }

    void storedOneTurnsItOnAtStart()
    {
        Fixture f(QStringLiteral("1"));
        FastLinkControl c(*f.form, f.store, false);
        QVERIFY(f.setupItem(QStringLiteral("Fast Link"))->isChecked());
        QVERIFY(f.link.fastLink());
    }

    void clickingTheItemStoresTheChoiceAndSwitchesTheLink()
    {
        Fixture f;
        FastLinkControl c(*f.form, f.store, false);
        QAction* item = f.setupItem(QStringLiteral("Fast Link"));
        item->trigger();
        QVERIFY(item->isChecked());
        QVERIFY(f.link.fastLink());
        QCOMPARE(f.store.value(QStringLiteral("Settings"), QStringLiteral("FastLink")), QStringLiteral("1"));
        item->trigger();
        QVERIFY(!item->isChecked());
        QVERIFY(!f.link.fastLink());
        QCOMPARE(f.store.value(QStringLiteral("Settings"), QStringLiteral("FastLink")), QStringLiteral("0"));
    }

    void forTheRunItIsOnAndNothingIsStored()
    {
        Fixture f(QStringLiteral("0"));
        FastLinkControl c(*f.form, f.store, true);
        QVERIFY(f.setupItem(QStringLiteral("Fast Link"))->isChecked());
        QVERIFY(f.link.fastLink());
        QCOMPARE(f.store.value(QStringLiteral("Settings"), QStringLiteral("FastLink")), QStringLiteral("0"));
    }

    void theStatusBarShowsThePollsPerSecondOnceTwoPollsHaveRun()
    {
        Fixture f;
        FastLinkControl c(*f.form, f.store, false);
        QCOMPARE(c.rateText(), QString());
        emit f.form->pollFinished();
        QTest::qWait(250);
        emit f.form->pollFinished();
        QVERIFY2(c.rateText().endsWith(QStringLiteral(" polls/s")), qPrintable(c.rateText()));
        auto* label = f.form->findChild<QLabel*>(QStringLiteral("pollRate"));
        QVERIFY(label);
        QCOMPARE(label->text(), c.rateText());
    }
};

QTEST_MAIN(TestFastLinkControl)
#include "test_fast_link_control.moc"
