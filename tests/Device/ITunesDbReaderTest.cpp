#include "Device/itdb/ITunesDbReader.h"

#include "support/Files.h"
#include "support/ITunesDbWriter.h"
#include "support/MemoryDevice.h"
#include "support/RecordWriter.h"
#include "support/SamplePlayer.h"

#include <gtest/gtest.h>

#include <ctime>

namespace
{
namespace Writer = ITunesDbWriter;

const QString DatabasePath = "/Volumes/P/iPod_Control/iTunes/iTunesDB";

/// The reader of bytes that a test made.
class ITunesDbReaderTest : public testing::Test
{
protected:
    TrackDb& read(const QByteArray& database)
    {
        device.put(DatabasePath, database);
        return *device.trackDb();
    }

    static TestTrack track(quint32 id, const QString& title)
    {
        TestTrack track;
        track.id = id;
        track.title = title;
        return track;
    }

    static QStringList titles(const std::vector<Track*>& tracks)
    {
        QStringList list;
        for (const Track* one : tracks)
            list.append(one->title);
        return list;
    }

    static QByteArray tracksSet(const std::vector<TestTrack>& tracks)
    {
        std::vector<QByteArray> records;
        for (const TestTrack& one : tracks)
            records.push_back(Writer::track(one));
        return Writer::dataSet(1, Writer::trackList(records));
    }

    static QByteArray list(const QString& name, const std::vector<quint32>& ids)
    {
        return Writer::playlist(Writer::playlistObjects(name), ids);
    }

    MemoryDevice device;
};
} // namespace

TEST_F(ITunesDbReaderTest, ReadsEveryFieldOfATrack)
{
    TestTrack written = track(7, QString::fromUtf8("Ёлка 🎄"));
    written.artist = QString::fromUtf8("夜の喫茶店");
    written.album = "Album";
    written.genre = "Genre";
    written.location = ":iPod_Control:Music:F01:XYZW.m4a";
    written.milliseconds = 0xFFFFFFFF;
    written.mediaKind = 8;
    written.podcast = true;
    const TestLibrary library = {"Player", {written}, {}};
    TrackDb& db = read(Writer::write(library));
    ASSERT_EQ(db.tracks().size(), 1U);
    const Track& found = *db.tracks()[0];
    EXPECT_EQ(found.title, written.title);
    EXPECT_EQ(found.artist, written.artist);
    EXPECT_EQ(found.album, "Album");
    EXPECT_EQ(found.genre, "Genre");
    EXPECT_EQ(found.path, "/Volumes/P/iPod_Control/Music/F01/XYZW.m4a");
    EXPECT_DOUBLE_EQ(found.duration, 4294967.295);
    EXPECT_EQ(found.type, AudiobookTrack);
    EXPECT_TRUE(found.isPodcast);
    EXPECT_EQ(db.audiobooks().tracks("*|*|*").size(), 1U);
    EXPECT_TRUE(db.podcasts().tracks("*|*|*").empty());
}

TEST_F(ITunesDbReaderTest, TakesNoKindFromOldVersions)
{
    TestTrack written = track(1, "Old");
    written.mediaKind = 8;
    written.podcast = true;
    const TestLibrary library = {"Player", {written}, {}};
    Writer::Options options;
    options.version = 11;
    const Track& found = *read(Writer::write(library, options)).tracks().at(0);
    EXPECT_EQ(found.type, MusicTrack);
    EXPECT_FALSE(found.isPodcast);
}

TEST_F(ITunesDbReaderTest, TakesTheKindFromVersion12On)
{
    TestTrack written = track(1, "New");
    written.mediaKind = 8;
    written.podcast = true;
    const TestLibrary library = {"Player", {written}, {}};
    Writer::Options options;
    options.version = 12;
    const Track& found = *read(Writer::write(library, options)).tracks().at(0);
    EXPECT_EQ(found.type, AudiobookTrack);
    EXPECT_TRUE(found.isPodcast);
}

TEST_F(ITunesDbReaderTest, LeavesWhatIsNotThereNull)
{
    TestTrack written;
    written.id = 1;
    const Track& found = *read(Writer::write({"Player", {written}, {}})).tracks().at(0);
    EXPECT_TRUE(found.title.isNull());
    EXPECT_TRUE(found.artist.isNull());
    EXPECT_TRUE(found.album.isNull());
    EXPECT_TRUE(found.genre.isNull());
    EXPECT_TRUE(found.path.isNull());
}

