#include "Window/TrackBrowser.h"

#include "Base/Translations.h"
#include "Device/CategoryIndex.h"
#include "Device/Track.h"
#include "Window/Models/KeyListModel.h"
#include "support/Files.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <gtest/gtest.h>

#include <deque>

namespace
{
class TrackBrowserTest : public testing::Test
{
protected:
    TrackBrowserTest()
    {
        add("Love Song", "Rock", "A", "X");
        add("Other", "Rock", "B", "Y");
        add("Gloves", "Jazz", "A", "Z");
        add("Blues", "Blues", "Lover", "X");
    }

    void add(const char* title, const char* genre, const char* artist, const char* album)
    {
        Track& track = _tracks.emplace_back();
        track.title = title;
        track.genre = genre;
        track.artist = artist;
        track.album = album;
        index.add(&track);
    }

    static QStringList titles(const TrackBrowser::Tracks& tracks)
    {
        QStringList list;
        for (const Track* track : *tracks)
            list.append(track->title);
        return list;
    }

    CategoryIndex index;
    TrackBrowser browser;

private:
    std::deque<Track> _tracks;
};
} // namespace

TEST_F(TrackBrowserTest, ShowsNothingBeforeAChoice)
{
    EXPECT_EQ(browser.filteredTracks(), nullptr);
    browser.search("love");
    EXPECT_EQ(browser.filteredTracks(), nullptr);
}

TEST_F(TrackBrowserTest, FillsOneLevelAfterTheOther)
{
    browser.showCategory(index);
    EXPECT_EQ(browser.genres(), QStringList({"*", "Blues", "Jazz", "Rock"}));
    EXPECT_TRUE(browser.artists().isEmpty());
    browser.chooseGenre(3);
    EXPECT_EQ(browser.artists(), QStringList({"*", "A", "B"}));
    EXPECT_TRUE(browser.albums().isEmpty());
    EXPECT_EQ(browser.currentTracks(), nullptr);
    browser.chooseArtist(1);
    EXPECT_EQ(browser.albums(), QStringList({"*", "X"}));
    EXPECT_EQ(browser.currentTracks(), nullptr);
    browser.chooseAlbum(1);
    EXPECT_EQ(titles(browser.currentTracks()), QStringList("Love Song"));
}

TEST_F(TrackBrowserTest, ShowsTheWholeCategoryByItsFirstRows)
{
    browser.showCategory(index);
    browser.chooseGenre(0);
    browser.chooseArtist(0);
    browser.chooseAlbum(0);
    EXPECT_EQ(titles(browser.currentTracks()),
              QStringList({"Love Song", "Other", "Gloves", "Blues"}));
}

TEST_F(TrackBrowserTest, TakesAllAlbumsWithoutAnAlbumRow)
{
    browser.showCategory(index);
    browser.chooseGenre(3);
    browser.chooseArtist(-1);
    EXPECT_TRUE(browser.albums().isEmpty());
    browser.chooseAlbum(-1);
    EXPECT_EQ(titles(browser.currentTracks()), QStringList({"Love Song", "Other"}));
}

TEST_F(TrackBrowserTest, SearchesTitlesOnlyAndWithoutCase)
{
    browser.showTracks(index.tracks("*|*|*"));
    browser.search("LOVE");
    EXPECT_EQ(titles(browser.filteredTracks()), QStringList({"Love Song", "Gloves"}));
    EXPECT_EQ(browser.currentTracks()->size(), 4U);
    browser.search("  love ");
    EXPECT_EQ(browser.filteredTracks()->size(), 2U);
}

TEST_F(TrackBrowserTest, KeepsTheVeryListForASearchOfBlanks)
{
    browser.showTracks(index.tracks("*|*|*"));
    browser.search("   ");
    EXPECT_EQ(browser.filteredTracks(), browser.currentTracks());
}

TEST_F(TrackBrowserTest, SearchesOnInWhatIsChosenNext)
{
    browser.showCategory(index);
    browser.chooseGenre(0);
    browser.chooseArtist(0);
    browser.chooseAlbum(0);
    browser.search("love");
    browser.chooseGenre(2);
    browser.chooseArtist(0);
    browser.chooseAlbum(0);
    EXPECT_EQ(titles(browser.filteredTracks()), QStringList("Gloves"));
}

TEST_F(TrackBrowserTest, ForgetsTheSearchWithTheSource)
{
    browser.showTracks(index.tracks("*|*|*"));
    browser.search("love");
    browser.showTracks(index.tracks("*|*|*"));
    EXPECT_EQ(browser.filteredTracks()->size(), 4U);
    browser.clear();
    EXPECT_EQ(browser.filteredTracks(), nullptr);
    EXPECT_TRUE(browser.genres().isEmpty());
}

TEST(KeyListModelTest, CountsTheKeysBesidesTheStar)
{
    KeyListModel model("Genre");
    model.setKeys({"*", "Blues", "Jazz", "Rock"});
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.index(0).data().toString(), "All (3 Genre)");
    EXPECT_EQ(model.index(3).data().toString(), "Rock");
}

TEST(KeyListModelTest, CountsInEnglishWhereThatIsSpoken)
{
    KeyListModel model("Genre");
    ASSERT_TRUE(Translations::install(QLocale("en_GB")));
    model.setKeys({"*", "Folk", "Jazz"});
    EXPECT_EQ(model.index(0).data().toString(), "All (2 Genres)");
    model.setKeys({"*", "Folk"});
    EXPECT_EQ(model.index(0).data().toString(), "All (1 Genre)");
    for (QTranslator* catalogue : qApp->findChildren<QTranslator*>())
        delete catalogue; // other tests compare the texts of the sources
}
