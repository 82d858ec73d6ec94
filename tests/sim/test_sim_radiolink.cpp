// SPDX-License-Identifier: GPL-3.0-or-later
// The radio link on its own thread, with the real serial adapter on the virtual radio: a poll job
// runs on the link thread and its decoded result arrives on the GUI thread.

#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <QTest>
#include <QThread>

class TestSimRadioLink : public QObject {
    Q_OBJECT
private slots:
    void pollJob_deliversTheDecodedStatusOnTheGuiThread()
    {
        SimHost host;
        QString error;
        QVERIFY2(host.start(&error), qPrintable(error));
        VfoState a;
        a.freq10Hz = 2120000;
        host.radio().setVfo(VirtualRadio::Vfo::A, a);

        const QString path = host.devicePath();
        RadioLink link(
            [path] {
                auto port = std::make_unique<QtSerialPort>();
                port->setDevice(path);
                port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
                port->open(nullptr);
                return std::unique_ptr<SerialPort>(std::move(port));
            },
            std::make_shared<RealClock>(), RadioLink::Mode::Threaded);

        QObject window;
        QString shown;
        QThread* jobThread = nullptr;
        QThread* deliveredOn = nullptr;
        const bool posted = link.postMerged(JobKind::Poll, [&](CatPort& port) {
            jobThread = QThread::currentThread();
            const StatusReply r = Get_Status32(port);
            StatusRecord store;
            const StatusView v = decodeStatus(store, r.record);
            link.deliver(&window, [&, v] {
                shown = v.noLink ? NoLinkText : v.a.freqText;
                deliveredOn = QThread::currentThread();
            });
        });
        QVERIFY(posted);
        QTRY_VERIFY_WITH_TIMEOUT(deliveredOn != nullptr, 5000);
        QCOMPARE(shown, QStringLiteral("21,200.00 "));
        QCOMPARE(deliveredOn, QThread::currentThread());
        QVERIFY(jobThread != QThread::currentThread());
        QVERIFY(link.portOpen());
        QCOMPARE(host.log().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestSimRadioLink)
#include "test_sim_radiolink.moc"
