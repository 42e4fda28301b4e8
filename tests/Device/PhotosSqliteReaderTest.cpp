#include "Device/sql/PhotosSqliteReader.h"

#include "Base/Utility.h"
#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"
#include "support/IthmbWriter.h"
#include "support/PhotosSqliteWriter.h"
#include "support/SamplePicture.h"

#include <QDirIterator>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace
{
class PhotosSqlite : public testing::Test
{
protected:
    PhotosSqlite() { QDir().mkpath(path("PhotoData/Thumbnails")); }

    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }
    [[nodiscard]] QString databasePath() const { return path("PhotoData/Photos.sqlite"); }

    PhotoDb& read()
    {
        EXPECT_EQ(PhotosSqliteWriter::write(databasePath(), library), "");
        return open();
    }
    PhotoDb& readStatements(const QStringList& statements)
    {
        QFile::remove(databasePath());
        EXPECT_EQ(PhotosSqliteWriter::run(databasePath(), statements), "");
        return open();
    }
    PhotoDb& open()
    {
        device = std::make_unique<iPodDevice>(_folder.path());
        PhotoDb* db = device->photoDb();
        (void)db->photos();
        return *db;
    }
    void writeThumbnails(int size, int count, int firstPicture) const
    {
        QByteArray file;
        for (int i = 0; i < count; ++i)
            file +=
                IthmbWriter::fixedRecord(size, SamplePicture::draw(firstPicture + i, {size, size}));
        Files::write(path(QString("PhotoData/Thumbnails/%1x%1.ithmb").arg(size)), file);
    }

    TestPhoneLibrary library;
    std::unique_ptr<iPodDevice> device;

private:
    QTemporaryDir _folder;
};

std::vector<int> ids(const std::vector<Photo*>& photos)
{
    std::vector<int> result;
    for (const Photo* photo : photos)
        result.push_back(photo->photoId);
    return result;
}

QStringList names(const std::vector<Album*>& albums)
{
    QStringList result;
    for (const Album* album : albums)
        result.append(album->name);
    return result;
}
} // namespace

TEST_F(PhotosSqlite, HasItsPhotosAndAlbums)
{
    library.albums = {{3, "Trip"}};
    library.assets = {{10, 4, "DCIM/100APPLE", "IMG_0010.JPG", "Ten"},
                      {11, 5, "DCIM/100APPLE", "IMG_0011.JPG", {}}};
    library.members6 = {{3, 11}};
    PhotoDb& db = read();
    ASSERT_EQ(ids(db.photos()), (std::vector<int>{10, 11}));
    const Photo& first = *db.photos()[0];
    EXPECT_EQ(first.fullSizeFile, path("DCIM/100APPLE/IMG_0010.JPG"));
    EXPECT_EQ(first.thumbnailIndex, 4);
    EXPECT_EQ(first.album, nullptr);
    EXPECT_TRUE(first.thumbnails.empty());
    EXPECT_EQ(names(db.albums()), QStringList("Trip"));
    EXPECT_EQ(db.albums()[0]->albumId, 3);
    EXPECT_EQ(ids(db.albums()[0]->photos), (std::vector<int>{11}));
    EXPECT_EQ(db.photos()[1]->album, db.albums()[0]);
    EXPECT_EQ(db.smallCorrelationId(), 0);
    EXPECT_EQ(db.largeCorrelationId(), 0);
}

TEST_F(PhotosSqlite, HasNoTitles)
{
    library.assets = {{10, 0, "DCIM", "A.JPG", "A title"}};
    PhotoDb& db = read();
    EXPECT_EQ(db.photos()[0]->title, "");
    EXPECT_FALSE(db.photos()[0]->title.isNull());
}

