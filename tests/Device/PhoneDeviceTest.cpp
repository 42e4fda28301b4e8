#include "Device/iPhone/PhoneDevice.h"

#include "support/RecordingDelegate.h"
#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace
{
using End = CopyResult::End;
constexpr qint64 MiB = 1024 * 1024;

class PhoneDeviceTest : public ConnectedPhone
{
protected:
    PhoneDeviceTest()
        : device(session)
    {
    }

    QString out() const { return path("out"); }

    PhoneDevice device;
    RecordingDelegate delegate;
};
ZELL_ON_EACH_WIRE(PhoneDeviceTest);

/// Sizes do not depend on the wire, and encryption takes its time.
class PhoneDeviceWithALargeFile : public PhoneDeviceTest
{
};
INSTANTIATE_TEST_SUITE_P(, PhoneDeviceWithALargeFile, testing::Values(Wire::Clear), wireName);
} // namespace

TEST_P(PhoneDeviceTest, HasFixedPathsAndThePhonesIdentifier)
{
    EXPECT_EQ(device.prefix(), "/");
    EXPECT_EQ(device.controlPath(), "/iTunes_Control");
    EXPECT_EQ(device.bookPath(), "/Books");
    EXPECT_EQ(device.key(), "0123456789abcdef");
    EXPECT_TRUE(device.localRoot().isNull());
}

TEST_P(PhoneDeviceTest, AnswersForFilesAndFolders)
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

TEST_P(PhoneDeviceTest, HasOneCameraRoll)
{
    CameraRollDb* roll = device.cameraRollDb();
    ASSERT_NE(roll, nullptr);
    EXPECT_EQ(device.cameraRollDb(), roll);
}

TEST_P(PhoneDeviceTest, AsksOnceForEachEntryOfAFolder)
{
    for (int i = 0; i < 50; ++i)
        Files::write(onPhone(QString("/DCIM/100/IMG_%1.JPG").arg(i)), "x");
    EXPECT_EQ(device.getFiles("/DCIM/100").size(), 50);
    EXPECT_EQ(phone->operations(0x0A), 50);
    EXPECT_EQ(phone->operations(), 51);
}

TEST_P(PhoneDeviceTest, CopiesAFileInChunksAnnouncedBeforeTheyAreWritten)
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

TEST_P(PhoneDeviceTest, AsksForAllThatIsMissingAfterAShortRead)
{
    const QByteArray content = Files::content(6 * MiB);
    Files::write(onPhone("/a"), content);
    int answers = 0;
    change([&](PhoneFaults& faults) { faults.longestRead = 4096; });
    delegate.onChunk = [&](int) {
        if (++answers == 1)
            change([](PhoneFaults& faults) { faults.longestRead = UINT64_MAX; });
        return true;
    };
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(Files::read(out()), content);
    EXPECT_LE(phone->readRequests().size(), 12U); // 1,536 if they stayed short
}

TEST_P(PhoneDeviceTest, CopiesAnEmptyFileWithoutAWord)
{
    Files::write(onPhone("/empty"), "");
    EXPECT_EQ(device.copyOut("/empty", out(), 0).end, End::Whole);
    EXPECT_TRUE(QFileInfo::exists(out()));
    EXPECT_EQ(QFileInfo(out()).size(), 0);
    EXPECT_TRUE(delegate.progress.empty());
}

TEST_P(PhoneDeviceTest, CreatesNothingForASourceThatIsMissing)
{
    const CopyResult result = device.copyOut("/missing", out(), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Missing);
    EXPECT_FALSE(QFileInfo::exists(out()));
}

TEST_P(PhoneDeviceTest, LeavesTheFormerFileForASourceThatCannotBeOpened)
{
    Files::write(onPhone("/a"), "a");
    Files::write(out(), "former");
    change([](PhoneFaults& faults) { faults.unopenable = "/a"; });
    const CopyResult result = device.copyOut("/a", out(), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Failed);
    EXPECT_TRUE(result.why.contains("AFCFileRefOpen(2): 10"));
    EXPECT_EQ(Files::read(out()), "former");
    EXPECT_TRUE(delegate.progress.empty());
}

TEST_P(PhoneDeviceTest, ReplacesAFileThatExists)
{
    Files::write(onPhone("/a"), "new");
    Files::write(out(), "a former one that was longer");
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(Files::read(out()), "new");
}

TEST_P(PhoneDeviceTest, CopiesNoMoreThanThePhoneReports)
{
    const QByteArray content = Files::content(MiB + 7);
    Files::write(onPhone("/a"), content);
    for (const qint64 size : {qint64(0), qint64(1), MiB, MiB + 6}) {
        change([&](PhoneFaults& faults) { faults.sizes["/a"] = QByteArray::number(size); });
        const CopyResult result = device.copyOut("/a", out(), 0);
        EXPECT_EQ(result.end, size == 0 ? End::Failed : End::Incomplete) << size;
        EXPECT_EQ(result.why, "The file is longer than the device reported");
        EXPECT_EQ(QFileInfo(out()).size(), size) << size;
    }
    change([](PhoneFaults& faults) { faults.sizes["/a"] = "-1"; });
    EXPECT_EQ(device.copyOut("/a", out() + "2", 0).end, End::Failed);
    EXPECT_FALSE(QFileInfo::exists(out() + "2"));
}

