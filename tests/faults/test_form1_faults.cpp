// SPDX-License-Identifier: GPL-3.0-or-later
// The main window against the misbehaving virtual radio, in real time: whatever the line does, the
// window keeps polling without crashing, hanging or spinning, shows "No Link  " while the radio is
// silent, and shows the radio's values again within two polls of the radio behaving.
#include "FaultRun.h"
#include "FormOnRadio.h"

#include <QTemporaryDir>

class TestForm1Faults : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

private slots:
    void windowSurvivesEveryFault_data() { FaultRun::rows(); }
    void windowSurvivesEveryFault()
    {
        QFETCH(LineFault, fault);
        FormOnRadio f(dir.filePath(QStringLiteral("radio")));
        QVERIFY2(f.started, qPrintable(f.error));
        FaultRun::faultScenario(f.host, fault, [&] { return f.vfoA(); });
        if (QTest::currentTestFailed())
            return;
        QVERIFY(f.form->pollEnabled());
        QCOMPARE(f.form->windowTitle(), MarkVTitle);
    }

    void windowSurvivesAllFaultsAtRandom()
    {
        FormOnRadio f(dir.filePath(QStringLiteral("radio")));
        QVERIFY(f.started);
        const FaultRun::CpuMeter cpu;
        f.host.faults().setSeed(7);
        f.host.faults().setRandom(
            *parseLineFaults(QStringLiteral("drop,corrupt,truncate,late,double,unsolicited,silent,close")), 0.25);
        QTest::qWait(6000);
        QVERIFY(f.host.faults().injected() > 5);
        f.host.faults().clear();
        QTRY_VERIFY_WITH_TIMEOUT(f.host.pluggedIn(), 5000);
        FaultRun::tuneVfoA(f.host, 705000);
        QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), FaultRun::frequencyText(705000), 8000);
        QVERIFY2(cpu.share() < FaultRun::MaxCpuShare, qPrintable(QString::number(cpu.share())));
        if (const QString out = qEnvironmentVariable("FT_TEST_OUTPUT"); !out.isEmpty())
            f.form->grab().save(out + QStringLiteral("/faults-after-random.png"));
    }
};

QTEST_MAIN(TestForm1Faults)
#include "test_form1_faults.moc"
