// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "NavigatorJobs.h"
#include "SliderTuning.h"
#include "VfoReply.h"

#include <QTest>

class TestSliderTuning : public QObject {
    Q_OBJECT
private slots:
    void nextFrequency_data()
    {
        QTest::addColumn<double>("from");
        QTest::addColumn<int>("v");
        QTest::addColumn<bool>("used");
        QTest::addColumn<double>("to");
        QTest::newRow("positive tunes down") << 14250.0 << 10 << true << 14240.0;
        QTest::newRow("negative tunes up") << 14250.0 << -10 << true << 14260.0;
        QTest::newRow("one kHz a tick") << 7045.0 << 1 << true << 7044.0;
        QTest::newRow("fastest down") << 7045.0 << 50 << true << 6995.0;
        QTest::newRow("fastest up") << 7045.0 << -50 << true << 7095.0;
        QTest::newRow("down to 100 or less refused") << 110.0 << 10 << false << 0.0;
        QTest::newRow("down to just above 100 used") << 111.0 << 10 << true << 101.0;
        QTest::newRow("up to 30,000 or more refused") << 29990.0 << -10 << false << 0.0;
        QTest::newRow("up to just below 30,000 used") << 29989.0 << -10 << true << 29999.0;
        QTest::newRow("zero does not tune") << 14250.0 << 0 << false << 0.0;
    }
    void nextFrequency()
    {
        QFETCH(double, from);
        QFETCH(int, v);
        QFETCH(bool, used);
        QFETCH(double, to);
        const std::optional<double> next = SliderTuning::nextFrequency(from, v);
        QCOMPARE(next.has_value(), used);
        if (used)
            QCOMPARE(*next, to);
    }

    void rangeIsFiftyKilohertzEachWay()
    {
        QCOMPARE(SliderTuning::Minimum, -50);
        QCOMPARE(SliderTuning::Maximum, 50);
    }

    void tickReadsBackThenSends()
    {
        FakeClock clock;
        FakeSerialPort serial(&clock);
        serial.open(nullptr);
        serial.responder = [](const QByteArray& cmd) {
            return cmd.toHex() == "0000000210" ? vfoReply(14200) : QByteArray();
        };
        CatPort port(serial, clock);
        const std::optional<SliderTick> t = sliderTick(port, -5, 9999);  // the radio's 14,200 wins
        QVERIFY(t);
        QCOMPARE(t->kHz, 14205.0);
        QVERIFY(t->sent);
        QCOMPARE(clock.events, (QStringList{"write 00 00 00 02 10", "sleep 75", "read 16", "write 00 05 42 01 0A"}));
    }

    void tickOutOfRangeSendsNoFrequency()
    {
        FakeClock clock;
        FakeSerialPort serial(&clock);
        serial.open(nullptr);
        serial.responder = [](const QByteArray&) { return vfoReply(105); };
        CatPort port(serial, clock);
        const std::optional<SliderTick> t = sliderTick(port, 10, 105);
        QVERIFY(t);
        QVERIFY(!t->sent);
        QCOMPARE(t->kHz, 105.0);
        QCOMPARE(serial.writtenHex(), QStringList{"00 00 00 02 10"});
    }

    void tickWithSilentRadioTunesFromKnownFrequency()
    {
        FakeClock clock;
        FakeSerialPort serial(&clock);
        serial.open(nullptr);
        CatPort port(serial, clock);
        const std::optional<SliderTick> t = sliderTick(port, 20, 7045);
        QCOMPARE(t->kHz, 7025.0);
        QCOMPARE(serial.writtenHex(), (QStringList{"00 00 00 02 10", "00 25 70 00 0A"}));
    }

    void tickDoesNothingWhenPortClosed()
    {
        FakeClock clock;
        FakeSerialPort serial(&clock);
        CatPort port(serial, clock);
        QVERIFY(!sliderTick(port, 10, 14250));
        QVERIFY(clock.events.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSliderTuning)
#include "test_slider_tuning.moc"
