#include "support/PhotoDatabaseWriter.h"

#include "support/RecordWriter.h"

namespace
{
constexpr quint32 AlbumName = 1;
constexpr quint32 AlbumEffect = 2;
constexpr quint32 ThumbnailLocation = 2;
constexpr quint32 FileName = 3;
constexpr quint32 FullSizeLocation = 5;
constexpr quint32 ImageDetails = 6;

QByteArray member(quint32 photoId)
{
    return Record("mhia", 40).u32(16, photoId).closed();
}

QByteArray imagesOf(const TestPhotoLibrary& library, PhotoDatabaseWriter::Encoding encoding)
{
    using namespace PhotoDatabaseWriter;
    std::vector<QByteArray> images;
    for (const TestPhoto& photo : library.photos) {
        std::vector<QByteArray> objects;
        for (const TestThumbnail& thumbnail : photo.thumbnails)
            objects.push_back(locationObject(ThumbnailLocation, thumbnail, encoding));
        if (!photo.fullSizeFile.isNull()) {
            TestThumbnail fullSize;
            fullSize.correlationId = 1;
            fullSize.fileName = photo.fullSizeFile;
            objects.push_back(locationObject(FullSizeLocation, fullSize, encoding));
        }
        objects.push_back(opaqueObject(ImageDetails, 40));
        images.push_back(image(photo.id, objects));
    }
    return list("mhli", images);
}

QByteArray albumsOf(const TestPhotoLibrary& library, PhotoDatabaseWriter::Encoding encoding)
{
    using namespace PhotoDatabaseWriter;
    const auto objects = [&](const QString& name) {
        return std::vector<QByteArray>{stringObject(AlbumName, name, encoding),
                                       opaqueObject(AlbumEffect, 32)};
    };
    std::vector<quint32> all;
    for (const TestPhoto& photo : library.photos)
        all.push_back(photo.id);
    std::vector<QByteArray> albums = {album(objects(QStringLiteral("Photo Library")), all)};
    for (const TestAlbum& one : library.albums)
        albums.push_back(album(objects(one.name), one.photoIds));
    return list("mhla", albums);
}

QByteArray filesOf(const TestPhotoLibrary& library)
{
    std::vector<QByteArray> files;
    for (const quint32 kind : library.kinds)
        files.push_back(PhotoDatabaseWriter::file(kind));
    return PhotoDatabaseWriter::list("mhlf", files);
}
} // namespace

QByteArray PhotoDatabaseWriter::write(const TestPhotoLibrary& library)
{
    return write(library, Options());
}

QByteArray PhotoDatabaseWriter::write(const TestPhotoLibrary& library, const Options& options)
{
    std::vector<QByteArray> dataSets;
    for (const quint32 kind : options.dataSets) {
        dataSets.push_back(dataSet(kind, kind == 1   ? imagesOf(library, options.encoding)
                                         : kind == 2 ? albumsOf(library, options.encoding)
                                         : kind == 3 ? filesOf(library)
                                                     : QByteArray(200, char(kind))));
    }
    return database(dataSets);
}

QByteArray PhotoDatabaseWriter::database(const std::vector<QByteArray>& dataSets)
{
    return Record("mhfd", 132)
        .u32(16, 2)
        .u32(20, quint32(dataSets.size()))
        .append(dataSets)
        .closed();
}

QByteArray PhotoDatabaseWriter::dataSet(quint32 kind, const QByteArray& list)
{
    return Record("mhsd", 96).u32(12, kind).append(list).closed();
}

QByteArray PhotoDatabaseWriter::list(const char* tag, const std::vector<QByteArray>& items)
{
    return Record(tag, 92).u32(8, quint32(items.size())).append(items).open();
}

QByteArray PhotoDatabaseWriter::image(quint32 id, const std::vector<QByteArray>& objects)
{
    return Record("mhii", 152)
        .u32(12, quint32(objects.size()))
        .u32(16, id)
        .append(objects)
        .closed();
}

QByteArray PhotoDatabaseWriter::locationObject(quint32 type, const TestThumbnail& thumbnail,
                                               Encoding encoding)
{
    const QByteArray location = Record("mhni", 76)
                                    .u32(12, 1)
                                    .u32(16, thumbnail.correlationId)
                                    .u32(20, thumbnail.offset)
                                    .u32(24, thumbnail.size)
                                    .u16(28, thumbnail.verticalPadding)
                                    .u16(30, thumbnail.horizontalPadding)
                                    .u16(32, thumbnail.height)
                                    .u16(34, thumbnail.width)
                                    .append(stringObject(FileName, thumbnail.fileName, encoding))
                                    .closed();
    return Record("mhod", 24).u32(12, type).append(location).closed();
}

QByteArray PhotoDatabaseWriter::album(const std::vector<QByteArray>& objects,
                                      const std::vector<quint32>& photoIds)
{
    Record record("mhba", 148);
    record.u32(12, quint32(objects.size())).u32(16, quint32(photoIds.size())).append(objects);
    for (const quint32 id : photoIds)
        record.append(member(id));
    return record.closed();
}

QByteArray PhotoDatabaseWriter::file(quint32 correlationId)
{
    return Record("mhif", 124).u32(16, correlationId).u32(20, 4096).closed();
}

QByteArray PhotoDatabaseWriter::stringObject(quint32 type, const QString& text, Encoding encoding)
{
    return stringObject(type, encoding == Encoding::Utf16 ? utf16Bytes(text) : text.toUtf8(),
                        quint32(encoding));
}

QByteArray PhotoDatabaseWriter::stringObject(quint32 type, const QByteArray& text, quint32 encoding)
{
    const QByteArray padding((4 - text.size() % 4) % 4, '\0');
    QByteArray body(12, '\0');
    qToLittleEndian(quint32(text.size()), body.data());
    qToLittleEndian(encoding, body.data() + 4);
    return Record("mhod", 24).u32(12, type).append(body).append(text).append(padding).closed();
}

QByteArray PhotoDatabaseWriter::opaqueObject(quint32 type, int size)
{
    return Record("mhod", 24).u32(12, type).append(QByteArray(size - 24, '\x5a')).closed();
}
