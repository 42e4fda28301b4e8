#pragma once

#include <QString>

#include <cstdint>

/// One stored rendition of a photo inside an ".ithmb" file.
struct Thumbnail {
    QString filename;                  ///< device path of the file
    std::uint32_t correlationId = 0;   ///< the kind of rendition: decides size and pixel format
    std::uint32_t thumbnailOffset = 0; ///< where its pixels begin, in bytes
    std::uint32_t imageSize = 0;       ///< bytes of pixel data
    std::uint16_t verticalPadding = 0;
    std::uint16_t horizontalPadding = 0;
    std::uint16_t imageHeight = 0; ///< visible pixels
    std::uint16_t imageWidth = 0;
    std::uint32_t width = 0; ///< of the stored grid; set by `adjustSize`
    std::uint32_t height = 0;

    /// Finds the stored grid: the visible size with its padding where the byte count is a
    /// multiple of that area, else the grid that is usual for the kind. Without a visible size
    /// nothing changes.
    void adjustSize();
};
