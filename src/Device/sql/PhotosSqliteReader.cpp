#include "Device/sql/PhotosSqliteReader.h"

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "Device/Device.h"
#include "Device/IdMap.h"
#include "Device/Ithmb.h"
#include "Device/PathsWithNul.h"
#include "Device/TemporaryCopy.h"
#include "Device/sql/Database.h"

#include <QStringList>

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
class PhotosSqliteReader::Parser
{
public:
    Parser(PhotosSqliteReader& reader, const Database& database)
        : _reader(reader)
        , _database(database)
    {
    }

    void parse();

private:
    void parseAlbums();
    void parsePhotos();
    void parseAllMembers();
    void parseMembers(const Query& members);
    void sayOtherTablesOfMembers();

    PhotosSqliteReader& _reader;
    const Database& _database;
    IdMap<Album> _albumsById;
    IdMap<Photo> _photosById;
    PathsWithNul _pathsWithNul;
};

std::unique_ptr<PhotoDb> PhotosSqliteReader::initWithDevice(Device& device)
{
    std::unique_ptr<PhotosSqliteReader> reader(new PhotosSqliteReader(device));
    if (device.info(reader->_dbPath).failedAs(Failure::Kind::Missing))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_dbPath, TemporaryCopy::SideFiles::Take);
    return reader;
}

PhotosSqliteReader::PhotosSqliteReader(Device& device)
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

QString PhotosSqliteReader::format() const
{
    return FileName;
}

bool PhotosSqliteReader::filterAlbum(const Album& album)
{
    return album.photos.empty() && BookkeepingAlbums.contains(album.name);
}

void PhotosSqliteReader::parse()
{
    const TemporaryCopy copy(device(), _dbPath, TemporaryCopy::SideFiles::Take);
    const Database database(copy,
                            LibraryProblems(LibraryProblems::Library::Photos, foundProblems()));
    Parser(*this, database).parse();
}

PreviewPass::Step PhotosSqliteReader::previewStep() const
{
    return [decoder = Ithmb(device()), file = _smallFile](Photo& photo) {
        if (!file.isNull() && photo.thumbnailIndex >= 0)
            photo.setSmallImage(decoder.convert(file, photo.thumbnailIndex));
    };
}

void PhotosSqliteReader::Parser::parse()
{
    if (_database.hasTable("ZGENERICALBUM") == false)
        return _database.problems().isNotUnderstood(QStringLiteral("no such table: ZGENERICALBUM"));
    parseAlbums();
    parsePhotos();
    parseAllMembers();
    _reader.removeAlbums(filterAlbum);
}

void PhotosSqliteReader::Parser::parseAllMembers()
{
    const bool hasFirst = _database.hasTable("Z_6ASSETS").value_or(false);
    const bool hasSecond = _database.hasTable("Z_8ASSETS").value_or(false);
    // A photo that both tables list stays with the album of the second.
    if (hasFirst)
        parseMembers({"z_6albums, z_11assets", "z_6assets"});
    if (hasSecond)
        parseMembers({"z_8albums, z_14assets", "z_8assets"});
    if (!hasFirst && !hasSecond && !_reader.albums().empty())
        sayOtherTablesOfMembers();
}

/// The numbers in the name of the table change with the age of the phone.
void PhotosSqliteReader::Parser::sayOtherTablesOfMembers()
{
    Statement tables = _database.prepare(
        {.columns = "name",
         .table = "sqlite_master",
         .where = "type = 'table' and substr(name, 1, 2) = 'Z_' and substr(name, -6) = 'ASSETS'"});
    if (tables.step())
        _database.problems().isNotUnderstood(tables.text(0));
}

void PhotosSqliteReader::Parser::parseAlbums()
{
    Statement row = _database.prepare({"z_pk, ztitle", "zgenericalbum"});
    while (row.step()) {
        const QString title = row.text(1);
        if (title.isEmpty())
            continue;
        Album& album = _reader.newAlbum(title);
        album.albumId = row.id(0);
        _albumsById.set(album.albumId, &album);
    }
}

void PhotosSqliteReader::Parser::parsePhotos()
{
    // Titles are asked for behind the last column, where there are none, so every one is empty.
    constexpr int TitleColumn = 5;
    Statement row =
        _database.prepare({.columns = "z_pk, zthumbnailindex, zdirectory, zfilename, ztitle",
                           .table = "zgenericasset",
                           .isMain = true});
    while (row.step()) {
        const int thumbnailIndex = row.number(1);
        if (thumbnailIndex < 0)
            continue;
        Photo& photo = _reader.newPhoto();
        photo.photoId = row.number(0);
        photo.thumbnailIndex = thumbnailIndex;
        const QString folder = PathName::join(_reader.device().prefix(), row.text(2));
        photo.fullSizeFile =
            _pathsWithNul.choose(_reader.device(), row.utf8(3), [&folder](const QString& name) {
                return PathName::join(folder, name);
            });
        photo.title = row.text(TitleColumn);
        _photosById.set(photo.photoId, &photo);
    }
}

void PhotosSqliteReader::Parser::parseMembers(const Query& members)
{
    Statement row = _database.prepare(members);
    while (row.step()) {
        Album* album = _albumsById.find(row.id(0));
        Photo* photo = _photosById.find(row.id(1));
        if (!album || !photo)
            continue;
        photo->album = album;
        album->photos.push_back(photo);
    }
}
