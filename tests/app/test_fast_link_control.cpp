// SPDX-License-Identifier: GPL-3.0-or-later
// Setup > Fast Link: the stored choice, the menu item's check mark, the run's own --fast-link, and
// the link's mode following them.
#include "ConsoleFixture.h"
#include "FastLinkControl.h"
#include "VirtualRadio.h"

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
                  serial = p.get();
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

    FakeSerialPort* port() const { return serial; }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* serial = nullptr;
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

    void followKnobIsOnByDefaultAndStoredWhenClicked()
    {
        Fixture f(QStringLiteral("1"));
        FastLinkControl c(*f.form, f.store, false);
        QAction* follow = f.setupItem(QStringLiteral("Follow Knob"));
        QVERIFY(follow);
        QVERIFY(follow->isCheckable());
        QVERIFY(follow->isChecked());
        QVERIFY(follow->isEnabled());
        QVERIFY(f.form->followKnob());
        QVERIFY(!f.store.contains(QStringLiteral("Settings"), QStringLiteral("FollowKnob")));
        follow->trigger();
        QVERIFY(!follow->isChecked());
        QVERIFY(!f.form->followKnob());
        QCOMPARE(f.store.value(QStringLiteral("Settings"), QStringLiteral("FollowKnob")), QStringLiteral("0"));
        follow->trigger();
        QCOMPARE(f.store.value(QStringLiteral("Settings"), QStringLiteral("FollowKnob")), QStringLiteral("1"));
    }

    void storedZeroStartsWithoutFollowing()
    {
        Fixture f(QStringLiteral("1"));
        f.store.setValue(QStringLiteral("Settings"), QStringLiteral("FollowKnob"), QStringLiteral("0"));
        FastLinkControl c(*f.form, f.store, false);
        QVERIFY(!f.setupItem(QStringLiteral("Follow Knob"))->isChecked());
        QVERIFY(!f.form->followKnob());
    }

    void followKnobIsGreyedWithoutTheFastLinkAndKeepsItsMark()
    {
        Fixture f;
        FastLinkControl c(*f.form, f.store, false);
        QAction* follow = f.setupItem(QStringLiteral("Follow Knob"));
        QVERIFY(!follow->isEnabled());
        QVERIFY(follow->isChecked());
        f.setupItem(QStringLiteral("Fast Link"))->trigger();
        QVERIFY(follow->isEnabled());
        f.setupItem(QStringLiteral("Fast Link"))->trigger();
        QVERIFY(!follow->isEnabled());
        QVERIFY(follow->isChecked());
    }

    void theStatusBarShowsUpdatesPerSecondWhileFollowing()
    {
        Fixture f(QStringLiteral("1"));
        VirtualRadio radio;
        int knobSteps = 0;
        // The knob turns a step at each status read, while steps remain; about 4800 baud of line time.
        f.port()->responder = [&](const QByteArray& command) {
            if (quint8(command[4]) == Op::StatusRequest && knobSteps > 0) {
                VfoState v = radio.vfo(VirtualRadio::Vfo::A);
                v.freq10Hz += 1;
                radio.setVfo(VirtualRadio::Vfo::A, v);
                --knobSteps;
            }
            const QByteArray reply = radio.handle(command);
            f.clock->advance(2 * (command.size() + reply.size()));
            return reply;
        };
        FastLinkControl c(*f.form, f.store, false);
        QStringList shown;
        connect(f.form.get(), &Form1::readingShown, this, [&] { shown << c.rateText(); });
        f.form->setPollEnabled(true);
        f.form->Get_Status32(0);
        QTest::qWait(150);  // the rate counts on the wall clock
        knobSteps = 8;
        f.form->Get_Status32(0);
        f.form->setPollEnabled(false);
        QVERIFY(shown.size() >= 3);
        QVERIFY2(shown.last().endsWith(QStringLiteral(" updates/s")), qPrintable(shown.join(u'|')));
        // Resting: the polls per second again.
        emit f.form->pollFinished();
        QVERIFY2(c.rateText().endsWith(QStringLiteral(" polls/s")), qPrintable(c.rateText()));
    }
};

QTEST_MAIN(TestFastLinkControl)
#include "test_fast_link_control.moc"