TEST_F(PhotosSqlite, KnowsAlbumsByTheLow32BitsOfTheirIds)
{
    PhotoDb& db = readStatements({"CREATE TABLE ZGENERICALBUM (Z_PK INTEGER, ZTITLE)",
                                  "INSERT INTO ZGENERICALBUM VALUES (4294967299, 'Trip')",
                                  "CREATE TABLE ZGENERICASSET (Z_PK, ZTHUMBNAILINDEX, ZDIRECTORY, "
                                  "ZFILENAME, ZTITLE)",
                                  "INSERT INTO ZGENERICASSET VALUES (10, 0, 'DCIM', 'A.JPG', '')",
                                  "CREATE TABLE Z_8ASSETS (Z_8ALBUMS, Z_14ASSETS)",
                                  "INSERT INTO Z_8ASSETS VALUES (4294967299, 10)"});
    ASSERT_EQ(names(db.albums()), QStringList("Trip"));
    EXPECT_EQ(db.albums()[0]->albumId, 3);
    EXPECT_EQ(ids(db.albums()[0]->photos), (std::vector<int>{10}));
}

TEST_F(PhotosSqlite, LeavesOutPicturesWithANegativeIndex)
{
    library.albums = {{3, "Trip"}};
    library.assets = {{10, -1, "DCIM", "A.JPG", {}}, {11, 0, "DCIM", "B.JPG", {}}};
    library.members6 = {{3, 10}, {3, 11}};
    PhotoDb& db = read();
    EXPECT_EQ(ids(db.photos()), (std::vector<int>{11}));
    EXPECT_EQ(ids(db.albums()[0]->photos), (std::vector<int>{11}));
}

TEST_F(PhotosSqlite, TakesAMissingIndexForZero)
{
    library.assets = {{10, std::nullopt, "DCIM", "A.JPG", {}}};
    PhotoDb& db = read();
    ASSERT_EQ(db.photos().size(), 1U);
    EXPECT_EQ(db.photos()[0]->thumbnailIndex, 0);
}

TEST_F(PhotosSqlite, LeavesOutAlbumsWithoutATitleAndTheirMembers)
{
    library.albums = {{1, ""}, {2, QString()}, {3, "Trip"}};
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    library.members6 = {{1, 10}, {2, 10}};
    PhotoDb& db = read();
    EXPECT_EQ(names(db.albums()), QStringList("Trip"));
    EXPECT_EQ(db.photos()[0]->album, nullptr);
}

TEST_F(PhotosSqlite, DropsEmptyAlbumsOfThePhoneItself)
{
    const QStringList own = {"progress-sync",  "progress-fs-import", "progress-ota-restore",
                             "Photos",         "Photo Stream",       "Photo Library",
                             "My Photo Stream"};
    int id = 1;
    for (const QString& name : own)
        library.albums.emplace_back(id++, name);
    library.albums.emplace_back(id++, "photo stream");
    library.albums.emplace_back(id, "Holiday");
    EXPECT_EQ(names(read().albums()), QStringList({"photo stream", "Holiday"}));
}

TEST_F(PhotosSqlite, KeepsThoseAlbumsWithAPhotoInThem)
{
    library.albums = {{1, "Photo Stream"}, {2, "Photos"}};
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    library.members8 = {{1, 10}};
    EXPECT_EQ(names(read().albums()), QStringList("Photo Stream"));
}

TEST_F(PhotosSqlite, ReadsBothTablesOfMembers)
{
    library.albums = {{1, "Six"}, {2, "Eight"}};
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    library.members6 = {{1, 10}, {1, 99}, {99, 10}};
    library.members8 = {{2, 10}};
    PhotoDb& db = read();
    EXPECT_EQ(db.photos()[0]->album->name, "Eight");
    EXPECT_EQ(ids(db.albums()[0]->photos), (std::vector<int>{10}));
    EXPECT_EQ(ids(db.albums()[1]->photos), (std::vector<int>{10}));
}

TEST_F(PhotosSqlite, ReadsRowsThatAreStillInTheLog)
{
    library.albums = {{1, "Trip"}};
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    library.members6 = {{1, 10}};
    ASSERT_EQ(PhotosSqliteWriter::writeWithLog(databasePath(), library), "");
    ASSERT_TRUE(QFile::exists(databasePath() + "-wal"));
    PhotoDb& db = open();
    EXPECT_EQ(ids(db.photos()), (std::vector<int>{10}));
    EXPECT_EQ(names(db.albums()), QStringList("Trip"));
}

