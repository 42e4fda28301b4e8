#include "Device/Ithmb.h"

#include "Device/Thumbnail.h"
#include "support/Files.h"
#include "support/IthmbWriter.h"
#include "support/MemoryDevice.h"
#include "support/SamplePicture.h"

#include <gtest/gtest.h>

namespace
{
const QString File = "/Volumes/P/Photos/Thumbs/F.ithmb";

Thumbnail thumbnail(std::uint32_t kind, std::uint32_t size, std::uint32_t width,
                    std::uint32_t height)
{
    Thumbnail result;
    result.filename = File;
    result.correlationId = kind;
    result.imageSize = size;
    result.width = width;
    result.height = height;
    return result;
}

/// The largest difference of a component between two pictures.
int difference(const QImage& one, const QImage& other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)),
                                std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return largest;
}

class Kind : public testing::TestWithParam<std::pair<std::uint32_t, int>>
{
};
} // namespace

TEST_P(Kind, DecodesWhatWasStored)
{
    const auto [kind, tolerance] = GetParam();
    const QImage picture = SamplePicture::draw(3, IthmbWriter::gridOf(kind));
    const QByteArray pixels = IthmbWriter::rendition(kind, picture);
    MemoryDevice device;
    device.put(File, "before" + pixels + "after");
    Thumbnail record = thumbnail(kind, quint32(pixels.size()), quint32(picture.width()),
                                 quint32(picture.height()));
    record.thumbnailOffset = 6;
    const QImage image = Ithmb(device).convert(record);
    ASSERT_EQ(image.size(), picture.size());
    QImage expected = picture;
    if (kind == 1019) { // darkened to 220/256
        for (int y = 0; y < expected.height(); ++y) {
            for (int x = 0; x < expected.width(); ++x) {
                const QRgb pixel = expected.pixel(x, y);
                expected.setPixel(x, y,
                                  qRgb(qRed(pixel) * 220 / 256, qGreen(pixel) * 220 / 256,
                                       qBlue(pixel) * 220 / 256));
            }
        }
    }
    // Chroma of half the width blurs the edges of the YUV formats; elsewhere few bits are lost.
    if (tolerance > 0) {
        EXPECT_LE(difference(image, expected), tolerance);
    }
    const QImage blurred = image.scaled(40, 30, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage wanted = expected.scaled(40, 30, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_LE(difference(blurred, wanted), 16);
}

INSTANTIATE_TEST_SUITE_P(, Kind,
                         testing::Values(std::pair(1019U, 0), std::pair(1023U, 8),
                                         std::pair(1024U, 8), std::pair(1064U, 1),
                                         std::pair(1067U, 0), std::pair(1081U, 0),
                                         std::pair(3008U, 8), std::pair(3009U, 8),
                                         std::pair(3141U, 8), std::pair(4005U, 0),
                                         std::pair(4006U, 0), std::pair(4035U, 0),
                                         std::pair(4040U, 8)),
                         [](const auto& c) { return std::to_string(c.param.first); });

TEST(Rendition, OfAnUnknownKindIsNothing)
{
    MemoryDevice device;
    device.put(File, Files::content(1000));
    for (const std::uint32_t kind : {0U, 1U, 1000U, 3142U, UINT32_MAX})
        EXPECT_TRUE(Ithmb(device).convert(thumbnail(kind, 800, 20, 20)).isNull());
}

TEST(Rendition, WithoutBytesIsNothing)
{
    MemoryDevice device;
    device.put(File, Files::content(1000));
    const Ithmb decoder(device);
    EXPECT_TRUE(decoder.convert(thumbnail(1023, 0, 0, 0)).isNull());
    EXPECT_TRUE(decoder.convert(thumbnail(1023, 800, 0, 0)).isNull());
    Thumbnail past = thumbnail(1023, 800, 20, 20);
    past.thumbnailOffset = 0xfffffff0;
    EXPECT_TRUE(decoder.convert(past).isNull());
    Thumbnail gone = thumbnail(1023, 800, 20, 20);
    gone.filename = "/Volumes/P/none.ithmb";
    EXPECT_TRUE(decoder.convert(gone).isNull());
    gone.filename = QString();
    EXPECT_TRUE(decoder.convert(gone).isNull());
    EXPECT_TRUE(decoder.convert(thumbnail(4005, UINT32_MAX, 20, 20)).isNull());
}

TEST(Rendition, WithPaddedRowsNeverReadsPastTheRowsItKept)
{
    MemoryDevice device;
    device.put(File, Files::content(60000));
    const Ithmb decoder(device);
    EXPECT_FALSE(decoder.convert(thumbnail(3141, 48000, 150, 150)).isNull());
    EXPECT_TRUE(decoder.convert(thumbnail(3141, 48000, 160, 150)).isNull());
    EXPECT_FALSE(decoder.convert(thumbnail(4040, 55776, 166, 166)).isNull());
    EXPECT_TRUE(decoder.convert(thumbnail(4040, 55776, 168, 166)).isNull());
    // All but the spare end of the last row has to be there.
    EXPECT_FALSE(decoder.convert(thumbnail(3141, 47980, 150, 150)).isNull());
    EXPECT_TRUE(decoder.convert(thumbnail(3141, 47979, 150, 150)).isNull());
}

TEST(Rendition, OfABrokenJpegIsNothing)
{
    MemoryDevice device;
    const QByteArray jpeg = SamplePicture::encoded(SamplePicture::draw(1, {64, 48}), "jpeg");
    for (const QByteArray& broken : {jpeg.first(20), QByteArray("\xff\xd8\xff\xff"),
                                     QByteArray("GIF89a"), Files::content(4000)}) {
        device.put(File, broken);
        EXPECT_TRUE(
            Ithmb(device).convert(thumbnail(4005, quint32(broken.size()), 64, 48)).isNull());
    }
}

namespace
{
class PhoneFile : public testing::TestWithParam<int>
{
protected:
    [[nodiscard]] static QString path()
    {
        return QString("/PhotoData/Thumbnails/%1x%1.ithmb").arg(GetParam());
    }
};
} // namespace

TEST_P(PhoneFile, HasItsPicturesInSlots)
{
    const QSize size(GetParam(), GetParam());
    QByteArray file;
    for (int i = 0; i < 3; ++i)
        file += IthmbWriter::fixedRecord(GetParam(), SamplePicture::draw(i, size));
    MemoryDevice device("/");
    device.put(path(), file);
    const Ithmb decoder(device);
    for (int i = 0; i < 3; ++i) {
        const QImage image = decoder.convert(path(), i);
        ASSERT_EQ(image.size(), size);
        EXPECT_LE(difference(image, SamplePicture::draw(i, size)), 8);
    }
    EXPECT_TRUE(decoder.convert(path(), 3).isNull());
    EXPECT_TRUE(decoder.convert(path(), -1).isNull());
    EXPECT_TRUE(decoder.convert(path(), INT32_MAX).isNull());
}

INSTANTIATE_TEST_SUITE_P(, PhoneFile, testing::Values(120, 158, 166),
                         [](const auto& c) { return std::to_string(c.param); });

TEST(PhoneFileName, DecidesWhetherThereIsAPicture)
{
    MemoryDevice device("/");
    for (const char* name : {"/a/167x167.ithmb", "/a/166X166.ithmb", "/a/166x166.ithmb.bak"}) {
        device.put(name, Files::content(60000));
        EXPECT_TRUE(Ithmb(device).convert(QString::fromLatin1(name), 0).isNull()) << name;
    }
    device.put("/a/166x166.ithmb", Files::content(60000));
    EXPECT_FALSE(Ithmb(device).convert(QStringLiteral("/a/166x166.ithmb"), 0).isNull());
}
