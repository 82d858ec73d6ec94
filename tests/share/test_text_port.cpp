// SPDX-License-Identifier: GPL-3.0-or-later
// The text port end to end on its pseudo-terminal: a client writes the dialect and reads replies,
// against a fake radio that records what it was asked to do.

#include "FakeRig.h"
#include "PtyClient.h"
#include "TextPort.h"

#include <QRegularExpression>
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

    void keyingWhileTheScopeSweepsAnswersQuestionMarkAndIsLogged()
    {
        FakeRig rig{FakeRig::SharingScene};
        rig.authorized = true;
        rig.scopeShown = true;
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QTest::ignoreMessage(QtWarningMsg, "text port: transmit refused, the band scope is sweeping");
        QVERIFY(client.write("TX;"));
        QCOMPARE(client.read(2), QByteArray("?;"));
        QVERIFY(rig.calls.isEmpty());
    }

    void aSetRefusedForABacklogAnswersQuestionMark()
    {
        FakeRig rig{FakeRig::SharingScene};
        rig.busy = true;
        TextPort port(rig);
        QVERIFY(port.open());
        PtyClient client(port.linkPath());
        QVERIFY(client.write("FA00007030000;MD3;"));
        QCOMPARE(client.read(4), QByteArray("?;?;"));
    }

    void switchingThePortOffReleasesItsClientsKey()
    {
        FakeRig rig{FakeRig::SharingScene};
        rig.authorized = true;
        TextPort port(rig);
        port.receive("TX;");
        QCOMPARE(rig.calls, QStringList{"ptt 1"});
        port.close();
        QCOMPARE(rig.calls, (QStringList{"ptt 1", "ptt 0"}));
        // A port switched off with no key held sends nothing.
        port.close();
        QCOMPARE(rig.calls.size(), 2);
    }

    void aKeyingClientThatFallsSilentIsUnkeyed()
    {
        FakeRig rig{FakeRig::SharingScene};
        rig.authorized = true;
        TextPort port(rig);
        QCOMPARE(port.keySilence().silenceMs(), KeySilence::DefaultMs);
        port.keySilence().setSilenceMs(300);
        port.receive("TX;");
        // Bytes that keep coming keep the key.
        for (int i = 0; i < 4; ++i) {
            QTest::qWait(20);
            port.receive("ID;");
        }
        QCOMPARE(rig.calls, QStringList{"ptt 1"});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("text port: unkeying, nothing came from its client"));
        QTRY_COMPARE(rig.calls, (QStringList{"ptt 1", "ptt 0"}));
    }

    void silenceWithoutAKeyDoesNothing()
    {
        FakeRig rig{FakeRig::SharingScene};
        TextPort port(rig);
        port.keySilence().setSilenceMs(20);
        port.receive("FA00007030000;");
        QTest::qWait(80);
        QCOMPARE(rig.calls, QStringList{"freq A 7030000"});
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
