#include "Device/iPod/iPodDevice.h"

#include "support/Files.h"
#include "support/PrivateMounts.h"
#include "support/RecordingDelegate.h"
#include "support/SickVolume.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
using End = CopyResult::End;
constexpr qsizetype Chunk = 1024 * 1024;

class iPodDeviceTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return _folder.filePath(name); }
    QString onDevice(const QString& name) const { return path("player/" + name); }

    QTemporaryDir _folder;
    bool _isThere = QDir().mkpath(path("player/iPod_Control"));
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
    // Whoever comes to the link is told that it is one.
    EXPECT_EQ(files, QStringList({".hidden", "a.mp3", "broken link", QString::fromUtf8("Ёлка")}));
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

TEST_F(iPodDeviceTest, KnowsNoSizeOfWhatIsNotThere)
{
    Files::write(onDevice("a"), "12345");
    EXPECT_EQ(device.getFileSize(onDevice("a")), 5);
    EXPECT_EQ(device.getFileSize(onDevice("none")), std::nullopt);
    EXPECT_TRUE(device.info(onDevice("none")).failedAs(Failure::Kind::Missing));
    EXPECT_TRUE(device.info(onDevice("none/deeper")).failedAs(Failure::Kind::Missing));
}

TEST_F(iPodDeviceTest, FollowsNoLink)
{
    Files::write(path("private"), "not on the device");
    Files::write(onDevice("Music/a"), "on the device");
    ASSERT_TRUE(QFile::link(path("private"), onDevice("K.mp3")));
    ASSERT_TRUE(QFile::link(onDevice("Music/a"), onDevice("inside.mp3")));
    ASSERT_TRUE(QFile::link(path("."), onDevice("out")));
    ASSERT_TRUE(QFile::link(onDevice("Music"), onDevice("M")));
    for (const char* name : {"K.mp3", "inside.mp3", "out/private", "M/a", "M/../Music/a"}) {
        const QString file = onDevice(QString::fromLatin1(name));
        const Expected<QByteArray> bytes = device.readFile(file);
        ASSERT_FALSE(bytes) << name;
        EXPECT_EQ(bytes.failure().kind, Failure::Kind::Refused) << name;
        EXPECT_TRUE(bytes.failure().words.contains("is a link, and links on a device are not"));
        EXPECT_TRUE(device.readPart(file, 0, 5).failedAs(Failure::Kind::Refused)) << name;
        const CopyResult copy = device.copyOut(file, path("copy"), 0);
        EXPECT_EQ(copy.end, End::Failed) << name;
        EXPECT_EQ(copy.why, bytes.failure().words);
        EXPECT_FALSE(QFileInfo::exists(path("copy")));
    }
    EXPECT_EQ(device.info(onDevice("K.mp3"))->kind, FileInfo::Kind::Link);
    EXPECT_FALSE(device.list(onDevice("M"), Device::Entries::Files));
    EXPECT_FALSE(device.whyGone());
}

TEST_F(iPodDeviceTest, IsNotLostByWhatCannotBeOpened)
{
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, QFile::encodeName(onDevice("K.mp3")).constData(),
             sizeof address.sun_path);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(listener);
    EXPECT_EQ(device.copyOut(onDevice("K.mp3"), path("copy"), 0).end, End::Failed);
    EXPECT_EQ(device.copyOut(onDevice(QString("a") + QChar(QChar::Null)), path("copy"), 0).end,
              End::Failed);
    EXPECT_FALSE(device.whyGone());
}

TEST_F(iPodDeviceTest, HasGoneWhenItsFolderIsAnother)
{
    Files::write(onDevice("a"), "x");
    ASSERT_TRUE(QFile::rename(path("player"), path("elsewhere")));
    EXPECT_FALSE(device.whyGone()) << "nobody asked the volume";
    EXPECT_TRUE(device.info(onDevice("a")).failedAs(Failure::Kind::Lost));
    ASSERT_TRUE(device.whyGone());
    EXPECT_EQ(device.whyGone()->words, "The device was disconnected");
    Files::write(onDevice("a"), "of somebody else");
    EXPECT_TRUE(device.readFile(onDevice("a")).failedAs(Failure::Kind::Lost));
    ASSERT_TRUE(QDir(path("player")).removeRecursively());
    ASSERT_TRUE(QFile::rename(path("elsewhere"), path("player")));
    EXPECT_TRUE(device.whyGone()) << "what was lost once stays lost";
}

