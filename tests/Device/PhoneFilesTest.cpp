#include "Device/iPhone/PhoneFiles.h"

#include "Device/iPhone/PhoneFileReader.h"
#include "support/phone/ConnectedPhone.h"

#include <QLoggingCategory>

#include <gtest/gtest.h>

#include <thread>

namespace
{
using Kind = Failure::Kind;
using PhoneFilesTest = ConnectedPhone;
ZELL_ON_EACH_WIRE(PhoneFilesTest);

QStringList logged;
void keepLog(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    logged.append(text);
}

QStringList namesIn(const Expected<std::vector<PhoneFiles::Entry>>& entries)
{
    QStringList names;
    EXPECT_TRUE(entries);
    if (entries) {
        for (const PhoneFiles::Entry& entry : *entries)
            names.append(entry.name);
    }
    return names;
}
} // namespace

TEST_P(PhoneFilesTest, TellsWhatStandsAtAPath)
{
    Files::write(onPhone("/a.txt"), "12345");
    QFile::link(onPhone("/a.txt"), onPhone("/toFile"));
    QFile::link(onPhone("/nowhere"), onPhone("/toNothing"));
    EXPECT_EQ(files().info("/a.txt")->kind, FileInfo::Kind::File);
    EXPECT_EQ(files().info("/a.txt")->size, 5);
    EXPECT_EQ(files().info("/iTunes_Control")->kind, FileInfo::Kind::Folder);
    EXPECT_EQ(files().info("/toFile")->kind, FileInfo::Kind::Link);
    EXPECT_EQ(files().info("/toNothing")->kind, FileInfo::Kind::Link);
}

TEST_P(PhoneFilesTest, KnowsNoSizeThatIsNone)
{
    Files::write(onPhone("/a"), "12345");
    for (const char* size : {"-1", "many", "9223372036854775808", "1e3"}) {
        change([&](PhoneFaults& faults) { faults.sizes["/a"] = QByteArray(size); });
        EXPECT_EQ(files().info("/a")->size, std::nullopt) << size;
    }
    change([](PhoneFaults& faults) { faults.sizes["/a"] = "9223372036854775807"; });
    EXPECT_EQ(files().info("/a")->size, INT64_MAX);
}

TEST_P(PhoneFilesTest, TellsWhatIsMissingFromWhatIsRefused)
{
    change([](PhoneFaults& faults) { faults.statuses["/Books"] = 10; });
    EXPECT_TRUE(files().info("/missing").failedAs(Kind::Missing));
    EXPECT_TRUE(files().entries("/missing").failedAs(Kind::Missing));
    EXPECT_TRUE(files().open("/missing").failedAs(Kind::Missing));
    EXPECT_TRUE(files().read("/missing").failedAs(Kind::Missing));
    EXPECT_TRUE(files().info(QString("/a") + QChar(0) + "b").failedAs(Kind::Missing));
    for (const Failure& failure :
         {files().info("/Books").failure(), files().entries("/Books").failure(),
          files().open("/Books").failure(), files().read("/Books").failure()}) {
        EXPECT_EQ(failure.kind, Kind::Unreadable);
        EXPECT_TRUE(failure.exact.endsWith(": 10")) << failure.exact.toStdString();
    }
}

TEST_P(PhoneFilesTest, GoesOnAfterEveryStatusOfAPhone)
{
    Files::write(onPhone("/good"), "good");
    for (quint64 status = 1; status < 40; ++status) {
        change([&](PhoneFaults& faults) { faults.statuses["/bad"] = status; });
        EXPECT_EQ(files().info("/bad").failure().kind,
                  status == 8 ? Kind::Missing : Kind::Unreadable);
        EXPECT_FALSE(files().open("/bad"));
        EXPECT_EQ(*files().read("/good"), "good") << status;
    }
    EXPECT_FALSE(session->whyGone());
}

TEST_P(PhoneFilesTest, SaysThatThePhoneIsLost)
{
    usb.cutConnections(phone);
    EXPECT_TRUE(files().info("/").failedAs(Kind::Lost));
    EXPECT_TRUE(files().entries("/").failedAs(Kind::Lost));
    EXPECT_TRUE(files().read("/a").failedAs(Kind::Lost));
    EXPECT_TRUE(files().readPart("/a", 0, 1).failedAs(Kind::Lost));
    EXPECT_EQ(files().info("/").failure().words, "The device was disconnected");
}

TEST_P(PhoneFilesTest, ListsInThePhonesOrderWithoutTheDots)
{
    for (const char* name : {"/F/c", "/F/a", "/F/b", "/F/e/x", "/F/d"})
        Files::write(onPhone(name), "");
    const QStringList names = namesIn(files().entries("/F"));
    EXPECT_EQ(names.size(), 5);
    change([](PhoneFaults& faults) { faults.extraNames["/F"] = {"d", "a"}; });
    EXPECT_EQ(namesIn(files().entries("/F")), names + QStringList({"d", "a"}));
}

