#include "Device/iPod/iPodDevice.h"

#include "support/Files.h"
#include "support/PrivateMounts.h"
#include "support/RecordingDelegate.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>

namespace
{
using End = CopyResult::End;
constexpr qsizetype Chunk = 1024 * 1024;

class iPodDeviceTest : public testing::Test
{
protected:
    iPodDeviceTest() { QDir().mkpath(path("player/iPod_Control")); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    QString onDevice(const QString& name) const { return path("player/" + name); }

    QTemporaryDir _folder;
    iPodDevice device{_folder.filePath("player")};
};

using CopyOut = iPodDeviceTest;
} // namespace

TEST_F(iPodDeviceTest, IsToldByItsControlFolderAlone)
{
    QDir().mkpath(path("a/iPod_Control"));
    Files::write(path("b/iTunes_Control"), "any kind of object will do");
    QDir().mkpath(path("c"));
    EXPECT_TRUE(iPodDevice::isiPodAtPrefix(path("a")));
    EXPECT_TRUE(iPodDevice::isiPodAtPrefix(path("b")));
    EXPECT_FALSE(iPodDevice::isiPodAtPrefix(path("c")));
    EXPECT_FALSE(iPodDevice::isiPodAtPrefix(path("none")));
}

TEST_F(iPodDeviceTest, PrefersOneOfTwoControlFolders)
{
    QDir().mkpath(path("both/iPod_Control"));
    QDir().mkpath(path("both/iTunes_Control"));
    EXPECT_EQ(iPodDevice(path("both")).controlPath(), path("both/iPod_Control"));
    QDir().mkpath(path("phone/iTunes_Control"));
    EXPECT_EQ(iPodDevice(path("phone")).controlPath(), path("phone/iTunes_Control"));
    EXPECT_EQ(iPodDevice(path("none")).controlPath(), path("none/iTunes_Control"));
}

TEST_F(iPodDeviceTest, IsKnownByItsMountPath)
{
    EXPECT_EQ(device.key(), path("player"));
    EXPECT_EQ(device.prefix(), path("player"));
    EXPECT_TRUE(device.bookPath().isNull());
}

TEST_F(iPodDeviceTest, TellsFilesFromFolders)
{
    Files::write(onDevice("file"), "x");
    EXPECT_TRUE(device.fileExists(onDevice("file")));
    EXPECT_TRUE(device.fileExists(onDevice("iPod_Control")));
    EXPECT_FALSE(device.fileExists(onDevice("none")));
    EXPECT_TRUE(device.isFile(onDevice("file")));
    EXPECT_TRUE(device.isFile(onDevice("iPod_Control"))); // asks no more than whether it is there
    EXPECT_FALSE(device.isDirectory(onDevice("file")));
    EXPECT_TRUE(device.isDirectory(onDevice("iPod_Control")));
    EXPECT_FALSE(device.isDirectory(onDevice("none")));
}

TEST_F(iPodDeviceTest, ListsFilesAndFoldersByTheirBareNames)
{
    Files::write(onDevice("a.mp3"), "x");
    Files::write(onDevice(".hidden"), "x");
    Files::write(onDevice(QString::fromUtf8("Ёлка")), "x");
    QDir().mkpath(onDevice("folder"));
    QFile::link(onDevice("nowhere"), onDevice("broken link"));
    QStringList files = device.getFiles(path("player"));
    files.sort();
    EXPECT_EQ(files, QStringList({".hidden", "a.mp3", QString::fromUtf8("Ёлка")}));
    QStringList folders = device.getDirs(path("player"));
    folders.sort();
    EXPECT_EQ(folders, QStringList({"folder", "iPod_Control"}));
    EXPECT_TRUE(device.getFiles(onDevice("none")).isEmpty());
    EXPECT_TRUE(device.getDirs(onDevice("a.mp3")).isEmpty());
}

TEST_F(iPodDeviceTest, ReadsWholeFilesAndRanges)
{
    const QByteArray content = Files::content(200000);
    Files::write(onDevice("a"), content);
    EXPECT_EQ(device.read(onDevice("a")), content);
    EXPECT_EQ(device.read(onDevice("a"), 10, 5), content.sliced(10, 5));
    EXPECT_EQ(device.read(onDevice("a"), 199990, 100), content.last(10));
    EXPECT_TRUE(device.read(onDevice("none")).isNull());
    EXPECT_TRUE(device.read(onDevice("none"), 0, 1).isNull());
    EXPECT_TRUE(device.read(path("player")).isNull());
    Files::write(onDevice("empty"), "");
    EXPECT_FALSE(device.read(onDevice("empty")).isNull());
}

TEST_F(iPodDeviceTest, FollowsALinkForTheSize)
{
    Files::write(onDevice("a"), "12345");
    QFile::link(onDevice("a"), onDevice("link"));
    EXPECT_EQ(device.getFileSize(onDevice("link")), 5);
    EXPECT_EQ(device.getFileSize(onDevice("none")), std::nullopt);
}

TEST_F(iPodDeviceTest, ReadsNothingOutsideItsVolume)
{
    Files::write(path("private"), "not on the device");
    const QString climbing = onDevice("iPod_Control/../../private");
    EXPECT_FALSE(device.fileExists(climbing));
    EXPECT_TRUE(device.read(climbing).isNull());
    EXPECT_EQ(device.copyOut(climbing, path("copy"), 0).end, End::Missing);
    EXPECT_FALSE(QFileInfo::exists(path("copy")));
}

TEST_F(CopyOut, TellsTheFractionOfEachChunkAfterTheIndex)
{
    const QByteArray content = Files::content(2 * Chunk + Chunk / 2);
    Files::write(onDevice("a"), content);
    RecordingDelegate delegate;
    EXPECT_TRUE(device.copyOut(onDevice("a"), path("copy"), 7));
    EXPECT_EQ(delegate.progress, (std::vector<double>{7.4, 7.8, 8.0}));
    EXPECT_EQ(Files::read(path("copy")), content);
}

TEST_F(CopyOut, CountsNoIndexAsZero)
{
    Files::write(onDevice("a"), "x");
    RecordingDelegate delegate;
    EXPECT_TRUE(device.copyOut(onDevice("a"), path("copy"), std::nullopt));
    EXPECT_EQ(delegate.progress, std::vector<double>{1.0});
}

TEST_F(CopyOut, SaysNothingOfAnEmptyFile)
{
    Files::write(onDevice("a"), "");
    RecordingDelegate delegate;
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Whole);
    EXPECT_TRUE(delegate.progress.empty());
    EXPECT_EQ(Files::read(path("copy")), "");
}