TEST_P(PhoneDeviceTest, IsIncompleteWhenTheSizeHasChangedOrCannotBeAskedAgain)
{
    Files::write(onPhone("/a"), Files::content(1000));
    change([](PhoneFaults& faults) { faults.sizesOnceOpen["/a"] = "1001"; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_EQ(QFileInfo(out()).size(), 1000);
    change([](PhoneFaults& faults) { faults.sizesOnceOpen = {}; });
    // The file is removed from the phone once it is open.
    delegate.onChunk = [this](int) {
        QFile::remove(onPhone("/a"));
        return true;
    };
    change([](PhoneFaults& faults) { faults.longestRead = 500; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
}

TEST_P(PhoneDeviceTest, EndsACopyOfAFileWithoutEnd)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) {
        faults.foreverFull = true;
        faults.sizes["/a"] = "9000000";
    });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_EQ(QFileInfo(out()).size(), 9'000'000);
}

TEST_P(PhoneDeviceTest, EndsACopyOfAFileWithoutEndWhenAskedTo)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) {
        faults.foreverFull = true;
        faults.sizes["/a"] = "9223372036854775807";
    });
    delegate.onChunk = [](int chunk) { return chunk < 10; };
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Stopped);
    EXPECT_EQ(QFileInfo(out()).size(), 9 * MiB);
}

TEST_P(PhoneDeviceTest, EndsACopyOfAFileWithoutEndWhenThePhoneIsPulledOut)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) {
        faults.foreverFull = true;
        faults.sizes["/a"] = "9223372036854775807";
    });
    delegate.onChunk = [this](int chunk) {
        if (chunk == 10)
            usb.detach(phone);
        return true;
    };
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
}

TEST_P(PhoneDeviceTest, StopsBeforeTheChunkIsWritten)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    delegate.onChunk = [](int chunk) { return chunk < 2; };
    EXPECT_FALSE(bool(device.copyOut("/a", out(), 0)));
    EXPECT_EQ(QFileInfo(out()).size(), MiB);
    EXPECT_EQ(delegate.progress.size(), 2U);
}

TEST_P(PhoneDeviceTest, GoesOnWhenTheDestinationCannotBeMade)
{
    Files::write(onPhone("/a"), "a");
    const CopyResult result = device.copyOut("/a", path("no/such/folder/a"), 0);
    EXPECT_TRUE(bool(result));
    EXPECT_EQ(result.end, End::Failed);
}

TEST_P(PhoneDeviceTest, CopiesFoldersWithTheirFoldersFirst)
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

TEST_P(PhoneDeviceTest, CopiesNothingIntoAFolderThatExistsAlready)
{
    Files::write(onPhone("/F/a"), "a");
    QDir().mkpath(out());
    EXPECT_TRUE(bool(device.copyOut("/F", out(), 0)));
    EXPECT_TRUE(QDir(out()).isEmpty());
}

TEST_P(PhoneDeviceTest, EndsAFolderWalkThatIsStoppedAndTakesAwayItsFolder)
{
    for (const char* name : {"/F/a", "/F/b", "/F/Sub/c"})
        Files::write(onPhone(name), "x");
    delegate.onChunk = [](int chunk) { return chunk != 2; };
    const CopyResult result = device.copyOut("/F", out(), 0);
    EXPECT_FALSE(bool(result));
    EXPECT_EQ(result.end, End::Stopped);
    EXPECT_EQ(delegate.progress.size(), 2U);
    EXPECT_FALSE(QFileInfo::exists(out()));
}

TEST_P(PhoneDeviceTest, LeavesAFolderAloneThatWasThereBeforeAStop)
{
    Files::write(onPhone("/F/a"), "x");
    Files::write(out() + "/mine", "y");
    delegate.onChunk = [](int) { return false; };
    EXPECT_EQ(device.copyOut("/F", out(), 0).end, End::Failed);
    EXPECT_EQ(Files::read(out() + "/mine"), "y");
}

TEST_P(PhoneDeviceTest, SaysThatAFolderCannotBeReadAndLeavesNone)
{
    Files::write(onPhone("/F/a"), "x");
    Files::write(onPhone("/F/b"), "y");
    change([](PhoneFaults& faults) { faults.statuses["/F/b"] = 20; });
    EXPECT_EQ(device.copyOut("/F", out(), 0).end, End::Failed);
    EXPECT_FALSE(QFileInfo::exists(out()));
    change([](PhoneFaults& faults) {
        faults.statuses = {};
        faults.unopenable = "/b";
    });
    const CopyResult result = device.copyOut("/F", out(), 0);
    EXPECT_EQ(result.end, End::Incomplete);
    EXPECT_TRUE(result.why.startsWith("b: "));
    EXPECT_EQ(Files::read(out() + "/a"), "x");
    EXPECT_FALSE(QFileInfo::exists(out() + "/b"));
}

