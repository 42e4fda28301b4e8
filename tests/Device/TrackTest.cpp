#include "Device/Track.h"

#include "Device/Playlist.h"
#include "support/Files.h"

#include <gtest/gtest.h>

namespace
{
Track trackOf(int type, bool isPodcast)
{
    Track track;
    track.type = type;
    track.isPodcast = isPodcast;
    return track;
}
} // namespace

TEST(TrackTest, StartsAsUncheckedMusicWithoutTexts)
{
    const Track track;
    EXPECT_EQ(track.type, 1);
    EXPECT_FALSE(track.isPodcast);
    EXPECT_FALSE(track.checked);
    EXPECT_EQ(track.duration, 0);
    EXPECT_TRUE(track.playlists.empty());
    EXPECT_TRUE(track.title.isNull());
    EXPECT_TRUE(track.path.isNull());
}

TEST(PlaylistTest, TakesANameOrNone)
{
    EXPECT_EQ(Playlist::playlistWithName("Mix").name, "Mix");
    const Playlist unnamed = Playlist::playlistWithName(QString());
    EXPECT_TRUE(unnamed.name.isNull());
    EXPECT_TRUE(unnamed.tracks.empty());
}

TEST(TrackCategory, FollowsTheType)
{
    EXPECT_EQ(trackOf(0, false).category(), Section::Music);
    EXPECT_EQ(trackOf(1, false).category(), Section::Music);
    EXPECT_EQ(trackOf(2, false).category(), Section::Movies);
    EXPECT_EQ(trackOf(3, false).category(), Section::Podcasts);
    EXPECT_EQ(trackOf(5, false).category(), Section::Audiobooks);
    EXPECT_EQ(trackOf(6, false).category(), Section::Music);
    EXPECT_EQ(trackOf(7, false).category(), Section::TVShows);
    EXPECT_EQ(trackOf(8, false).category(), Section::Movies);
    EXPECT_EQ(trackOf(9, false).category(), Section::Ringtones);
    EXPECT_EQ(trackOf(10, false).category(), Section::VoiceMemos);
    EXPECT_EQ(trackOf(11, false).category(), Section::Books);
    EXPECT_EQ(trackOf(4711, false).category(), Section::Music);
}

TEST(TrackCategory, TakesAVideoPodcastForMusicUnlessItIsFlagged)
{
    EXPECT_EQ(trackOf(4, false).category(), Section::Music);
    EXPECT_EQ(trackOf(4, true).category(), Section::Podcasts);
}

TEST(TrackCategory, LetsTheTypeWinOverThePodcastFlagForShowsAndAudiobooks)
{
    EXPECT_EQ(trackOf(7, true).category(), Section::TVShows);
    EXPECT_EQ(trackOf(5, true).category(), Section::Audiobooks);
    EXPECT_EQ(trackOf(2, true).category(), Section::Podcasts);
    EXPECT_EQ(trackOf(9, true).category(), Section::Podcasts);
    EXPECT_EQ(trackOf(11, true).category(), Section::Podcasts);
}
