// SPDX-License-Identifier: GPL-3.0-or-later
// Nothing lost: a memory file, a memory list, the band scope's files or the settings file whose rewrite
// fails part-way (the file size limit stands in for a full disk) keeps its previous contents, no
// half-written file is left beside it, and the failure is reported. In a folder that cannot be
// written but holding a file that can, the file is rewritten in place and its old bytes are put back.
// The writes run in a child process as an unprivileged user, so the limit does not touch the test
// itself and the folders' permissions count.
#include "IniSettingsStore.h"
#include "MemFile.h"
#include "MemRecord.h"

#include <sys/stat.h>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {
// Small enough that neither file fits, large enough for the program to start.
constexpr int TooSmall = 1000;
// An old file well past the limit, as in the report: 6000 bytes, of which a failed write left 1024.
constexpr int OldSize = 6000;
constexpr int Limit = 1024;
const QByteArray oldBytes(OldSize, 'o');

struct ChildRun {
    int exitCode = -1;
    QString output;
};

ChildRun runChild(const QString& mode, const QString& path, int limit, const QStringList& more = {})
{
    QProcess p;
    p.start(QStringLiteral(WRITE_CHILD), QStringList{mode, path, QString::number(limit)} + more);
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

#define SKIP_IF_RIGHTS_STAY(run) \
    if ((run).exitCode == 3)     \
    QSKIP("the child cannot drop its rights here")

void chmodPath(const QString& path, mode_t mode)
{
    ::chmod(QFile::encodeName(path).constData(), mode);
}

// A folder the unprivileged child may write to (or, locked, only read), in a temporary folder.
struct Folder {
    QTemporaryDir top;
    QString path;
    Folder()
    {
        chmodPath(top.path(), 0755);
        path = top.filePath(QStringLiteral("f"));
        QDir().mkdir(path);
        chmodPath(path, 0777);
    }
    ~Folder() { chmodPath(path, 0755); }
    QString file(const QString& name) const { return path + u'/' + name; }
    void lock() { chmodPath(path, 0555); }
    QStringList files() const { return QDir(path).entryList(QDir::Files); }
};

bool writeOld(const QString& path, const QByteArray& bytes = oldBytes)
{
    QFile f(path);
    const bool ok = f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
    f.close();
    chmodPath(path, 0666);
    return ok;
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
        Folder dir;
        const QString path = dir.file(QStringLiteral("ft1000.ymp"));
        QString error;
        QVERIFY2(MemFile::save(path, oldRows(), &error), qPrintable(error));
        chmodPath(path, 0666);
        const QByteArray before = contents(path);
        QCOMPARE(before.size(), MemFile::CompleteSize);

        const ChildRun run = runChild(QStringLiteral("mem"), path, TooSmall);
        SKIP_IF_RIGHTS_STAY(run);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.output.startsWith(QStringLiteral("refused")), qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("The file was left as it was.")), qPrintable(run.output));
        QCOMPARE(contents(path), before);
        QCOMPARE(dir.files(), QStringList{QStringLiteral("ft1000.ymp")});
    }

    void memoryFileIsNotCreatedHalfWritten()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("new.ymp"));
        const ChildRun run = runChild(QStringLiteral("mem"), path, TooSmall);
        SKIP_IF_RIGHTS_STAY(run);
        QCOMPARE(run.exitCode, 1);
        QVERIFY(dir.files().isEmpty());
    }

    void memoryFile_readOnlyFolder_writtenInPlace_getsItsOldBytesBack()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("ft1000.ymp"));
        QVERIFY(writeOld(path));
        dir.lock();
        const ChildRun run = runChild(QStringLiteral("mem"), path, Limit);
        SKIP_IF_RIGHTS_STAY(run);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.output.contains(QStringLiteral("its old contents were put back")), qPrintable(run.output));
        QCOMPARE(contents(path), oldBytes);
    }

    void memoryFileIsReplacedWhenTheWriteSucceeds()
    {
        // The same run without the limit: the child's records do land, so the tests above can fail.
        Folder dir;
        const QString path = dir.file(QStringLiteral("ft1000.ymp"));
        QVERIFY(MemFile::save(path, oldRows(), nullptr));
        chmodPath(path, 0666);
        const QByteArray before = contents(path);
        QCOMPARE(runChild(QStringLiteral("mem"), path, 0).exitCode, 0);
        const QByteArray after = contents(path);
        QCOMPARE(after.size(), before.size());
        QVERIFY(after != before);
        QCOMPARE(after.left(MemRecord::ChanWidth).trimmed(), QByteArray("new1"));
    }

    void csvExport_keepsA6000ByteFileUnderA1024ByteLimit()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("list.csv"));
        QVERIFY(writeOld(path));
        const ChildRun run = runChild(QStringLiteral("csv"), path, Limit);
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("The file was left as it was.")), qPrintable(run.output));
        QCOMPARE(contents(path), oldBytes);
        QCOMPARE(dir.files(), QStringList{QStringLiteral("list.csv")});
    }

    void csvExport_readOnlyFolder_writtenInPlace_getsItsOldBytesBack()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("list.csv"));
        QVERIFY(writeOld(path));
        dir.lock();
        const ChildRun run = runChild(QStringLiteral("csv"), path, Limit);
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("its old contents were put back")), qPrintable(run.output));
        QCOMPARE(contents(path), oldBytes);
    }

    void csvExport_readOnlyFolder_withoutALimit_isWrittenInPlace()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("list.csv"));
        QVERIFY(writeOld(path));
        dir.lock();
        const ChildRun run = runChild(QStringLiteral("csv"), path, 0);
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 0, qPrintable(run.output));
        const QByteArray now = contents(path);
        QVERIFY(now.startsWith("Channel,Name,Frequency_kHz"));
        QVERIFY(now.size() != OldSize);
        QVERIFY(!now.contains('o' + QByteArray(20, 'o')));  // nothing of the old file is left over
    }

    void plotFiles_keepA6000BytePictureUnderA1024ByteLimit_andWriteNothingElse()
    {
        Folder dir;
        const QString png = dir.file(QStringLiteral("plot.png"));
        QVERIFY(writeOld(png));
        const ChildRun run = runChild(QStringLiteral("plot"), png, Limit, {QStringLiteral("5000")});
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(png), qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("Nothing was written.")), qPrintable(run.output));
        QCOMPARE(contents(png), oldBytes);
        QCOMPARE(dir.files(), QStringList{QStringLiteral("plot.png")});
    }

    void plotFiles_aCsvThatDoesNotFit_isNamedWithWhatWasAlreadyWritten()
    {
        Folder dir;
        const QString png = dir.file(QStringLiteral("plot.png"));
        const QString sweep = dir.file(QStringLiteral("plot-sweep.csv"));
        QVERIFY(writeOld(sweep));
        const ChildRun run = runChild(QStringLiteral("plot"), png, Limit, {QStringLiteral("500")});
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("Could not write the file\n") + sweep), qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("Already written:\n    plot.png")), qPrintable(run.output));
        QCOMPARE(contents(png), QByteArray(500, 'P'));
        QCOMPARE(contents(sweep), oldBytes);
        QVERIFY(!QFile::exists(dir.file(QStringLiteral("plot-srecord.csv"))));
    }

    void plotFiles_readOnlyFolder_writtenInPlace_getsItsOldBytesBack()
    {
        Folder dir;
        const QString png = dir.file(QStringLiteral("plot.png"));
        QVERIFY(writeOld(png));
        dir.lock();
        const ChildRun run = runChild(QStringLiteral("plot"), png, Limit, {QStringLiteral("5000")});
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 1, qPrintable(run.output));
        QVERIFY2(run.output.contains(QStringLiteral("its old contents were put back")), qPrintable(run.output));
        QCOMPARE(contents(png), oldBytes);
    }

    void plotFiles_withoutALimit_allThreeLand()
    {
        Folder dir;
        const QString png = dir.file(QStringLiteral("plot.png"));
        QVERIFY(writeOld(png));
        const ChildRun run = runChild(QStringLiteral("plot"), png, 0, {QStringLiteral("5000")});
        SKIP_IF_RIGHTS_STAY(run);
        QVERIFY2(run.exitCode == 0, qPrintable(run.output));
        QCOMPARE(contents(png), QByteArray(5000, 'P'));
        QVERIFY(contents(dir.file(QStringLiteral("plot-sweep.csv"))).startsWith("Frequency_kHz"));
        QVERIFY(contents(dir.file(QStringLiteral("plot-srecord.csv"))).startsWith("Time_s"));
    }

    void settingsFileKeepsItsContentsWhenTheWriteFailsPartWay()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("ft1000cat.ini"));
        writeOldSettings(path);
        chmodPath(path, 0666);
        const QByteArray before = contents(path);
        QVERIFY(before.size() > TooSmall);

        const ChildRun run = runChild(QStringLiteral("ini"), path, TooSmall);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(contents(path), before);
        IniSettingsStore store(path);
        QCOMPARE(store.value(QStringLiteral("Section5"), QStringLiteral("Key59")),
                 QStringLiteral("old value 59 ").repeated(4));
        // QSaveFile's temporary is gone; QSettings' lock file may stay, as it does after any sync.
        const QStringList left = dir.files();
        for (const QString& name : left)
            QVERIFY2(name == u"ft1000cat.ini" || name == u"ft1000cat.ini.lock", qPrintable(name));
    }

    void settingsFileIsReplacedWhenTheWriteSucceeds()
    {
        Folder dir;
        const QString path = dir.file(QStringLiteral("ft1000cat.ini"));
        writeOldSettings(path);
        chmodPath(path, 0666);
        QCOMPARE(runChild(QStringLiteral("ini"), path, 0).exitCode, 0);
        IniSettingsStore store(path);
        QCOMPARE(store.value(QStringLiteral("Section5"), QStringLiteral("Key59")),
                 QStringLiteral("new value 59 ").repeated(4));
    }
};

QTEST_GUILESS_MAIN(TestAtomicWrites)
#include "test_atomic_writes.moc"
