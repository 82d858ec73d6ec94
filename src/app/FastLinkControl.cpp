// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastLinkControl.h"

#include "Form1.h"
#include "RadioLink.h"
#include "SettingsStore.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTimer>

namespace {
const QString Caption = QStringLiteral("Fast Link");
const QString FollowCaption = QStringLiteral("Follow Knob");
const QString On = QStringLiteral("1");
const QString Off = QStringLiteral("0");
const QString UpdatesUnit = QStringLiteral("updates/s");
constexpr int RefreshMs = 1000;
}  // namespace

FastLinkControl::FastLinkControl(Form1& form, SettingsStore& settings, bool forRun, QObject* parent)
    : QObject(parent), form_(form), settings_(settings)
{
    since_.start();
    const bool stored = settings_.value(FastLinkSetting::Section, FastLinkSetting::Key, Off) == On;
    if (QMenu* setup = form.setupMenu()) {
        item_ = setup->addAction(Caption);
        item_->setObjectName(QStringLiteral("mnu_FastLink"));
        item_->setCheckable(true);
        // The operator's own choice is stored, also during a run started with --fast-link.
        connect(item_, &QAction::triggered, this, [this](bool checked) {
            settings_.setValue(FastLinkSetting::Section, FastLinkSetting::Key, checked ? On : Off);
            apply(checked);
        });
    }
    const bool follow = settings_.value(FastLinkSetting::Section, FastLinkSetting::FollowKey, On) == On;
    if (QMenu* setup = form.setupMenu()) {
        follow_ = setup->addAction(FollowCaption);
        follow_->setObjectName(QStringLiteral("mnu_FollowKnob"));
        follow_->setCheckable(true);
        connect(follow_, &QAction::triggered, this, [this](bool checked) {
            settings_.setValue(FastLinkSetting::Section, FastLinkSetting::FollowKey, checked ? On : Off);
            applyFollow(checked);
        });
    }
    applyFollow(follow);
    apply(forRun || stored);

    status_ = new QLabel(&form);
    status_->setObjectName(QStringLiteral("pollRate"));
    status_->setAccessibleName(QStringLiteral("Polls per second"));
    form.statusBar()->addPermanentWidget(status_);
    connect(&form, &Form1::pollFinished, this, [this] {
        rate_.recordPoll(since_.elapsed());
        updates_.recordPoll(since_.elapsed());
        showRate();
    });
    connect(&form, &Form1::readingShown, this, [this] {
        updates_.recordPoll(since_.elapsed());
        showRate();
    });
    refresh_ = new QTimer(this);
    connect(refresh_, &QTimer::timeout, this, &FastLinkControl::showRate);
    refresh_->start(RefreshMs);
}

bool FastLinkControl::on() const
{
    return form_.link().fastLink();
}

QString FastLinkControl::rateText() const
{
    return status_->text();
}

void FastLinkControl::apply(bool on)
{
    form_.link().setFastLink(on);
    if (item_)
        item_->setChecked(on);
    // Following needs the fast link's reads at their expected length; without it the item is
    // greyed, its check mark kept for when the fast link comes back.
    if (follow_)
        follow_->setEnabled(on);
    form_.setFollowKnob(form_.followKnob());
}

void FastLinkControl::applyFollow(bool on)
{
    if (follow_)
        follow_->setChecked(on);
    form_.setFollowKnob(on);
}

void FastLinkControl::showRate()
{
    const QString text =
        form_.followingKnob() ? updates_.text(since_.elapsed(), UpdatesUnit) : rate_.text(since_.elapsed());
    if (status_->text() != text)
        status_->setText(text);
}
