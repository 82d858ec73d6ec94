// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortCatalog.h"
#include "PortDialogChoices.h"

#include <QTest>

class TestPortDialogChoices : public QObject {
    Q_OBJECT
private slots:
    void readSettings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("speed");
        QTest::addColumn<QString>("parity");
        QTest::addColumn<int>("data");
        QTest::addColumn<int>("stop");
        QTest::newRow("default, lower-case parity") << "4800,n,8,2" << 3 << "N" << 8 << 2;
        QTest::newRow("upper case") << "9600,E,7,1" << 4 << "E" << 7 << 1;
        QTest::newRow("odd") << "57600,O,8,1" << 7 << "O" << 8 << 1;
        QTest::newRow("300") << "300,N,8,2" << 0 << "N" << 8 << 2;
        QTest::newRow("unknown speed: no speed selected") << "1234,N,8,2" << -1 << "N" << 8 << 2;
        QTest::newRow("mark parity: none selected") << "4800,m,8,2" << 3 << "" << 8 << 2;
        QTest::newRow("space parity: none selected") << "4800,s,8,2" << 3 << "" << 8 << 2;
        QTest::newRow("1.5 stop bits read as 1") << "4800,N,8,1.5" << 3 << "N" << 8 << 1;
        QTest::newRow("six data bits: none selected") << "4800,N,6,2" << 3 << "N" << -1 << 2;
        QTest::newRow("no comma: nothing") << "4800" << -1 << "" << -1 << -1;
        QTest::newRow("empty speed") << ",N,8,2" << -1 << "N" << 8 << 2;
    }
    void readSettings()
    {
        QFETCH(QString, text);
        QFETCH(int, speed);
        QFETCH(QString, parity);
        QFETCH(int, data);
        QFETCH(int, stop);
        const auto s = PortDialog::readSettings(text);
        QCOMPARE(s.speedIndex, speed);
        QCOMPARE(s.parity.isNull() ? QString() : QString(s.parity), parity);
        QCOMPARE(s.dataBits, data);
        QCOMPARE(s.stopBits, stop);
    }

    void buildSettingsJoinsWithCommas()
    {
        QCOMPARE(PortDialog::buildSettings("4800", "N", "8", "2"), QStringLiteral("4800,N,8,2"));
        QCOMPARE(PortDialog::buildSettings("", "N", "8", "2"), QStringLiteral(",N,8,2"));
    }

    void speedsInOrder()
    {
        QCOMPARE(PortDialog::speeds(), (QStringList{"300", "1200", "2400", "4800", "9600", "19200", "38400", "57600"}));
    }

    void portNumbers()
    {
        QCOMPARE(PortDialog::portNumberForDevice(QString()), 0);
        for (int n = 1; n <= 8; ++n)
            QCOMPARE(PortDialog::portNumberForDevice(PortCatalog::numberedDevice(n)), n);
        QCOMPARE(PortDialog::portNumberForDevice(QStringLiteral("/dev/pts/7")), PortCatalog::OtherDevice);
    }
};

QTEST_GUILESS_MAIN(TestPortDialogChoices)
#include "test_port_dialog_choices.moc"
