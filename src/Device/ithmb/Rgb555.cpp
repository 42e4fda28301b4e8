#include "Device/Ithmb.h"
#include "Device/ithmb/Rgb16.h"

namespace
{
constexpr std::uint16_t redGreen(std::uint16_t pixel)
{
    return std::uint16_t(Rgb16::widen5(pixel & 0x7c00, 1 << 10) |
                         Rgb16::widen5(pixel & 0x03e0, 1 << 5) << 8);
}

constexpr std::uint16_t blueAlpha(std::uint16_t pixel)
{
    return std::uint16_t(Rgb16::widenLowest5(pixel & 0x1f) | Rgb16::OpaqueAlpha);
}
} // namespace

std::uint32_t Ithmb::rgb555ToRgba(std::uint16_t pixel)
{
    return redGreen(pixel) | std::uint32_t(blueAlpha(pixel)) << 16;
}

QImage Ithmb::getRgb555Bmp(ByteView data, std::uint32_t width, std::uint32_t height)
{
    return Rgb16::convert(
        data, width, height, [](std::uint16_t pixel) { return redGreen(pixel); },
        [](std::uint16_t pixel) { return blueAlpha(pixel); });
}
