// The photo side of an export job.

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/Ithmb.h"
#include "Device/Photo.h"
#include "Device/PhotoDb.h"
#include "Export/ExportHost.h"
#include "Export/ExportJob.h"
#include "Platform/File.h"

#include <QBuffer>
#include <QImageWriter>

namespace
{
using Result = ExportItem::Result;

/// High enough that nobody sees that the picture was stored anew.
constexpr int JpegQuality = 92;

QString progressText(const Photo& photo)
{
    return QStringLiteral("Export %1...")
        .arg(photo.photoId == 0 ? PathName::lastComponent(photo.fullSizeFile)
                                : QString::number(photo.photoId));
}

QByteArray jpegOf(const QImage& image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(JpegQuality);
    return writer.write(image) ? buffer.data() : QByteArray();
}

std::span<const std::byte> view(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}
} // namespace

ExportItem ExportJob::itemFor(const Photo& photo)
{
    ExportItem item;
    item.kind = ExportItem::Kind::Photo;
    item.title = photo.title;
    item.from = photo.fullSizeFile;
    return item;
}

void ExportJob::exportPhotos(const std::vector<Photo*>& photos)
{
    if (photos.empty())
        return;
    exportEach(
        photos.size(), [&](std::size_t i) { return itemFor(*photos[i]); },
        [&](std::size_t i) { return exportPhoto(*photos[i], int(i)); });
}

ExportJob::Next ExportJob::exportPhoto(const Photo& photo, int index)
{
    ExportItem item = itemFor(photo);
    _host.showProgress(progressText(photo), index);
    const Expected<bool> fullSize = hasFullSizeFile(photo);
    if (photo.photoId == 0 && namesNoFile(photo.fullSizeFile)) {
        // Without a file it has not even a name to be written under.
        item.result = Result::Missing;
        item.why = tr("The library names no file for this item");
    } else if (!fullSize) {
        item.result = Result::Failed;
        item.why = fullSize.failure().text();
    } else if (*fullSize) {
        exportFullSize(photo, item, index);
    } else {
        exportRendition(photo, item);
    }
    const Next next = after(item);
    report(item);
    return next;
}

Expected<bool> ExportJob::hasFullSizeFile(const Photo& photo) const
{
    if (namesNoFile(photo.fullSizeFile))
        return false;
    const Expected<FileInfo> found = _device->info(photo.fullSizeFile);
    // Only of what is known to be gone may something smaller take the place.
    if (found)
        return found->kind != FileInfo::Kind::Folder;
    return found.failedAs(Failure::Kind::Missing) ? Expected<bool>(false) : found.failure();
}

void ExportJob::exportFullSize(const Photo& photo, ExportItem& item, int index)
{
    write(item, ExportPath::photoPath(photo, ExportPath::PhotoSource::FullSize, _config),
          [&](ExportItem& it, const Place& place) { return copy(it, index, place); });
}

void ExportJob::exportRendition(const Photo& photo, ExportItem& item)
{
    const Expected<QImage> picture = rendition(photo, item);
    if (!picture) {
        item.result = picture.failedAs(Failure::Kind::Missing) ? Result::Missing : Result::Failed;
        item.why = picture.failure().text();
        return;
    }
    write(item, ExportPath::photoPath(photo, ExportPath::PhotoSource::Rendition, _config),
          [&](ExportItem& it, const Place& place) { return writePicture(*picture, it, place); });
}

Expected<QImage> ExportJob::rendition(const Photo& photo, ExportItem& item) const
{
    // Photos of the camera roll have no renditions, so one that has some comes from this library.
    PhotoDb* library = photo.thumbnails.empty() ? nullptr : _device->photoDb();
    const auto large = quint32(library ? library->largeCorrelationId() : 0);
    const Ithmb decoder(*_device);
    QImage picture;
    bool isThere = false;
    for (const Thumbnail& thumbnail : photo.thumbnails) {
        if (large == 0 || thumbnail.correlationId != large)
            continue;
        const QImage decoded = decoder.convert(thumbnail);
        isThere = isThere || !_device->info(thumbnail.filename).failedAs(Failure::Kind::Missing);
        if (!decoded.isNull()) { // of several, the last that decodes
            picture = decoded;
            item.from = thumbnail.filename;
        }
    }
    if (!picture.isNull())
        return picture;
    if (isThere)
        return Failure{Failure::Kind::Damaged,
                       tr("The screen copy of this photo on the device cannot be read"),
                       {}};
    return Failure{
        Failure::Kind::Missing, tr("The device holds no full-size picture of this photo"), {}};
}

ExportJob::Written ExportJob::writePicture(const QImage& picture, ExportItem& item,
                                           const Place& place)
{
    item.result = Result::Failed;
    const QByteArray jpeg = jpegOf(picture);
    if (jpeg.isEmpty()) {
        item.why = tr("The picture could not be stored as JPEG");
        return Written::Settled;
    }
    File file(place.path(), place.replaces ? File::Mode::Create : File::Mode::CreateNew);
    if (!file.isOpen() && !place.replaces && file.wasTaken())
        return Written::Taken;
    if (!file.isOpen() || !file.write(view(jpeg)) || !file.close()) {
        item.why = file.error();
        return Written::Settled;
    }
    item.result = Result::Copied;
    item.bytes = jpeg.size();
    item.why = tr("Only a screen copy of %1 x %2 is on the device")
                   .arg(picture.width())
                   .arg(picture.height());
    return Written::Settled;
}
