#pragma once

#include <QImage>
#include <QString>

/// A believable phone: the sample library as phones keep it, with its media files, books and
/// voice memos; the photo library; and a camera roll. The same each time.
namespace SamplePhone
{
/// Writes the files of the phone into `folder`, which is made if missing. Empty when all went
/// well, else what went wrong, in words.
QString write(const QString& folder);

/// Writes "DCIM" and "PhotoData" alone.
QString writePhotos(const QString& folder);

/// One file of the camera roll.
struct Shot {
    const char* file; ///< below "DCIM"
    int picture;      ///< the number of its `SamplePicture`, and of its movie
    QSize size;
    const char* still; ///< of a video: where the phone keeps its picture; null without one
};
/// What the camera roll lists, in the order of the names.
inline constexpr Shot Shots[] = {
    {"100APPLE/IMG_0001.JPG", 1, {1600, 1200}, nullptr},
    {"100APPLE/IMG_0002.PNG", 2, {480, 720}, nullptr},
    {"100APPLE/IMG_0003.MOV", 3, {640, 480}, "DCIM/100APPLE/.MISC/IMG_0003.JPG"},
    {"101APPLE/IMG_0004.JPG", 4, {1200, 1600}, nullptr},
    {"101APPLE/IMG_0005.MOV", 5, {640, 480}, "PhotoData/101APPLE/IMG_0005.JPG"},
    {"101APPLE/IMG_0006.MOV", 6, {640, 480}, nullptr}};

/// The photo library lists the camera roll and then some synced photos, with the ids from 1 on.
/// The last one is known by its preview only: its file is not on the phone.
constexpr int SyncedCount = 4;
constexpr int PhotoCount = int(std::size(Shots)) + SyncedCount;
constexpr int PreviewSize = 166;
/// What the photo with that id shows.
QImage pictureOf(int photoId);
/// Where it stands below the phone's root.
QString fileOf(int photoId);
} // namespace SamplePhone
