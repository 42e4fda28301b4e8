#include "Console/LibraryJson.h"

#include "Console/Categories.h"
#include "Console/PhotoJson.h"
#include "Device/BookDb.h"
#include "Device/TrackDb.h"
#include "Device/VoiceMemoDb.h"

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

QByteArray compact(const QJsonArray& array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

/// A text as a JSON string.
QByteArray quoted(const QString& text)
{
    const QByteArray list = compact(QJsonArray{text});
    return list.sliced(1, list.size() - 2);
}

QJsonObject deviceObject(Device& device)
{
    const bool isVolume = !device.localRoot().isNull();
    return {
        {QStringLiteral("key"), textOrNull(device.key())},
        {QStringLiteral("family"), isVolume ? QStringLiteral("volume") : QStringLiteral("phone")},
        {QStringLiteral("prefix"), textOrNull(device.prefix())},
        {QStringLiteral("controlPath"), textOrNull(device.controlPath())},
        {QStringLiteral("bookPath"), textOrNull(device.bookPath())},
        {QStringLiteral("description"), textOrNull(device.description())}};
}

/// The objects of a library under the numbers that the document gives them.
template <typename Object>
class Numbering
{
public:
    /// The object's number; a new one when it is met for the first time.
    int operator()(const Object* object)
    {
        const auto known = _numbers.constFind(object);
        if (known != _numbers.constEnd())
            return *known;
        const auto number = int(_objects.size());
        _numbers.insert(object, number);
        _objects.push_back(object);
        return number;
    }

    template <typename Objects>
    QJsonArray all(const Objects& objects)
    {
        QJsonArray numbers;
        for (const Object* object : objects)
            numbers.append((*this)(object));
        return numbers;
    }

    [[nodiscard]] const std::vector<const Object*>& objects() const { return _objects; }

private:
    QHash<const Object*, int> _numbers;
    std::vector<const Object*> _objects;
};

/// An item that stands in the playlists of those positions.
QByteArray itemObject(const Track& track, const QJsonArray& playlists)
{
    return compact(QJsonObject{{QStringLiteral("title"), textOrNull(track.title)},
                               {QStringLiteral("artist"), textOrNull(track.artist)},
                               {QStringLiteral("album"), textOrNull(track.album)},
                               {QStringLiteral("genre"), textOrNull(track.genre)},
                               {QStringLiteral("path"), textOrNull(track.path)},
                               {QStringLiteral("duration"), track.duration},
                               {QStringLiteral("type"), track.type},
                               {QStringLiteral("isPodcast"), track.isPodcast},
                               {QStringLiteral("playlists"), playlists}});
}

/// A JSON list, entry by entry.
template <typename Objects, typename Write>
void writeList(const LibraryJson::Sink& sink, const Objects& objects, Write write)
{
    const char* separator = "[";
    for (const auto& object : objects) {
        sink(separator + write(object));
        separator = ",\n";
    }
    sink(objects.empty() ? "[]" : "]");
}

/// A reader that is no more than a list of items, or null.
void writeItems(const LibraryJson::Sink& sink, const QByteArray& name,
                const std::vector<Track*>* items)
{
    if (!items) {
        sink("null");
        return;
    }
    sink("{\"" + name + "\":");
    writeList(sink, *items, [](const Track* item) { return itemObject(*item, {}); });
    sink("}");
}

/// Writes a TrackDb. Lists and maps go out entry by entry, so that a large library does not
/// stand in memory a second time.
class TrackDbWriter
{
public:
    TrackDbWriter(TrackDb& library, const LibraryJson::Sink& sink)
        : _library(library)
        , _sink(sink)
    {
        // Items are numbered in the order of `tracks`, then as playlists bring in more.
        for (const Track* track : library.tracks())
            _items(track);
        for (const Playlist* playlist : library.playlists()) {
            _playlists(playlist);
            for (const Track* track : playlist->tracks)
                _items(track);
        }
        if (BookDb* catalogue = BookDb::filledCatalogue(library.device())) {
            for (const Track* book : catalogue->bookList())
                _items(book);
        }
    }

    void write()
    {
        _sink("{\"format\":" + quoted(_library.format()) +
              ",\n\"name\":" + (_library.name().isNull() ? "null" : quoted(_library.name())));
        _sink(",\n\"items\":");
        writeList(_sink, _items.objects(), [this](const Track* track) {
            return itemObject(*track, _playlists.all(track->playlists));
        });
        _sink(",\n\"tracks\":" + compact(_items.all(_library.tracks())));
        _sink(",\n\"playlists\":");
        writeList(_sink, _library.playlists(), [this](const Playlist* playlist) {
            return compact(QJsonObject{{QStringLiteral("name"), textOrNull(playlist->name)},
                                       {QStringLiteral("tracks"), _items.all(playlist->tracks)}});
        });
        _sink(",\n\"index\":");
        writeCategories(true, [this](const CategoryIndex& index) { writeTrackMap(index); });
        _sink(",\n\"albums\":");
        writeCategories(false, [this](const CategoryIndex& index) { writeAlbumTree(index); });
        _sink("}");
    }

private:
    /// One member a category, by `write`; ringtones have no album tree.
    template <typename Write>
    void writeCategories(bool ringtones, Write write)
    {
        const char* separator = "{";
        for (const Section section : Categories::ofLibrary()) {
            if (section == Section::Ringtones && !ringtones)
                continue;
            _sink(separator + quoted(Sections::key(section)) + ":");
            write(_library.category(section));
            separator = ",\n";
        }
        _sink("}");
    }

    /// A JSON object out of a hash, member by member.
    template <typename Map, typename Write>
    void writeMembers(const Map& map, Write writeValue)
    {
        const char* separator = "{";
        for (auto entry = map.constBegin(); entry != map.constEnd(); ++entry) {
            _sink(separator + quoted(entry.key()) + ":");
            writeValue(entry.value());
            separator = ",\n";
        }
        _sink(map.isEmpty() ? "{}" : "}");
    }

    void writeTrackMap(const CategoryIndex& index)
    {
        writeMembers(index.trackMap(), [this](const std::vector<Track*>& tracks) {
            _sink(compact(_items.all(tracks)));
        });
    }

    void writeAlbumTree(const CategoryIndex& index)
    {
        writeMembers(index.albumTree(), [this](const QHash<QString, QStringList>& artists) {
            writeMembers(artists, [this](const QStringList& albums) {
                _sink(compact(QJsonArray::fromStringList(albums)));
            });
        });
    }

    TrackDb& _library;
    const LibraryJson::Sink& _sink;
    Numbering<Track> _items;
    Numbering<Playlist> _playlists;
};
QJsonArray problemList(const Device& device)
{
    QJsonArray list;
    for (const auto& [reader, problem] : device.problems())
        list.append(QJsonObject{{QStringLiteral("reader"), reader},
                                {QStringLiteral("kind"), problem.kindName()},
                                {QStringLiteral("words"), problem.words},
                                {QStringLiteral("exact"), textOrNull(problem.exact)}});
    return list;
}
} // namespace

void LibraryJson::write(Device& device, const Sink& sink)
{
    sink("{\"device\":" + compact(deviceObject(device)) + ",\n\"trackDb\":");
    if (TrackDb* library = device.trackDb())
        TrackDbWriter(*library, sink).write();
    else
        sink("null");
    sink(",\n\"bookDb\":");
    BookDb* books = device.bookDb();
    writeItems(sink, "bookList", books ? &books->bookList() : nullptr);
    sink(",\n\"voiceMemoDb\":");
    VoiceMemoDb* recordings = device.voiceMemoDb();
    writeItems(sink, "memos", recordings ? &recordings->memos() : nullptr);
    sink(",\n\"photoDb\":");
    PhotoJson::writePhotoDb(device, sink);
    sink(",\n\"cameraRollDb\":");
    PhotoJson::writeCameraRollDb(device, sink);
    // Last: problems come while readers read.
    sink(",\n\"problems\":" + compact(problemList(device)) + "}\n");
}

QByteArray LibraryJson::devices(const Device::Devices& devices)
{
    QJsonArray list;
    for (const auto& [key, device] : devices)
        list.append(deviceObject(*device));
    return QJsonDocument(list).toJson();
}
