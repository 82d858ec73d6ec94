// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The virtual radio on a pseudo-terminal: a program opens devicePath() as it would a serial port.
// A thread of the host reads the commands, hands each to the radio and sends the reply back at the
// pace of the real line, and it keeps a log of every command received.

#include "FrameAssembler.h"
#include "Knob.h"
#include "LineFaults.h"
#include "VirtualRadio.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace SimLine {
// The radio's line: 4800 baud, 8 data bits and 2 stop bits, plus the start bit: 11 bits a byte.
constexpr int Baud = 4800;
constexpr int BitsPerByte = 11;
constexpr double ByteMs = 1000.0 * BitsPerByte / Baud;  // about 2.29 ms
constexpr double lineMs(int bytes)
{
    return bytes * ByteMs;
}
// A command whose bytes stop coming for this long is dropped, so a stray byte cannot shift every
// later frame: the radio's framing, as FrameAssembler does it.
constexpr int FrameTimeoutMs = static_cast<int>(FrameAssembler::FrameTimeout.count());
}  // namespace SimLine

class SimHost {
public:
    explicit SimHost(VirtualRadio::Model model = VirtualRadio::Model::MarkV);
    ~SimHost();

    SimHost(const SimHost&) = delete;
    SimHost& operator=(const SimHost&) = delete;

    // A stable path for the device (set before start()): a symbolic link to the pseudo-terminal that
    // is there only while the radio is plugged in, as a USB adapter's device node is. devicePath()
    // then names the link.
    void setLinkPath(const QString& path);

    // Opens the pseudo-terminal and starts serving; false, with a description, when that fails.
    bool start(QString* error = nullptr);
    QString devicePath() const;
    QString terminalPath() const;  // the pseudo-terminal itself; empty while unplugged
    void stop();

    // The cable pulled: the terminal closes (a client's open port fails) and the link path goes.
    void unplug();
    // Plugged in again: a new terminal, the link path pointing at it. False when it cannot be opened.
    bool replug(QString* error = nullptr);
    bool pluggedIn() const;
    int closures() const;  // how often the terminal went away, by unplug() or by a close fault

    // A radio that takes this long to start each reply after the command's last byte (default 0).
    void setReplyDelayMs(int ms) { replyDelayMs_ = ms; }
    int replyDelayMs() const { return replyDelayMs_.load(); }

    // A USB serial adapter between the radio and the program: the reply bytes are held and handed
    // over together every ms milliseconds (16 on the most common chips), not at line pace. 0, the
    // default, hands each byte over as the line delivers it.
    void setBurstMs(int ms) { burstMs_ = ms; }
    int burstMs() const { return burstMs_.load(); }

    // Turns VFO-A's knob from now on (see Knob): the radio's frequency moves as the time goes,
    // whether or not anyone reads it.
    void turnKnob(const Knob::Turn& turn);
    // Milliseconds since start(), the clock of the log and of the knob.
    qint64 elapsedMs() const { return since_.elapsed(); }
    // When the knob reached the given number of steps, on that clock.
    std::optional<qint64> knobReachedStepAtMs(qint64 step) const;

    VirtualRadio& radio();
    // The line's faults; installed on the radio the first time they are asked for.
    LineFaults& faults();

    struct LogEntry {
        qint64 atMs;  // since start()
        QByteArray command;
    };
    QList<LogEntry> log() const;
    void clearLog();

private:
    void serve();
    void closeAll();
    bool openTerminal(QString* error);  // on the serving thread once it runs
    void closeTerminal();
    void request(char what);  // hands an unplug or replug to the serving thread and waits for it
    void applyKnob();         // on the serving thread, before a command is answered

    VirtualRadio radio_;
    std::shared_ptr<LineFaults> faults_;
    std::mutex faultsMutex_;
    QString linkPath_;
    QString path_;  // the terminal
    std::atomic<bool> plugged_{false};
    std::atomic<int> closures_{0};
    std::atomic<int> replyDelayMs_{0};
    std::atomic<int> burstMs_{0};
    // An unplug or replug asked of the serving thread: done when served_ reaches asked_.
    std::mutex requestSerial_;  // one unplug or replug at a time
    std::mutex requestMutex_;
    std::condition_variable requestDone_;
    int asked_ = 0;
    int served_ = 0;
    bool replugOk_ = false;
    QString replugError_;
    mutable std::mutex pathMutex_;
    int master_ = -1;
    int slave_ = -1;          // held open so the terminal stays up between the clients' opens
    int wake_[2] = {-1, -1};  // a byte here stops the serving thread
    std::thread thread_;
    QElapsedTimer since_;
    mutable std::mutex knobMutex_;
    Knob knob_;
    qint64 knobApplied_ = 0;  // steps already put on VFO-A
    mutable std::mutex logMutex_;
    QList<LogEntry> log_;
};
