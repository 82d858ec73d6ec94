#pragma once
// The virtual radio on a pseudo-terminal: a program opens devicePath() as it would a serial port.
// A thread of the host reads the commands, hands each to the radio and sends the reply back at the
// pace of the real line, and it keeps a log of every command received.

#include "VirtualRadio.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <atomic>
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
// later frame.
constexpr int FrameTimeoutMs = 50;
}  // namespace SimLine

class SimHost {
public:
    explicit SimHost(VirtualRadio::Model model = VirtualRadio::Model::MarkV);
    ~SimHost();

    SimHost(const SimHost&) = delete;
    SimHost& operator=(const SimHost&) = delete;

    // Opens the pseudo-terminal and starts serving; false, with a description, when that fails.
    bool start(QString* error = nullptr);
    QString devicePath() const;
    void stop();

    VirtualRadio& radio();

    struct LogEntry {
        qint64 atMs;  // since start()
        QByteArray command;
    };
    QList<LogEntry> log() const;
    void clearLog();

private:
    void serve();
    void closeAll();

    VirtualRadio radio_;
    QString path_;
    int master_ = -1;
    int slave_ = -1;          // held open so the terminal stays up between the clients' opens
    int wake_[2] = {-1, -1};  // a byte here stops the serving thread
    std::thread thread_;
    QElapsedTimer since_;
    mutable std::mutex logMutex_;
    QList<LogEntry> log_;
};
