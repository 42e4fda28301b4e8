#include "Platform/Workspace.h"

#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/PrivateMounts.h"

#include <gtest/gtest.h>

namespace
{
using PrivateMounts::Mount;

/// A workspace that writes down what it hears, "+path" and "-path".
class WorkspaceTest : public testing::Test
{
protected:
    WorkspaceTest() { PrivateMounts::enter(); }
    ~WorkspaceTest() override { Workspace::shared().stopObservingVolumes(); }

    void observe()
    {
        Workspace::shared().observeVolumes([this](const QString& p) { heard.append("+" + p); },
                                           [this](const QString& p) { heard.append("-" + p); });
    }

    bool hears(const QStringList& expected)
    {
        return waitUntil([&] { return heard == expected; });
    }

    QString path(const char* name)
    {
        const QString folder = _folder.filePath(QString::fromUtf8(name));
        QDir().mkpath(folder);
        return folder;
    }

    QStringList heard;

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(WorkspaceTest, ListsMountedVolumes)
{
    const QString volume = path("volume");
    EXPECT_FALSE(Workspace::shared().mountedLocalVolumePaths().contains(volume));
    const auto mount = Mount::memory(volume, 1 << 20);
    EXPECT_TRUE(Workspace::shared().mountedLocalVolumePaths().contains(volume));
}

TEST_F(WorkspaceTest, HearsOfMountsAndUnmounts)
{
    observe();
    const QString volume = path("a volume with спб");
    const auto mount = Mount::bind(path("folder"), volume);
    EXPECT_TRUE(hears({"+" + volume})) << heard.join(' ').toStdString();
    mount->unmount();
    EXPECT_TRUE(hears({"+" + volume, "-" + volume})) << heard.join(' ').toStdString();
}

TEST_F(WorkspaceTest, HearsOfAFileSystemImage)
{
    observe();
    const QString volume = path("volume");
    const QString folder = path("folder");
    Files::write(folder + "/hello", "hello");
    std::unique_ptr<Mount> mount;
    if (PrivateMounts::canMountImages()) {
        PrivateMounts::makeImage(path(".") + "/image", folder, 4);
        mount = Mount::image(path(".") + "/image", volume);
    } else {
        mount = Mount::bind(folder, volume);
    }
    EXPECT_TRUE(hears({"+" + volume})) << heard.join(' ').toStdString();
    EXPECT_EQ(Files::read(volume + "/hello"), "hello");
    mount->unmount();
    EXPECT_TRUE(hears({"+" + volume, "-" + volume})) << heard.join(' ').toStdString();
}

TEST_F(WorkspaceTest, HearsOfWhatChangedBetweenListingAndObserving)
{
    (void)Workspace::shared().mountedLocalVolumePaths();
    const QString volume = path("volume");
    const auto mount = Mount::memory(volume, 1 << 20);
    observe();
    EXPECT_TRUE(hears({"+" + volume})) << heard.join(' ').toStdString();
}

TEST_F(WorkspaceTest, LosesNothingInABurst)
{
    observe();
    std::vector<std::unique_ptr<Mount>> mounts;
    QStringList expected;
    for (int i = 0; i < 20; ++i) {
        const QString volume = path(("volume" + std::to_string(i)).c_str());
        mounts.push_back(Mount::memory(volume, 1 << 20));
        expected.append("+" + volume);
    }
    EXPECT_TRUE(hears(expected)) << heard.join(' ').toStdString();
}

TEST_F(WorkspaceTest, TellsARemountAsGoneAndCome)
{
    const QString volume = path("volume");
    const auto mount = Mount::bind(path("one player"), volume);
    (void)Workspace::shared().mountedLocalVolumePaths();
    observe();
    mount->unmount();
    const auto anew = Mount::bind(path("another player"), volume);
    EXPECT_TRUE(hears({"-" + volume, "+" + volume})) << heard.join(' ').toStdString();
}

TEST_F(WorkspaceTest, IgnoresWhatIsNoLocalVolume)
{
    observe();
    const auto terminals = Mount::terminals(path("terminals"));
    const QString volume = path("volume");
    const auto mount = Mount::memory(volume, 1 << 20);
    EXPECT_TRUE(hears({"+" + volume})) << heard.join(' ').toStdString();
}

TEST_F(WorkspaceTest, SaysNothingAfterObservingEnds)
{
    observe();
    Workspace::shared().stopObservingVolumes();
    const auto unheard = Mount::memory(path("unheard"), 1 << 20);
    // The next to observe hears of the other mount, and by then the first would have been told.
    QStringList others;
    (void)Workspace::shared().mountedLocalVolumePaths();
    Workspace::shared().observeVolumes([&](const QString& p) { others.append(p); },
                                       [](const QString&) {});
    const auto mount = Mount::memory(path("heard"), 1 << 20);
    EXPECT_TRUE(waitUntil([&] { return !others.isEmpty(); }));
    EXPECT_EQ(others, QStringList(path("heard")));
    EXPECT_TRUE(heard.isEmpty());
    Workspace::shared().stopObservingVolumes();
}

TEST_F(WorkspaceTest, LetsAHandlerEndTheObserving)
{
    int calls = 0;
    Workspace::shared().observeVolumes(
        [&](const QString&) {
            ++calls;
            Workspace::shared().stopObservingVolumes();
        },
        [](const QString&) {});
    const auto mount = Mount::memory(path("volume"), 1 << 20);
    EXPECT_TRUE(waitUntil([&] { return calls == 1; }));
}
