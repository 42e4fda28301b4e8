#pragma once

#include "Base/Utility.h"

#include <QImage>

#include <cstdint>

/// What the pixel formats share: from a claimed grid to memory for its pixels.
namespace PixelGrid
{
/// Whether `data` brings `bitsPerPixel` for each pixel of the grid. An empty grid does not fit.
inline bool fits(ByteView data, std::uint32_t width, std::uint32_t height,
                 std::uint64_t bitsPerPixel)
{
    // A record's grid is at most 131070 pixels wide and high, so this cannot wrap around.
    const std::uint64_t pixels = std::uint64_t(width) * height;
    return pixels > 0 && width <= INT32_MAX && height <= INT32_MAX &&
           pixels <= std::uint64_t(data.size()) * 8 / bitsPerPixel;
}

/// A bitmap for the grid, its pixels not set; null where `data` has too few for it, so a claim
/// never costs more than a few times the bytes that came with it.
inline QImage bitmap(ByteView data, std::uint32_t width, std::uint32_t height,
                     std::uint64_t bitsPerPixel, QImage::Format format)
{
    if (!fits(data, width, height, bitsPerPixel))
        return {};
    return {int(width), int(height), format};
}

/// A bitmap of three bytes a pixel out of pixels that follow one another without gaps.
inline QImage packedRgb(const QByteArray& pixels, std::uint32_t width, std::uint32_t height)
{
    const qsizetype rowLength = qsizetype(width) * 3;
    QImage image(int(width), int(height), QImage::Format_RGB888);
    if (image.isNull())
        return image;
    for (int row = 0; row < image.height(); ++row)
        std::memcpy(image.scanLine(row), pixels.constData() + row * rowLength,
                    std::size_t(rowLength));
    return image;
}
} // namespace PixelGrid
