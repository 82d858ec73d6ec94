// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The request cycle on the link thread: clear, send, sleep, read. Procedures are written against this.
// It is the one place that decides how long a request waits: in exact mode (the default) the fixed
// wait, then whatever has arrived; with the fast link, until the reply's known length has arrived,
// the fixed wait as the ceiling.

#include "CatCommand.h"
#include "QuietTime.h"

#include <QByteArray>
#include <atomic>

class SerialPort;
class Clock;

class CatPort {
public:
    CatPort(SerialPort& port, Clock& clock) : port_(port), clock_(clock) {}

    bool isOpen() const;
    // The device went away under the open port (an adapter pulled): what is sent goes nowhere.
    bool failed() const;
    void clear();  // read and discard whatever has arrived
    void send(const CatCommand& command);
    void sendRaw(const QByteArray& bytes);
    // Sleeps on the link clock; false when the sleep was interrupted (closing the program).
    bool sleep(int ms);
    QByteArray read();
    int waiting();
    // send + wait for the reply + read; with clearFirst the stale bytes are dropped first.
    // waitingCount, when given, receives the count of bytes waiting when the wait ended (the flags
    // decode checks it).
    QByteArray request(const CatCommand& command, int waitMs, bool clearFirst = false, int* waitingCount = nullptr);

    // Fast link: a request with a reply of known length returns as soon as that many bytes are there.
    // Set from any thread; it applies from the next request on.
    void setFastLink(bool on) { fast_ = on; }
    bool fastLink() const { return fast_.load(); }
    // The fast link's quiet time now, as learnt from the replies (see QuietTime).
    int quietMs() const { return quiet_.quietMs(); }

    // Long jobs look at this between steps and stop when it is set: their own flag, or the link
    // shutting down.
    bool cancelled() const { return (cancel_ != nullptr && cancel_->load()) || (stop_ != nullptr && stop_->load()); }
    void setCancelFlag(const std::atomic<bool>* flag) { cancel_ = flag; }
    // Set by the link that owns this port: the program is closing.
    void setStopFlag(const std::atomic<bool>* flag) { stop_ = flag; }

    SerialPort& serial() { return port_; }
    Clock& clock() { return clock_; }

private:
    QByteArray awaitReply(const CatCommand& sent, int waitMs, int* waitingCount);
    bool stopping() const { return stop_ != nullptr && stop_->load(); }
    // Blocks until count bytes are waiting or ceilingMs have passed.
    void waitForBytes(int count, int ceilingMs);
    // Blocks while bytes keep coming, until the line has been quiet for a moment or limitMs passed.
    void waitForQuiet(int limitMs);

    SerialPort& port_;
    Clock& clock_;
    const std::atomic<bool>* cancel_ = nullptr;
    const std::atomic<bool>* stop_ = nullptr;
    std::atomic<bool> fast_{false};
    bool overran_ = false;  // the last fast request ended at its ceiling with its reply incomplete
    int missing_ = 0;       // of a reply that had begun to come when the wait ended: the bytes still due
    QuietTime quiet_;
};
