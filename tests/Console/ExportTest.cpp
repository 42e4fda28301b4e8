#include "support/ConsoleRun.h"
#include "support/PrivateMounts.h"
#include "support/SamplePhotos.h"
#include "support/SamplePlayer.h"

#include <QDateTime>
#include <QDirIterator>
#include <QImage>
#include <QSettings>

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>

namespace
{
class ExportCommand : public testing::Test
{
protected:
    ExportCommand() { EXPECT_EQ(SamplePlayer::write(path("player")), ""); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    QStringList command(const QStringList& what) const
    {
        return QStringList({"export", "--device", path("player"), "--to", path("out"), "--report",
                            path("report")}) +
               what;
    }
    ConsoleRun exported(const QStringList& what) const { return ConsoleRun(command(what)); }
    std::vector<QJsonObject> report() const { return readReport(path("report")); }

    /// Whether each item that the report calls copied is there, byte for byte.
    void checkCopies() const
    {
        for (const QJsonObject& item : report()) {
            if (item["result"].toString() != "copied")
                continue;
            const QByteArray content = Files::read(item["to"].toString());
            if (item["from"].toString().endsWith(u".ithmb"))
                EXPECT_EQ(QImage::fromData(content, "jpeg").size(), QSize(720, 480));
            else
                EXPECT_EQ(content, Files::read(item["from"].toString()));
            EXPECT_EQ(item["bytes"].toInteger(), content.size());
        }
    }
    static int count(const std::vector<QJsonObject>& items, const char* result)
    {
        return int(std::count_if(items.begin(), items.end(), [&](const QJsonObject& item) {
            return item["result"].toString() == QLatin1String(result);
        }));
    }
    QString deviceFile(int number) const
    {
        return path("player") +
               SamplePlayer::library().tracks[std::size_t(number)].location.replace(u':', u'/');
    }

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(ExportCommand, CopiesEverythingByteForByte)
{
    const ConsoleRun run = exported({"all"});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.isEmpty());
    const std::size_t tracks = SamplePlayer::library().tracks.size();
    ASSERT_EQ(report().size(), tracks + SamplePhotos::PhotoCount);
    EXPECT_EQ(count(report(), "copied"), int(tracks) + SamplePhotos::PhotoCount);
    checkCopies();
    EXPECT_TRUE(QFileInfo(path("out/TV Shows/Station Nine/Station Nine, Season 1/Episode 10.mov"))
                    .isFile());
    EXPECT_TRUE(QFileInfo(path("out/Ringtones/Ring 3.wav")).isFile());
    EXPECT_TRUE(
        QFileInfo(path("out/Music/Copper & Rain/Odds and Ends/Side A/Side B.wav")).isFile());
    EXPECT_TRUE(QFileInfo(path("out/Music/Copper & Rain/Odds and Ends/Same Name1.wav")).isFile());
}

TEST_F(ExportCommand, ShowsALineForEachItemWithoutATerminal)
{
    const ConsoleRun run = exported({"movies"});
    EXPECT_TRUE(run.errors.contains("[1/6] copied: The Long Summer, Reel 1\n"));
    EXPECT_TRUE(run.errors.contains("\n6 copied\n"));
    EXPECT_EQ(exported({"movies", "--quiet"}).errors, "");
}

TEST_F(ExportCommand, CopiesCategoriesAndPlaylistsOneAfterTheOther)
{
    const ConsoleRun run = exported({"ringtones", "playlist=Twice the Fun", "movies"});
    EXPECT_EQ(run.exitCode, 0);
    ASSERT_EQ(report().size(), 8U + 3U + 6U);
    EXPECT_EQ(report()[8]["to"].toString().section('/', -3, -2), "Playlists/Twice the Fun");
    checkCopies();
}

TEST_F(ExportCommand, CopiesAllPlaylists)
{
    EXPECT_EQ(exported({"playlists"}).exitCode, 0);
    EXPECT_EQ(report().size(), 20U + 15U + 11U + 6U + 3U);
    checkCopies();
}

TEST_F(ExportCommand, CopiesPhotosAndAlbums)
{
    EXPECT_EQ(exported({"photos"}).exitCode, 0);
    ASSERT_EQ(report().size(), std::size_t(SamplePhotos::PhotoCount));
    EXPECT_EQ(report()[0]["kind"].toString(), "photo");
    EXPECT_TRUE(QFileInfo(path("out/Photos/Coast Walk/1002.jpg")).isFile());
    EXPECT_TRUE(QFileInfo(path("out/Photos/1012.jpg")).isFile()); // in no album
    checkCopies();
    const ConsoleRun album = exported({"album=Coast Walk", "album=Still Empty", "--clash", "skip"});
    EXPECT_EQ(album.exitCode, 0);
    EXPECT_EQ(count(report(), "skipped"), 5);
    EXPECT_TRUE(album.errors.contains("skipped: 1002.jpg"));
}

TEST_F(ExportCommand, SaysSoWhereThereIsNoCameraRoll)
{
    const ConsoleRun run = exported({"cameraRoll"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.errors.contains("cameraRoll"));
}

TEST_F(ExportCommand, SaysWhichPlaylistOrAlbumIsNotThere)
{
    const ConsoleRun playlist = exported({"playlist=Nowhere"});
    EXPECT_EQ(playlist.exitCode, 2);
    EXPECT_TRUE(playlist.errors.contains("Nowhere"));
    const ConsoleRun album = exported({"album=Nothing"});
    EXPECT_EQ(album.exitCode, 2);
    EXPECT_TRUE(album.errors.contains("Nothing"));
}

TEST_F(ExportCommand, NumbersOverwritesOrSkips)
{
    EXPECT_EQ(exported({"movies"}).exitCode, 0);
    const QString first = report()[0]["to"].toString();
    Files::write(first, "changed");
    EXPECT_EQ(exported({"movies", "--clash", "skip"}).exitCode, 0);
    EXPECT_EQ(count(report(), "skipped"), 6);
    EXPECT_EQ(Files::read(first), "changed");
    EXPECT_EQ(exported({"movies", "--clash", "number"}).exitCode, 0);
    EXPECT_EQ(report()[0]["to"].toString(), QString(first).replace(".mov", "1.mov"));
    EXPECT_EQ(exported({"movies", "--clash", "overwrite"}).exitCode, 0);
    EXPECT_EQ(report()[0]["to"].toString(), first);
    checkCopies();
}

TEST_F(ExportCommand, NumbersWhereItCannotAsk)
{
    EXPECT_EQ(exported({"movies"}).exitCode, 0);
    EXPECT_EQ(exported({"movies"}).exitCode, 0);
    EXPECT_TRUE(report()[0]["to"].toString().endsWith("1.mov"));
}

TEST_F(ExportCommand, UsesTheFoldersOfTheSettings)
{
    const QString name = "Zell iPod iPhone Transfer";
    {
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, name, name);
        settings.setValue("MoviesDir", path("my movies"));
        settings.setValue("CopyRule", 3);
    }
    EXPECT_EQ(ConsoleRun({"export", "--device", path("player"), "movies", "audiobooks"}).exitCode,
              0);
    EXPECT_TRUE(
        QFileInfo(path("my movies/Home Movies/Family/The Long Summer, Reel 1.mov")).isFile());
    EXPECT_TRUE(QFileInfo(QDir::homePath() + "/" + name + "/Audiobooks/M. Ellery").isDir());
}

TEST_F(ExportCommand, NamesEachItemThatWasNotCopied)
{
    QFile::remove(deviceFile(0));
    const ConsoleRun run = exported({"music", "--quiet"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.errors.startsWith("missing: First Ferry (No such file or directory)\n"));
    EXPECT_EQ(count(report(), "missing"), 1);
    checkCopies();
}

TEST_F(ExportCommand, EndsWithASumThatNamesDestinationAndReport)
{
    const ConsoleRun well = exported({"movies"});
    EXPECT_TRUE(well.errors.contains("destination: " + path("out") + "\n"));
    EXPECT_TRUE(well.errors.contains("report: " + path("report") + "\n"));
    for (const int number : {0, 1, 2})
        QFile::remove(deviceFile(number));
    const ConsoleRun ill = exported({"music", "--quiet"});
    EXPECT_TRUE(ill.errors.contains("\n166 copied, 3 missing\n")) << ill.errors.toStdString();
    EXPECT_TRUE(ill.errors.contains("3 items not copied: No such file or directory\n") ||
                ill.errors.contains("3 item(s) not copied: No such file or directory\n"));
    EXPECT_TRUE(ill.errors.contains("destination: " + path("out") + "\n"));
    EXPECT_TRUE(ill.errors.contains("report: " + path("report") + "\n"));
}

TEST_F(ExportCommand, NamesTheLogWhereNoReportIsAskedFor)
{
    const ConsoleRun run({"export", "--device", path("player"), "movies"});
    EXPECT_TRUE(run.errors.contains("export.log\n"));
    EXPECT_TRUE(run.errors.contains("destination: " + QDir::homePath()));
}

TEST_F(ExportCommand, TakesWordsHoweverTheyAreWritten)
{
    EXPECT_EQ(exported({"TV Shows", "RINGTONES", "Audio-Books"}).exitCode, 0);
    EXPECT_EQ(report().size(), 10U + 8U + 16U);
    EXPECT_EQ(exported({"Everything", "--clash", "skip"}).exitCode, 0);
    EXPECT_EQ(report().size(), SamplePlayer::library().tracks.size() + SamplePhotos::PhotoCount);
}

TEST_F(ExportCommand, ResolvesAHomeFolderInAPath)
{
    const ConsoleRun run(
        {"export", "--device", path("player"), "--to=~/Rescued", "--report=~/report", "movies"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(QFileInfo(QDir::homePath() + "/Rescued/Movies").isDir());
    EXPECT_EQ(readReport(QDir::homePath() + "/report").size(), 6U);
}

TEST_F(ExportCommand, CopiesAnEmptyFile)
{
    Files::write(deviceFile(0), "");
    EXPECT_EQ(exported({"music"}).exitCode, 0);
    EXPECT_EQ(report()[0]["result"].toString(), "copied");
    EXPECT_EQ(report()[0]["bytes"].toInteger(-1), 0);
    EXPECT_EQ(QFileInfo(report()[0]["to"].toString()).size(), 0);
}

TEST_F(ExportCommand, TakesARelativeDestination)
{
    QDir::setCurrent(path("."));
    EXPECT_EQ(ConsoleRun({"export", "--device", "player", "--to", "near", "--report", "report",
                          "ringtones"})
                  .exitCode,
              0);
    EXPECT_EQ(QFileInfo(report()[0]["to"].toString()).path(), path("near/Ringtones"));
    checkCopies();
}

TEST_F(ExportCommand, ReportsAFileInThePlaceOfAFolder)
{
    Files::write(path("out/Movies"), "mine");
    const ConsoleRun run = exported({"movies"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors.count(path("out/Movies") + ": Not a directory"), 1);
    EXPECT_FALSE(run.errors.contains("The Long Summer")); // once, and not of each item
    EXPECT_EQ(count(report(), "failed"), 6);
    EXPECT_EQ(report()[0]["why"].toString(), "Not a directory");
    EXPECT_EQ(Files::read(path("out/Movies")), "mine");
}

TEST_F(ExportCommand, GoesOnWhenTheDiskIsFull)
{
    PrivateMounts::enter();
    const auto disk = PrivateMounts::Mount::memory(path("out"), 1 << 20);
    const ConsoleRun run = exported({"music"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.errors.contains("No space left on device"));
    EXPECT_EQ(report().size(), 169U);
    EXPECT_GT(count(report(), "copied"), 20);
    EXPECT_GT(count(report(), "failed"), 20);
    checkCopies();
}

TEST_F(ExportCommand, ReportsAFolderThatCannotBeWritten)
{
    PrivateMounts::enter();
    QDir().mkpath(path("locked"));
    const auto locked = PrivateMounts::Mount::readOnlyBind(path("locked"), path("out"));
    const ConsoleRun run = exported({"movies"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(count(report(), "failed"), 6);
    EXPECT_EQ(report()[0]["why"].toString(), "Read-only file system");
}

TEST_F(ExportCommand, ChecksTheReportBeforeItCopies)
{
    const ConsoleRun run({"export", "--device", path("player"), "--to", path("out"), "--report",
                          path("no/such/folder/report"), "all"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_FALSE(QFileInfo::exists(path("out")));
}

TEST_F(ExportCommand, WritesNoReportOntoThePlayer)
{
    QDir(path("player")).mkdir("inside");
    ASSERT_TRUE(QFile::link(path("player/inside"), path("shortcut")));
    for (const char* place : {"player/report", "player/inside/report", "shortcut/report"}) {
        const ConsoleRun run({"export", "--device", path("player"), "--to", path("out"), "--report",
                              path(place), "movies"});
        EXPECT_EQ(run.exitCode, 2) << place;
        EXPECT_FALSE(QFileInfo::exists(path(place))) << place;
    }
    EXPECT_EQ(
        ConsoleRun({"dump", "--device", path("player"), "--previews", path("player/p")}).exitCode,
        2);
    EXPECT_FALSE(QFileInfo::exists(path("player/p")));
}

TEST_F(ExportCommand, LeavesTheLastReportUntilThereIsSomethingToSay)
{
    Files::write(path("report"), "before\n");
    EXPECT_EQ(exported({"playlist=Nowhere"}).exitCode, 2);
    EXPECT_EQ(Files::read(path("report")), "before\n");
    EXPECT_EQ(exported({"playlist=Still Empty"}).exitCode, 0);
    EXPECT_EQ(Files::read(path("report")), "");
}

TEST_F(ExportCommand, SaysThatTheReportFoundNoRoom)
{
    PrivateMounts::enter();
    QDir().mkpath(path("small"));
    const auto disk = PrivateMounts::Mount::memory(path("small"), 8192);
    const QString small = path("small/report");
    const ConsoleRun run({"export", "--device", path("player"), "--to", path("out"), "--report",
                          small, "music", "--quiet"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.errors.contains(small));
    EXPECT_TRUE(run.errors.contains("No space left on device"));
    EXPECT_GT(QFileInfo(small).size(), 0); // what fits is there
}

TEST_F(ExportCommand, HasWrittenItsReportWhenItIsKilled)
{
    // Long enough to be killed in, without filling a disk.
    QFile file(deviceFile(5));
    ASSERT_TRUE(file.resize(qint64(4) << 30));
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    process.start(ConsoleRun::program(), command({"music"}));
    QByteArray errors;
    while (!errors.contains("[5/")) {
        ASSERT_TRUE(process.waitForReadyRead(30000));
        errors += process.readAllStandardError();
    }
    process.kill();
    ASSERT_TRUE(process.waitForFinished(30000));
    const std::vector<QJsonObject> items = report();
    ASSERT_GE(items.size(), 5U);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(items[std::size_t(i)]["result"].toString(), "copied");
}

TEST_F(ExportCommand, WritesItsReportIntoAPipe)
{
    QProcess shell;
    shell.start("sh",
                {"-c", "\"$@\" --quiet | wc -l", "sh", ConsoleRun::program(), "export", "--device",
                 path("player"), "--to", path("out"), "--report", "/dev/stdout", "movies"});
    ASSERT_TRUE(shell.waitForFinished(30000));
    EXPECT_EQ(shell.readAllStandardOutput().trimmed(), "6");
    EXPECT_EQ(shell.readAllStandardError(), "");
}

TEST_F(ExportCommand, EndsAtTheNextChunkWhenInterrupted)
{
    // Long enough for the interrupt to arrive, without filling a disk.
    for (const int number : {3, 4, 5}) {
        QFile file(deviceFile(number));
        ASSERT_TRUE(file.resize(qint64(4) << 30));
    }
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    process.start(ConsoleRun::program(), command({"music", "playlists", "photos"}));
    // The first large file is under way once the one before it is done.
    QByteArray errors;
    while (!errors.contains("[3/")) {
        ASSERT_TRUE(process.waitForReadyRead(30000));
        errors += process.readAllStandardError();
    }
    ASSERT_EQ(kill(pid_t(process.processId()), SIGINT), 0);
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 130);
    const std::vector<QJsonObject> items = report();
    // The parts that were not begun are in it as well.
    ASSERT_EQ(items.size(), 169U + 55U + SamplePhotos::PhotoCount);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(items[std::size_t(i)]["result"].toString(), "copied");
    EXPECT_EQ(count(items, "stopped"), int(items.size()) - 3);
    EXPECT_EQ(items[3]["bytes"].toInteger() % (1 << 20), 0);
}

TEST_F(ExportCommand, SaysSoWithoutALibrary)
{
    QDir().mkpath(path("bare/iPod_Control"));
    const ConsoleRun run({"export", "--device", path("bare"), "--to", path("out"), "all"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.errors.contains("no media library"));
}

TEST_F(ExportCommand, WritesNothingToThePlayer)
{
    const auto listing = [this] {
        QStringList all;
        QDirIterator files(path("player"), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QFileInfo info(files.next());
            all.append(info.filePath() + ' ' + QString::number(info.size()) + ' ' +
                       info.lastModified().toString(Qt::ISODateWithMs));
        }
        all.sort();
        return all;
    };
    const QStringList before = listing();
    EXPECT_EQ(exported({"all", "playlists"}).exitCode, 0);
    EXPECT_EQ(listing(), before);
}
