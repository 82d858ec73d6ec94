// Nothing lost: a memory file or the settings file whose rewrite fails part-way (the file size limit
// stands in for a full disk) keeps its previous contents, and no half-written file is left beside it.
// The writes run in a child process, so the limit does not touch the test itself.
#include "IniSettingsStore.h"
#include "MemFile.h"
#include "MemRecord.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {
// Small enough that neither file fits, large enough for the program to start.
constexpr int TooSmall = 1000;

struct ChildRun {
    int exitCode = -1;
    QString output;
};

ChildRun runChild(const QString& mode, const QString& path, int limit)
{
    QProcess p;
    p.start(QStringLiteral(WRITE_CHILD), {mode, path, QString::number(limit)});
    ChildRun r;
    if (!p.waitForFinished(30000)) {
        p.kill();
        p.waitForFinished();
        return r;
    }
    if (p.exitStatus() == QProcess::NormalExit)
        r.exitCode = p.exitCode();
    r.output = QString::fromLocal8Bit(p.readAllStandardOutput() + p.readAllStandardError());
    return r;
}

QByteArray contents(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QList<MemoryRow> oldRows()
{
    QList<MemoryRow> rows;
    for (int n = 1; n <= MemFile::Records; ++n) {
        MemRecord r;
        r.chan = fixedText(QStringLiteral("old%1").arg(n), MemRecord::ChanWidth);
        r.freq = 1420000.0f + n;
        r.mode = fixedText(QStringLiteral("LSB"), MemRecord::ModeWidth);
        r.ant = "B ";
        rows << rowFromRecord(r);
    }
    return rows;
}

void writeOldSettings(const QString& path)
{
    IniSettingsStore store(path);
    for (int i = 0; i < 60; ++i)
        store.setValue(QStringLiteral("Section%1").arg(i / 10), QStringLiteral("Key%1").arg(i),
                       QStringLiteral("old value %1 ").arg(i).repeated(4));
    store.sync();
}
}  // namespace

class TestAtomicWrites : public QObject {
    Q_OBJECT
private slots:
    void memoryFileKeepsItsContentsWhenTheWriteFailsPartWay()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ft1000.ymp"));
        QString error;
        QVERIFY2(MemFile::save(path, oldRows(), &error), qPrintable(error));
        const QByteArray before = contents(path);
        QCOMPARE(before.size(), MemFile::CompleteSize);

        const ChildRun run = runChild(QStringLiteral("mem"), path, TooSmall);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.output.startsWith(QStringLiteral("refused")), qPrintable(run.output));
        QCOMPARE(contents(path), before);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("ft1000.ymp")});
    }

    void memoryFileIsNotCreatedHalfWritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("new.ymp"));
        QCOMPARE(runChild(QStringLiteral("mem"), path, TooSmall).exitCode, 1);
        QVERIFY(QDir(dir.path()).entryList(QDir::Files).isEmpty());
    }

    void memoryFileIsReplacedWhenTheWriteSucceeds()
    {
        // The same run without the limit: the child's records do land, so the tests above can fail.
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ft1000.ymp"));
        QVERIFY(MemFile::save(path, oldRows(), nullptr));
        const QByteArray before = contents(path);
        QCOMPARE(runChild(QStringLiteral("mem"), path, 0).exitCode, 0);
        const QByteArray after = contents(path);
        QCOMPARE(after.size(), before.size());
        QVERIFY(after != before);
        QCOMPARE(after.left(MemRecord::ChanWidth).trimmed(), QByteArray("new1"));
    }

    void settingsFileKeepsItsContentsWhenTheWriteFailsPartWay()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ft1000cat.ini"));
        writeOldSettings(path);
        const QByteArray before = contents(path);
        QVERIFY(before.size() > TooSmall);

        const ChildRun run = runChild(QStringLiteral("ini"), path, TooSmall);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(contents(path), before);
        IniSettingsStore store(path);
        QCOMPARE(store.value(QStringLiteral("Section5"), QStringLiteral("Key59")),
                 QStringLiteral("old value 59 ").repeated(4));
        // QSaveFile's temporary is gone; QSettings' lock file may stay, as it does after any sync.
        const QStringList left = QDir(dir.path()).entryList(QDir::Files);
        for (const QString& name : left)
            QVERIFY2(name == u"ft1000cat.ini" || name == u"ft1000cat.ini.lock", qPrintable(name));
    }

    void settingsFileIsReplacedWhenTheWriteSucceeds()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ft1000cat.ini"));
        writeOldSettings(path);
        QCOMPARE(runChild(QStringLiteral("ini"), path, 0).exitCode, 0);
        IniSettingsStore store(path);
        QCOMPARE(store.value(QStringLiteral("Section5"), QStringLiteral("Key59")),
                 QStringLiteral("new value 59 ").repeated(4));
    }
};

QTEST_GUILESS_MAIN(TestAtomicWrites)
#include "test_atomic_writes.moc"