TEST_P(PhoneFilesTest, ListsNoNameThatIsAPath)
{
    Files::write(onPhone("/F/a.txt"), "");
    Files::write(onPhone("/secret"), "");
    change([](PhoneFaults& faults) {
        faults.extraNames["/F"] = {"../secret", "", ".", "..", "../iTunes_Control"};
        faults.types = {{"/F/.", "S_IFREG"}, {"/F/..", "S_IFREG"}};
    });
    EXPECT_EQ(namesIn(files().entries("/F")), QStringList{"a.txt"});
}

TEST_P(PhoneFilesTest, LeavesOutWhatWentAwayMeanwhileAndNothingElse)
{
    Files::write(onPhone("/F/a"), "");
    Files::write(onPhone("/F/b"), "");
    change([](PhoneFaults& faults) { faults.extraNames["/F"] = {"gone"}; });
    EXPECT_EQ(namesIn(files().entries("/F")).size(), 2);
    change([](PhoneFaults& faults) { faults.statuses["/F/b"] = 20; });
    EXPECT_TRUE(files().entries("/F").failedAs(Kind::Unreadable));
}

TEST_P(PhoneFilesTest, AsksAboutTheEntriesOfAFolderWithoutWaitingForEach)
{
    for (int i = 0; i < 500; ++i)
        Files::write(onPhone(QString("/DCIM/%1").arg(i)), "");
    change([](PhoneFaults& faults) { faults.bytesAtATime = 4096; });
    EXPECT_EQ(namesIn(files().entries("/DCIM")).size(), 500);
    EXPECT_EQ(phone->operations(), 501);
}

/// A phone whose connection ends, or which falls silent, after every single byte of its answers.
TEST_P(PhoneFilesTest, SaysSoWhereverAnAnswerIsCutShort)
{
    constexpr qint64 Many = 1'000'000;
    const QByteArray content = Files::content(60);
    Files::write(onPhone("/F/a"), content);
    Files::write(onPhone("/F/b"), "");
    change([](PhoneFaults& faults) { faults.cutAfterBytes = Many; });
    EXPECT_EQ(files().entries("/F")->size(), 2U);
    EXPECT_EQ(*files().read("/F/a"), content);
    // The answer to the closing, which nobody waits for, is there with the next one.
    const auto bytesSoFar = [this] { return Many - phone->faults().cutAfterBytes; };
    EXPECT_TRUE(files().info("/F/a"));
    const qint64 withClosing = bytesSoFar();
    EXPECT_TRUE(files().info("/F/a"));
    constexpr qint64 Closing = 48;
    const qint64 bytes = withClosing - (bytesSoFar() - withClosing) - Closing;
    ASSERT_LT(bytes, 2000);
    // An encrypted session takes its time to be opened.
    const qint64 step = GetParam() == Wire::Clear ? 1 : 23;
    for (qint64 cut = 0; cut < bytes; cut += step) {
        change([](PhoneFaults& faults) { faults = {}; });
        session = PhoneSession::open(plugged);
        const bool stalls = cut % 10 == 9;
        service().setPatience(std::chrono::milliseconds(stalls ? 20 : 10'000));
        change([&](PhoneFaults& faults) {
            (stalls ? faults.stallAfterBytes : faults.cutAfterBytes) = cut;
        });
        const auto entries = files().entries("/F");
        const auto data = files().read("/F/a");
        EXPECT_FALSE(entries && data) << cut;
        EXPECT_TRUE(!data || *data == content) << cut;
        EXPECT_TRUE(!entries || entries->size() == 2) << cut;
        EXPECT_TRUE((entries ? data.failure() : entries.failure()).kind == Kind::Lost) << cut;
        EXPECT_EQ(session->whyGone()->words,
                  stalls ? "The device does not answer" : "The device was disconnected");
    }
}

TEST_P(PhoneFilesTest, ReadsWholeFiles)
{
    const QByteArray content = Files::content(700'001);
    Files::write(onPhone("/a"), content);
    EXPECT_EQ(*files().read("/a"), content);
    EXPECT_EQ(phone->readRequests(), (std::vector<quint64>{262144, 262144, 175713, 1}));
}

TEST_P(PhoneFilesTest, GivesEmptyDataForAnEmptyFileAndNoneForAFolder)
{
    Files::write(onPhone("/empty"), "");
    const auto empty = files().read("/empty");
    ASSERT_TRUE(empty);
    EXPECT_FALSE(empty->isNull());
    EXPECT_TRUE(empty->isEmpty());
    EXPECT_TRUE(files().read("/iTunes_Control").failedAs(Kind::Refused));
}

TEST_P(PhoneFilesTest, SaysThatAFileCannotBeOpened)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) { faults.unopenable = "/a"; });
    EXPECT_EQ(files().read("/a").failure().exact, "AFCFileRefOpen(2): 10");
    EXPECT_EQ(files().readPart("/a", 0, 1).failure().exact, "AFCFileRefOpen(2): 10");
}

