#include "Device/BookDb.h"
#include "fuzz_sqlite.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MemoryDevice device;
    device.setBookPath(QStringLiteral("/Books"));
    device.put(QStringLiteral("/Books/Books.plist"), FuzzSqlite::bytes(data, size));
    for (const Track* book : device.bookDb()->bookList())
        FuzzSqlite::keep(std::size_t(book->title.size() + book->path.size()));
    FuzzSqlite::keep(device.bookDb()->books().tracks(CategoryIndex::AllKey).size());
    return 0;
}
