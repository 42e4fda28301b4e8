#include "Device/Thumbnail.h"

#include <gtest/gtest.h>

namespace
{
Thumbnail record(std::uint32_t kind, std::uint32_t imageSize)
{
    Thumbnail thumbnail;
    thumbnail.correlationId = kind;
    thumbnail.imageSize = imageSize;
    thumbnail.imageWidth = 120;
    thumbnail.horizontalPadding = 8;
    thumbnail.imageHeight = 120;
    return thumbnail;
}

struct GridCase {
    const char* name;
    std::uint32_t kind;
    std::uint32_t width;
    std::uint32_t height;
};
void PrintTo(const GridCase& grid, std::ostream* out)
{
    *out << grid.name;
}

class UsualGrid : public testing::TestWithParam<GridCase>
{
};
} // namespace

TEST(ThumbnailSize, StaysZeroWithoutAVisibleWidthOrHeight)
{
    for (const bool noWidth : {true, false}) {
        Thumbnail thumbnail = record(1023, 30720);
        (noWidth ? thumbnail.imageWidth : thumbnail.imageHeight) = 0;
        thumbnail.adjustSize();
        EXPECT_EQ(thumbnail.width, 0U);
        EXPECT_EQ(thumbnail.height, 0U);
    }
}

TEST(ThumbnailSize, IsThePaddedSizeWhereTheBytesAreAMultipleOfItsArea)
{
    Thumbnail thumbnail = record(1023, 30720);
    thumbnail.adjustSize();
    EXPECT_EQ(thumbnail.width, 128U);
    EXPECT_EQ(thumbnail.height, 120U);
}

TEST(ThumbnailSize, AsksForTheAreaAndNotForItsBytes)
{
    Thumbnail thumbnail = record(1023, 128 * 120); // one byte a pixel, which no format has
    thumbnail.adjustSize();
    EXPECT_EQ(thumbnail.width, 128U);
    thumbnail = record(1023, 0);
    thumbnail.adjustSize();
    EXPECT_EQ(thumbnail.width, 128U);
}

TEST(ThumbnailSize, CountsThePaddingAtTheBottom)
{
    Thumbnail thumbnail = record(1023, 128 * 130 * 2);
    thumbnail.verticalPadding = 10;
    thumbnail.adjustSize();
    EXPECT_EQ(thumbnail.width, 128U);
    EXPECT_EQ(thumbnail.height, 130U);
}

TEST(ThumbnailSize, SurvivesAnAreaThatWrapsAround)
{
    Thumbnail thumbnail = record(4005, 7);
    thumbnail.imageWidth = thumbnail.imageHeight = 65535;
    thumbnail.horizontalPadding = thumbnail.verticalPadding = 1; // 65536 x 65536 is 0 in 32 bits
    thumbnail.adjustSize();
    EXPECT_EQ(thumbnail.width, 0U);
}

TEST_P(UsualGrid, StandsInForBytesThatFitNoGrid)
{
    Thumbnail thumbnail = record(GetParam().kind, 30721);
    thumbnail.adjustSize();
    EXPECT_EQ(thumbnail.width, GetParam().width);
    EXPECT_EQ(thumbnail.height, GetParam().height);
}

INSTANTIATE_TEST_SUITE_P(
    , UsualGrid,
    testing::Values(GridCase{"K1019", 1019, 720, 480}, GridCase{"K1023", 1023, 176, 132},
                    GridCase{"K1024", 1024, 320, 240}, GridCase{"K1064", 1064, 320, 240},
                    GridCase{"K1067", 1067, 720, 480}, GridCase{"K3008", 3008, 640, 480},
                    GridCase{"K3009", 3009, 160, 128}, GridCase{"K3141", 3141, 150, 150},
                    GridCase{"K4040", 4040, 166, 166}, GridCase{"K1081HasNone", 1081, 0, 0},
                    GridCase{"K4005HasNone", 4005, 0, 0}, GridCase{"UnknownHasNone", 77, 0, 0}),
    [](const auto& c) { return std::string(c.param.name); });
