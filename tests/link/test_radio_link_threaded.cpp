// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "RealClock.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <atomic>

namespace {
// A threaded link on a fake port; the port is made on the link thread.
struct ThreadedLink {
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::atomic<FakeSerialPort*> port{nullptr};
    std::atomic<QThread*> madeOn{nullptr};
    RadioLink link;
    ThreadedLink()
        : link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  p->open(nullptr);
                  port = p.get();
                  madeOn = QThread::currentThread();
                  return p;
              },
              clock, RadioLink::Mode::Threaded)
    {
    }
};
}  // namespace

class TestRadioLinkThreaded : public QObject {
    Q_OBJECT
private slots:
    void portIsMadeOnTheLinkThread()
    {
        ThreadedLink l;
        QVERIFY(l.madeOn.load() != nullptr);
        QVERIFY(l.madeOn.load() != QThread::currentThread());
        QVERIFY(l.link.portOpen());
        QThread* jobThread = nullptr;
        l.link.post([&](CatPort&) { jobThread = QThread::currentThread(); });
        l.link.waitForIdle();
        QCOMPARE(jobThread, l.madeOn.load());
    }

    void manyJobsRunInTheOrderPosted()
    {
        ThreadedLink l;
        QList<int> order;  // touched on the link thread only until idle
        for (int i = 0; i < 500; ++i)
            l.link.post([&order, i](CatPort& port) {
                order << i;
                port.send(CatCommand::make(Op::SetMode, i % 12));
            });
        l.link.waitForIdle();
        QCOMPARE(order.size(), 500);
        for (int i = 0; i < 500; ++i)
            QCOMPARE(order[i], i);
        const QStringList hex = l.port.load()->writtenHex();
        QCOMPARE(hex.size(), 500);
        QCOMPARE(hex[13], QStringLiteral("00 00 00 01 0C"));
        QCOMPARE(l.link.pendingJobs(), 0);
    }

    void jobsNeverInterleaveOnTheWire()
    {
        ThreadedLink l;
        l.port.load()->responder = [](const QByteArray&) { return QByteArray(16, '\0'); };
        for (int i = 0; i < 20; ++i) {
            l.link.post([](CatPort& port) { Get_Status32(port); });
            l.link.post([](CatPort& port) { SetFreq(port, 705000, 2); });
        }
        l.link.waitForIdle();
        const QStringList hex = l.port.load()->writtenHex();
        QCOMPARE(hex.size(), 60);
        for (int i = 0; i < 20; ++i) {
            QCOMPARE(hex[3 * i], QStringLiteral("00 00 00 02 10"));
            QCOMPARE(hex[3 * i + 1], QStringLiteral("00 00 00 03 10"));
            QCOMPARE(hex[3 * i + 2], QStringLiteral("00 50 70 00 8A"));
        }
    }

    void deliverLandsOnTheReceiversThread()
    {
        ThreadedLink l;
        QObject receiver;
        std::atomic<QThread*> deliveredOn{nullptr};
        std::atomic<QThread*> jobOn{nullptr};
        l.link.post([&](CatPort&) {
            jobOn = QThread::currentThread();
            l.link.deliver(&receiver, [&] { deliveredOn = QThread::currentThread(); });
        });
        QTRY_VERIFY(deliveredOn.load() != nullptr);
        QCOMPARE(deliveredOn.load(), QThread::currentThread());
        QVERIFY(jobOn.load() != QThread::currentThread());
    }

    void deliverToAReceiverThatIsGoneIsDropped()
    {
        ThreadedLink l;
        auto* receiver = new QObject;
        std::atomic<bool> delivered{false};
        QSemaphore posted;
        l.link.post([&](CatPort&) {
            l.link.deliver(receiver, [&] { delivered = true; });
            posted.release();
        });
        posted.acquire();
        delete receiver;  // before the event loop ran the delivery
        l.link.waitForIdle();
        QTest::qWait(20);
        QVERIFY(!delivered.load());
    }

