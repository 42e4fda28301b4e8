// What the console says of libraries that cannot be read whole.

#include "support/ConsoleRun.h"
#include "support/SamplePlayer.h"

#include <gtest/gtest.h>

namespace
{
const QString Library = "player/iPod_Control/iTunes/iTunesDB";
const QString Photos = "player/Photos/Photo Database";

class ConsoleProblems : public testing::Test
{
protected:
    ConsoleProblems() { EXPECT_EQ(SamplePlayer::write(path("player")), ""); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    ConsoleRun run(const QStringList& arguments) const
    {
        return ConsoleRun(arguments + QStringList({"--device", path("player")}));
    }
    void cut(const QString& file) const
    {
        const QByteArray whole = Files::read(path(file));
        Files::write(path(file), whole.first(whole.size() / 3));
    }
    static int problems(const ConsoleRun& run)
    {
        int lines = 0;
        for (const QString& line : run.errors.split('\n'))
            lines += line.startsWith("problem: ") ? 1 : 0;
        return lines;
    }

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(ConsoleProblems, AreNoneOfADeviceThatIsWhole)
{
    for (const QStringList& command : {QStringList("list"), QStringList({"list", "music"})}) {
        const ConsoleRun whole = run(command);
        EXPECT_EQ(whole.exitCode, 0);
        EXPECT_EQ(whole.errors, "");
    }
    EXPECT_EQ(run({"dump"}).json()["problems"], QJsonArray());
}

TEST_F(ConsoleProblems, OfACutLibraryAreSaidByList)
{
    cut(Library);
    const ConsoleRun all = run({"list"});
    EXPECT_EQ(all.exitCode, 1);
    EXPECT_GE(problems(all), 1) << all.errors.toStdString();
    EXPECT_TRUE(all.text().contains("music")); // what could be read is there
    const ConsoleRun music = run({"list", "music"});
    EXPECT_EQ(music.exitCode, 1);
    EXPECT_GE(problems(music), 1);
}

TEST_F(ConsoleProblems, OfAnotherReaderDoNotMatter)
{
    cut(Library);
    const ConsoleRun photos = run({"list", "photos"});
    EXPECT_EQ(photos.exitCode, 0) << photos.errors.toStdString();
    EXPECT_EQ(problems(photos), 0);
    EXPECT_EQ(run({"export", "photos", "--to", path("out"), "--quiet"}).exitCode, 0);
}

TEST_F(ConsoleProblems, OfPhotosAreSaidOfPhotos)
{
    cut(Photos);
    EXPECT_EQ(run({"list", "photos"}).exitCode, 1);
    EXPECT_EQ(run({"list"}).exitCode, 1);
    EXPECT_EQ(run({"list", "music"}).exitCode, 0);
    EXPECT_EQ(run({"export", "movies", "--to", path("out"), "--quiet"}).exitCode, 0);
}

TEST_F(ConsoleProblems, AreSaidByExportWhateverIsCopied)
{
    cut(Library);
    const ConsoleRun exported =
        run({"export", "music", "--to", path("out"), "--report", path("report")});
    EXPECT_EQ(exported.exitCode, 1);
    // Before the first item, and counted in the sum.
    EXPECT_TRUE(exported.errors.startsWith("problem: ")) << exported.errors.toStdString();
    EXPECT_TRUE(exported.errors.contains("problem(s) with") ||
                exported.errors.contains(" problem with") ||
                exported.errors.contains(" problems with"));
    for (const QJsonObject& item : readReport(path("report")))
        EXPECT_EQ(item["result"].toString(), "copied");
    EXPECT_FALSE(readReport(path("report")).empty());
}

TEST_F(ConsoleProblems, AreSaidByExportThatIsQuiet)
{
    Files::write(path(Library), "");
    const ConsoleRun exported = run({"export", "all", "--to", path("out"), "--quiet"});
    EXPECT_EQ(exported.exitCode, 1);
    EXPECT_GE(problems(exported), 1) << exported.errors.toStdString();
}

TEST_F(ConsoleProblems, StandInTheDocumentOfDump)
{
    cut(Library);
    cut(Photos);
    const ConsoleRun dump = run({"dump"});
    EXPECT_EQ(dump.exitCode, 0);
    const QJsonArray list = dump.json()["problems"].toArray();
    QStringList readers;
    for (const QJsonValue& one : list) {
        const QJsonObject problem = one.toObject();
        readers.append(problem["reader"].toString());
        EXPECT_EQ(problem.keys(), QStringList({"exact", "kind", "reader", "words"}));
        EXPECT_EQ(problem["kind"].toString(), "damaged");
        EXPECT_FALSE(problem["words"].toString().isEmpty());
        EXPECT_TRUE(problem["exact"].isNull() || problem["exact"].isString());
    }
    EXPECT_TRUE(readers.contains("trackDb"));
    EXPECT_TRUE(readers.contains("photoDb"));
}
