#include "Device/PreviewImage.h"

#include "support/Files.h"
#include "support/SamplePicture.h"

#include <QElapsedTimer>
#include <QtEndian>

#include <gtest/gtest.h>

namespace
{
QImage blank(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

/// A JPEG whose header claims another size than its pixels have.
QByteArray claiming(QByteArray jpeg, quint16 width, quint16 height)
{
    const qsizetype frame = jpeg.indexOf("\xff\xc0");
    qToBigEndian(height, jpeg.data() + frame + 5);
    qToBigEndian(width, jpeg.data() + frame + 7);
    return jpeg;
}
/// A chunk of a PNG; nobody looks at the checksum of those that are left out.
QByteArray chunk(const QByteArray& name, const QByteArray& data)
{
    QByteArray bytes(4, 0);
    qToBigEndian(quint32(data.size()), bytes.data());
    return bytes + name + data + QByteArray(4, 0);
}

constexpr qsizetype PngStartWithHeader = 8 + 12 + 13;
} // namespace

TEST(FittedSize, KeepsTheAspectRatio)
{
    EXPECT_EQ(PreviewImage::fittedSize({640, 480}, {100, 100}), QSizeF(100, 75));
    EXPECT_EQ(PreviewImage::fittedSize({480, 640}, {100, 100}), QSizeF(75, 100));
    EXPECT_EQ(PreviewImage::fittedSize({500, 500}, {100, 100}), QSizeF(100, 100));
}

TEST(FittedSize, IsNotRounded)
{
    const QSizeF size = PreviewImage::fittedSize({3000, 2000}, {100, 100});
    EXPECT_DOUBLE_EQ(size.width(), 100);
    EXPECT_NEAR(size.height(), 66.67, 0.005);
}

TEST(FittedSize, ScalesASmallPictureUp)
{
    EXPECT_EQ(PreviewImage::fittedSize({10, 5}, {100, 100}), QSizeF(100, 50));
}

TEST(GetThumbnail, FitsThePictureIntoTheBox)
{
    const QSizeF box(100, 100);
    EXPECT_EQ(PreviewImage::getThumbnail(blank(640, 480), box).size(), QSize(100, 75));
    EXPECT_EQ(PreviewImage::getThumbnail(blank(480, 640), box).size(), QSize(75, 100));
    EXPECT_EQ(PreviewImage::getThumbnail(blank(3000, 2000), box).size(), QSize(100, 67));
    EXPECT_EQ(PreviewImage::getThumbnail(blank(20, 10), box).size(), QSize(100, 50));
    EXPECT_EQ(PreviewImage::getThumbnail(blank(5000, 3), box).size(), QSize(100, 1));
}

TEST(GetThumbnail, OfNoPictureIsNone)
{
    EXPECT_TRUE(PreviewImage::getThumbnail(QImage(), {100, 100}).isNull());
}

TEST(GetThumbnail, KeepsWhatIsTransparent)
{
    QImage clear(200, 200, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    EXPECT_EQ(qAlpha(PreviewImage::getThumbnail(clear, {100, 100}).pixel(50, 50)), 0);
}

TEST(ImageFromRect, KeepsTheLeftColumns)
{
    QImage image = blank(4, 2);
    image.setPixel(0, 1, qRgb(0, 255, 0));
    const QImage part = PreviewImage::imageFromRect(image, {0, 0, 2, 2});
    EXPECT_EQ(part.size(), QSize(2, 2));
    EXPECT_EQ(part.pixel(0, 1), qRgb(0, 255, 0));
    const QImage shifted = PreviewImage::imageFromRect(image, {-1, 0, 3, 3});
    EXPECT_EQ(shifted.pixel(1, 1), qRgb(0, 255, 0));
}

TEST(DecodedPreview, LooksLikeTheWholePictureMadeSmall)
{
    const QByteArray jpeg = SamplePicture::encoded(SamplePicture::draw(5, {1600, 1200}), "jpeg");
    const QImage preview = PreviewImage::decodeThumbnail(jpeg, {100, 100});
    const QImage whole = PreviewImage::getThumbnail(PreviewImage::decode(jpeg), QSizeF(100, 100));
    ASSERT_EQ(preview.size(), QSize(100, 75));
    ASSERT_EQ(whole.size(), preview.size());
    double sum = 0;
    for (int y = 0; y < 75; ++y) {
        for (int x = 0; x < 100; ++x)
            sum += std::abs(qGreen(preview.pixel(x, y)) - qGreen(whole.pixel(x, y)));
    }
    EXPECT_LT(sum / (100 * 75), 3.0);
}

TEST(DecodedPreview, IsMadeOfPngToo)
{
    const QByteArray png = SamplePicture::encoded(SamplePicture::draw(2, {300, 600}), "png");
    EXPECT_EQ(PreviewImage::decodeThumbnail(png, {100, 100}).size(), QSize(50, 100));
}

TEST(DecodedPreview, OfSomethingElseIsNone)
{
    const QByteArray jpeg = SamplePicture::encoded(blank(40, 40), "jpeg");
    for (const QByteArray& file : {QByteArray(), QByteArray("GIF89a"), Files::content(5000),
                                   jpeg.first(100), QByteArray("\x89PNG\r\n\x1a\n")})
        EXPECT_TRUE(PreviewImage::decodeThumbnail(file, {100, 100}).isNull());
}

TEST(DecodedPreview, OfABombIsNone)
{
    const QByteArray jpeg = SamplePicture::encoded(blank(64, 64), "jpeg");
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(PreviewImage::decode(claiming(jpeg, 65000, 65000)).isNull());
    EXPECT_TRUE(PreviewImage::decodeThumbnail(claiming(jpeg, 65000, 65000), {100, 100}).isNull());
    QByteArray png = SamplePicture::encoded(blank(64, 64), "png");
    qToBigEndian(quint32(0x7fffffff), png.data() + 16);
    qToBigEndian(quint32(0x7fffffff), png.data() + 20);
    EXPECT_TRUE(PreviewImage::decodeThumbnail(png, {100, 100}).isNull());
    EXPECT_LT(timer.elapsed(), 2000);
}

TEST(DecodedPreview, OfEndlessScansIsNone)
{
    // Each scan would make the decoder walk the whole claimed picture once more.
    QByteArray jpeg = claiming(SamplePicture::encoded(blank(64, 64), "jpeg"), 9000, 9000);
    for (int i = 0; i < 200; ++i)
        jpeg += QByteArray("\xff\xda\x00\x08\x01\x01\x00\x00\x3f\x00", 10);
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(PreviewImage::decodeThumbnail(jpeg, {100, 100}).isNull());
    EXPECT_LT(timer.elapsed(), 2000);
}

TEST(DecodedPreview, OfAPngLooksAtNoCompressedTexts)
{
    // A megabyte of these took gigabytes.
    const QByteArray text = qCompress(QByteArray(4 << 20, 'x'), 9).mid(4);
    QByteArray texts;
    for (int i = 0; i < 200; ++i)
        texts += chunk("zTXt", QByteArray("key" + QByteArray::number(i)) + QByteArray(2, 0) + text);
    texts += chunk("iCCP", QByteArray("profile") + QByteArray(2, 0) + text);
    const QByteArray whole = SamplePicture::encoded(SamplePicture::draw(3, {60, 40}), "png");
    QByteArray hostile = whole;
    hostile.insert(PngStartWithHeader, texts);
    QElapsedTimer timer;
    timer.start();
    const QImage picture = PreviewImage::decode(hostile);
    EXPECT_LT(timer.elapsed(), 2000);
    EXPECT_TRUE(picture.textKeys().isEmpty());
    EXPECT_EQ(picture, PreviewImage::decode(whole));
    EXPECT_FALSE(picture.isNull());
}

TEST(DecodedPreview, OfAPngKeepsItsPaletteAndWhatIsTransparent)
{
    QImage image(4, 4, QImage::Format_Indexed8);
    image.setColorTable({qRgba(0, 0, 0, 0), qRgb(200, 10, 10)});
    image.fill(1);
    image.setPixel(0, 0, 0);
    const QImage read = PreviewImage::decode(SamplePicture::encoded(image, "png"));
    EXPECT_EQ(qAlpha(read.pixel(0, 0)), 0);
    EXPECT_EQ(read.pixel(1, 1), qRgb(200, 10, 10));
}

TEST(DecodedPreview, OfAPngThatIsCutAnywhereDoesNoHarm)
{
    const QByteArray png = SamplePicture::encoded(SamplePicture::draw(3, {30, 20}), "png");
    for (qsizetype cut = 0; cut < png.size(); ++cut)
        (void)PreviewImage::decode(png.first(cut));
}
