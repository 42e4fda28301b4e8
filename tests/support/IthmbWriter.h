#pragma once

#include <QByteArray>
#include <QImage>

/// Writes pictures in the pixel formats of ".ithmb" files.
namespace IthmbWriter
{
QByteArray rgb565(const QImage& picture);
/// Rows are filled up to `rowPixels` pixels.
QByteArray rgb555(const QImage& picture, int rowPixels);
QByteArray bgr32(const QImage& picture);
/// Packed 4:2:2, the rows 0, 2, 4, ... before the rows 1, 3, 5, ...
QByteArray yuvPacked(const QImage& picture);
/// Planar 4:2:0 of a picture that is 720 pixels wide.
QByteArray yuvPlanar(const QImage& picture);

/// The grid that a kind of rendition has.
QSize gridOf(quint32 correlationId);
/// A picture scaled to that grid, in the kind's format.
QByteArray rendition(quint32 correlationId, const QImage& picture);

/// One record of a phone's file of previews, for squares of 120, 158 or 166 pixels.
QByteArray fixedRecord(int size, const QImage& picture);
} // namespace IthmbWriter
