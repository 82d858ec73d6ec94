// SPDX-License-Identifier: GPL-3.0-or-later
#include "SimHost.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <deque>

namespace {
using SteadyClock = FrameAssembler::Clock;

// While a fault hook is installed the host looks for unsolicited bytes this often; without one it still
// wakes now and then, so that a hook installed meanwhile is noticed.
constexpr auto HookIdlePeriod = std::chrono::milliseconds(20);
constexpr auto IdlePeriod = std::chrono::milliseconds(100);

// What a byte on the wake pipe asks of the serving thread.
constexpr char StopRequest = 1;
constexpr char UnplugRequest = 2;
constexpr char ReplugRequest = 3;

QString systemError(const char* what)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromLocal8Bit(std::strerror(errno)));
}

bool fail(QString* error, const QString& text)
{
    if (error)
        *error = text;
    return false;
}

void closeFd(int& fd)
{
    if (fd >= 0)
        ::close(fd);
    fd = -1;
}

void setFlags(int fd, int fdFlags, int statusFlags)
{
    ::fcntl(fd, F_SETFD, ::fcntl(fd, F_GETFD) | fdFlags);
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | statusFlags);
}

// The line as the radio's port has it, and raw, so no byte is translated, echoed or held back.
bool makeRaw(int fd)
{
    termios t{};
    if (::tcgetattr(fd, &t) != 0)
        return false;
    ::cfmakeraw(&t);
    ::cfsetispeed(&t, B4800);
    ::cfsetospeed(&t, B4800);
    t.c_cflag &= ~(CSIZE | PARENB);
    t.c_cflag |= CS8 | CSTOPB | CLOCAL | CREAD;
    t.c_cc[VMIN] = 1;
    t.c_cc[VTIME] = 0;
    return ::tcsetattr(fd, TCSANOW, &t) == 0;
}
}  // namespace

SimHost::SimHost(VirtualRadio::Model model) : radio_(model) {}

SimHost::~SimHost()
{
    stop();
}

VirtualRadio& SimHost::radio()
{
    return radio_;
}

LineFaults& SimHost::faults()
{
    std::lock_guard lock(faultsMutex_);
    if (!faults_) {
        faults_ = std::make_shared<LineFaults>();
        radio_.setFaultHook(faults_);
    }
    return *faults_;
}

void SimHost::setLinkPath(const QString& path)
{
    std::lock_guard lock(pathMutex_);
    linkPath_ = path;
}

QString SimHost::devicePath() const
{
    std::lock_guard lock(pathMutex_);
    return linkPath_.isEmpty() ? path_ : linkPath_;
}

QString SimHost::terminalPath() const
{
    std::lock_guard lock(pathMutex_);
    return path_;
}

bool SimHost::pluggedIn() const
{
    return plugged_.load();
}

int SimHost::closures() const
{
    return closures_.load();
}

bool SimHost::openTerminal(QString* error)
{
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0)
        return fail(error, systemError("posix_openpt"));
    char name[128] = {};
    if (::grantpt(master_) != 0 || ::unlockpt(master_) != 0 || ::ptsname_r(master_, name, sizeof name) != 0) {
        const QString text = systemError("pseudo-terminal");
        closeTerminal();
        return fail(error, text);
    }
    slave_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave_ < 0 || !makeRaw(slave_)) {
        const QString text = systemError("pseudo-terminal");
        closeTerminal();
        return fail(error, text);
    }
    setFlags(master_, FD_CLOEXEC, O_NONBLOCK);
    std::lock_guard lock(pathMutex_);
    path_ = QString::fromLocal8Bit(name);
    if (!linkPath_.isEmpty()) {
        const QByteArray link = QFile::encodeName(linkPath_);
        ::unlink(link.constData());
        if (::symlink(name, link.constData()) != 0) {
            const QString text = systemError("symlink");
            path_.clear();
            closeFd(slave_);
            closeFd(master_);
            return fail(error, text);
        }
    }
    plugged_ = true;
    return true;
}

void SimHost::closeTerminal()
{
    {
        std::lock_guard lock(pathMutex_);
        if (!linkPath_.isEmpty() && plugged_.load())
            ::unlink(QFile::encodeName(linkPath_).constData());
        path_.clear();
    }
    const bool wasPlugged = plugged_.exchange(false);
    closeFd(slave_);
    closeFd(master_);
    if (wasPlugged)
        ++closures_;
}

