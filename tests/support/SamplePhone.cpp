#include "support/SamplePhone.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/IthmbWriter.h"
#include "support/PhotosSqliteWriter.h"
#include "support/SamplePicture.h"
#include "support/SamplePlayer.h"
#include "support/SoundFile.h"

#include <QDir>
#include <QFile>

#include <map>

namespace
{
using SamplePhone::Shot;
using Files = std::map<QString, QByteArray>; ///< by their path below the phone's root

constexpr QSize SyncedSize(800, 600);
constexpr int FirstSyncedPicture = 20; ///< apart from those of the camera
constexpr int ShotCount = int(std::size(SamplePhone::Shots));

QString writeFiles(const QString& folder, const Files& files)
{
    for (const auto& [name, bytes] : files) {
        const QString path = PathName::join(folder, name);
        const QString problem = Utility::createFolder(PathName::parent(path));
        if (!problem.isEmpty())
            return PathName::parent(path) + QStringLiteral(": ") + problem;
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return path + QStringLiteral(": ") + file.errorString();
    }
    return {};
}

/// The library lies in another folder on phones than on players.
QString writeMedia(const QString& folder)
{
    TestLibrary library = SamplePlayer::library();
    for (TestTrack& track : library.tracks)
        track.location.replace(QStringLiteral(":iPod_Control:"),
                               QStringLiteral(":iTunes_Control:"));
    const QString problem =
        SamplePlayer::write(folder, library, SamplePlayer::Format::MediaLibrary);
    if (!problem.isEmpty())
        return problem;
    QDir playerFolder(PathName::join(folder, u"iPod_Control"));
    const QString place = PathName::join(folder, u"iTunes_Control/iTunes");
    if (!QDir().rename(playerFolder.filePath(QStringLiteral("iTunes")), place))
        return place + QStringLiteral(": not moved");
    return playerFolder.removeRecursively() ? QString()
                                            : playerFolder.path() + QStringLiteral(": not removed");
}

QByteArray jpeg(int picture, const QSize& size)
{
    return SamplePicture::encoded(SamplePicture::draw(picture, size), "jpeg");
}

void addShot(const Shot& shot, Files& files)
{
    const QString file = QStringLiteral("DCIM/") + QString::fromLatin1(shot.file);
    if (file.endsWith(QStringLiteral(".MOV")))
        files[file] = SoundFile::movie(shot.picture);
    else if (file.endsWith(QStringLiteral(".PNG")))
        files[file] = SamplePicture::encoded(SamplePicture::draw(shot.picture, shot.size), "png");
    else
        files[file] = jpeg(shot.picture, shot.size);
    if (shot.still)
        files[QString::fromLatin1(shot.still)] = jpeg(shot.picture, shot.size);
}

Files cameraRoll()
{
    Files files;
    for (const Shot& shot : SamplePhone::Shots)
        addShot(shot, files);
    // What phones keep there besides, and nobody wants to see.
    files[QStringLiteral("DCIM/.MISC/IMG_0000.JPG")] = jpeg(0, {64, 48});
    files[QStringLiteral("DCIM/100APPLE/IMG_0001.AAE")] = "<plist/>";
    return files;
}

/// The slots are used from the last to the first, as after years of taking and deleting.
int slotOf(int photoId)
{
    return SamplePhone::PhotoCount - photoId;
}

/// A file with a preview of each photo.
QByteArray previews(int size)
{
    QByteArray file;
    for (int slot = 0; slot < SamplePhone::PhotoCount; ++slot)
        file +=
            IthmbWriter::fixedRecord(size, SamplePhone::pictureOf(SamplePhone::PhotoCount - slot));
    return file;
}

TestPhoneLibrary photoLibrary()
{
    TestPhoneLibrary library;
    library.albums = {{1, QStringLiteral("Coast Walk")},
                      {2, QString::fromUtf8("Сад весной")},
                      {3, QStringLiteral("Still Empty")},
                      {4, QStringLiteral("Photo Stream")}, // empty, the phone's own: not shown
                      {5, QString()}};
    for (int id = 1; id <= SamplePhone::PhotoCount; ++id) {
        const QString file = SamplePhone::fileOf(id);
        library.assets.push_back(
            {id, slotOf(id), PathName::parent(file), PathName::lastComponent(file), {}});
    }
    library.assets.push_back({SamplePhone::PhotoCount + 1,
                              -1,
                              QStringLiteral("DCIM/100APPLE"),
                              QStringLiteral("IMG_0000.JPG"),
                              {}});
    library.members8 = {{1, 7}, {1, 8}, {1, 9}, {2, 9}, {2, 10}, {5, 1}};
    return library;
}
} // namespace

QImage SamplePhone::pictureOf(int photoId)
{
    if (photoId > ShotCount)
        return SamplePicture::draw(FirstSyncedPicture + photoId, SyncedSize);
    const Shot& shot = Shots[photoId - 1];
    return SamplePicture::draw(shot.picture, shot.size);
}

QString SamplePhone::fileOf(int photoId)
{
    return photoId > ShotCount
               ? QStringLiteral("PhotoData/Sync/100SYNCD/IMG_%1.JPG")
                     .arg(photoId, 4, 10, QChar(u'0'))
               : QStringLiteral("DCIM/") + QString::fromLatin1(Shots[photoId - 1].file);
}

QString SamplePhone::writePhotos(const QString& folder)
{
    Files files = cameraRoll();
    for (int id = ShotCount + 1; id < PhotoCount; ++id) // all but the last
        files[fileOf(id)] = SamplePicture::encoded(pictureOf(id), "jpeg");
    const QString thumbnails = QStringLiteral("PhotoData/Thumbnails/%1x%1.ithmb");
    for (const int size : {120, PreviewSize})
        files[thumbnails.arg(size)] = previews(size);
    const QString problem = writeFiles(folder, files);
    return problem.isEmpty()
               ? PhotosSqliteWriter::writeWithLog(
                     PathName::join(folder, u"PhotoData/Photos.sqlite"), photoLibrary())
               : problem;
}

QString SamplePhone::write(const QString& folder)
{
    const QString problem = writeMedia(folder);
    return problem.isEmpty() ? writePhotos(folder) : problem;
}
