#include "Device/itdb/ITunesDbReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/itdb/ItdbFile.h"
#include "Device/itdb/ItdbRecord.h"
#include "Device/itdb/StringPool.h"
#include "Device/itdb/TrackIds.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cstring>

namespace
{
const QString FileName = QStringLiteral("iTunesDB");

using ItdbRecord::eachItem;
using ItdbRecord::field;
using ItdbRecord::HeaderLength;

/// Offsets in the records, in bytes.
namespace Database // mhbd
{
constexpr std::size_t Version = 16;
constexpr std::size_t DataSetCount = 20;
} // namespace Database

namespace DataSet // mhsd
{
constexpr std::size_t Type = 12;
constexpr quint32 TrackList = 1;
constexpr quint32 PlaylistList = 2;
} // namespace DataSet

namespace TrackRecord // mhit
{
constexpr std::size_t ObjectCount = 12;
constexpr std::size_t Id = 16;
constexpr std::size_t Milliseconds = 40;
constexpr std::size_t PodcastFlag = 167;
constexpr std::size_t MediaKind = 208;
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
} // namespace PlaylistRecord

namespace Item // mhip
{
constexpr std::size_t TrackId = 24;
}

/// The bytes of a string object's text, an odd last one left out.
ByteView stringBytes(ByteView object)
{
    const std::size_t length = field(object, Object::StringLength);
    const ByteView bytes = Utility::bytesOfData(object, Object::String, length);
    return bytes.first(bytes.size() / sizeof(char16_t) * sizeof(char16_t));
}

/// A string object's text on the stack. The file does not align it, so it has to be moved.
class StringBuffer
{
public:
    explicit StringBuffer(ByteView object)
    {
        const ByteView bytes = stringBytes(object);
        _units.resize(qsizetype(bytes.size() / sizeof(char16_t)));
        if (!bytes.empty())
            std::memcpy(_units.data(), bytes.data(), bytes.size());
    }

    [[nodiscard]] QStringView view() const { return {_units.data(), _units.size()}; }
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

    void parse(ByteView database);

private:
    void parseTrack(ByteView record);
    void parseTrackObject(ByteView object, Track& track);
    void parsePlaylist(ByteView record, bool isMaster);

    QString sharedText(ByteView object) { return _pool.shared(StringBuffer(object).view()); }
    [[nodiscard]] QString path(ByteView object) const;

    ITunesDbReader& _reader;
    quint32 _version = 0;
    TrackIds _tracksById;
    StringPool _pool;
};

std::unique_ptr<TrackDb> ITunesDbReader::initWithDevice(Device& device)
{
    std::unique_ptr<ITunesDbReader> reader(new ITunesDbReader(device));
    if (!device.fileExists(reader->_dbPath))
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

QString ITunesDbReader::getStringFromMhod(ByteView data, std::size_t offset)
{
    const ByteView rest = data.subspan(std::min(offset, data.size()));
    const ByteView bytes = stringBytes(rest);
    QString text(qsizetype(bytes.size() / sizeof(char16_t)), Qt::Uninitialized);
    if (!bytes.empty())
        std::memcpy(text.data(), bytes.data(), bytes.size());
    return text;
}

void ITunesDbReader::parse()
{
    const QByteArray file = ItdbFile::read(device(), _dbPath);
    Parser(*this).parse(std::as_bytes(std::span(file.constData(), std::size_t(file.size()))));
}

void ITunesDbReader::Parser::parse(ByteView database)
{
    _version = field(database, Database::Version);
    const quint32 count = field(database, Database::DataSetCount);
    RecordCursor dataSets(database, field(database, HeaderLength));
    for (quint32 i = 0; i < count; ++i) {
        const ByteView dataSet = dataSets.next();
        const quint32 type = field(dataSet, DataSet::Type);
        if (type == DataSet::TrackList) {
            eachItem(dataSet, [this](ByteView record, quint32) { parseTrack(record); });
        } else if (type == DataSet::PlaylistList) {
            // The first playlist is the whole library.
            eachItem(dataSet,
                     [this](ByteView record, quint32 n) { parsePlaylist(record, n == 0); });
        }
    }
}

void ITunesDbReader::Parser::parseTrack(ByteView record)
{
    const quint32 count = field(record, TrackRecord::ObjectCount);
    const quint32 id = field(record, TrackRecord::Id);
    Track& track = _reader.newTrack();
    track.duration = field(record, TrackRecord::Milliseconds) / 1000.0;
    if (_version > TrackRecord::LastVersionWithoutKind) {
        track.isPodcast = Utility::readCharFromData(record, TrackRecord::PodcastFlag) != 0;
        track.type = mediaTypeToTrackType(qint32(field(record, TrackRecord::MediaKind)));
    }
    RecordCursor objects(record, field(record, HeaderLength));
    for (quint32 i = 0; i < count; ++i)
        parseTrackObject(objects.next(), track);
    _reader.list(track);
    _tracksById.add(id, &track);
}

void ITunesDbReader::Parser::parseTrackObject(ByteView object, Track& track)
{
    switch (field(object, Object::Type)) {
    case Object::Title:
        track.title = getStringFromMhod(object, 0);
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

QString ITunesDbReader::Parser::path(ByteView object) const
{
    // As getFileSystemPath does it, without a string in between: there is one for each track.
    StringBuffer location(object);
    std::replace(location.begin(), location.end(), u':', u'/');
    return PathName::join(_reader.device().prefix(), location.view());
}

void ITunesDbReader::Parser::parsePlaylist(ByteView record, bool isMaster)
{
    const quint32 objectCount = field(record, PlaylistRecord::ObjectCount);
    const quint32 itemCount = field(record, PlaylistRecord::ItemCount);
    Playlist read;
    // Items follow the data objects without a gap.
    RecordCursor parts(record, field(record, HeaderLength));
    for (quint32 i = 0; i < objectCount; ++i) {
        const ByteView object = parts.next();
        if (i == 0)
            read.name = ItdbRecord::textOrEmpty(
                object, [](ByteView text) { return getStringFromMhod(text, 0); });
    }
    for (quint32 i = 0; i < itemCount; ++i) {
        const quint32 id = field(parts.next(), Item::TrackId);
        if (Track* track = isMaster ? nullptr : _tracksById.find(id))
            read.tracks.push_back(track);
    }
    if (isMaster) {
        _reader.setName(read.name);
        return;
    }
    // Linked only now: damage within a playlist must not leave links to one that is not listed.
    Playlist& playlist = _reader.newPlaylist();
    playlist = std::move(read);
    for (Track* track : playlist.tracks)
        track->playlists.push_back(&playlist);
    _reader.list(playlist);
}
