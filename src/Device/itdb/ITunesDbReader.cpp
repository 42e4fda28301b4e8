#include "Device/itdb/ITunesDbReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/IdMap.h"
#include "Device/itdb/ItdbFile.h"
#include "Device/itdb/ItdbLists.h"
#include "Device/itdb/ItdbProblems.h"
#include "Device/itdb/StringPool.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
const QString FileName = QStringLiteral("iTunesDB");

using ItdbRecord::field;

constexpr quint32 DatabaseTag = ItdbRecord::tag("mhbd");
constexpr quint32 ObjectTag = ItdbRecord::tag("mhod");
constexpr quint32 ItemTag = ItdbRecord::tag("mhip");

constexpr quint32 TrackList = 1;
constexpr quint32 PlaylistList = 2;
/// Those of podcasts and of smart playlists are known to be there, and not read.
constexpr std::array Kinds = {
    ItdbLists::Kind{TrackList, ItdbRecord::tag("mhlt"), ItdbRecord::tag("mhit")},
    ItdbLists::Kind{PlaylistList, ItdbRecord::tag("mhlp"), ItdbRecord::tag("mhyp")},
    ItdbLists::Kind{3, ItdbRecord::tag("mhlp"), ItdbRecord::tag("mhyp")},
    ItdbLists::Kind{5, ItdbRecord::tag("mhlp"), ItdbRecord::tag("mhyp")}};

/// Offsets in the records, in bytes.
namespace Database // mhbd
{
constexpr std::size_t Version = 16;
} // namespace Database

namespace TrackRecord // mhit
{
constexpr std::size_t ObjectCount = 12;
constexpr std::size_t Id = 16;
constexpr std::size_t Milliseconds = 40;
constexpr std::size_t Smallest = 44;
constexpr std::size_t PodcastFlag = 167;
constexpr std::size_t MediaKind = 208;
constexpr std::size_t SmallestWithKind = 212;
/// Records of this version and older end before the podcast flag and the media kind.
constexpr quint32 LastVersionWithoutKind = 11;
} // namespace TrackRecord

namespace Object // mhod
{
constexpr std::size_t Type = 12;
constexpr quint32 Title = 1;
constexpr quint32 Location = 2;
constexpr quint32 Album = 3;
constexpr quint32 Artist = 4;
constexpr quint32 Genre = 5;
constexpr std::size_t StringLength = 28;
constexpr std::size_t String = 40;
} // namespace Object

namespace PlaylistRecord // mhyp
{
constexpr std::size_t ObjectCount = 12;
constexpr std::size_t ItemCount = 16;
constexpr std::size_t Smallest = 20;
} // namespace PlaylistRecord

namespace Item // mhip
{
constexpr std::size_t TrackId = 24;
constexpr std::size_t Smallest = 28;
} // namespace Item

/// A text on the stack. The file does not align it, so it has to be moved.
class StringBuffer
{
public:
    explicit StringBuffer(ByteView text)
        : _units(qsizetype(text.size() / sizeof(char16_t)))
    {
        if (!_units.isEmpty())
            std::memcpy(_units.data(), text.data(), std::size_t(_units.size()) * sizeof(char16_t));
    }

    [[nodiscard]] QStringView whole() const { return {_units.data(), _units.size()}; }
    /// Up to the first NUL.
    [[nodiscard]] QStringView view() const
    {
        const QStringView all = whole();
        const qsizetype end = all.indexOf(QChar::Null);
        return end < 0 ? all : all.first(end);
    }
    char16_t* begin() { return _units.data(); }
    char16_t* end() { return _units.data() + _units.size(); }

private:
    QVarLengthArray<char16_t, 256> _units;
};
} // namespace

/// What is needed only while a database is read.
class ITunesDbReader::Parser
{
public:
    explicit Parser(ITunesDbReader& reader)
        : _reader(reader)
    {
    }

    void parse(const ItdbFile::Content& file);

private:
    bool parseTrack(const Record& record);
    void parseTrackObject(ByteView object, Track& track);
    bool parsePlaylist(const Record& record, bool isMaster);
    void parseParts(const Record& record, bool isMaster, Playlist& playlist);