TEST_F(CopyOut, GoesOnWithoutADelegateThatListens)
{
    Files::write(onDevice("a"), "x");
    DeviceDelegate indifferent;
    Device::setDelegate(&indifferent);
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Whole);
    Device::setDelegate(nullptr);
    EXPECT_EQ(Files::read(path("copy")), "x");
}

TEST_F(CopyOut, StopsBeforeTheChunkItIsToldToStopAt)
{
    const QByteArray content = Files::content(3 * Chunk + 5);
    Files::write(onDevice("a"), content);
    for (int stopAt = 1; stopAt <= 4; ++stopAt) {
        RecordingDelegate delegate;
        delegate.onChunk = [&](int chunk) { return chunk < stopAt; };
        const CopyResult result = device.copyOut(onDevice("a"), path("copy"), 0);
        EXPECT_FALSE(result);
        EXPECT_EQ(result.end, End::Stopped);
        EXPECT_EQ(Files::read(path("copy")), content.first((stopAt - 1) * Chunk));
    }
}

TEST_F(CopyOut, ReplacesAnExistingFile)
{
    Files::write(onDevice("a"), "new");
    Files::write(path("copy"), "a long old content");
    EXPECT_TRUE(device.copyOut(onDevice("a"), path("copy"), 0));
    EXPECT_EQ(Files::read(path("copy")), "new");
}

