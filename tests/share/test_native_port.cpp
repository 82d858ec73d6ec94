// SPDX-License-Identifier: GPL-3.0-or-later
// The native port end to end on its pseudo-terminal: a client writes the radio's five-byte commands
// and reads the replies. Behind the port, an inline radio link on a recording serial port answered
// by the virtual radio, the rig every door goes through, and a poll run the way the main window
// runs it.

#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "LinkRig.h"
#include "NativePort.h"
#include "PollCache.h"
#include "Procedures.h"
#include "PtyClient.h"
#include "RadioLink.h"
#include "StatusDecoder.h"
#include "VirtualRadio.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>

#include <termios.h>

namespace {
constexpr int TransmitSelector = 0x85;  // SWR, as the meter panel may have chosen
constexpr int FramePauseMs = 80;        // longer than the radio's 50 ms between the bytes of a frame

QByteArray frame(int op, int p4 = 0, int p1 = 0)
{
    return CatCommand::make(op, p4, 0, 0, p1).bytes();
}

struct Scene {
    Scene()
        : clock(std::make_shared<FakeClock>()),
          link(
              [this] {
                  auto p = std::make_unique<FakeSerialPort>(clock.get());
                  p->responder = [this](const QByteArray& command) { return radio.handle(command); };
                  serial = p.get();
                  QString e;
                  p->open(&e);
                  return p;
              },
              clock, RadioLink::Mode::Inline),
          rig(link, clock),
          cache(std::make_shared<PollCache>()),
          port(rig, cache)
    {
        rig.setPollCache(cache);
    }

    // One poll as the main window's timer runs it, its replies kept for the port.
    void poll()
    {
        link.post([this](CatPort& p) {
            const quint64 mark = cache->pollStarting();
            cache->storeStatus(mark, Get_Status32(p));
            cache->storeMeters(mark, TransmitSelector, readMeters(p, TransmitSelector));
            cache->storeFlags(mark, GetFlags(p, 1));
        });
    }
    QStringList radioSaw() const { return serial->writtenHex(); }

    VirtualRadio radio;
    std::shared_ptr<FakeClock> clock;
    FakeSerialPort* serial = nullptr;
    RadioLink link;
    LinkRig rig;
    std::shared_ptr<PollCache> cache;
    NativePort port;
};
}  // namespace

class TestNativePort : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;

