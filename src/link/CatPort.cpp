#include "CatPort.h"

#include "Clock.h"
#include "LinkLog.h"
#include "SerialPort.h"

bool CatPort::isOpen() const
{
    return port_.isOpen();
}

void CatPort::clear()
{
    const QByteArray dropped = port_.readAll();
    if (!dropped.isEmpty())
        qCDebug(lcTraffic) << "drop" << dropped.toHex(' ');
}

void CatPort::send(const CatCommand& command)
{
    sendRaw(command.bytes());
}

void CatPort::sendRaw(const QByteArray& bytes)
{
    if (!port_.isOpen())
        return;
    qCDebug(lcTraffic) << "send" << bytes.toHex(' ');
    port_.write(bytes);
}

bool CatPort::sleep(int ms)
{
    return clock_.sleepMs(ms);
}

QByteArray CatPort::read()
{
    const QByteArray r = port_.readAll();
    qCDebug(lcTraffic) << "recv" << r.size() << r.left(64).toHex(' ');
    return r;
}

int CatPort::waiting()
{
    return port_.bytesWaiting();
}

QByteArray CatPort::request(const CatCommand& command, int waitMs, bool clearFirst)
{
    if (clearFirst)
        clear();
    send(command);
    sleep(waitMs);
    return read();
}
