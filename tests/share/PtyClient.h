// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A test's client of a sharing port: opens the device as another program would, writes, and
// collects what comes back while the test's event loop runs the port.

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <QString>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

class PtyClient {
public:
    static constexpr int WaitMs = 5000;  // a guard against a hang, not a measurement

    explicit PtyClient(const QString& path)
        : fd_(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~PtyClient() { close(); }
    PtyClient(const PtyClient&) = delete;
    PtyClient& operator=(const PtyClient&) = delete;

    bool isOpen() const { return fd_ >= 0; }
    void close()
    {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
    }

    bool write(const QByteArray& bytes)
    {
        return ::write(fd_, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
    }

    // Everything that arrived, waiting (with the event loop running) until `count` bytes are there
    // or the guard runs out.
    QByteArray read(qsizetype count)
    {
        QByteArray got;
        QDeadlineTimer deadline(WaitMs);
        while (got.size() < count && !deadline.hasExpired()) {
            drain(got);
            if (got.size() < count)
                QTest::qWait(1);
        }
        return got;
    }

    // What arrives while the event loop runs for `ms`: for checking that nothing does.
    QByteArray readFor(int ms)
    {
        QTest::qWait(ms);
        QByteArray got;
        drain(got);
        return got;
    }

    int fd() const { return fd_; }

private:
    void drain(QByteArray& into)
    {
        char buf[256];
        ssize_t n;
        while ((n = ::read(fd_, buf, sizeof buf)) > 0)
            into.append(buf, n);
    }

    int fd_ = -1;
};