TEST_F(ITunesDbReaderTest, TellsAnEmptyTextFromNone)
{
    TestTrack written;
    written.id = 1;
    written.title = "";
    written.artist = "";
    written.location = "";
    const Track& found = *read(Writer::write({"Player", {written}, {}})).tracks().at(0);
    EXPECT_FALSE(found.title.isNull());
    EXPECT_TRUE(found.title.isEmpty());
    EXPECT_FALSE(found.artist.isNull());
    EXPECT_EQ(found.path, "/Volumes/P");
}

TEST_F(ITunesDbReaderTest, ReadsTracksWithoutAPlaylistList)
{
    TrackDb& db = read(Writer::database(0x19, {tracksSet({track(1, "One")})}));
    EXPECT_EQ(titles(db.tracks()), QStringList("One"));
    EXPECT_TRUE(db.playlists().empty());
    EXPECT_TRUE(db.name().isNull());
}

TEST_F(ITunesDbReaderTest, TakesTheFirstPlaylistForTheMasterList)
{
    const TestLibrary library = {
        "Library", {track(1, "One"), track(2, "Two")}, {{"Mix", {2, 1}}, {"Empty", {}}}};
    TrackDb& db = read(Writer::write(library));
    EXPECT_EQ(db.name(), "Library");
    ASSERT_EQ(db.playlists().size(), 2U);
    EXPECT_EQ(db.playlists()[0]->name, "Mix");
    EXPECT_EQ(titles(db.playlists()[0]->tracks), QStringList({"Two", "One"}));
    EXPECT_EQ(db.playlists()[1]->name, "Empty");
    EXPECT_TRUE(db.playlists()[1]->tracks.empty());
    EXPECT_EQ(db.tracks()[0]->playlists, std::vector<Playlist*>{db.playlists()[0]});
}

TEST_F(ITunesDbReaderTest, SkipsUnknownTracksAndKeepsRepeatedOnes)
{
    const TestLibrary library = {
        "Library", {track(1, "One"), track(2, "Two")}, {{"Mix", {1, 99, 2, 1}}}};
    TrackDb& db = read(Writer::write(library));
    Playlist* mix = db.playlists().at(0);
    EXPECT_EQ(titles(mix->tracks), QStringList({"One", "Two", "One"}));
    EXPECT_EQ(db.tracks()[0]->playlists, (std::vector<Playlist*>{mix, mix}));
    EXPECT_EQ(db.tracks()[1]->playlists, (std::vector<Playlist*>{mix}));
}

TEST_F(ITunesDbReaderTest, LinksToTheLaterOfTwoTracksWithOneId)
{
    const TestLibrary library = {"Library", {track(1, "One"), track(1, "Other")}, {{"Mix", {1}}}};
    TrackDb& db = read(Writer::write(library));
    EXPECT_EQ(titles(db.tracks()), QStringList({"One", "Other"}));
    EXPECT_EQ(titles(db.playlists().at(0)->tracks), QStringList("Other"));
}

TEST_F(ITunesDbReaderTest, FindsTracksWhoseIdsAreInNoOrder)
{
    const TestLibrary library = {"Library",
                                 {track(9, "Nine"), track(1, "One"), track(5, "Five"),
                                  track(9, "Other Nine"), track(0xFFFFFFFF, "Last")},
                                 {{"Mix", {1, 9, 5, 0xFFFFFFFF, 0, 7}}}};
    TrackDb& db = read(Writer::write(library));
    EXPECT_EQ(titles(db.playlists().at(0)->tracks),
              QStringList({"One", "Other Nine", "Five", "Last"}));
}

TEST_F(ITunesDbReaderTest, IgnoresAnOddLastByteOfAText)
{
    const QByteArray seven("A\0B\0C\0D", 7);
    const QByteArray record = Writer::track(track(1, QString()), {Writer::stringObject(1, seven)});
    const QByteArray set = Writer::dataSet(1, Writer::trackList({record}));
    EXPECT_EQ(titles(read(Writer::database(0x19, {set})).tracks()), QStringList("ABC"));
}

TEST_F(ITunesDbReaderTest, LetsALaterObjectOfOneKindWin)
{
    const QByteArray record =
        Writer::track(track(1, QString()),
                      {Writer::stringObject(1, QString("First")), Writer::opaqueObject(42, 60),
                       Writer::stringObject(1, QString("Last"))});
    const QByteArray set = Writer::dataSet(1, Writer::trackList({record}));
    EXPECT_EQ(titles(read(Writer::database(0x19, {set})).tracks()), QStringList("Last"));
}

