#include "Device/iPhone/iPhoneDevice.h"

#include "support/RecordingDelegate.h"
#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
using End = CopyResult::End;
constexpr qint64 MiB = 1024 * 1024;

class iPhoneDeviceOnAPhone : public ConnectedPhone
{
protected:
    iPhoneDeviceOnAPhone()
        : device(afc)
    {
    }

    QString out() const { return path("out"); }

    iPhoneDevice device;
    RecordingDelegate delegate;
};
} // namespace

TEST_F(iPhoneDeviceOnAPhone, HasFixedPathsAndThePhonesIdentifier)
{
    EXPECT_EQ(device.prefix(), "/");
    EXPECT_EQ(device.controlPath(), "/iTunes_Control");
    EXPECT_EQ(device.bookPath(), "/Books");
    EXPECT_EQ(device.key(), "0123456789abcdef");
    EXPECT_EQ(device.serialNumber(), device.key());
    EXPECT_TRUE(device.localRoot().isNull());
}

TEST_F(iPhoneDeviceOnAPhone, AnswersForFilesAndFolders)
{
    Files::write(onPhone("/Books/a.txt"), "12345");
    EXPECT_TRUE(device.fileExists("/Books"));
    EXPECT_TRUE(device.fileExists("/Books/a.txt"));
    EXPECT_FALSE(device.fileExists("/Books/b.txt"));
    EXPECT_TRUE(device.isFile("/Books/a.txt"));
    EXPECT_FALSE(device.isFile("/Books"));
    EXPECT_TRUE(device.isDirectory("/Books"));
    EXPECT_EQ(device.getFileSize("/Books/a.txt"), 5);
    EXPECT_EQ(device.getFileSize("/missing"), std::nullopt);
    EXPECT_EQ(device.read("/Books/a.txt"), "12345");
    EXPECT_EQ(device.read("/Books/a.txt", 1, 2), "23");
    EXPECT_TRUE(device.read("/Books").isNull());
    EXPECT_EQ(device.getFiles("/Books"), QStringList{"a.txt"});
    EXPECT_EQ(device.getDirs("/missing"), QStringList());
    EXPECT_EQ(device.getFiles("/missing"), QStringList());
}

TEST_F(iPhoneDeviceOnAPhone, HasOneCameraRoll)
{
    CameraRollDb* roll = device.cameraRollDb();
    ASSERT_NE(roll, nullptr);
    EXPECT_EQ(device.cameraRollDb(), roll);
}

TEST_F(iPhoneDeviceOnAPhone, AsksOnceForEachEntryOfAFolder)
{
    for (int i = 0; i < 50; ++i)
        Files::write(onPhone(QString("/DCIM/100/IMG_%1.JPG").arg(i)), "x");
    EXPECT_EQ(device.getFiles("/DCIM/100").size(), 50);
    EXPECT_EQ(phone->operations(0x0A), 50);
    EXPECT_EQ(phone->operations(), 51);
}

TEST_F(iPhoneDeviceOnAPhone, CopiesAFileInChunksAnnouncedBeforeTheyAreWritten)
{
    const QByteArray content = Files::content(2 * MiB + 100);
    Files::write(onPhone("/a"), content);
    std::vector<qint64> written;
    delegate.onChunk = [&](int) {
        written.push_back(QFileInfo(out()).size());
        return true;
    };
    EXPECT_EQ(device.copyOut("/a", out(), 3).end, End::Whole);
    EXPECT_EQ(Files::read(out()), content);
    EXPECT_EQ(written, (std::vector<qint64>{0, MiB, 2 * MiB}));
    EXPECT_EQ(delegate.progress.back(), 4.0);
    EXPECT_EQ(delegate.progress.front(), 3 + double(MiB) / double(content.size()));
}

