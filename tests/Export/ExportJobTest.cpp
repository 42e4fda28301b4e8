#include "support/PlayerFixture.h"

namespace
{
constexpr qsizetype Chunk = 1024 * 1024;

class TrackJob : public PlayerFixture
{
};

class PlaylistJob : public PlayerFixture
{
};
} // namespace

TEST_F(TrackJob, CopiesEachTrackAndSaysSo)
{
    add("One", "first");
    add("Two", "second");
    exportTracks();
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "first");
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Two.mp3")), "second");
    EXPECT_EQ(host.told,
              QStringList({"begin 2", "Export One... at 0", "Export Two... at 1", "finished!"}));
    EXPECT_EQ(results(), QStringList({"copied", "copied"}));
    EXPECT_EQ(item(0).from, onDevice(library.tracks[0]));
    EXPECT_EQ(item(0).to, out("Music/Artist/Album/One.mp3"));
    EXPECT_EQ(item(0).bytes, 5);
    EXPECT_TRUE(item(0).why.isNull());
}

TEST_F(TrackJob, MovesTheIndicatorFromItemToItem)
{
    add("One", Files::content(2 * Chunk));
    add("Empty", "");
    add("Two", Files::content(Chunk));
    exportTracks();
    EXPECT_EQ(host.chunks, (std::vector<double>{0.5, 1.0, 3.0}));
}

TEST_F(TrackJob, DoesNothingForNoTracks)
{
    connect();
    exportTracks({});
    EXPECT_TRUE(host.told.isEmpty());
    EXPECT_EQ(host.exportModeQuestions, 0);
}

TEST_F(TrackJob, StartsNothingWhenTheExportModeIsCancelled)
{
    add("One", "first");
    host.handsOver = std::nullopt;
    exportTracks();
    EXPECT_EQ(host.exportModeQuestions, 1);
    EXPECT_TRUE(host.told.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(path("out")));
}

TEST_F(TrackJob, HandsCopiedFilesToTheMusicApplicationWhenAsked)
{
    add("One", "first");
    QFile::remove(onDevice(add("Gone", "x")));
    library.playlists = {{"Mix", {1, 1}}};
    host.handsOver = true;
    exportTracks();
    EXPECT_EQ(host.handedOver, QStringList(out("Music/Artist/Album/One.mp3") + " to 2"));
}

TEST_F(TrackJob, StopsBeforeTheNextItem)
{
    add("One", "first");
    add("Two", "second");
    add("Three", "third");
    host.onItem = [this](int index) { host.toStop = index == 1; };
    exportTracks();
    EXPECT_EQ(results(), QStringList({"copied", "stopped", "stopped"}));
    EXPECT_EQ(host.told.last(), "canceled!");
    EXPECT_TRUE(QFileInfo::exists(out("Music/Artist/Album/One.mp3")));
    EXPECT_FALSE(QFileInfo::exists(out("Music/Artist/Album/Three.mp3")));
}

TEST_F(TrackJob, StopsAtEveryChunk)
{
    add("One", Files::content(3 * Chunk));
    add("Two", Files::content(2 * Chunk + 1));
    connect();
    for (int chunk = 1; chunk <= 6; ++chunk) {
        host.toStop = false;
        host.stopAtChunk = chunk;
        host.chunks.clear();
        QDir(path("out")).removeRecursively();
        ExportReport one;
        ExportJob(device, config, host, one, host.toStop).exportTracks(device->trackDb()->tracks());
        const bool inFirst = chunk <= 3;
        EXPECT_EQ(one.items()[inFirst ? 0 : 1].result, ExportItem::Result::Stopped) << chunk;
        EXPECT_EQ(one.items()[0].bytes, std::min(chunk - 1, 3) * Chunk) << chunk;
        EXPECT_EQ(host.told.last(), "canceled!");
        EXPECT_EQ(one.failureCount(), 0U);
    }
}

TEST_F(TrackJob, CountsASkippedItemInTheProgress)
{
    add("One", "first");
    add("Two", "second");
    Files::write(out("Music/Artist/Album/One.mp3"), "old");
    config.setCopyRule(SkipRule);
    exportTracks();
    EXPECT_EQ(results(), QStringList({"skipped", "copied"}));
    EXPECT_EQ(host.told.at(2), "Export Two... at 1");
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "old");
    EXPECT_EQ(item(0).to, out("Music/Artist/Album/One.mp3"));
}

TEST_F(TrackJob, NumbersTracksOfOneName)
{
    add("Same", "first");
    add("Same", "second");
    add("Same", "third");
    exportTracks();
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Same.mp3")), "first");
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Same1.mp3")), "second");
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Same2.mp3")), "third");
}

TEST_F(TrackJob, EndsWhenTheClashQuestionIsGivenUp)
{
    add("One", "first");
    add("Two", "second");
    Files::write(out("Music/Artist/Album/One.mp3"), "old");
    config.setCopyRule(AskRule);
    host.clashAnswer = std::nullopt;
    exportTracks();
    EXPECT_EQ(host.told, QStringList({"begin 2", "Export One... at 0", "canceled!"}));
    EXPECT_EQ(results(), QStringList({"stopped", "stopped"}));
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "old");
}

TEST_F(PlaylistJob, PutsEachPlaylistIntoItsFolder)
{
    add("One", "first");
    add("Two", "second");
    library.playlists = {{"A", {1, 2}}, {"Empty", {}}, {"B", {2}}};
    exportPlaylists();
    EXPECT_EQ(Files::read(out("Playlists/A/One.mp3")), "first");
    EXPECT_EQ(Files::read(out("Playlists/A/Two.mp3")), "second");
    EXPECT_EQ(Files::read(out("Playlists/B/Two.mp3")), "second");
    EXPECT_FALSE(QFileInfo::exists(out("Music")));
}

TEST_F(PlaylistJob, CountsThroughAllPlaylists)
{
    add("One", "first");
    add("Two", "second");
    library.playlists = {{"A", {1, 2}}, {"B", {2}}};
    exportPlaylists();
    EXPECT_EQ(host.told, QStringList({"begin 3", "Export One... at 0", "Export Two... at 1",
                                      "Export Two... at 2", "finished!"}));
    EXPECT_EQ(host.chunks, (std::vector<double>{1.0, 2.0, 3.0}));
}

TEST_F(PlaylistJob, ShowsNothingForEmptyPlaylistsAfterTheQuestion)
{
    library.playlists = {{"Empty", {}}};
    exportPlaylists();
    EXPECT_EQ(host.exportModeQuestions, 1);
    EXPECT_TRUE(host.told.isEmpty());
}

TEST_F(PlaylistJob, HandsOverTheTracksOwnPlaylists)
{
    add("One", "first");
    library.playlists = {{"A", {1}}, {"B", {1}}};
    host.handsOver = true;
    const std::vector<Playlist*> first = {connect().trackDb()->playlists().front()};
    ExportJob(device, config, host, report, host.toStop).exportPlaylists(first);
    EXPECT_EQ(host.handedOver, QStringList(out("Playlists/A/One.mp3") + " to 2"));
}
