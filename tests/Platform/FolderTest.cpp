#include "Platform/Folder.h"

#include "support/Files.h"
#include "support/NoOpenat2.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <filesystem>

namespace
{
using Kind = Folder::Kind;
using Why = Failure::Kind;

/// Which way of opening below a folder is tried: the kernel's own, or the walk that takes its
/// place where the kernel refuses it with this error.
struct Way {
    const char* name;
    int refusal;
};
void PrintTo(const Way& way, std::ostream* out)
{
    *out << way.name;
}

class FolderTest : public testing::TestWithParam<Way>
{
protected:
    FolderTest()
    {
        Files::write(path("volume/a"), "on the volume");
        Files::write(path("volume/sub/b"), "deeper");
        Files::write(path("outside/key"), "private");
    }

    QString path(const QString& name) const { return _folder.filePath(name); }
    void link(const QString& to, const QString& name) const
    {
        std::filesystem::create_symlink(to.toStdString(), path(name).toStdString());
    }
    /// Runs a test's body in the way that is its parameter.
    void run(const std::function<void(const Folder& volume)>& body) const
    {
        const auto withVolume = [&] {
            const Expected<Folder> volume = Folder::open(path("volume"));
            ASSERT_TRUE(volume);
            body(*volume);
        };
        if (GetParam().refusal == 0)
            withVolume();
        else
            ASSERT_TRUE(withoutOpenat2(GetParam().refusal, withVolume));
    }
    static QByteArray contentOf(const Folder& volume, const QString& name)
    {
        Expected<File> file = volume.openFile(name);
        return file ? file->readAll() : QByteArray();
    }
    /// Why a file below the folder cannot be opened.
    static std::optional<Why> refusal(const Folder& volume, const QString& name)
    {
        const Expected<File> file = volume.openFile(name);
        return file ? std::nullopt : std::optional(file.failure().kind);
    }

    QTemporaryDir _folder;
};

INSTANTIATE_TEST_SUITE_P(, FolderTest,
                         testing::Values(Way{"ByTheKernel", 0},
                                         Way{"ByWalkingOnAnOldKernel", ENOSYS},
                                         Way{"ByWalkingInASandbox", EPERM}),
                         [](const auto& way) { return std::string(way.param.name); });
} // namespace

TEST_P(FolderTest, OpensWhatLiesBelowIt)
{
    run([](const Folder& volume) {
        EXPECT_EQ(contentOf(volume, "a"), "on the volume");
        EXPECT_EQ(contentOf(volume, "sub/b"), "deeper");
        EXPECT_EQ(contentOf(volume, "./sub//./b"), "deeper");
        EXPECT_EQ(contentOf(volume, "sub/../a"), "on the volume");
        EXPECT_EQ(volume.entry("sub")->kind, Kind::Folder);
        EXPECT_EQ(volume.entry("a")->kind, Kind::File);
        EXPECT_EQ(volume.entry("a")->size, 13);
        EXPECT_EQ(volume.entry("")->identity, volume.identity());
    });
}

TEST_P(FolderTest, SaysWhenNothingIsThere)
{
    run([](const Folder& volume) {
        for (const char* name : {"none", "none/a", "a/none", "none/../a", "a/", "a/../a"}) {
            EXPECT_TRUE(volume.entry(name).failedAs(Why::Missing)) << name;
            EXPECT_EQ(refusal(volume, name), Why::Missing) << name;
        }
        EXPECT_TRUE(volume.list("none", Folder::Which::Folders).failedAs(Why::Missing));
        EXPECT_TRUE(volume.list("a", Folder::Which::Folders).failedAs(Why::Missing));
    });
}

TEST_P(FolderTest, FollowsNoLink)
{
    link(path("outside/key"), "volume/absolute");
    link("../outside/key", "volume/climbing");
    link("a", "volume/inside");
    link(path("outside"), "volume/folder");
    link("sub", "volume/subfolder");
    link("nowhere", "volume/broken");
    link("loop", "volume/loop");
    link("/proc/self/fd/0", "volume/magic");
    run([](const Folder& volume) {
        for (const char* name :
             {"absolute", "climbing", "inside", "folder/key", "folder/../a", "subfolder/b",
              "subfolder/../a", "broken", "loop", "loop/x", "magic"})
            EXPECT_EQ(refusal(volume, name), Why::Refused) << name;
        for (const char* name : {"absolute", "inside", "folder", "broken", "loop", "magic"})
            EXPECT_EQ(volume.entry(name)->kind, Kind::Link) << name;
        EXPECT_TRUE(volume.entry("folder/key").failedAs(Why::Refused));
        for (const char* name : {"folder", "subfolder"}) {
            EXPECT_FALSE(volume.list(name, Folder::Which::NoFolders)) << name;
            EXPECT_FALSE(volume.makeFolder(name)) << name;
        }
    });
}

