// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineSettings.h"

#include <QTest>

using Parity = LineSettings::Parity;
using StopBits = LineSettings::StopBits;

class TestLineSettings : public QObject {
    Q_OBJECT
private slots:
    void acceptsEveryCombinationThePortTakes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("baud");
        QTest::addColumn<int>("parity");
        QTest::addColumn<int>("dataBits");
        QTest::addColumn<int>("stopBits");
        const int speeds[] = {300, 1200, 2400, 4800, 9600, 19200, 38400, 57600, 110, 600, 14400, 115200};
        const struct {
            const char* letter;
            Parity parity;
        } parities[] = {{"N", Parity::None},  {"n", Parity::None}, {"E", Parity::Even}, {"e", Parity::Even},
                        {"O", Parity::Odd},   {"o", Parity::Odd},  {"M", Parity::Mark}, {"m", Parity::Mark},
                        {"S", Parity::Space}, {"s", Parity::Space}};
        const struct {
            const char* text;
            StopBits stop;
        } stops[] = {{"1", StopBits::One}, {"1.5", StopBits::OneAndHalf}, {"2", StopBits::Two}};
        for (int speed : speeds)
            for (const auto& p : parities)
                for (int data = 5; data <= 8; ++data)
                    for (const auto& s : stops) {
                        const QString text = QStringLiteral("%1,%2,%3,%4")
                                                 .arg(speed)
                                                 .arg(QLatin1String(p.letter))
                                                 .arg(data)
                                                 .arg(QLatin1String(s.text));
                        QTest::newRow(qPrintable(text)) << text << speed << int(p.parity) << data << int(s.stop);
                    }
    }
    void acceptsEveryCombinationThePortTakes()
    {
        QFETCH(QString, text);
        QFETCH(int, baud);
        QFETCH(int, parity);
        QFETCH(int, dataBits);
        QFETCH(int, stopBits);
        QString error = QStringLiteral("untouched");
        const auto s = LineSettings::parse(text, &error);
        QVERIFY(s.has_value());
        QCOMPARE(s->baud, baud);
        QCOMPARE(int(s->parity), parity);
        QCOMPARE(s->dataBits, dataBits);
        QCOMPARE(int(s->stopBits), stopBits);
        QCOMPARE(error, QStringLiteral("untouched"));
    }

    void defaultTextIs4800NoParity8Data2Stop()
    {
        const auto s = LineSettings::parse(QLatin1String(DefaultLineSettings));
        QVERIFY(s.has_value());
        QCOMPARE(s->baud, 4800);
        QCOMPARE(s->parity, Parity::None);
        QCOMPARE(s->dataBits, 8);
        QCOMPARE(s->stopBits, StopBits::Two);
    }

    void rejectsTextsThePortCannotTake_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("no commas") << QStringLiteral("4800n82");
        QTest::newRow("blanks instead of commas") << QStringLiteral("4800 n 8 2");
        QTest::newRow("empty speed") << QStringLiteral(",N,8,2");
        QTest::newRow("speed not a number") << QStringLiteral("fast,N,8,2");
        QTest::newRow("fractional speed") << QStringLiteral("4800.5,N,8,2");
        QTest::newRow("zero speed") << QStringLiteral("0,N,8,2");
        QTest::newRow("negative speed") << QStringLiteral("-4800,N,8,2");
        QTest::newRow("three fields") << QStringLiteral("4800,N,8");
        QTest::newRow("five fields") << QStringLiteral("4800,N,8,2,1");
        QTest::newRow("trailing comma") << QStringLiteral("4800,N,8,2,");
        QTest::newRow("parity X") << QStringLiteral("4800,X,8,2");
        QTest::newRow("parity word") << QStringLiteral("4800,None,8,2");
        QTest::newRow("empty parity") << QStringLiteral("4800,,8,2");
        QTest::newRow("4 data bits") << QStringLiteral("4800,N,4,2");
        QTest::newRow("9 data bits") << QStringLiteral("4800,N,9,2");
        QTest::newRow("empty data bits") << QStringLiteral("4800,N,,2");
        QTest::newRow("0 stop bits") << QStringLiteral("4800,N,8,0");
        QTest::newRow("3 stop bits") << QStringLiteral("4800,N,8,3");
        QTest::newRow("2.5 stop bits") << QStringLiteral("4800,N,8,2.5");
        QTest::newRow("empty stop bits") << QStringLiteral("4800,N,8,");
        QTest::newRow("garbage") << QStringLiteral("#%&/()=?");
        QTest::newRow("only commas") << QStringLiteral(",,,");
    }
    void rejectsTextsThePortCannotTake()
    {
        QFETCH(QString, text);
        QString error;
        QVERIFY(!LineSettings::parse(text, &error).has_value());
        QVERIFY2(!error.isEmpty(), "a refused text comes with a description for the operator");
        QVERIFY(!LineSettings::parse(text).has_value());  // no error wanted: still refused, no crash
    }

    void canonicalTextHasUpperCaseParity_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("canonical");
        QTest::newRow("default") << QStringLiteral("4800,n,8,2") << QStringLiteral("4800,N,8,2");
        QTest::newRow("even") << QStringLiteral("9600,e,7,1") << QStringLiteral("9600,E,7,1");
        QTest::newRow("odd") << QStringLiteral("1200,O,7,2") << QStringLiteral("1200,O,7,2");
        QTest::newRow("mark") << QStringLiteral("300,m,8,1") << QStringLiteral("300,M,8,1");
        QTest::newRow("space") << QStringLiteral("57600,s,5,1.5") << QStringLiteral("57600,S,5,1.5");
    }
    void canonicalTextHasUpperCaseParity()
    {
        QFETCH(QString, text);
        QFETCH(QString, canonical);
        const auto s = LineSettings::parse(text);
        QVERIFY(s.has_value());
        QCOMPARE(s->text(), canonical);
        QCOMPARE(LineSettings::parse(s->text())->text(), canonical);
    }
};

QTEST_GUILESS_MAIN(TestLineSettings)
#include "test_line_settings.moc"
