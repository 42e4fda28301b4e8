#include "Export/ExportParts.h"

#include "Device/Photo.h"
#include "support/PlayerFixture.h"

namespace
{
class ExportPartsTest : public PlayerFixture
{
protected:
    ExportPartsTest()
    {
        for (int i = 0; i < 4; ++i)
            add(QString("Track %1").arg(i), QByteArray("content ") + QByteArray::number(i));
        photo.photoId = 7;
        photo.fullSizeFile = path("player/Photos/7.jpg");
        Files::write(photo.fullSizeFile, "picture");
    }

    /// Two tracks, then two more, then a photo.
    std::vector<SectionItems> parts()
    {
        const std::vector<Track*> all = connect().trackDb()->tracks();
        return {{{all[0], all[1]}, {}, {}}, {}, {{all[2], all[3]}, {}, {}}, {{}, {}, {&photo}}};
    }
    void run() { run(parts()); }
    void run(const std::vector<SectionItems>& parts)
    {
        ExportParts(device, config, host, report, host.toStop).run(parts);
    }

    Photo photo;
};
} // namespace

TEST_F(ExportPartsTest, AreOneJobWithOneReport)
{
    run();
    EXPECT_EQ(host.exportModeQuestions, 1);
    EXPECT_EQ(host.told, QStringList({"begin 5", "Export Track 0... at 0", "Export Track 1... at 1",
                                      "Export Track 2... at 2", "Export Track 3... at 3",
                                      "Export 7... at 4", "finished!"}));
    EXPECT_EQ(results(), QStringList({"copied", "copied", "copied", "copied", "copied"}));
    EXPECT_EQ(host.parts, std::vector<int>({0, 2, 4, 0})) << "so that chunks count on";
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Track 3.mp3")), "content 3");
}

TEST_F(ExportPartsTest, AStopListsTheItemsOfEveryPart)
{
    host.onItem = [this](int item) { host.toStop = item == 1; };
    run();
    EXPECT_EQ(results(), QStringList({"copied", "stopped", "stopped", "stopped", "stopped"}));
    EXPECT_EQ(host.told.last(), "canceled!");
    EXPECT_EQ(host.told.filter("canceled").size(), 1);
}

TEST_F(ExportPartsTest, AQuestionThatIsGivenUpEndsEveryPart)
{
    config.setCopyRule(AskRule);
    Files::write(out("Music/Artist/Album/Track 0.mp3"), "old");
    host.clashAnswer = std::nullopt;
    run();
    EXPECT_EQ(results(), QStringList({"stopped", "stopped", "stopped", "stopped", "stopped"}));
    EXPECT_EQ(host.asked.size(), 1);
    EXPECT_EQ(host.told.last(), "canceled!");
}

TEST_F(ExportPartsTest, WithoutAnExportModeNothingStarts)
{
    host.handsOver = std::nullopt;
    run();
    EXPECT_EQ(host.exportModeQuestions, 1);
    EXPECT_TRUE(host.told.isEmpty());
    EXPECT_TRUE(report.items().empty());
}

TEST_F(ExportPartsTest, PhotosAloneAreNoMatterOfTheMusicApplication)
{
    connect();
    run({{{}, {}, {&photo}}});
    EXPECT_EQ(host.exportModeQuestions, 0);
    EXPECT_EQ(results(), QStringList("copied"));
}

TEST_F(ExportPartsTest, NothingAtAllIsNoJob)
{
    connect();
    run({{}, {}});
    EXPECT_TRUE(host.told.isEmpty());
    EXPECT_EQ(host.exportModeQuestions, 0);
}
