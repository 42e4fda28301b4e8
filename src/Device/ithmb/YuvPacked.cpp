#include "Device/Ithmb.h"
#include "Device/ithmb/PixelGrid.h"

#include <algorithm>
#include <array>
#include <cmath>

// The format is defined in doubles: R = y + 1.370705 (v - 128), and so on, truncated. A luma is
// an integer, so truncating the sum is the same as adding the rounded-down rest to it; what is
// negative becomes 0 either way. A test compares every pixel there is with the doubles.

namespace
{
constexpr int Neutral = 128;
constexpr int Headroom = 256; // an index into `Darkened` is never further below 0 than this
constexpr std::uint32_t GreenScale = 1'000'000;

struct Tables {
    std::array<std::int16_t, 256> redOfV{};
    std::array<std::int16_t, 256> blueOfU{};
    /// In millionths, with half of the headroom each, so that the sum is never negative.
    std::array<std::uint32_t, 256> greenOfU{};
    std::array<std::uint32_t, 256> greenOfV{};
    /// From -Headroom on: cut to a byte, then times 220/256.
    std::array<std::uint8_t, 3 * Headroom> darkened{};

    Tables()
    {
        for (int i = 0; i < 256; ++i) {
            const int chroma = i - Neutral;
            const auto at = std::size_t(i);
            redOfV[at] = std::int16_t(std::floor(1.370705 * chroma));
            blueOfU[at] = std::int16_t(std::floor(1.732446 * chroma));
            greenOfU[at] = std::uint32_t(int(GreenScale) * Headroom / 2 - 337633 * chroma);
            greenOfV[at] = std::uint32_t(int(GreenScale) * Headroom / 2 - 698001 * chroma);
        }
        for (int i = 0; i < int(darkened.size()); ++i)
            darkened[std::size_t(i)] = std::uint8_t(std::clamp(i - Headroom, 0, 255) * 220 / 256);
    }
};

const Tables& tables()
{
    static const Tables shared;
    return shared;
}

/// The part of a pixel that the two of a group share.
class Chroma
{
public:
    Chroma(const Tables& from, std::uint8_t u, std::uint8_t v)
        : _red(from.darkened.data() + Headroom + from.redOfV[v])
        , _green(from.darkened.data() + (from.greenOfU[u] + from.greenOfV[v]) / GreenScale)
        , _blue(from.darkened.data() + Headroom + from.blueOfU[u])
    {
    }

    [[nodiscard]] std::uint8_t red(std::uint8_t y) const { return _red[y]; }
    [[nodiscard]] std::uint8_t green(std::uint8_t y) const { return _green[y]; }
    [[nodiscard]] std::uint8_t blue(std::uint8_t y) const { return _blue[y]; }

private:
    const std::uint8_t* _red;
    const std::uint8_t* _green;
    const std::uint8_t* _blue;
};

void convertGroups(const char* woven, std::size_t groupCount, char* out)
{
    const Tables& from = tables();
    for (std::size_t i = 0; i < groupCount; ++i, woven += 4, out += 6) {
        const auto y0 = std::uint8_t(woven[1]);
        const auto y1 = std::uint8_t(woven[3]);
        const Chroma chroma(from, std::uint8_t(woven[0]), std::uint8_t(woven[2]));
        out[0] = char(chroma.red(y0));
        out[1] = char(chroma.green(y0));
        out[2] = char(chroma.blue(y0));
        out[3] = char(chroma.red(y1));
        out[4] = char(chroma.green(y1));
        out[5] = char(chroma.blue(y1));
    }
}
} // namespace

Ithmb::Rgb Ithmb::yuv2Rbg(std::uint8_t y, std::uint8_t u, std::uint8_t v)
{
    const Chroma chroma(tables(), u, v);
    return {chroma.red(y), chroma.green(y), chroma.blue(y)};
}

QByteArray Ithmb::interlace(ByteView data, std::uint32_t width, std::uint32_t height)
{
    QByteArray woven(qsizetype(data.size()), '\0');
    const std::uint64_t rowLength = 2 * std::uint64_t(width);
    const std::uint64_t rowCount = height;
    const auto copyRow = [&](std::uint64_t from, std::uint64_t to) {
        // Of an odd number of rows the last pair has only one.
        if (to < rowCount && (std::max(from, to) + 1) * rowLength <= data.size())
            std::memcpy(woven.data() + to * rowLength, data.data() + from * rowLength, rowLength);
    };
    if (rowLength == 0)
        return woven;
    // No row beyond the data can be copied, whatever the height claims.
    const std::uint64_t end = std::min(rowCount, data.size() / rowLength);
    for (std::uint64_t row = 0; row < end; row += 2) {
        copyRow(row / 2, row);
        copyRow(row / 2 + rowCount / 2, row + 1);
    }
    return woven;
}

QImage Ithmb::getYuvBmp(ByteView data, std::uint32_t width, std::uint32_t height)
{
    if (!PixelGrid::fits(data, width, height, 16))
        return {};
    const std::size_t pixelCount = std::size_t(width) * height;
    const QByteArray woven = interlace(data.first(2 * pixelCount), width, height);
    QByteArray pixels(qsizetype(3 * pixelCount), '\0'); // an odd last pixel is in no group
    convertGroups(woven.constData(), pixelCount / 2, pixels.data());
    return PixelGrid::packedRgb(pixels, width, height);
}
