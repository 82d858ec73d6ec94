// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScopeRecord.h"

#include "RadioLink.h"
#include "ScopeHost.h"
#include "SweepJob.h"
#include "SweepPlan.h"

#include <QPointer>
#include <QTimer>

namespace {
constexpr double SecondsPerMinute = 60.0;
constexpr double MsPerSecond = 1000.0;
}  // namespace

ScopeRecord::ScopeRecord(ScopeHost& host, std::function<int()> receiver, QObject* parent)
    : QObject(parent),
      host_(host),
      receiver_(std::move(receiver)),
      mailbox_(new QObject, [](QObject* o) { o->deleteLater(); })
{
    Timer2 = new QTimer(this);
    Timer2->setObjectName(QStringLiteral("Timer2"));
    Timer2->setInterval(TickMs);
    connect(Timer2, &QTimer::timeout, this, &ScopeRecord::Timer2_Timer);
}

void ScopeRecord::onReading(double seconds, const QByteArray& reply)
{
    RecordReading r;
    r.seconds = seconds;
    r.replied = !reply.isEmpty();
    r.raw = r.replied ? static_cast<quint8>(reply.at(0)) : 0;
    readings_.append(r);
    emit reading(seconds, reply);
}

bool ScopeRecord::active() const
{
    return Timer2->isActive();
}

void ScopeRecord::start(double minutes)
{
    minutes_ = minutes;
    host_.setPollEnabled(false);
    Timer2->start();
    ticks_ = 0;
    readings_.clear();
    start_ = QTime::currentTime();
    nextLabelMinute_ = recordLabelStepMinutes(minutes_);
}

void ScopeRecord::stop()
{
    Timer2->stop();
}

void ScopeRecord::Timer2_Timer()
{
    if (!Timer2->isActive())
        return;
    ++ticks_;
    const double x = ticks_ * (TickMs / MsPerSecond);
    const int step = recordLabelStepMinutes(minutes_);
    while (nextLabelMinute_ * SecondsPerMinute <= x && nextLabelMinute_ <= minutes_) {
        emit labelDue(nextLabelMinute_ * SecondsPerMinute, start_.addSecs(nextLabelMinute_ * 60));
        nextLabelMinute_ += step;
    }
    const int r = receiver_();
    QPointer<ScopeRecord> self(this);
    RadioLink* link = &host_.link();
    std::shared_ptr<QObject> mailbox = mailbox_;
    link->postMerged(JobKind::SRecord, [link, mailbox, self, r, x](CatPort& port) {
        const QByteArray reply = readScopeMeter(port, r);
        link->deliver(mailbox.get(), [self, x, reply] {
            if (self)
                self->onReading(x, reply);
        });
    });
    // The chosen time has run out: the recording ends by itself.
    if (x >= minutes_ * SecondsPerMinute) {
        Timer2->stop();
        host_.setPollEnabled(true);
    }
}
