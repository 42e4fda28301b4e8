#include "Export/ExportSummary.h"

#include "Export/ExportReport.h"

#include <gtest/gtest.h>

namespace
{
using Result = ExportItem::Result;

class ExportSummaryTest : public testing::Test
{
protected:
    void add(Result result, const QString& to, const QString& why = {})
    {
        ExportItem item;
        item.result = result;
        item.to = to;
        item.why = why;
        report.add(item);
    }
    [[nodiscard]] ExportSummary summary() const { return ExportSummary(report); }

    ExportReport report;
};
} // namespace

TEST_F(ExportSummaryTest, CountsWhatBecameOfTheItems)
{
    add(Result::Copied, "/out/a");
    add(Result::Copied, "/out/b");
    add(Result::Skipped, "/out/c", "there");
    for (const Result result :
         {Result::Missing, Result::Incomplete, Result::Failed, Result::Stopped})
        add(result, "/out/d", "why");
    EXPECT_EQ(summary().copied(), 2);
    EXPECT_EQ(summary().skipped(), 1);
    EXPECT_EQ(summary().notCopied(), 4);
    EXPECT_EQ(summary().total(), 7);
}

TEST_F(ExportSummaryTest, GroupsTheReasonsWithTheMostFrequentFirst)
{
    add(Result::Failed, {}, "No space left on device");
    for (int i = 0; i < 3; ++i)
        add(Result::Missing, {}, "No such file");
    add(Result::Failed, {}, "No space left on device");
    const auto groups = summary().groups();
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].why, "No such file");
    EXPECT_EQ(groups[0].count, 3);
    EXPECT_EQ(groups[1].count, 2);
}

TEST_F(ExportSummaryTest, FindsTheFolderOfAllThatWasCopied)
{
    EXPECT_TRUE(summary().folder().isNull());
    add(Result::Failed, "/home/elsewhere/x", "why");
    EXPECT_TRUE(summary().folder().isNull());
    add(Result::Copied, "/home/out/Music/A/1.mp3");
    EXPECT_EQ(summary().folder(), "/home/out/Music/A");
    add(Result::Copied, "/home/out/Music/A/2.mp3");
    EXPECT_EQ(summary().folder(), "/home/out/Music/A");
    add(Result::Copied, "/home/out/Music/AB/3.mp3");
    EXPECT_EQ(summary().folder(), "/home/out/Music");
    add(Result::Copied, "/home/out/Photos/4.jpg");
    EXPECT_EQ(summary().folder(), "/home/out");
    add(Result::Copied, "/disk/5.jpg");
    EXPECT_TRUE(summary().folder().isNull()) << "there is no one folder to open";
    add(Result::Copied, "/home/out/Photos/6.jpg");
    EXPECT_TRUE(summary().folder().isNull());
}

TEST_F(ExportSummaryTest, NamesFiveReasonsAndCountsTheOthers)
{
    for (int i = 0; i < 9; ++i)
        add(Result::Failed, {}, QString("reason %1").arg(i));
    EXPECT_EQ(summary().lines().filter("reason").size(), 6);
    EXPECT_TRUE(summary().lines().last().contains("4"));
}

TEST_F(ExportSummaryTest, CutsAReasonThatIsLongerThanAnybodyReads)
{
    add(Result::Failed, {}, QString(1'000'000, u'x'));
    EXPECT_LT(summary().lines().join('\n').size(), 1000);
}

TEST_F(ExportSummaryTest, SpeaksOfTheMusicApplicationApart)
{
    add(Result::Copied, "/out/a");
    ExportItem item;
    item.kind = ExportItem::Kind::HandOver;
    item.result = Result::Failed;
    item.why = "no answer";
    report.add(item);
    EXPECT_EQ(summary().notCopied(), 0);
    EXPECT_TRUE(summary().groups().empty());
    EXPECT_TRUE(summary().lines().last().contains("music application"));
}
