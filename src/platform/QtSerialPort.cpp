// SPDX-License-Identifier: GPL-3.0-or-later
#include "QtSerialPort.h"

#include "LineSettings.h"

QtSerialPort::QtSerialPort() : port_(std::make_unique<QSerialPort>()), settings_(QLatin1String(DefaultLineSettings))
{
    QObject::connect(port_.get(), &QSerialPort::errorOccurred, [this](QSerialPort::SerialPortError e) {
        // Only a device lost under an open port counts; a refused open is reported by open() itself.
        // A pulled adapter reports a resource error, a pseudo-terminal whose other end closed a read error.
        if (port_->isOpen() && (e == QSerialPort::ResourceError || e == QSerialPort::DeviceNotFoundError ||
                                e == QSerialPort::ReadError || e == QSerialPort::WriteError))
            failed_ = true;
    });
}

QtSerialPort::~QtSerialPort() = default;

void QtSerialPort::setDevice(const QString& device)
{
    device_ = device;
    port_->setPortName(device);
}

// As given: the serial port's own name drops the "/dev/" of a path.
QString QtSerialPort::device() const
{
    return device_;
}

bool QtSerialPort::setSettings(const QString& text, QString* error)
{
    if (!LineSettings::parse(text, error))
        return false;
    const QString previous = settings_;
    settings_ = text;
    if (!port_->isOpen() || applySettings(error))
        return true;
    // The open port refused them: the previous settings stay, on the line as in the text.
    settings_ = previous;
    applySettings(nullptr);
    return false;
}

QString QtSerialPort::settings() const
{
    return settings_;
}

bool QtSerialPort::applySettings(QString* error)
{
    const auto s = LineSettings::parse(settings_, error);
    if (!s)
        return false;
    using P = LineSettings::Parity;
    using S = LineSettings::StopBits;
    const QSerialPort::Parity parity = s->parity == P::None   ? QSerialPort::NoParity
                                       : s->parity == P::Even ? QSerialPort::EvenParity
                                       : s->parity == P::Odd  ? QSerialPort::OddParity
                                       : s->parity == P::Mark ? QSerialPort::MarkParity
                                                              : QSerialPort::SpaceParity;
    const QSerialPort::StopBits stop = s->stopBits == S::One          ? QSerialPort::OneStop
                                       : s->stopBits == S::OneAndHalf ? QSerialPort::OneAndHalfStop
                                                                      : QSerialPort::TwoStop;
    const bool ok = port_->setBaudRate(s->baud) && port_->setParity(parity) &&
                    port_->setDataBits(static_cast<QSerialPort::DataBits>(s->dataBits)) && port_->setStopBits(stop) &&
                    port_->setFlowControl(QSerialPort::NoFlowControl);
    if (!ok && error)
        *error = port_->errorString();
    return ok;
}

bool QtSerialPort::open(QString* error)
{
    failed_ = false;
    if (port_->isOpen())
        return true;
    if (!port_->open(QIODevice::ReadWrite)) {
        if (error)
            *error = port_->errorString();
        port_->clearError();
        return false;
    }
    if (!applySettings(error)) {
        port_->close();
        return false;
    }
    return true;
}

void QtSerialPort::close()
{
    if (port_->isOpen())
        port_->close();
    port_->clearError();
}

bool QtSerialPort::isOpen() const
{
    return port_->isOpen();
}

void QtSerialPort::write(const QByteArray& bytes)
{
    if (!port_->isOpen())
        return;
    port_->write(bytes);
    port_->waitForBytesWritten(100);
}

void QtSerialPort::drain()
{
    // The operating system may hold bytes that Qt has not picked up yet.
    while (port_->isOpen() && port_->waitForReadyRead(0)) {
    }
}

QByteArray QtSerialPort::readAll()
{
    if (!port_->isOpen())
        return {};
    drain();
    return port_->readAll();
}

int QtSerialPort::bytesWaiting()
{
    if (!port_->isOpen())
        return 0;
    drain();
    return static_cast<int>(port_->bytesAvailable());
}

bool QtSerialPort::waitForReadyRead(int ms)
{
    if (!port_->isOpen())
        return false;
    return port_->waitForReadyRead(ms);
}

bool QtSerialPort::failed() const
{
    return failed_;
}