    [[nodiscard]] ByteView text(ByteView object);
    [[nodiscard]] QString ownText(ByteView object);
    [[nodiscard]] QString nameOfList(ByteView object);
    QString sharedText(ByteView object) { return _pool.shared(StringBuffer(text(object)).view()); }
    [[nodiscard]] QString path(ByteView object);
    [[nodiscard]] QString pathWithNul(const StringBuffer& location);

    ITunesDbReader& _reader;
    quint32 _version = 0;
    IdMap<Track> _tracksById;
    StringPool _pool;
    ItdbLists::Tally _tracks;
    ItdbLists::Tally _playlists;
    quint64 _contradictions = 0;
    int _questionsLeft = 256; ///< to the device; each may take a while
};

std::unique_ptr<TrackDb> ITunesDbReader::initWithDevice(Device& device)
{
    std::unique_ptr<ITunesDbReader> reader(new ITunesDbReader(device));
    // Where the device cannot tell, reading will say why.
    if (device.info(reader->_dbPath).failedAs(Failure::Kind::Missing))
        return nullptr;
    ItdbFile::keepForDiagnosis(device, reader->_dbPath);
    return reader;
}

ITunesDbReader::ITunesDbReader(Device& device)
    : TrackDb(device)
    , _dbPath(PathName::join(PathName::join(device.controlPath(), u"iTunes"), FileName))
{
}

QString ITunesDbReader::format() const
{
    return FileName;
}

void ITunesDbReader::parse()
{
    const Expected<ItdbFile::Content> file = ItdbFile::read(device(), _dbPath);
    if (file)
        Parser(*this).parse(*file);
    else
        ItdbProblems(ItdbProblems::Library::Music, foundProblems()).addUnreadable(file.failure());
}

void ITunesDbReader::Parser::parse(const ItdbFile::Content& file)
{
    const ByteView database =
        std::as_bytes(std::span(file.bytes.constData(), std::size_t(file.bytes.size())));
    const ItdbLists::Contents contents =
        ItdbLists::find(database, DatabaseTag, Kinds, _contradictions);
    if (!contents.lists.empty())
        _version = field(database, Database::Version);
    for (const ItdbLists::List& list : contents.lists) {
        if (list.kind.type == TrackList) {
            _tracks.add(
                ItdbLists::eachItem(list, _contradictions, [this](const Record& item, quint64) {
                    return parseTrack(item);
                }));
        } else if (list.kind.type == PlaylistList) {
            // The first playlist is the whole library.
            const auto tally =
                ItdbLists::eachItem(list, _contradictions, [this](const Record& item, quint64 n) {
                    return parsePlaylist(item, n == 0);
                });
            _playlists.add(tally.withoutFirst());
        }
    }
    ItdbProblems problems(ItdbProblems::Library::Music, _reader.foundProblems());
    problems.addFile(file, contents);
    problems.addItems(ItdbProblems::Items::Tracks, _tracks);
    problems.addItems(ItdbProblems::Items::Playlists, _playlists);
    if (!contents.isForeign)
        problems.addContradictions(_contradictions);
}

bool ITunesDbReader::Parser::parseTrack(const Record& record)
{
    const ByteView bytes = record.bytes;
    if (bytes.size() < TrackRecord::Smallest)
        return false;
    Track& track = _reader.newTrack();
    track.duration = field(bytes, TrackRecord::Milliseconds) / 1000.0;
    if (_version > TrackRecord::LastVersionWithoutKind) {
        if (bytes.size() >= TrackRecord::SmallestWithKind) {
            track.isPodcast = Utility::readUCharFromData(bytes, TrackRecord::PodcastFlag) != 0;
            track.type = mediaTypeToTrackType(qint32(field(bytes, TrackRecord::MediaKind)));
        } else {
            ++_contradictions;
        }
    }
    RecordWalk objects(record, field(bytes, TrackRecord::ObjectCount), {ObjectTag, ObjectTag},
                       _contradictions);
    while (const Record* object = objects.next()) {
        if (!objects.isBeyondCount())
            parseTrackObject(object->bytes, track);
    }
    _contradictions += objects.disagreesWithCount() ? 1 : 0;
    _reader.list(track);
    _tracksById.set(qint32(field(bytes, TrackRecord::Id)), &track);
    return true;
}

