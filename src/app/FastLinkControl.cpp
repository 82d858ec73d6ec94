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
constexpr int RefreshMs = 1000;
}  // namespace

FastLinkControl::FastLinkControl(Form1& form, SettingsStore& settings, bool forRun, QObject* parent)
    : QObject(parent), form_(form), settings_(settings)
{
    since_.start();
    const bool stored = settings_.value(FastLinkSetting::Section, FastLinkSetting::Key, QStringLiteral("0")) ==
                        QStringLiteral("1");
    if (QMenu* setup = form.setupMenu()) {
        item_ = setup->addAction(Caption);
        item_->setObjectName(QStringLiteral("mnu_FastLink"));
        item_->setCheckable(true);
        // The operator's own choice is stored, also during a run started with --fast-link.
        connect(item_, &QAction::triggered, this, [this](bool checked) {
            settings_.setValue(FastLinkSetting::Section, FastLinkSetting::Key,
                               checked ? QStringLiteral("1") : QStringLiteral("0"));
            apply(checked);
        });
    }
    apply(forRun || stored);

    status_ = new QLabel(&form);
    status_->setObjectName(QStringLiteral("pollRate"));
    status_->setAccessibleName(QStringLiteral("Polls per second"));
    form.statusBar()->addPermanentWidget(status_);
    connect(&form, &Form1::pollFinished, this, [this] {
        rate_.recordPoll(since_.elapsed());
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
}

void FastLinkControl::showRate()
{
    const QString text = rate_.text(since_.elapsed());
    if (status_->text() != text)
        status_->setText(text);
}
