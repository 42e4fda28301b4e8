#pragma once

#include "Device/Thumbnail.h"

#include <QImage>
#include <QString>

#include <cstdint>
#include <mutex>
#include <vector>

struct Album;

/// One picture or video of a device. A reader owns its photos; all but the preview stays as it
/// was read.
struct Photo {
    std::int32_t photoId = 0; ///< 0 for a photo of the camera roll
    QString title;
    Album* album = nullptr; ///< the last album that lists it; null without one
    std::vector<Thumbnail> thumbnails;
    QString fullSizeFile;            ///< device path; null where the library names none
    std::int32_t thumbnailIndex = 0; ///< its slot in the device's files of previews

    Photo() = default;
    Photo(const Photo&) = delete;
    Photo& operator=(const Photo&) = delete;

    /// The preview for the grid; the placeholder until there is one, and a null image when its
    /// data was none. Any thread.
    [[nodiscard]] QImage smallImage() const;
    void setSmallImage(const QImage& image);

    /// What stands in for a preview that is not there yet; one image for the whole process.
    static const QImage& placeHolder();

private:
    mutable std::mutex _mutex;
    QImage _smallImage = placeHolder();
};