private slots:
    void initTestCase()
    {
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }

    void opensUnderTheNativeName()
    {
        Scene s;
        QString error;
        QVERIFY2(s.port.open(&error), qPrintable(error));
        QCOMPARE(s.port.linkPath(), runtime.path() + QStringLiteral("/ft1000cat/native"));
        QVERIFY(s.port.terminalPath().startsWith(QStringLiteral("/dev/")));
        s.port.close();
        QVERIFY(!QFileInfo(runtime.path() + QStringLiteral("/ft1000cat/native")).isSymLink());
    }

    void eachPolledReadReturnsThePollsBytes_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("size");
        QTest::newRow("current VFO") << frame(Op::StatusRequest, StatusKind::CurrentVfo) << 16;
        QTest::newRow("both VFOs") << frame(Op::StatusRequest, StatusKind::BothVfos) << 32;
        QTest::newRow("main S-meter") << frame(Op::ReadMeter, 0, MeterSelector::MainS) << 5;
        QTest::newRow("sub S-meter") << frame(Op::ReadMeter, 0, MeterSelector::SubS) << 5;
        QTest::newRow("transmit meter") << frame(Op::ReadMeter, 0, TransmitSelector) << 5;
        QTest::newRow("CW pitch") << frame(Op::ReadMeter, 0, MeterSelector::CwPitch) << 5;
        QTest::newRow("flags") << frame(Op::ReadFlags, 1) << 6;
    }
    void eachPolledReadReturnsThePollsBytes()
    {
        QFETCH(QByteArray, command);
        QFETCH(int, size);
        Scene s;
        s.radio.setCwPitchByte(0xA0);
        s.radio.setSplit(true);
        s.poll();
        const QByteArray polled = s.cache
                                      ->answer(CatCommand{quint8(command[0]), quint8(command[1]), quint8(command[2]),
                                                          quint8(command[3]), quint8(command[4])})
                                      .bytes;
        QCOMPARE(polled, s.radio.handle(command));  // what the poll stored is the radio's reply
        QCOMPARE(polled.size(), size);
        const int sentByThePoll = s.radioSaw().size();
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        QVERIFY(client.write(command));
        QCOMPARE(client.read(size), polled);
        QCOMPARE(s.radioSaw().size(), sentByThePoll);  // answered without the wire
        QCOMPARE(s.port.commandsAnswered(), qint64(1));
    }

    void aSetThenReadShowsTheChange()
    {
        Scene s;
        s.poll();
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        // VFO-A to 7 030.00 kHz, then the current VFO's record.
        const QByteArray set = setFreqCommand(703000, 1).bytes();
        QVERIFY(client.write(set + frame(Op::StatusRequest, StatusKind::CurrentVfo)));
        QCOMPARE(client.readFor(FramePauseMs), QByteArray());  // the record waits for a poll
        QCOMPARE(s.radioSaw().last(), hexBytes(set));
        s.poll();
        const QByteArray reply = client.read(ReplySize::VfoRecord);
        QCOMPARE(reply.size(), ReplySize::VfoRecord);
        StatusRecord store;
        const StatusView v = decodeStatus(store, reply);
        QCOMPARE(v.a.kHz, 7030.0);
    }

    void aChannelReadIsPassedToTheRadioAndItsReplyBack()
    {
        Scene s;
        s.poll();
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        const QByteArray read = frame(Op::StatusRequest, StatusKind::OneChannel, 12);
        QVERIFY(client.write(read));
        const QByteArray reply = client.read(ReplySize::ChannelRecord);
        QCOMPARE(reply.size(), ReplySize::ChannelRecord);
        QCOMPARE(reply, s.radio.handle(read));
        QCOMPARE(s.radioSaw().last(), hexBytes(read));
    }

    void pttIsRefusedUnlessAuthorisedAndForwardedWhenItIs()
    {
        Scene s;
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: transmit refused"));
        QVERIFY(client.write(frame(Op::Ptt, 1)));
        QCOMPARE(client.readFor(FramePauseMs), QByteArray());
        QVERIFY(s.radioSaw().isEmpty());
        QVERIFY(!s.radio.transmitting());
        s.rig.setTxAuthorized(true);
        QVERIFY(client.write(frame(Op::Ptt, 1)));
        QTRY_COMPARE(s.radioSaw(), QStringList{"00 00 00 01 0F"});
        QVERIFY(s.radio.transmitting());
    }

    void switchingThePortOffReleasesItsClientsKey()
    {
        Scene s;
        s.rig.setTxAuthorized(true);
        s.port.receive(frame(Op::Ptt, 1));
        QVERIFY(s.radio.transmitting());
        s.port.close();
        QCOMPARE(s.radioSaw(), (QStringList{"00 00 00 01 0F", "00 00 00 00 0F"}));
        QVERIFY(!s.radio.transmitting());
    }

    void aKeyingClientThatFallsSilentIsUnkeyed()
    {
        Scene s;
        s.rig.setTxAuthorized(true);
        s.port.keySilence().setSilenceMs(100);
        s.port.receive(frame(Op::Ptt, 3));  // any P4 but 0 is a key
        QCOMPARE(s.radioSaw(), QStringList{"00 00 00 03 0F"});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: unkeying, nothing came from its client"));
        QTRY_COMPARE(s.radioSaw(), (QStringList{"00 00 00 03 0F", "00 00 00 00 0F"}));
    }

    void noKeyWhileTheScopeSweeps()
    {
        Scene s;
        s.rig.setTxAuthorized(true);
        s.rig.setScopeShown(true);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("native port: transmit refused, the band scope is sweeping"));
        s.port.receive(frame(Op::Ptt, 1));
        QVERIFY(s.radioSaw().isEmpty());
        QVERIFY(!s.radio.transmitting());
    }

    // A client that sets the frequency and reads the S-meter gets a reading taken after its set.
    void aMeterReadAfterAFrequencySetWaitsForTheNextPoll()
    {
        Scene s;
        s.poll();
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        const QByteArray sMeter = frame(Op::ReadMeter, 0, MeterSelector::MainS);
        QVERIFY(client.write(CatCommand::make(Op::SetVfoA, 0x01, 0x40, 0x74, 0x00).bytes() + sMeter));  // 14.074 MHz
        QCOMPARE(client.readFor(FramePauseMs), QByteArray());  // the poll's reading is older than the set
        s.poll();
        QCOMPARE(client.read(ReplySize::Meter).size(), ReplySize::Meter);
    }

    void anUnknownOpcodeIsNotForwarded()
    {
        Scene s;
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("native port: not passed on"));
        QVERIFY(client.write(frame(0x0E, 1)));
        QCOMPARE(client.readFor(FramePauseMs), QByteArray());
        QVERIFY(s.radioSaw().isEmpty());
    }

    void noiseAndSplitFramesResynchronise()
    {
        Scene s;
        s.poll();
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        const QByteArray flagsRead = frame(Op::ReadFlags, 1);
        const QByteArray flags = s.cache->answer(CatCommand::make(Op::ReadFlags, 1)).bytes;
        // Three stray bytes, then a pause: they are dropped and the next command stands alone.
        QVERIFY(client.write(QByteArray::fromHex("FF 13 77")));
        QCOMPARE(client.readFor(FramePauseMs), QByteArray());
        QVERIFY(client.write(flagsRead));
        QCOMPARE(client.read(ReplySize::Flags), flags);
        // A command in two writes close together is one command.
        QVERIFY(client.write(flagsRead.left(2)));
        QVERIFY(client.write(flagsRead.mid(2)));
        QCOMPARE(client.read(ReplySize::Flags), flags);
        QCOMPARE(s.port.commandsAnswered(), qint64(2));
    }

    void theClientsLineSettingsAreAccepted_data()
    {
        QTest::addColumn<int>("speed");
        QTest::addColumn<int>("parity");  // 0 none, 1 even, 2 odd
        QTest::addColumn<bool>("twoStopBits");
        QTest::newRow("4800 8N2, the radio's") << int(B4800) << 0 << true;
        QTest::newRow("9600 8E1") << int(B9600) << 1 << false;
        QTest::newRow("38400 8O1") << int(B38400) << 2 << false;
        QTest::newRow("1200 8N1") << int(B1200) << 0 << false;
    }
    void theClientsLineSettingsAreAccepted()
    {
        // A program that opens a serial radio sets its speed, parity and stop bits (and raw bytes):
        // whatever they are, the commands and replies pass unchanged, bytes over 0x7F included.
        QFETCH(int, speed);
        QFETCH(int, parity);
        QFETCH(bool, twoStopBits);
        Scene s;
        s.poll();
        QVERIFY(s.port.open());
        PtyClient client(s.port.linkPath());
        termios t{};
        QCOMPARE(::tcgetattr(client.fd(), &t), 0);
        ::cfmakeraw(&t);
        ::cfsetspeed(&t, static_cast<speed_t>(speed));
        t.c_cflag &= ~tcflag_t(PARENB | PARODD | CSTOPB);
        if (parity != 0)
            t.c_cflag |= PARENB | (parity == 2 ? PARODD : 0);
        if (twoStopBits)
            t.c_cflag |= CSTOPB;
        QCOMPARE(::tcsetattr(client.fd(), TCSANOW, &t), 0);
        const QByteArray read = frame(Op::StatusRequest, StatusKind::BothVfos);
        const QByteArray expected = s.cache->answer(CatCommand::make(Op::StatusRequest, StatusKind::BothVfos)).bytes;
        QVERIFY(std::any_of(expected.begin(), expected.end(), [](char c) { return quint8(c) > 0x7F; }));
        QVERIFY(client.write(read));
        QCOMPARE(client.read(ReplySize::BothVfos), expected);
    }
};

QTEST_GUILESS_MAIN(TestNativePort)
#include "test_native_port.moc"
