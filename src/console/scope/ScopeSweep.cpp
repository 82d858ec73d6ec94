// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScopeSweep.h"

#include "CatPort.h"
#include "NumberFormat.h"
#include "RadioLink.h"
#include "ScopeHost.h"
#include "ScopeLog.h"

#include <QPointer>

ScopeSweep::ScopeSweep(ScopeHost& host, Choices choices, QObject* parent)
    : QObject(parent),
      host_(host),
      choices_(std::move(choices)),
      cancel_(std::make_shared<std::atomic<bool>>(false)),
      mailbox_(new QObject, [](QObject* o) { o->deleteLater(); })
{
}

ScopeSweep::~ScopeSweep()
{
    // A pass still running on the link thread stops after its step and finds no one to report to.
    cancel_->store(true);
}

void ScopeSweep::start()
{
    busy_ = true;
    passEnded_ = false;
    lastPass_.clear();
    cancel_->store(false);
    startPass();
}

void ScopeSweep::cancel()
{
    cancel_->store(true);
}

void ScopeSweep::startPass()
{
    // Every pass, not only the first, turns the poll off: a graticule redraw during a continuous
    // sweep (a new span, the centre box losing the focus) turns it on, and polls would otherwise
    // run between the later passes.
    host_.setPollEnabled(false);
    const int r = choices_.receiver();
    const SweepPlan plan = choices_.plan();
    passRunning_ = true;
    plan_ = plan;
    pass_.clear();
    qCDebug(lcScope) << "pass from" << plan.startKHz() << "step" << plan.step10Hz << "x 10 Hz," << plan.samples
                     << "samples";
    emit passStarted(plan, r);

    auto cancel = cancel_;
    QPointer<ScopeSweep> self(this);
    RadioLink* link = &host_.link();
    std::shared_ptr<QObject> mailbox = mailbox_;
    auto deliver = [link, mailbox, self](std::function<void(ScopeSweep*)> fn) {
        link->deliver(mailbox.get(), [self, fn = std::move(fn)] {
            if (self)
                fn(self);
        });
    };
    link->post([plan, r, cancel, deliver](CatPort& port) {
        SweepCallbacks callbacks;
        callbacks.tuned = [&](const SweepSample& s) {
            deliver(
                [r, s](ScopeSweep* w) { w->host_.setFrequencyDisplay(r, formatNumber(s.kHz(), Pattern::Frequency)); });
        };
        callbacks.sample = [&](const SweepSample& s) { deliver([plan, s](ScopeSweep* w) { w->onSample(plan, s); }); };
        const SweepOutcome outcome = runSweepPass(port, plan, r, *cancel, callbacks);
        deliver([outcome](ScopeSweep* w) { w->onPassDone(outcome); });
    });
}

void ScopeSweep::onSample(const SweepPlan& plan, const SweepSample& sample)
{
    pass_.append(sample);
    emit sampleRead(plan, sample);
}

void ScopeSweep::onPassDone(const SweepOutcome& outcome)
{
    passRunning_ = false;
    if (!outcome.cancelled && pass_.size() == plan_.samples) {
        passEnded_ = true;
        lastPass_ = pass_;
        emit passFinished(plan_, pass_);
    }
    if (choices_.anotherPass() && !cancel_->load() && !outcome.cancelled && host_.portOpen()) {
        startPass();
        return;
    }
    emit lastPassEnded();
    busy_ = false;
    host_.setPollEnabled(true);
    emit finished();
}
