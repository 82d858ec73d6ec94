#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "Procedures.h"

#include <QTest>

class TestProcedures : public QObject {
    Q_OBJECT
private slots:
    void setFreq_sevenDigitsLeavesHighBytesZero()
    {
        QCOMPARE(setFreqCommand(705000, 1).hex(), QStringLiteral("00 50 70 00 0A"));
    }
};

QTEST_GUILESS_MAIN(TestProcedures)
#include "test_procedures.moc"
