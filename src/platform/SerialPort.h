// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the program needs of a serial line: nothing of the radio's protocol lives here.

#include <QByteArray>
#include <QString>

class SerialPort {
public:
    virtual ~SerialPort() = default;

    // The device to open: "/dev/ttyS0", "/dev/ttyUSB0", "COM3", a pseudo-terminal path.
    virtual void setDevice(const QString& device) = 0;
    virtual QString device() const = 0;

    // Line settings as "speed,parity,data,stop" ("4800,n,8,2"). False, with a description, when the
    // text is not one the port can take; the previous settings then stay.
    virtual bool setSettings(const QString& text, QString* error) = 0;
    virtual QString settings() const = 0;

    virtual bool open(QString* error) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;

    virtual void write(const QByteArray& bytes) = 0;
    // Every byte that has arrived since the last read; empties the receive buffer.
    virtual QByteArray readAll() = 0;
    virtual int bytesWaiting() = 0;
    // Blocks until more bytes have arrived or ms milliseconds have passed; true when bytes arrived.
    // Waiting for a reply this way ends the wait as soon as the reply is there, without spinning.
    virtual bool waitForReadyRead(int ms) = 0;

    // True once the device has gone away underneath an open port (adapter pulled, pty closed).
    virtual bool failed() const { return false; }
};
