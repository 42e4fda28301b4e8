#include "Device/itdb/PhotoDatabaseReader.h"

#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"
#include "support/IthmbWriter.h"
#include "support/MemoryDevice.h"
#include "support/PhotoDatabaseWriter.h"
#include "support/SamplePhotos.h"
#include "support/SamplePicture.h"

#include <gtest/gtest.h>

#include <ctime>

namespace
{
const QString DatabasePath = "/Volumes/P/Photos/Photo Database";
using PhotoDatabaseWriter::Encoding;

class PhotoDatabase : public testing::Test
{
protected:
    PhotoDb& read(const QByteArray& database)
    {
        device.put(DatabasePath, database);
        reader = PhotoDatabaseReader::initWithDevice(device);
        (void)reader->photos();
        return *reader;
    }
    PhotoDb& read() { return read(PhotoDatabaseWriter::write(library)); }

    TestPhoto& add(quint32 id, std::initializer_list<quint32> kinds = {})
    {
        TestPhoto photo;
        photo.id = id;
        for (const quint32 kind : kinds)
            photo.thumbnails.push_back({kind, ":F.ithmb", 0, 16, 0, 0, 2, 4});
        library.photos.push_back(photo);
        return library.photos.back();
    }

    TestPhotoLibrary library;
    MemoryDevice device;
    std::unique_ptr<PhotoDb> reader;
};

std::vector<int> ids(const std::vector<Photo*>& photos)
{
    std::vector<int> result;
    for (const Photo* photo : photos)
        result.push_back(photo->photoId);
    return result;
}

ByteView viewOf(const QByteArray& bytes)
{
    return std::as_bytes(std::span(bytes.constData(), std::size_t(bytes.size())));
}
} // namespace

TEST_F(PhotoDatabase, IsReadOnlyWhereThereIsOne)
{
    EXPECT_EQ(PhotoDatabaseReader::initWithDevice(device), nullptr);
}

TEST_F(PhotoDatabase, HasEachPhotoWithItsRenditions)
{
    TestPhoto& photo = add(57);
    photo.fullSizeFile = ":Full Resolution:2009:A.jpg";
    photo.thumbnails = {{1023, ":F1:pic.ithmb", 100, 46464, 1, 2, 132, 176},
                        {1019, ":F2:big.ithmb", 200, 691200, 0, 0, 480, 720}};
    add(58);
    PhotoDb& db = read();
    EXPECT_EQ(db.format(), "Photo Database");
    ASSERT_EQ(ids(db.photos()), (std::vector<int>{57, 58}));
    const Photo& first = *db.photos()[0];
    EXPECT_EQ(first.fullSizeFile, "/Volumes/P/Photos/Full Resolution/2009/A.jpg");
    EXPECT_TRUE(first.title.isNull());
    EXPECT_EQ(first.album, nullptr);
    ASSERT_EQ(first.thumbnails.size(), 2U);
    const Thumbnail& small = first.thumbnails[0];
    EXPECT_EQ(small.filename, "/Volumes/P/Photos/F1/pic.ithmb");
    EXPECT_EQ(small.correlationId, 1023U);
    EXPECT_EQ(small.thumbnailOffset, 100U);
    EXPECT_EQ(small.imageSize, 46464U);
    EXPECT_EQ(small.verticalPadding, 1);
    EXPECT_EQ(small.horizontalPadding, 2);
    EXPECT_EQ(small.imageHeight, 132);
    EXPECT_EQ(small.imageWidth, 176);
    EXPECT_EQ(small.width, 176U); // 178 x 133 does not divide the size
    EXPECT_EQ(small.height, 132U);
    EXPECT_EQ(first.thumbnails[1].width, 720U);
    EXPECT_TRUE(db.photos()[1]->fullSizeFile.isNull());
    EXPECT_TRUE(db.photos()[1]->thumbnails.empty());
}

TEST_F(PhotoDatabase, KeepsRenditionsOfUnknownKinds)
{
    add(1, {1023, 7777});
    library.kinds = {1023, 7777, 1};
    PhotoDb& db = read();
    EXPECT_EQ(db.photos()[0]->thumbnails[1].correlationId, 7777U);
    EXPECT_EQ(db.smallCorrelationId(), 1023);
    EXPECT_EQ(db.largeCorrelationId(), 0);
}

