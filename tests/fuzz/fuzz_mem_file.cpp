// SPDX-License-Identifier: GPL-3.0-or-later
// A ".ymp" memory file of any length and content, loaded as the memory window loads it, each record
// shown as a table row and read back as the save would read it.
#include "FuzzInput.h"
#include "MemFile.h"
#include "MemRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const QByteArray bytes = in.rest();
    const QList<MemRecord> records = MemFile::recordsFromBytes(bytes);
    FUZZ_CHECK(records.size() == MemFile::Records);
    for (const MemRecord& r : records) {
        FUZZ_CHECK(r.encode().size() == MemRecord::Size);
        const MemoryRow row = rowFromRecord(r);
        QString reason;
        if (const auto back = recordFromRow(row, &reason))
            FUZZ_CHECK(back->encode().size() == MemRecord::Size);
        else
            FUZZ_CHECK(!reason.isEmpty());
        for (const QString& cell : row.cells)
            cellNumber(cell);
    }
    MemRecord::decode(bytes);
    return 0;
}
