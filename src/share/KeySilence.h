// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A sharing port cannot see its client go: a program that keyed the transmitter and then crashed,
// or was unplugged, would leave it keyed. So a port whose client holds the key and has sent nothing
// for a while is taken to be abandoned, and the key released.

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>

class KeySilence {
public:
    static constexpr int DefaultMs = 10000;

    // holdsKey: whether the port's client holds the key now; release: unkeys it.
    KeySilence(QString portName, std::function<bool()> holdsKey, std::function<void()> release);

    // A byte came from the client.
    void heard();
    void stop() { timer_.stop(); }
    // 0: never release for silence.
    void setSilenceMs(int ms);
    int silenceMs() const { return silenceMs_; }

private:
    void elapsed();

    QString portName_;
    std::function<bool()> holdsKey_;
    std::function<void()> release_;
    int silenceMs_ = DefaultMs;
    QTimer timer_;
};