TEST_F(PhotoDatabase, ReadsNamesInBothEncodings)
{
    add(1).fullSizeFile = QString::fromUtf8(":Снимки:京都.jpg");
    library.albums = {{QString::fromUtf8("Été 🌊"), {1}}};
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        PhotoDatabaseWriter::Options options;
        options.encoding = encoding;
        PhotoDb& db = read(PhotoDatabaseWriter::write(library, options));
        EXPECT_EQ(db.photos()[0]->fullSizeFile,
                  QString::fromUtf8("/Volumes/P/Photos/Снимки/京都.jpg"));
        EXPECT_EQ(db.albums()[0]->name, QString::fromUtf8("Été 🌊"));
    }
}

TEST_F(PhotoDatabase, IsReadOnce)
{
    add(1);
    PhotoDb& db = read();
    Photo* const first = db.photos()[0];
    device.put(DatabasePath, PhotoDatabaseWriter::write({}));
    EXPECT_EQ(db.photos(), std::vector<Photo*>{first});
    EXPECT_TRUE(db.albums().empty());
}

TEST_F(PhotoDatabase, GivesAPhotoTheOnePlaceholderUntilItHasAPreview)
{
    add(1);
    add(2);
    PhotoDb& db = read();
    EXPECT_FALSE(Photo::placeHolder().isNull());
    for (const Photo* photo : db.photos())
        EXPECT_EQ(photo->smallImage().cacheKey(), Photo::placeHolder().cacheKey());
}

TEST_F(PhotoDatabase, DropsTheFirstAlbum)
{
    add(1);
    add(2);
    library.albums = {{"Trip", {2, 1, 2}}, {"Empty", {}}};
    PhotoDb& db = read();
    ASSERT_EQ(db.albums().size(), 2U);
    EXPECT_EQ(db.albums()[0]->name, "Trip");
    EXPECT_EQ(db.albums()[0]->albumId, 0);
    EXPECT_EQ(ids(db.albums()[0]->photos), (std::vector<int>{2, 1, 2}));
    EXPECT_TRUE(db.albums()[1]->photos.empty());
}

TEST_F(PhotoDatabase, HasNoAlbumsForAListOfOne)
{
    add(1);
    PhotoDb& db = read();
    EXPECT_TRUE(db.albums().empty());
    EXPECT_EQ(db.photos()[0]->album, nullptr);
}

TEST_F(PhotoDatabase, GivesAPhotoTheLastAlbumThatListsIt)
{
    add(1);
    library.albums = {{"First", {1}}, {"Second", {1, 99}}};
    PhotoDb& db = read();
    EXPECT_EQ(db.photos()[0]->album, db.albums()[1]);
    EXPECT_EQ(db.albums()[1]->photos.size(), 1U); // nobody has the number 99
}

TEST_F(PhotoDatabase, GivesAlbumsTheLaterOfTwoPhotosWithOneId)
{
    add(1);
    add(1);
    library.albums = {{"Trip", {1}}};
    PhotoDb& db = read();
    ASSERT_EQ(db.photos().size(), 2U);
    EXPECT_EQ(db.albums()[0]->photos, std::vector<Photo*>{db.photos()[1]});
}

TEST_F(PhotoDatabase, FindsNoMembersForAlbumsBeforeTheImages)
{
    add(1);
    library.albums = {{"Trip", {1}}};
    PhotoDatabaseWriter::Options options;
    options.dataSets = {2, 77, 1};
    PhotoDb& db = read(PhotoDatabaseWriter::write(library, options));
    ASSERT_EQ(db.albums().size(), 1U);
    EXPECT_TRUE(db.albums()[0]->photos.empty());
    EXPECT_EQ(db.photos().size(), 1U);
}

