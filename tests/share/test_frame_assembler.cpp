// SPDX-License-Identifier: GPL-3.0-or-later
// The five-byte framing of the radio's own protocol, with the arrival times handed in: five bytes
// make a command, a pause of more than 50 ms between two bytes drops the unfinished frame.

#include "FrameAssembler.h"

#include <QTest>

using namespace std::chrono_literals;
using Commands = QList<QByteArray>;
using TimePoint = FrameAssembler::Clock::time_point;

namespace {
const TimePoint T0 = TimePoint{} + 1h;
const QByteArray StatusRequest = QByteArray::fromHex("0000000210");
const QByteArray MeterRequest = QByteArray::fromHex("00000000F7");
}  // namespace

class TestFrameAssembler : public QObject {
    Q_OBJECT
private slots:
    void fiveBytesInOneReadMakeACommand()
    {
        FrameAssembler f;
        QCOMPARE(f.feed(StatusRequest, T0), Commands{StatusRequest});
        QVERIFY(f.idle());
    }

    void severalCommandsInOneRead()
    {
        FrameAssembler f;
        QCOMPARE(f.feed(StatusRequest + MeterRequest + StatusRequest.left(2), T0),
                 Commands({StatusRequest, MeterRequest}));
        QVERIFY(!f.idle());
        QCOMPARE(f.feed(StatusRequest.mid(2), T0 + 10ms), Commands{StatusRequest});
    }

    void bytesOneByOneWithinTheTimeout()
    {
        FrameAssembler f;
        TimePoint t = T0;
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(f.push(StatusRequest[i], t), std::nullopt);
            t += 50ms;  // exactly the timeout: still the same frame
        }
        QCOMPARE(f.push(StatusRequest[4], t), std::optional<QByteArray>(StatusRequest));
        QCOMPARE(f.droppedBytes(), 0);
    }

    void aPauseOfMoreThanFiftyMsStartsANewFrame()
    {
        FrameAssembler f;
        QCOMPARE(f.feed(QByteArray::fromHex("FFFF"), T0), Commands{});  // noise
        QCOMPARE(f.feed(StatusRequest, T0 + 51ms), Commands{StatusRequest});
        QCOMPARE(f.droppedBytes(), 2);
    }

    void aSplitFrameIsDroppedAndTheNextOneIsWhole()
    {
        FrameAssembler f;
        QCOMPARE(f.feed(StatusRequest.left(3), T0), Commands{});
        QCOMPARE(f.feed(StatusRequest.mid(3), T0 + 60ms), Commands{});  // the tail alone is no command
        QCOMPARE(f.feed(MeterRequest, T0 + 200ms), Commands{MeterRequest});
        QCOMPARE(f.droppedBytes(), 5);
    }

    void withoutAPauseNoiseShiftsTheFrame()
    {
        // The radio frames by count and time only: noise directly before a command is taken in.
        FrameAssembler f;
        QCOMPARE(f.feed(QByteArray::fromHex("AA") + StatusRequest, T0), Commands{QByteArray::fromHex("AA00000002")});
        QCOMPARE(f.feed(MeterRequest, T0 + 100ms), Commands{MeterRequest});
    }

    void expiresAtTellsWhenAnOpenFrameIsDropped()
    {
        FrameAssembler f;
        QCOMPARE(f.expiresAt(), std::nullopt);
        f.feed(StatusRequest.left(2), T0);
        QCOMPARE(f.expiresAt(), std::optional<TimePoint>(T0 + 50ms));
        f.feed(StatusRequest.mid(2, 1), T0 + 20ms);
        QCOMPARE(f.expiresAt(), std::optional<TimePoint>(T0 + 70ms));
        f.expire(T0 + 70ms);
        QVERIFY(!f.idle());
        f.expire(T0 + 71ms);
        QVERIFY(f.idle());
        QCOMPARE(f.expiresAt(), std::nullopt);
        QCOMPARE(f.droppedBytes(), 3);
    }

    void resetDropsTheOpenFrame()
    {
        FrameAssembler f;
        f.feed(StatusRequest.left(4), T0);
        f.reset();
        QCOMPARE(f.feed(MeterRequest, T0 + 1ms), Commands{MeterRequest});
    }
};

QTEST_APPLESS_MAIN(TestFrameAssembler)
#include "test_frame_assembler.moc"
