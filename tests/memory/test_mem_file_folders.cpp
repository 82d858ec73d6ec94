// SPDX-License-Identifier: GPL-3.0-or-later
// Saving a memory file where the folder may or may not be written to: atomic (a new file put in the
// old one's place) wherever a temporary file can be made beside the target, written in place where
// only the file itself may be written. The saves run in a child process as an unprivileged user, so
// the folders' permissions count even when the tests run as root.
#include "GoldenFile.h"

#include <sys/stat.h>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct ChildRun {
    int exitCode = -1;
    QString output;
};

ChildRun save(const QString& source, const QString& target)
{
    QProcess p;
    p.start(QStringLiteral(SAVE_CHILD), {source, target});
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

bool writeFile(const QString& path, const QByteArray& bytes, mode_t mode)
{
    QFile f(path);
    const bool ok = f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
    f.close();
    return ok && ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

QByteArray contents(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

ino_t inode(const QString& path)
{
    struct stat st {};
    return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? st.st_ino : 0;
}

// The golden table saved: record 3's Masked of 1 comes back as 0, everything else as it was.
QByteArray goldenSaved()
{
    QByteArray b = Golden::file();
    b[2 * 29 + 27] = 0;
    return b;
}

// What the old file held: 113 records of another kind, so a save that did not happen shows.
const QByteArray oldBytes(3277, 'o');

// A scene: a folder the child may read (and, with folderMode, perhaps write), the golden file as the
// source of the save, and the target's path.
struct Scene {
    QTemporaryDir top;
    QString folder;
    QString source;
    QString target;
    explicit Scene(mode_t folderMode)
    {
        ::chmod(QFile::encodeName(top.path()).constData(), 0755);
        source = top.filePath(QStringLiteral("golden.ymp"));
        writeFile(source, Golden::file(), 0644);
        folder = top.filePath(QStringLiteral("program"));
        QDir().mkdir(folder);
        target = folder + QStringLiteral("/ft1000.ymp");
        mode = folderMode;
    }
    void lock() { ::chmod(QFile::encodeName(folder).constData(), mode); }
    ~Scene() { ::chmod(QFile::encodeName(folder).constData(), 0755); }
    mode_t mode;
};

#define SKIP_IF_RIGHTS_STAY(run) \
    if ((run).exitCode == 3)     \
    QSKIP("the child cannot drop its rights here")
}  // namespace

class TestMemFileFolders : public QObject {
    Q_OBJECT

    ChildRun defaultFile(const QString& program, const QString& data)
    {
        QProcess p;
        p.start(QStringLiteral(SAVE_CHILD), {QStringLiteral("--default-file"), program, data});
        ChildRun r;
        if (p.waitForFinished(30000) && p.exitStatus() == QProcess::NormalExit)
            r.exitCode = p.exitCode();
        r.output = QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed();
        return r;
    }

private slots:
    void defaultFile_besideTheProgram_whereItsFolderMayBeWritten()
    {
        Scene s(0777);
        s.lock();
        const ChildRun r = defaultFile(s.folder, QStringLiteral("/home/op/.local/share/ft1000cat"));
        SKIP_IF_RIGHTS_STAY(r);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.output, s.folder + QStringLiteral("/ft1000.ymp"));
    }

    void defaultFile_inTheUsersDataFolder_whenTheProgramsFolderIsReadOnly()
    {
        Scene s(0555);  // as /usr/bin is for an operator
        s.lock();
        const ChildRun r = defaultFile(s.folder, QStringLiteral("/home/op/.local/share/ft1000cat"));
        SKIP_IF_RIGHTS_STAY(r);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.output, QStringLiteral("/home/op/.local/share/ft1000cat/ft1000.ymp"));
    }

    void readOnlyFolder_writableFile_isWrittenInPlace()
    {
        Scene s(0555);
        QVERIFY(writeFile(s.target, oldBytes, 0666));
        const ino_t before = inode(s.target);
        s.lock();
        const ChildRun r = save(s.source, s.target);
        SKIP_IF_RIGHTS_STAY(r);
        QVERIFY2(r.exitCode == 0, qPrintable(r.output));
        QCOMPARE(contents(s.target), goldenSaved());
        QCOMPARE(inode(s.target), before);  // the same file, written in place
        QCOMPARE(QDir(s.folder).entryList(QDir::Files), QStringList{QStringLiteral("ft1000.ymp")});
    }

    void writableFolder_isSavedAtomically_aNewFileTakesTheOldOnesPlace()
    {
        Scene s(0777);
        QVERIFY(writeFile(s.target, oldBytes, 0666));
        // A second name for the old file: an atomic save leaves it with the old contents.
        const QString second = s.folder + QStringLiteral("/second-name");
        QVERIFY(::link(QFile::encodeName(s.target).constData(), QFile::encodeName(second).constData()) == 0);
        const ino_t before = inode(s.target);
        s.lock();
        const ChildRun r = save(s.source, s.target);
        SKIP_IF_RIGHTS_STAY(r);
        QVERIFY2(r.exitCode == 0, qPrintable(r.output));
        QCOMPARE(contents(s.target), goldenSaved());
        QVERIFY(inode(s.target) != before);
        QCOMPARE(contents(second), oldBytes);
        QCOMPARE(QDir(s.folder).entryList(QDir::Files), (QStringList{"ft1000.ymp", "second-name"}));
    }

    void readOnlyFolder_noFile_failsAndCreatesNothing()
    {
        Scene s(0555);
        s.lock();
        const ChildRun r = save(s.source, s.target);
        SKIP_IF_RIGHTS_STAY(r);
        QVERIFY2(r.exitCode == 1, qPrintable(r.output));
        QVERIFY(!QFile::exists(s.target));
        QVERIFY(QDir(s.folder).entryList(QDir::Files).isEmpty());
    }

    void readOnlyFolder_readOnlyFile_failsAndKeepsTheFile()
    {
        Scene s(0555);
        QVERIFY(writeFile(s.target, oldBytes, 0444));
        s.lock();
        const ChildRun r = save(s.source, s.target);
        SKIP_IF_RIGHTS_STAY(r);
        QVERIFY2(r.exitCode == 1, qPrintable(r.output));
        QCOMPARE(contents(s.target), oldBytes);
    }
};

QTEST_GUILESS_MAIN(TestMemFileFolders)
#include "test_mem_file_folders.moc"
