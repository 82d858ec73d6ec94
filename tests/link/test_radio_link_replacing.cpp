// SPDX-License-Identifier: GPL-3.0-or-later
// Latest wins: a job posted with a key takes the place of one with the same key that still waits,
// so a client that tunes fast leaves no backlog of frequencies on the link.
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "Procedures.h"
#include "RadioLink.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <atomic>

namespace {
constexpr int LongJobMs = 5000;

QString freqHex(qint64 steps, int vfo)
{
    return setFreqCommand(steps, vfo).hex();
}
QString modeHex(int mode)
{
    return CatCommand::make(Op::SetMode, mode).hex();
}

RadioLink::Job setFreq(qint64 steps, int vfo)
{
    return [steps, vfo](CatPort& port) { SetFreq(port, steps, vfo); };
}
RadioLink::Job setMode(int mode)
{
    return [mode](CatPort& port) { port.send(CatCommand::make(Op::SetMode, mode)); };
}

struct Link {
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::atomic<FakeSerialPort*> port{nullptr};
    RadioLink link;
    explicit Link(RadioLink::Mode mode)
        : link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  p->open(nullptr);
                  port = p.get();
                  return p;
              },
              clock, mode)
    {
    }
    QStringList written() const { return port.load()->writtenHex(); }
};
}  // namespace

