// SPDX-License-Identifier: GPL-3.0-or-later
// The main window following the knob (fast link) when the radio starts to misbehave, in real time:
// whatever the line does, the window stays alive and polling, and shows the radio's frequency again
// within two full polls of the radio behaving.
#include "FaultRun.h"
#include "FormOnRadio.h"

#include <QTemporaryDir>

namespace {
// Full polls that reached the radio: each ends with the flags read, which the readings of a VFO's
// record never make (a reading of VFO-B asks for both records, as the full poll does).
int fullPollsSeen(const SimHost& host)
{
    static const QByteArray flags = QByteArray::fromHex("00000001fa");
    int n = 0;
    const QList<SimHost::LogEntry> log = host.log();
    for (const SimHost::LogEntry& e : log)
        n += e.command == flags;
    return n;
}
}  // namespace

class TestForm1FaultsFollow : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

private slots:
    void followingSurvivesEveryFault_data() { FaultRun::rows(); }
    void followingSurvivesEveryFault()
    {
        QFETCH(LineFault, fault);
        FormOnRadio f(dir.filePath(QStringLiteral("radio")));
        QVERIFY2(f.started, qPrintable(f.error));
        f.link->setFastLink(true);
        f.form->setFollowKnob(true);
        constexpr qint64 Before = 2120000;  // 21,200.00 kHz
        constexpr qint64 After = 1407400;   // 14,074.00 kHz
        FaultRun::tuneVfoA(f.host, Before);
        QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), FaultRun::frequencyText(Before), 8000);

        // The knob turns for a second; the fault strikes while the window follows it.
        f.host.turnKnob({2000, 1.0});
        QTRY_VERIFY_WITH_TIMEOUT(f.form->followingKnob(), 5000);
        const FaultRun::CpuMeter cpu;
        f.host.faults().setForced(fault, true);
        if (fault == LineFault::Silent || fault == LineFault::Close)
            QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), NoLinkText, 5000);
        QTest::qWait(2000);
        QVERIFY2(cpu.share() < FaultRun::MaxCpuShare, qPrintable(QStringLiteral("CPU share %1").arg(cpu.share())));

        FaultRun::tuneVfoA(f.host, After);
        f.host.faults().setForced(fault, false);
        if (fault == LineFault::Late)
            QTest::qWait(LineFaultLimits::LateMaxMs + 100);
        if (fault == LineFault::Close)
            QTRY_VERIFY_WITH_TIMEOUT(f.host.pluggedIn(), 5000);
        const int pollsBefore = fullPollsSeen(f.host);
        QElapsedTimer waited;
        waited.start();
        while (f.vfoA() != FaultRun::frequencyText(After) && waited.elapsed() < 8000)
            QTest::qWait(5);
        const int polls = fullPollsSeen(f.host) - pollsBefore;
        QCOMPARE(f.vfoA(), FaultRun::frequencyText(After));
        QVERIFY2(polls <= 2, qPrintable(QStringLiteral("%1 polls before the display was right").arg(polls)));
        QVERIFY(f.form->pollEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(!f.form->followingKnob(), 5000);
    }
};

QTEST_MAIN(TestForm1FaultsFollow)
#include "test_form1_faults_follow.moc"
