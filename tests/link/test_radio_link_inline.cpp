// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "Procedures.h"
#include "RadioLink.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

namespace {
struct InlineLink {
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    FakeSerialPort* port = nullptr;
    RadioLink link;
    explicit InlineLink(bool open = true)
        : link(
              [this, open] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  if (open)
                      p->open(nullptr);
                  return p;
              },
              clock, RadioLink::Mode::Inline)
    {
    }
};
}  // namespace

class TestRadioLinkInline : public QObject {
    Q_OBJECT
private slots:
    void jobRunsAtOnceOnTheCallersThread()
    {
        InlineLink l;
        QCOMPARE(l.link.mode(), RadioLink::Mode::Inline);
        QThread* ranOn = nullptr;
        l.link.post([&](CatPort& port) {
            ranOn = QThread::currentThread();
            SetFreq(port, 1425000, 1);
        });
        QCOMPARE(ranOn, QThread::currentThread());
        QCOMPARE(l.port->writtenHex(), QStringList{QStringLiteral("00 50 42 01 0A")});
        QCOMPARE(l.link.pendingJobs(), 0);
    }

    void jobsRunInTheOrderPosted()
    {
        InlineLink l;
        QList<int> order;
        for (int i = 0; i < 5; ++i)
            l.link.post([&order, i](CatPort&) { order << i; });
        QCOMPARE(order, (QList<int>{0, 1, 2, 3, 4}));
    }

    void jobPostedFromInsideAJobRunsAfterIt()
    {
        InlineLink l;
        QStringList steps;
        l.link.post([&](CatPort& port) {
            steps << QStringLiteral("outer start");
            l.link.post([&](CatPort& p) {
                steps << QStringLiteral("inner");
                p.send(CatCommand::make(Op::SetMode, 1));
            });
            steps << QStringLiteral("outer end");
            port.send(CatCommand::make(Op::SetMode, 0));
        });
        QCOMPARE(steps,
                 (QStringList{QStringLiteral("outer start"), QStringLiteral("outer end"), QStringLiteral("inner")}));
        QCOMPARE(l.port->writtenHex(),
                 (QStringList{QStringLiteral("00 00 00 00 0C"), QStringLiteral("00 00 00 01 0C")}));
    }

    void deliverRunsAtOnce()
    {
        InlineLink l;
        QObject receiver;
        QStringList steps;
        l.link.post([&](CatPort&) {
            l.link.deliver(&receiver, [&] { steps << QStringLiteral("delivered"); });
            steps << QStringLiteral("after deliver");
        });
        QCOMPARE(steps, (QStringList{QStringLiteral("delivered"), QStringLiteral("after deliver")}));
    }

    void deliverToNoReceiverIsSkipped()
    {
        InlineLink l;
        bool ran = false;
        l.link.deliver(nullptr, [&] { ran = true; });
        QVERIFY(!ran);
    }

    void postMergedMergesWhileTheSameKindIsBusy()
    {
        InlineLink l;
        int polls = 0;
        int steppers = 0;
        bool mergedInside = true;
        bool otherKindInside = false;
        const bool first = l.link.postMerged(JobKind::Poll, [&](CatPort&) {
            ++polls;
            QVERIFY(l.link.busyWith(JobKind::Poll));
            mergedInside = l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; });
            otherKindInside = l.link.postMerged(JobKind::Stepper, [&](CatPort&) { ++steppers; });
        });
        QVERIFY(first);
        QVERIFY(!mergedInside);
        QVERIFY(otherKindInside);
        QCOMPARE(polls, 1);
        QCOMPARE(steppers, 1);
        QVERIFY(!l.link.busyWith(JobKind::Poll));
        QVERIFY(!l.link.busyWith(JobKind::Stepper));
        QVERIFY(l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; }));
        QCOMPARE(polls, 2);
    }

    void mergedKindQueuedBehindARunningJobStaysBusyUntilItRuns()
    {
        InlineLink l;
        bool busyWhileQueued = false;
        bool secondTick = true;
        int polls = 0;
        l.link.post([&](CatPort&) {
            l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; });
            busyWhileQueued = l.link.busyWith(JobKind::Poll);
            secondTick = l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; });
        });
        QVERIFY(busyWhileQueued);
        QVERIFY(!secondTick);
        QCOMPARE(polls, 1);
    }

    void aWholePollOnTheLinkIsExact()
    {
        InlineLink l;
        l.port->queueReply(QByteArray(16, '\0'));
        l.port->queueReply(QByteArray(32, '\0'));
        l.link.post([](CatPort& port) { Get_Status32(port); });
        QCOMPARE(l.clock->events, (QStringList{QStringLiteral("read 0"), QStringLiteral("write 00 00 00 02 10"),
                                               QStringLiteral("sleep 100"), QStringLiteral("read 16"),
                                               QStringLiteral("write 00 00 00 03 10"), QStringLiteral("sleep 200"),
                                               QStringLiteral("read 32")}));
    }

    void runBlockingRunsAtOnce()
    {
        InlineLink l(false);
        QVERIFY(!l.link.portOpen());
        l.link.runBlocking([](CatPort& port) { port.serial().open(nullptr); });
        QVERIFY(l.link.portOpen());
    }

    void portStateChangeIsSignalled()
    {
        InlineLink l;
        QVERIFY(l.link.portOpen());
        QSignalSpy spy(&l.link, &RadioLink::portStateChanged);
        l.link.post([](CatPort& port) { port.serial().close(); });
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), false);
        QVERIFY(!l.link.portOpen());
        l.link.post([](CatPort&) {});
        QCOMPARE(spy.size(), 1);  // no change, no signal
        l.link.post([](CatPort& port) { port.serial().open(nullptr); });
        QCOMPARE(spy.size(), 2);
        QCOMPARE(spy.at(1).at(0).toBool(), true);
    }

    void afterShutdownNothingRuns()
    {
        InlineLink l;
        l.link.shutdown();
        bool ran = false;
        l.link.post([&](CatPort&) { ran = true; });
        QVERIFY(!ran);
        l.link.postMerged(JobKind::Poll, [&](CatPort&) { ran = true; });
        QVERIFY(!ran);
        QVERIFY(!l.link.busyWith(JobKind::Poll));
    }

    void shutdownMarksJobsCancelled()
    {
        InlineLink l;
        bool cancelledInside = true;
        bool cancelledAfter = false;
        l.link.post([&](CatPort& port) {
            cancelledInside = port.cancelled();
            l.link.shutdown();
            cancelledAfter = port.cancelled();
        });
        QVERIFY(!cancelledInside);
        QVERIFY(cancelledAfter);
    }
};

QTEST_GUILESS_MAIN(TestRadioLinkInline)
#include "test_radio_link_inline.moc"
