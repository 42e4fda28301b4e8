#include "Export/Config.h"

#include "support/Files.h"

#include <QDir>
#include <QSettings>

#include <gtest/gtest.h>

namespace
{
const QString Program = "Zell iPod iPhone Transfer";

QSettings store()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, Program, Program);
}

const QStringList Names = {"Music",       "Movies",      "TV Shows", "Podcasts",
                           "Audiobooks",  "Ringtones",   "Books",    "Playlists",
                           "Voice Memos", "Camera Roll", "Photos"};
} // namespace

TEST(ConfigTest, StartsWithFoldersBelowTheHomeFolder)
{
    const Config config;
    for (int i = 0; i < int(Sections::Count); ++i) {
        EXPECT_EQ(config.folderPath(Section(i)), QDir::homePath() + "/" + Program + "/" + Names[i]);
        EXPECT_EQ(Sections::folderName(Section(i)), Names[i]);
    }
    EXPECT_EQ(config.copyRule(), 0);
    EXPECT_FALSE(config.hideBrowser());
    EXPECT_TRUE(config.checkVersion());
}

TEST(ConfigTest, WritesNothingBeforeItIsSaved)
{
    Config config;
    config.setCopyRule(3);
    EXPECT_TRUE(store().allKeys().isEmpty());
    EXPECT_EQ(Config().copyRule(), 0);
}

TEST(ConfigTest, BringsEverySettingBack)
{
    Config config;
    for (int i = 0; i < int(Sections::Count); ++i)
        config.setFolderPath(Section(i), QString::fromUtf8("/média, %1;\"x\"/a b").arg(i));
    config.setCopyRule(2);
    config.setHideBrowser(true);
    config.setCheckVersion(false);
    ASSERT_TRUE(config.save());
    const Config read;
    for (int i = 0; i < int(Sections::Count); ++i)
        EXPECT_EQ(read.folderPath(Section(i)), config.folderPath(Section(i)));
    EXPECT_EQ(read.copyRule(), 2);
    EXPECT_TRUE(read.hideBrowser());
    EXPECT_FALSE(read.checkVersion());
}

TEST(ConfigTest, KeepsItsValuesUnderTheirKeys)
{
    Config config;
    config.setFolderPath(Section::TVShows, "/tv");
    config.setFolderPath(Section::VoiceMemos, "/memos");
    config.setCopyRule(1);
    ASSERT_TRUE(config.save());
    EXPECT_EQ(store().value("TVShowsDir"), "/tv");
    EXPECT_EQ(store().value("VoiceMemosDir"), "/memos");
    EXPECT_EQ(store().value("CopyRule").toInt(), 1);
    QStringList keys = store().allKeys();
    keys.sort();
    EXPECT_EQ(keys,
              QStringList({"AudiobooksDir", "BooksDir", "CameraRollDir", "CheckVersion", "CopyRule",
                           "HideBrowser", "MoviesDir", "MusicDir", "PhotosDir", "PlaylistsDir",
                           "PodcastsDir", "RingtonesDir", "TVShowsDir", "VoiceMemosDir"}));
}

TEST(ConfigTest, TakesAValueOfTheWrongTypeForMissing)
{
    {
        QSettings settings = store();
        settings.setValue("MusicDir", QStringList({"a", "b"}));
        settings.setValue("CopyRule", "no number");
    }
    const Config config;
    EXPECT_EQ(config.folderPath(Section::Music), QDir::homePath() + "/" + Program + "/Music");
    EXPECT_EQ(config.copyRule(), 0);
}

TEST(ConfigTest, MakesAFolderWhenItIsAskedFor)
{
    const QTemporaryDir folder;
    Config config;
    config.setFolderPath(Section::Books, folder.filePath("a/b/c"));
    EXPECT_FALSE(QFileInfo::exists(folder.filePath("a")));
    EXPECT_EQ(config.existingFolder(Section::Books), folder.filePath("a/b/c"));
    EXPECT_TRUE(QFileInfo(folder.filePath("a/b/c")).isDir());
}

TEST(ConfigTest, GivesAFolderThatCannotBeMadeAllTheSame)
{
    const QTemporaryDir folder;
    Files::write(folder.filePath("file"), "x");
    Config config;
    config.setFolderPath(Section::Books, folder.filePath("file/c"));
    EXPECT_EQ(config.existingFolder(Section::Books), folder.filePath("file/c"));
}

TEST(ConfigTest, IsOneForTheWholeProgram)
{
    EXPECT_EQ(&Config::instance(), &Config::instance());
}

TEST(ConfigTest, SavesOnlyWhatWasChanged)
{
    Config window;
    ASSERT_TRUE(window.save());
    Config other;
    other.setFolderPath(Section::Music, "/elsewhere");
    other.setCopyRule(3);
    ASSERT_TRUE(other.save());

    window.setHideBrowser(true); // knows nothing of what the other one has changed
    ASSERT_TRUE(window.save());
    const Config next;
    EXPECT_EQ(next.folderPath(Section::Music), "/elsewhere");
    EXPECT_EQ(next.copyRule(), 3);
    EXPECT_TRUE(next.hideBrowser());
}

TEST(ConfigTest, SaysThatItCannotBeSaved)
{
    Config config;
    config.setCopyRule(2);
    const QString file = store().fileName();
    QFile::remove(file);
    ASSERT_TRUE(QDir().mkpath(file)); // what stands in the way of the file
    const Status saved = config.save();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.failure().kind, Failure::Kind::Unwritable);
    EXPECT_EQ(saved.failure().exact, file);

    ASSERT_TRUE(QDir().rmdir(file));
    ASSERT_TRUE(config.save()) << "and it is not forgotten meanwhile";
    EXPECT_EQ(Config().copyRule(), 2);
}
