#pragma once

#include "Base/Utility.h"

#include <QImage>
#include <QString>

#include <cstdint>

class Device;
struct Thumbnail;

/// Turns the stored renditions of a device's ".ithmb" files into images. The pixel formats are
/// static and pure: bytes in, image out, and a null image where the bytes are fewer than the grid
/// needs. Any thread; the device must outlive the decoder.
class Ithmb
{
public:
    /// One pixel, in the order of the bitmap's bytes.
    struct Rgb {
        std::uint8_t red = 0;
        std::uint8_t green = 0;
        std::uint8_t blue = 0;
    };

    explicit Ithmb(Device& device)
        : _device(&device)
    {
    }

    /// The picture of a rendition, in the pixel format of its kind; null when its bytes are not
    /// there or the kind is unknown.
    [[nodiscard]] QImage convert(const Thumbnail& thumbnail) const;
    /// The picture in slot `thumbnailIndex` of a phone's file of previews, whose name says how
    /// large its pictures are; null for any other name.
    [[nodiscard]] QImage convert(const QString& path, std::int32_t thumbnailIndex) const;

    /// One pixel as a word whose bytes are, from the lowest, R, G, B and an alpha of 255.
    static std::uint32_t rgb565ToRgba(std::uint16_t pixel);
    static std::uint32_t rgb555ToRgba(std::uint16_t pixel); ///< the top bit counts for nothing
    static std::uint32_t bgr32ToRgba(std::uint32_t pixel);  ///< neither does the top byte

    /// 32-bit bitmaps: four bytes a pixel, alpha always 255.
    static QImage getRgb565Bmp(ByteView data, std::uint32_t width, std::uint32_t height);
    static QImage getRgb555Bmp(ByteView data, std::uint32_t width, std::uint32_t height);
    static QImage getBgr32Bmp(ByteView data, std::uint32_t width, std::uint32_t height);

    /// 24-bit bitmaps. Packed 4:2:2 (U Y V Y) comes as two fields one after the other; planar
    /// 4:2:0 is the Y plane, then U, then V.
    static QImage getYuvBmp(ByteView data, std::uint32_t width, std::uint32_t height);
    static QImage getYuv420Bmp(ByteView data, std::uint32_t width, std::uint32_t height);

    /// The two fields of a packed picture woven together, row by row, into a buffer of the same
    /// length; zeros where the fields end early.
    static QByteArray interlace(ByteView data, std::uint32_t width, std::uint32_t height);
    /// A pixel of the packed format, darkened to 220/256.
    static Rgb yuv2Rbg(std::uint8_t y, std::uint8_t u, std::uint8_t v);
    /// A pixel of the planar format.
    static Rgb yuv420ToRgb(std::uint8_t y, std::uint8_t u, std::uint8_t v);
    /// Truncated toward zero, 0 below and 255 above the range of a byte.
    static std::uint8_t limit8Bit(double value);

    /// A picture stored as a JPEG file, whatever size it has.
    static QImage getJpeg(ByteView data);

private:
    Device* _device;
};
