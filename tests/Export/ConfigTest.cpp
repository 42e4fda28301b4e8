#include "Export/Config.h"

#include "support/Files.h"

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
    for (int i = 0; i < Config::FolderCount; ++i) {
        EXPECT_EQ(config.folderPath(Config::Folder(i)),
                  QDir::homePath() + "/" + Program + "/" + Names[i]);
        EXPECT_EQ(Config::folderName(Config::Folder(i)), Names[i]);
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
    for (int i = 0; i < Config::FolderCount; ++i)
        config.setFolderPath(Config::Folder(i), QString::fromUtf8("/média, %1;\"x\"/a b").arg(i));
    config.setCopyRule(2);
    config.setHideBrowser(true);
    config.setCheckVersion(false);
    config.save();
    const Config read;
    for (int i = 0; i < Config::FolderCount; ++i)
        EXPECT_EQ(read.folderPath(Config::Folder(i)), config.folderPath(Config::Folder(i)));
    EXPECT_EQ(read.copyRule(), 2);
    EXPECT_TRUE(read.hideBrowser());
    EXPECT_FALSE(read.checkVersion());
}

TEST(ConfigTest, KeepsItsValuesUnderTheirKeys)
{
    Config config;
    config.setTVShowsDir("/tv");
    config.setVoiceMemosDir("/memos");
    config.setCopyRule(1);
    config.save();
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
    EXPECT_EQ(config.folderPath(Config::Folder::Music),
              QDir::homePath() + "/" + Program + "/Music");
    EXPECT_EQ(config.copyRule(), 0);
}

TEST(ConfigTest, MakesAFolderWhenItIsAskedFor)
{
    const QTemporaryDir folder;
    Config config;
    config.setBooksDir(folder.filePath("a/b/c"));
    EXPECT_FALSE(QFileInfo::exists(folder.filePath("a")));
    EXPECT_EQ(config.booksDir(), folder.filePath("a/b/c"));
    EXPECT_TRUE(QFileInfo(folder.filePath("a/b/c")).isDir());
}

TEST(ConfigTest, GivesAFolderThatCannotBeMadeAllTheSame)
{
    const QTemporaryDir folder;
    Files::write(folder.filePath("file"), "x");
    Config config;
    config.setBooksDir(folder.filePath("file/c"));
    EXPECT_EQ(config.booksDir(), folder.filePath("file/c"));
}

TEST(ConfigTest, IsOneForTheWholeProgram)
{
    EXPECT_EQ(&Config::instance(), &Config::instance());
}
