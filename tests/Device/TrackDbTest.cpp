#include "Device/TrackDb.h"

#include "support/Files.h"
#include "support/ITunesDbWriter.h"
#include "support/MemoryDevice.h"

#include <gtest/gtest.h>

namespace
{
const QString DatabasePath = "/Volumes/P/iPod_Control/iTunes/iTunesDB";

/// A reader of a library that a test describes.
class TrackDbTest : public testing::Test
{
protected:
    TestTrack& add(quint32 mediaKind, bool podcast = false)
    {
        TestTrack track;
        track.id = quint32(library.tracks.size() + 1);
        track.title = QString("Track %1").arg(track.id);
        track.genre = "Rock";
        track.artist = "A";
        track.album = "B";
        track.mediaKind = mediaKind;
        track.podcast = podcast;
        library.tracks.push_back(track);
        return library.tracks.back();
    }

    TrackDb& reader()
    {
        device.put(DatabasePath, ITunesDbWriter::write(library));
        return *device.trackDb();
    }

    static QStringList titles(const CategoryIndex& index, const QString& key = "*|*|*")
    {
        QStringList list;
        for (const Track* track : index.tracks(key))
            list.append(track->title);
        return list;
    }

    TestLibrary library;
    MemoryDevice device;
};
} // namespace

TEST_F(TrackDbTest, IsNotThereWithoutADatabaseAndLookedForAgain)
{
    EXPECT_EQ(device.trackDb(), nullptr);
    add(1);
    device.put(DatabasePath, ITunesDbWriter::write(library));
    TrackDb* found = device.trackDb();
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(device.trackDb(), found);
    EXPECT_EQ(&found->device(), &device);
    EXPECT_EQ(found->format(), "iTunesDB");
}

TEST_F(TrackDbTest, FilesEachTrackInItsCategory)
{
    add(1);        // 1
    add(2);        // 2
    add(4);        // 3
    add(6);        // 4
    add(8, true);  // 5
    add(32);       // 6
    add(64, true); // 7
    add(2, true);  // 8
    add(16384);    // 9
    add(4194304);  // 10
    add(8388608);  // 11
    add(0x60);     // 12
    TrackDb& db = reader();
    ASSERT_EQ(db.tracks().size(), 12U);
    EXPECT_EQ(titles(db.music()), QStringList({"Track 1", "Track 4", "Track 6", "Track 12"}));
    EXPECT_EQ(titles(db.movies()), QStringList({"Track 2"}));
    EXPECT_EQ(titles(db.podcasts()), QStringList({"Track 3", "Track 8"}));
    EXPECT_EQ(titles(db.audiobooks()), QStringList({"Track 5"}));
    EXPECT_EQ(titles(db.tvShows()), QStringList({"Track 7"}));
    EXPECT_EQ(titles(db.ringtones()), QStringList({"Track 9"}));
    EXPECT_EQ(titles(db.books()), QStringList({"Track 10", "Track 11"}));
}

TEST_F(TrackDbTest, FilesARingtoneOnlyUnderTheAllKey)
{
    add(16384);
    TrackDb& db = reader();
    (void)db.tracks();
    EXPECT_EQ(db.ringtones().trackMap().size(), 1);
    EXPECT_EQ(db.music().trackMap().size(), 1);
}

TEST_F(TrackDbTest, HasAnIndexForEachCategoryOfAnEmptyLibrary)
{
    TrackDb& db = reader();
    EXPECT_TRUE(db.tracks().empty());
    for (int category = 0; category <= int(Section::Books); ++category) {
        const CategoryIndex& index = db.category(Section(category));
        EXPECT_TRUE(index.trackMap().contains("*|*|*"));
        EXPECT_EQ(index.genres(), QStringList("*"));
    }
}

TEST_F(TrackDbTest, LoadsTheLibraryWhenAnIndexIsAskedFor)
{
    add(1);
    TrackDb& db = reader();
    EXPECT_EQ(db.music().tracks("*|*|*").size(), 1U);
    EXPECT_EQ(db.tracks().size(), 1U);
}

TEST_F(TrackDbTest, ReadsTheDatabaseOnce)
{
    add(1);
    TrackDb& db = reader();
    EXPECT_EQ(db.tracks().size(), 1U);
    add(1);
    device.put(DatabasePath, ITunesDbWriter::write(library));
    EXPECT_EQ(db.tracks().size(), 1U);
    EXPECT_EQ(db.playlists().size(), 0U);
}

TEST_F(TrackDbTest, NamesTheDevice)
{
    library.name = "Mira's Player";
    (void)reader();
    EXPECT_EQ(device.description(), "Mira's Player");
    MemoryDevice other;
    EXPECT_TRUE(other.description().isNull());
}

TEST(MediaKinds, AreExactNumbers)
{
    const std::vector<std::pair<qint32, int>> table = {
        {0, 0},     {1, 1},        {2, 2},        {4, 3},    {6, 4}, {8, 5},  {32, 6}, {64, 7},
        {16384, 9}, {4194304, 11}, {8388608, 11}, {0x60, 0}, {3, 0}, {-1, 0}, {10, 0}, {16, 0}};
    for (const auto& [kind, type] : table)
        EXPECT_EQ(TrackDb::mediaTypeToTrackType(kind), type) << kind;
}

TEST_F(TrackDbTest, TurnsStoredPathsIntoDevicePaths)
{
    const TrackDb& db = reader();
    EXPECT_EQ(db.getFileSystemPath(":iPod_Control:Music:F00:ABCD.mp3"),
              "/Volumes/P/iPod_Control/Music/F00/ABCD.mp3");
    EXPECT_EQ(db.getFileSystemPath("iTunes_Control/Music/A.mp3"),
              "/Volumes/P/iTunes_Control/Music/A.mp3");
    EXPECT_EQ(db.getFileSystemPath(""), "/Volumes/P");
    EXPECT_TRUE(db.getFileSystemPath(QString()).isNull());
}
