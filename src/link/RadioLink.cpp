// SPDX-License-Identifier: GPL-3.0-or-later
#include "RadioLink.h"

#include "Clock.h"
#include "LinkLog.h"
#include "RealClock.h"
#include "SerialPort.h"
#include "ThreadHandoff.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <condition_variable>
#include <mutex>

RadioLink::RadioLink(PortFactory makePort, std::shared_ptr<Clock> clock, Mode mode, QObject* parent)
    : QObject(parent), mode_(mode), clock_(std::move(clock))
{
    if (mode_ == Mode::Inline) {
        port_ = makePort();
        cat_ = std::make_unique<CatPort>(*port_, *clock_);
        cat_->setStopFlag(&stopping_);
        cat_->setFastLink(fast_.load());
        open_ = port_->isOpen();
        return;
    }
    thread_ = new QThread;
    thread_->setObjectName(QStringLiteral("link"));
    worker_ = new QObject;
    worker_->moveToThread(thread_);
    thread_->start();
    // The port is created on the link thread so that its notifications belong there.
    ThreadHandoff::release(this);
    QMetaObject::invokeMethod(worker_, ThreadHandoff::handOver([this, makePort] {
                                  ThreadHandoff::acquire(this);
                                  port_ = makePort();
                                  cat_ = std::make_unique<CatPort>(*port_, *clock_);
                                  cat_->setStopFlag(&stopping_);
                                  cat_->setFastLink(fast_.load());
                                  open_ = port_->isOpen();
                                  ThreadHandoff::release(this);
                              }),
                              Qt::BlockingQueuedConnection);
    ThreadHandoff::acquire(this);
}

RadioLink::~RadioLink()
{
    shutdown();
    if (thread_) {
        ThreadHandoff::release(this);
        QMetaObject::invokeMethod(worker_, ThreadHandoff::handOver([this] {
                                      ThreadHandoff::acquire(this);
                                      if (port_)
                                          port_->close();
                                      cat_.reset();
                                      port_.reset();
                                      ThreadHandoff::release(this);
                                  }),
                                  Qt::BlockingQueuedConnection);
        ThreadHandoff::acquire(this);
        thread_->quit();
        thread_->wait();
        delete worker_;
        delete thread_;
    }
}

void RadioLink::runOne(const Job& job)
{
    if (stopping_.load() || !cat_)
        return;
    job(*cat_);
    afterJob();
}

void RadioLink::afterJob()
{
    const bool open = port_ && port_->isOpen();
    if (open != open_.exchange(open)) {
        if (mode_ == Mode::Inline)
            emit portStateChanged(open);
        else
            QMetaObject::invokeMethod(this, ThreadHandoff::handOver([this, open] { emit portStateChanged(open); }),
                                      Qt::QueuedConnection);
    }
}

void RadioLink::post(Job job)
{
    if (stopping_.load())
        return;
    {
        // Counted under the lock that guards the waiting sets, so that runWaitingSets never sees a
        // set whose job is counted before another job posted ahead of it.
        std::lock_guard lock(waitingMutex_);
        ++others_;
        if (mode_ == Mode::Threaded)
            ++pending_;
    }
    enqueue(std::move(job));
}

void RadioLink::enqueue(Job job)
{
    if (mode_ == Mode::Inline) {
        if (inlineRunning_) {
            inlineQueue_.push_back(std::move(job));
            return;
        }
        inlineRunning_ = true;
        runOne(job);
        while (!inlineQueue_.empty()) {
            Job next = std::move(inlineQueue_.front());
            inlineQueue_.erase(inlineQueue_.begin());
            runOne(next);
        }
        inlineRunning_ = false;
        return;
    }
    QMetaObject::invokeMethod(worker_, ThreadHandoff::handOver([this, job = std::move(job)]() mutable {
                                  runOne(job);
                                  // The job, and all it holds, is gone before it counts as done:
                                  // who waits for an idle link may then free what the job used.
                                  job = nullptr;
                                  --pending_;
                              }),
                              Qt::QueuedConnection);
}

bool RadioLink::postMerged(int kind, Job job)
{
    return postKind(kind, std::move(job), /*rememberDue=*/false);
}

void RadioLink::postTick(int kind, Job job)
{
    postKind(kind, std::move(job), /*rememberDue=*/true);
}

