#include "Device/Ithmb.h"
#include "support/Files.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
ByteView viewOf(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray result;
    for (const int value : values)
        result += char(value);
    return result;
}

/// R, G, B and A of a pixel as they stand in memory.
std::vector<int> rgba(const QImage& image, int x, int y)
{
    const uchar* pixel = image.constScanLine(y) + x * image.depth() / 8;
    return {pixel, pixel + image.depth() / 8};
}

std::vector<int> rgba(std::uint32_t word)
{
    return {int(word & 0xff), int(word >> 8 & 0xff), int(word >> 16 & 0xff), int(word >> 24)};
}

/// The formulas of the two YUV formats, written down once more and as plainly as they can be.
struct Formula {
    static int cut(double value)
    {
        const double whole = std::trunc(value);
        return whole < 0 ? 0 : whole > 255 ? 255 : int(whole);
    }
    static int darkened(double value) { return cut(value) * 220 / 256; }

    static double packedRed(double y, double v) { return y + 1.370705 * (v - 128); }
    static double packedGreen(double y, double u, double v)
    {
        const double withoutV = y - 0.698001 * (v - 128);
        return withoutV - 0.337633 * (u - 128);
    }
    static double packedBlue(double y, double u) { return y + 1.732446 * (u - 128); }

    static double planarRed(double y, double v) { return 1.164 * (y - 16) + 1.596 * (v - 128); }
    static double planarGreen(double y, double u, double v)
    {
        const double withoutV = 1.164 * (y - 16) - 0.813 * (v - 128);
        return withoutV - 0.391 * (u - 128);
    }
    static double planarBlue(double y, double u) { return 1.164 * (y - 16) + 2.018 * (u - 128); }
};
} // namespace

TEST(Rgb565, WidensByRepeatingTheTopBits)
{
    EXPECT_EQ(rgba(Ithmb::rgb565ToRgba(0xFFFF)), (std::vector<int>{255, 255, 255, 255}));
    EXPECT_EQ(rgba(Ithmb::rgb565ToRgba(0xF800)), (std::vector<int>{255, 0, 0, 255}));
    EXPECT_EQ(rgba(Ithmb::rgb565ToRgba(0x07E0)), (std::vector<int>{0, 255, 0, 255}));
    EXPECT_EQ(rgba(Ithmb::rgb565ToRgba(0x001F)), (std::vector<int>{0, 0, 255, 255}));
    EXPECT_EQ(rgba(Ithmb::rgb565ToRgba(0x8410)), (std::vector<int>{132, 130, 132, 255}));
}

TEST(Rgb565, GivesEveryPixelThereIs)
{
    QByteArray all;
    for (int pixel = 0; pixel < 65536; ++pixel)
        all += bytes({pixel & 0xff, pixel >> 8});
    const QImage image = Ithmb::getRgb565Bmp(viewOf(all), 256, 256);
    ASSERT_EQ(image.format(), QImage::Format_RGBA8888);
    for (int pixel = 0; pixel < 65536; ++pixel) {
        const int r = pixel / 2048;
        const int g = pixel / 32 % 64;
        const int b = pixel % 32;
        ASSERT_EQ(rgba(image, pixel % 256, pixel / 256),
                  (std::vector<int>{r * 8 + r / 4, g * 4 + g / 16, b * 8 + b / 4, 255}));
        ASSERT_EQ(rgba(Ithmb::rgb565ToRgba(std::uint16_t(pixel))),
                  rgba(image, pixel % 256, pixel / 256));
    }
}

TEST(Rgb555, IgnoresTheTopBit)
{
    EXPECT_EQ(rgba(Ithmb::rgb555ToRgba(0x8000)), (std::vector<int>{0, 0, 0, 255}));
    EXPECT_EQ(rgba(Ithmb::rgb555ToRgba(0x7FFF)), (std::vector<int>{255, 255, 255, 255}));
}

