// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortWatch.h"

#include "CatPort.h"
#include "RadioLink.h"
#include "SerialPort.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QPointer>
#include <QTimer>

Q_LOGGING_CATEGORY(lcPortWatch, "link.watch", QtWarningMsg)

PortWatch::PortWatch(RadioLink& link, QObject* parent)
    : QObject(parent),
      link_(link),
      timer_(new QTimer(this)),
      exists_([](const QString& device) { return QFileInfo::exists(device); }),
      mailbox_(new QObject, [](QObject* o) { o->deleteLater(); })
{
    timer_->setInterval(CheckIntervalMs);
    connect(timer_, &QTimer::timeout, this, &PortWatch::check);
}

PortWatch::~PortWatch() = default;

void PortWatch::start()
{
    timer_->start();
}

void PortWatch::stop()
{
    timer_->stop();
}

bool PortWatch::running() const
{
    return timer_->isActive();
}

void PortWatch::check()
{
    const QPointer<PortWatch> self(this);
    link_.postMerged(JobKind::Reconnect,
                     [side = side_, exists = exists_, box = mailbox_, self, link = &link_](CatPort& port) {
                         SerialPort& serial = port.serial();
                         const auto tell = [&](bool back, const QString& device) {
                             link->deliver(box.get(), [self, back, device] {
                                 if (!self)
                                     return;
                                 self->lost_ = !back;
                                 if (back)
                                     emit self->deviceBack(device);
                                 else
                                     emit self->deviceLost(device);
                             });
                         };
                         if (serial.isOpen()) {
                             if (!serial.failed()) {
                                 side->lost = false;  // opened again meanwhile, by the port dialog perhaps
                                 return;
                             }
                             side->device = serial.device();
                             side->lost = true;
                             serial.close();
                             qCInfo(lcPortWatch) << "device lost:" << side->device;
                             tell(false, side->device);
                             return;
                         }
                         // Closed on purpose, or the operator has chosen another device since: not ours to open.
                         if (!side->lost || serial.device() != side->device) {
                             side->lost = false;
                             return;
                         }
                         if (side->device.isEmpty() || !exists(side->device))
                             return;
                         QString error;
                         if (!serial.open(&error)) {
                             qCInfo(lcPortWatch) << "device back but not opened yet:" << side->device << error;
                             return;
                         }
                         side->lost = false;
                         qCInfo(lcPortWatch) << "device back:" << side->device;
                         tell(true, side->device);
                     });
}