TEST_F(iPodDeviceTest, HasGoneWhenItIsUnmounted)
{
    PrivateMounts::enter();
    Files::write(path("volume/iPod_Control/a"), "x");
    const auto mount = PrivateMounts::Mount::bind(path("volume"), path("mount"));
    iPodDevice mounted(path("mount"));
    ASSERT_TRUE(mounted.readFile(path("mount/iPod_Control/a")));
    mount->unmount();
    EXPECT_TRUE(mounted.info(path("mount/iPod_Control/a")).failedAs(Failure::Kind::Lost));
    EXPECT_TRUE(mounted.whyGone());
}

TEST_F(iPodDeviceTest, HasGoneWhenTheSystemSaysThatItWasUnmounted)
{
    RecordingDelegate delegate;
    iPodDevice::handleMountNotification(path("player"));
    const std::shared_ptr<Device> heard = delegate.last;
    EXPECT_FALSE(heard->whyGone());
    iPodDevice::handleUnmountNotification(path("player"));
    EXPECT_TRUE(heard->whyGone());
}

TEST_F(iPodDeviceTest, DoesNotKeepItsVolumeFromBeingUnmounted)
{
    PrivateMounts::enter();
    const auto mount = PrivateMounts::Mount::memory(path("mount"), 1 << 20);
    Files::write(path("mount/iPod_Control/a"), "x");
    iPodDevice mounted(path("mount"));
    EXPECT_TRUE(mounted.readFile(path("mount/iPod_Control/a")));
    EXPECT_EQ(umount2(QFile::encodeName(path("mount")).constData(), 0), 0);
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

TEST_F(CopyOut, CopiesNothingOfAFileThatReportsNoSize)
{
    iPodDevice processes("/proc/self");
    RecordingDelegate delegate;
    const CopyResult result = processes.copyOut("/proc/self/status", path("copy"), 0);
    EXPECT_EQ(result.end, End::Incomplete);
    EXPECT_FALSE(result.why.isEmpty());
    EXPECT_TRUE(delegate.progress.empty());
    EXPECT_TRUE(Files::read(path("copy")).isEmpty());
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

TEST_F(CopyOut, StopsAtTheReportedSizeOfASourceThatGrows)
{
    for (const int growsAt : {1, 2}) {
        Files::write(onDevice("a"), Files::content(2 * Chunk));
        RecordingDelegate delegate;
        delegate.onChunk = [&](int chunk) {
            if (chunk == growsAt) {
                QFile file(onDevice("a"));
                EXPECT_TRUE(file.open(QIODevice::Append));
                file.write("more");
            }
            return true;
        };
        EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Incomplete);
        EXPECT_EQ(Files::read(path("copy")), Files::content(2 * Chunk));
        EXPECT_EQ(delegate.progress.size(), 2U);
    }
}

TEST_F(CopyOut, OpensTheSourceBeforeItReplacesAnything)
{
    Files::write(path("copy"), "old");
    Files::write(path("private"), "x");
    ASSERT_TRUE(QFile::link(path("private"), onDevice("link")));
    ASSERT_TRUE(QDir().mkpath(onDevice("folder")));
    for (const char* name : {"link", "folder", "none"}) {
        device.copyOut(onDevice(QString::fromLatin1(name)), path("copy"), 0);
        EXPECT_EQ(Files::read(path("copy")), "old") << name;
    }
}

TEST_F(CopyOut, ReplacesALinkAndNotWhatItLeadsTo)
{
    Files::write(onDevice("a"), "new");
    Files::write(path("precious"), "mine");
    ASSERT_TRUE(QFile::link(path("precious"), path("copy")));
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Whole);
    EXPECT_EQ(Files::read(path("precious")), "mine");
    EXPECT_EQ(Files::read(path("copy")), "new");
    EXPECT_FALSE(QFileInfo(path("copy")).isSymLink());
}

TEST_F(CopyOut, SaysThatANameIsTakenWhereNothingIsToBeReplaced)
{
    Files::write(onDevice("a"), "new");
    Files::write(path("copy"), "old");
    ASSERT_TRUE(QFile::link(path("nowhere"), path("link")));
    for (const char* name : {"copy", "link", "player"})
        EXPECT_EQ(device.copyOutNew(onDevice("a"), path(name), 0).end, End::Taken) << name;
    EXPECT_EQ(Files::read(path("copy")), "old");
    EXPECT_FALSE(QFileInfo::exists(path("nowhere")));
    EXPECT_EQ(device.copyOutNew(onDevice("a"), path("free"), 0).end, End::Whole);
}

