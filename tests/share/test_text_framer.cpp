// SPDX-License-Identifier: GPL-3.0-or-later
// The text port's framing: commands end with ';', one write may hold several or part of one,
// CR and LF and other unprintable bytes are dropped, letters come out in upper case, and a command
// longer than 64 characters is dropped whole.

#include "TextFramer.h"

#include <QTest>

using Commands = QList<QByteArray>;

class TestTextFramer : public QObject {
    Q_OBJECT
private slots:
    void splitsOnSemicolon_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<Commands>("expected");
        QTest::newRow("one") << QByteArray("FA;") << Commands{"FA"};
        QTest::newRow("several in one write") << QByteArray("ID;FA;MD2;") << Commands{"ID", "FA", "MD2"};
        QTest::newRow("unfinished command waits") << QByteArray("ID;FA") << Commands{"ID"};
        QTest::newRow("lower case") << QByteArray("fa00014076000;md;") << Commands{"FA00014076000", "MD"};
        QTest::newRow("mixed case") << QByteArray("Id;") << Commands{"ID"};
        QTest::newRow("CR and LF dropped") << QByteArray("ID;\r\nFA;\r\n") << Commands{"ID", "FA"};
        QTest::newRow("CR inside a command") << QByteArray("F\rA;") << Commands{"FA"};
        QTest::newRow("unprintable bytes dropped") << QByteArray(
                                                          "\x01I\x7f"
                                                          "D\x80\xff;")
                                                   << Commands{"ID"};
        QTest::newRow("NUL dropped") << QByteArray("I\0D;", 4) << Commands{"ID"};
        QTest::newRow("empty commands are none") << QByteArray(";;ID;;") << Commands{"ID"};
        QTest::newRow("nothing") << QByteArray() << Commands{};
    }
    void splitsOnSemicolon()
    {
        QFETCH(QByteArray, input);
        QFETCH(Commands, expected);
        TextFramer f;
        QCOMPARE(f.feed(input), expected);
    }

    void aCommandSplitAcrossWritesIsJoined()
    {
        TextFramer f;
        QCOMPARE(f.feed("F"), Commands{});
        QCOMPARE(f.feed("A0001"), Commands{});
        QCOMPARE(f.feed("4076000;I"), Commands{"FA00014076000"});
        QCOMPARE(f.feed("D;"), Commands{"ID"});
    }

    void sixtyFourCharactersAreStillACommand()
    {
        TextFramer f;
        const QByteArray longest(TextFramer::MaxCommandChars, 'A');
        QCOMPARE(f.feed(longest + ';'), Commands{longest});
        QCOMPARE(f.droppedCommands(), 0);
    }

    void aCommandLongerThanSixtyFourCharactersIsDroppedWhole()
    {
        TextFramer f;
        const QByteArray tooLong(TextFramer::MaxCommandChars + 1, 'A');
        QCOMPARE(f.feed(tooLong + "B;ID;"), Commands{"ID"});
        QCOMPARE(f.droppedCommands(), 1);
    }

    void anOverlongCommandIsDroppedUpToItsSemicolonAcrossWrites()
    {
        TextFramer f;
        QCOMPARE(f.feed(QByteArray(200, 'X')), Commands{});
        QCOMPARE(f.feed("FA;"), Commands{});  // still the tail of the overlong one
        QCOMPARE(f.feed("FB;"), Commands{"FB"});
        QCOMPARE(f.droppedCommands(), 1);
    }

    void droppedBytesDoNotCountTowardsTheLength()
    {
        TextFramer f;
        QByteArray input = QByteArray(TextFramer::MaxCommandChars, 'A');
        input.insert(10, QByteArray(100, '\n'));
        QCOMPARE(f.feed(input + ';'), Commands{QByteArray(TextFramer::MaxCommandChars, 'A')});
    }

    void resetForgetsAnUnfinishedCommand()
    {
        TextFramer f;
        f.feed("FA000");
        f.reset();
        QCOMPARE(f.feed("ID;"), Commands{"ID"});
        f.feed(QByteArray(100, 'X'));
        f.reset();
        QCOMPARE(f.feed("ID;"), Commands{"ID"});
    }
};

QTEST_APPLESS_MAIN(TestTextFramer)
#include "test_text_framer.moc"
