#include "Device/Ithmb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/PreviewImage.h"
#include "Device/Thumbnail.h"

#include <algorithm>
#include <array>
#include <limits>

namespace
{
/// No rendition is larger; a record that claims more is rubbish.
constexpr std::uint32_t MostBytes = 64 * 1024 * 1024;

ByteView viewOf(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}

/// The first pixels of each of `count` rows of 16-bit pixels; null when `data` has fewer rows.
QByteArray withoutRowEnds(const QByteArray& data, int count, qsizetype rowLength, qsizetype kept)
{
    if (data.size() < (count - 1) * rowLength + kept)
        return {};
    QByteArray result;
    result.reserve(count * kept);
    for (int row = 0; row < count; ++row)
        result.append(data.constData() + row * rowLength, kept);
    return result;
}

/// A phone's file of previews: records of one size, each the pixels and then something else.
struct FixedLayout {
    const char* fileName;
    std::uint32_t recordLength;
    std::uint32_t pixelBytes;
    std::uint32_t gridWidth;
    int size; ///< of the visible square
};

constexpr std::array FixedLayouts = {FixedLayout{"166x166.ithmb", 55804, 55776, 168, 166},
                                     FixedLayout{"158x158.ithmb", 50588, 50560, 160, 158},
                                     FixedLayout{"120x120.ithmb", 28828, 28800, 120, 120}};
} // namespace

QImage Ithmb::convert(const Thumbnail& thumbnail) const
{
    if (thumbnail.imageSize > MostBytes)
        return {};
    const QByteArray data =
        _device->read(thumbnail.filename, thumbnail.thumbnailOffset, thumbnail.imageSize);
    if (data.isEmpty())
        return {};
    const std::uint32_t width = thumbnail.width;
    const std::uint32_t height = thumbnail.height;
    switch (thumbnail.correlationId) {
    case 1023:
    case 1024:
        return getRgb565Bmp(viewOf(data), width, height);
    case 1064:
        return getBgr32Bmp(viewOf(data), width, height);
    case 3008:
    case 3009:
        return getRgb555Bmp(viewOf(data), width, height);
    case 3141: // rows of 160 pixels
        return getRgb555Bmp(viewOf(withoutRowEnds(data, 150, 320, 300)), width, height);
    case 4040: // rows of 168 pixels
        return getRgb555Bmp(viewOf(withoutRowEnds(data, 166, 336, 332)), width, height);
    case 1019:
        return getYuvBmp(viewOf(data), width, height);
    case 1067:
        return getYuv420Bmp(viewOf(data), width, height);
    case 1081:
    case 4005:
    case 4006:
    case 4035:
        return getJpeg(viewOf(data));
    default:
        return {};
    }
}

QImage Ithmb::convert(const QString& path, std::int32_t thumbnailIndex) const
{
    const QString name = PathName::lastComponent(path);
    const auto layout =
        std::find_if(FixedLayouts.begin(), FixedLayouts.end(),
                     [&](const FixedLayout& one) { return name == QLatin1String(one.fileName); });
    if (layout == FixedLayouts.end() || thumbnailIndex < 0)
        return {};
    const std::uint64_t offset = std::uint64_t(thumbnailIndex) * layout->recordLength;
    if (offset > std::numeric_limits<std::uint32_t>::max())
        return {};
    const QByteArray data = _device->read(path, std::uint32_t(offset), layout->pixelBytes);
    const QImage grid = getRgb555Bmp(viewOf(data), layout->gridWidth, std::uint32_t(layout->size));
    if (grid.isNull() || grid.width() == layout->size)
        return grid;
    return PreviewImage::imageFromRect(grid, {0, 0, layout->size, layout->size});
}

QImage Ithmb::getJpeg(ByteView data)
{
    return PreviewImage::decode(QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                                        qsizetype(data.size())));
}