TEST_P(PhoneDeviceTest, EndsAWalkThroughFoldersThatHoldThemselves)
{
    QDir().mkpath(onPhone("/F"));
    QFile::link(".", onPhone("/F/again"));
    QFile::link(".", onPhone("/F/more"));
    EXPECT_EQ(device.copyOut("/F", out(), 0).end, End::Incomplete);
    QDir(out()).removeRecursively();
}

TEST_P(PhoneDeviceTest, LeavesOutAStretchThatCannotBeRead)
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

TEST_P(PhoneDeviceTest, EndsWhereAFailedReadIsPastTheReportedSize)
{
    Files::write(onPhone("/a"), Files::content(2 * MiB + 10));
    change([](PhoneFaults& faults) {
        faults.badRange = PhoneFaults::BadRange{"/a", 2 * MiB, INT64_MAX};
    });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_EQ(QFileInfo(out()).size(), 2 * MiB);
    EXPECT_LE(phone->readRequests().size(), 5U);
}

TEST_P(PhoneDeviceTest, IsIncompleteWhereverTheConnectionBreaks)
{
    constexpr qint64 Size = 2 * MiB;
    const QByteArray content = Files::content(Size);
    Files::write(onPhone("/a"), content);
    // From the last bytes of the first chunk through the answers that come behind the file.
    for (const qint64 cut : {MiB, Size - 1000, Size, Size + 300, Size + 400}) {
        change([&](PhoneFaults& faults) { faults.cutAfterBytes = -1; });
        session = PhoneSession::open(plugged);
        change([&](PhoneFaults& faults) { faults.cutAfterBytes = cut; });
        PhoneDevice phoneDevice(session);
        QFile::remove(out());
        const CopyResult result = phoneDevice.copyOut("/a", out(), 0);
        EXPECT_NE(result.end, End::Whole) << cut;
        EXPECT_EQ(result.end, QFileInfo::exists(out()) ? End::Incomplete : End::Failed) << cut;
        EXPECT_EQ(result.why, "The device was disconnected") << cut;
        if (QFileInfo::exists(out())) {
            EXPECT_TRUE(content.startsWith(Files::read(out()))) << cut;
        }
        EXPECT_EQ(phoneDevice.copyOut("/a", out() + "2", 0).end, End::Failed);
        EXPECT_FALSE(QFileInfo::exists(out() + "2"));
        EXPECT_EQ(phoneDevice.copyOut("/F", out() + "2", 0).end, End::Failed)
            << "nobody can tell whether it is missing";
    }
}

TEST_P(PhoneDeviceTest, StopsThoughThePhoneStalls)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    change([](PhoneFaults& faults) { faults.stallAfterBytes = MiB + MiB / 2; });
    int asked = 0;
    delegate.onWait = [&] { return ++asked < 2; };
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Stopped);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(delegate.progress.size(), 1U);
    EXPECT_FALSE(device.whyGone()) << "the phone may still answer";
    change([](PhoneFaults& faults) { faults = {}; });
    delegate.onWait = {};
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Whole) << "and does";
}

TEST_P(PhoneDeviceTest, WaitsForNoPhoneOnceItIsInterrupted)
{
    static std::atomic<bool> interrupted = false;
    PhoneDevice::setInterrupt(interrupted);
    change([](PhoneFaults& faults) { faults.hangAfterOperations = 0; });
    std::jthread interrupt([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        interrupted = true;
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(device.info("/").failedAs(Failure::Kind::Stopped));
    EXPECT_TRUE(device.readFile("/a").failedAs(Failure::Kind::Stopped));
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Stopped);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    interrupted = false;
}

TEST_P(PhoneDeviceTest, EndsACopyFromAPhoneThatHangs)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    service().setPatience(std::chrono::milliseconds(200));
    change([this](PhoneFaults& faults) { faults.hangAfterOperations = phone->operations() + 4; });
    EXPECT_EQ(device.copyOut("/a", out(), 0).end, End::Incomplete);
    EXPECT_TRUE(device.getFiles("/").isEmpty());
}

TEST_P(PhoneDeviceTest, EndsACopyFromAPhoneThatAnswersGarbage)
{
    Files::write(onPhone("/a"), Files::content(3 * MiB));
    service().setPatience(std::chrono::milliseconds(500));
    change([](PhoneFaults& faults) { faults.garbageAfterOperations = 4; });
    EXPECT_NE(device.copyOut("/a", out(), 0).end, End::Whole);
    EXPECT_EQ(device.whyGone()->words, "The device does not answer in a way that makes sense");
}

TEST_P(PhoneDeviceWithALargeFile, CopiesMoreThanFourGibibytesWhole)
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
    EXPECT_EQ(device.read("/big", 4 * 1024 * MiB + 3, 6), "middle");
}
