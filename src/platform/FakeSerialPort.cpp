#include "FakeSerialPort.h"

#include "LineSettings.h"

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
    if (!script_.empty()) {
        inbox_ += script_.front();
        script_.pop_front();
    } else if (responder) {
        inbox_ += responder(bytes);
    }
}

QByteArray FakeSerialPort::readAll()
{
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
