// SPDX-License-Identifier: GPL-3.0-or-later
#include "IniSettingsStore.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
QString fileText(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

// The key lines of one [section] of an INI text.
QStringList sectionLines(const QString& text, const QString& section)
{
    QStringList out;
    bool inside = false;
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u'['))
            inside = line == u'[' + section + u']';
        else if (inside)
            out << line;
    }
    return out;
}

void writeFile(const QString& path, const QByteArray& text)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(text);
}
}  // namespace

class TestIniSettingsStore : public QObject {
    Q_OBJECT
private slots:
    void init() { QVERIFY(dir_.isValid()); }

    void valuesSurviveInAFreshStoreOnTheSameFile()
    {
        const QString path = dir_.filePath(QStringLiteral("roundtrip.ini"));
        {
            IniSettingsStore store(path);
            store.setValue(QStringLiteral("CommPort"), QStringLiteral("Com:"), QStringLiteral("3"));
            store.setValue(QStringLiteral("CommPort"), QStringLiteral("Set"), QStringLiteral("9600,E,7,1"));
            store.setValue(QStringLiteral("Radio"), QStringLiteral("Type"), QStringLiteral("3"));
            store.setValue(QStringLiteral("Startup"), QStringLiteral("QMB"), QStringLiteral(" 1 1 1 1 1 1 1 1"));
            store.setValue(QStringLiteral("Startup"), QStringLiteral("MemPath"),
                           QStringLiteral("C:\\radio\\ft1000.ymp"));
            store.setValue(QStringLiteral("Startup"), QStringLiteral("Left"), QString());
            store.sync();
        }
        IniSettingsStore again(path);
        QCOMPARE(again.value(QStringLiteral("CommPort"), QStringLiteral("Com:")), QStringLiteral("3"));
        QCOMPARE(again.value(QStringLiteral("CommPort"), QStringLiteral("Set")), QStringLiteral("9600,E,7,1"));
        QCOMPARE(again.value(QStringLiteral("Radio"), QStringLiteral("Type")), QStringLiteral("3"));
        QCOMPARE(again.value(QStringLiteral("Startup"), QStringLiteral("QMB")), QStringLiteral(" 1 1 1 1 1 1 1 1"));
        QCOMPARE(again.value(QStringLiteral("Startup"), QStringLiteral("MemPath")),
                 QStringLiteral("C:\\radio\\ft1000.ymp"));
        QVERIFY(again.contains(QStringLiteral("Startup"), QStringLiteral("Left")));
        QCOMPARE(again.value(QStringLiteral("Startup"), QStringLiteral("Left"), QStringLiteral("x")), QString());
        QCOMPARE(again.fileName(), path);
    }

    void missingKeyGivesTheFallback()
    {
        IniSettingsStore store(dir_.filePath(QStringLiteral("empty.ini")));
        QVERIFY(!store.contains(QStringLiteral("CommPort"), QStringLiteral("Set")));
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Set"), QStringLiteral("4800,n,8,2")),
                 QStringLiteral("4800,n,8,2"));
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Com:")), QString());
    }

    void fileHoldsOneSectionPerGroupWithItsKeys()
    {
        const QString path = dir_.filePath(QStringLiteral("layout.ini"));
        {
            IniSettingsStore store(path);
            store.setValue(QStringLiteral("CommPort"), QStringLiteral("Com:"), QStringLiteral("2"));
            store.setValue(QStringLiteral("CommPort"), QStringLiteral("Set"), QStringLiteral("4800,N,8,2"));
            store.setValue(QStringLiteral("Settings"), QStringLiteral("TxInh"), QStringLiteral("1"));
            store.sync();
        }
        const QString text = fileText(path);
        const QStringList comm = sectionLines(text, QStringLiteral("CommPort"));
        const QStringList settings = sectionLines(text, QStringLiteral("Settings"));
        QVERIFY2(!comm.isEmpty(), qPrintable(text));
        // The colon of "Com:" is escaped by the INI writer; the key is still found under its section.
        const QString comLine = comm.filter(QStringLiteral("Com")).value(0);
        QVERIFY2(comLine.startsWith(QStringLiteral("Com")) && comLine.endsWith(QStringLiteral("=2")), qPrintable(text));
        QCOMPARE(settings, QStringList{QStringLiteral("TxInh=1")});
    }

    void handWrittenFileIsReadAsTyped()
    {
        const QString path = dir_.filePath(QStringLiteral("typed.ini"));
        writeFile(path, "[CommPort]\nCom:=4\nSet=4800,n,8,2\n[Radio]\nType=1\n");
        IniSettingsStore store(path);
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Com:")), QStringLiteral("4"));
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Set")), QStringLiteral("4800,n,8,2"));
        QCOMPARE(store.number(QStringLiteral("Radio"), QStringLiteral("Type"), 0.0), 1.0);
    }

    void garbageNumberFallsBack()
    {
        const QString path = dir_.filePath(QStringLiteral("garbage.ini"));
        {
            IniSettingsStore store(path);
            store.setValue(QStringLiteral("Radio"), QStringLiteral("Type"), QStringLiteral("abc"));
            store.setValue(QStringLiteral("CommPort"), QStringLiteral("Com:"), QStringLiteral("abc"));
            store.sync();
        }
        IniSettingsStore store(path);
        QCOMPARE(store.value(QStringLiteral("Radio"), QStringLiteral("Type")), QStringLiteral("abc"));
        QCOMPARE(store.number(QStringLiteral("Radio"), QStringLiteral("Type"), 1.0), 1.0);
        QCOMPARE(store.number(QStringLiteral("CommPort"), QStringLiteral("Com:"), 0.0), 0.0);
    }

    void laterWriteReplacesEarlierOne()
    {
        const QString path = dir_.filePath(QStringLiteral("replace.ini"));
        IniSettingsStore store(path);
        store.setValue(QStringLiteral("Startup"), QStringLiteral("Width"), QStringLiteral("10410"));
        store.setValue(QStringLiteral("Startup"), QStringLiteral("Width"), QStringLiteral("7035"));
        store.sync();
        QCOMPARE(IniSettingsStore(path).value(QStringLiteral("Startup"), QStringLiteral("Width")),
                 QStringLiteral("7035"));
    }

private:
    QTemporaryDir dir_;
};

QTEST_GUILESS_MAIN(TestIniSettingsStore)
#include "test_ini_settings_store.moc"
