// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A client of a sharing port or of the network server that runs on a thread of its own with
// blocking calls, as another program on the machine would, while the event loop of the test or the
// benchmark serves it. Every read has a guard so a silent port fails the caller instead of hanging.

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <QString>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

class BlockingClient {
public:
    static constexpr int GuardMs = 10000;  // a guard against a hang, not a measurement

    // The device (or its stable link) opened as a serial radio is.
    static BlockingClient pty(const QString& path)
    {
        return BlockingClient(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    }

    // A connection to a server on the loopback.
    static BlockingClient tcp(quint16 port)
    {
        const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (fd < 0)
            return BlockingClient(-1);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            ::close(fd);
            return BlockingClient(-1);
        }
        const int on = 1;
        ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        return BlockingClient(fd);
    }

    BlockingClient(BlockingClient&& other) noexcept
        : fd_(std::exchange(other.fd_, -1)), pending_(std::move(other.pending_))
    {
    }
    BlockingClient& operator=(BlockingClient&& other) noexcept
    {
        std::swap(fd_, other.fd_);
        std::swap(pending_, other.pending_);
        return *this;
    }
    BlockingClient(const BlockingClient&) = delete;
    BlockingClient& operator=(const BlockingClient&) = delete;
    ~BlockingClient() { close(); }

    bool isOpen() const { return fd_ >= 0; }
    void close()
    {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
    }

    bool write(const QByteArray& bytes)
    {
        qsizetype done = 0;
        while (fd_ >= 0 && done < bytes.size()) {
            const ssize_t n = ::write(fd_, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
            if (n <= 0)
                return false;
            done += n;
        }
        return done == bytes.size();
    }

    // The next `count` bytes; fewer when the guard runs out first.
    QByteArray readCount(qsizetype count, int guardMs = GuardMs)
    {
        QDeadlineTimer deadline(guardMs);
        while (pending_.size() < count && fill(deadline)) {
        }
        return take(qMin(count, pending_.size()));
    }

    // Up to and with the byte `end`; what arrived when the guard runs out first.
    QByteArray readUntil(char end, int guardMs = GuardMs)
    {
        QDeadlineTimer deadline(guardMs);
        qsizetype at;
        while ((at = pending_.indexOf(end)) < 0 && fill(deadline)) {
        }
        return take(at < 0 ? pending_.size() : at + 1);
    }

    // Whatever arrives within `ms` (for checking that nothing does).
    QByteArray readFor(int ms)
    {
        QDeadlineTimer deadline(ms);
        while (fill(deadline)) {
        }
        return take(pending_.size());
    }

private:
    explicit BlockingClient(int fd) : fd_(fd) {}

    // Waits for input until the deadline; false when none came or the other side went.
    bool fill(const QDeadlineTimer& deadline)
    {
        if (fd_ < 0)
            return false;
        pollfd p{fd_, POLLIN, 0};
        const int left = static_cast<int>(qMax<qint64>(0, deadline.remainingTime()));
        if (::poll(&p, 1, left) <= 0 || !(p.revents & POLLIN))
            return false;
        char buffer[512];
        const ssize_t n = ::read(fd_, buffer, sizeof buffer);
        if (n <= 0)
            return false;
        pending_.append(buffer, n);
        return true;
    }

    QByteArray take(qsizetype n)
    {
        const QByteArray head = pending_.left(n);
        pending_.remove(0, n);
        return head;
    }

    int fd_ = -1;
    QByteArray pending_;
};
