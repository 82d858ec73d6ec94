// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandScope.h"
#include "ConsoleFixture.h"
#include "PanelLook.h"
#include "PressButton.h"
#include "Twips.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QTest>

namespace {
// The radio answers the channel query with one byte.
void answerChannel(ConsoleFixture& f, int zeroBasedChannel)
{
    f.port->responder = [zeroBasedChannel](const QByteArray& c) {
        if (static_cast<quint8>(c[4]) == 0x10 && c[3] == 1)
            return QByteArray(1, static_cast<char>(zeroBasedChannel));
        return QByteArray();
    };
}
}  // namespace

class TestForm1Keys : public QObject {
    Q_OBJECT
private slots:
    void keyCaptionsOnTheButtons()
    {
        ConsoleFixture f;
        for (int i = 0; i <= 32; ++i) {
            if (i == 11) {
                QVERIFY(!f.form->Key[11]);
                continue;
            }
            QCOMPARE(f.form->Key[i]->text(), FrontPanel::keyCaption(i));
        }
    }

    void simpleKeysSendTheirBytes_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("bytes");
        QTest::newRow("Tuner") << 0 << "00 00 00 01 81";
        QTest::newRow("Clar Rx") << 2 << "00 00 00 01 09";
        QTest::newRow("Clar Tx") << 3 << "00 00 00 81 09";
        for (int k : {4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15})
            QTest::addRow("mode %d", k)
                << k << QStringLiteral("00 00 00 %1 0C").arg(k - 4, 2, 16, QLatin1Char('0')).toUpper();
        QTest::newRow("A > B") << 16 << "00 00 00 00 85";
        QTest::newRow("A <> B") << 17 << "00 00 00 01 05";
        QTest::newRow("Dual") << 20 << "00 00 00 01 83";
        QTest::newRow("Split") << 21 << "00 00 00 01 01";
    }
    void simpleKeysSendTheirBytes()
    {
        QFETCH(int, index);
        QFETCH(QString, bytes);
        ConsoleFixture f;
        f.form->Key_Click(index);
        QCOMPARE(f.takeWrites(), QStringList{bytes});
    }

    void clickingTheButtonRunsKeyClick()
    {
        ConsoleFixture f;
        QTest::mouseClick(f.form->Key[5], Qt::LeftButton);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 01 0C"});
    }

    void mnemonicPressesTheKey()
    {
        ConsoleFixture f;
        f.form->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.form.get()));
        f.form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.form.get()));
        QTest::keyClick(f.form->windowHandle(), Qt::Key_U, Qt::AltModifier);
        // A mnemonic presses the button visibly, so the click comes a moment later.
        QTRY_COMPARE(f.port->writtenHex(), QStringList{"00 00 00 01 0C"});
    }

    void everyKeyIsSilentWithThePortClosed()
    {
        ConsoleFixture f(/*portOpen=*/false);
        f.form->mnu_Stup_Click(2);  // authorized, so Start would send if the port were open
        f.form->Label1[8]->show();
        for (int i = -1; i < FrontPanel::KeyCount + 1; ++i)
            f.form->Key_Click(i);
        QVERIFY(f.port->writes.isEmpty());
        QVERIFY(f.clock->events.isEmpty());
        QVERIFY(f.windows.calls.isEmpty());
        QVERIFY(f.prompts.messages.isEmpty());
        QVERIFY(f.form->Frame[1]->isHidden());
    }

    void missingIndicesDoNothing()
    {
        ConsoleFixture f;
        for (int i : {11, 33, 40, 47, 54, -1})
            f.form->Key_Click(i);
        QVERIFY(f.port->writes.isEmpty());
    }

    void togglesSwitchOffWhenTheirIndicatorIsShown_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("label");
        QTest::addColumn<QString>("bytes");
        QTest::newRow("Tuner") << 0 << 4 << "00 00 00 00 81";
        QTest::newRow("Dual") << 20 << 0 << "00 00 00 00 83";
        QTest::newRow("Split") << 21 << 3 << "00 00 00 00 01";
    }
    void togglesSwitchOffWhenTheirIndicatorIsShown()
    {
        QFETCH(int, index);
        QFETCH(int, label);
        QFETCH(QString, bytes);
        ConsoleFixture f;
        f.form->Label1[label]->show();
        f.form->Key_Click(index);
        QCOMPARE(f.takeWrites(), QStringList{bytes});
        QCOMPARE(f.form->lastToggleParam(), 0);
        f.form->Label1[label]->hide();
        f.form->Key_Click(index);
        QCOMPARE(f.form->lastToggleParam(), 1);
    }

    void clarifierKeysFlipTheirIndicatorThenSend()
    {
        ConsoleFixture f;
        QVERIFY(f.form->Label3[5]->isHidden());
        f.form->Key_Click(2);
        QVERIFY(!f.form->Label3[5]->isHidden());
        f.form->Key_Click(2);
        QVERIFY(f.form->Label3[5]->isHidden());
        QCOMPARE(f.takeWrites(), (QStringList{"00 00 00 01 09", "00 00 00 00 09"}));
        f.form->Key_Click(3);
        QVERIFY(!f.form->Label3[7]->isHidden());
        f.form->Key_Click(3);
        QVERIFY(f.form->Label3[7]->isHidden());
        QCOMPARE(f.takeWrites(), (QStringList{"00 00 00 81 09", "00 00 00 80 09"}));
        QCOMPARE(f.form->lastToggleParam(), 0x80);
    }

    void startWithAuthorizeTxOffSendsNothing()
    {
        ConsoleFixture f;
        QVERIFY(!f.form->txAuthorized());
        f.form->Key_Click(1);
        QVERIFY(f.port->writes.isEmpty());
        f.form->mnu_Stup_Click(2);
        f.form->Key_Click(1);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 00 82"});
    }

    void rptrOutsideFmSendsNothing()
    {
        ConsoleFixture f;
        f.form->Label1[1]->setText(QStringLiteral("USB"));
        f.form->Key_Click(29);
        QVERIFY(f.port->writes.isEmpty());
    }

    void rptrInFmCyclesFromTheShownShift()
    {
        ConsoleFixture f;
        f.form->Label1[1]->setText(QStringLiteral("FM"));
        f.form->Label1[6]->hide();
        f.form->Key_Click(29);
        f.form->Label1[6]->setText(QStringLiteral("  RPTR -"));
        f.form->Label1[6]->show();
        f.form->Key_Click(29);
        f.form->Label1[6]->setText(QStringLiteral("  RPTR +"));
        f.form->Key_Click(29);
        QCOMPARE(f.takeWrites(), (QStringList{"00 00 00 01 84", "00 00 00 02 84", "00 00 00 00 84"}));
    }

    void aToMYesWritesTheCurrentChannel()
    {
        ConsoleFixture f;
        answerChannel(f, 4);
        f.prompts.answers = {QMessageBox::Yes};
        f.form->Key_Click(18);
        QCOMPARE(f.takeEvents(), (QStringList{"write 00 00 00 01 10", "sleep 250", "read 1", "write 00 00 00 05 03"}));
        QCOMPARE(f.prompts.messages.size(), 1);
        const auto& m = f.prompts.messages[0];
        QCOMPARE(m.title, QStringLiteral("Write ?"));
        QCOMPARE(m.text, QStringLiteral("Do you want to write to memory # 5 ?"));
        QCOMPARE(m.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        QVERIFY(f.prompts.inputs.isEmpty());
    }

    void aToMNoAsksForTheNumber()
    {
        ConsoleFixture f;
        answerChannel(f, 0);
        f.prompts.answers = {QMessageBox::No};
        f.prompts.typed = {QStringLiteral("17")};
        f.form->Key_Click(18);
        QCOMPARE(f.prompts.inputs.size(), 1);
        QCOMPARE(f.prompts.inputs[0], (QStringList{"Specify memory", "Enter the memory number (1 to 108)", "1"}));
        QCOMPARE(f.prompts.inputAt, QPoint(1200, 1200));
        QCOMPARE(f.takeWrites(), (QStringList{"00 00 00 01 10", "00 00 00 11 03"}));
    }

    void aToMOutOfRangeSendsNothingAndShowsTheError_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("0") << "0";
        QTest::newRow("109") << "109";
    }
    void aToMOutOfRangeSendsNothingAndShowsTheError()
    {
        QFETCH(QString, typed);
        ConsoleFixture f;
        answerChannel(f, 0);
        f.prompts.answers = {QMessageBox::No};
        f.prompts.typed = {typed};
        f.form->Key_Click(18);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 01 10"});
        QCOMPARE(f.prompts.messages.size(), 2);
        const auto& e = f.prompts.messages[1];
        QCOMPARE(e.title, QStringLiteral("Error"));
        QCOMPARE(e.text, QStringLiteral("The value must be between 1 and 108\nAction aborted"));
        QCOMPARE(e.icon, QMessageBox::Critical);
    }

    void aToMCancelledPromptIsRefused()
    {
        ConsoleFixture f;
        answerChannel(f, 0);
        f.prompts.answers = {QMessageBox::No};
        f.form->Key_Click(18);  // the input prompt is cancelled: no text
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 01 10"});
        QCOMPARE(f.prompts.messages.last().title, QStringLiteral("Error"));
    }

    void aToMCancelDoesNothing()
    {
        ConsoleFixture f;
        answerChannel(f, 2);
        f.prompts.answers = {QMessageBox::Cancel};
        f.form->Key_Click(18);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 01 10"});
        QCOMPARE(f.prompts.messages.size(), 1);
        QVERIFY(f.prompts.inputs.isEmpty());
    }

    void aToMMissingReplyAsksForChannelOne()
    {
        ConsoleFixture f;
        f.prompts.answers = {QMessageBox::Cancel};
        f.form->Key_Click(18);
        QCOMPARE(f.prompts.messages[0].text, QStringLiteral("Do you want to write to memory # 1 ?"));
    }

    void mToAReadsTheChannelThenCopiesIt()
    {
        ConsoleFixture f;
        answerChannel(f, 9);
        f.form->Key_Click(19);
        QCOMPARE(f.takeEvents(), (QStringList{"write 00 00 00 01 10", "sleep 150", "read 1", "write 00 00 00 0A 06"}));
    }

    void vfoMOnVfoRecallsTheCurrentChannel()
    {
        ConsoleFixture f;
        answerChannel(f, 0x20);
        f.form->Label1[8]->show();
        f.form->Key_Click(23);
        QCOMPARE(f.takeEvents(), (QStringList{"write 00 00 00 01 10", "sleep 250", "read 1", "write 00 00 00 21 02"}));
    }

    void vfoMOnMemoryReturnsToVfo()
    {
        ConsoleFixture f;
        f.form->Label1[8]->hide();
        f.form->Key_Click(23);
        QCOMPARE(f.takeEvents(), QStringList{"write 00 00 00 00 05"});
    }

    void windowKeysOpenTheirWindows()
    {
        ConsoleFixture f;
        for (int i : {22, 25, 26, 27})
            f.form->Key_Click(i);
        QCOMPARE(f.windows.calls, (QStringList{"showMemory", "showNavigator", "showFilters", "showEdsp 0"}));
        QVERIFY(f.port->writes.isEmpty());
    }

    void notchAndDspNbFlipTheirEdspPair()
    {
        ConsoleFixture f;
        f.form->Key_Click(28);  // notch "Off" not selected: select it
        f.windows.selected = {34};
        f.form->Key_Click(28);  // "Off" selected: select "On"
        f.form->Key_Click(30);
        f.windows.selected = {32};
        f.form->Key_Click(30);
        QCOMPARE(f.windows.calls, (QStringList{"selectEdspOption 34", "selectEdspOption 35", "selectEdspOption 32",
                                               "selectEdspOption 33"}));
        QVERIFY(f.port->writes.isEmpty());
    }

    void pttKeysOnlyWhileArmedAndHeld()
    {
        ConsoleFixture f;
        f.form->mnu_Stup_Click(2);
        PressButton* ptt = f.form->Key[32];
        QVERIFY(ptt->isEnabled());
        const QString idleLook = f.form->Label2[1]->styleSheet();
        // Left alone does not key the transmitter.
        QTest::mousePress(ptt, Qt::LeftButton);
        QVERIFY(f.port->writes.isEmpty());
        QTest::mouseRelease(ptt, Qt::LeftButton);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 00 0F"});
        // Right arms: the lamp turns red.
        QTest::mousePress(ptt, Qt::RightButton);
        QVERIFY(f.form->Label1[22]->styleSheet().contains(fromBgr(PanelLook::PttArmedBgr).name()));
        QTest::mousePress(ptt, Qt::LeftButton);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 01 0F"});
        QVERIFY(f.form->transmitting());
        QVERIFY(f.form->Label2[1]->styleSheet() != idleLook);
        QTest::mouseRelease(ptt, Qt::LeftButton);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 00 0F"});
        QCOMPARE(f.form->Label2[1]->styleSheet(), idleLook);
        QTest::mouseRelease(ptt, Qt::RightButton);
        QVERIFY(!f.form->Label1[22]->styleSheet().contains(fromBgr(PanelLook::PttArmedBgr).name()));
    }

    void pttWithAuthorizeTxOffIsDisabled()
    {
        ConsoleFixture f;
        PressButton* ptt = f.form->Key[32];
        QVERIFY(!ptt->isEnabled());
        QVERIFY(!f.form->Key[1]->isEnabled());
        QTest::mousePress(ptt, Qt::RightButton);
        QTest::mousePress(ptt, Qt::LeftButton);
        QTest::mouseRelease(ptt, Qt::LeftButton);
        QVERIFY(f.port->writes.isEmpty());
        QVERIFY(!f.form->transmitting());
    }

    void pttClickSendsNothing()
    {
        ConsoleFixture f;
        f.form->Key_Click(32);
        QVERIFY(f.port->writes.isEmpty());
    }

    void scopeKeyShowsAndHidesTheScope()
    {
        ConsoleFixture f;
        f.form->mnu_Stup_Click(2);
        QVERIFY(f.form->Frame[1]->isHidden());
        f.form->Key_Click(24);
        QVERIFY(!f.form->Frame[1]->isHidden());
        QCOMPARE(f.form->height(), Twips::toPixels(7140));
        QVERIFY(!f.form->Key[32]->isEnabled());
        f.form->Key_Click(24);
        QVERIFY(f.form->Frame[1]->isHidden());
        QCOMPARE(f.form->height(), Twips::toPixels(3990));
        QVERIFY(f.form->Key[32]->isEnabled());
    }

    void scopeHiddenLeavesPttOffWithoutAuthorizeTx()
    {
        ConsoleFixture f;
        f.form->Key_Click(24);
        f.form->Key_Click(24);
        QVERIFY(!f.form->Key[32]->isEnabled());
    }

    void mainClarifierFrameClearsTheOffset()
    {
        ConsoleFixture f;
        f.form->Frame_Click(3);
        for (int i : {1, 2, 4, 5, 6, 7})
            f.form->Frame_Click(i);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 FF 09"});
        QTest::mouseClick(f.form->Frame[3], Qt::LeftButton);
        QCOMPARE(f.takeWrites(), QStringList{"00 00 00 FF 09"});
    }

    void analyserKeyDisabledWithoutTheProgram()
    {
        ConsoleFixture f;
        QVERIFY(!f.form->Key[31]->isEnabled());
        QCOMPARE(f.form->Key[31]->text(), QStringLiteral("- - -"));
        f.form->Key_Click(31);
        QVERIFY(f.port->writes.isEmpty());
    }
};

QTEST_MAIN(TestForm1Keys)
#include "test_form1_keys.moc"
