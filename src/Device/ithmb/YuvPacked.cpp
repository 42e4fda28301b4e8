#include "Device/Ithmb.h"
#include "Device/ithmb/PixelGrid.h"

#include <algorithm>
#include <array>
#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

constexpr std::size_t BytesOfGroup = 4;     // U Y V Y
constexpr std::size_t BytesOfTwoPixels = 6; // what a group becomes

void convertGroup(const Tables& from, const std::byte* group, uchar* out)
{
    const auto y0 = std::uint8_t(group[1]);
    const auto y1 = std::uint8_t(group[3]);
    const Chroma chroma(from, std::uint8_t(group[0]), std::uint8_t(group[2]));
    out[0] = chroma.red(y0);
    out[1] = chroma.green(y0);
    out[2] = chroma.blue(y0);
    out[3] = chroma.red(y1);
    out[4] = chroma.green(y1);
    out[5] = chroma.blue(y1);
}

#ifdef __SSE2__
constexpr std::size_t GroupsAtOnce = 4;

/// What the chroma adds to the luma of eight pixels, from four groups.
struct Offsets {
    __m128i red;
    __m128i green;
    __m128i blue;

    Offsets(const Tables& from, const std::byte* groups)
    {
        alignas(16) std::array<std::uint32_t, GroupsAtOnce> r{};
        alignas(16) std::array<std::uint32_t, GroupsAtOnce> g{};
        alignas(16) std::array<std::uint32_t, GroupsAtOnce> b{};
        for (std::size_t i = 0; i < GroupsAtOnce; ++i) {
            const auto u = std::uint8_t(groups[i * BytesOfGroup]);
            const auto v = std::uint8_t(groups[i * BytesOfGroup + 2]);
            r[i] = std::uint16_t(from.redOfV[v]);
            g[i] = std::uint16_t((from.greenOfU[u] + from.greenOfV[v]) / GreenScale - Headroom);
            b[i] = std::uint16_t(from.blueOfU[u]);
        }
        red = twice(r);
        green = twice(g);
        blue = twice(b);
    }

    /// Each number for both pixels of its group.
    static __m128i twice(const std::array<std::uint32_t, GroupsAtOnce>& numbers)
    {
        const __m128i once =
            _mm_set_epi32(int(numbers[3]), int(numbers[2]), int(numbers[1]), int(numbers[0]));
        return _mm_or_si128(once, _mm_slli_epi32(once, 16));
    }
};

/// Eight sums, cut to bytes and darkened.
__m128i darkened(__m128i luma, __m128i offset)
{
    const __m128i sum = _mm_add_epi16(luma, offset);
    const __m128i cut = _mm_min_epi16(_mm_max_epi16(sum, _mm_setzero_si128()), _mm_set1_epi16(255));
    return _mm_srli_epi16(_mm_mullo_epi16(cut, _mm_set1_epi16(220)), 8);
}

/// Four pixels of four bytes each, the last one of each 0, as two times six bytes. Writes two
/// bytes more than that.
void storeFour(__m128i pixels, uchar* out)
{
    const __m128i first = _mm_and_si128(pixels, _mm_set1_epi64x(0x0000000000ffffff));
    const __m128i second =
        _mm_and_si128(_mm_srli_epi64(pixels, 8), _mm_set1_epi64x(0x0000ffffff000000));
    const __m128i joined = _mm_or_si128(first, second);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), joined);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + BytesOfTwoPixels),
                     _mm_unpackhi_epi64(joined, joined));
}

void convertFourGroups(const Tables& from, const std::byte* groups, uchar* out)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(groups));
    const __m128i luma = _mm_srli_epi16(bytes, 8);
    const Offsets offsets(from, groups);
    const __m128i redGreen =
        _mm_or_si128(darkened(luma, offsets.red), _mm_slli_epi16(darkened(luma, offsets.green), 8));
    const __m128i blue = darkened(luma, offsets.blue);
    storeFour(_mm_unpacklo_epi16(redGreen, blue), out);
    storeFour(_mm_unpackhi_epi16(redGreen, blue), out + 2 * BytesOfTwoPixels);
}
#endif

void convertGroups(const std::byte* groups, std::size_t count, uchar* out)
{
    const Tables& from = tables();
    std::size_t i = 0;
#ifdef __SSE2__
    // A group more has to follow: its pixels then replace the two bytes that were too many.
    for (; i + GroupsAtOnce < count; i += GroupsAtOnce)
        convertFourGroups(from, groups + i * BytesOfGroup, out + i * BytesOfTwoPixels);
#endif
    for (; i < count; ++i)
        convertGroup(from, groups + i * BytesOfGroup, out + i * BytesOfTwoPixels);
}

/// Where a row of the picture stands in the data: its even rows come first, then its odd ones.
std::uint64_t storedRow(std::uint64_t row, std::uint64_t rowCount)
{
    return row / 2 + row % 2 * (rowCount / 2);
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
    const std::uint64_t rowCount = rowLength > 0 ? height : 0;
    for (std::uint64_t row = 0; row < rowCount; ++row) {
        const std::uint64_t stored = storedRow(row, rowCount);
        // No row beyond the data can be copied, whatever the height claims.
        if ((row + 1) * rowLength > data.size())
            break;
        if ((stored + 1) * rowLength <= data.size())
            std::memcpy(woven.data() + row * rowLength, data.data() + stored * rowLength,
                        rowLength);
    }
    return woven;
}

QImage Ithmb::getYuvBmp(ByteView data, std::uint32_t width, std::uint32_t height)
{
    if (!PixelGrid::fits(data, width, height, 16))
        return {};
    const std::size_t pixelCount = std::size_t(width) * height;
    if (width % 2 == 1) { // groups run on from row to row
        const QByteArray woven = interlace(data.first(2 * pixelCount), width, height);
        QByteArray pixels(qsizetype(3 * pixelCount), '\0'); // an odd last pixel is in no group
        convertGroups(std::as_bytes(std::span(woven)).data(), pixelCount / 2,
                      reinterpret_cast<uchar*>(pixels.data()));
        return PixelGrid::packedRgb(pixels, width, height);
    }
    // The common case needs no woven copy.
    QImage image(int(width), int(height), QImage::Format_RGB888);
    if (image.isNull())
        return image;
    for (std::uint32_t row = 0; row < height; ++row)
        convertGroups(data.data() + storedRow(row, height) * 2 * width, width / 2,
                      image.scanLine(int(row)));
    return image;
}