TEST_F(ITunesDbReaderTest, StepsOverDataSetsOfOtherKinds)
{
    const TestLibrary library = {"Library", {track(1, "One")}, {{"Mix", {1}}}};
    Writer::Options options;
    options.dataSets = {3, 5, 9, 1, 4, 3, 2, 77};
    TrackDb& db = read(Writer::write(library, options));
    EXPECT_EQ(titles(db.tracks()), QStringList("One"));
    EXPECT_EQ(db.playlists().size(), 1U);
}

TEST_F(ITunesDbReaderTest, LinksNothingToTracksThatComeLater)
{
    const TestLibrary library = {"Library", {track(1, "One")}, {{"Mix", {1}}}};
    Writer::Options options;
    options.dataSets = {2, 1};
    TrackDb& db = read(Writer::write(library, options));
    EXPECT_EQ(titles(db.tracks()), QStringList("One"));
    ASSERT_EQ(db.playlists().size(), 1U);
    EXPECT_TRUE(db.playlists()[0]->tracks.empty());
}

TEST_F(ITunesDbReaderTest, TakesTheFirstOfEveryPlaylistListForTheMaster)
{
    const QByteArray first =
        Writer::dataSet(2, Writer::playlistList({list("Master 1", {1}), list("A", {1})}));
    const QByteArray second =
        Writer::dataSet(2, Writer::playlistList({list("Master 2", {1}), list("B", {1})}));
    TrackDb& db = read(Writer::database(0x19, {tracksSet({track(1, "One")}), first, second}));
    EXPECT_EQ(db.name(), "Master 2");
    ASSERT_EQ(db.playlists().size(), 2U);
    EXPECT_EQ(db.playlists()[0]->name, "A");
    EXPECT_EQ(db.playlists()[1]->name, "B");
}

TEST_F(ITunesDbReaderTest, NamesAPlaylistByItsFirstObjectWhateverItsKind)
{
    const QByteArray odd = Writer::playlist({Writer::stringObject(52, QString("Odd"))}, {1});
    const QByteArray set = Writer::dataSet(2, Writer::playlistList({list("Master", {}), odd}));
    TrackDb& db = read(Writer::database(0x19, {tracksSet({track(1, "One")}), set}));
    EXPECT_EQ(db.playlists().at(0)->name, "Odd");
}

TEST_F(ITunesDbReaderTest, ReadsOnWhenTheFirstObjectHoldsNoText)
{
    const QByteArray odd = Writer::playlist({Writer::opaqueObject(100, 30)}, {1});
    const QByteArray set =
        Writer::dataSet(2, Writer::playlistList({list("Master", {}), odd, list("Next", {1})}));
    TrackDb& db = read(Writer::database(0x19, {tracksSet({track(1, "One")}), set}));
    ASSERT_EQ(db.playlists().size(), 2U);
    EXPECT_EQ(db.playlists()[1]->name, "Next");
    EXPECT_EQ(db.playlists()[1]->tracks.size(), 1U);
}

TEST_F(ITunesDbReaderTest, LeavesAPlaylistWithoutObjectsUnnamed)
{
    const QByteArray set =
        Writer::dataSet(2, Writer::playlistList({list("Master", {}), Writer::playlist({}, {1})}));
    TrackDb& db = read(Writer::database(0x19, {tracksSet({track(1, "One")}), set}));
    EXPECT_TRUE(db.playlists().at(0)->name.isNull());
    EXPECT_EQ(db.playlists().at(0)->tracks.size(), 1U);
}

TEST_F(ITunesDbReaderTest, ReadsTheSamplePlayer)
{
    const TestLibrary library = SamplePlayer::library();
    TrackDb& db = read(Writer::write(library));
    ASSERT_EQ(db.tracks().size(), library.tracks.size());
    for (std::size_t i = 0; i < library.tracks.size(); ++i) {
        EXPECT_EQ(db.tracks()[i]->title, library.tracks[i].title);
        EXPECT_EQ(db.tracks()[i]->artist, library.tracks[i].artist);
        EXPECT_EQ(db.tracks()[i]->album, library.tracks[i].album);
        EXPECT_EQ(db.tracks()[i]->genre, library.tracks[i].genre);
    }
    ASSERT_EQ(db.playlists().size(), library.playlists.size());
}

