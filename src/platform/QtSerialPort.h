// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The serial port on QtSerialPort. Lives on the thread that uses it (the link thread).

#include "SerialPort.h"

#include <QSerialPort>
#include <memory>

class QtSerialPort final : public SerialPort {
public:
    QtSerialPort();
    ~QtSerialPort() override;

    void setDevice(const QString& device) override;
    QString device() const override;
    bool setSettings(const QString& text, QString* error) override;
    QString settings() const override;
    bool open(QString* error) override;
    void close() override;
    bool isOpen() const override;
    void write(const QByteArray& bytes) override;
    QByteArray readAll() override;
    int bytesWaiting() override;
    bool waitForReadyRead(int ms) override;
    bool failed() const override;

private:
    void drain();
    bool applySettings(QString* error);

    std::unique_ptr<QSerialPort> port_;
    QString device_;
    QString settings_;
    bool failed_ = false;
};
