#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>

/// Pictures of a device, decoded with care and made small. Any thread.
namespace PreviewImage
{
/// The box that previews of the camera roll are fitted into.
constexpr QSizeF PreviewBox(100, 100);

/// The size of a picture scaled to fit `box`, its aspect ratio kept. Not rounded; a small picture
/// is scaled up.
QSizeF fittedSize(const QSizeF& source, const QSizeF& box);

/// A new image of the whole picture, scaled to fit `box`; null for a null one. As many pixels as
/// `fittedSize` says, to the nearest one, and never none.
QImage getThumbnail(const QImage& image, const QSizeF& box);

/// The part of a picture inside `rectangle`; what lies outside the picture is transparent.
QImage imageFromRect(const QImage& image, const QRect& rectangle);

/// A JPEG or PNG file in memory, decoded whole; null when it is none, is broken, or would decode
/// into more than any camera makes.
QImage decode(const QByteArray& file);

/// The same, scaled to fit `box`. Decodes no more of the picture than that needs.
QImage decodeThumbnail(const QByteArray& file, const QSizeF& box);
} // namespace PreviewImage
