#pragma once

#include <QByteArray>
#include <QImage>

/// Pictures that look like photos, the same each time.
namespace SamplePicture
{
/// A landscape; another one for each number.
QImage draw(int number, const QSize& size);

/// The picture as a file: "jpeg" or "png".
QByteArray encoded(const QImage& picture, const char* format, int quality = 90);

/// A JPEG as large as those of a 12-megapixel camera, with the fine noise of one.
QByteArray cameraJpeg(int number);
} // namespace SamplePicture
