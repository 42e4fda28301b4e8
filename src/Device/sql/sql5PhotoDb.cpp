#include "Device/sql/sql5PhotoDb.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/Device.h"
#include "Device/Ithmb.h"
#include "Device/TemporaryCopy.h"
#include "Device/sql/Database.h"

#include <QStringList>

#include <optional>
#include <unordered_map>

namespace
{
const QString FileName = QStringLiteral("Photos.sqlite");

/// Albums in which the phone keeps its books, not people their photos.
const QStringList BookkeepingAlbums = {
    QStringLiteral("progress-sync"),        QStringLiteral("progress-fs-import"),
    QStringLiteral("progress-ota-restore"), QStringLiteral("Photos"),
    QStringLiteral("Photo Stream"),         QStringLiteral("Photo Library"),
    QStringLiteral("My Photo Stream")};
} // namespace

/// What is needed only while a database is read.
class sql5PhotoDb::Parser
{
public:
    Parser(sql5PhotoDb& reader, const Database& database)
        : _reader(reader)
        , _database(database)
    {
    }

    void parse();

private:
    /// The answer of a count; nothing when the statement cannot be prepared.
    std::optional<int> count(const char* sql);
    void parseAlbums();
    void parsePhotos();
    void parseMembers(const char* sql);

    sql5PhotoDb& _reader;
    const Database& _database;
    std::unordered_map<int, Album*> _albumsById;
    std::unordered_map<int, Photo*> _photosById;
};

std::unique_ptr<PhotoDb> sql5PhotoDb::initWithDevice(Device& device)
{
    std::unique_ptr<sql5PhotoDb> reader(new sql5PhotoDb(device));
    if (!device.fileExists(reader->_dbPath))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_dbPath, TemporaryCopy::SideFiles::Take);
    return reader;
}

sql5PhotoDb::sql5PhotoDb(Device& device)
    : PhotoDb(device)
    , _photoDir(PathName::join(device.prefix(), u"PhotoData"))
    , _dbPath(PathName::join(_photoDir, FileName))
{
    const QString folder = PathName::join(_photoDir, u"Thumbnails");
    for (const QStringView name : {u"166x166.ithmb", u"158x158.ithmb", u"120x120.ithmb"}) {
        const QString file = PathName::join(folder, name);
        if (device.fileExists(file)) {
            _smallFile = file;
            return;
        }
    }
}

QString sql5PhotoDb::format() const
{
    return FileName;
}

bool sql5PhotoDb::filterAlbum(const Album& album)
{
    return album.photos.empty() && BookkeepingAlbums.contains(album.name);
}

void sql5PhotoDb::parse()
{
    const TemporaryCopy copy(device(), _dbPath, TemporaryCopy::SideFiles::Take);
    Parser(*this, Database(copy)).parse();
}

PreviewPass::Step sql5PhotoDb::previewStep() const
{
    return [decoder = Ithmb(device()), file = _smallFile](Photo& photo) {
        if (!file.isNull() && photo.thumbnailIndex >= 0)
            photo.setSmallImage(decoder.convert(file, photo.thumbnailIndex));
    };
}

void sql5PhotoDb::Parser::parse()
{
    if (count("select count(*) from sqlite_master where type='table' and name='ZGENERICALBUM'") ==
        0)
        return;
    parseAlbums();
    parsePhotos();
    // A photo that both tables list stays with the album of the second.
    if (count("select count(*) from sqlite_master where type='table' and name='Z_6ASSETS'") > 0)
        parseMembers("select z_6albums, z_11assets from z_6assets");
    if (count("select count(*) from sqlite_master where type='table' and name='Z_8ASSETS'") > 0)
        parseMembers("select z_8albums, z_14assets from z_8assets");
    _reader.removeAlbums(filterAlbum);
}

std::optional<int> sql5PhotoDb::Parser::count(const char* sql)
{
    Statement row = _database.prepare(sql);
    return row.step() ? std::optional(row.number(0)) : std::nullopt;
}

void sql5PhotoDb::Parser::parseAlbums()
{
    Statement row = _database.prepare("select z_pk, ztitle from zgenericalbum");
    while (row.step()) {
        const QString title = row.text(1);
        if (title.isEmpty())
            continue;
        Album& album = _reader.newAlbum(title);
        album.albumId = row.id(0);
        _albumsById[album.albumId] = &album;
    }
}

void sql5PhotoDb::Parser::parsePhotos()
{
    // Titles are asked for behind the last column, where there are none, so every one is empty.
    constexpr int TitleColumn = 5;
    Statement row = _database.prepare(
        "select z_pk, zthumbnailindex, zdirectory, zfilename, ztitle from zgenericasset");
    while (row.step()) {
        const int thumbnailIndex = row.number(1);
        if (thumbnailIndex < 0)
            continue;
        Photo& photo = _reader.newPhoto();
        photo.photoId = row.number(0);
        photo.thumbnailIndex = thumbnailIndex;
        photo.fullSizeFile =
            PathName::join(PathName::join(_reader.device().prefix(), row.text(2)), row.text(3));
        photo.title = row.text(TitleColumn);
        _photosById[photo.photoId] = &photo;
    }
}

void sql5PhotoDb::Parser::parseMembers(const char* sql)
{
    Statement row = _database.prepare(sql);
    while (row.step()) {
        const auto album = _albumsById.find(row.id(0));
        const auto photo = _photosById.find(row.number(1));
        if (album == _albumsById.end() || photo == _photosById.end())
            continue;
        photo->second->album = album->second;
        album->second->photos.push_back(photo->second);
    }
}