TEST_F(ITunesDbReaderTest, TakesAnyByteButZeroForAPodcast)
{
    for (const quint8 flag : {1, 2, 0x7f, 0x80, 0xff}) {
        const QByteArray record = Record(Writer::track(track(1, "One"))).u8(167, flag).open();
        const QByteArray set = Writer::dataSet(1, Writer::trackList({record}));
        MemoryDevice player;
        player.put(DatabasePath, Writer::database(0x19, {set}));
        EXPECT_TRUE(player.trackDb()->tracks().at(0)->isPodcast) << int(flag);
    }
}

TEST_F(ITunesDbReaderTest, FindsTheTracksOfEveryTrackList)
{
    const QByteArray mix =
        Writer::dataSet(2, Writer::playlistList({list("Master", {}), list("Mix", {2, 1, 3})}));
    TrackDb& db =
        read(Writer::database(0x19, {tracksSet({track(1, "One"), track(3, "Three")}),
                                     tracksSet({track(2, "Two"), track(3, "Other Three")}), mix}));
    EXPECT_EQ(titles(db.tracks()), QStringList({"One", "Three", "Two", "Other Three"}));
    EXPECT_EQ(titles(db.playlists().at(0)->tracks), QStringList({"Two", "One", "Other Three"}));
}

TEST_F(ITunesDbReaderTest, FindsTracksWhoseIdsHaveTheHighestBit)
{
    const TestLibrary library = {
        "Library",
        {track(0x80000001, "High"), track(1, "Low"), track(0xffffffff, "Last")},
        {{"Mix", {1, 0xffffffff, 0x80000001}}}};
    EXPECT_EQ(titles(read(Writer::write(library)).playlists().at(0)->tracks),
              QStringList({"Low", "Last", "High"}));
}

TEST_F(ITunesDbReaderTest, EndsATextAtANul)
{
    TestTrack written = track(1, QString("Title") + QChar::Null + "rubbish");
    written.artist = QString(QChar::Null);
    const Track& found = *read(Writer::write({"Player", {written}, {}})).tracks().at(0);
    EXPECT_EQ(found.title, "Title");
    EXPECT_EQ(found.artist, "");
    EXPECT_FALSE(found.artist.isNull());
    EXPECT_TRUE(device.trackDb()->problems().empty());
}

TEST_F(ITunesDbReaderTest, KeepsALeadingByteOrderMark)
{
    const QString title = QString(QChar(0xfeff)) + "Title";
    TestTrack written = track(1, title);
    written.album = title;
    const Track& found = *read(Writer::write({title, {written}, {{title, {}}}})).tracks().at(0);
    EXPECT_EQ(found.title, title);
    EXPECT_EQ(found.album, title);
    EXPECT_EQ(device.trackDb()->name(), title);
    EXPECT_EQ(device.trackDb()->playlists().at(0)->name, title);
}

TEST_F(ITunesDbReaderTest, TriesAPathWithANulWithAndWithoutWhatFollows)
{
    const QString folder = "/Volumes/P/Music/";
    for (const char* name : {"A", "Ab.mp3", ""}) {
        MemoryDevice player;
        if (*name)
            player.put(folder + name, "sound");
        TestTrack written = track(1, "One");
        written.location = QString(":Music:A") + QChar::Null + "b.mp3";
        player.put(DatabasePath, Writer::write({"Player", {written}, {}}));
        EXPECT_EQ(player.trackDb()->tracks().at(0)->path, folder + (*name ? name : "A"));
    }
}

TEST_F(ITunesDbReaderTest, ReadsTracksAndPlaylistsInTurnAsQuicklyAsInOrder)
{
    // Ids in falling order, and a playlist that asks for one behind each.
    constexpr int Sets = 20000;
    std::vector<QByteArray> sets;
    for (quint32 i = 0; i < Sets; ++i) {
        TestTrack one;
        one.id = Sets - i;
        sets.push_back(Writer::dataSet(1, Writer::trackList({Writer::track(one)})));
        sets.push_back(Writer::dataSet(
            2, Writer::playlistList({Writer::playlist({}, {}), Writer::playlist({}, {one.id})})));
    }
    device.put(DatabasePath, Writer::database(0x19, sets));
    const std::clock_t start = std::clock();
    EXPECT_EQ(device.trackDb()->playlists().size(), std::size_t(Sets));
    EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC,
              2.0); // sorting each time: many times as long
}
