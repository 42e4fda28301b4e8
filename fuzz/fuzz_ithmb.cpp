// Every decoder of stored renditions. The first byte chooses the kind, the next eight are the
// numbers of the record, and the rest is the file of pixels.

#include "Base/Utility.h"
#include "Device/Ithmb.h"
#include "Device/Thumbnail.h"
#include "support/MemoryDevice.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace
{
constexpr std::array<std::uint32_t, 14> Kinds = {1019, 1023, 1024, 1064, 1067, 1081, 3008,
                                                 3009, 3141, 4005, 4006, 4035, 4040, 0};
constexpr std::array<const char*, 3> PhoneFiles = {"/166x166.ithmb", "/158x158.ithmb",
                                                   "/120x120.ithmb"};
constexpr std::size_t HeaderLength = 9;
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < HeaderLength)
        return 0;
    const ByteView header = std::as_bytes(std::span(data, HeaderLength));
    const QByteArray pixels = QByteArray::fromRawData(
        reinterpret_cast<const char*>(data + HeaderLength), qsizetype(size - HeaderLength));
    MemoryDevice device(QStringLiteral("/"));
    const Ithmb decoder(device);
    const std::size_t kind = data[0] % (Kinds.size() + PhoneFiles.size());
    QImage image;
    if (kind >= Kinds.size()) {
        const QString file = QString::fromLatin1(PhoneFiles[kind - Kinds.size()]);
        device.put(file, pixels);
        image = decoder.convert(file, Utility::readIntFromData(header, 1));
    } else {
        Thumbnail thumbnail;
        thumbnail.filename = QStringLiteral("/F.ithmb");
        thumbnail.correlationId = Kinds[kind];
        thumbnail.imageSize = std::uint32_t(pixels.size());
        thumbnail.imageWidth = Utility::readUShortFromData(header, 1);
        thumbnail.imageHeight = Utility::readUShortFromData(header, 3);
        thumbnail.horizontalPadding = Utility::readUShortFromData(header, 5);
        thumbnail.verticalPadding = Utility::readUShortFromData(header, 7);
        thumbnail.adjustSize();
        device.put(thumbnail.filename, pixels);
        image = decoder.convert(thumbnail);
    }
    // Touch the last pixel as well.
    static volatile QRgb sink = 0;
    if (!image.isNull())
        sink = sink + image.pixel(image.width() - 1, image.height() - 1);
    return 0;
}
