// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The one owner of the serial port. Windows post jobs; the link runs them one at a time, in order,
// on its own thread (or inline on the caller's thread in tests), and jobs hand results back with
// deliver(), which runs a function on the receiver's thread.

#include "CatPort.h"

#include <QObject>
#include <QPointer>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

class SerialPort;
class Clock;
class QThread;

class RadioLink : public QObject {
    Q_OBJECT
public:
    using Job = std::function<void(CatPort&)>;
    using PortFactory = std::function<std::unique_ptr<SerialPort>()>;

    enum class Mode { Threaded, Inline };

    // Threaded: the port is made by the factory on the link thread, which owns it from then on.
    RadioLink(PortFactory makePort, std::shared_ptr<Clock> clock, Mode mode = Mode::Threaded,
              QObject* parent = nullptr);
    ~RadioLink() override;

    Mode mode() const { return mode_; }
    // The link's clock: what times its waits, and what the poll's own decisions are timed by.
    Clock& clock() const { return *clock_; }

    // Runs the job after every job posted before it.
    void post(Job job);

    // Posts the job unless one of the same kind is still waiting or running: ticks that fall due
    // meanwhile are merged. Returns false when merged.
    bool postMerged(int kind, Job job);
    // A timer tick's job: merged with one of its kind that is still waiting; one that falls due while
    // its kind runs is remembered (at most one, the newest) and posted as soon as the running one ends,
    // behind whatever was posted meanwhile, as a tick that fired during a busy handler runs afterwards.
    void postTick(int kind, Job job);
    bool busyWith(int kind) const;
    // Forgets the tick of that kind that fell due while one ran (the timer was stopped since).
    void forgetDue(int kind);

    // Posts the job, or, while a job posted with the same key still waits (has not begun) and nothing
    // but such sets was posted after it, puts this one in its place: the newer wins and keeps the
    // older one's place in the order. So a frequency
    // set from any client that tunes faster than the link goes leaves no backlog of frequencies the
    // radio would only pass through. True when the job was posted, false when it replaced one (or the
    // link is closing).
    bool postReplacing(int key, Job job);
    // From inside a job, between two of its requests (the poll): when every job still waiting is a
    // set posted with postReplacing, runs those sets now, in the order they were posted, instead of
    // after the running job, so a client's set does not wait out a whole poll. Nothing else waits, so
    // no client's order changes. Fast link only: the exact link keeps the order on the wire as it was.
    void runWaitingSets(CatPort& port);

    // Fast link (see CatPort); from any thread, applies from the next request on.
    void setFastLink(bool on);
    bool fastLink() const { return fast_.load(); }

    // From inside a job: run fn on the thread of ctx (skipped if ctx is gone). Inline: at once.
    void deliver(QObject* ctx, std::function<void()> fn);

    // Runs fn on the link thread and waits for it (after the jobs already posted). For the few
    // operations whose answer the caller needs at once (opening the port from a dialog).
    void runBlocking(const Job& fn);

    // The port's open state as of the end of the last job; safe from any thread.
    bool portOpen() const { return open_.load(); }

    // Interrupts the sleep of the running job and drops the jobs still waiting (closing the program).
    void shutdown();

    // Tests: waits until every posted job has run (threaded mode).
    void waitForIdle();
    int pendingJobs() const { return pending_.load(); }

signals:
    // Emitted on the receiver's side after each job: the port state may have changed.
    void portStateChanged(bool open);

private:
    enum KindState { Idle = 0, Waiting = 1, Running = 2 };
    bool postKind(int kind, Job job, bool rememberDue);
    void runOne(const Job& job);
    void enqueue(Job job);  // hands a counted job to the link thread
    void afterJob();

    Mode mode_;
    std::shared_ptr<Clock> clock_;
    std::unique_ptr<SerialPort> port_;
    std::unique_ptr<CatPort> cat_;
    QThread* thread_ = nullptr;
    QObject* worker_ = nullptr;  // lives on the link thread
    std::atomic<bool> open_{false};
    std::atomic<int> pending_{0};
    std::atomic<bool> stopping_{false};
    std::atomic<bool> fast_{false};
    // Per kind of mergeable job: its state, and the tick that fell due while it ran.
    static constexpr int KindCount = 16;
    mutable std::mutex kindsMutex_;
    KindState kinds_[KindCount] = {};
    Job due_[KindCount];
    quint64 forgotten_[KindCount] = {};  // counts forgetDue, so a tick already on its way is dropped
    // postReplacing: per key, the job that still waits for its turn.
    std::mutex waitingMutex_;
    struct WaitingSet {
        std::shared_ptr<Job> slot;
        quint64 order = 0;         // when it was first posted
        quint64 othersBefore = 0;  // others_ when it was posted
    };
    std::map<int, WaitingSet> waiting_;
    quint64 waitingOrder_ = 0;
    quint64 others_ = 0;  // the jobs posted other than with postReplacing, counted under waitingMutex_
    // Inline mode: jobs posted from inside a job wait here until the running one ends.
    std::vector<Job> inlineQueue_;
    bool inlineRunning_ = false;
};

// Kinds of mergeable jobs.
namespace JobKind {
constexpr int Poll = 1;
constexpr int Stepper = 2;
constexpr int Slider = 3;
constexpr int SRecord = 4;
constexpr int Reconnect = 5;
}  // namespace JobKind

// Keys of jobs that a newer one of the same key replaces while they wait (postReplacing).
namespace JobKey {
constexpr int FrequencyA = 1;  // a frequency set of VFO-A
constexpr int FrequencyB = 2;  // a frequency set of VFO-B
}  // namespace JobKey
