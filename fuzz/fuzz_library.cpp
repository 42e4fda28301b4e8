#include "fuzz_sqlite.h"

// The same bytes serve as both files: a seed holds the tables of the two.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MemoryDevice device;
    const QString folder = QStringLiteral("/Volumes/P/iPod_Control/iTunes/iTunes Library.itlp/");
    device.put(folder + QStringLiteral("Library.itdb"), FuzzSqlite::bytes(data, size));
    device.put(folder + QStringLiteral("Locations.itdb"), FuzzSqlite::bytes(data, size));
    FuzzSqlite::walk(*device.trackDb());
    return 0;
}
