// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a memory file, a memory list, the band scope's files or the settings file under a file size
// limit, so the write fails part-way with EFBIG, as on a full disk. Used by test_atomic_writes, which
// looks at what is left afterwards. Run by root, it first becomes the unprivileged user "nobody", so
// that a folder's permissions count as they do for an operator.
//
//   atomic_write_child mem PATH LIMIT    saves 113 channels to PATH; exit 0 saved, 1 refused
//   atomic_write_child csv PATH LIMIT    exports 113 channels as a CSV list to PATH; the same exits
//   atomic_write_child plot PATH LIMIT PNG_BYTES
//                                        writes a plot PATH of PNG_BYTES bytes and its two CSVs
//   atomic_write_child ini PATH LIMIT    rewrites every value of the settings file PATH
// LIMIT is the largest file in bytes the process may write; 0 means no limit. The reason for a
// refusal is printed on standard output; exit 3: the rights could not be dropped.

#include "IniSettingsStore.h"
#include "MemFile.h"
#include "MemRecord.h"
#include "ScopeExport.h"

#include <sys/resource.h>
#include <unistd.h>
#include <QCoreApplication>
#include <csignal>
#include <cstdio>

namespace {
constexpr uid_t Nobody = 65534;

// A sweep of 200 samples and a recording of 100 readings, each a few kilobytes as CSV.
QByteArray sweepCsv()
{
    QList<SweepSample> samples;
    for (int i = 0; i < 200; ++i) {
        SweepSample s;
        s.freq10Hz = 1420000 + 50 * i;
        s.replied = true;
        s.raw = i % 256;
        samples << s;
    }
    return ScopeExport::sweepCsv(samples);
}

QByteArray recordCsv()
{
    QList<RecordReading> readings;
    for (int i = 0; i < 100; ++i)
        readings.append({2.992 * (i + 1), true, 100 + i});
    return ScopeExport::recordCsv(readings);
}

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
    if (argc < 4) {
        std::fprintf(stderr, "usage: atomic_write_child mem|csv|plot|ini PATH LIMIT [PNG_BYTES]\n");
        return 2;
    }
    if (::geteuid() == 0 && (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0 || ::geteuid() == 0)) {
        std::perror("cannot become nobody");
        return 3;
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
    if (mode == u"csv") {
        QString error;
        const bool saved = MemFile::exportCsv(path, childRows(), &error);
        std::printf("%s\n", saved ? "saved" : qPrintable(QStringLiteral("refused: ") + error));
        return saved ? 0 : 1;
    }
    if (mode == u"plot" && argc == 5) {
        const QByteArray png(std::atoi(argv[4]), 'P');
        const ScopeExport::PlotWrite w = ScopeExport::writePlotFiles({{path, png},
                                                                      {ScopeExport::sweepCsvPath(path), sweepCsv()},
                                                                      {ScopeExport::recordCsvPath(path), recordCsv()}});
        std::printf("%s\n", w.ok ? "saved" : qPrintable(QStringLiteral("refused: ") + w.message));
        return w.ok ? 0 : 1;
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
