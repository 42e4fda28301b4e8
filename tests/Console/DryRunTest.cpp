#include "support/ConsoleRun.h"
#include "support/PrivateMounts.h"
#include "support/SamplePhotos.h"
#include "support/SamplePlayer.h"

#include <QDirIterator>

#include <gtest/gtest.h>

namespace
{
class DryRun : public testing::Test
{
protected:
    DryRun() { EXPECT_EQ(SamplePlayer::write(path("player")), ""); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    ConsoleRun run(const QStringList& what) const
    {
        return ConsoleRun(
            QStringList({"export", "--device", path("player"), "--to", path("out"), "--quiet"}) +
            what);
    }
    ConsoleRun planned(const QStringList& what) const
    {
        return run(what + QStringList("--dry-run"));
    }
    static std::vector<QJsonObject> lines(const ConsoleRun& run)
    {
        std::vector<QJsonObject> items;
        for (const QByteArray& line : run.output.split('\n')) {
            if (!line.isEmpty())
                items.push_back(QJsonDocument::fromJson(line).object());
        }
        return items;
    }
    /// All that the run could have written, outside of the player.
    QStringList written() const
    {
        QStringList all;
        for (const QString& root : {path("."), QDir::homePath()}) {
            QDirIterator entries(root, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                 QDirIterator::Subdirectories);
            while (entries.hasNext())
                all.append(entries.next());
        }
        all.sort();
        return all;
    }
    static QStringList destinations(const std::vector<QJsonObject>& items)
    {
        QStringList all;
        for (const QJsonObject& item : items)
            all.append(item["to"].toString());
        return all;
    }

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(DryRun, SaysWhatTheExportThenDoes)
{
    const ConsoleRun plan = planned({"all", "playlists"});
    EXPECT_EQ(plan.exitCode, 0) << plan.errors.toStdString();
    const std::vector<QJsonObject> items = lines(plan);
    ASSERT_EQ(items.size(), SamplePlayer::library().tracks.size() + SamplePhotos::PhotoCount + 55U);
    for (const QJsonObject& item : items)
        EXPECT_EQ(item["result"].toString(), "planned");
    EXPECT_EQ(run({"all", "playlists", "--report", path("report")}).exitCode, 0);
    const std::vector<QJsonObject> copied = readReport(path("report"));
    EXPECT_EQ(destinations(copied), destinations(items));
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i]["title"], copied[i]["title"]);
        if (!items[i]["from"].toString().endsWith(".ithmb")) { // which is stored anew
            EXPECT_EQ(items[i]["bytes"], copied[i]["bytes"]);
        }
    }
}

TEST_F(DryRun, WritesNothing)
{
    // What looking at a player leaves: the program's own folders, copies for diagnosis.
    EXPECT_EQ(ConsoleRun({"list", "--device", path("player")}).exitCode, 0);
    const QStringList there = written();
    EXPECT_EQ(planned({"everything", "--report", path("report")}).exitCode, 0);
    EXPECT_EQ(written(), there);
}

TEST_F(DryRun, AppliesTheRulesToWhatIsThere)
{
    EXPECT_EQ(run({"movies", "--report", path("report")}).exitCode, 0);
    const QStringList first = destinations(readReport(path("report")));

    const std::vector<QJsonObject> skipped = lines(planned({"movies", "--clash", "skip"}));
    ASSERT_EQ(skipped.size(), 6U);
    for (const QJsonObject& item : skipped)
        EXPECT_EQ(item["result"].toString(), "skipped");

    QStringList numbered = first;
    numbered.replaceInStrings(".mov", "1.mov");
    const std::vector<QJsonObject> both = lines(planned({"movies", "--clash", "number"}));
    EXPECT_EQ(destinations(both), numbered);
    EXPECT_EQ(both[0]["result"].toString(), "planned");

    EXPECT_EQ(destinations(lines(planned({"movies", "--clash", "overwrite"}))), first);
}

TEST_F(DryRun, AppliesTheRulesToWhatItWouldHaveWrittenItself)
{
    for (const char* rule : {"number", "skip", "overwrite"}) {
        const std::vector<QJsonObject> items =
            lines(planned({"movies", "movies", "--clash", rule}));
        ASSERT_EQ(items.size(), 12U);
        EXPECT_EQ(run({"movies", "movies", "--clash", rule, "--report", path("report")}).exitCode,
                  0);
        EXPECT_EQ(destinations(readReport(path("report"))), destinations(items)) << rule;
        QDir(path("out")).removeRecursively();
    }
}

TEST_F(DryRun, SaysWhatCouldNotBeCopied)
{
    const QString file =
        path("player") + SamplePlayer::library().tracks[0].location.replace(u':', u'/');
    ASSERT_TRUE(QFile::remove(file));
    const ConsoleRun plan = planned({"music"});
    EXPECT_EQ(plan.exitCode, 1);
    EXPECT_EQ(lines(plan)[0]["result"].toString(), "missing");
    EXPECT_EQ(lines(plan)[1]["result"].toString(), "planned");
}

TEST_F(DryRun, RefusesADestinationOnThePlayerItself)
{
    const ConsoleRun plan({"export", "--device", path("player"), "--to", path("player/out"),
                           "movies", "--dry-run", "--quiet"});
    EXPECT_EQ(plan.exitCode, 1);
    ASSERT_EQ(lines(plan).size(), 6U);
    EXPECT_EQ(lines(plan)[0]["result"].toString(), "failed");
    EXPECT_FALSE(QFileInfo::exists(path("player/out")));
}
