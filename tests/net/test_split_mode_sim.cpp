// SPDX-License-Identifier: GPL-3.0-or-later
// A client setting VFO-B's mode, against the virtual radio's model on a fake line: what the radio
// ends up holding and exactly what it was sent.

#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "FlagsDecoder.h"
#include "LinkRig.h"
#include "Procedures.h"
#include "RadioLink.h"
#include "RigctlSession.h"
#include "StatusDecoder.h"
#include "VirtualRadio.h"

#include <QTest>
#include <memory>

namespace {
using Vfo = VirtualRadio::Vfo;

// Mode bytes of the radio's status record.
constexpr int LsbByte = 0, UsbByte = 1, CwByte = 2;

struct Bench {
    Bench()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  port = p.get();
                  QString e;
                  p->open(&e);
                  p->responder = [this](const QByteArray& command) { return radio.handle(command); };
                  return p;
              },
              clock, RadioLink::Mode::Inline),
          backend(link, clock),
          session(backend)
    {
        // VFO-A 14 074.00 kHz CW, VFO-B 14 076.00 kHz LSB.
        VfoState a = radio.vfo(Vfo::A);
        a.freq10Hz = 1407400;
        a.modeByte = CwByte;
        radio.setVfo(Vfo::A, a);
        VfoState b = radio.vfo(Vfo::B);
        b.freq10Hz = 1407600;
        b.modeByte = LsbByte;
        radio.setVfo(Vfo::B, b);
    }

    // A poll as the main window runs it, without the meters: status and flags into the backend.
    void poll()
    {
        link.post([this](CatPort& p) {
            const StatusReply s = Get_Status32(p);
            const FlagsReply f = GetFlags(p, 1);
            backend.update(decodeStatus(store, s.record), decodeFlags(1, f.waiting, f.bytes), 0);
        });
    }
    QByteArray line(const char* text) { return session.handleLine(QString::fromLatin1(text)).reply; }
    QStringList sent() const { return port->writtenHex(); }

    VirtualRadio radio;
    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* port = nullptr;
    RadioLink link;
    LinkRig backend;
    RigctlSession session;
    StatusRecord store;
};
}  // namespace

class TestSplitModeSim : public QObject {
    Q_OBJECT
private slots:
    void setsVfoBsModeAndLeavesVfoAAsItWas()
    {
        Bench b;
        b.poll();
        const VfoState vfoA = b.radio.vfo(Vfo::A);
        b.port->writes.clear();
        QCOMPARE(b.line("X USB 2400"), QByteArray("RPRT 0\n"));
        QCOMPARE(b.sent(), (QStringList{"00 00 00 01 05", "00 00 00 01 0C", "00 00 00 00 05"}));
        QCOMPARE(b.radio.vfo(Vfo::B).modeByte, UsbByte);
        QCOMPARE(b.radio.vfo(Vfo::B).freq10Hz, qint64(1407600));
        QCOMPARE(b.radio.vfo(Vfo::A), vfoA);
        QCOMPARE(b.radio.vfoInUse(), Vfo::A);
        QCOMPARE(b.line("x"), QByteArray("USB\n2400\n"));
        // And the next poll reads the same from the radio.
        b.poll();
        QCOMPARE(b.line("x"), QByteArray("USB\n2400\n"));
        QCOMPARE(b.line("m"), QByteArray("CW\n500\n"));
        QCOMPARE(b.line("f"), QByteArray("14074000\n"));
        QCOMPARE(b.line("i"), QByteArray("14076000\n"));
    }

    void nothingIsSentWhileTransmitting()
    {
        Bench b;
        b.radio.setTransmitting(true);
        b.poll();
        b.port->writes.clear();
        QCOMPARE(b.line("X USB 2400"), QByteArray("RPRT -9\n"));
        QVERIFY(b.sent().isEmpty());
        QCOMPARE(b.radio.vfo(Vfo::B).modeByte, LsbByte);
        QCOMPARE(b.line("x"), QByteArray("LSB\n2400\n"));
    }

    void nothingIsSentWhenVfoBAlreadyHasTheMode()
    {
        Bench b;
        b.poll();
        b.port->writes.clear();
        QCOMPARE(b.line("X LSB 2400"), QByteArray("RPRT 0\n"));
        QVERIFY(b.sent().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSplitModeSim)
#include "test_split_mode_sim.moc"
