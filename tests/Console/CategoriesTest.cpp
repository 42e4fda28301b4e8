#include "Console/Categories.h"

#include "support/Files.h"

#include <gtest/gtest.h>

using Categories::Wish;

TEST(Categories, AreTakenInAnyCaseWithBlanksAndDashes)
{
    for (const SectionFacts& one : Sections::all()) {
        const QString key = QString::fromLatin1(one.key);
        const QString folder = QString::fromLatin1(one.folder);
        for (const QString& word : {key, key.toUpper(), folder, folder.toLower().replace(' ', '-'),
                                    folder.toUpper().replace(' ', '_')})
            EXPECT_EQ(Categories::section(word), one.section) << word.toStdString();
    }
    for (const char* word : {"", "song", "musics", "tv", "playlist", "-"})
        EXPECT_FALSE(Categories::section(word)) << word;
}

TEST(Categories, HaveTwoWordsForAll)
{
    for (const char* word : {"all", "ALL", "everything", "Everything"})
        EXPECT_EQ(Wish::of(word)->kind, Wish::Kind::Everything);
    EXPECT_EQ(Wish::of("Media")->kind, Wish::Kind::Media);
    EXPECT_FALSE(Wish::of("nothing"));
}

TEST(Categories, LeaveANameAsItIsWritten)
{
    const auto playlist = Wish::of("playlist=Road Trip=2");
    ASSERT_TRUE(playlist);
    EXPECT_EQ(playlist->kind, Wish::Kind::Playlist);
    EXPECT_EQ(playlist->name, "Road Trip=2");
    const auto album = Wish::of("Album=-x-");
    ASSERT_TRUE(album);
    EXPECT_EQ(album->kind, Wish::Kind::Album);
    EXPECT_EQ(album->name, "-x-");
}

TEST(Categories, KnowTheReadersThatTheyNeed)
{
    EXPECT_EQ(Wish::of("all")->readers().size(), 5);
    EXPECT_EQ(Wish::of("media")->readers(), QStringList("trackDb"));
    EXPECT_EQ(Wish::of("photos")->readers(), QStringList("photoDb"));
    EXPECT_EQ(Wish::of("album=x")->readers(), QStringList("photoDb"));
    EXPECT_EQ(Wish::of("playlist=x")->readers(), QStringList("trackDb"));
    EXPECT_EQ(Wish::of("books")->readers(), QStringList({"trackDb", "bookDb"}));
}
