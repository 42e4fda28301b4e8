#include "Device/PreviewImage.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const QImage image = PreviewImage::decodeThumbnail(file, PreviewImage::PreviewBox);
    static volatile QRgb sink = 0;
    if (!image.isNull())
        sink = sink + image.pixel(image.width() - 1, image.height() - 1);
    return 0;
}
