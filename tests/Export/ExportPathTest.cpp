#include "Export/ExportPath.h"

#include "Device/Playlist.h"
#include "Device/Track.h"
#include "support/Files.h"

#include <gtest/gtest.h>

namespace
{
class TrackPath : public testing::Test
{
protected:
    TrackPath()
    {
        for (int i = 0; i < int(Sections::Count); ++i)
            config.setFolderPath(Section(i), path(Sections::folderName(Section(i))));
        track.title = "Title";
        track.artist = "Artist";
        track.album = "Album";
        track.path = "/Volumes/P/iPod_Control/Music/F00/ABCD.mp3";
    }

    QString path(const QString& name) const { return _folder.filePath(name); }
    QString found(const Playlist* playlist = nullptr) const
    {
        const ExportPath result = ExportPath::trackPath(track, playlist, config);
        EXPECT_EQ(result.refusal, "");
        EXPECT_TRUE(QDir(_folder.path()).isEmpty()) << "it is text alone";
        return result.path.mid(_folder.path().size() + 1);
    }
    QString of(int type, bool podcast = false)
    {
        track.type = type;
        track.isPodcast = podcast;
        return found();
    }

    Track track;
    Config config;

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(TrackPath, IsCategoryArtistAlbumTitle)
{
    EXPECT_EQ(found(), "Music/Artist/Album/Title.mp3");
    const ExportPath result = ExportPath::trackPath(track, nullptr, config);
    EXPECT_EQ(result.category, Section::Music);
    EXPECT_EQ(QDir::cleanPath("/" + result.folder), "/Artist/Album");
}

TEST_F(TrackPath, PutsEachTypeIntoItsCategory)
{
    EXPECT_EQ(of(0), "Music/Artist/Album/Title.mp3");
    EXPECT_EQ(of(2), "Movies/Artist/Album/Title.mp3");
    EXPECT_EQ(of(3), "Podcasts/Artist/Album/Title.mp3");
    EXPECT_EQ(of(4), "Music/Artist/Album/Title.mp3");
    EXPECT_EQ(of(5, true), "Audiobooks/Artist/Album/Title.mp3");
    EXPECT_EQ(of(7, true), "TV Shows/Artist/Album/Title.mp3");
    EXPECT_EQ(of(8), "Movies/Artist/Album/Title.mp3");
    EXPECT_EQ(of(2, true), "Podcasts/Artist/Album/Title.mp3");
    EXPECT_EQ(of(11), "Books/Artist/Album/Title.mp3");
}

TEST_F(TrackPath, IsFlatForRingtonesAndVoiceMemos)
{
    EXPECT_EQ(of(9), "Ringtones/Title.mp3");
    EXPECT_EQ(of(10), "Voice Memos/Title.mp3");
}

TEST_F(TrackPath, NamesWhatIsUnknown)
{
    track.artist = QString();
    track.album = "";
    EXPECT_EQ(found(), "Music/Unknown Artist/Unknown Album/Title.mp3");
}

TEST_F(TrackPath, IgnoresTheCategoryInAPlaylist)
{
    track.type = RingtoneTrack;
    const Playlist playlist = {"Road Trip", {}};
    EXPECT_EQ(found(&playlist), "Playlists/Road Trip/Title.mp3");
}

TEST_F(TrackPath, PutsAPlaylistWithoutANameIntoThePlaylistsFolder)
{
    const Playlist unnamed;
    EXPECT_EQ(found(&unnamed), "Playlists/Title.mp3");
}

TEST_F(TrackPath, EndsInADotWithoutAnExtension)
{
    track.path = "/Volumes/P/iPod_Control/Music/F00/ABCD";
    EXPECT_EQ(found(), "Music/Artist/Album/Title.");
}

TEST_F(TrackPath, TakesAnAbsentTitleForAnEmptyOne)
{
    track.title = QString();
    EXPECT_EQ(found(), "Music/Artist/Album/.mp3");
}

TEST_F(TrackPath, KeepsTheCaseOfTheExtension)
{
    track.path = "/F00/ABCD.MP3";
    EXPECT_EQ(found(), "Music/Artist/Album/Title.MP3");
}

TEST_F(TrackPath, MakesFolderLevelsOutOfSlashes)
{
    track.title = "Side A/Side B";
    track.artist = "AC/DC";
    EXPECT_EQ(found(), "Music/AC/DC/Album/Side A/Side B.mp3");
    const ExportPath result = ExportPath::trackPath(track, nullptr, config);
    EXPECT_EQ(QDir::cleanPath("/" + result.folder), "/AC/DC/Album/Side A");
}

struct EscapeCase {
    const char* name;
    const char* artist;
    const char* album;
    const char* title;
};
void PrintTo(const EscapeCase& c, std::ostream* out)
{
    *out << c.name;
}

class Escape : public TrackPath, public testing::WithParamInterface<EscapeCase>
{
};

TEST_P(Escape, IsRefused)
{
    track.artist = GetParam().artist;
    track.album = GetParam().album;
    track.title = GetParam().title;
    const ExportPath result = ExportPath::trackPath(track, nullptr, config);
    EXPECT_NE(result.refusal, "");
    EXPECT_TRUE(QDir(path(".")).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(, Escape,
                         testing::Values(EscapeCase{"ByTitle", "A", "B", "../../../x"},
                                         EscapeCase{"ByArtist", "../..", "etc", "x"},
                                         EscapeCase{"ByAlbum", "A", "../../x", "y"},
                                         EscapeCase{"ByBothFolders", "..", "..", "x"},
                                         EscapeCase{"ToASiblingOfSimilarName", "..", "Music2", "x"},
                                         EscapeCase{"DeepInTheTitle", "A", "B",
                                                    "a/b/../../../../../x"}),
                         [](const auto& c) { return std::string(c.param.name); });

TEST_F(TrackPath, RefusesAPlaylistThatLeadsOut)
{
    const Playlist playlist = {"../Elsewhere", {}};
    EXPECT_NE(ExportPath::trackPath(track, &playlist, config).refusal, "");
    EXPECT_FALSE(QFileInfo::exists(path("Elsewhere")));
}

TEST_F(TrackPath, ResolvesParentComponentsThatStayInside)
{
    track.title = "../Other/x";
    EXPECT_EQ(found(), "Music/Artist/Other/x.mp3");
}

TEST_F(TrackPath, NeedsAFolder)
{
    config.setMusicDir("");
    EXPECT_NE(ExportPath::trackPath(track, nullptr, config).refusal, "");
}

TEST_F(TrackPath, StartsAtTheRootToo)
{
    config.setMusicDir("/");
    const ExportPath result = ExportPath::trackPath(track, nullptr, config);
    EXPECT_EQ(result.path, "/Artist/Album/Title.mp3");
    EXPECT_EQ(QDir::cleanPath("/" + result.folder), "/Artist/Album");
}