TEST_P(PhoneFilesTest, AsksForAllThatIsMissingAfterAShortRead)
{
    const QByteArray content = Files::content(50'000);
    Files::write(onPhone("/a"), content);
    change([](PhoneFaults& faults) { faults.longestRead = 20'000; });
    EXPECT_EQ(*files().read("/a"), content);
    const std::vector<quint64> requests = phone->readRequests();
    EXPECT_EQ(requests.front(), 50'000U);
    EXPECT_LE(requests.size(), 8U);
}

TEST_P(PhoneFilesTest, ReadsPartsOfFiles)
{
    const QByteArray content = Files::content(700'000);
    Files::write(onPhone("/a"), content);
    EXPECT_EQ(*files().readPart("/a", 100, 600'000), content.mid(100, 600'000));
    EXPECT_EQ(phone->readRequests(), (std::vector<quint64>{262144, 262144, 75712}));
    EXPECT_EQ(*files().readPart("/a", 699'999, 10), content.right(1));
    EXPECT_EQ(*files().readPart("/a", 800'000, 10), "");
    const auto nothing = files().readPart("/a", 1, 0);
    EXPECT_FALSE(nothing->isNull());
    EXPECT_TRUE(nothing->isEmpty());
    EXPECT_TRUE(files().readPart("/iTunes_Control", 0, 10).failedAs(Kind::Refused));
}

TEST_P(PhoneFilesTest, ReadsNoMoreThanWasReported)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) {
        faults.foreverFull = true;
        faults.sizes["/a"] = "700000";
    });
    EXPECT_TRUE(files().read("/a").failedAs(Kind::Unreadable));
    EXPECT_EQ(files().readPart("/a", 0, UINT64_MAX)->size(), 700'000);
    EXPECT_LT(phone->readRequests().size(), 10U);
}

TEST_P(PhoneFilesTest, ReadsNoFileThatChangesMeanwhile)
{
    Files::write(onPhone("/a"), Files::content(1000));
    change([](PhoneFaults& faults) { faults.sizesOnceOpen["/a"] = "1001"; });
    EXPECT_EQ(files().read("/a").failure().words, "The file changed while it was read");
    change([](PhoneFaults& faults) {
        faults = {};
        faults.sizes["/a"] = "1001";
    });
    EXPECT_EQ(files().read("/a").failure().words, "The file ended before its size was reached");
}

TEST_P(PhoneFilesTest, EndsReadingWhateverSizeIsClaimed)
{
    Files::write(onPhone("/a"), Files::content(1000));
    change([](PhoneFaults& faults) {
        faults.sizes["/a"] = "9223372036854775807";
        faults.badRange = PhoneFaults::BadRange{"/a", 0, INT64_MAX};
    });
    EXPECT_EQ(files().read("/a").failure().exact, "ret: 4");
}

TEST_P(PhoneFilesTest, ReadsBesideEachOtherOnOneConnection)
{
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i) {
        const QByteArray content = Files::content(900'000 + i);
        Files::write(onPhone(QString("/%1").arg(i)), content);
        readers.emplace_back([this, i, content] {
            for (int again = 0; again < 5; ++again)
                EXPECT_EQ(*files().read(QString("/%1").arg(i)), content);
        });
    }
    for (std::thread& reader : readers)
        reader.join();
}

TEST_P(PhoneFilesTest, LogsWhatFailedForThoseWhoAsk)
{
    Files::write(onPhone("/a"), "12345");
    change([](PhoneFaults& faults) {
        faults.statuses["/b"] = 10;
        faults.badRange = PhoneFaults::BadRange{"/a", 0, 5};
    });
    logged.clear();
    const auto before = qInstallMessageHandler(keepLog);
    EXPECT_FALSE(files().open("/b"));
    EXPECT_TRUE(logged.isEmpty()) << "people are not told numbers";
    QLoggingCategory::setFilterRules("zell.phone.warning=true");
    EXPECT_FALSE(files().open("/b"));
    EXPECT_FALSE(files().read("/a"));
    QLoggingCategory::setFilterRules("");
    qInstallMessageHandler(before);
    EXPECT_EQ(logged, (QStringList{"AFCFileRefOpen(2): 10", "ret: 4"}));
}
