#include "Device/CameraRollDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
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
    if (!_device.fileExists(_dcimDir))
        return;
    for (const QString& name : _device.getDirs(_dcimDir)) {
        if (name.toUpper() != u".MISC")
            parseFolder(PathName::join(_dcimDir, name));
    }
}

void CameraRollDb::parseFolder(const QString& folder)
{
    for (const QString& name : _device.getFiles(folder)) {
        if (!isListed(name))
            continue;
        Photo& photo = _ownedPhotos.emplace_back();
        photo.fullSizeFile = PathName::join(folder, name);
        _photos.push_back(&photo);
    }
}
