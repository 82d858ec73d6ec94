// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The band scope's sweep, apart from its widgets: passes over the plan run on the link thread one
// after another while the scope asks for another, each with the poll off, and "Cancel" stops the
// pass under way after its step. The samples come back on this object's thread as they are read;
// the scope window draws them.

#include "SweepJob.h"
#include "SweepPlan.h"

#include <QList>
#include <QObject>
#include <atomic>
#include <functional>
#include <memory>

class ScopeHost;

class ScopeSweep : public QObject {
    Q_OBJECT
public:
    // What the scope window decides, asked at the start and end of each pass.
    struct Choices {
        std::function<int()> receiver;      // the receiver to sweep: 1 Main, 2 Sub
        std::function<SweepPlan()> plan;    // from the centre and the lists as they stand
        std::function<bool()> anotherPass;  // "Continuous" is selected
    };

    ScopeSweep(ScopeHost& host, Choices choices, QObject* parent = nullptr);
    ~ScopeSweep() override;

    void start();                        // the first pass
    void cancel();                       // the pass under way stops after its step, and no other pass follows
    bool busy() const { return busy_; }  // from start() to the end of the last pass
    bool passRunning() const { return passRunning_; }
    // The samples of the last pass of this sweep that ran to its end; none while no pass has, so that
    // a pass cut short is never taken for a whole one.
    const QList<SweepSample>& lastPass() const { return lastPass_; }
    // No pass of this sweep has ended, and one was cut short (or is under way) with samples.
    bool onlyCutShort() const { return !passEnded_ && !pass_.isEmpty(); }

signals:
    void passStarted(const SweepPlan& plan, int receiver);
    void sampleRead(const SweepPlan& plan, const SweepSample& sample);
    void passFinished(const SweepPlan& plan, const QList<SweepSample>& samples);  // a whole pass, not a cut one
    void lastPassEnded();  // before the poll comes back: the scope tunes the receiver back to its centre
    void finished();       // the last pass has ended and the poll is on again

private:
    void startPass();
    void onSample(const SweepPlan& plan, const SweepSample& sample);
    void onPassDone(const SweepOutcome& outcome);

    ScopeHost& host_;
    Choices choices_;
    bool busy_ = false;
    bool passRunning_ = false;
    SweepPlan plan_;
    QList<SweepSample> pass_;  // the samples of the pass under way
    QList<SweepSample> lastPass_;
    bool passEnded_ = false;  // a pass of this sweep has run to its end
    std::shared_ptr<std::atomic<bool>> cancel_;
    // Results from the link thread are delivered to this object, which outlives the sweep for as
    // long as a job still holds it; the sweep itself may be gone by then.
    std::shared_ptr<QObject> mailbox_;
};
