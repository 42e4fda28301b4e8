#include "Console/PhotoJson.h"

#include "Device/CameraRollDb.h"
#include "Device/PhotoDb.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QJsonValue textOrNull(const QString& text)
{
    return text.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// The position of each object in its list.
template <typename Object>
QHash<const Object*, int> positions(const std::vector<Object*>& objects)
{
    QHash<const Object*, int> result;
    for (const Object* object : objects)
        result.insert(object, int(result.size()));
    return result;
}

QJsonObject thumbnailObject(const Thumbnail& thumbnail)
{
    const auto number = [](quint32 value) { return QJsonValue(qint64(value)); };
    return {{QStringLiteral("filename"), textOrNull(thumbnail.filename)},
            {QStringLiteral("correlationId"), number(thumbnail.correlationId)},
            {QStringLiteral("thumbnailOffset"), number(thumbnail.thumbnailOffset)},
            {QStringLiteral("imageSize"), number(thumbnail.imageSize)},
            {QStringLiteral("verticalPadding"), number(thumbnail.verticalPadding)},
            {QStringLiteral("horizontalPadding"), number(thumbnail.horizontalPadding)},
            {QStringLiteral("imageHeight"), number(thumbnail.imageHeight)},
            {QStringLiteral("imageWidth"), number(thumbnail.imageWidth)},
            {QStringLiteral("width"), number(thumbnail.width)},
            {QStringLiteral("height"), number(thumbnail.height)}};
}

QJsonObject photoObject(const Photo& photo, const QHash<const Album*, int>& albums)
{
    QJsonArray thumbnails;
    for (const Thumbnail& thumbnail : photo.thumbnails)
        thumbnails.append(thumbnailObject(thumbnail));
    const auto album = albums.constFind(photo.album);
    return {{QStringLiteral("photoId"), photo.photoId},
            {QStringLiteral("title"), textOrNull(photo.title)},
            {QStringLiteral("album"),
             album == albums.constEnd() ? QJsonValue(QJsonValue::Null) : QJsonValue(*album)},
            {QStringLiteral("fullSizeFile"), textOrNull(photo.fullSizeFile)},
            {QStringLiteral("thumbnailIndex"), photo.thumbnailIndex},
            {QStringLiteral("thumbnails"), thumbnails}};
}

QJsonObject albumObject(const Album& album, const QHash<const Photo*, int>& photos)
{
    QJsonArray members;
    for (const Photo* photo : album.photos)
        members.append(photos.value(photo));
    return {{QStringLiteral("albumId"), album.albumId},
            {QStringLiteral("name"), textOrNull(album.name)},
            {QStringLiteral("photos"), members}};
}

/// A list, object by object, so that a large library does not stand in memory a second time.
template <typename Objects, typename MakeObject>
void writeList(const LibraryJson::Sink& sink, const Objects& objects, MakeObject makeObject)
{
    const char* separator = "[";
    for (const auto* object : objects) {
        sink(separator + compact(makeObject(*object)));
        separator = ",\n";
    }
    sink(objects.empty() ? "[]" : "]");
}
} // namespace

void PhotoJson::writePhotoDb(Device& device, const LibraryJson::Sink& sink)
{
    PhotoDb* library = device.photoDb();
    if (!library) {
        sink("null");
        return;
    }
    const auto photos = positions(library->photos());
    const auto albums = positions(library->albums());
    QByteArray head =
        compact({{QStringLiteral("format"), library->format()},
                 {QStringLiteral("smallCorrelationId"), library->smallCorrelationId()},
                 {QStringLiteral("largeCorrelationId"), library->largeCorrelationId()}});
    head.chop(1); // the object goes on
    sink(head + ",\n\"photos\":");
    writeList(sink, library->photos(),
              [&](const Photo& photo) { return photoObject(photo, albums); });
    sink(",\n\"albums\":");
    writeList(sink, library->albums(),
              [&](const Album& album) { return albumObject(album, photos); });
    sink("}");
}

void PhotoJson::writeCameraRollDb(Device& device, const LibraryJson::Sink& sink)
{
    CameraRollDb* roll = device.cameraRollDb();
    if (!roll) {
        sink("null");
        return;
    }
    sink("{\"photos\":");
    writeList(sink, roll->photos(), [](const Photo& photo) {
        return QJsonObject{{QStringLiteral("fullSizeFile"), textOrNull(photo.fullSizeFile)}};
    });
    sink("}");
}
