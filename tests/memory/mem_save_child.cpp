// SPDX-License-Identifier: GPL-3.0-or-later
// Saves the records of one memory file into another, as an operator without special rights would:
// run by root, it first becomes the unprivileged user "nobody", for whom a folder's permissions
// count. Used by test_mem_file_folders.
//
//   mem_save_child SOURCE TARGET   exit 0 saved, 1 refused (the reason on standard output),
//                                  3 the rights could not be dropped
//   mem_save_child --default-file PROGRAM_FOLDER DATA_FOLDER
//                                  prints where the memory file lives by default

#include "MemFile.h"
#include "MemRecord.h"

#include <unistd.h>
#include <QCoreApplication>
#include <cstdio>

namespace {
constexpr uid_t Nobody = 65534;
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 4 && QByteArray(argv[1]) == "--default-file") {
        if (::geteuid() == 0 && (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0 || ::geteuid() == 0))
            return 3;
        std::printf("%s\n",
                    qPrintable(MemFile::defaultPath(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]))));
        return 0;
    }
    if (argc != 3) {
        std::fprintf(stderr, "usage: mem_save_child SOURCE TARGET\n");
        return 2;
    }
    if (::geteuid() == 0 && (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0 || ::geteuid() == 0)) {
        std::perror("cannot become nobody");
        return 3;
    }
    QList<MemRecord> records;
    QString error;
    if (!MemFile::load(QString::fromLocal8Bit(argv[1]), &records, &error)) {
        std::printf("cannot read the source: %s\n", qPrintable(error));
        return 2;
    }
    QList<MemoryRow> rows;
    for (const MemRecord& r : records)
        rows << rowFromRecord(r);
    const bool saved = MemFile::save(QString::fromLocal8Bit(argv[2]), rows, &error);
    std::printf("%s\n", saved ? "saved" : qPrintable(QStringLiteral("refused: ") + error));
    return saved ? 0 : 1;
}