bool SimHost::start(QString* error)
{
    if (thread_.joinable())
        return true;
    if (::pipe2(wake_, O_CLOEXEC | O_NONBLOCK) != 0) {
        const QString text = systemError("pipe");
        closeAll();
        return fail(error, text);
    }
    if (!openTerminal(error)) {
        closeAll();
        return false;
    }
    closures_ = 0;
    since_.start();
    thread_ = std::thread([this] { serve(); });
    return true;
}

void SimHost::stop()
{
    if (thread_.joinable()) {
        const char stopByte = StopRequest;
        [[maybe_unused]] const ssize_t n = ::write(wake_[1], &stopByte, 1);
        thread_.join();
    }
    closeAll();
}

void SimHost::closeAll()
{
    if (plugged_.load())
        closeTerminal();
    closeFd(slave_);
    closeFd(master_);
    closeFd(wake_[0]);
    closeFd(wake_[1]);
}

void SimHost::request(char what)
{
    std::unique_lock lock(requestMutex_);
    const int mine = ++asked_;
    [[maybe_unused]] const ssize_t n = ::write(wake_[1], &what, 1);
    requestDone_.wait(lock, [&] { return served_ >= mine; });
}

void SimHost::unplug()
{
    std::lock_guard one(requestSerial_);
    if (thread_.joinable())
        request(UnplugRequest);
    else if (plugged_.load())
        closeTerminal();
}

bool SimHost::replug(QString* error)
{
    std::lock_guard one(requestSerial_);
    if (!thread_.joinable())
        return plugged_.load() || openTerminal(error);
    request(ReplugRequest);
    std::lock_guard lock(requestMutex_);
    if (!replugOk_ && error)
        *error = replugError_;
    return replugOk_;
}

QList<SimHost::LogEntry> SimHost::log() const
{
    // A list of its own, not a shared copy of the host's: the host's next append would otherwise decide
    // between copying and moving the entries by a reference count read without ordering.
    std::lock_guard lock(logMutex_);
    QList<LogEntry> copy;
    copy.reserve(log_.size());
    for (const LogEntry& e : log_)
        copy.append(e);
    return copy;
}

void SimHost::clearLog()
{
    std::lock_guard lock(logMutex_);
    log_.clear();
}

