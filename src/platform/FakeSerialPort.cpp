// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeSerialPort.h"

#include "LineSettings.h"

#include <algorithm>

bool FakeSerialPort::setSettings(const QString& text, QString* error)
{
    if (!settingsError.isEmpty()) {
        if (error)
            *error = settingsError;
        return false;
    }
    if (!LineSettings::parse(text, error))
        return false;
    settings_ = text;
    return true;
}

bool FakeSerialPort::open(QString* error)
{
    if (!openError.isEmpty() || refusedDevices.contains(device_)) {
        if (error)
            *error = openError.isEmpty() ? QStringLiteral("No such file or directory") : openError;
        return false;
    }
    open_ = true;
    failed_ = false;
    ++openCount;
    return true;
}

void FakeSerialPort::write(const QByteArray& bytes)
{
    if (!open_)
        return;
    writes.append({clock_ ? clock_->nowMs() : 0, bytes});
    log(QStringLiteral("write ") + QString::fromLatin1(bytes.toHex(' ').toUpper()));
    QByteArray reply;
    if (!script_.empty()) {
        reply = script_.front();
        script_.pop_front();
    } else if (responder) {
        reply = responder(bytes);
    }
    if (replyDelayMs == 0 && msPerByte == 0 && burstMs == 0) {
        inbox_ += reply;
        return;
    }
    const qint64 now = clock_ ? clock_->nowMs() : 0;
    // A reply starts after the previous one has left the line.
    qint64 t = std::max(now + replyDelayMs, lineFree_);
    for (const char b : reply) {
        t += msPerByte;
        const qint64 handed = burstMs > 0 ? (t + burstMs - 1) / burstMs * burstMs : t;
        onTheLine_.emplace_back(handed, b);
    }
    if (!reply.isEmpty())
        lineFree_ = t;
}

void FakeSerialPort::arrive()
{
    const qint64 now = clock_ ? clock_->nowMs() : 0;
    while (!onTheLine_.empty() && (clock_ == nullptr || onTheLine_.front().first <= now)) {
        inbox_ += onTheLine_.front().second;
        onTheLine_.pop_front();
    }
}

int FakeSerialPort::bytesWaiting()
{
    arrive();
    return static_cast<int>(inbox_.size());
}

bool FakeSerialPort::waitForReadyRead(int ms)
{
    arrive();
    if (!open_ || clock_ == nullptr)
        return false;
    // The wait ends when the next byte arrives, or after ms when none comes in time.
    const qint64 now = clock_->nowMs();
    const bool comes = !onTheLine_.empty() && onTheLine_.front().first <= now + ms;
    const qint64 waited = comes ? std::max(qint64(0), onTheLine_.front().first - now) : ms;
    clock_->advance(waited);
    log(QStringLiteral("wait %1").arg(waited));
    arrive();
    return comes;
}

QByteArray FakeSerialPort::readAll()
{
    arrive();
    QByteArray out;
    out.swap(inbox_);
    log(QStringLiteral("read %1").arg(out.size()));
    return out;
}

QStringList FakeSerialPort::writtenHex() const
{
    QStringList l;
    for (const Write& w : writes)
        l << QString::fromLatin1(w.bytes.toHex(' ').toUpper());
    return l;
}
