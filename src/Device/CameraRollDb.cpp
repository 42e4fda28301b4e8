#include "Device/CameraRollDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/LibraryProblems.h"
#include "Device/PreviewImage.h"

namespace
{
/// Larger than any picture; a preview is not worth reading more.
constexpr qint64 MostPictureBytes = qint64(512) * 1024 * 1024;

bool isVideo(const QString& path)
{
    return PathName::extension(path).toLower() == u"mov";
}

bool isListed(const QString& name)
{
    const QString extension = PathName::extension(name).toLower();
    return extension == u"jpg" || extension == u"png" || extension == u"mov";
}

/// The picture of a video that the phone keeps beside it, or among its photo data; null where it
/// has none.
QString stillOf(Device& device, const QString& photoDataDir, const QString& video)
{
    const QString folder = PathName::parent(video);
    const QString still =
        PathName::withoutExtension(PathName::lastComponent(video)) + QStringLiteral(".JPG");
    const QString hidden = PathName::join(PathName::join(folder, u".MISC"), still);
    if (device.fileExists(hidden))
        return hidden;
    const QString other =
        PathName::join(PathName::join(photoDataDir, PathName::lastComponent(folder)), still);
    return device.fileExists(other) ? other : QString();
}

/// The failure, with the folder that it is about.
Failure inFolder(Failure failure, const QString& folder)
{
    failure.exact =
        failure.exact.isEmpty() ? folder : folder + QStringLiteral(": ") + failure.exact;
    return failure;
}

void loadSmallImage(Device& device, const QString& photoDataDir, Photo& photo)
{
    const QString& file = photo.fullSizeFile;
    const QString picture = isVideo(file)             ? stillOf(device, photoDataDir, file)
                            : device.fileExists(file) ? file
                                                      : QString();
    if (picture.isNull())
        return;
    const QByteArray bytes = device.getFileSize(picture).value_or(0) <= MostPictureBytes
                                 ? device.read(picture)
                                 : QByteArray();
    photo.setSmallImage(PreviewImage::decodeThumbnail(bytes, PreviewImage::PreviewBox));
}
} // namespace

std::unique_ptr<CameraRollDb> CameraRollDb::create(Device& device)
{
    return std::unique_ptr<CameraRollDb>(new CameraRollDb(device));
}

CameraRollDb::CameraRollDb(Device& device)
    : _device(device)
    , _dcimDir(PathName::join(device.prefix(), u"DCIM"))
    , _photoDataDir(PathName::join(device.prefix(), u"PhotoData"))
{
}

const std::vector<Photo*>& CameraRollDb::photos()
{
    load();
    return _photos;
}

PreviewPass& CameraRollDb::previews()
{
    load();
    return *_previews;
}

void CameraRollDb::stopPreviews()
{
    if (_previews)
        _previews->stop();
}

void CameraRollDb::waitForPreviews()
{
    if (_previews)
        _previews->wait();
}

void CameraRollDb::load()
{
    if (_loaded)
        return;
    _loaded = true;
    parse();
    // The pass gets a copy of what it needs: it must not look into a reader that is going.
    _previews = std::make_unique<PreviewPass>(
        _photos, [device = &_device, photoDataDir = _photoDataDir](Photo& photo) {
            loadSmallImage(*device, photoDataDir, photo);
        });
}

void CameraRollDb::parse()
{
    const LibraryProblems problems(LibraryProblems::Library::CameraRoll, _problems);
    const Expected<FileInfo> found = _device.info(_dcimDir);
    if (found.failedAs(Failure::Kind::Missing))
        return;
    if (!found)
        return problems.cannotBeRead(inFolder(found.failure(), _dcimDir));
    const Expected<QStringList> folders = _device.list(_dcimDir, Device::Entries::Folders);
    if (!folders)
        return problems.cannotBeRead(inFolder(folders.failure(), _dcimDir));
    for (const QString& name : *folders) {
        if (name.toUpper() != u".MISC")
            parseFolder(PathName::join(_dcimDir, name), problems);
    }
}

void CameraRollDb::parseFolder(const QString& folder, const LibraryProblems& problems)
{
    const Expected<QStringList> files = _device.list(folder, Device::Entries::Files);
    if (!files)
        return problems.cannotBeRead(inFolder(files.failure(), folder));
    for (const QString& name : *files) {
        if (!isListed(name))
            continue;
        Photo& photo = _ownedPhotos.emplace_back();
        photo.fullSizeFile = PathName::join(folder, name);
        _photos.push_back(&photo);
    }
}
