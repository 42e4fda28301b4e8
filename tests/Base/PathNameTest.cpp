#include "Base/PathName.h"

#include <gtest/gtest.h>

TEST(PathNameTest, JoinsWithExactlyOneSlash)
{
    EXPECT_EQ(PathName::join("/Volumes/P", u"iPod_Control"), "/Volumes/P/iPod_Control");
    EXPECT_EQ(PathName::join("/Volumes/P/", u"/iPod_Control"), "/Volumes/P/iPod_Control");
    EXPECT_EQ(PathName::join("/", u"Books"), "/Books");
    EXPECT_EQ(PathName::join("/", u"/Books"), "/Books");
}

TEST(PathNameTest, AddsNothingForAnEmptyComponent)
{
    EXPECT_EQ(PathName::join("/Volumes/P", u""), "/Volumes/P");
    EXPECT_EQ(PathName::join("/", u""), "/");
    EXPECT_EQ(PathName::join("/Volumes/P", u"/"), "/Volumes/P");
}

TEST(PathNameTest, FindsTheLastComponentAndTheParent)
{
    EXPECT_EQ(PathName::lastComponent("/a/b.mp3"), "b.mp3");
    EXPECT_EQ(PathName::lastComponent("/a/b/"), "b");
    EXPECT_EQ(PathName::lastComponent("b"), "b");
    EXPECT_EQ(PathName::parent("/a/b"), "/a");
    EXPECT_EQ(PathName::parent("/a"), "/");
    EXPECT_EQ(PathName::parent("a"), "");
}

TEST(PathNameTest, TakesTheExtensionFromTheLastComponentOnly)
{
    EXPECT_EQ(PathName::extension("/a.b/c"), "");
    EXPECT_EQ(PathName::extension("/a/b.tar.GZ"), "GZ");
    EXPECT_EQ(PathName::withoutExtension("/a/b.tar.GZ"), "/a/b.tar");
    EXPECT_EQ(PathName::extension("/a/T."), "");
    EXPECT_EQ(PathName::withoutExtension("/a/T."), "/a/T");
}

TEST(PathNameTest, GivesANameWhoseOnlyDotComesFirstNoExtension)
{
    EXPECT_EQ(PathName::extension("/a/.hidden"), "");
    EXPECT_EQ(PathName::withoutExtension("/a/.hidden"), "/a/.hidden");
    EXPECT_EQ(PathName::extension("/a/.."), "");
}

TEST(PathNameTest, AppendsNoDotForAnEmptyExtension)
{
    EXPECT_EQ(PathName::withExtension("/a/b1", ""), "/a/b1");
    EXPECT_EQ(PathName::withExtension("/a/b1", "mp3"), "/a/b1.mp3");
}

TEST(PathNameTest, TellsWhatLiesInsideAFolder)
{
    EXPECT_TRUE(PathName::isInside("/out/Music/a/b", "/out/Music"));
    EXPECT_TRUE(PathName::isInside("/out/Music/a/../b", "/out/Music/"));
    EXPECT_TRUE(PathName::isInside("/x", "/"));
    EXPECT_FALSE(PathName::isInside("/out/Music", "/out/Music"));
    EXPECT_FALSE(PathName::isInside("/out/Music2/a", "/out/Music"));
    EXPECT_FALSE(PathName::isInside("/out/Music/../a", "/out/Music"));
    EXPECT_FALSE(PathName::isInside("/out/Music/a/../..", "/out/Music"));
}

TEST(PathNameTest, FindsParentComponentsWhereverTheyStand)
{
    for (const char* path : {"..", "../a", "a/..", "a/../b"})
        EXPECT_TRUE(PathName::hasParentComponent(QString::fromLatin1(path))) << path;
    for (const char* path : {"", "...", "a..b", "a/..b", "a../b"})
        EXPECT_FALSE(PathName::hasParentComponent(QString::fromLatin1(path))) << path;
}
