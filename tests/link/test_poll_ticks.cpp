// SPDX-License-Identifier: GPL-3.0-or-later
// Timer ticks on a busy link: one that falls due while its poll runs is remembered and runs as soon
// as the link is free, behind what was posted meanwhile; never more than one.
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "Procedures.h"
#include "RadioLink.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <atomic>

namespace {
constexpr int TickMs = 250;

// An inline link on a fake clock whose 250 ms timer fires during the sleeps of the jobs.
struct TickedLink {
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    FakeSerialPort* port = nullptr;
    RadioLink link{[this] {
                       auto p = std::make_unique<FakeSerialPort>(clock.get());
                       port = p.get();
                       p->open(nullptr);
                       return p;
                   },
                   clock, RadioLink::Mode::Inline};
    QList<qint64> pollStarts;
    qint64 nextTick = TickMs;
    qint64 lastTickAt = 1300;            // the timer stops here, so that an inline run comes to an end
    std::function<void(qint64)> onTime;  // the test's own events, at a time

    // A 600 ms poll: the status, meter and flag waits of the exact mode.
    RadioLink::Job poll()
    {
        return [this](CatPort& p) {
            pollStarts << clock->nowMs();
            p.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo), 100, true);
            p.request(CatCommand::make(Op::StatusRequest, StatusKind::BothVfos), 200);
            for (int i = 0; i < 4; ++i)
                p.request(CatCommand::make(Op::ReadMeter), 50, true);
            p.request(CatCommand::make(Op::ReadFlags, 1), 100);
        };
    }
    void tick() { link.postTick(JobKind::Poll, poll()); }

    TickedLink()
    {
        clock->onSleep = [this](int) {
            while (clock->nowMs() >= nextTick && nextTick <= lastTickAt) {
                const qint64 at = nextTick;
                nextTick += TickMs;
                tick();
                if (onTime)
                    onTime(at);
            }
        };
    }
};
}  // namespace

class TestPollTicks : public QObject {
    Q_OBJECT
private slots:
    void aPollIsFollowedAtOnceByTheTickThatFellDue()
    {
        TickedLink l;
        l.tick();
        // Each poll's first tick is kept; the last tick, at 1250 ms, fell during the third poll.
        QCOMPARE(l.pollStarts, (QList<qint64>{0, 600, 1200, 1800}));
    }

    void neverMoreThanOneTickIsRemembered()
    {
        TickedLink l;
        l.lastTickAt = 1000;
        // A poll held up for a whole second sees four ticks fall due: one poll follows it, not four.
        l.link.postTick(JobKind::Poll, [&](CatPort& p) {
            l.pollStarts << l.clock->nowMs();
            p.sleep(1000);
        });
        QCOMPARE(l.pollStarts, (QList<qint64>{0, 1000}));
    }

    void aKeyPressPostedBetweenTwoPollsGoesFirst()
    {
        TickedLink l;
        QStringList order;
        bool pressed = false;
        l.onTime = [&](qint64 at) {
            // The operator clicks a key as the 250 ms tick falls due, during the first poll.
            if (at >= 250 && !pressed) {
                pressed = true;
                l.link.post([&](CatPort& p) {
                    order << QStringLiteral("key at %1").arg(l.clock->nowMs());
                    p.send(CatCommand::make(Op::SetMode, ModeCode::Usb));
                });
            }
        };
        l.tick();
        order << QStringLiteral("polls %1").arg(l.pollStarts.size());
        QVERIFY(order.size() >= 2);
        QCOMPARE(order.first(), QStringLiteral("key at 600"));
        // The key's command went out between the first poll's flags read and the next poll's status.
        const QStringList sent = l.port->writtenHex();
        const int key = static_cast<int>(sent.indexOf(QStringLiteral("00 00 00 01 0C")));
        QCOMPARE(sent.at(key - 1), QStringLiteral("00 00 00 01 FA"));
        QCOMPARE(sent.at(key + 1), QStringLiteral("00 00 00 02 10"));
        QCOMPARE(l.pollStarts.at(1), 600);
    }

    void turningThePollOffForgetsTheTickThatFellDue()
    {
        TickedLink l;
        l.lastTickAt = TickMs;
        l.onTime = [&](qint64) {
            // A sweep starts during the first poll, after the tick fell due: the poll is turned off
            // and the sweep's pass is posted; nothing of the poll may run after the pass.
            l.link.forgetDue(JobKind::Poll);
            l.link.post([](CatPort& p) { p.send(CatCommand::make(Op::SetMode, ModeCode::Usb)); });
        };
        l.tick();
        QCOMPARE(l.pollStarts, (QList<qint64>{0}));
        QCOMPARE(l.port->writtenHex().last(), QStringLiteral("00 00 00 01 0C"));
    }

    void aForgottenTickAlreadyOnItsWayIsDropped()
    {
        // Threaded: the poll ended and handed its remembered tick to this thread before the poll
        // was turned off; the tick arrives afterwards and must not run.
        auto clock = std::make_shared<FakeClock>();
        RadioLink link(
            [clock] {
                auto p = std::make_unique<FakeSerialPort>(clock.get());
                p->open(nullptr);
                return p;
            },
            clock, RadioLink::Mode::Threaded);
        std::atomic<int> polls{0};
        QSemaphore started, carryOn;
        link.postTick(JobKind::Poll, [&](CatPort&) {
            ++polls;
            started.release();
            carryOn.acquire();
        });
        started.acquire();
        link.postTick(JobKind::Poll, [&](CatPort&) { ++polls; });  // falls due while the first runs
        carryOn.release();
        // Idle again: the tick is on its way to this thread, which has not taken it yet.
        while (link.busyWith(JobKind::Poll))
            QThread::msleep(1);
        link.forgetDue(JobKind::Poll);
        QCoreApplication::processEvents();
        link.waitForIdle();
        QCOMPARE(polls.load(), 1);
        // Not forgotten, the same tick runs.
        link.postTick(JobKind::Poll, [&](CatPort&) {
            ++polls;
            started.release();
            carryOn.acquire();
        });
        started.acquire();
        link.postTick(JobKind::Poll, [&](CatPort&) { ++polls; });
        carryOn.release();
        link.waitForIdle();
        QCoreApplication::processEvents();
        link.waitForIdle();
        QCOMPARE(polls.load(), 3);
    }

    void mergedKindsStillDropATickThatFallsDueWhileTheyRun()
    {
        TickedLink l;
        int runs = 0;
        l.link.postMerged(JobKind::Stepper, [&](CatPort& p) {
            ++runs;
            QVERIFY(!l.link.postMerged(JobKind::Stepper, [&](CatPort&) { ++runs; }));
            p.sleep(10);
        });
        QCOMPARE(runs, 1);
    }
};

QTEST_GUILESS_MAIN(TestPollTicks)
#include "test_poll_ticks.moc"
