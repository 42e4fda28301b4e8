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
#include <QCoreApplication>
#include <QImageWriter>

namespace
{
using Result = ExportItem::Result;

/// High enough that nobody sees that the picture was stored anew.
constexpr int JpegQuality = 92;

QString words(const char* text)
{
    return QCoreApplication::translate("ExportJob", text);
}

ExportItem itemFor(const Photo& photo)
{
    ExportItem item;
    item.kind = ExportItem::Kind::Photo;
    item.title = photo.title;
    item.from = photo.fullSizeFile;
    return item;
}

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

/// Writes the whole file; empty, or the system's words why it failed.
QString writeFile(const QString& path, const QByteArray& bytes)
{
    File file(path, File::Mode::Create);
    const bool written =
        file.isOpen() &&
        file.write(std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())))) &&
        file.close();
    return written ? QString() : file.error();
}
} // namespace

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
    if (photo.photoId == 0 && namesNoFile(photo.fullSizeFile)) {
        // Without a file it has not even a name to be written under.
        item.result = Result::Missing;
        item.why = words("The library names no file for this item");
    } else {
        const auto source = photo.fullSizeFile.isEmpty() ? ExportPath::PhotoSource::Rendition
                                                         : ExportPath::PhotoSource::FullSize;
        write(item, {ExportPath::folderOf(photo),
                     [&] { return ExportPath::photoPath(photo, source, _config); },
                     [&](ExportItem& it) {
                         if (hasFullSizeFile(photo))
                             copy(it, index);
                         else
                             writeRendition(photo, it);
                     }});
    }
    const Next next = after(item);
    report(std::move(item));
    return next;
}

bool ExportJob::hasFullSizeFile(const Photo& photo) const
{
    return !photo.fullSizeFile.isEmpty() && _device->fileExists(photo.fullSizeFile) &&
           !namesNoFile(photo.fullSizeFile);
}

void ExportJob::writeRendition(const Photo& photo, ExportItem& item)
{
    item.result = Result::Missing;
    item.why = words("The device holds no full-size picture of this photo");
    // Photos of the camera roll have no renditions, so one that has some comes from this library.
    PhotoDb* library = photo.thumbnails.empty() ? nullptr : _device->photoDb();
    const auto large = quint32(library ? library->largeCorrelationId() : 0);
    QImage picture;
    const Ithmb decoder(*_device);
    for (const Thumbnail& thumbnail : photo.thumbnails) {
        if (large == 0 || thumbnail.correlationId != large)
            continue;
        const QImage decoded = decoder.convert(thumbnail);
        if (!decoded.isNull()) { // of several, the last that decodes
            picture = decoded;
            item.from = thumbnail.filename;
        }
    }
    if (picture.isNull())
        return;
    const QByteArray jpeg = jpegOf(picture);
    item.why = jpeg.isEmpty() ? words("The picture could not be stored as JPEG")
                              : writeFile(item.to, jpeg);
    item.result = item.why.isEmpty() ? Result::Copied : Result::Failed;
    item.bytes = item.result == Result::Copied ? jpeg.size() : 0;
}
