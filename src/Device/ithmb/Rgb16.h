#pragma once

#include "Device/ithmb/PixelGrid.h"

#include <cstring>

/// The common part of the two 16-bit formats.
namespace Rgb16
{
constexpr std::uint16_t OpaqueAlpha = 0xff00;

/// A component of so many bits, widened to 8 by repeating its top bits.
constexpr std::uint16_t widen5(std::uint16_t component)
{
    return std::uint16_t(component << 3 | component >> 2);
}
constexpr std::uint16_t widen6(std::uint16_t component)
{
    return std::uint16_t(component << 2 | component >> 4);
}

/// Converts all pixels of the grid. `redGreen` and `blueAlpha` give the two halves of an output
/// pixel: as 16-bit numbers, like the input, because that lets the compiler convert eight at once.
template <typename RedGreen, typename BlueAlpha>
QImage convert(ByteView data, std::uint32_t width, std::uint32_t height, RedGreen redGreen,
               BlueAlpha blueAlpha)
{
    QImage image = PixelGrid::bitmap(data, width, height, 16, QImage::Format_RGBA8888);
    if (image.isNull())
        return image;
    const std::byte* in = data.data();
    auto* out = reinterpret_cast<std::uint16_t*>(image.bits()); // rows have no gaps
    const std::size_t count = std::size_t(width) * height;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint16_t pixel = 0;
        std::memcpy(&pixel, in + 2 * i, sizeof pixel);
        out[2 * i] = redGreen(pixel);
        out[2 * i + 1] = blueAlpha(pixel);
    }
    return image;
}
} // namespace Rgb16
