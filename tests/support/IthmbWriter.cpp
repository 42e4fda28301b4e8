#include "support/IthmbWriter.h"

#include "support/SamplePicture.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int FixedRecordEnd = 28; // bytes after the pixels

char byteOf(double value)
{
    return char(std::clamp(int(std::lround(value)), 0, 255));
}

struct Yuv {
    double y = 0;
    double u = 0;
    double v = 0;
};

/// The inverse of the packed format's formulas, without the darkening.
Yuv packedYuv(QRgb pixel)
{
    const double y = 0.299 * qRed(pixel) + 0.587 * qGreen(pixel) + 0.114 * qBlue(pixel);
    return {y, (qBlue(pixel) - y) / 1.732446 + 128, (qRed(pixel) - y) / 1.370705 + 128};
}

/// The inverse of the planar format's formulas.
Yuv planarYuv(QRgb pixel)
{
    const double luma = 0.299 * qRed(pixel) + 0.587 * qGreen(pixel) + 0.114 * qBlue(pixel);
    return {luma / 1.164 + 16, (qBlue(pixel) - luma) / 2.018 + 128,
            (qRed(pixel) - luma) / 1.596 + 128};
}

void appendPackedRow(QByteArray& out, const QImage& picture, int row)
{
    for (int x = 0; x + 1 < picture.width(); x += 2) {
        const Yuv left = packedYuv(picture.pixel(x, row));
        const Yuv right = packedYuv(picture.pixel(x + 1, row));
        out += byteOf((left.u + right.u) / 2);
        out += byteOf(left.y);
        out += byteOf((left.v + right.v) / 2);
        out += byteOf(right.y);
    }
}

QByteArray littleEndian16(quint16 value)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}
} // namespace

QByteArray IthmbWriter::rgb565(const QImage& picture)
{
    QByteArray out;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            out += littleEndian16(
                quint16((qRed(pixel) >> 3) << 11 | (qGreen(pixel) >> 2) << 5 | qBlue(pixel) >> 3));
        }
    }
    return out;
}

QByteArray IthmbWriter::rgb555(const QImage& picture, int rowPixels)
{
    QByteArray out;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            out += littleEndian16(
                quint16((qRed(pixel) >> 3) << 10 | (qGreen(pixel) >> 3) << 5 | qBlue(pixel) >> 3));
        }
        out += QByteArray(2 * (rowPixels - picture.width()), '\x7c'); // shows where it is not cut
    }
    return out;
}

QByteArray IthmbWriter::bgr32(const QImage& picture)
{
    QByteArray out;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            out += char(qBlue(pixel));
            out += char(qGreen(pixel));
            out += char(qRed(pixel));
            out += '\0';
        }
    }
    return out;
}

QByteArray IthmbWriter::yuvPacked(const QImage& picture)
{
    QByteArray out;
    for (const int field : {0, 1}) {
        for (int row = field; row < picture.height(); row += 2)
            appendPackedRow(out, picture, row);
    }
    return out;
}

QByteArray IthmbWriter::yuvPlanar(const QImage& picture)
{
    QByteArray y;
    QByteArray u;
    QByteArray v;
    for (int row = 0; row < picture.height(); ++row) {
        for (int x = 0; x < picture.width(); ++x) {
            const Yuv pixel = planarYuv(picture.pixel(x, row));
            y += byteOf(pixel.y);
            if (row % 2 == 0 && x % 2 == 0) {
                u += byteOf(pixel.u);
                v += byteOf(pixel.v);
            }
        }
    }
    return y + u + v;
}

QSize IthmbWriter::gridOf(quint32 correlationId)
{
    switch (correlationId) {
    case 1019:
    case 1067:
        return {720, 480};
    case 1023:
        return {176, 132};
    case 1024:
    case 1064:
        return {320, 240};
    case 3009:
        return {160, 128};
    case 3141:
        return {150, 150};
    case 4040:
        return {166, 166};
    default: // 3008 and the kinds that are JPEG files
        return {640, 480};
    }
}

QByteArray IthmbWriter::rendition(quint32 correlationId, const QImage& picture)
{
    const QImage scaled =
        picture.scaled(gridOf(correlationId), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    switch (correlationId) {
    case 1019:
        return yuvPacked(scaled);
    case 1067:
        return yuvPlanar(scaled);
    case 1023:
    case 1024:
        return rgb565(scaled);
    case 1064:
        return bgr32(scaled);
    case 3008:
    case 3009:
        return rgb555(scaled, scaled.width());
    case 3141:
        return rgb555(scaled, 160);
    case 4040:
        return rgb555(scaled, 168);
    default:
        return SamplePicture::encoded(scaled, "jpeg");
    }
}

QByteArray IthmbWriter::fixedRecord(int size, const QImage& picture)
{
    const QImage square =
        picture.scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return rgb555(square, size == 120 ? 120 : size + 2) + QByteArray(FixedRecordEnd, '\x11');
}