TEST_P(FolderTest, IsNeverLeft)
{
    run([this](const Folder& volume) {
        const QStringList names = {"..", "../outside/key", "sub/../../outside/key", "sub/../..",
                                   "/" + path("outside/key")};
        for (const QString& name : names)
            EXPECT_FALSE(volume.openFile(name)) << qPrintable(name);
        EXPECT_TRUE(volume.entry("../outside/key").failedAs(Why::Refused));
        EXPECT_TRUE(volume.entry("sub/../../outside").failedAs(Why::Refused));
    });
}

TEST_P(FolderTest, OpensNoPipeAndNoSocket)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(path("volume/pipe")).constData(), 0600), 0);
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(path("volume/socket")).constData(),
             sizeof address.sun_path);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    run([](const Folder& volume) {
        for (const char* name : {"pipe", "socket", "sub"})
            EXPECT_EQ(refusal(volume, name), Why::Refused) << name;
        EXPECT_EQ(volume.entry("pipe")->kind, Kind::Other);
        EXPECT_EQ(volume.entry("socket")->kind, Kind::Other);
    });
    close(listener);
}

TEST_P(FolderTest, ListsLinksAmongWhatIsNoFolder)
{
    link(path("outside"), "volume/folder");
    link("nowhere", "volume/broken");
    run([](const Folder& volume) {
        QStringList files = *volume.list("", Folder::Which::NoFolders);
        files.sort();
        EXPECT_EQ(files, QStringList({"a", "broken", "folder"}));
        EXPECT_EQ(*volume.list("", Folder::Which::Folders), QStringList("sub"));
        EXPECT_EQ(*volume.list("sub", Folder::Which::NoFolders), QStringList("b"));
    });
}

TEST_P(FolderTest, LeavesTheTimeOfAccessAlone)
{
    const QByteArray file = QFile::encodeName(path("volume/a"));
    const timespec longAgo[2] = {{1000, 0}, {2000, 0}}; // an access before the change is renewed
    ASSERT_EQ(utimensat(AT_FDCWD, file.constData(), longAgo, 0), 0);
    run([](const Folder& volume) { EXPECT_EQ(contentOf(volume, "a"), "on the volume"); });
    struct stat status = {};
    ASSERT_EQ(stat(file.constData(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 1000);
}

TEST_P(FolderTest, MakesFoldersAndLeavesThoseThatAreThere)
{
    run([this](const Folder& volume) {
        const Expected<Folder> made = volume.makeFolder("new");
        ASSERT_TRUE(made);
        EXPECT_TRUE(made->makeFolder("deeper"));
        EXPECT_TRUE(QFileInfo(path("volume/new/deeper")).isDir());
        EXPECT_EQ(volume.makeFolder("new")->identity(), made->identity());
        EXPECT_FALSE(volume.makeFolder("a"));
        EXPECT_FALSE(volume.makeFolder(".."));
        EXPECT_EQ(made->parent()->identity(), volume.identity());
    });
}

TEST_P(FolderTest, StaysTheSameWhenItsNameGoesToAnother)
{
    run([this](const Folder& volume) {
        ASSERT_TRUE(QFile::rename(path("volume"), path("moved")));
        link(path("outside"), "volume");
        Files::write(volume.pathTo("written"), "here");
        EXPECT_TRUE(QFileInfo::exists(path("moved/written")));
        EXPECT_FALSE(QFileInfo::exists(path("outside/written")));
        EXPECT_EQ(contentOf(volume, "a"), "on the volume");
    });
}

TEST_P(FolderTest, RemovesLinksAndNotWhatTheyLeadTo)
{
    link(path("outside"), "volume/folder");
    link(path("outside"), "volume/sub/folder");
    run([this](const Folder& volume) {
        EXPECT_TRUE(volume.remove("folder"));
        EXPECT_TRUE(volume.remove("sub"));
        EXPECT_TRUE(volume.remove("none"));
        EXPECT_FALSE(QFileInfo::exists(path("volume/sub")));
        EXPECT_EQ(Files::read(path("outside/key")), "private");
    });
}

TEST_P(FolderTest, TakesNoNameWithAZero)
{
    run([this](const Folder& volume) {
        const QString name = QString("a") + QChar(QChar::Null) + ".mp3";
        EXPECT_EQ(refusal(volume, name), Why::Refused);
        EXPECT_FALSE(volume.entry(name));
        EXPECT_FALSE(volume.makeFolder(QString("n") + QChar(QChar::Null)));
        EXPECT_FALSE(QFileInfo::exists(path("volume/n")));
    });
}