TEST(Rgb555, GivesEveryPixelThereIs)
{
    QByteArray all;
    for (int pixel = 0; pixel < 65536; ++pixel)
        all += bytes({pixel & 0xff, pixel >> 8});
    const QImage image = Ithmb::getRgb555Bmp(viewOf(all), 256, 256);
    for (int pixel = 0; pixel < 65536; ++pixel) {
        const int r = pixel / 1024 % 32;
        const int g = pixel / 32 % 32;
        const int b = pixel % 32;
        ASSERT_EQ(rgba(image, pixel % 256, pixel / 256),
                  (std::vector<int>{r * 8 + r / 4, g * 8 + g / 4, b * 8 + b / 4, 255}));
        ASSERT_EQ(rgba(Ithmb::rgb555ToRgba(std::uint16_t(pixel))),
                  rgba(image, pixel % 256, pixel / 256));
    }
}

TEST(Bgr32, TakesBlueFromTheLowByte)
{
    EXPECT_EQ(rgba(Ithmb::bgr32ToRgba(0x00112233)), (std::vector<int>{0x11, 0x22, 0x33, 255}));
    const QImage image = Ithmb::getBgr32Bmp(
        viewOf(bytes({1, 2, 3, 99, 4, 5, 6, 0, 7, 8, 9, 255, 10, 11, 12, 1, 13, 14, 15, 0})), 5, 1);
    EXPECT_EQ(rgba(image, 0, 0), (std::vector<int>{3, 2, 1, 255}));
    EXPECT_EQ(rgba(image, 4, 0), (std::vector<int>{15, 14, 13, 255}));
}

TEST(Limit8Bit, TruncatesAndCutsToAByte)
{
    EXPECT_EQ(Ithmb::limit8Bit(254.99), 254);
    EXPECT_EQ(Ithmb::limit8Bit(-3.0), 0);
    EXPECT_EQ(Ithmb::limit8Bit(300.0), 255);
    EXPECT_EQ(Ithmb::limit8Bit(255.0), 255);
    EXPECT_EQ(Ithmb::limit8Bit(0.0), 0);
    EXPECT_EQ(Ithmb::limit8Bit(0.99), 0);
    EXPECT_EQ(Ithmb::limit8Bit(1.0), 1);
}

TEST(PackedYuv, DarkensWhiteTo219AndLeavesBlack)
{
    const QImage image = Ithmb::getYuvBmp(viewOf(bytes({128, 255, 128, 0})), 2, 1);
    EXPECT_EQ(image.format(), QImage::Format_RGB888);
    EXPECT_EQ(rgba(image, 0, 0), (std::vector<int>{219, 219, 219}));
    EXPECT_EQ(rgba(image, 1, 0), (std::vector<int>{0, 0, 0}));
}

TEST(PackedYuv, HasRedFirstAndBlueLast)
{
    // A strong V makes red, a strong U blue.
    const QImage image =
        Ithmb::getYuvBmp(viewOf(bytes({128, 100, 255, 100, 255, 100, 128, 100})), 2, 2);
    EXPECT_EQ(rgba(image, 0, 0), (std::vector<int>{219, 9, 85}));
    EXPECT_EQ(rgba(image, 0, 1), (std::vector<int>{85, 48, 219}));
}

TEST(PackedYuv, EqualsTheFormulaForEveryPixelThereIs)
{
    for (int u = 0; u < 256; ++u) {
        for (int v = 0; v < 256; ++v) {
            for (int y = 0; y < 256; ++y) {
                const Ithmb::Rgb pixel =
                    Ithmb::yuv2Rbg(std::uint8_t(y), std::uint8_t(u), std::uint8_t(v));
                const bool equal =
                    pixel.red == Formula::darkened(Formula::packedRed(y, v)) &&
                    pixel.green == Formula::darkened(Formula::packedGreen(y, u, v)) &&
                    pixel.blue == Formula::darkened(Formula::packedBlue(y, u));
                ASSERT_TRUE(equal) << y << ' ' << u << ' ' << v;
            }
        }
    }
}