TEST_F(PhotoDatabase, NamesAnAlbumByItsFirstObject)
{
    using namespace PhotoDatabaseWriter;
    const std::vector<QByteArray> albums = {
        album({}, {}),
        album({stringObject(1, "One", Encoding::Utf16), stringObject(1, "Two", Encoding::Utf16)},
              {}),
        album({}, {}),
        album({opaqueObject(9, 40)}, {}),
        album({stringObject(1, QByteArray("\xff\xfe"), 1)}, {}),
        album({stringObject(1, QByteArray(), 1)}, {})};
    PhotoDb& db = read(database({dataSet(2, list("mhla", albums))}));
    ASSERT_EQ(db.albums().size(), 5U);
    EXPECT_EQ(db.albums()[0]->name, "One");
    EXPECT_TRUE(db.albums()[1]->name.isNull());
    EXPECT_EQ(db.albums()[2]->name, "");
    EXPECT_TRUE(db.albums()[3]->name.isNull()); // no UTF-8
    EXPECT_EQ(db.albums()[4]->name, "");
    EXPECT_FALSE(db.albums()[4]->name.isNull());
}

TEST_F(PhotoDatabase, TakesTheLastOfSeveralKinds)
{
    library.kinds = {1023, 1019, 1024, 1067, 12};
    PhotoDb& db = read();
    EXPECT_EQ(db.largeCorrelationId(), 1067);
    EXPECT_EQ(db.smallCorrelationId(), 1024);
}

TEST_F(PhotoDatabase, TakesTheLaterOfTwoFullSizeFiles)
{
    using namespace PhotoDatabaseWriter;
    TestThumbnail first;
    first.fileName = ":Full:A.jpg";
    TestThumbnail second;
    second.fileName = ":Full:B.jpg";
    const QByteArray record = image(
        1, {locationObject(5, first, Encoding::Utf16), locationObject(5, second, Encoding::Utf8)});
    PhotoDb& db = read(database({dataSet(1, list("mhli", {record}))}));
    EXPECT_EQ(db.photos().at(0)->fullSizeFile, "/Volumes/P/Photos/Full/B.jpg");
}

TEST_F(PhotoDatabase, FindsPhotosWhoseIdsHaveTheHighestBit)
{
    add(0x80000001);
    add(1);
    add(0xffffffff);
    library.albums = {{"Trip", {1, 0xffffffff, 0x80000001}}};
    PhotoDb& db = read();
    EXPECT_EQ(ids(db.albums()[0]->photos), (std::vector<int>{1, -1, -0x7fffffff}));
}

TEST_F(PhotoDatabase, FindsPhotosWhoseIdsWereChosenToMeet)
{
    // Multiples of a size that a table of remainders grows to.
    constexpr quint32 Buckets = 42043;
    constexpr quint32 Count = 39000;
    std::vector<quint32> all;
    for (quint32 i = 0; i < Count; ++i) {
        add(i * Buckets);
        all.push_back(i * Buckets);
    }
    library.albums = {{"Trip", all}};
    const QByteArray bytes = PhotoDatabaseWriter::write(library);
    const std::clock_t start = std::clock();
    EXPECT_EQ(read(bytes).albums().at(0)->photos.size(), Count);
    EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC,
              1.5); // in one chain: many times as long
}

TEST_F(PhotoDatabase, EndsATextAtANulAndKeepsALeadingByteOrderMark)
{
    add(1).fullSizeFile = QString(":Full:A.jpg") + QChar::Null + "rubbish";
    library.albums = {{QString(QChar(0xfeff)) + "Trip", {1}}, {QString(QChar::Null) + "x", {}}};
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        PhotoDatabaseWriter::Options options;
        options.encoding = encoding;
        PhotoDb& db = read(PhotoDatabaseWriter::write(library, options));
        EXPECT_EQ(db.photos()[0]->fullSizeFile, "/Volumes/P/Photos/Full/A.jpg");
        EXPECT_EQ(db.albums()[0]->name, QString(QChar(0xfeff)) + "Trip");
        EXPECT_EQ(db.albums()[1]->name, "");
        EXPECT_TRUE(db.problems().empty());
    }
}

