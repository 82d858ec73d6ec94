// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeySilence.h"

#include "ShareLog.h"

KeySilence::KeySilence(QString portName, std::function<bool()> holdsKey, std::function<void()> release)
    : portName_(std::move(portName)), holdsKey_(std::move(holdsKey)), release_(std::move(release))
{
    timer_.setSingleShot(true);
    timer_.setInterval(silenceMs_);
    QObject::connect(&timer_, &QTimer::timeout, [this] { elapsed(); });
}

void KeySilence::heard()
{
    if (silenceMs_ > 0)
        timer_.start();
}

void KeySilence::setSilenceMs(int ms)
{
    silenceMs_ = ms;
    timer_.stop();
    if (ms > 0)
        timer_.setInterval(ms);
}

void KeySilence::elapsed()
{
    if (!holdsKey_())
        return;
    qCWarning(lcShare).noquote() << portName_ << "port: unkeying, nothing came from its client for" << silenceMs_
                                 << "ms while it held the key";
    release_();
}
