#include "Device/Ithmb.h"
#include "Device/ithmb/PixelGrid.h"
#include "Device/ithmb/WideLoop.h"

namespace
{
constexpr std::uint32_t toRgba(std::uint32_t pixel)
{
    return (pixel >> 16 & 0xff) | (pixel & 0xff00) | (pixel & 0xff) << 16 | 0xff000000;
}
} // namespace

std::uint32_t Ithmb::bgr32ToRgba(std::uint32_t pixel)
{
    return toRgba(pixel);
}

QImage Ithmb::getBgr32Bmp(ByteView data, std::uint32_t width, std::uint32_t height)
{
    QImage image = PixelGrid::bitmap(data, width, height, 32, QImage::Format_RGBA8888);
    if (image.isNull())
        return image;
    const std::byte* in = data.data();
    auto* out = reinterpret_cast<std::uint32_t*>(image.bits()); // rows have no gaps
    WideLoop::run(std::size_t(width) * height, [in, out](std::size_t i) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, in + 4 * i, sizeof pixel);
        out[i] = toRgba(pixel);
    });
    return image;
}
