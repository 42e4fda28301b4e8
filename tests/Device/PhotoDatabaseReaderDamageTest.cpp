#include "Device/PhotoDb.h"
#include "support/Files.h"
#include "support/MemoryDevice.h"
#include "support/PhotoDatabaseWriter.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtEndian>

#include <gtest/gtest.h>

namespace
{
const QString DatabasePath = "/Volumes/P/Photos/Photo Database";

/// What was read, with every link followed.
struct Outcome {
    std::vector<int> photos;
    std::vector<int> members;
};

Outcome read(const QByteArray& database)
{
    MemoryDevice device;
    device.put(DatabasePath, database);
    device.put("/Volumes/P/Photos/F.ithmb", Files::content(4000));
    PhotoDb* db = device.photoDb();
    Outcome outcome;
    for (const Photo* photo : db->photos())
        outcome.photos.push_back(photo->photoId + (photo->album ? photo->album->albumId : 0));
    for (const Album* album : db->albums()) {
        for (const Photo* photo : album->photos)
            outcome.members.push_back(photo->photoId);
    }
    return outcome;
}

TestPhotoLibrary smallLibrary()
{
    TestPhotoLibrary library;
    for (quint32 id = 1; id <= 4; ++id) {
        TestPhoto photo;
        photo.id = id;
        photo.thumbnails = {{1023, ":F.ithmb", id, 46464, 0, 0, 132, 176}};
        photo.fullSizeFile = ":Full:A.jpg";
        library.photos.push_back(photo);
    }
    library.albums = {{"Trip", {1, 2}}, {"Town", {3}}};
    library.kinds = {1023};
    return library;
}

bool isPrefix(const std::vector<int>& part, const std::vector<int>& whole)
{
    return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}
} // namespace

TEST(DamagedPhotoDatabase, KeepsWhatStandsBeforeACut)
{
    const QByteArray whole = PhotoDatabaseWriter::write(smallLibrary());
    const Outcome all = read(whole);
    ASSERT_EQ(all.photos, (std::vector<int>{1, 2, 3, 4}));
    ASSERT_EQ(all.members, (std::vector<int>{1, 2, 3}));
    std::size_t most = 0;
    for (qsizetype cut = 0; cut <= whole.size(); ++cut) {
        const Outcome part = read(whole.first(cut));
        ASSERT_TRUE(isPrefix(part.photos, all.photos)) << cut;
        ASSERT_TRUE(isPrefix(part.members, all.members)) << cut;
        ASSERT_GE(part.photos.size(), most) << cut;
        most = part.photos.size();
    }
}

TEST(DamagedPhotoDatabase, SurvivesAnyNumberInAnyField)
{
    const QByteArray whole = PhotoDatabaseWriter::write(smallLibrary());
    QElapsedTimer timer;
    timer.start();
    for (qsizetype at = 0; at + 4 <= whole.size(); at += 2) {
        for (const quint32 value : {0U, 1U, 7U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
            QByteArray twisted = whole;
            qToLittleEndian(value, twisted.data() + at);
            (void)read(twisted);
        }
    }
    EXPECT_LT(timer.elapsed(), 120000);
}

TEST(DamagedPhotoDatabase, SurvivesRandomBytes)
{
    QRandomGenerator random(7);
    const QByteArray whole = PhotoDatabaseWriter::write(smallLibrary());
    for (int round = 0; round < 1000; ++round) {
        QByteArray twisted = whole;
        for (int i = 0; i < 20; ++i)
            twisted[random.bounded(int(twisted.size()))] = char(random.bounded(256));
        (void)read(twisted);
    }
}

TEST(DamagedPhotoDatabase, IsNotReadAgainAndAgainByRecordsThatClaimNothing)
{
    // Four billion items of no length, in a file of a few hundred bytes.
    using namespace PhotoDatabaseWriter;
    QByteArray images = list("mhli", {image(1, {})});
    qToLittleEndian(0xffffffffU, images.data() + 8);
    qToLittleEndian(0U, images.data() + 92 + 8);
    QElapsedTimer timer;
    timer.start();
    EXPECT_LE(read(database({dataSet(1, images)})).photos.size(), 1U);
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST(DamagedPhotoDatabase, GivesNothingWhenItIsEmpty)
{
    EXPECT_TRUE(read({}).photos.empty());
    EXPECT_TRUE(read(QByteArray(500, '\0')).photos.empty());
    EXPECT_TRUE(read(QByteArray(500, '\xff')).photos.empty());
}