void SimHost::serve()
{
    using namespace std::chrono;
    const auto byteTime = duration_cast<SteadyClock::duration>(duration<double, std::milli>(SimLine::ByteMs));

    // Reply bytes waiting for their moment on the line.
    std::deque<std::pair<SteadyClock::time_point, char>> out;
    // When the outgoing line will have sent its last queued byte, and when the incoming line would
    // have delivered the last byte received: the pseudo-terminal itself carries bytes instantly.
    SteadyClock::time_point outFree = SteadyClock::now();
    SteadyClock::time_point inFree = outFree;
    FrameAssembler framer;
    // A terminal closed by a fault comes back by itself at replugAt.
    bool replugDue = false;
    SteadyClock::time_point replugAt{};

    // An adapter's bursts: a byte off the line is handed over at the next tick of its timer.
    const SteadyClock::time_point burstEpoch = SteadyClock::now();
    const auto handedOver = [&](SteadyClock::time_point t) {
        const int burst = burstMs_.load();
        if (burst <= 0)
            return t;
        const auto period = duration_cast<SteadyClock::duration>(milliseconds(burst));
        const auto ticks = (t - burstEpoch + period - SteadyClock::duration(1)) / period;
        return burstEpoch + ticks * period;
    };

    const auto queue = [&](const QByteArray& bytes, SteadyClock::time_point earliest) {
        SteadyClock::time_point t = std::max(earliest, outFree);
        for (const char b : bytes) {
            t += byteTime;
            out.emplace_back(handedOver(t), b);
        }
        if (!bytes.isEmpty())
            outFree = t;
    };

    const auto unplugNow = [&] {
        closeTerminal();
        out.clear();
        framer.reset();
    };

    const auto receive = [&](char b, SteadyClock::time_point now) {
        inFree = std::max(now, inFree) + byteTime;
        const std::optional<QByteArray> frame = framer.push(b, now);
        if (!frame)
            return;
        {
            std::lock_guard lock(logMutex_);
            log_.append({since_.elapsed(), *frame});
        }
        applyKnob();
        const RadioReply reply = radio_.respond(*frame);
        if (reply.closeLineMs > 0) {
            unplugNow();
            replugDue = true;
            replugAt = now + milliseconds(reply.closeLineMs);
            return;
        }
        queue(reply.bytes, inFree + milliseconds(reply.extraDelayMs + replyDelayMs_.load()));
    };

    // An unplug or replug asked through the wake pipe; false for the stop request.
    const auto serveRequests = [&]() -> bool {
        char asks[16];
        const ssize_t got = ::read(wake_[0], asks, sizeof asks);
        for (ssize_t i = 0; i < got; ++i) {
            if (asks[i] == StopRequest)
                return false;
            bool ok = true;
            QString error;
            if (asks[i] == UnplugRequest) {
                replugDue = false;  // pulled by hand: stays away until plugged in by hand
                if (plugged_.load())
                    unplugNow();
            } else if (asks[i] == ReplugRequest) {
                replugDue = false;
                ok = plugged_.load() || openTerminal(&error);
            }
            std::lock_guard lock(requestMutex_);
            ++served_;
            replugOk_ = ok;
            replugError_ = error;
            requestDone_.notify_all();
        }
        return true;
    };

    for (;;) {
        SteadyClock::time_point now = SteadyClock::now();
        const bool hooked = radio_.hasFaultHook();
        SteadyClock::time_point deadline = now + (hooked ? HookIdlePeriod : IdlePeriod);
        if (!out.empty())
            deadline = std::min(deadline, out.front().first);
        if (const std::optional<SteadyClock::time_point> expires = framer.expiresAt())
            deadline = std::min(deadline, *expires);
        if (replugDue)
            deadline = std::min(deadline, replugAt);
        const auto wait = std::max(SteadyClock::duration::zero(), deadline - now);
        const auto ns = duration_cast<nanoseconds>(wait).count();
        timespec timeout{static_cast<time_t>(ns / 1000000000), static_cast<long>(ns % 1000000000)};
        // While unplugged the terminal's slot is -1, which ppoll passes over.
        pollfd fds[2] = {{wake_[0], POLLIN, 0}, {master_, POLLIN, 0}};
        if (::ppoll(fds, 2, &timeout, nullptr) < 0 && errno != EINTR)
            return;
        if (fds[0].revents != 0 && !serveRequests())
            return;
        now = SteadyClock::now();
        applyKnob();  // the knob turns whether or not anyone asks, the cable pulled or not
        if (replugDue && now >= replugAt) {
            replugDue = false;
            openTerminal(nullptr);  // a failure leaves it unplugged, as a dead adapter would be
        }
        if (master_ < 0)
            continue;
        if (fds[1].revents & POLLIN) {
            char buf[512];
            const ssize_t got = ::read(master_, buf, sizeof buf);
            for (ssize_t i = 0; i < got && master_ >= 0; ++i)
                receive(buf[i], now);
        } else if (fds[1].revents & (POLLHUP | POLLERR)) {
            std::this_thread::sleep_for(milliseconds(5));  // no terminal side open: do not spin
        }
        if (master_ < 0)
            continue;
        framer.expire(now);
        if (hooked && out.empty() && framer.idle())
            queue(radio_.unsolicited(since_.elapsed()), now);

        QByteArray due;
        while (!out.empty() && out.front().first <= now) {
            due.append(out.front().second);
            out.pop_front();
        }
        // A client that does not read lets the terminal's buffer fill up; what does not fit is lost,
        // as on a receiver that overruns.
        if (!due.isEmpty()) {
            [[maybe_unused]] const ssize_t n = ::write(master_, due.constData(), static_cast<size_t>(due.size()));
        }
    }
}

void SimHost::turnKnob(const Knob::Turn& turn)
{
    std::lock_guard lock(knobMutex_);
    knob_.turn(turn, since_.isValid() ? since_.elapsed() : 0);
    knobApplied_ = 0;
}

std::optional<qint64> SimHost::knobReachedStepAtMs(qint64 step) const
{
    std::lock_guard lock(knobMutex_);
    return knob_.reachedStepAtMs(step);
}

void SimHost::applyKnob()
{
    std::lock_guard lock(knobMutex_);
    const qint64 steps = knob_.stepsAt(since_.elapsed());
    if (steps == knobApplied_)
        return;
    VfoState a = radio_.vfo(VirtualRadio::Vfo::A);
    a.freq10Hz += steps - knobApplied_;
    radio_.setVfo(VirtualRadio::Vfo::A, a);
    knobApplied_ = steps;
}
