#include "support/ConsoleRun.h"
#include "support/PrivateMounts.h"
#include "support/SamplePlayer.h"

#include <gtest/gtest.h>

namespace
{
/// Players mounted where only this test and the programs it starts see them.
class DeviceChoice : public testing::Test
{
protected:
    DeviceChoice()
    {
        PrivateMounts::enter();
        EXPECT_EQ(SamplePlayer::write(path("player")), "");
    }

    QString path(const QString& name) const { return _folder.filePath(name); }
    std::unique_ptr<PrivateMounts::Mount> mount(const QString& name) const
    {
        return PrivateMounts::Mount::bind(path("player"), path(name));
    }

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(DeviceChoice, IsAnErrorWithoutADevice)
{
    const ConsoleRun run({"list"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, "No device is connected.\n");
    EXPECT_EQ(ConsoleRun({"devices"}).exitCode, 0);
    EXPECT_EQ(ConsoleRun({"devices", "--json"}).output.trimmed(), "[\n]");
}

TEST_F(DeviceChoice, TakesTheOnlyDevice)
{
    const auto mounted = mount("one");
    EXPECT_EQ(ConsoleRun({"list"}).exitCode, 0);
    const ConsoleRun run({"devices", "--wait", "0"});
    EXPECT_EQ(run.text(), path("one") + "\tMira's Player\n");
}

TEST_F(DeviceChoice, IsAnErrorBetweenSeveral)
{
    const auto first = mount("one");
    const auto second = mount("two");
    const ConsoleRun run({"list"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.errors.contains(path("one")));
    EXPECT_TRUE(run.errors.contains(path("two")));
    EXPECT_EQ(ConsoleRun({"list", "--device", path("two")}).exitCode, 0);
    const QJsonDocument json = QJsonDocument::fromJson(ConsoleRun({"devices", "--json"}).output);
    EXPECT_EQ(json.array().size(), 2);
    EXPECT_EQ(json.array()[0].toObject()["key"].toString(), path("one"));
}

TEST_F(DeviceChoice, IsAnErrorForAFolderThatHoldsNoPlayer)
{
    QDir().mkpath(path("plain"));
    const ConsoleRun run({"dump", "--device", path("plain")});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.errors.contains(path("plain")));
}

TEST_F(DeviceChoice, TakesAFolderByARelativePath)
{
    QDir::setCurrent(path("."));
    const ConsoleRun run({"dump", "--device", "player/"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.json()["device"].toObject()["prefix"].toString(), path("player"));
}
