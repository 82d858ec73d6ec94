// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The sharing ports as the program's wiring handles them: each kind of port behind one small face,
// so the control opens, closes and shows them alike.

#include <QString>
#include <QtGlobal>
#include <memory>

class SharingPort {
public:
    virtual ~SharingPort() = default;
    virtual bool open(QString* error) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    virtual QString terminalPath() const = 0;
    virtual QString linkPath() const = 0;
    virtual QString linkName() const = 0;
    virtual qint64 commandsAnswered() const = 0;
};

// Any port class with the sharing ports' members (TextPort, NativePort).
template <class P>
class SharingPortOf final : public SharingPort {
public:
    // linkName: the name the port was made with.
    SharingPortOf(std::unique_ptr<P> port, QString linkName) : port_(std::move(port)), name_(std::move(linkName)) {}
    bool open(QString* error) override { return port_->open(error); }
    void close() override { port_->close(); }
    bool isOpen() const override { return port_->isOpen(); }
    QString terminalPath() const override { return port_->terminalPath(); }
    QString linkPath() const override { return port_->linkPath(); }
    QString linkName() const override { return name_; }
    qint64 commandsAnswered() const override { return port_->commandsAnswered(); }

private:
    std::unique_ptr<P> port_;
    QString name_;
};
