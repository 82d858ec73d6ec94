// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A serial port for tests: records every write with the fake clock's time and serves scripted replies.

#include "FakeClock.h"
#include "SerialPort.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <deque>
#include <functional>

class FakeSerialPort final : public SerialPort {
public:
    struct Write {
        qint64 atMs;
        QByteArray bytes;
    };

    explicit FakeSerialPort(FakeClock* clock = nullptr) : clock_(clock) {}

    void setDevice(const QString& device) override { device_ = device; }
    QString device() const override { return device_; }
    bool setSettings(const QString& text, QString* error) override;
    QString settings() const override { return settings_; }
    bool open(QString* error) override;
    void close() override { open_ = false; }
    bool isOpen() const override { return open_; }
    void write(const QByteArray& bytes) override;
    QByteArray readAll() override;
    int bytesWaiting() override;
    bool waitForReadyRead(int ms) override;
    bool failed() const override { return failed_; }

    // Scripting. Replies queued with queueReply() answer the next writes, one each, in order (an
    // empty one answers nothing). A responder, when set, answers writes the script does not cover.
    void queueReply(const QByteArray& reply) { script_.push_back(reply); }
    std::function<QByteArray(const QByteArray& command)> responder;
    void inject(const QByteArray& bytes) { inbox_ += bytes; }  // bytes arriving unasked

    // The line's pace, on the fake clock. With both 0 (the default) a reply is there the moment its
    // command is written. Otherwise its first byte arrives replyDelayMs after the write and each byte
    // takes msPerByte, so a test sees a reply arrive over time and a wait that ends when it is complete.
    int replyDelayMs = 0;
    int msPerByte = 0;
    // A USB adapter's bursts: with burstMs set, a byte off the line is handed over at the next
    // multiple of burstMs on the clock.
    int burstMs = 0;

    // Failure switches.
    QString openError;           // non-empty: open() fails with it
    QString settingsError;       // non-empty: setSettings() fails with it
    QStringList refusedDevices;  // open() of these devices fails
    bool failed_ = false;

    QList<Write> writes;
    QStringList writtenHex() const;  // "00 00 00 02 10" per write
    int openCount = 0;

private:
    void log(const QString& e) const
    {
        if (clock_)
            clock_->events.append(e);
    }
    FakeClock* clock_;
    QString device_;
    QString settings_ = QStringLiteral("4800,n,8,2");
    bool open_ = false;
    void arrive();  // moves the bytes whose time has come into the inbox
    QByteArray inbox_;
    std::deque<std::pair<qint64, char>> onTheLine_;  // bytes still travelling: arrival time, byte
    qint64 lineFree_ = 0;                            // when the line has sent the last reply byte
    std::deque<QByteArray> script_;
};
