#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "support/MemoryDevice.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    MemoryDevice device;
    device.put(QStringLiteral("/Volumes/P/Photos/Photo Database"), bytes);
    device.put(QStringLiteral("/Volumes/P/Photos/F.ithmb"), bytes); // for the previews
    PhotoDb* library = device.photoDb();
    // Follow every link: a dangling one must show here.
    std::size_t seen = 0;
    for (const Photo* photo : library->photos()) {
        seen += photo->thumbnails.size() + std::size_t(photo->fullSizeFile.size());
        if (photo->album)
            seen += photo->album->photos.size();
    }
    for (const Album* album : library->albums()) {
        for (const Photo* photo : album->photos)
            seen += photo->thumbnails.size();
    }
    library->previews().wait();
    static volatile std::size_t sink = 0;
    sink = sink + seen;
    return 0;
}
