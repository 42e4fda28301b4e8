#include "support/ConsoleRun.h"
#include "support/SamplePhotos.h"
#include "support/SamplePlayer.h"

#include <gtest/gtest.h>

namespace
{
class ListCommand : public testing::Test
{
protected:
    ListCommand() { EXPECT_EQ(SamplePlayer::write(_folder.path()), ""); }

    QString folder() const { return _folder.path(); }
    ConsoleRun list(const QStringList& arguments = {}) const
    {
        return ConsoleRun(QStringList({"list", "--device", _folder.path()}) + arguments);
    }

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(ListCommand, CountsEachCategory)
{
    const ConsoleRun run = list();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.text().simplified(),
              "music 169 movies 6 tvShows 10 podcasts 25 audiobooks 16 ringtones 8 books 5 "
              "playlists 6 photos 12");
}

TEST_F(ListCommand, CountsInJson)
{
    const ConsoleRun run = list({"--json"});
    EXPECT_EQ(run.exitCode, 0);
    const QJsonArray all = QJsonDocument::fromJson(run.output).array();
    ASSERT_EQ(all.size(), 9);
    EXPECT_EQ(
        all[0].toObject(),
        QJsonObject({{"category", "music"}, {"here", 169}, {"cloud", 0}, {"notUnderstood", 0}}));
    EXPECT_EQ(all[8].toObject()["category"].toString(), "photos");
    const QJsonArray one = QJsonDocument::fromJson(list({"--json", "movies"}).output).array();
    ASSERT_EQ(one.size(), 1);
    EXPECT_EQ(one[0].toObject()["here"].toInt(), 6);
}

TEST_F(ListCommand, TakesACategoryHoweverItIsWritten)
{
    const QByteArray shows = list({"tvShows"}).output;
    for (const char* word : {"TV Shows", "tv-shows", "TVSHOWS", "tv_shows"})
        EXPECT_EQ(list({word}).output, shows) << word;
}

TEST_F(ListCommand, EndsQuietlyWhenNobodyReadsOn)
{
    for (const char* reader : {"head -1", "true"}) {
        QProcess shell;
        shell.start("bash", {"-c", QString("\"$@\" | %1; exit ${PIPESTATUS[0]}").arg(reader), "sh",
                             ConsoleRun::program(), "dump", "--device", folder()});
        ASSERT_TRUE(shell.waitForFinished(30000));
        EXPECT_EQ(shell.exitCode(), 0);
        EXPECT_EQ(shell.readAllStandardError(), "");
    }
}

TEST_F(ListCommand, ShowsTheItemsOfACategory)
{
    const ConsoleRun run = list({"movies"});
    EXPECT_EQ(run.text().count('\n'), 7);
    EXPECT_TRUE(run.text().contains("The Long Summer, Reel 6"));
    EXPECT_TRUE(run.text().contains("00:01"));
}

TEST_F(ListCommand, ShowsPlaylistsWithTheirCounts)
{
    const QString text = list({"playlists"}).text().simplified();
    EXPECT_TRUE(text.contains("Road Trip 20"));
    EXPECT_TRUE(text.contains("Still Empty 0"));
}

TEST_F(ListCommand, ShowsPhotosWithTheirAlbums)
{
    const QString text = list({"photos"}).text();
    EXPECT_EQ(text.count('\n'), 13);
    EXPECT_TRUE(text.simplified().contains("1002 Coast Walk 1003 Coast Walk"));
    EXPECT_TRUE(text.contains("Photos/Full Resolution/2009/07/IMG_3.jpg"));
}

TEST_F(ListCommand, SaysSoWhereADeviceHasNoSuchThing)
{
    for (const char* category : {"voiceMemos", "cameraRoll"}) {
        const ConsoleRun run = list({QString::fromLatin1(category)});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_TRUE(run.output.isEmpty());
        EXPECT_TRUE(run.errors.contains(QLatin1String(category)));
    }
}

TEST_F(ListCommand, FailsWhenItsOutputCannotBeWritten)
{
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(ConsoleRun::program(), {"list", "--device", folder()});
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().contains("No space left on device"));
}

TEST(ListWithoutLibrary, SaysSo)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("iPod_Control"));
    const ConsoleRun run({"list", "--device", folder.path()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_FALSE(run.errors.isEmpty());
}

TEST(ListWithoutLibrary, StillShowsPhotos)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("iPod_Control"));
    ASSERT_EQ(SamplePhotos::write(folder.path()), "");
    EXPECT_EQ(ConsoleRun({"list", "--device", folder.path()}).text().simplified(), "photos 12");
    EXPECT_EQ(ConsoleRun({"list", "--device", folder.path(), "photos"}).errors, "");
}
