// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharePty.h"

#include "ShareFolder.h"
#include "ShareLog.h"

#include <QFile>
#include <QSocketNotifier>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace {
constexpr mode_t TerminalMode = 0600;
constexpr int ReadChunk = 512;
constexpr int ChunksPerTurn = SharePty::MaxBytesPerTurn / ReadChunk;

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

// Raw: every byte passes as it is, nothing is echoed or held for a line. The speed and framing a
// client sets later are accepted, whatever they are: a pseudo-terminal has no line to pace.
bool makeRaw(int fd)
{
    termios t{};
    if (::tcgetattr(fd, &t) != 0)
        return false;
    ::cfmakeraw(&t);
    t.c_cflag |= CLOCAL | CREAD;
    t.c_cc[VMIN] = 1;
    t.c_cc[VTIME] = 0;
    return ::tcsetattr(fd, TCSANOW, &t) == 0;
}
}  // namespace

SharePty::SharePty(QString name) : name_(std::move(name)) {}

SharePty::~SharePty()
{
    close();
}

bool SharePty::open(QString* error)
{
    if (isOpen())
        return true;
    const QString folder = ShareFolder::ensure(error);
    if (folder.isEmpty())
        return false;
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master_ < 0)
        return fail(error, systemError("posix_openpt"));
    char name[128] = {};
    if (::grantpt(master_) != 0 || ::unlockpt(master_) != 0 || ::ptsname_r(master_, name, sizeof name) != 0) {
        const QString text = systemError("pseudo-terminal");
        close();
        return fail(error, text);
    }
    client_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (client_ < 0 || !makeRaw(client_) || ::fchmod(client_, TerminalMode) != 0) {
        const QString text = systemError(name);
        close();
        return fail(error, text);
    }
    ::fcntl(master_, F_SETFL, ::fcntl(master_, F_GETFL) | O_NONBLOCK);
    terminal_ = QString::fromLocal8Bit(name);
    if (!makeLink(folder, error)) {
        close();
        return false;
    }
    notifier_ = std::make_unique<QSocketNotifier>(master_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readAvailable(); });
    qCInfo(lcShare) << name_ << "port:" << terminal_ << "linked from" << link_;
    return true;
}

bool SharePty::makeLink(const QString& folder, QString* error)
{
    // Made under a name of its own and renamed over the old one, so a client never finds the link
    // missing or half made, and a link left by a program that died is replaced.
    const QString path = folder + QLatin1Char('/') + name_;
    const QString temporary = folder + QStringLiteral("/.%1.%2").arg(name_).arg(::getpid());
    const QByteArray tmp = QFile::encodeName(temporary);
    ::unlink(tmp.constData());
    if (::symlink(QFile::encodeName(terminal_).constData(), tmp.constData()) != 0)
        return fail(error, systemError("symlink"));
    if (::rename(tmp.constData(), QFile::encodeName(path).constData()) != 0) {
        const QString text = systemError("rename");
        ::unlink(tmp.constData());
        return fail(error, text);
    }
    link_ = path;
    return true;
}

void SharePty::close()
{
    if (notifier_) {
        notifier_->setEnabled(false);
        if (receiving_)
            notifier_.release()->deleteLater();  // closed from the receiver: its notifier is still emitting
        else
            notifier_.reset();
    }
    // Another instance may have taken the name meanwhile: its link stays.
    if (!link_.isEmpty()) {
        const QByteArray path = QFile::encodeName(link_);
        char target[256] = {};
        const ssize_t n = ::readlink(path.constData(), target, sizeof target - 1);
        if (n > 0 && QFile::decodeName(QByteArray(target, n)) == terminal_)
            ::unlink(path.constData());
    }
    link_.clear();
    terminal_.clear();
    closeFd(client_);
    closeFd(master_);
}

void SharePty::readAvailable()
{
    char buf[ReadChunk];
    // A bounded share of each turn of the event loop: a client that writes without pause would
    // otherwise keep this loop going and freeze the window. What is left wakes the notifier again.
    for (int chunk = 0; chunk < ChunksPerTurn; ++chunk) {
        const ssize_t got = ::read(master_, buf, sizeof buf);
        if (got > 0) {
            if (receiver_) {
                receiving_ = true;
                receiver_(QByteArray(buf, static_cast<qsizetype>(got)));
                receiving_ = false;
            }
            if (!isOpen())  // the receiver closed the port
                return;
            continue;
        }
        if (got < 0 && errno == EINTR)
            continue;
        return;  // EAGAIN: all read
    }
}

qint64 SharePty::write(QByteArrayView bytes)
{
    qint64 done = 0;
    while (isOpen() && done < bytes.size()) {
        const ssize_t n = ::write(master_, bytes.data() + done, static_cast<size_t>(bytes.size() - done));
        if (n > 0) {
            done += n;
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        qCInfo(lcShare) << name_ << "port: the client does not read;" << bytes.size() - done << "bytes lost";
        break;
    }
    return done;
}
