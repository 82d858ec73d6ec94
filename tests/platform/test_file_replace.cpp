// SPDX-License-Identifier: GPL-3.0-or-later
// Rewriting a file in place when the write fails part-way: the overwritten part goes back, and when
// that fails too the result says exactly what the file now holds. A buffer that refuses writes after
// a budget of bytes stands in for a disk that fills up or fails.

#include "FileReplace.h"

#include <QBuffer>
#include <QTest>

namespace {
class FailingBuffer : public QBuffer {
public:
    qint64 budget = 0;        // bytes that may still be written; below zero: no limit
    qint64 afterRefusal = 0;  // the budget once a write has been refused (the putting back)
    qint64 writeData(const char* data, qint64 len) override
    {
        if (budget < 0)
            return QBuffer::writeData(data, len);
        const qint64 n = std::min(len, budget);
        if (n == 0) {
            setErrorString(QStringLiteral("No space left on device"));
            budget = afterRefusal;
            afterRefusal = 0;
            return -1;
        }
        budget -= n;
        return QBuffer::writeData(data, n);
    }
};

struct Device {
    QByteArray bytes;
    FailingBuffer buffer;
    explicit Device(const QByteArray& old) : bytes(old)
    {
        buffer.setBuffer(&bytes);
        buffer.open(QIODevice::ReadWrite);
    }
    FileReplace::Result rewrite(const QByteArray& now, bool resizeWorks = true)
    {
        return FileReplace::rewrite(
            buffer,
            [this, resizeWorks](qint64 size) {
                if (resizeWorks)
                    bytes.resize(size);
                return resizeWorks;
            },
            now);
    }
};
}  // namespace

class TestFileReplace : public QObject {
    Q_OBJECT
private slots:
    void rewrite_whole_replacesAndCutsToTheNewLength()
    {
        Device d(QByteArray(6000, 'o'));
        d.buffer.budget = -1;
        const FileReplace::Result r = d.rewrite(QByteArray(100, 'n'));
        QVERIFY(r.ok);
        QCOMPARE(d.bytes, QByteArray(100, 'n'));
    }

    void rewrite_failingPartWay_putsTheOverwrittenPartBack()
    {
        Device d(QByteArray(6000, 'o'));
        d.buffer.budget = 1024;  // 1024 of the new bytes, then room to put them back
        d.buffer.afterRefusal = 1024;
        const FileReplace::Result r = d.rewrite(QByteArray(5000, 'n'));
        QVERIFY(!r.ok);
        QCOMPARE(r.old, FileReplace::OldFile::Restored);
        QCOMPARE(d.bytes, QByteArray(6000, 'o'));
        QCOMPARE(r.message(), QStringLiteral("No space left on device. The file was being rewritten in place; its old "
                                             "contents were put back."));
    }

    void rewrite_whenPuttingBackFailsToo_saysWhichBytesHoldTheNewContents()
    {
        Device d(QByteArray(6000, 'o'));
        d.buffer.budget = 1024;  // only 100 of the 1024 overwritten bytes can go back
        d.buffer.afterRefusal = 100;
        const FileReplace::Result r = d.rewrite(QByteArray(5000, 'n'));
        QVERIFY(!r.ok);
        QCOMPARE(r.old, FileReplace::OldFile::Damaged);
        QCOMPARE(d.bytes, QByteArray(100, 'o') + QByteArray(924, 'n') + QByteArray(4976, 'o'));
        QVERIFY2(r.message().contains(QStringLiteral("Putting the old contents back failed too (No space left on "
                                                     "device): bytes 101 to 1024 of the file hold the new contents, "
                                                     "the rest is as it was; the file is 6000 bytes long.")),
                 qPrintable(r.message()));
        QVERIFY(!r.message().contains(QStringLiteral("left as it was")));
    }

    void rewrite_whenTheOldLengthCannotBeRestored_saysSo()
    {
        Device d(QByteArray(60, 'o'));
        d.buffer.budget = -1;  // every write goes out; only the length cannot change
        const FileReplace::Result r = d.rewrite(QByteArray(100, 'n'), false);
        QCOMPARE(r.old, FileReplace::OldFile::Damaged);
        QVERIFY2(r.message().contains(QStringLiteral("the old length of 60 bytes could not be restored")),
                 qPrintable(r.message()));
    }
};

QTEST_GUILESS_MAIN(TestFileReplace)
#include "test_file_replace.moc"
