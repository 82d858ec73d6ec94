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
#include <thread>
#include <utility>

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
        bool once = false;  // the handler stays set: clearing it would destroy it while it runs
        l.clock->onSleep = [&](int) {
            if (std::exchange(once, true))
                return;
            l.link.post(setMode(1));
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1));
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(1407610, 1));
            posted << l.link.postReplacing(JobKey::FrequencyB, setFreq(707400, 2));
            posted << l.link.postReplacing(JobKey::FrequencyB, setFreq(707410, 2));
            l.link.post(setMode(3));
        };
        l.link.post([](CatPort& port) {
            port.send(CatCommand::make(Op::SetMode, 0));
            port.sleep(LongJobMs);
        });
        QCOMPARE(posted, (QList<bool>{true, false, true, false}));
        // Only the last set of each VFO went out, where the first one stood.
        QCOMPARE(l.written(),
                 (QStringList{modeHex(0), modeHex(1), freqHex(1407610, 1), freqHex(707410, 2), modeHex(3)}));
    }

    void aSetPostedAfterAnotherJobDoesNotReplaceTheOneBeforeThatJob()
    {
        // Behind a long job: F1, key, unkey, F2. Replacing F1 with F2 would put the transmission on F2.
        Link l(RadioLink::Mode::Inline);
        QList<bool> posted;
        const CatCommand key = CatCommand::make(Op::Ptt, 1);
        const CatCommand unkey = CatCommand::make(Op::Ptt, 0);
        bool once = false;  // the handler stays set: clearing it would destroy it while it runs
        l.clock->onSleep = [&](int) {
            if (std::exchange(once, true))
                return;
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(1407600, 1));
            l.link.post([key](CatPort& port) { port.send(key); });
            l.link.post([unkey](CatPort& port) { port.send(unkey); });
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(2107400, 1));
            posted << l.link.postReplacing(JobKey::FrequencyA, setFreq(2107410, 1));
        };
        l.link.post([](CatPort& port) { port.sleep(LongJobMs); });
        QCOMPARE(posted, (QList<bool>{true, true, false}));
        QCOMPARE(l.written(), (QStringList{freqHex(1407600, 1), key.hex(), unkey.hex(), freqHex(2107410, 1)}));
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
        QVERIFY(!l.link.postReplacing(JobKey::FrequencyA, setFreq(1407605, 1)));
        l.link.post(setMode(2));
        QVERIFY(l.link.postReplacing(JobKey::FrequencyA, setFreq(1407610, 1)));
        QVERIFY(!l.link.postReplacing(JobKey::FrequencyA, setFreq(1407620, 1)));
        carryOn.release();
        l.link.waitForIdle();
        QCOMPARE(l.written(),
                 (QStringList{modeHex(0), modeHex(1), freqHex(1407605, 1), modeHex(2), freqHex(1407620, 1)}));
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

    void aSetNeverOvertakesAJobPostedBeforeIt()
    {
        // A client posts a job and then a set, over and over, while polls on the fast link keep
        // offering the waiting sets a gap. The set must always go out after the job before it.
        Link l(RadioLink::Mode::Threaded);
        l.link.setFastLink(true);
        constexpr int Rounds = 3000;
        constexpr int Modes = 4;
        std::atomic<bool> done{false};
        // A standard thread: its join is one the thread sanitizer sees.
        std::thread polls([&] {
            while (!done.load()) {
                l.link.post([&l](CatPort& port) { l.link.runWaitingSets(port); });
                l.link.waitForIdle();
            }
        });
        for (int i = 0; i < Rounds; ++i) {
            l.link.post(setMode(i % Modes));
            l.link.postReplacing(JobKey::FrequencyA, setFreq(1400000 + i, 1));
            if (i % Modes == Modes - 1)
                l.link.waitForIdle();
        }
        done = true;
        polls.join();
        l.link.waitForIdle();
        // Each set follows its own round's mode on the wire.
        QStringList modes;
        for (int m = 0; m < Modes; ++m)
            modes << modeHex(m);
        QString lastMode;
        int sets = 0;
        for (const QString& h : l.written()) {
            if (modes.contains(h)) {
                lastMode = h;
                continue;
            }
            QCOMPARE(h, freqHex(1400000 + sets, 1));
            QCOMPARE(lastMode, modes.at(sets % Modes));
            ++sets;
        }
        QCOMPARE(sets, Rounds);
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
