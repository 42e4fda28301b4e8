#include "Device/PreviewImage.h"

#include <QBuffer>
#include <QByteArrayList>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>

namespace
{
/// Larger than the panoramas of any phone. A file of a few bytes can claim far more.
constexpr qint64 MostPixels = 100'000'000;
/// A JPEG is decoded once for each of its scans. Cameras write one, picture programs a dozen; a
/// file made to keep a decoder busy has thousands.
constexpr qint64 MostScannedPixels = 16 * MostPixels;
/// For one decoded picture, in MiB.
constexpr int MostDecodedMemory = 400;

const QByteArray JpegStart("\xff\xd8");
const QByteArray JpegScanStart("\xff\xda");
const QByteArray PngStart("\x89PNG");

/// Only the two formats that these devices keep; each decoder more would be one more to trust.
QByteArray formatOf(const QByteArray& file)
{
    if (file.startsWith(JpegStart))
        return "jpeg";
    return file.startsWith(PngStart) ? "png" : "";
}

bool isWithinLimits(const QByteArray& file, const QSize& size)
{
    if (size.isEmpty())
        return false;
    const qint64 pixels = qint64(size.width()) * size.height();
    if (pixels > MostPixels)
        return false;
    return !file.startsWith(JpegStart) || pixels * file.count(JpegScanStart) <= MostScannedPixels;
}

/// The chunks of a PNG that make its pixels, and those that say what the pixels mean in a few
/// bytes. All others can hold compressed texts and profiles, which grow a thousandfold when a
/// decoder looks at them. What is cut at the end stays as it is.
QByteArray withoutExtras(const QByteArray& png)
{
    constexpr qsizetype SignatureBytes = 8;
    constexpr qsizetype FrameBytes = 12; // length, name and checksum
    constexpr qsizetype NameAt = 4;
    constexpr qsizetype NameBytes = 4;
    static const QByteArrayList Kept = {"IHDR", "PLTE", "IDAT", "IEND",
                                        "tRNS", "gAMA", "sRGB", "cHRM"};
    QByteArray plain = png.first(std::min(png.size(), SignatureBytes));
    plain.reserve(png.size());
    for (qsizetype at = plain.size(); png.size() - at >= FrameBytes;) {
        const qsizetype claimed =
            FrameBytes + qsizetype(qFromBigEndian<quint32>(png.constData() + at));
        const qsizetype bytes = std::min(claimed, png.size() - at);
        if (Kept.contains(png.mid(at + NameAt, NameBytes)))
            plain.append(png.constData() + at, bytes);
        at += bytes;
    }
    return plain;
}

QSize pixelSize(const QSizeF& size)
{
    return size.toSize().expandedTo({1, 1});
}

QImage read(const QByteArray& file, const QSizeF& box)
{
    static const bool limited = [] {
        QImageReader::setAllocationLimit(MostDecodedMemory);
        return true;
    }();
    Q_UNUSED(limited)
    const QByteArray format = formatOf(file);
    if (format.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(format == "png" ? withoutExtras(file) : file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (!isWithinLimits(file, size))
        return {};
    if (box.isValid())
        reader.setScaledSize(pixelSize(PreviewImage::fittedSize(size, box)));
    return reader.read();
}
} // namespace

QSizeF PreviewImage::fittedSize(const QSizeF& source, const QSizeF& box)
{
    const double widthRatio = source.width() / box.width();
    const double heightRatio = source.height() / box.height();
    if (widthRatio > heightRatio)
        return {box.width(), source.height() / widthRatio};
    return {source.width() / heightRatio, box.height()};
}

QImage PreviewImage::getThumbnail(const QImage& image, const QSizeF& box)
{
    if (image.isNull())
        return {};
    return image.scaled(pixelSize(fittedSize(image.size(), box)), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

QImage PreviewImage::imageFromRect(const QImage& image, const QRect& rectangle)
{
    return image.copy(rectangle);
}

QImage PreviewImage::decode(const QByteArray& file)
{
    return read(file, {});
}

QImage PreviewImage::decodeThumbnail(const QByteArray& file, const QSizeF& box)
{
    return read(file, box);
}