TEST_F(iPhoneDeviceOnAPhone, AsksForLessInEveryReadAfterAShortOne)
{
    Files::write(onPhone("/a"), Files::content(150'000));
    change([](PhoneFaults& faults) { faults.longestRead = 65536; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(phone->readRequests(), (std::vector<quint64>{1048576, 65536, 65536, 18928}));
    EXPECT_EQ(Files::read(out()), Files::content(150'000));
}

TEST_F(iPhoneDeviceOnAPhone, CopiesAnEmptyFileWithoutAWord)
{
    Files::write(onPhone("/empty"), "");
    EXPECT_EQ(device.copyOut("/empty", out(), 0).end, End::Whole);
    EXPECT_TRUE(QFileInfo::exists(out()));
    EXPECT_EQ(QFileInfo(out()).size(), 0);
    EXPECT_TRUE(delegate.progress.empty());
}

TEST_F(iPhoneDeviceOnAPhone, CreatesNothingForASourceThatIsMissing)
{
    const CopyResult result = device.copyOut("/missing", out(), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Missing);
    EXPECT_FALSE(QFileInfo::exists(out()));
}

TEST_F(iPhoneDeviceOnAPhone, LeavesTheFormerFileForASourceThatCannotBeOpened)
{
    Files::write(onPhone("/a"), "a");
    Files::write(out(), "former");
    change([](PhoneFaults& faults) { faults.unopenable = "/a"; });
    const CopyResult result = device.copyOut("/a", out(), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Incomplete);
    EXPECT_EQ(Files::read(out()), "former");
    EXPECT_TRUE(delegate.progress.empty());
}

TEST_F(iPhoneDeviceOnAPhone, SaysThatANameIsTakenWhereNothingIsToBeReplaced)
{
    Files::write(onPhone("/a"), "a");
    Files::write(out(), "former");
    EXPECT_EQ(device.copyOutNew("/a", out(), 0).end, End::Taken);
    EXPECT_EQ(Files::read(out()), "former");
    ASSERT_TRUE(QFile::remove(out()));
    EXPECT_EQ(device.copyOutNew("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(Files::read(out()), "a");
}

TEST_F(iPhoneDeviceOnAPhone, ReplacesAFileThatExists)
{
    Files::write(onPhone("/a"), "new");
    Files::write(out(), "a former one that was longer");
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(Files::read(out()), "new");
}

TEST_F(iPhoneDeviceOnAPhone, CopiesAFileWholeThatClaimsToBeEmpty)
{
    const QByteArray content = Files::content(MiB + 7);
    Files::write(onPhone("/a"), content);
    change([](PhoneFaults& faults) { faults.sizes["/a"] = "0"; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(Files::read(out()), content);
}

TEST_F(iPhoneDeviceOnAPhone, EndsACopyOfAFileWithoutEndWhenAskedTo)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) { faults.foreverFull = true; });
    delegate.onChunk = [](int chunk) { return chunk < 10; };
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Stopped);
    EXPECT_EQ(QFileInfo(out()).size(), 9 * MiB);
}

TEST_F(iPhoneDeviceOnAPhone, EndsACopyOfAFileWithoutEndWhenThePhoneIsPulledOut)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) { faults.foreverFull = true; });
    delegate.onChunk = [this](int chunk) {
        if (chunk == 10)
            usb.detach(phone);
        return true;
    };
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
}

TEST_F(iPhoneDeviceOnAPhone, StopsBeforeTheChunkIsWritten)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    delegate.onChunk = [](int chunk) { return chunk < 2; };
    EXPECT_FALSE(bool(device.copyOut("/a", out(), 0)));
    EXPECT_EQ(QFileInfo(out()).size(), MiB);
    EXPECT_EQ(delegate.progress.size(), 2U);
}

TEST_F(iPhoneDeviceOnAPhone, GoesOnWhenTheDestinationCannotBeMade)
{
    Files::write(onPhone("/a"), "a");
    const CopyResult result = device.copyOut("/a", path("no/such/folder/a"), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Failed);
}

TEST_F(iPhoneDeviceOnAPhone, CopiesFoldersWithTheirFoldersFirst)
{
    Files::write(onPhone("/B/x.epub/a.txt"), "a");
    Files::write(onPhone("/B/x.epub/META/b.txt"), "bb");
    Files::write(onPhone("/B/x.epub/META/Deep/c.txt"), "ccc");
    Files::write(onPhone("/B/x.epub/.hidden"), "d");
    std::vector<qint64> sizes;
    delegate.onChunk = [&](int) {
        sizes.push_back(QFileInfo(out() + "/a.txt").exists());
        return true;
    };
    EXPECT_EQ(device.copyOut("/B/x.epub", out(), 0).end, End::Whole);
    EXPECT_EQ(Files::read(out() + "/META/Deep/c.txt"), "ccc");
    EXPECT_EQ(Files::read(out() + "/META/b.txt"), "bb");
    EXPECT_EQ(Files::read(out() + "/a.txt"), "a");
    EXPECT_EQ(Files::read(out() + "/.hidden"), "d");
    ASSERT_EQ(sizes.size(), 4U);
    EXPECT_EQ(sizes[0], 0); // the folders' files come before the folder's own
    EXPECT_EQ(sizes[1], 0);
}

TEST_F(iPhoneDeviceOnAPhone, CopiesNothingIntoAFolderThatExistsAlready)
{
    Files::write(onPhone("/F/a"), "a");
    QDir().mkpath(out());
    EXPECT_TRUE(bool(device.copyOut("/F", out(), 0)));
    EXPECT_TRUE(QDir(out()).isEmpty());
}

TEST_F(iPhoneDeviceOnAPhone, StopsOnlyTheFileThatAFolderWalkIsIn)
{
    Files::write(onPhone("/F/a"), "a");
    Files::write(onPhone("/F/b"), "b");
    Files::write(onPhone("/F/c"), "c");
    delegate.onChunk = [](int chunk) { return chunk != 2; };
    const CopyResult result = device.copyOut("/F", out(), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Incomplete);
    EXPECT_EQ(delegate.progress.size(), 3U);
    int empty = 0;
    for (const char* name : {"/a", "/b", "/c"})
        empty += QFileInfo(out() + name).size() == 0 ? 1 : 0;
    EXPECT_EQ(empty, 1);
}

TEST_F(iPhoneDeviceOnAPhone, EndsAWalkThroughFoldersThatHoldThemselves)
{
    QDir().mkpath(onPhone("/F"));
    QFile::link(".", onPhone("/F/again"));
    QFile::link(".", onPhone("/F/more"));
    EXPECT_EQ(device.copyOut("/F", out(), 0).end, End::Incomplete);
    QDir(out()).removeRecursively();
}

TEST_F(iPhoneDeviceOnAPhone, LeavesOutAStretchThatCannotBeRead)
{
    const QByteArray content = Files::content(5 * MiB);
    Files::write(onPhone("/a"), content);
    change([](PhoneFaults& faults) {
        faults.badRange = PhoneFaults::BadRange{"/a", MiB + 5, MiB + 6};
    });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_EQ(Files::read(out()), content.first(MiB) + content.mid(2 * MiB));
    EXPECT_EQ(delegate.progress.back(), 1.0);
}

TEST_F(iPhoneDeviceOnAPhone, EndsWhereAFailedReadIsPastTheReportedSize)
{
    Files::write(onPhone("/a"), Files::content(2 * MiB + 10));
    change([](PhoneFaults& faults) {
        faults.badRange = PhoneFaults::BadRange{"/a", 2 * MiB, INT64_MAX};
    });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_EQ(QFileInfo(out()).size(), 2 * MiB);
    EXPECT_EQ(phone->readRequests().size(), 4U);
}

TEST_F(iPhoneDeviceOnAPhone, IsIncompleteWhenTheConnectionBreaksInTheLastAnswer)
{
    Files::write(onPhone("/a"), Files::content(2 * MiB));
    // Enough for all but the end of the last chunk, which the library then makes up.
    change([](PhoneFaults& faults) { faults.cutAfterBytes = 2 * MiB - 1000; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_EQ(device.copyOut("/a", out() + "2", 0).end, End::Failed);
    EXPECT_FALSE(QFileInfo::exists(out() + "2"));
}

TEST_F(iPhoneDeviceOnAPhone, EndsACopyFromAPhoneThatHangs)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    files().connection().setPatience(std::chrono::milliseconds(200));
    change([this](PhoneFaults& faults) { faults.hangAfterOperations = phone->operations() + 4; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_TRUE(device.getFiles("/").isEmpty());
}

TEST_F(iPhoneDeviceOnAPhone, EndsACopyFromAPhoneThatAnswersGarbage)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    files().connection().setPatience(std::chrono::milliseconds(500));
    change([](PhoneFaults& faults) { faults.garbageAfterOperations = 4; });
    EXPECT_NE(device.copyOut("/a", out(), 0).end, End::Whole);
}

TEST_F(iPhoneDeviceOnAPhone, CopiesMoreThanFourGibibytesWhole)
{
    constexpr qint64 Size = 5 * 1024 * MiB;
    QFile file(onPhone("/big"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(Size));
    file.seek(Size - 5);
    file.write("the e");
    file.seek(4 * 1024 * MiB + 3);
    file.write("middle");
    file.close();
    EXPECT_EQ(device.copyOut("/big", out(), 0).end, End::Whole);
    QFile copy(out());
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.size(), Size);
    copy.seek(4 * 1024 * MiB);
    EXPECT_EQ(copy.read(12), QByteArray("\0\0\0middle\0\0\0", 12));
    copy.seek(Size - 5);
    EXPECT_EQ(copy.readAll(), "the e");
    EXPECT_TRUE(std::is_sorted(delegate.progress.begin(), delegate.progress.end()));
    EXPECT_EQ(delegate.progress.back(), 1.0);
    EXPECT_EQ(device.getFileSize("/big"), qint64(Size));
    EXPECT_EQ(afc->chunkOfFileAtPath("/big", 4 * 1024 * MiB + 3, 6), "middle");
}
