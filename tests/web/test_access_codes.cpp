// SPDX-License-Identifier: GPL-3.0-or-later
// The access codes: their form, their randomness, and which access a given code grants.

#include "AccessCodes.h"

#include <QSet>
#include <QTest>

Q_DECLARE_METATYPE(Access)

class TestAccessCodes : public QObject {
    Q_OBJECT
private slots:
    void aNewCodeIs128BitsInHex()
    {
        const QByteArray code = AccessCodes::newCode();
        QCOMPARE(code.size(), 32);
        QVERIFY(AccessCodes::wellFormed(code));
    }

    void newCodesDiffer()
    {
        QSet<QByteArray> seen;
        for (int i = 0; i < 200; ++i)
            seen.insert(AccessCodes::newCode());
        QCOMPARE(seen.size(), 200);
    }

    void wellFormed_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<bool>("ok");
        QTest::newRow("32 lower-case hex digits") << QByteArray("0123456789abcdef0123456789abcdef") << true;
        QTest::newRow("upper case") << QByteArray("0123456789ABCDEF0123456789abcdef") << false;
        QTest::newRow("one short") << QByteArray("0123456789abcdef0123456789abcde") << false;
        QTest::newRow("one long") << QByteArray("0123456789abcdef0123456789abcdef0") << false;
        QTest::newRow("not hex") << QByteArray("0123456789abcdef0123456789abcdeg") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }
    void wellFormed()
    {
        QFETCH(QByteArray, code);
        QFETCH(bool, ok);
        QCOMPARE(AccessCodes::wellFormed(code), ok);
    }

    void check_data()
    {
        QTest::addColumn<QByteArray>("given");
        QTest::addColumn<Access>("access");
        QTest::newRow("the control code") << QByteArray("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa") << Access::Control;
        QTest::newRow("the view code") << QByteArray("bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb") << Access::ViewOnly;
        QTest::newRow("last digit wrong") << QByteArray("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab") << Access::None;
        QTest::newRow("first digit wrong") << QByteArray("baaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa") << Access::None;
        QTest::newRow("a prefix") << QByteArray("aaaaaaaaaaaaaaaa") << Access::None;
        QTest::newRow("code and more") << QByteArray("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa0") << Access::None;
        QTest::newRow("empty") << QByteArray() << Access::None;
        QTest::newRow("upper case of the code") << QByteArray("AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA") << Access::None;
    }
    void check()
    {
        QFETCH(QByteArray, given);
        QFETCH(Access, access);
        const AccessCodes codes{"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb"};
        QCOMPARE(codes.check(given), access);
    }

    void anEmptyStoredCodeGrantsNothing()
    {
        const AccessCodes codes{QByteArray(), QByteArray()};
        QCOMPARE(codes.check(QByteArray()), Access::None);
    }

    void constantTimeEquality_data()
    {
        QTest::addColumn<QByteArray>("a");
        QTest::addColumn<QByteArray>("b");
        QTest::addColumn<bool>("equal");
        QTest::newRow("same") << QByteArray("abc") << QByteArray("abc") << true;
        QTest::newRow("differs in the middle") << QByteArray("abc") << QByteArray("axc") << false;
        QTest::newRow("shorter") << QByteArray("ab") << QByteArray("abc") << false;
        QTest::newRow("longer") << QByteArray("abcd") << QByteArray("abc") << false;
        QTest::newRow("shorter with a zero byte where the other ends")
            << QByteArray("ab\0", 3) << QByteArray("ab") << false;
        QTest::newRow("both empty") << QByteArray() << QByteArray() << true;
    }
    void constantTimeEquality()
    {
        QFETCH(QByteArray, a);
        QFETCH(QByteArray, b);
        QFETCH(bool, equal);
        QCOMPARE(constantTimeEquals(a, b), equal);
    }
};

QTEST_GUILESS_MAIN(TestAccessCodes)
#include "test_access_codes.moc"
