#include "Device/itdb/PhotoDatabaseReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/IdMap.h"
#include "Device/Ithmb.h"
#include "Device/itdb/ItdbFile.h"
#include "Device/itdb/ItdbLists.h"
#include "Device/itdb/ItdbProblems.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace
{
const QString FileName = QStringLiteral("Photo Database");

using ItdbRecord::field;

constexpr quint32 DatabaseTag = ItdbRecord::tag("mhfd");
constexpr quint32 ObjectTag = ItdbRecord::tag("mhod");
constexpr quint32 LocationTag = ItdbRecord::tag("mhni");
constexpr quint32 MemberTag = ItdbRecord::tag("mhia");

constexpr quint32 ImageList = 1;
constexpr quint32 AlbumList = 2;
constexpr quint32 FileList = 3;
constexpr std::array Kinds = {
    ItdbLists::Kind{ImageList, ItdbRecord::tag("mhli"), ItdbRecord::tag("mhii")},
    ItdbLists::Kind{AlbumList, ItdbRecord::tag("mhla"), ItdbRecord::tag("mhba")},
    ItdbLists::Kind{FileList, ItdbRecord::tag("mhlf"), ItdbRecord::tag("mhif")}};

/// Offsets in the records, in bytes.
namespace Image
{
constexpr std::size_t ObjectCount = 12;
constexpr std::size_t Id = 16;
constexpr std::size_t Smallest = 20;
} // namespace Image

namespace Object
{
constexpr std::size_t Type = 12;
constexpr quint32 AlbumName = 1; // in an album
constexpr quint32 Thumbnail = 2;
constexpr quint32 FullSizeFile = 5;
constexpr std::size_t Smallest = 16;
} // namespace Object

namespace Location
{
constexpr std::size_t CorrelationId = 16;
constexpr std::size_t Offset = 20;
constexpr std::size_t Size = 24;
constexpr std::size_t VerticalPadding = 28;
constexpr std::size_t HorizontalPadding = 30;
constexpr std::size_t Height = 32;
constexpr std::size_t Width = 34;
constexpr std::size_t Smallest = 36;
} // namespace Location

namespace String
{
constexpr std::size_t Encoding = 4;
constexpr std::size_t Text = 12;
constexpr quint32 Utf16 = 2;
} // namespace String

namespace AlbumRecord
{
constexpr std::size_t ObjectCount = 12;
constexpr std::size_t MemberCount = 16;
constexpr std::size_t Smallest = 20;
} // namespace AlbumRecord

namespace Member
{
constexpr std::size_t ImageId = 16;
constexpr std::size_t Smallest = 20;
} // namespace Member

namespace FileRecord
{
constexpr std::size_t CorrelationId = 16;
constexpr std::size_t Smallest = 20;
} // namespace FileRecord

QString utf16(ByteView bytes)
{
    QString text(qsizetype(bytes.size() / sizeof(char16_t)), Qt::Uninitialized);
    if (!text.isEmpty())
        std::memcpy(text.data(), bytes.data(), std::size_t(text.size()) * sizeof(char16_t));
    return text;
}

QString utf8(ByteView bytes)
{
    const QByteArrayView all(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    const qsizetype end = all.indexOf('\0');
    // What would be a byte order mark is a character of the text.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder.decode(end < 0 ? all : all.first(end));
    return decoder.hasError() ? QString() : text;
}

/// The text, which may be empty but is not null, up to a NUL.
QString untilNul(QString text)
{
    const qsizetype end = text.indexOf(QChar::Null);
    if (end >= 0)
        text.truncate(end);
    return text.isNull() ? QString(QLatin1String("")) : text;
}
} // namespace

/// What is needed only while a database is read.
class PhotoDatabaseReader::Parser
{
public:
    explicit Parser(PhotoDatabaseReader& reader)
        : _reader(reader)
    {
    }

    void parse(const ItdbFile::Content& file);

private:
    bool parseItem(quint32 list, const Record& record, quint64 number);
    bool parseImage(const Record& record);
    void parseRendition(const Record& object, std::vector<Thumbnail>& thumbnails);
    bool parseAlbum(const Record& record, bool isLibrary);
    [[nodiscard]] QString nameOfAlbum(ByteView object);
    bool parseFile(const Record& record);
    [[nodiscard]] QString text(ByteView object);
    [[nodiscard]] QString path(const QString& storedName) const;

    PhotoDatabaseReader& _reader;
    IdMap<Photo> _photosById;
    ItdbLists::Tally _photos;
    ItdbLists::Tally _albums;
    quint64 _contradictions = 0;
};

std::unique_ptr<PhotoDb> PhotoDatabaseReader::initWithDevice(Device& device)
{
    std::unique_ptr<PhotoDatabaseReader> reader(new PhotoDatabaseReader(device));
    // Where the device cannot tell, reading will say why.
    if (device.info(reader->_dbPath).failedAs(Failure::Kind::Missing))
        return nullptr;
    ItdbFile::keepForDiagnosis(device, reader->_dbPath);
    return reader;
}

PhotoDatabaseReader::PhotoDatabaseReader(Device& device)
    : PhotoDb(device)
    , _photoDir(PathName::join(device.prefix(), u"Photos"))
    , _dbPath(PathName::join(_photoDir, FileName))
{
}

QString PhotoDatabaseReader::format() const
{
    return FileName;
}

QString PhotoDatabaseReader::textOfBody(ByteView body)
{
    if (body.size() < String::Text)
        return {};
    const ByteView rest = body.subspan(String::Text);
    const ByteView bytes = rest.first(std::min<std::size_t>(field(body, 0), rest.size()));
    if (field(body, String::Encoding) == String::Utf16)
        return untilNul(utf16(bytes));
    const QString text = utf8(bytes);
    return text.isNull() && !bytes.empty() ? text : untilNul(text);
}

void PhotoDatabaseReader::parse()
{
    const Expected<ItdbFile::Content> file = ItdbFile::read(device(), _dbPath);
    if (file)
        Parser(*this).parse(*file);
    else
        ItdbProblems(ItdbProblems::Library::Photos, foundProblems()).addUnreadable(file.failure());
}

PreviewPass::Step PhotoDatabaseReader::previewStep() const
{
    return [decoder = Ithmb(device()), small = quint32(smallCorrelationId())](Photo& photo) {
        if (small == 0) // no list of files: then no kind is the small one
            return;
        for (const Thumbnail& thumbnail : photo.thumbnails) {
            if (thumbnail.correlationId == small)
                photo.setSmallImage(decoder.convert(thumbnail));
        }
    };
}

void PhotoDatabaseReader::Parser::parse(const ItdbFile::Content& file)
{
    const ByteView database =
        std::as_bytes(std::span(file.bytes.constData(), std::size_t(file.bytes.size())));
    const ItdbLists::Contents contents =
        ItdbLists::find(database, DatabaseTag, Kinds, _contradictions);
    for (const ItdbLists::List& list : contents.lists) {
        const ItdbLists::Tally tally =
            ItdbLists::eachItem(list, _contradictions, [&](const Record& item, quint64 number) {
                return parseItem(list.kind.type, item, number);
            });
        if (list.kind.type == ImageList)
            _photos.add(tally);
        else if (list.kind.type == AlbumList)
            _albums.add(tally.withoutFirst());
        else if (tally.read != tally.stated || tally.beyond > 0)
            ++_contradictions;
    }
    ItdbProblems problems(ItdbProblems::Library::Photos, _reader.foundProblems());
    problems.addFile(file, contents);
    problems.addItems(ItdbProblems::Items::Photos, _photos);
    problems.addItems(ItdbProblems::Items::Albums, _albums);
    if (!contents.isForeign)
        problems.addContradictions(_contradictions);
}

bool PhotoDatabaseReader::Parser::parseItem(quint32 list, const Record& record, quint64 number)
{
    switch (list) {
    case ImageList:
        return parseImage(record);
    case AlbumList:
        return parseAlbum(record, number == 0); // the first one is the whole library
    default:
        return parseFile(record);
    }
}

bool PhotoDatabaseReader::Parser::parseImage(const Record& record)
{
    if (record.bytes.size() < Image::Smallest)
        return false;
    Photo& photo = _reader.newPhoto();
    photo.photoId = qint32(field(record.bytes, Image::Id));
    RecordWalk objects(record, field(record.bytes, Image::ObjectCount), {ObjectTag, ObjectTag},
                       _contradictions, LocationTag);
    while (const Record* object = objects.next()) {
        if (objects.isBeyondCount() || object->bytes.size() < Object::Smallest)
            continue;
        const quint32 type = field(object->bytes, Object::Type);
        if (type == Object::Thumbnail) {
            parseRendition(*object, photo.thumbnails);
        } else if (type == Object::FullSizeFile) {
            const Record location = ItdbRecord::nested(*object, LocationTag, _contradictions);
            const Record name = ItdbRecord::nested(location, ObjectTag, _contradictions);
            photo.fullSizeFile = path(text(name.bytes));
        }
    }
    if (objects.disagreesWithCount())
        ++_contradictions;
    _photosById.set(photo.photoId, &photo);
    return true;
}

void PhotoDatabaseReader::Parser::parseRendition(const Record& object,
                                                 std::vector<Thumbnail>& thumbnails)
{
    const Record record = ItdbRecord::nested(object, LocationTag, _contradictions);
    const ByteView location = record.bytes;
    if (location.size() < Location::Smallest) {
        ++_contradictions;
        return;
    }
    Thumbnail& result = thumbnails.emplace_back();
    result.correlationId = field(location, Location::CorrelationId);
    result.thumbnailOffset = field(location, Location::Offset);
    result.imageSize = field(location, Location::Size);
    result.verticalPadding = Utility::readUShortFromData(location, Location::VerticalPadding);
    result.horizontalPadding = Utility::readUShortFromData(location, Location::HorizontalPadding);
    result.imageHeight = Utility::readUShortFromData(location, Location::Height);
    result.imageWidth = Utility::readUShortFromData(location, Location::Width);
    result.filename = path(text(ItdbRecord::nested(record, ObjectTag, _contradictions).bytes));
    result.adjustSize();
}

/// The text of a data object.
QString PhotoDatabaseReader::Parser::text(ByteView object)
{
    const std::size_t header = object.size() < ItdbRecord::SmallestRecord
                                   ? object.size()
                                   : field(object, ItdbRecord::HeaderLength);
    const ByteView body = object.subspan(std::min(header, object.size()));
    if (body.size() < String::Text || field(body, 0) > body.size() - String::Text)
        ++_contradictions;
    return textOfBody(body);
}

/// The objects of an album, of which the first is its name, and behind them its members.
bool PhotoDatabaseReader::Parser::parseAlbum(const Record& record, bool isLibrary)
{
    if (record.bytes.size() < AlbumRecord::Smallest)
        return false;
    const quint64 objectCount = field(record.bytes, AlbumRecord::ObjectCount);
    const quint64 memberCount = field(record.bytes, AlbumRecord::MemberCount);
    QString name;
    std::vector<Photo*> photos;
    quint64 objects = 0;
    quint64 members = 0;
    RecordWalk parts(record, objectCount + memberCount, {ObjectTag, MemberTag}, _contradictions);
    while (const Record* part = parts.next()) {
        // By the counts, unless the tags know better.
        const bool isObject =
            parts.tag() == ObjectTag || (parts.tag() != MemberTag && parts.index() < objectCount);
        if (isObject) {
            if (objects++ == 0 && objectCount > 0)
                name = nameOfAlbum(part->bytes);
        } else if (members++ < memberCount && part->bytes.size() >= Member::Smallest) {
            if (Photo* photo = _photosById.find(qint32(field(part->bytes, Member::ImageId))))
                photos.push_back(photo);
        }
    }
    if (objects != objectCount || members != memberCount)
        ++_contradictions;
    if (isLibrary)
        return true;
    // Linked only now: until here it might have been dropped.
    Album& album = _reader.newAlbum(name);
    album.photos = std::move(photos);
    for (Photo* photo : album.photos)
        photo->album = &album;
    return true;
}

/// The first object names an album whatever its type is. Of another type, it may have numbers
/// where a text would be.
QString PhotoDatabaseReader::Parser::nameOfAlbum(ByteView object)
{
    if (object.size() >= Object::Smallest && field(object, Object::Type) == Object::AlbumName)
        return text(object);
    const quint64 before = _contradictions;
    const QString name = text(object);
    return std::exchange(_contradictions, before) == before ? name : QString(QLatin1String(""));
}

bool PhotoDatabaseReader::Parser::parseFile(const Record& record)
{
    if (record.bytes.size() < FileRecord::Smallest)
        return false;
    const auto kind = qint32(field(record.bytes, FileRecord::CorrelationId));
    // Of several, the last in the file counts.
    if (smallCorrelations().contains(kind))
        _reader._smallCorrelationId = kind;
    else if (largeCorrelations().contains(kind))
        _reader._largeCorrelationId = kind;
    return true;
}

QString PhotoDatabaseReader::Parser::path(const QString& storedName) const
{
    if (storedName.isNull())
        return {};
    QString name = storedName;
    name.replace(u':', u'/');
    return PathName::join(_reader._photoDir, name);
}