bool RadioLink::postKind(int kind, Job job, bool rememberDue)
{
    Q_ASSERT(kind >= 0 && kind < KindCount);
    {
        std::lock_guard lock(kindsMutex_);
        if (kinds_[kind] == Running && rememberDue)
            due_[kind] = std::move(job);
        if (kinds_[kind] != Idle)
            return false;
        kinds_[kind] = Waiting;
    }
    post([this, kind, job = std::move(job)](CatPort& port) {
        {
            std::lock_guard lock(kindsMutex_);
            kinds_[kind] = Running;
        }
        job(port);
        Job next;
        quint64 generation = 0;
        {
            std::lock_guard lock(kindsMutex_);
            kinds_[kind] = Idle;
            next.swap(due_[kind]);
            generation = forgotten_[kind];
        }
        // Posted from the poster's side, as the timer would have: between the two the link is idle
        // for a moment, so that waiting for an idle link ends while the poll runs on. A tick forgotten
        // meanwhile (the poll turned off) is dropped there.
        if (next && !stopping_.load())
            deliver(this, [this, kind, generation, next = std::move(next)]() mutable {
                {
                    std::lock_guard lock(kindsMutex_);
                    if (forgotten_[kind] != generation)
                        return;
                }
                if (!stopping_.load())
                    postKind(kind, std::move(next), /*rememberDue=*/true);
            });
    });
    // A post dropped because the link is closing releases the kind.
    if (stopping_.load()) {
        std::lock_guard lock(kindsMutex_);
        kinds_[kind] = Idle;
        due_[kind] = nullptr;
    }
    return true;
}

void RadioLink::forgetDue(int kind)
{
    Job dropped;
    std::lock_guard lock(kindsMutex_);
    dropped.swap(due_[kind]);
    ++forgotten_[kind];
}

bool RadioLink::busyWith(int kind) const
{
    std::lock_guard lock(kindsMutex_);
    return kinds_[kind] != Idle;
}

bool RadioLink::postReplacing(int key, Job job)
{
    if (stopping_.load())
        return false;
    auto slot = std::make_shared<Job>();
    Job wrapper = [this, key, slot](CatPort& port) {
        Job mine;
        {
            std::lock_guard lock(waitingMutex_);
            mine.swap(*slot);  // empty when runWaitingSets ran it already
            if (auto it = waiting_.find(key); it != waiting_.end() && it->second.slot == slot)
                waiting_.erase(it);
        }
        if (mine)
            mine(port);
    };
    {
        std::lock_guard lock(waitingMutex_);
        // The newer set takes the older one's place only while nothing but other such sets was
        // posted after it: otherwise a job between the two (a key, a transmission) would move to
        // the newer frequency.
        if (auto it = waiting_.find(key); it != waiting_.end() && it->second.othersBefore == others_) {
            it->second.slot->swap(job);  // the replaced job goes with `job`, outside the lock
            return false;
        }
        *slot = std::move(job);
        if (mode_ == Mode::Threaded)
            ++pending_;
        waiting_.insert_or_assign(key, WaitingSet{slot, ++waitingOrder_, others_});
        // Let go of it here, under the lock the link thread takes to empty it: if this was the last
        // hold on it, it goes after that.
        slot.reset();
    }
    enqueue(std::move(wrapper));
    return true;
}

void RadioLink::runWaitingSets(CatPort& port)
{
    if (mode_ == Mode::Inline || !fast_.load() || stopping_.load())
        return;
    std::vector<std::pair<quint64, Job>> sets;
    {
        std::lock_guard lock(waitingMutex_);
        // Each waiting set is one posted job, and the running job is one: anything more is another
        // job queued (a set in the middle of being posted counts in neither and also holds this back).
        if (waiting_.empty() || pending_.load() != static_cast<int>(waiting_.size()) + 1)
            return;
        for (auto& [key, w] : waiting_) {
            Job job;
            job.swap(*w.slot);
            if (job)
                sets.emplace_back(w.order, std::move(job));
        }
        waiting_.clear();  // their queued wrappers find their slots empty
    }
    std::sort(sets.begin(), sets.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (auto& [order, job] : sets)
        job(port);
}

void RadioLink::setFastLink(bool on)
{
    fast_ = on;
    if (cat_)
        cat_->setFastLink(on);
}

void RadioLink::deliver(QObject* ctx, std::function<void()> fn)
{
    if (!ctx)
        return;
    if (mode_ == Mode::Inline || QThread::currentThread() == ctx->thread()) {
        fn();
        return;
    }
    QMetaObject::invokeMethod(ctx, ThreadHandoff::handOver(std::move(fn)), Qt::QueuedConnection);
}

void RadioLink::runBlocking(const Job& fn)
{
    if (mode_ == Mode::Inline) {
        if (cat_) {
            fn(*cat_);
            afterJob();
        }
        return;
    }
    if (QThread::currentThread() == thread_) {
        fn(*cat_);
        return;
    }
    ThreadHandoff::release(&fn);
    QMetaObject::invokeMethod(worker_, ThreadHandoff::handOver([this, &fn] {
                                  ThreadHandoff::acquire(&fn);
                                  if (cat_) {
                                      fn(*cat_);
                                      afterJob();
                                  }
                                  ThreadHandoff::release(&fn);
                              }),
                              Qt::BlockingQueuedConnection);
    ThreadHandoff::acquire(&fn);
}

void RadioLink::shutdown()
{
    stopping_ = true;
    if (auto* real = dynamic_cast<RealClock*>(clock_.get()))
        real->interrupt();
}

void RadioLink::waitForIdle()
{
    if (mode_ == Mode::Inline)
        return;
    while (pending_.load() > 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(1);
    }
    QCoreApplication::processEvents();
}
