#include "Export/ExportReport.h"

#include "Base/Utility.h"
#include "support/Files.h"
#include "support/PrivateMounts.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace
{
using Result = ExportItem::Result;

ExportItem item(const QString& title, Result result, const QString& why = {})
{
    ExportItem item;
    item.title = title;
    item.from = "/device/a.mp3";
    item.to = "/home/a.mp3";
    item.bytes = 5000000000;
    item.result = result;
    item.why = why;
    return item;
}
} // namespace

TEST(ExportReportTest, WritesAnItemAsOneLineOfJson)
{
    const QByteArray line = item(QString::fromUtf8("Ёл\nка"), Result::Failed, "Why").toJson();
    EXPECT_FALSE(line.contains('\n'));
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    EXPECT_EQ(object.keys(),
              QStringList({"bytes", "from", "kind", "result", "title", "to", "why"}));
    EXPECT_EQ(object["kind"].toString(), "track");
    EXPECT_EQ(object["title"].toString(), QString::fromUtf8("Ёл\nка"));
    EXPECT_EQ(object["bytes"].toInteger(), 5000000000);
    EXPECT_EQ(object["result"].toString(), "failed");
    EXPECT_TRUE(line.contains("\"bytes\":5000000000"));
}

TEST(ExportReportTest, WritesNullForWhatIsNotThere)
{
    ExportItem empty;
    empty.kind = ExportItem::Kind::Photo;
    const QJsonObject object = QJsonDocument::fromJson(empty.toJson()).object();
    for (const char* key : {"title", "from", "to", "why"})
        EXPECT_TRUE(object[QLatin1String(key)].isNull()) << key;
    EXPECT_EQ(object["kind"].toString(), "photo");
}

TEST(ExportReportTest, CountsWhatWasNotCopied)
{
    ExportReport report;
    for (const Result result : {Result::Copied, Result::Skipped, Result::Missing,
                                Result::Incomplete, Result::Failed, Result::Stopped})
        report.add(item("x", result));
    EXPECT_EQ(report.failureCount(), 3U);
    EXPECT_EQ(report.items().size(), 6U);
}

TEST(ExportReportTest, LeavesALogThatGrowsWithTheExport)
{
    ExportReport report;
    EXPECT_EQ(report.logPath(), Utility::logFolder() + "/export.log");
    report.add(item("One", Result::Copied));
    EXPECT_EQ(Files::read(report.logPath()).count('\n'), 1);
    report.add(item("Two", Result::Copied));
    EXPECT_EQ(Files::read(report.logPath()).count('\n'), 2);
    const QTemporaryDir folder;
    EXPECT_EQ(report.writeTo(folder.filePath("report")), "");
    EXPECT_EQ(Files::read(folder.filePath("report")), Files::read(report.logPath()));
}

TEST(ExportReportTest, LeavesTheLastLogUntilTheFirstItem)
{
    ExportReport last;
    last.add(item("One", Result::Copied));
    last.add(item("Two", Result::Copied));
    ExportReport next;
    EXPECT_EQ(Files::read(next.logPath()).count('\n'), 2);
    next.add(item("Three", Result::Copied));
    EXPECT_EQ(Files::read(next.logPath()).count('\n'), 1);
}

TEST(ExportReportTest, SaysWhyItCannotBeWritten)
{
    const QTemporaryDir folder;
    EXPECT_NE(ExportReport().writeTo(folder.filePath("no/folder/report")), "");
}

namespace
{
/// A disk in memory with room for a file, but not for much in it.
class SmallDisk : public testing::Test
{
protected:
    SmallDisk()
    {
        PrivateMounts::enter();
        _disk = PrivateMounts::Mount::memory(_folder.filePath("disk"), 8192);
    }

    QString path() const { return _folder.filePath("disk/report"); }
    static void fill(ExportReport& report)
    {
        for (int i = 0; i < 1000; ++i)
            report.add(item(QString("Item %1").arg(i), Result::Copied));
    }

private:
    QTemporaryDir _folder;
    std::unique_ptr<PrivateMounts::Mount> _disk;
};
} // namespace

TEST_F(SmallDisk, IsSaidToBeFullByAReportThatIsSaved)
{
    ExportReport report;
    fill(report);
    EXPECT_TRUE(report.writeTo(path()).contains("No space left on device"));
    EXPECT_FALSE(QFileInfo::exists(path())); // rather than a part of it, or nothing
}

TEST_F(SmallDisk, IsSaidToBeFullByAReportThatIsFollowed)
{
    ExportReport report;
    ASSERT_TRUE(report.follow(path()));
    fill(report);
    const Status end = report.endFollowing();
    ASSERT_FALSE(end);
    EXPECT_EQ(end.failure().kind, Failure::Kind::Unwritable);
    EXPECT_EQ(end.failure().exact, "No space left on device");
    EXPECT_TRUE(Files::read(path()).startsWith(item("Item 0", Result::Copied).toJson() + '\n'));
}

TEST_F(SmallDisk, HoldsAReportThatFits)
{
    ExportReport report;
    ASSERT_TRUE(report.follow(path()));
    report.add(item("One", Result::Copied));
    EXPECT_EQ(Files::read(path()), report.items()[0].toJson() + '\n'); // at once
    report.add(item("Two", Result::Failed));
    EXPECT_TRUE(report.endFollowing());
    EXPECT_EQ(report.writeTo(path() + '2'), "");
    EXPECT_EQ(Files::read(path()), Files::read(path() + '2'));
}

TEST(ExportReportTest, LeavesAFollowedFileUntilTheFirstItemOrTheEnd)
{
    const QTemporaryDir folder;
    Files::write(folder.filePath("report"), "before, and longer than any line of the new one");
    ExportReport report;
    ASSERT_TRUE(report.follow(folder.filePath("report")));
    EXPECT_TRUE(Files::read(folder.filePath("report")).startsWith("before"));
    EXPECT_TRUE(report.endFollowing());
    EXPECT_EQ(Files::read(folder.filePath("report")), "");
}

TEST(ExportReportTest, SaysWhyItCannotFollow)
{
    const QTemporaryDir folder;
    ExportReport report;
    const Status status = report.follow(folder.filePath("no/folder/report"));
    ASSERT_FALSE(status);
    EXPECT_EQ(status.failure().exact, "No such file or directory");
    report.add(item("One", Result::Copied)); // goes on without
    EXPECT_TRUE(report.endFollowing());
}