class TestRadioLinkReplacing : public QObject {
    Q_OBJECT
private slots:
    void aWaitingSetIsReplacedInItsPlace()
    {
        Link l(RadioLink::Mode::Inline);
        QList<bool> posted;
        // The other clients post while the link sleeps in a long job.
        l.clock->onSleep = [&](int) {
            l.clock->onSleep = nullptr;
            l.link.post(setMode(1));
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1));
            l.link.post(setMode(2));
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(1407610, 1));
            posted << l.link.postReplacing(JobKey::FrequencyB, setFreq(707400, 2));
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(1407620, 1));
            l.link.post(setMode(3));
        };
        l.link.post([](CatPort& port) {
            port.send(CatCommand::make(Op::SetMode, 0));
            port.sleep(LongJobMs);
        });
        QCOMPARE(posted, (QList<bool>{true, false, true, false}));
        // Only the last of the three sets of VFO-A went out, where the first one stood.
        QCOMPARE(l.written(), (QStringList{modeHex(0), modeHex(1), freqHex(1407620, 1), modeHex(2), freqHex(707400, 2),
                                           modeHex(3)}));
    }

    void aSetThatHasRunIsNotReplaced()
    {
        Link l(RadioLink::Mode::Inline);
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1)));
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407610, 1)));
        QCOMPARE(l.written(), (QStringList{freqHex(1407600, 1), freqHex(1407610, 1)}));
    }

    void aSetIsReplacedWhileItWaitsBehindALongJobOnTheLinkThread()
    {
        Link l(RadioLink::Mode::Threaded);
        QSemaphore started, carryOn;
        l.link.post([&](CatPort& port) {
            port.send(CatCommand::make(Op::SetMode, 0));
            started.release();
            carryOn.acquire();  // the long job: it ends when the test has posted behind it
        });
        started.acquire();
        l.link.post(setMode(1));
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1)));
        l.link.post(setMode(2));
        QVERIFY(!l.link.postReplacing(JobKey::FrequencyA, setFreq(1407610, 1)));
        QVERIFY(!l.link.postReplacing(JobKey::FrequencyA, setFreq(1407620, 1)));
        carryOn.release();
        l.link.waitForIdle();
        QCOMPARE(l.written(), (QStringList{modeHex(0), modeHex(1), freqHex(1407620, 1), modeHex(2)}));
        // The key is free again: the next set is a job of its own.
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407630, 1)));
        l.link.waitForIdle();
        QCOMPARE(l.written().last(), freqHex(1407630, 1));
    }

    // A poll-like job: a request, then the waiting sets may run, then another request.
    static RadioLink::Job pollWithAGap(RadioLink& link, QSemaphore& started, QSemaphore& carryOn)
    {
        return [&link, &started, &carryOn](CatPort& port) {
            port.send(CatCommand::make(Op::ReadFlags, 1));
            started.release();
            carryOn.acquire();
            link.runWaitingSets(port);
            port.send(CatCommand::make(Op::ReadFlags, 2));
        };
    }

    void onTheFastLinkWaitingSetsRunInThePollsGapInTheirOrder()
    {
        Link l(RadioLink::Mode::Threaded);
        l.link.setFastLink(true);
        QSemaphore started, carryOn;
        l.link.post(pollWithAGap(l.link, started, carryOn));
        started.acquire();
        QVERIFY(l.link.postReplacing(JobKey::FrequencyB, setFreq(707400, 2)));
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1)));
        QVERIFY(!l.link.postReplacing(JobKey::FrequencyB, setFreq(707410, 2)));
        carryOn.release();
        l.link.waitForIdle();
        const QString flags1 = CatCommand::make(Op::ReadFlags, 1).hex();
        const QString flags2 = CatCommand::make(Op::ReadFlags, 2).hex();
        QCOMPARE(l.written(), (QStringList{flags1, freqHex(707410, 2), freqHex(1407600, 1), flags2}));
        // Their places in the queue are empty now: the keys take new sets as jobs of their own.
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407630, 1)));
        l.link.waitForIdle();
        QCOMPARE(l.written().last(), freqHex(1407630, 1));
    }

    void aSetBehindAnotherJobWaitsItsTurn()
    {
        // Another job waiting means some client's order could change: nothing runs in the gap.
        Link l(RadioLink::Mode::Threaded);
        l.link.setFastLink(true);
        QSemaphore started, carryOn;
        l.link.post(pollWithAGap(l.link, started, carryOn));
        started.acquire();
        l.link.post(setMode(1));
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1)));
        carryOn.release();
        l.link.waitForIdle();
        QCOMPARE(l.written(), (QStringList{CatCommand::make(Op::ReadFlags, 1).hex(),
                                           CatCommand::make(Op::ReadFlags, 2).hex(), modeHex(1), freqHex(1407600, 1)}));
    }

    void onTheExactLinkTheOrderOnTheWireStaysAsItWas()
    {
        Link l(RadioLink::Mode::Threaded);
        QSemaphore started, carryOn;
        l.link.post(pollWithAGap(l.link, started, carryOn));
        started.acquire();
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1)));
        carryOn.release();
        l.link.waitForIdle();
        QCOMPARE(l.written(), (QStringList{CatCommand::make(Op::ReadFlags, 1).hex(),
                                           CatCommand::make(Op::ReadFlags, 2).hex(), freqHex(1407600, 1)}));
    }

    void clientsOnSeveralThreadsLeaveTheLastSetOnTheWire()
    {
        Link l(RadioLink::Mode::Threaded);
        constexpr int SetsPerClient = 2000;
        auto client = [&l](qint64 base) {
            for (int i = 0; i < SetsPerClient; ++i)
                l.link.postReplacing(JobKey::FrequencyA, setFreq(base + i, 1));
        };
        std::unique_ptr<QThread> a(QThread::create(client, 1400000));
        std::unique_ptr<QThread> b(QThread::create(client, 700000));
        a->start();
        b->start();
        a->wait();
        b->wait();
        l.link.postReplacing(JobKey::FrequencyA, setFreq(2807400, 1));
        l.link.waitForIdle();
        const QStringList hex = l.written();
        QVERIFY(!hex.isEmpty());
        QVERIFY(hex.size() <= 2 * SetsPerClient + 1);
        QCOMPARE(hex.last(), freqHex(2807400, 1));
    }

    void afterShutdownNothingIsPosted()
    {
        Link l(RadioLink::Mode::Inline);
        l.link.shutdown();
        QVERIFY(!l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1)));
        QVERIFY(l.written().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestRadioLinkReplacing)
#include "test_radio_link_replacing.moc"