TEST_F(CopyOut, SaysYesForAMissingSourceAndLeavesTheDestinationAlone)
{
    Files::write(path("copy"), "old");
    const CopyResult result = device.copyOut(onDevice("none"), path("copy"), 0);
    EXPECT_TRUE(result);
    EXPECT_EQ(result.end, End::Missing);
    EXPECT_EQ(result.why, "No such file or directory");
    EXPECT_EQ(Files::read(path("copy")), "old");
}

TEST_F(CopyOut, SaysYesForADestinationThatCannotBeMade)
{
    Files::write(onDevice("a"), "x");
    const CopyResult result = device.copyOut(onDevice("a"), path("no/such/folder"), 0);
    EXPECT_TRUE(result);
    EXPECT_EQ(result.end, End::Failed);
    EXPECT_EQ(result.why, "No such file or directory");
    EXPECT_EQ(device.copyOut(onDevice("a"), path("player"), 0).end, End::Failed);
}

TEST_F(CopyOut, DoesNotWaitForAPipe)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(onDevice("pipe")).constData(), 0600), 0);
    EXPECT_EQ(device.copyOut(onDevice("pipe"), path("copy"), 0).end, End::Failed);
    EXPECT_TRUE(device.read(onDevice("pipe")).isNull());
}

TEST_F(CopyOut, DoesNotWalkAFolder)
{
    Files::write(onDevice("Book.epub/mimetype"), "x");
    EXPECT_EQ(device.copyOut(onDevice("Book.epub"), path("copy"), 0).end, End::Failed);
    EXPECT_FALSE(QFileInfo::exists(path("copy")));
}

TEST_F(CopyOut, CopiesAFileThatReportsNoSize)
{
    iPodDevice processes("/proc/self");
    RecordingDelegate delegate;
    EXPECT_EQ(processes.copyOut("/proc/self/status", path("copy"), 0).end, End::Whole);
    ASSERT_FALSE(delegate.progress.empty());
    EXPECT_FALSE(std::isfinite(delegate.progress[0]));
    EXPECT_TRUE(Files::read(path("copy")).startsWith("Name:"));
}

TEST_F(CopyOut, EndsWhenTheSourceShrinks)
{
    Files::write(onDevice("a"), Files::content(4 * Chunk));
    RecordingDelegate delegate;
    delegate.onChunk = [&](int chunk) {
        return chunk != 2 || QFile::resize(onDevice("a"), Chunk + 10);
    };
    EXPECT_TRUE(device.copyOut(onDevice("a"), path("copy"), 0));
    EXPECT_EQ(Files::read(path("copy")), Files::content(4 * Chunk).first(Chunk + 10));
}

TEST_F(CopyOut, TakesAlongWhatTheSourceGrows)
{
    Files::write(onDevice("a"), Files::content(Chunk));
    RecordingDelegate delegate;
    delegate.onChunk = [&](int chunk) {
        if (chunk == 1) {
            QFile file(onDevice("a"));
            EXPECT_TRUE(file.open(QIODevice::Append));
            file.write("more");
        }
        return true;
    };
    EXPECT_TRUE(device.copyOut(onDevice("a"), path("copy"), 0));
    EXPECT_EQ(Files::read(path("copy")), Files::content(Chunk) + "more");
    EXPECT_EQ(delegate.progress.size(), 2U);
}

TEST_F(CopyOut, KeepsReadingAFileThatIsRemovedMeanwhile)
{
    Files::write(onDevice("a"), Files::content(3 * Chunk));
    RecordingDelegate delegate;
    delegate.onChunk = [&](int chunk) { return chunk != 1 || QFile::remove(onDevice("a")); };
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Whole);
    EXPECT_EQ(Files::read(path("copy")), Files::content(3 * Chunk));
}

TEST_F(CopyOut, TellsInTheSystemsWordsOfAFullDisk)
{
    PrivateMounts::enter();
    const auto disk = PrivateMounts::Mount::memory(path("disk"), 3 * Chunk / 2);
    Files::write(onDevice("a"), Files::content(4 * Chunk));
    const CopyResult result = device.copyOut(onDevice("a"), path("disk/copy"), 0);
    EXPECT_TRUE(result);
    EXPECT_EQ(result.end, End::Failed);
    EXPECT_EQ(result.why, "No space left on device");
}