    void postMergedMergesATickWhileItsJobRunsAndPostsAgainAfter()
    {
        ThreadedLink l;
        QSemaphore started;
        QSemaphore gate;
        std::atomic<int> polls{0};
        QVERIFY(l.link.postMerged(JobKind::Poll, [&](CatPort&) {
            started.release();
            gate.acquire();
            ++polls;
        }));
        started.acquire();
        QVERIFY(l.link.busyWith(JobKind::Poll));
        QVERIFY(!l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; }));
        QVERIFY(!l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; }));
        // Another kind is not merged with it.
        std::atomic<int> steps{0};
        QVERIFY(l.link.postMerged(JobKind::Stepper, [&](CatPort&) { ++steps; }));
        gate.release();
        l.link.waitForIdle();
        QCOMPARE(polls.load(), 1);
        QCOMPARE(steps.load(), 1);
        QVERIFY(!l.link.busyWith(JobKind::Poll));
        QVERIFY(l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; }));
        l.link.waitForIdle();
        QCOMPARE(polls.load(), 2);
    }

    void mergedTickWaitingBehindAnotherJobStaysBusy()
    {
        ThreadedLink l;
        QSemaphore started;
        QSemaphore gate;
        l.link.post([&](CatPort&) {
            started.release();
            gate.acquire();
        });
        started.acquire();
        std::atomic<int> polls{0};
        QVERIFY(l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; }));
        QVERIFY(l.link.busyWith(JobKind::Poll));
        QVERIFY(!l.link.postMerged(JobKind::Poll, [&](CatPort&) { ++polls; }));
        gate.release();
        l.link.waitForIdle();
        QCOMPARE(polls.load(), 1);
    }

    void runBlockingReturnsAfterTheJobRan()
    {
        ThreadedLink l;
        std::atomic<int> earlier{0};
        for (int i = 0; i < 10; ++i)
            l.link.post([&](CatPort&) { ++earlier; });
        int seenEarlier = -1;
        QThread* ranOn = nullptr;
        l.link.runBlocking([&](CatPort& port) {
            seenEarlier = earlier.load();
            ranOn = QThread::currentThread();
            port.serial().close();
        });
        QCOMPARE(seenEarlier, 10);
        QVERIFY(ranOn != QThread::currentThread());
        QVERIFY(!l.link.portOpen());
    }

    void portStateChangeArrivesOnTheGuiThread()
    {
        ThreadedLink l;
        QSignalSpy spy(&l.link, &RadioLink::portStateChanged);
        l.link.post([](CatPort& port) { port.serial().close(); });
        QTRY_COMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), false);
    }

    void shutdownInterruptsALongSleep()
    {
        auto clock = std::make_shared<RealClock>();
        std::atomic<bool> started{false};
        std::atomic<bool> returned{false};
        std::atomic<bool> sleepResult{true};
        std::atomic<bool> cancelledAfter{false};
        bool laterJobRan = false;
        {
            RadioLink link([] { return std::make_unique<FakeSerialPort>(); }, clock, RadioLink::Mode::Threaded);
            link.post([&](CatPort& port) {
                started = true;
                sleepResult = port.sleep(600000);
                cancelledAfter = port.cancelled();
                returned = true;
            });
            link.post([&](CatPort&) { laterJobRan = true; });
            QTRY_VERIFY(started.load());
            link.shutdown();
            QTRY_VERIFY_WITH_TIMEOUT(returned.load(), 60000);
        }  // the destructor joins the link thread
        QVERIFY(!sleepResult.load());
        QVERIFY(cancelledAfter.load());
        QVERIFY(!laterJobRan);  // jobs still waiting are dropped
    }

    void destroyingABusyLinkEndsItsJob()
    {
        auto clock = std::make_shared<RealClock>();
        std::atomic<bool> started{false};
        std::atomic<bool> sleepResult{true};
        {
            RadioLink link([] { return std::make_unique<FakeSerialPort>(); }, clock, RadioLink::Mode::Threaded);
            link.post([&](CatPort& port) {
                started = true;
                sleepResult = port.sleep(600000);
            });
            QTRY_VERIFY(started.load());
        }
        QVERIFY(!sleepResult.load());
    }
};

QTEST_GUILESS_MAIN(TestRadioLinkThreaded)
#include "test_radio_link_threaded.moc"
