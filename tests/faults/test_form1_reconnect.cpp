// SPDX-License-Identifier: GPL-3.0-or-later
// The radio that goes away and comes back: the main window closes the port, shows "No Link  ", puts
// nothing on the wire while the device is away, and opens the same device again by itself when it
// reappears, after which polling goes on as before.
#include "FaultRun.h"
#include "FormOnRadio.h"

#include <QFileInfo>
#include <QTemporaryDir>

class TestForm1Reconnect : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

private slots:
    void unpluggedRadioShowsNoLinkAndIsOpenedAgainWhenBack()
    {
        const QString path = dir.filePath(QStringLiteral("radio"));
        FormOnRadio f(path);
        QVERIFY2(f.started, qPrintable(f.error));
        const qint64 freq = f.host.radio().vfo(VirtualRadio::Vfo::A).freq10Hz;
        QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), FaultRun::frequencyText(freq), 5000);

        f.host.unplug();
        QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), NoLinkText, 3000);
        QTRY_VERIFY_WITH_TIMEOUT(!f.form->portOpen(), 4000);  // closed cleanly by the watch
        QVERIFY(f.form->pollEnabled());

        // Away for several looks: the window waits quietly.
        const FaultRun::CpuMeter cpu;
        QTest::qWait(4500);
        QVERIFY(!f.form->portOpen());
        QCOMPARE(f.vfoA(), NoLinkText);
        QVERIFY2(cpu.share() < FaultRun::MaxCpuShare, qPrintable(QString::number(cpu.share())));

        f.host.clearLog();
        FaultRun::tuneVfoA(f.host, 2807400);
        QVERIFY(f.host.replug());
        QVERIFY(QFileInfo::exists(path));
        QTRY_VERIFY_WITH_TIMEOUT(f.form->portOpen(), 4000);
        QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), FaultRun::frequencyText(2807400), 3000);
        // The same wire as before: the first command after the return is an ordinary poll's.
        QCOMPARE(f.host.log().first().command.toHex(' '), QByteArray("00 00 00 02 10"));
    }

    void closingWhileTheRadioIsAwayEndsCleanly()
    {
        FormOnRadio f(dir.filePath(QStringLiteral("radio")));
        QVERIFY(f.started);
        const qint64 freq = f.host.radio().vfo(VirtualRadio::Vfo::A).freq10Hz;
        QTRY_COMPARE_WITH_TIMEOUT(f.vfoA(), FaultRun::frequencyText(freq), 5000);
        f.host.unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!f.form->portOpen(), 4000);
        f.form->close();
        f.host.replug();
        QTest::qWait(2500);  // a look that falls due now must not open the port again
        QVERIFY(!f.link->portOpen());
    }
};

QTEST_MAIN(TestForm1Reconnect)
#include "test_form1_reconnect.moc"
