// SPDX-License-Identifier: GPL-3.0-or-later
// Command lines gathered from a byte stream: pieces, CR LF, and the length limit.

#include "LineAssembler.h"

#include <QTest>

using Lines = QList<QByteArray>;

class TestLineAssembler : public QObject {
    Q_OBJECT
private slots:
    void aWholeLineComesOutWithoutItsEnd()
    {
        LineAssembler a;
        QCOMPARE(a.feed("f\n"), Lines{"f"});
        QVERIFY(a.pending().isEmpty());
    }

    void aLineInPiecesComesOutWhenItsEndArrives()
    {
        LineAssembler a;
        QVERIFY(a.feed("F 1407").isEmpty());
        QVERIFY(a.feed("4000").isEmpty());
        QCOMPARE(a.pending(), QByteArray("F 14074000"));
        QCOMPARE(a.feed("\n"), Lines{"F 14074000"});
    }

    void carriageReturnsAreDropped()
    {
        LineAssembler a;
        QCOMPARE(a.feed("f\r\nm\r"), Lines{"f"});
        QCOMPARE(a.feed("\n"), Lines{"m"});
    }

    void aCrLfSplitBetweenPiecesGivesOneLine()
    {
        LineAssembler a;
        QVERIFY(a.feed("v\r").isEmpty());
        QCOMPARE(a.feed("\nt\r\n"), (Lines{"v", "t"}));
    }

    void severalLinesInOnePieceComeOutInOrder()
    {
        LineAssembler a;
        QCOMPARE(a.feed("f\nm\n\\chk_vfo\nv"), (Lines{"f", "m", "\\chk_vfo"}));
        QCOMPARE(a.pending(), QByteArray("v"));
    }

    void anEmptyLineIsALineOfNothing()
    {
        LineAssembler a;
        QCOMPARE(a.feed("\n\r\n"), (Lines{"", ""}));
    }

    void aLineOfExactlyTheLimitIsAccepted()
    {
        LineAssembler a(1024);
        const QByteArray line(1024, 'x');
        QCOMPARE(a.feed(line + '\n'), Lines{line});
        QVERIFY(!a.overflowed());
    }

    void aLineOneByteOverTheLimitOverflows()
    {
        LineAssembler a(1024);
        QVERIFY(a.feed(QByteArray(1025, 'x')).isEmpty());
        QVERIFY(a.overflowed());
    }

    void linesBeforeAnOverlongOneAreStillReturned()
    {
        LineAssembler a(8);
        QCOMPARE(a.feed("f\n0123456789\nm\n"), Lines{"f"});
        QVERIFY(a.overflowed());
    }

    void nothingComesOutAfterAnOverflow()
    {
        LineAssembler a(4);
        a.feed("123456");
        QVERIFY(a.overflowed());
        QVERIFY(a.feed("\nf\n").isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestLineAssembler)
#include "test_line_assembler.moc"
