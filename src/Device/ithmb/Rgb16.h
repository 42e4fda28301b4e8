#pragma once

#include "Device/ithmb/PixelGrid.h"
#include "Device/ithmb/WideLoop.h"

#include <cstring>

/// The common part of the two 16-bit formats.
namespace Rgb16
{
constexpr std::uint16_t OpaqueAlpha = 0xff00;

/// The upper half of a product: a multiplication and a shift in one instruction.
constexpr std::uint16_t upperProduct(std::uint16_t left, std::uint16_t right)
{
    return std::uint16_t(std::uint32_t(left) * right >> 16);
}

/// A component, where it stands in the pixel, widened to 8 bits by repeating its top bits: five
/// bits times 8 1/4, six bits times 4 1/16, rounded down. `unit` is the component's lowest bit.
constexpr std::uint16_t widen5(std::uint16_t component, std::uint32_t unit)
{
    return upperProduct(component, std::uint16_t(65536 * 33 / 4 / unit));
}
constexpr std::uint16_t widen6(std::uint16_t component, std::uint32_t unit)
{
    return upperProduct(component, std::uint16_t(65536 * 65 / 16 / unit));
}
/// Five bits at the lowest place, for which the factor above would be too large.
constexpr std::uint16_t widenLowest5(std::uint16_t component)
{
    return std::uint16_t(component * 33) >> 2;
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
    WideLoop::run(std::size_t(width) * height, [in, out, redGreen, blueAlpha](std::size_t i) {
        std::uint16_t pixel = 0;
        std::memcpy(&pixel, in + 2 * i, sizeof pixel);
        out[2 * i] = redGreen(pixel);
        out[2 * i + 1] = blueAlpha(pixel);
    });
    return image;
}
} // namespace Rgb16
