#include "Device/itdb/PhotoDatabaseReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/Ithmb.h"
#include "Device/itdb/ItdbFile.h"
#include "Device/itdb/ItdbRecord.h"

#include <QStringDecoder>

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace
{
const QString FileName = QStringLiteral("Photo Database");

using ItdbRecord::afterHeader;
using ItdbRecord::eachItem;
using ItdbRecord::field;
using ItdbRecord::HeaderLength;

/// Offsets in the records, in bytes.
namespace Database
{
constexpr std::size_t DataSetCount = 20;
}

namespace DataSet
{
constexpr std::size_t Kind = 12;
constexpr quint32 ImageList = 1;
constexpr quint32 AlbumList = 2;
constexpr quint32 FileList = 3;
} // namespace DataSet

namespace Image
{
constexpr std::size_t ObjectCount = 12;
constexpr std::size_t Id = 16;
} // namespace Image

namespace Object
{
constexpr std::size_t Type = 12;
constexpr quint32 Thumbnail = 2;
constexpr quint32 FullSizeFile = 5;
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
} // namespace AlbumRecord

namespace Member
{
constexpr std::size_t ImageId = 16;
}

namespace FileRecord
{
constexpr std::size_t CorrelationId = 16;
}

QString textOf(ByteView object)
{
    return PhotoDatabaseReader::getStringFromMhod(object, field(object, HeaderLength));
}

QString utf16(ByteView bytes)
{
    QString text(qsizetype(bytes.size() / sizeof(char16_t)), Qt::Uninitialized);
    if (!text.isEmpty())
        std::memcpy(text.data(), bytes.data(), std::size_t(text.size()) * sizeof(char16_t));
    return text;
}

QString utf8(ByteView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(
        QByteArrayView(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())));
    if (decoder.hasError())
        return {};
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

    void parse(ByteView database);

private:
    void parseImage(ByteView record);
    [[nodiscard]] Thumbnail thumbnail(ByteView location) const;
    void parseAlbum(ByteView record, bool isLibrary);
    void parseFile(ByteView record);
    [[nodiscard]] QString path(const QString& storedName) const;

    PhotoDatabaseReader& _reader;
    std::unordered_map<quint32, Photo*> _photosById;
};

std::unique_ptr<PhotoDb> PhotoDatabaseReader::initWithDevice(Device& device)
{
    std::unique_ptr<PhotoDatabaseReader> reader(new PhotoDatabaseReader(device));
    if (!device.fileExists(reader->_dbPath))
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

QString PhotoDatabaseReader::getStringFromMhod(ByteView data, std::size_t offset)
{
    const ByteView body = data.subspan(std::min(offset, data.size()));
    const std::size_t length = field(body, 0);
    const bool isUtf16 = field(body, String::Encoding) == String::Utf16;
    const ByteView bytes = Utility::bytesOfData(body, String::Text, length);
    return isUtf16 ? utf16(bytes) : utf8(bytes);
}

void PhotoDatabaseReader::parse()
{
    const QByteArray file = ItdbFile::read(device(), _dbPath);
    Parser(*this).parse(std::as_bytes(std::span(file.constData(), std::size_t(file.size()))));
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

void PhotoDatabaseReader::Parser::parse(ByteView database)
{
    const quint32 count = field(database, Database::DataSetCount);
    RecordCursor dataSets(database, field(database, HeaderLength));
    for (quint32 i = 0; i < count; ++i) {
        const ByteView dataSet = dataSets.next();
        switch (field(dataSet, DataSet::Kind)) {
        case DataSet::ImageList:
            eachItem(dataSet, [this](ByteView record, quint32) { parseImage(record); });
            break;
        case DataSet::AlbumList:
            // The first album is the whole library.
            eachItem(dataSet, [this](ByteView record, quint32 n) { parseAlbum(record, n == 0); });
            break;
        case DataSet::FileList:
            eachItem(dataSet, [this](ByteView record, quint32) { parseFile(record); });
            break;
        default:
            break;
        }
    }
}

void PhotoDatabaseReader::Parser::parseImage(ByteView record)
{
    const quint32 count = field(record, Image::ObjectCount);
    const quint32 id = field(record, Image::Id);
    std::vector<Thumbnail> thumbnails;
    QString fullSizeFile;
    RecordCursor objects(record, field(record, HeaderLength));
    for (quint32 i = 0; i < count; ++i) {
        const ByteView object = objects.next();
        const quint32 type = field(object, Object::Type);
        if (type == Object::Thumbnail)
            thumbnails.push_back(thumbnail(afterHeader(object)));
        else if (type == Object::FullSizeFile)
            fullSizeFile = path(textOf(afterHeader(afterHeader(object))));
    }
    // Listed only now: a photo that is cut in the middle is none.
    Photo& photo = _reader.newPhoto();
    photo.photoId = qint32(id);
    photo.thumbnails = std::move(thumbnails);
    photo.fullSizeFile = fullSizeFile;
    _photosById[id] = &photo;
}

Thumbnail PhotoDatabaseReader::Parser::thumbnail(ByteView location) const
{
    Thumbnail result;
    result.correlationId = field(location, Location::CorrelationId);
    result.thumbnailOffset = field(location, Location::Offset);
    result.imageSize = field(location, Location::Size);
    result.verticalPadding = Utility::readUShortFromData(location, Location::VerticalPadding);
    result.horizontalPadding = Utility::readUShortFromData(location, Location::HorizontalPadding);
    result.imageHeight = Utility::readUShortFromData(location, Location::Height);
    result.imageWidth = Utility::readUShortFromData(location, Location::Width);
    result.filename = path(textOf(afterHeader(location)));
    result.adjustSize();
    return result;
}

void PhotoDatabaseReader::Parser::parseAlbum(ByteView record, bool isLibrary)
{
    const quint32 objectCount = field(record, AlbumRecord::ObjectCount);
    const quint32 memberCount = field(record, AlbumRecord::MemberCount);
    QString name;
    std::vector<Photo*> photos;
    // Members follow the objects without a gap.
    RecordCursor parts(record, field(record, HeaderLength));
    for (quint32 i = 0; i < objectCount; ++i) {
        const ByteView object = parts.next();
        if (i == 0)
            name = ItdbRecord::textOrEmpty(object, textOf);
    }
    for (quint32 i = 0; i < memberCount; ++i) {
        const auto found = _photosById.find(field(parts.next(), Member::ImageId));
        if (found != _photosById.end())
            photos.push_back(found->second);
    }
    if (isLibrary)
        return;
    // Linked only now: damage within an album must not leave links to one that is not listed.
    Album& album = _reader.newAlbum(name);
    album.photos = std::move(photos);
    for (Photo* photo : album.photos)
        photo->album = &album;
}

void PhotoDatabaseReader::Parser::parseFile(ByteView record)
{
    const auto kind = qint32(field(record, FileRecord::CorrelationId));
    // Of several, the last in the file counts.
    if (smallCorrelations().contains(kind))
        _reader._smallCorrelationId = kind;
    else if (largeCorrelations().contains(kind))
        _reader._largeCorrelationId = kind;
}

QString PhotoDatabaseReader::Parser::path(const QString& storedName) const
{
    if (storedName.isNull())
        return {};
    QString name = storedName;
    name.replace(u':', u'/');
    return PathName::join(_reader._photoDir, name);
}
