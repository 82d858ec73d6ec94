// SPDX-License-Identifier: GPL-3.0-or-later
#include "Form1.h"
#include "BandScope.h"
#include "Clock.h"
#include "ConfigScrn.h"
#include "Form1Follow.h"
#include "PanelLook.h"
#include "PollCache.h"
#include "PressButton.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "SecondaryWindows.h"
#include "Twips.h"

#include <QAction>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QTimer>

Form1::Form1(RadioLink& link, SettingsStore& settings, SecondaryWindows& windows, Prompts& prompts, QWidget* parent)
    : QMainWindow(parent),
      link_(link),
      pollCache_(std::make_shared<PollCache>()),
      settings_(settings),
      windows_(windows),
      prompts_(prompts),
      mailbox_(new QObject, [](QObject* o) { o->deleteLater(); })
{
    setWindowTitle(PanelLook::Title);
    programFolder_ = QCoreApplication::applicationDirPath();
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(250);
    connect(Timer1, &QTimer::timeout, this, &Form1::Timer1_Timer);
    buildControls();
    buildMenus();
    applyLayout(FrontPanel::layoutAtStart(FrontPanel::LargeWidth));
    setWindowHeightTwips(FrontPanel::HeightScopeHidden);
}

Form1::~Form1()
{
    Timer1->stop();
    // The port dialog goes first: its last act still uses this window.
    delete configScrn_.data();
}

std::function<void(Form1::Delivery)> Form1::courier()
{
    // The mailbox lives as long as a job holds it, so a job may deliver after the window is gone.
    return [box = mailbox_, self = QPointer<Form1>(this), link = &link_](Delivery fn) {
        link->deliver(box.get(), [self, fn = std::move(fn)] {
            if (self)
                fn(*self);
        });
    };
}

void Form1::send(const CatCommand& command)
{
    link_.post([command](CatPort& port) { port.send(command); });
}

bool Form1::portOpen() const
{
    return link_.portOpen();
}

void Form1::setPollEnabled(bool on)
{
    setFollowPollOn(on);
    if (!on) {
        // A tick that fell due while the last poll ran would otherwise run after the jobs of
        // whoever turned the poll off (between a sweep's passes, before its tune back).
        link_.forgetDue(JobKind::Poll);
    }
    if (on)
        Timer1->start();
    else
        Timer1->stop();
}

bool Form1::pollEnabled() const
{
    return Timer1->isActive();
}

bool Form1::shown(const QLabel* label) const
{
    return label && !label->isHidden();
}

bool Form1::indicatorVisible(int index) const
{
    return index >= 0 && index < Label1.size() && shown(Label1[index]);
}

QString Form1::indicatorCaption(int index) const
{
    return index >= 0 && index < Label1.size() && Label1[index] ? Label1[index]->text() : QString();
}

bool Form1::dualShown() const
{
    return indicatorVisible(0);
}

void Form1::setVfoADisplay(const QString& caption)
{
    Label2[1]->setText(caption);
}

void Form1::setFrequencyDisplay(int receiver, const QString& caption)
{
    if (receiver == 1 || receiver == 2)
        Label2[receiver]->setText(caption);
}

bool Form1::edspMenuChecked(bool transmit, int index) const
{
    const auto& items = transmit ? mnu_EDSPT : mnu_EDSPR;
    return index >= 0 && index < items.size() && items[index]->isChecked();
}

void Form1::setEdspMenuChecked(bool transmit, int index, bool checked)
{
    const auto& items = transmit ? mnu_EDSPT : mnu_EDSPR;
    if (index >= 0 && index < items.size() && !items[index]->isSeparator())
        items[index]->setChecked(checked);
}

QPushButton* Form1::keyButton(int index) const
{
    if (FrontPanel::isScopeKey(index))
        return scope_ ? scope_->key(index) : nullptr;
    return index >= 0 && index < Key.size() ? static_cast<QPushButton*>(Key[index]) : nullptr;
}

void Form1::setKeyBackColour(int keyIndex, quint32 bgr)
{
    if (QPushButton* k = keyButton(keyIndex))
        k->setStyleSheet(QStringLiteral("background-color: %1;").arg(fromBgr(bgr).name()));
}

void Form1::resetKeyBackColour(int keyIndex)
{
    if (QPushButton* k = keyButton(keyIndex))
        k->setStyleSheet(QString());
}

QRect Form1::geometryTwips() const
{
    const QRect g = geometry();
    return {Twips::fromPixels(g.x()), Twips::fromPixels(g.y()), Twips::fromPixels(g.width()),
            Twips::fromPixels(g.height())};
}

int Form1::navigatorWidthTwips()
{
    return windows_.navigatorWidthTwips();
}

void Form1::Get_Status32(int stat)
{
    if (!portOpen())
        return;
    const int selector = meterSelector_;
    auto back = courier();
    // The flags read, when the poll got so far.
    auto job = [back, selector, stat, cache = pollCache_, link = &link_](
                   CatPort& port, StatusReply& status, const auto& goOn) -> std::optional<FlagsReply> {
        const quint64 mark = cache->pollStarting();
        status = ::Get_Status32(port, goOn);
        if (!status.ran || status.cut)
            return std::nullopt;
        cache->storeStatus(mark, status);
        back([record = status.record](Form1& f) { f.showStatus(record); });
        if (status.record.isEmpty() || stat != 0)
            return std::nullopt;
        link->runWaitingSets(port);  // a client's frequency need not wait out the whole poll
        const MeterReplies meters = readMeters(port, selector);
        cache->storeMeters(mark, selector, meters);
        back([meters](Form1& f) { f.showMeters(meters); });
        if (!meters.complete())
            return std::nullopt;
        link->runWaitingSets(port);
        const FlagsReply flags = ::GetFlags(port, 1);
        cache->storeFlags(mark, flags);
        back([flags](Form1& f) { f.showFlags(1, flags); });
        return flags;
    };
    if (stat == 0)
        link_.postTick(JobKind::Poll, [job, back, follow = followSteps(), cache = pollCache_](CatPort& port) {
            // A tick that fell due before following began: the chain's own full polls do its work.
            if (follow.chainRunning())
                return;
            // The meters' age runs from when the poll began.
            const qint64 startedMs = port.clock().nowMs();
            // A knob found turning at the first read is followed from there on.
            const quint64 mark = cache->pollStarting();
            StatusReply status;
            std::optional<quint64> chain;
            const auto flags = job(port, status, [&](const QByteArray& a) {
                chain = follow.startsAtFirstRead(a);
                return !chain;
            });
            if (status.cut)
                return follow.cutPoll(mark, status.currentVfo, *chain);
            back([](Form1& f) { emit f.pollFinished(); });
            follow.afterPoll(status, flags ? &*flags : nullptr, startedMs);
        });
    else
        link_.post([job](CatPort& port) {
            StatusReply status;
            job(port, status, nullptr);
        });
}

void Form1::GetFlags(int arg)
{
    if (!portOpen())
        return;
    auto back = courier();
    link_.post([back, arg](CatPort& port) {
        const FlagsReply flags = ::GetFlags(port, arg);
        if (flags.ran)
            back([flags, arg](Form1& f) { f.showFlags(arg, flags); });
    });
}

void Form1::SetFreq(qint64 frq, int vfo)
{
    link_.post([frq, vfo](CatPort& port) { ::SetFreq(port, frq, vfo); });
}

void Form1::Timer1_Timer()
{
    // While the knob is followed, the readings and their own full polls keep the line busy.
    if (followingOn())
        return;
    Get_Status32(0);
}
