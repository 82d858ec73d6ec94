// SPDX-License-Identifier: GPL-3.0-or-later
// The text port end to end on its pseudo-terminal: a client writes the dialect and reads replies,
// against a fake radio that records what it was asked to do.

#include "FakeRig.h"
#include "PtyClient.h"
#include "TextPort.h"

#include <QTemporaryDir>
#include <QTest>

class TestTextPort : public QObject {
    Q_OBJECT
private:
    QTemporaryDir runtime;

private slots:
    void initTestCase()
    {
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }

    void opensUnderTheTextName()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        QString error;
        QVERIFY2(port.open(&error), qPrintable(error));
        QCOMPARE(port.linkPath(), runtime.path() + QStringLiteral("/ft1000cat/text"));
        QVERIFY(!port.terminalPath().isEmpty());
        port.close();
        QVERIFY(!QFileInfo(runtime.path() + QStringLiteral("/ft1000cat/text")).isSymLink());
    }

    void severalCommandsInOneWriteAreAnsweredInOrder()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QVERIFY(client.write("ID;FA00007030000;FA;fb;\r\nmd;XX;"));
        const QByteArray expected("ID019;FA00007030000;FB00007074000;MD2;?;");
        QCOMPARE(client.read(expected.size()), expected);
        QCOMPARE(rig.calls, QStringList{"freq A 7030000"});
        QCOMPARE(port.commandsAnswered(), qint64(6));
    }

    void aCommandSplitAcrossWritesIsAnsweredOnce()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QVERIFY(client.write("I"));
        QCOMPARE(client.readFor(20), QByteArray());
        QVERIFY(client.write("D;"));
        QCOMPARE(client.read(6), QByteArray("ID019;"));
    }

    void aSetIsNotAnsweredAndItsCheckIs()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QVERIFY(client.write("MD3;ID;"));
        QCOMPARE(client.read(6), QByteArray("ID019;"));
        QCOMPARE(rig.calls, QStringList{"mode A 2"});
    }

    void refusedKeyingAnswersQuestionMarkAndIsLogged()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QTest::ignoreMessage(QtWarningMsg, "text port: transmit refused, Authorize Tx is off");
        QVERIFY(client.write("TX;"));
        QCOMPARE(client.read(2), QByteArray("?;"));
        QVERIFY(rig.calls.isEmpty());
    }

    void anOverlongCommandIsDroppedAndTheNextIsAnswered()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QVERIFY(client.write(QByteArray(100, 'F') + ";ID;"));
        QCOMPARE(client.read(6), QByteArray("ID019;"));
        QCOMPARE(port.commandsAnswered(), qint64(1));
    }

    void theConversationWithoutATerminal()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);  // not opened: replies have nowhere to go, the radio still gets the sets
        port.receive("FB00014080000;");
        QCOMPARE(rig.calls, QStringList{"freq B 14080000"});
    }
};

QTEST_GUILESS_MAIN(TestTextPort)
#include "test_text_port.moc"
