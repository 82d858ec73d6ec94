// SPDX-License-Identifier: GPL-3.0-or-later
// The text port as the field's own client sees it: hamlib's rigctl for the Kenwood TS-2000
// (model 2014) opens the port's link as a serial radio, and each of its commands must read and
// set the radio behind the port, here a fake that records every set.

#include "FakeRig.h"
#include "RigctlProcess.h"
#include "TextPort.h"

#include <QTemporaryDir>
#include <QTest>

class TestTextPortRigctl : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;
    FakeRig rig{FakeRig::SharingScene};
    std::unique_ptr<TextPort> port;

    // One rigctl process, one command; the port answers on this thread while it runs.
    RigctlRun run(const QStringList& command)
    {
        return RigctlRun::run(QStringLiteral("2014"), port->linkPath(), command);
    }

private slots:
    void initTestCase()
    {
        SKIP_WITHOUT_RIGCTL();
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }

    // A fresh radio and port for each test: the port remembers a client's receive VFO.
    void init()
    {
        rig = FakeRig(FakeRig::SharingScene);
        port = std::make_unique<TextPort>(rig);
        QString error;
        QVERIFY2(port->open(&error), qPrintable(error));
    }
    void cleanup() { port.reset(); }

    void readsTheFrequency()
    {
        rig.values.vfoAHz = 14074000;
        QCOMPARE(run({"f"}).out, QStringLiteral("14074000\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void setsTheFrequency()
    {
        rig.values.vfoAHz = 14074000;
        const RigctlRun r = run({"F", "14076000"});
        QCOMPARE(r.out, QString());
        QCOMPARE(r.err, QString());
        QCOMPARE(rig.calls, QStringList{"freq A 14076000"});
        QCOMPARE(run({"f"}).out, QStringLiteral("14076000\n"));
    }

    void readsTheMode()
    {
        rig.values.modeA = ModeCode::Cw;
        QCOMPARE(run({"m"}).out.section('\n', 0, 0), QStringLiteral("CW"));
        rig.values.modeA = ModeCode::Usb;
        QCOMPARE(run({"m"}).out.section('\n', 0, 0), QStringLiteral("USB"));
    }

    void setsTheMode()
    {
        rig.values.modeA = ModeCode::Lsb;
        const RigctlRun r = run({"M", "USB", "2400"});
        QCOMPARE(r.err, QString());
        QCOMPARE(rig.calls, QStringList{QStringLiteral("mode A %1").arg(ModeCode::Usb)});
        QCOMPARE(run({"m"}).out.section('\n', 0, 0), QStringLiteral("USB"));
    }

    void readsTheVfo() { QCOMPARE(run({"v"}).out, QStringLiteral("VFOA\n")); }

    void selectsVfoBWithoutTouchingTheRadio()
    {
        QCOMPARE(run({"V", "VFOB"}).err, QString());
        QVERIFY(rig.calls.isEmpty());
        QCOMPARE(run({"v"}).out, QStringLiteral("VFOB\n"));
        QCOMPARE(run({"f"}).out, QStringLiteral("7074000\n"));
        QCOMPARE(run({"m"}).out.section('\n', 0, 0), QStringLiteral("LSB"));
        QVERIFY(rig.calls.isEmpty());
    }

    void readsSplit()
    {
        QCOMPARE(run({"s"}).out, QStringLiteral("0\nVFOA\n"));
        rig.values.split = true;
        QCOMPARE(run({"s"}).out, QStringLiteral("1\nVFOB\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void setsSplit()
    {
        QCOMPARE(run({"S", "1", "VFOB"}).err, QString());
        QCOMPARE(rig.calls, QStringList{"split 1"});
        QCOMPARE(run({"s"}).out, QStringLiteral("1\nVFOB\n"));
        QCOMPARE(rig.calls, QStringList{"split 1"});
    }

    void readsThePtt()
    {
        QCOMPARE(run({"t"}).out, QStringLiteral("0\n"));
        rig.values.ptt = true;
        QCOMPARE(run({"t"}).out, QStringLiteral("1\n"));
        rig.values.split = true;  // transmitting on VFO-B
        QCOMPARE(run({"t"}).out, QStringLiteral("1\n"));
        QVERIFY(rig.calls.isEmpty());  // a read changes nothing
    }

    void keysAndUnkeysWhenAuthorised()
    {
        rig.authorized = true;
        QCOMPARE(run({"T", "1"}).err, QString());
        QCOMPARE(rig.calls, QStringList{"ptt 1"});
        QCOMPARE(run({"t"}).out, QStringLiteral("1\n"));
        QCOMPARE(run({"T", "0"}).err, QString());
        QCOMPARE(rig.calls, QStringList({"ptt 1", "ptt 0"}));
        QCOMPARE(run({"t"}).out, QStringLiteral("0\n"));
    }

    void keyingIsRefusedWhenNotAuthorised()
    {
        // The port answers "?;"; this client version takes that for a busy radio and says nothing,
        // so what counts is that the radio was never keyed and reads so.
        QTest::ignoreMessage(QtWarningMsg, "text port: transmit refused, Authorize Tx is off");
        run({"T", "1"});
        QVERIFY(rig.calls.isEmpty());
        QCOMPARE(run({"t"}).out, QStringLiteral("0\n"));
    }

    void readsTheSplitFrequency()
    {
        rig.values.split = true;
        QCOMPARE(run({"i"}).out, QStringLiteral("7074000\n"));
        QVERIFY(rig.calls.isEmpty());
    }

    void setsTheSplitFrequency()
    {
        rig.values.split = true;
        QCOMPARE(run({"I", "14080000"}).err, QString());
        QCOMPARE(rig.calls, QStringList{"freq B 14080000"});
        QCOMPARE(run({"i"}).out, QStringLiteral("14080000\n"));
        QCOMPARE(run({"f"}).out, QStringLiteral("14076000\n"));
    }
};

QTEST_GUILESS_MAIN(TestTextPortRigctl)
#include "test_text_port_rigctl.moc"