void ITunesDbReader::Parser::parseTrackObject(ByteView object, Track& track)
{
    if (object.size() < Object::Type + sizeof(quint32))
        return;
    switch (field(object, Object::Type)) {
    case Object::Title:
        track.title = ownText(object);
        break;
    case Object::Location:
        track.path = path(object);
        break;
    case Object::Album:
        track.album = sharedText(object);
        break;
    case Object::Artist:
        track.artist = sharedText(object);
        break;
    case Object::Genre:
        track.genre = sharedText(object);
        break;
    default:
        break;
    }
}

/// The bytes of an object's text, as far as they stand in the object.
ByteView ITunesDbReader::Parser::text(ByteView object)
{
    if (object.size() < Object::String) {
        ++_contradictions;
        return {};
    }
    const ByteView rest = object.subspan(Object::String);
    const std::size_t length = field(object, Object::StringLength);
    if (length > rest.size())
        ++_contradictions;
    return rest.first(std::min(length, rest.size()));
}

QString ITunesDbReader::Parser::ownText(ByteView object)
{
    const QString read = StringBuffer(text(object)).view().toString();
    return read.isNull() ? QString(QLatin1String("")) : read;
}

QString ITunesDbReader::Parser::path(ByteView object)
{
    // As getFileSystemPath does it, without a string in between: there is one for each track.
    StringBuffer location(text(object));
    std::replace(location.begin(), location.end(), u':', u'/');
    if (location.view().size() < location.whole().size())
        return pathWithNul(location);
    return PathName::join(_reader.device().prefix(), location.view());
}

/// A text ends at its first NUL. Where nothing of that name is on the device, the NUL may be what
/// is wrong.
QString ITunesDbReader::Parser::pathWithNul(const StringBuffer& location)
{
    const QString& prefix = _reader.device().prefix();
    const QString usual = PathName::join(prefix, location.view());
    QString letters = location.whole().toString();
    letters.remove(QChar::Null);
    if (letters.size() == location.view().size() || --_questionsLeft < 0)
        return usual;
    const QString other = PathName::join(prefix, letters);
    Device& device = _reader.device();
    return !device.fileExists(usual) && device.fileExists(other) ? other : usual;
}

bool ITunesDbReader::Parser::parsePlaylist(const Record& record, bool isMaster)
{
    if (record.bytes.size() < PlaylistRecord::Smallest)
        return false;
    Playlist read;
    parseParts(record, isMaster, read);
    if (isMaster) {
        _reader.setName(read.name);
        return true;
    }
    // Linked only now: until here it might have been dropped.
    Playlist& playlist = _reader.newPlaylist();
    playlist = std::move(read);
    for (Track* track : playlist.tracks)
        track->playlists.push_back(&playlist);
    _reader.list(playlist);
    return true;
}

/// The data objects of a playlist, of which the first is its name, and behind them its items.
void ITunesDbReader::Parser::parseParts(const Record& record, bool isMaster, Playlist& playlist)
{
    const quint64 objectCount = field(record.bytes, PlaylistRecord::ObjectCount);
    const quint64 itemCount = field(record.bytes, PlaylistRecord::ItemCount);
    quint64 objects = 0;
    quint64 items = 0;
    RecordWalk parts(record, objectCount + itemCount, {ObjectTag, ItemTag}, _contradictions);
    while (const Record* part = parts.next()) {
        // By the counts, unless the tags know better.
        const bool isObject =
            parts.tag() == ObjectTag || (parts.tag() != ItemTag && parts.index() < objectCount);
        if (isObject) {
            if (objects++ == 0 && objectCount > 0)
                playlist.name = nameOfList(part->bytes);
        } else if (items++ < itemCount && !isMaster && part->bytes.size() >= Item::Smallest) {
            if (Track* track = _tracksById.find(qint32(field(part->bytes, Item::TrackId))))
                playlist.tracks.push_back(track);
        }
    }
    _contradictions += objects != objectCount || items != itemCount ? 1 : 0;
}

/// The first object names a playlist whatever its type is. Of another type, it may have numbers
/// where a text would be.
QString ITunesDbReader::Parser::nameOfList(ByteView object)
{
    const bool isTitle =
        object.size() >= Object::String && field(object, Object::Type) == Object::Title;
    const bool fits = object.size() >= Object::String &&
                      field(object, Object::StringLength) <= object.size() - Object::String;
    return isTitle || fits ? ownText(object) : QString(QLatin1String(""));
}
