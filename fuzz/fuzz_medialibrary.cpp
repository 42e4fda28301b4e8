#include "fuzz_sqlite.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MemoryDevice device;
    device.put(QStringLiteral("/Volumes/P/iPod_Control/iTunes/MediaLibrary.sqlitedb"),
               FuzzSqlite::bytes(data, size));
    FuzzSqlite::walk(*device.trackDb());
    return 0;
}
