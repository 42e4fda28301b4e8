#include "Device/Ithmb.h"
#include "Device/ithmb/PixelGrid.h"

#include <algorithm>
#include <array>
#include <vector>

// Red and blue depend on two bytes each: all their values stand in tables, computed in doubles.
// Green depends on three, and is computed in doubles from tables of its terms.

namespace
{
constexpr int Black = 16;
constexpr int Neutral = 128;
/// The format has rows of this length, whatever the grid says.
constexpr std::size_t RowLength = 720;
constexpr std::size_t ChromaRowLength = RowLength / 2;

using LumaRow = std::array<std::uint8_t, 256>; // one value for each luma

struct Tables {
    std::array<LumaRow, 256> redOfV{};
    std::array<LumaRow, 256> blueOfU{};
    std::array<double, 256> luma{};
    std::array<double, 256> greenOfV{};
    std::array<double, 256> greenOfU{};

    Tables()
    {
        for (std::size_t i = 0; i < 256; ++i) {
            luma[i] = 1.164 * (int(i) - Black);
            greenOfV[i] = 0.813 * (int(i) - Neutral);
            greenOfU[i] = 0.391 * (int(i) - Neutral);
        }
        for (std::size_t chroma = 0; chroma < 256; ++chroma) {
            for (std::size_t y = 0; y < 256; ++y) {
                redOfV[chroma][y] = Ithmb::limit8Bit(luma[y] + 1.596 * (int(chroma) - Neutral));
                blueOfU[chroma][y] = Ithmb::limit8Bit(luma[y] + 2.018 * (int(chroma) - Neutral));
            }
        }
    }
};

const Tables& tables()
{
    static const Tables shared;
    return shared;
}

/// The part of a pixel that its neighbours share.
class Chroma
{
public:
    Chroma(const Tables& from, std::byte u, std::byte v)
        : _red(from.redOfV[std::size_t(v)])
        , _blue(from.blueOfU[std::size_t(u)])
        , _luma(from.luma)
        , _greenOfV(from.greenOfV[std::size_t(v)])
        , _greenOfU(from.greenOfU[std::size_t(u)])
    {
    }

    [[nodiscard]] Ithmb::Rgb pixel(std::byte luma) const
    {
        const auto y = std::size_t(luma);
        // No sum is further from a byte than an int can say, so this is limit8Bit.
        const int green = int(_luma[y] - _greenOfV - _greenOfU);
        return {_red[y], std::uint8_t(std::clamp(green, 0, 255)), _blue[y]};
    }

private:
    const LumaRow& _red;
    const LumaRow& _blue;
    const std::array<double, 256>& _luma;
    double _greenOfV;
    double _greenOfU;
};

std::size_t chromaOffset(std::size_t pixel)
{
    return pixel / RowLength / 2 * ChromaRowLength + pixel % RowLength / 2;
}

/// The largest offset that one of the first `pixelCount` pixels has: at the end of the last row,
/// or of the row before it.
std::size_t largestChromaOffset(std::size_t pixelCount)
{
    const std::size_t lastRow = (pixelCount - 1) / RowLength * RowLength;
    return std::max(chromaOffset(pixelCount - 1), lastRow > 0 ? chromaOffset(lastRow - 1) : 0);
}

uchar* put(const Ithmb::Rgb& pixel, uchar* out)
{
    *out++ = pixel.red;
    *out++ = pixel.green;
    *out++ = pixel.blue;
    return out;
}

/// Part of a row: `count` pixels from an even one on.
uchar* convertRow(ByteView y, ByteView u, ByteView v, uchar* out)
{
    const Tables& from = tables();
    std::size_t i = 0;
    for (; i + 1 < y.size(); i += 2) {
        const Chroma chroma(from, u[i / 2], v[i / 2]);
        out = put(chroma.pixel(y[i]), out);
        out = put(chroma.pixel(y[i + 1]), out);
    }
    if (i < y.size())
        out = put(Chroma(from, u[i / 2], v[i / 2]).pixel(y[i]), out);
    return out;
}

/// All pixels, one after the other, in rows of the length that the format has.
void convertPixels(ByteView data, std::size_t pixelCount, uchar* out)
{
    const ByteView u = data.subspan(pixelCount);
    const ByteView v = data.subspan(pixelCount + pixelCount / 4);
    for (std::size_t start = 0; start < pixelCount; start += RowLength) {
        const ByteView row = data.subspan(start, std::min(RowLength, pixelCount - start));
        const std::size_t chroma = chromaOffset(start);
        out = convertRow(row, u.subspan(chroma), v.subspan(chroma), out);
    }
}
} // namespace

std::uint8_t Ithmb::limit8Bit(double value)
{
    if (value >= 255.0)
        return 255;
    return value > 0.0 ? std::uint8_t(value) : 0;
}

Ithmb::Rgb Ithmb::yuv420ToRgb(std::uint8_t y, std::uint8_t u, std::uint8_t v)
{
    return Chroma(tables(), std::byte(u), std::byte(v)).pixel(std::byte(y));
}

QImage Ithmb::getYuv420Bmp(ByteView data, std::uint32_t width, std::uint32_t height)
{
    if (!PixelGrid::fits(data, width, height, 8))
        return {};
    const std::size_t pixelCount = std::size_t(width) * height;
    const std::size_t chromaStart = pixelCount + pixelCount / 4; // of V, which ends last
    if (chromaStart + largestChromaOffset(pixelCount) >= data.size())
        return {};
    QImage image(int(width), int(height), QImage::Format_RGB888);
    if (image.isNull())
        return image;
    if (image.bytesPerLine() == qsizetype(width) * 3) { // no gaps, as at 720 pixels
        convertPixels(data, pixelCount, image.bits());
        return image;
    }
    QByteArray pixels(qsizetype(3 * pixelCount), Qt::Uninitialized);
    convertPixels(data, pixelCount, reinterpret_cast<uchar*>(pixels.data()));
    return PixelGrid::packedRgb(pixels, width, height);
}