TEST_F(PhotosSqlite, IsReadWithoutTheLogThatItSaysItHas)
{
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    PhotoDb& db = readStatements(QStringList("PRAGMA journal_mode=WAL") +
                                 PhotosSqliteWriter::statements(library));
    ASSERT_FALSE(QFile::exists(databasePath() + "-wal"));
    EXPECT_EQ(ids(db.photos()), (std::vector<int>{10}));
}

TEST_F(PhotosSqlite, LeavesNoTemporaryFilesAndACopyForDiagnosis)
{
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    // The folder that copies stand in stays, empty.
    const auto files = [] {
        QStringList paths;
        QDirIterator all(QDir::tempPath(), QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
        while (all.hasNext())
            paths.append(all.next());
        return paths;
    };
    ASSERT_EQ(PhotosSqliteWriter::write(databasePath(), library), "");
    const QStringList before = files();
    (void)open();
    EXPECT_EQ(files(), before);
    EXPECT_EQ(Files::read(Utility::logFolder() + "/Photos.sqlite"), Files::read(databasePath()));
}

TEST_F(PhotosSqlite, TakesPreviewsFromTheLargestFileOnly)
{
    writeThumbnails(120, 3, 0);
    writeThumbnails(166, 2, 3);
    for (int i = 0; i < 3; ++i)
        library.assets.push_back({10 + i, i, "DCIM", "A.JPG", {}});
    PhotoDb& db = read();
    db.previews().wait();
    EXPECT_EQ(db.photos()[0]->smallImage().size(), QSize(166, 166));
    EXPECT_EQ(db.photos()[1]->smallImage().size(), QSize(166, 166));
    EXPECT_TRUE(db.photos()[2]->smallImage().isNull()); // only the smaller file has it
}

TEST_F(PhotosSqlite, FallsBackToSmallerFiles)
{
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    writeThumbnails(120, 1, 0);
    PhotoDb& db = read();
    db.previews().wait();
    EXPECT_EQ(db.photos()[0]->smallImage().size(), QSize(120, 120));
    writeThumbnails(158, 1, 0);
    PhotoDb& larger = open();
    larger.previews().wait();
    EXPECT_EQ(larger.photos()[0]->smallImage().size(), QSize(158, 158));
}

TEST_F(PhotosSqlite, KeepsThePlaceholderWithoutAFileOfPreviews)
{
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    PhotoDb& db = read();
    db.previews().wait();
    EXPECT_EQ(db.photos()[0]->smallImage(), Photo::placeHolder());
}

TEST_F(PhotosSqlite, ReadsWhatIsThereWhenAnyTableIsMissing)
{
    library.albums = {{1, "Trip"}};
    library.assets = {{10, 0, "DCIM", "A.JPG", {}}};
    library.members6 = {{1, 10}};
    library.members8 = {{1, 10}};
    const QStringList all = PhotosSqliteWriter::statements(library);
    const auto without = [&](const char* table) -> PhotoDb& {
        return readStatements(all + QStringList(QString("DROP TABLE %1").arg(table)));
    };
    EXPECT_EQ(without("Z_METADATA").photos().size(), 1U);
    PhotoDb& noAlbums = without("ZGENERICALBUM");
    EXPECT_TRUE(noAlbums.photos().empty());
    EXPECT_TRUE(noAlbums.albums().empty());
    PhotoDb& noPhotos = without("ZGENERICASSET");
    EXPECT_TRUE(noPhotos.photos().empty());
    EXPECT_EQ(names(noPhotos.albums()), QStringList("Trip"));
    EXPECT_EQ(without("Z_6ASSETS").albums()[0]->photos.size(), 1U);
    EXPECT_EQ(without("Z_8ASSETS").albums()[0]->photos.size(), 1U);
}

TEST_F(PhotosSqlite, IsEmptyWhenItIsNoDatabase)
{
    for (const QByteArray& content : {QByteArray(), QByteArray("no database at all"),
                                      Files::content(8192), "SQLite format 3" + QByteArray(1, 0)}) {
        Files::write(databasePath(), content);
        PhotoDb& db = open();
        EXPECT_TRUE(db.photos().empty());
        EXPECT_TRUE(db.albums().empty());
        EXPECT_TRUE(db.previews().finished());
    }
}

TEST_F(PhotosSqlite, KeepsWhatStandsBeforeTheDamage)
{
    for (int i = 1; i <= 3000; ++i)
        library.assets.push_back({i, 0, "DCIM/100APPLE", QString("IMG_%1.JPG").arg(i), {}});
    ASSERT_EQ(PhotosSqliteWriter::write(databasePath(), library), "");
    const QByteArray whole = Files::read(databasePath());
    for (const int tenths : {1, 3, 5, 7, 9}) {
        QByteArray damaged = whole;
        const qsizetype at = damaged.size() * tenths / 10;
        damaged.replace(at, 5000, QByteArray(5000, '\xa5'));
        Files::write(databasePath(), damaged.first(whole.size()));
        EXPECT_LE(open().photos().size(), 3000U);
        Files::write(databasePath(), whole.first(at));
        EXPECT_LE(open().photos().size(), 3000U);
    }
}

TEST_F(PhotosSqlite, EndsTheWorkOfAViewThatNeverEnds)
{
    QElapsedTimer timer;
    timer.start();
    PhotoDb& db = readStatements(
        {"CREATE TABLE ZGENERICALBUM (Z_PK, ZTITLE)",
         "INSERT INTO ZGENERICALBUM VALUES (1, 'Trip')",
         "CREATE VIEW ZGENERICASSET AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
         "FROM n) SELECT i AS Z_PK, i AS ZTHUMBNAILINDEX, 'D' AS ZDIRECTORY, 'F' AS ZFILENAME, "
         "'T' AS ZTITLE FROM n"});
    EXPECT_EQ(names(db.albums()), QStringList("Trip"));
    EXPECT_LT(db.photos().size(), 200000U);
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(PhotosSqlite, KnowsPicturesByTheLow32BitsOfTheirIds)
{
    PhotoDb& db = readStatements({"CREATE TABLE ZGENERICALBUM (Z_PK INTEGER, ZTITLE)",
                                  "INSERT INTO ZGENERICALBUM VALUES (3, 'Trip')",
                                  "CREATE TABLE ZGENERICASSET (Z_PK, ZTHUMBNAILINDEX, ZDIRECTORY, "
                                  "ZFILENAME, ZTITLE)",
                                  "INSERT INTO ZGENERICASSET VALUES (2147483653, 0, 'D', 'A', ''), "
                                  "(-5, 0, 'D', 'B', ''), (4294967302, 0, 'D', 'C', '')",
                                  "CREATE TABLE Z_8ASSETS (Z_8ALBUMS, Z_14ASSETS)",
                                  "INSERT INTO Z_8ASSETS VALUES (3, -2147483643), (3, 4294967291), "
                                  "(3, 6)"});
    EXPECT_EQ(ids(db.photos()), (std::vector<int>{-2147483643, -5, 6}));
    EXPECT_EQ(ids(db.albums().at(0)->photos), (std::vector<int>{-2147483643, -5, 6}));
    EXPECT_TRUE(db.problems().empty());
}

TEST_F(PhotosSqlite, FindsPicturesWhoseIdsMeetInOnePlace)
{
    // Multiples of a prime number of buckets, as common tables of ids have.
    constexpr int Buckets = 107897;
    library.albums = {{1, "Trip"}};
    for (int i = 1; i <= 15000; ++i) {
        library.assets.push_back({i * Buckets, 0, "DCIM", "A.JPG", {}});
        library.members6.emplace_back(1, i * Buckets);
    }
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(read().albums().at(0)->photos.size(), 15000U);
    EXPECT_LT(timer.elapsed(), 10000);
}
