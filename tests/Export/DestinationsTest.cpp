#include "Export/Destinations.h"

#include "support/Files.h"
#include "support/PrivateMounts.h"

#include <gtest/gtest.h>

namespace
{
using PrivateMounts::Mount;

class DestinationsTest : public testing::Test
{
protected:
    DestinationsTest()
    {
        QDir().mkpath(path("player/iPod_Control/Music"));
        config.setMusicDir(path("out/Music"));
    }

    QString path(const QString& name) const { return _folder.filePath(name); }
    /// Whether the folder below that of music can be had.
    bool opens(const QString& below = {}, const QString& player = "player")
    {
        Destinations destinations(config, player.isNull() ? QString() : path(player));
        return bool(destinations.folder(Section::Music, below));
    }
    bool opensWithMusicAt(const QString& name)
    {
        config.setMusicDir(path(name));
        return opens("Artist");
    }

    Config config;
    QTemporaryDir _folder;
};
} // namespace

TEST_F(DestinationsTest, AreMadeAsFarAsTheyAreMissing)
{
    EXPECT_TRUE(opens("Artist/Album"));
    EXPECT_TRUE(QFileInfo(path("out/Music/Artist/Album")).isDir());
    EXPECT_TRUE(opens("//Artist/./Album/"));
    EXPECT_TRUE(opens());
}

TEST_F(DestinationsTest, MayBeginWithALinkOfThePersons)
{
    QDir().mkpath(path("disk"));
    QDir().mkpath(path("out"));
    ASSERT_TRUE(QFile::link(path("disk"), path("out/Music")));
    EXPECT_TRUE(opens("Artist"));
    EXPECT_TRUE(QFileInfo(path("disk/Artist")).isDir());
    ASSERT_TRUE(QFile::link(path("out"), path("linked")));
    EXPECT_TRUE(opensWithMusicAt("linked/Music/Rock"));
    EXPECT_TRUE(QFileInfo(path("disk/Rock/Artist")).isDir());
}

TEST_F(DestinationsTest, StayWhereTheirLinkLedAtTheStart)
{
    QDir().mkpath(path("disk"));
    QDir().mkpath(path("other"));
    ASSERT_TRUE(QFile::link(path("disk"), path("music")));
    config.setMusicDir(path("music"));
    Destinations destinations(config, path("player"));
    ASSERT_TRUE(destinations.folder(Section::Music, "One"));
    ASSERT_TRUE(QFile::remove(path("music")));
    ASSERT_TRUE(QFile::link(path("other"), path("music")));
    ASSERT_TRUE(destinations.folder(Section::Music, "Two"));
    EXPECT_EQ(QDir(path("disk")).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
              QStringList({"One", "Two"}));
    EXPECT_TRUE(QDir(path("other")).isEmpty());
}

TEST_F(DestinationsTest, AreMadeAgainWhenThePersonRemovedThem)
{
    Destinations destinations(config, path("player"));
    ASSERT_TRUE(destinations.folder(Section::Music, "One"));
    ASSERT_TRUE(QDir(path("out")).removeRecursively());
    ASSERT_TRUE(destinations.folder(Section::Music, "Two"));
    EXPECT_TRUE(QFileInfo(path("out/Music/Two")).isDir());
}

TEST_F(DestinationsTest, FollowNoLinkBelow)
{
    QDir().mkpath(path("out/Music/Real"));
    QDir().mkpath(path("elsewhere"));
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("out/Music/Artist")));
    ASSERT_TRUE(QFile::link(path("elsewhere"), path("out/Music/Real/Album")));
    ASSERT_TRUE(QFile::link(path("nowhere"), path("out/Music/Broken")));
    for (const char* below : {"Artist", "Artist/Album", "Real/Album", "Broken", "Broken/x"})
        EXPECT_FALSE(opens(below)) << below;
    EXPECT_TRUE(QDir(path("elsewhere")).isEmpty());
    EXPECT_FALSE(QFileInfo::exists(path("nowhere")));
    EXPECT_TRUE(opens("Real"));
}

TEST_F(DestinationsTest, AreNeverOnTheDevice)
{
    QDir().mkpath(path("links"));
    ASSERT_TRUE(QFile::link(path("player"), path("links/root")));
    ASSERT_TRUE(QFile::link(path("player/iPod_Control"), path("links/deep")));
    for (const char* music :
         {"player", "player/", "player/new", "player/iPod_Control",
          "player/iPod_Control/Music/new/deeper", "links/root", "links/root/new", "links/deep",
          "links/deep/Music/new", "out/../player/new"})
        EXPECT_FALSE(opensWithMusicAt(QString::fromLatin1(music))) << music;
    EXPECT_EQ(QDir(path("player")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList("iPod_Control"));
    EXPECT_TRUE(QDir(path("player/iPod_Control/Music")).isEmpty());
    EXPECT_TRUE(opensWithMusicAt("players")) << "which only begins like it";
    EXPECT_TRUE(opens("Artist", {})) << "a phone is nowhere on the computer";
}

TEST_F(DestinationsTest, AreNotOnTheDeviceThroughASecondMount)
{
    PrivateMounts::enter();
    const auto second = Mount::bind(path("player"), path("second"));
    EXPECT_FALSE(opensWithMusicAt("second"));
    EXPECT_FALSE(opensWithMusicAt("second/iPod_Control/Music/new"));
    // Below a folder of the person's own, too.
    const auto inside = Mount::bind(path("player"), path("out/Music/Artist"));
    config.setMusicDir(path("out/Music"));
    EXPECT_FALSE(opens("Artist"));
    EXPECT_FALSE(opens("Artist/Album"));
    EXPECT_TRUE(opens("Other"));
    EXPECT_TRUE(QDir(path("player/iPod_Control/Music")).isEmpty());
    EXPECT_FALSE(QFileInfo::exists(path("player/Album")));
}

TEST_F(DestinationsTest, AreNotOnTheDevicesFileSystemWhereThatIsItsOwn)
{
    PrivateMounts::enter();
    const auto disk = Mount::memory(path("volume"), 1 << 20);
    QDir().mkpath(path("volume/iPod_Control/Music"));
    // A part of the volume, mounted where no folder above it is the volume's own.
    const auto part = Mount::bind(path("volume/iPod_Control/Music"), path("part"));
    config.setMusicDir(path("part/new"));
    EXPECT_FALSE(opens("Artist", "volume"));
    EXPECT_TRUE(QDir(path("part")).isEmpty());
    const auto inside = Mount::bind(path("volume/iPod_Control/Music"), path("out/Music/Artist"));
    config.setMusicDir(path("out/Music"));
    EXPECT_FALSE(opens("Artist/Album", "volume"));
    EXPECT_TRUE(QDir(path("part")).isEmpty());
    EXPECT_TRUE(opens("Other", "volume"));
}

TEST_F(DestinationsTest, SayWhyTheyCannotBeMade)
{
    const auto why = [this](const QString& below) {
        Destinations destinations(config, path("player"));
        const auto folder = destinations.folder(Section::Music, below);
        return folder ? QString() : folder.failure().exact;
    };
    Files::write(path("out/Music/file"), "x");
    EXPECT_EQ(why("file/Album"), "Not a directory");
    EXPECT_EQ(why(QString(300, u'n')), "File name too long");
    config.setMusicDir("");
    EXPECT_FALSE(opens("Artist"));
    config.setMusicDir(path("out/Music/file/deeper"));
    EXPECT_FALSE(opens("Artist"));
}
