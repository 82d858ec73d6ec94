// Writes a memory file or the settings file under a file size limit, so the write fails part-way
// with EFBIG, as on a full disk. Used by test_atomic_writes, which looks at what is left afterwards.
//
//   atomic_write_child mem PATH LIMIT   saves 113 channels to PATH; exit 0 saved, 1 refused
//   atomic_write_child ini PATH LIMIT   rewrites every value of the settings file PATH
// LIMIT is the largest file in bytes the process may write; 0 means no limit.

#include "IniSettingsStore.h"
#include "MemFile.h"
#include "MemRecord.h"

#include <sys/resource.h>
#include <QCoreApplication>
#include <csignal>
#include <cstdio>

namespace {
// Rows whose names mark them as written by the child.
QList<MemoryRow> childRows()
{
    QList<MemoryRow> rows;
    for (int n = 1; n <= MemFile::Records; ++n) {
        MemRecord r;
        r.chan = fixedText(QStringLiteral("new%1").arg(n), MemRecord::ChanWidth);
        r.freq = 700000.0f + n;
        r.mode = fixedText(QStringLiteral("USB"), MemRecord::ModeWidth);
        r.ant = "A ";
        r.mde = 1;
        rows << rowFromRecord(r);
    }
    return rows;
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: atomic_write_child mem|ini PATH LIMIT\n");
        return 2;
    }
    const QString mode = QString::fromLocal8Bit(argv[1]);
    const QString path = QString::fromLocal8Bit(argv[2]);
    const long limit = std::atol(argv[3]);
    if (limit > 0) {
        // A write past the limit then fails with EFBIG instead of killing the process.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit r{static_cast<rlim_t>(limit), static_cast<rlim_t>(limit)};
        if (::setrlimit(RLIMIT_FSIZE, &r) != 0) {
            std::perror("setrlimit");
            return 2;
        }
    }
    if (mode == u"mem") {
        QString error;
        const bool saved = MemFile::save(path, childRows(), &error);
        std::printf("%s\n", saved ? "saved" : qPrintable(QStringLiteral("refused: ") + error));
        return saved ? 0 : 1;
    }
    if (mode == u"ini") {
        IniSettingsStore store(path);
        for (int i = 0; i < 60; ++i)
            store.setValue(QStringLiteral("Section%1").arg(i / 10), QStringLiteral("Key%1").arg(i),
                           QStringLiteral("new value %1 ").arg(i).repeated(4));
        store.sync();
        return 0;
    }
    return 2;
}