namespace
{
/// Compares a packed picture of an even width, and of random bytes, with the rows and groups that
/// it is stored in.
void expectPacked(int width, int height)
{
    const QByteArray data = Files::content(width * height * 2);
    const QImage image = Ithmb::getYuvBmp(viewOf(data), quint32(width), quint32(height));
    ASSERT_EQ(image.size(), QSize(width, height));
    for (int row = 0; row < height; ++row) {
        const int stored = row / 2 + row % 2 * (height / 2);
        for (int x = 0; x < width; ++x) {
            const char* group = data.constData() + stored * width * 2 + x / 2 * 4;
            const auto pixel = Ithmb::yuv2Rbg(std::uint8_t(group[1 + x % 2 * 2]),
                                              std::uint8_t(group[0]), std::uint8_t(group[2]));
            ASSERT_EQ(rgba(image, x, row), (std::vector<int>{pixel.red, pixel.green, pixel.blue}));
        }
    }
}
} // namespace

TEST(PackedYuv, ConvertsBitmapsAsItConvertsPixels)
{
    expectPacked(64, 30);
    expectPacked(720, 480);
}

TEST(PackedYuv, WeavesAnOddNumberOfRows)
{
    expectPacked(64, 31);
    expectPacked(2, 3);
    expectPacked(10, 1);
}

TEST(PackedYuv, ConvertsEveryPixelThereIsInBitmapsToo)
{
    // One bitmap for each U, one row for each V, and every Y in each row.
    for (int u = 0; u < 256; ++u) {
        QByteArray data;
        data.reserve(256 * 256 * 2);
        for (const int field : {0, 1}) {
            for (int v = field; v < 256; v += 2) {
                for (int y = 0; y < 256; y += 2)
                    data += bytes({u, y, v, y + 1});
            }
        }
        const QImage image = Ithmb::getYuvBmp(viewOf(data), 256, 256);
        for (int v = 0; v < 256; ++v) {
            const uchar* row = image.constScanLine(v);
            for (int y = 0; y < 256; ++y, row += 3) {
                const Ithmb::Rgb pixel =
                    Ithmb::yuv2Rbg(std::uint8_t(y), std::uint8_t(u), std::uint8_t(v));
                const bool equal =
                    row[0] == pixel.red && row[1] == pixel.green && row[2] == pixel.blue;
                ASSERT_TRUE(equal) << y << ' ' << u << ' ' << v;
            }
        }
    }
}

TEST(Interlace, TakesRowsFromTheTwoFieldsInTurn)
{
    EXPECT_EQ(Ithmb::interlace(viewOf("aabbccddeeff"), 1, 6), "aaddbbeeccff");
    EXPECT_EQ(Ithmb::interlace(viewOf("aaaabbbb"), 2, 2), "aaaabbbb");
}

TEST(Interlace, NeverWritesPastAnOddHeight)
{
    EXPECT_EQ(Ithmb::interlace(viewOf("aabbccddee"), 1, 5), "aaccbbddcc");
    EXPECT_EQ(Ithmb::interlace(viewOf("aabbccddeeXX"), 1, 5), QByteArray("aaccbbddcc\0\0", 12));
    EXPECT_EQ(Ithmb::interlace(viewOf("aa"), 1, 1), "aa");
}

TEST(Interlace, LeavesZerosWhereTheDataEndsEarly)
{
    EXPECT_EQ(Ithmb::interlace(viewOf("aabb"), 1, 6), QByteArray("aa\0\0", 4));
    EXPECT_EQ(Ithmb::interlace(viewOf("aab"), 0, 4), QByteArray(3, '\0'));
    EXPECT_EQ(Ithmb::interlace(viewOf("aab"), UINT32_MAX, UINT32_MAX), QByteArray(3, '\0'));
}

TEST(PackedYuv, TakesOddGridsAsTheyCome)
{
    // Groups run on from row to row; the last pixel of an odd count is in none.
    const QByteArray data = Files::content(3 * 3 * 2);
    const QImage image = Ithmb::getYuvBmp(viewOf(data), 3, 3);
    ASSERT_EQ(image.size(), QSize(3, 3));
    const QByteArray woven = Ithmb::interlace(viewOf(data), 3, 3);
    const auto pixel =
        Ithmb::yuv2Rbg(std::uint8_t(woven[7]), std::uint8_t(woven[4]), std::uint8_t(woven[6]));
    EXPECT_EQ(rgba(image, 0, 1), (std::vector<int>{pixel.red, pixel.green, pixel.blue}));
    EXPECT_EQ(rgba(image, 2, 2), (std::vector<int>{0, 0, 0}));
}

