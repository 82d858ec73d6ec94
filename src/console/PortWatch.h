// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Brings a lost radio back. When the serial device goes away under the open port (a USB adapter
// pulled, a pseudo-terminal closed), the port is closed cleanly and deviceLost() tells the window,
// which shows "No Link  ". From then on, every two seconds, the watch looks whether the same device
// is there again - a look at the file system only, nothing goes on the wire while it is away - and
// opens it again, with the settings it had, once it is. A port closed on purpose (the port dialog,
// shutdown) is never opened again by the watch.

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class QTimer;
class RadioLink;

class PortWatch : public QObject {
    Q_OBJECT
public:
    static constexpr int CheckIntervalMs = 2000;
    // Whether the device can be opened at all: by default, whether its path exists.
    using DeviceExists = std::function<bool(const QString& device)>;

    explicit PortWatch(RadioLink& link, QObject* parent = nullptr);
    ~PortWatch() override;

    void setDeviceExists(DeviceExists exists) { exists_ = std::move(exists); }

    // The look every CheckIntervalMs, on the window's thread; each look is a job on the link.
    void start();
    void stop();
    bool running() const;

    // One look, as the timer makes it: a lost device is closed or, once back, opened again.
    void check();

    // As of the last look that reported: the device was lost and has not come back.
    bool lost() const { return lost_; }

signals:
    void deviceLost(const QString& device);
    void deviceBack(const QString& device);

private:
    // What the link thread remembers between looks; touched only by the jobs.
    struct LinkSide {
        bool lost = false;
        QString device;
    };

    RadioLink& link_;
    QTimer* timer_;
    DeviceExists exists_;
    std::shared_ptr<LinkSide> side_ = std::make_shared<LinkSide>();
    // Jobs deliver through this; it outlives the watch as long as a job holds it.
    std::shared_ptr<QObject> mailbox_;
    bool lost_ = false;
};
