#include "Device/VoiceMemoDb.h"
#include "fuzz_sqlite.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MemoryDevice device;
    device.put(QStringLiteral("/Volumes/P/Recordings/Recordings.db"),
               FuzzSqlite::bytes(data, size));
    for (const Track* memo : device.voiceMemoDb()->memos())
        FuzzSqlite::keep(std::size_t(memo->title.size() + memo->path.size()));
    return 0;
}
