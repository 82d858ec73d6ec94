// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatCommand.h"

#include <QTest>

class TestCatCommand : public QObject {
    Q_OBJECT
private slots:
    void parametersGoOutFirstThenTheInstruction()
    {
        const CatCommand c = CatCommand::make(0x75, 4, 3, 2, 1);
        QCOMPARE(c.bytes().size(), 5);
        QCOMPARE(c.hex(), QStringLiteral("01 02 03 04 75"));
    }

    void unusedParametersAreZero()
    {
        QCOMPARE(CatCommand::make(Op::SetMode, 1).hex(), QStringLiteral("00 00 00 01 0C"));
        QCOMPARE(CatCommand::make(Op::CopyAtoB).hex(), QStringLiteral("00 00 00 00 85"));
    }

    void eachByteIsTheLowByteOfItsNumber_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("hex");
        QTest::newRow("0") << 0 << QStringLiteral("00 00 00 00 0F");
        QTest::newRow("255") << 255 << QStringLiteral("FF FF FF FF 0F");
        QTest::newRow("256 wraps to 0") << 256 << QStringLiteral("00 00 00 00 0F");
        QTest::newRow("0x1FF") << 0x1FF << QStringLiteral("FF FF FF FF 0F");
        QTest::newRow("-1") << -1 << QStringLiteral("FF FF FF FF 0F");
        QTest::newRow("176") << 176 << QStringLiteral("B0 B0 B0 B0 0F");
    }
    void eachByteIsTheLowByteOfItsNumber()
    {
        QFETCH(int, value);
        QFETCH(QString, hex);
        QCOMPARE(CatCommand::make(Op::Ptt, value, value, value, value).hex(), hex);
        QCOMPARE(CatCommand::make(0x10F, value, value, value, value).hex(), hex);
    }

    void instructionBytesAreTheRadios_data()
    {
        QTest::addColumn<int>("op");
        QTest::addColumn<int>("expected");
        QTest::newRow("split") << int(Op::Split) << 0x01;
        QTest::newRow("recall memory") << int(Op::RecallMemory) << 0x02;
        QTest::newRow("write memory") << int(Op::WriteMemory) << 0x03;
        QTest::newRow("vfo select") << int(Op::VfoSelect) << 0x05;
        QTest::newRow("memory to vfo-a") << int(Op::MemoryToVfoA) << 0x06;
        QTest::newRow("step up") << int(Op::StepUp) << 0x07;
        QTest::newRow("step down") << int(Op::StepDown) << 0x08;
        QTest::newRow("clarifier") << int(Op::Clarifier) << 0x09;
        QTest::newRow("set vfo-a") << int(Op::SetVfoA) << 0x0A;
        QTest::newRow("set mode") << int(Op::SetMode) << 0x0C;
        QTest::newRow("ptt") << int(Op::Ptt) << 0x0F;
        QTest::newRow("status") << int(Op::StatusRequest) << 0x10;
        QTest::newRow("edsp") << int(Op::Edsp) << 0x75;
        QTest::newRow("tuner") << int(Op::Tuner) << 0x81;
        QTest::newRow("tuner start") << int(Op::TunerStart) << 0x82;
        QTest::newRow("dual") << int(Op::Dual) << 0x83;
        QTest::newRow("repeater") << int(Op::RepeaterShift) << 0x84;
        QTest::newRow("a to b") << int(Op::CopyAtoB) << 0x85;
        QTest::newRow("set vfo-b") << int(Op::SetVfoB) << 0x8A;
        QTest::newRow("filter") << int(Op::FilterSelect) << 0x8C;
        QTest::newRow("meter") << int(Op::ReadMeter) << 0xF7;
        QTest::newRow("flags") << int(Op::ReadFlags) << 0xFA;
    }
    void instructionBytesAreTheRadios()
    {
        QFETCH(int, op);
        QFETCH(int, expected);
        QCOMPARE(op, expected);
        QCOMPARE(static_cast<quint8>(CatCommand::make(op).bytes().at(4)), static_cast<quint8>(expected));
    }

    void equalCommandsCompareEqual()
    {
        QVERIFY(CatCommand::make(Op::Dual, 1) == CatCommand::make(Op::Dual, 1));
        QVERIFY(!(CatCommand::make(Op::Dual, 1) == CatCommand::make(Op::Dual, 0)));
    }

    void hexBytesWritesUpperCaseWithBlanks()
    {
        QCOMPARE(hexBytes(QByteArray::fromHex("00a0ff")), QStringLiteral("00 A0 FF"));
        QCOMPARE(hexBytes(QByteArray()), QString());
    }
};

QTEST_GUILESS_MAIN(TestCatCommand)
#include "test_cat_command.moc"
