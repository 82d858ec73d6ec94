// SPDX-License-Identifier: GPL-3.0-or-later
// The watch over a lost serial device, on the fake port: a device that fails is closed and reported,
// nothing is opened while it is away, the same device is opened again once it is back, and a port
// closed on purpose is left alone.
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "PortWatch.h"
#include "RadioLink.h"

#include <QSignalSpy>
#include <QTest>
#include <memory>

namespace {
const QString Device = QStringLiteral("/dev/ttyUSB0");

struct Watched {
    Watched()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  p->setDevice(Device);
                  p->open(nullptr);
                  return p;
              },
              clock, RadioLink::Mode::Inline),
          watch(link)
    {
        watch.setDeviceExists([this](const QString& device) {
            asked << device;
            return present;
        });
    }

    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    RadioLink link;
    PortWatch watch;
    bool present = true;
    QStringList asked;
};
}  // namespace

class TestPortWatch : public QObject {
    Q_OBJECT
private slots:
    void looksEveryTwoSecondsOnceStarted()
    {
        Watched w;
        QVERIFY(!w.watch.running());
        w.watch.start();
        QVERIFY(w.watch.running());
        QCOMPARE(PortWatch::CheckIntervalMs, 2000);
        w.watch.stop();
        QVERIFY(!w.watch.running());
    }

    void healthyPortIsLeftAsItIs()
    {
        Watched w;
        QSignalSpy lost(&w.watch, &PortWatch::deviceLost);
        w.watch.check();
        w.watch.check();
        QVERIFY(w.port->isOpen());
        QCOMPARE(w.port->openCount, 1);
        QCOMPARE(lost.count(), 0);
        QVERIFY(w.clock->events.isEmpty());  // a look puts nothing on the wire
    }

    void failedDeviceIsClosedAndReported()
    {
        Watched w;
        QSignalSpy lost(&w.watch, &PortWatch::deviceLost);
        QSignalSpy portState(&w.link, &RadioLink::portStateChanged);
        w.port->failed_ = true;
        w.watch.check();
        QVERIFY(!w.port->isOpen());
        QVERIFY(!w.link.portOpen());
        QCOMPARE(portState.count(), 1);
        QCOMPARE(lost.count(), 1);
        QCOMPARE(lost.at(0).at(0).toString(), Device);
        QVERIFY(w.watch.lost());
        QVERIFY(w.port->writes.isEmpty());
    }

    void nothingIsOpenedWhileTheDeviceIsAway()
    {
        Watched w;
        w.port->failed_ = true;
        w.watch.check();
        w.present = false;
        for (int i = 0; i < 5; ++i)
            w.watch.check();
        QCOMPARE(w.port->openCount, 1);
        QVERIFY(!w.port->isOpen());
        QCOMPARE(w.asked, QStringList(5, Device));
        QVERIFY(w.port->writes.isEmpty());
        QVERIFY(w.clock->events.isEmpty());
    }

    void sameDeviceIsOpenedAgainWhenItIsBack()
    {
        Watched w;
        QSignalSpy back(&w.watch, &PortWatch::deviceBack);
        w.port->setSettings(QStringLiteral("9600,e,7,1"), nullptr);
        w.port->failed_ = true;
        w.watch.check();
        w.present = false;
        w.watch.check();
        w.present = true;
        w.watch.check();
        QVERIFY(w.port->isOpen());
        QVERIFY(w.link.portOpen());
        QCOMPARE(w.port->openCount, 2);
        QCOMPARE(w.port->device(), Device);
        QCOMPARE(w.port->settings(), QStringLiteral("9600,e,7,1"));
        QCOMPARE(back.count(), 1);
        QVERIFY(!w.watch.lost());
        // Opening again sends nothing of its own.
        QVERIFY(w.port->writes.isEmpty());
        // And once back, later looks leave it alone.
        w.watch.check();
        QCOMPARE(w.port->openCount, 2);
    }

    void refusedOpenIsTriedAgainAtTheNextLook()
    {
        Watched w;
        w.port->failed_ = true;
        w.watch.check();
        w.port->refusedDevices << Device;  // there, but busy or not ready yet
        w.watch.check();
        QVERIFY(!w.port->isOpen());
        QVERIFY(w.watch.lost());
        w.port->refusedDevices.clear();
        w.watch.check();
        QVERIFY(w.port->isOpen());
        QVERIFY(!w.watch.lost());
    }

    void portClosedOnPurposeIsNeverOpened()
    {
        Watched w;
        w.link.runBlocking([](CatPort& port) { port.serial().close(); });
        for (int i = 0; i < 3; ++i)
            w.watch.check();
        QVERIFY(!w.port->isOpen());
        QCOMPARE(w.port->openCount, 1);
        QVERIFY(w.asked.isEmpty());
    }

    void anotherDeviceChosenMeanwhileIsNotOurs()
    {
        Watched w;
        w.port->failed_ = true;
        w.watch.check();
        w.port->setDevice(QStringLiteral("/dev/ttyS1"));  // the operator picked another port, closed
        w.watch.check();
        QVERIFY(!w.port->isOpen());
        QCOMPARE(w.port->openCount, 1);
        w.port->setDevice(Device);
        w.watch.check();
        QVERIFY(!w.port->isOpen());  // the loss is forgotten
    }

    void portOpenedAgainByHandEndsTheWatch()
    {
        Watched w;
        w.port->failed_ = true;
        w.watch.check();
        w.link.runBlocking([](CatPort& port) { port.serial().open(nullptr); });
        w.watch.check();
        w.link.runBlocking([](CatPort& port) { port.serial().close(); });
        w.watch.check();
        QVERIFY(!w.port->isOpen());
        QCOMPARE(w.port->openCount, 2);
    }
};

QTEST_GUILESS_MAIN(TestPortWatch)
#include "test_port_watch.moc"
