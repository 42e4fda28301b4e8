#include "Device/CategoryIndex.h"

#include "Device/Track.h"
#include "support/Files.h"

#include <QSet>

#include <gtest/gtest.h>

#include <deque>

namespace
{
class CategoryIndexTest : public testing::Test
{
protected:
    Track* add(const QString& genre, const QString& artist, const QString& album)
    {
        Track& track = _tracks.emplace_back();
        track.genre = genre;
        track.artist = artist;
        track.album = album;
        index.add(&track);
        return &track;
    }

    using Tracks = std::vector<Track*>;
    CategoryIndex index;

private:
    std::deque<Track> _tracks;
};
} // namespace

TEST_F(CategoryIndexTest, FilesAFullyTaggedTrackUnderEightKeys)
{
    Track* track = add("Rock", "A", "B");
    const auto map = index.trackMap();
    EXPECT_EQ(map.size(), 8);
    for (const QString genre : {"*", "Rock"}) {
        for (const QString artist : {"*", "A"}) {
            for (const QString album : {"*", "B"}) {
                const QString key = genre + "|" + artist + "|" + album;
                EXPECT_EQ(index.tracks(key), Tracks{track}) << qPrintable(key);
                EXPECT_EQ(map.value(key), Tracks{track}) << qPrintable(key);
            }
        }
    }
    EXPECT_TRUE(index.tracks("Rock|A|C").empty());
    EXPECT_TRUE(index.tracks("Rock|A").empty());
    EXPECT_TRUE(index.tracks("").empty());
}

TEST_F(CategoryIndexTest, HasTheTreeOfAFullyTaggedTrack)
{
    add("Rock", "A", "B");
    EXPECT_EQ(index.genres(), QStringList({"*", "Rock"}));
    for (const QString genre : {"*", "Rock"}) {
        EXPECT_EQ(index.artists(genre), QStringList({"*", "A"}));
        for (const QString artist : {"*", "A"})
            EXPECT_EQ(index.albums(genre, artist), QStringList({"*", "B"}));
    }
    EXPECT_TRUE(index.artists("Jazz").isEmpty());
    EXPECT_TRUE(index.albums("Rock", "X").isEmpty());
    EXPECT_TRUE(index.albums("Jazz", "*").isEmpty());
}

TEST_F(CategoryIndexTest, FilesAnEmptyValueOnlyUnderTheStar)
{
    Track* empty = add("", "A", "B");
    EXPECT_EQ(index.trackMap().size(), 4);
    EXPECT_EQ(index.genres(), QStringList("*"));
    EXPECT_EQ(index.tracks("*|A|B"), Tracks{empty});
    EXPECT_TRUE(index.tracks("|A|B").empty());
    EXPECT_TRUE(index.artists("").isEmpty());
    Track* nil = add(QString(), QString(), QString());
    EXPECT_EQ(index.trackMap().size(), 4);
    EXPECT_EQ(index.tracks(CategoryIndex::AllKey), (Tracks{empty, nil}));
}

TEST_F(CategoryIndexTest, HoldsTheAllKeyAndTheRootPathWhenEmpty)
{
    const auto map = index.trackMap();
    EXPECT_EQ(map.size(), 1);
    EXPECT_TRUE(map.contains("*|*|*"));
    EXPECT_TRUE(index.tracks("*|*|*").empty());
    EXPECT_EQ(index.genres(), QStringList("*"));
    EXPECT_EQ(index.artists("*"), QStringList("*"));
    EXPECT_EQ(index.albums("*", "*"), QStringList("*"));
    const CategoryIndex::AlbumTree tree = {{"*", {{"*", {"*"}}}}};
    EXPECT_EQ(index.albumTree(), tree);
}

TEST_F(CategoryIndexTest, HoldsAnAlbumNamedStarTwiceWhereItMeetsTheWildcard)
{
    Track* track = add("G", "A", "*");
    for (const QString key : {"*|*|*", "*|A|*", "G|*|*", "G|A|*"}) {
        EXPECT_EQ(index.tracks(key), (Tracks{track, track})) << qPrintable(key);
        EXPECT_EQ(index.trackMap().value(key), (Tracks{track, track})) << qPrintable(key);
    }
    EXPECT_EQ(index.trackMap().size(), 4);
    EXPECT_EQ(index.albums("G", "A"), QStringList("*"));
}

TEST_F(CategoryIndexTest, MergesKeysThatReadTheSame)
{
    Track* first = add("A|B", "C", "D");
    Track* second = add("A", "B|C", "D");
    EXPECT_EQ(index.tracks("A|B|C|D"), (Tracks{first, second}));
    EXPECT_EQ(index.trackMap().value("A|B|C|D"), (Tracks{first, second}));
    EXPECT_EQ(index.tracks("A|B|*|*"), Tracks{first});
    EXPECT_EQ(index.artists("A|B"), QStringList({"*", "C"}));
}

TEST_F(CategoryIndexTest, KeepsTheOrderOfTheTracks)
{
    Track* one = add("Rock", "B", "X");
    Track* two = add("Jazz", "A", "Y");
    Track* three = add("Rock", "A", "X");
    EXPECT_EQ(index.tracks("*|*|*"), (Tracks{one, two, three}));
    EXPECT_EQ(index.tracks("Rock|*|*"), (Tracks{one, three}));
    EXPECT_EQ(index.tracks("*|A|*"), (Tracks{two, three}));
    EXPECT_EQ(index.artists("*"), QStringList({"*", "A", "B"}));
    EXPECT_EQ(index.albums("*", "A"), QStringList({"*", "X", "Y"}));
}

TEST_F(CategoryIndexTest, ListsATrackTwiceThatWasAddedTwice)
{
    Track* track = add("Rock", "A", "B");
    index.add(track);
    EXPECT_EQ(index.tracks("Rock|A|B"), (Tracks{track, track}));
}

TEST_F(CategoryIndexTest, FilesAFlatTrackOnlyUnderTheAllKey)
{
    Track track;
    track.genre = "Ringtone";
    track.artist = "A";
    track.album = "B";
    index.addFlat(&track);
    EXPECT_EQ(index.tracks("*|*|*"), Tracks{&track});
    EXPECT_EQ(index.trackMap().size(), 1);
    EXPECT_TRUE(index.tracks("Ringtone|A|B").empty());
}

TEST_F(CategoryIndexTest, GivesTheWholeTreeAsItsLevelsDo)
{
    add("Rock", "B", "X");
    add("Jazz", "A", "Y");
    add("Rock", "A", "");
    add("", "C", "z");
    add("Rock", "*", "Y");
    const CategoryIndex::AlbumTree tree = index.albumTree();
    EXPECT_EQ(QSet<QString>(tree.keyBegin(), tree.keyEnd()).size(), index.genres().size());
    for (const QString& genre : index.genres()) {
        EXPECT_EQ(tree.value(genre).size(), index.artists(genre).size()) << qPrintable(genre);
        for (const QString& artist : index.artists(genre))
            EXPECT_EQ(tree.value(genre).value(artist), index.albums(genre, artist))
                << qPrintable(genre + "/" + artist);
    }
}