TEST(PlanarYuv, GivesBlackFor16And254For235)
{
    QByteArray data(720 * 2, char(16));
    data[1] = char(235);
    data += QByteArray(720, char(128));
    const QImage image = Ithmb::getYuv420Bmp(viewOf(data), 720, 2);
    EXPECT_EQ(image.format(), QImage::Format_RGB888);
    EXPECT_EQ(rgba(image, 0, 0), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(rgba(image, 1, 0), (std::vector<int>{254, 254, 254}));
}

TEST(PlanarYuv, EqualsTheFormulaForEveryPixelThereIs)
{
    for (int u = 0; u < 256; ++u) {
        for (int v = 0; v < 256; ++v) {
            for (int y = 0; y < 256; ++y) {
                const Ithmb::Rgb pixel =
                    Ithmb::yuv420ToRgb(std::uint8_t(y), std::uint8_t(u), std::uint8_t(v));
                const bool equal = pixel.red == Formula::cut(Formula::planarRed(y, v)) &&
                                   pixel.green == Formula::cut(Formula::planarGreen(y, u, v)) &&
                                   pixel.blue == Formula::cut(Formula::planarBlue(y, u));
                ASSERT_TRUE(equal) << y << ' ' << u << ' ' << v;
            }
        }
    }
}

namespace
{
/// Compares a planar picture with the fixed rows of 720 that the format counts in.
void expectPlanar(int width, int height)
{
    const int count = width * height;
    const QByteArray data = Files::content(count * 2);
    const QImage image = Ithmb::getYuv420Bmp(viewOf(data), quint32(width), quint32(height));
    ASSERT_EQ(image.size(), QSize(width, height));
    for (int i = 0; i < count; ++i) {
        const int chroma = i / 720 / 2 * 360 + i % 720 / 2;
        const auto pixel =
            Ithmb::yuv420ToRgb(std::uint8_t(data[i]), std::uint8_t(data[count + chroma]),
                               std::uint8_t(data[count + count / 4 + chroma]));
        ASSERT_EQ(rgba(image, i % width, i / width),
                  (std::vector<int>{pixel.red, pixel.green, pixel.blue}))
            << i;
    }
}
} // namespace

TEST(PlanarYuv, CountsRowsOf720WhateverTheWidth)
{
    expectPlanar(720, 4);
    expectPlanar(640, 7);
    expectPlanar(721, 5);
    expectPlanar(101, 33);
}

TEST(PlanarYuv, NeedsTheChromaOfItsLastRows)
{
    const QByteArray data = Files::content(720 * 4 * 3 / 2);
    EXPECT_FALSE(Ithmb::getYuv420Bmp(viewOf(data), 720, 4).isNull());
    EXPECT_TRUE(Ithmb::getYuv420Bmp(viewOf(data.chopped(1)), 720, 4).isNull());
    EXPECT_TRUE(Ithmb::getYuv420Bmp(viewOf(data.first(720 * 4)), 720, 4).isNull());
}

TEST(PixelFormats, GiveNothingForABufferShorterThanTheGrid)
{
    const QByteArray data = Files::content(64);
    for (const auto decode : {&Ithmb::getRgb565Bmp, &Ithmb::getRgb555Bmp, &Ithmb::getBgr32Bmp,
                              &Ithmb::getYuvBmp, &Ithmb::getYuv420Bmp}) {
        EXPECT_TRUE(decode(viewOf(data), 65535, 65535).isNull());
        EXPECT_TRUE(decode(viewOf(data), UINT32_MAX, UINT32_MAX).isNull());
        EXPECT_TRUE(decode(viewOf(data), 33, 2).isNull());
        EXPECT_TRUE(decode(viewOf(data), 0, 0).isNull());
        EXPECT_TRUE(decode(viewOf(data), 8, 0).isNull());
        EXPECT_TRUE(decode(ByteView(), 1, 1).isNull());
        EXPECT_FALSE(decode(viewOf(data), 4, 4).isNull());
    }
}