TEST_F(CopyOut, KeepsReadingAFileThatIsRemovedMeanwhile)
{
    Files::write(onDevice("a"), Files::content(3 * Chunk));
    RecordingDelegate delegate;
    delegate.onChunk = [&](int chunk) { return chunk != 1 || QFile::remove(onDevice("a")); };
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Whole);
    EXPECT_EQ(Files::read(path("copy")), Files::content(3 * Chunk));
}

namespace
{
/// A player on a file system that fails as it is told to.
class SickPlayer : private PrivateMounts::Place, public testing::Test
{
protected:
    SickPlayer() { Files::write(path("folder/iPod_Control/a"), Files::content(4 * Chunk)); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    QString onDevice(const QString& name) const { return path("mount/iPod_Control/" + name); }

    QTemporaryDir _folder;
    bool _isThere = QDir().mkpath(path("folder/iPod_Control"));
    SickVolume volume{path("folder"), path("mount")};
    iPodDevice device{path("mount")};
};
} // namespace

TEST_F(SickPlayer, IsReadAsAnyOther)
{
    EXPECT_EQ(device.getFiles(onDevice("")), QStringList("a"));
    EXPECT_EQ(device.getDirs(path("mount")), QStringList("iPod_Control"));
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Whole);
    EXPECT_EQ(Files::read(path("copy")), Files::content(4 * Chunk));
}

TEST_F(SickPlayer, WithABadBlockGivesWhatComesBeforeIt)
{
    for (const qint64 good : {qint64(0), qint64(5), qint64(Chunk), qint64(3 * Chunk - 1)}) {
        volume.failReads("iPod_Control/a", EIO, good);
        const CopyResult result = device.copyOut(onDevice("a"), path("copy"), 0);
        EXPECT_EQ(result.end, End::Incomplete) << good;
        EXPECT_EQ(result.why, "Input/output error");
        EXPECT_TRUE(Files::content(4 * Chunk).startsWith(Files::read(path("copy"))));
        EXPECT_TRUE(device.readFile(onDevice("a")).failedAs(Failure::Kind::Unreadable));
        EXPECT_FALSE(device.whyGone()) << "one bad block is not the end of a player";
    }
}

TEST_F(SickPlayer, DoesNotCallMissingWhatNobodyCanLookAt)
{
    volume.failLookUps("iPod_Control/a", EIO);
    EXPECT_TRUE(device.info(onDevice("a")).failedAs(Failure::Kind::Unreadable));
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Failed);
    volume.failLookUps("iPod_Control/a", EACCES);
    EXPECT_TRUE(device.info(onDevice("a")).failedAs(Failure::Kind::Unreadable));
    EXPECT_FALSE(device.whyGone());
}

TEST_F(SickPlayer, HasGoneWhenItsFileSystemSaysSo)
{
    for (const int error : {ENODEV, ENXIO, ENOTCONN, ESTALE}) {
        iPodDevice one(path("mount"));
        volume.failReads("iPod_Control/a", error, 2 * Chunk);
        const CopyResult result = one.copyOut(onDevice("a"), path("copy"), 0);
        EXPECT_EQ(result.end, End::Incomplete) << error;
        EXPECT_EQ(result.why, "The device was disconnected");
        EXPECT_TRUE(one.whyGone()) << error;
    }
}

TEST_F(SickPlayer, HasGoneWhenItsDriverDies)
{
    RecordingDelegate delegate;
    delegate.onChunk = [&](int chunk) {
        if (chunk == 2)
            volume.die();
        return true;
    };
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Incomplete);
    EXPECT_TRUE(device.whyGone());
    EXPECT_TRUE(device.info(onDevice("a")).failedAs(Failure::Kind::Lost));
    EXPECT_EQ(device.copyOut(onDevice("a"), path("copy"), 0).end, End::Failed);
}

TEST_F(iPodDeviceTest, HasGoneWhenItsDiskIsNoLongerListed)
{
    if (!PrivateMounts::canMountImages())
        GTEST_SKIP() << "only root may mount the image of a disk";
    PrivateMounts::enter();
    Files::write(path("folder/iPod_Control/a"), "x");
    PrivateMounts::makeImage(path("image"), path("folder"), 8);
    const auto disk = PrivateMounts::Mount::image(path("image"), path("mount"));
    iPodDevice mounted(path("mount"));
    EXPECT_TRUE(mounted.info(path("mount/none")).failedAs(Failure::Kind::Missing));
    // The system keeps showing the volume's folder, whose disk is no more.
    const auto noDisks = PrivateMounts::Mount::memory("/sys/dev/block", 1 << 16);
    EXPECT_TRUE(mounted.info(path("mount/none")).failedAs(Failure::Kind::Lost));
    EXPECT_TRUE(mounted.whyGone());
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