TEST(PhotoDatabaseText, IsUtf16ForEncoding2AndElseUtf8)
{
    const QByteArray utf16("\x0a\0\0\0\2\0\0\0????H\0e\0l\0l\0o\0", 22);
    EXPECT_EQ(PhotoDatabaseReader::textOfBody(viewOf(utf16)), "Hello");
    for (const char encoding : {'\0', '\1', '\3'}) {
        QByteArray utf8("\4\0\0\0\1\0\0\0????h\xc3\xa9i", 16);
        utf8[4] = encoding;
        EXPECT_EQ(PhotoDatabaseReader::textOfBody(viewOf(utf8)), QString::fromUtf8("héi"));
    }
    const QByteArray invalid("\2\0\0\0\1\0\0\0????\xc3(", 14);
    EXPECT_TRUE(PhotoDatabaseReader::textOfBody(viewOf(invalid)).isNull());
}

TEST(PhotoDatabasePreviews, ComeFromTheSmallKind)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("iPod_Control"));
    ASSERT_EQ(SamplePhotos::write(folder.path()), "");
    iPodDevice device(folder.path());
    PhotoDb* db = device.photoDb();
    ASSERT_NE(db, nullptr);
    ASSERT_EQ(db->photos().size(), std::size_t(SamplePhotos::PhotoCount));
    ASSERT_EQ(db->albums().size(), std::size_t(SamplePhotos::AlbumCount));
    EXPECT_EQ(db->smallCorrelationId(), qint32(SamplePhotos::SmallKind));
    EXPECT_EQ(db->largeCorrelationId(), qint32(SamplePhotos::LargeKind));
    db->previews().wait();
    EXPECT_EQ(db->previews().done(), db->photos().size());
    for (const Photo* photo : db->photos()) {
        EXPECT_EQ(photo->smallImage().size(), QSize(176, 132));
        EXPECT_EQ(photo->smallImage().format(), QImage::Format_RGBA8888);
    }
}

namespace
{
/// A database of one photo whose renditions are 4 x 2 pixels at the given offsets.
class OnePhoto : public PhotoDatabase
{
protected:
    QImage preview(std::initializer_list<quint32> offsets, const std::vector<quint32>& kinds)
    {
        TestPhoto& photo = library.photos.empty() ? add(1) : library.photos.front();
        for (const quint32 offset : offsets)
            photo.thumbnails.push_back({1023, ":F.ithmb", offset, 16, 0, 0, 2, 4});
        library.kinds = kinds;
        device.put("/Volumes/P/Photos/F.ithmb", QByteArray(16, '\0') + QByteArray(16, '\xff'));
        PhotoDb& db = read();
        db.previews().wait();
        return db.photos()[0]->smallImage();
    }
};
} // namespace

TEST_F(OnePhoto, HasTheLastOfSeveralSmallRenditions)
{
    EXPECT_EQ(preview({0, 16}, {1023}).pixel(3, 1), qRgb(255, 255, 255));
}

TEST_F(OnePhoto, HasNoPreviewWhenTheLastSmallRenditionFails)
{
    EXPECT_TRUE(preview({0, 500}, {1023}).isNull());
}

TEST_F(OnePhoto, KeepsThePlaceholderWithoutAListOfFiles)
{
    EXPECT_EQ(preview({0}, {}), Photo::placeHolder()); // an empty list
    EXPECT_EQ(reader->smallCorrelationId(), 0);
    PhotoDatabaseWriter::Options options;
    options.dataSets = {1, 2}; // none at all
    PhotoDb& db = read(PhotoDatabaseWriter::write(library, options));
    db.previews().wait();
    EXPECT_EQ(db.smallCorrelationId(), 0);
    EXPECT_EQ(db.photos()[0]->smallImage(), Photo::placeHolder());
}

TEST_F(OnePhoto, KeepsThePlaceholderForARenditionOfAnUnknownKind)
{
    for (const quint32 kind : {7777U, 0U}) {
        library.photos.clear();
        add(1, {kind});
        EXPECT_EQ(preview({}, {kind, 1019}), Photo::placeHolder()) << kind;
    }
}

TEST_F(OnePhoto, KeepsThePlaceholderWhenAnotherKindIsTheSmallOne)
{
    EXPECT_EQ(preview({0}, {1024}), Photo::placeHolder());
}
