#pragma once
// The request cycle on the link thread: clear, send, sleep, read. Procedures are written against this.

#include "CatCommand.h"

#include <QByteArray>
#include <atomic>

class SerialPort;
class Clock;

class CatPort {
public:
    CatPort(SerialPort& port, Clock& clock) : port_(port), clock_(clock) {}

    bool isOpen() const;
    void clear();  // read and discard whatever has arrived
    void send(const CatCommand& command);
    void sendRaw(const QByteArray& bytes);
    // Sleeps on the link clock; false when the sleep was interrupted (closing the program).
    bool sleep(int ms);
    QByteArray read();
    int waiting();
    // send + sleep + read; with clearFirst the stale bytes are dropped first.
    QByteArray request(const CatCommand& command, int waitMs, bool clearFirst = false);

    // Long jobs look at this between steps and stop when it is set: their own flag, or the link
    // shutting down.
    bool cancelled() const { return (cancel_ != nullptr && cancel_->load()) || (stop_ != nullptr && stop_->load()); }
    void setCancelFlag(const std::atomic<bool>* flag) { cancel_ = flag; }
    // Set by the link that owns this port: the program is closing.
    void setStopFlag(const std::atomic<bool>* flag) { stop_ = flag; }

    SerialPort& serial() { return port_; }
    Clock& clock() { return clock_; }

private:
    SerialPort& port_;
    Clock& clock_;
    const std::atomic<bool>* cancel_ = nullptr;
    const std::atomic<bool>* stop_ = nullptr;
};
