#include "Base/Exception.h"
#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest.h>

namespace
{
using AFCDeviceOnAPhone = ConnectedPhone;

class DepartureListener final : public AFCDeviceDelegate
{
public:
    void deviceWasDisconnected(AFCDevice& /*device*/) override { ++departures; }
    int departures = 0;
};

/// What opening a phone in some state throws.
struct Refusal {
    const char* name;
    std::function<void(PhoneFaults&)> fault;
    const char* reason;
};
void PrintTo(const Refusal& refusal, std::ostream* out)
{
    *out << refusal.name;
}

class AFCDeviceRefused : public ConnectedPhone, public testing::WithParamInterface<Refusal>
{
};

INSTANTIATE_TEST_SUITE_P(
    , AFCDeviceRefused,
    testing::Values(
        Refusal{"NotPaired", [](PhoneFaults& f) { f.hasRecord = false; }, "Device pairing failed"},
        Refusal{"Forgotten", [](PhoneFaults& f) { f.knowsHost = false; },
                "AMDeviceValidatePairing failed with error -21"},
        Refusal{"Locked", [](PhoneFaults& f) { f.locked = true; },
                "AMDeviceStartSession failed with error -17"},
        Refusal{"NoService", [](PhoneFaults& f) { f.serviceError = "ServiceProhibited"; },
                "AMDeviceStartService failed with error -34"},
        Refusal{"NoHandle", [](PhoneFaults& f) { f.noServiceHandle = true; },
                "AMDeviceStartService didn't initialise a connection"},
        Refusal{"NoConnection", [](PhoneFaults& f) { f.refusesConnection = true; },
                "AFCConnectionOpen failed with error 30"},
        Refusal{"Garbage", [](PhoneFaults& f) { f.garbageAtDoor = true; },
                "AMDeviceConnect failed with error -256"}),
    [](const auto& refusal) { return std::string(refusal.param.name); });
} // namespace

TEST_P(AFCDeviceRefused, SaysWhichStepFailedAndNeverPairs)
{
    change(GetParam().fault);
    try {
        AFCDevice::initWithRef(newRef());
        FAIL();
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.name(), "AFCDevice");
        EXPECT_EQ(exception.reason(), GetParam().reason);
    }
    EXPECT_FALSE(phone->requests().contains("Pair"));
    EXPECT_EQ(usb.savedRecords(), 0);
}

TEST_F(AFCDeviceOnAPhone, IsNoneWithoutARef)
{
    EXPECT_EQ(AFCDevice::initWithRef(nullptr), nullptr);
    EXPECT_EQ(AFCDevice::openDevice(nullptr, "com.apple.afc"), nullptr);
}

TEST_F(AFCDeviceOnAPhone, IsUnreachableOnceItIsGone)
{
    usb.detach(phone);
    try {
        AFCDevice::initWithRef(newRef());
        FAIL();
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.reason(), "AMDeviceConnect failed with error -3");
    }
}

TEST_F(AFCDeviceOnAPhone, CanBeOpenedOnceMore)
{
    usb.cutConnections(phone);
    EXPECT_FALSE(files().isDirectoryAtPath("/"));
    afc->setDeviceRef(newRef());
    EXPECT_TRUE(files().isDirectoryAtPath("/"));
}

TEST_F(AFCDeviceOnAPhone, KeepsItsConnectionWhenItCannotBeOpenedOnceMore)
{
    change([](PhoneFaults& faults) { faults.locked = true; });
    EXPECT_THROW(afc->setDeviceRef(newRef()), Exception);
    change([](PhoneFaults& faults) {
        faults.locked = false;
        faults.refusesConnection = true;
    });
    EXPECT_THROW(afc->setDeviceRef(newRef()), Exception);
    EXPECT_TRUE(files().isDirectoryAtPath("/"));
}

TEST_F(AFCDeviceOnAPhone, HearsOnlyOfItsOwnDeparture)
{
    DepartureListener listener;
    afc->setDelegate(&listener);
    EXPECT_EQ(afc->device()->productID(), 0x12a8U);
    afc->disconnected(2);
    EXPECT_EQ(listener.departures, 0);
    afc->disconnected(1);
    EXPECT_EQ(listener.departures, 1);
}

TEST_F(AFCDeviceOnAPhone, ListsFilesAndFoldersWithoutTheDots)
{
    Files::write(onPhone("/F/a.txt"), "");
    Files::write(onPhone("/F/Sub/b"), "");
    QFile::link(onPhone("/F/a.txt"), onPhone("/F/link"));
    QStringList folders = afc->listOfFoldersAtPath("/F");
    folders.sort();
    EXPECT_EQ(folders, (QStringList{"Sub", "link"}));
    EXPECT_EQ(afc->listOfFilesAtPath("/F"), QStringList{"a.txt"});
    EXPECT_THROW(afc->listOfFilesAtPath("/missing"), Exception);
}

TEST_F(AFCDeviceOnAPhone, ListsInThePhonesOrder)
{
    for (const char* name : {"/F/c", "/F/a", "/F/b", "/F/e", "/F/d"})
        Files::write(onPhone(name), "");
    QStringList expected = files().listFilesInPath("/F");
    expected.removeAll(".");
    expected.removeAll("..");
    EXPECT_EQ(expected.size(), 5);
    EXPECT_EQ(afc->listOfFilesAtPath("/F"), expected);
}

TEST_F(AFCDeviceOnAPhone, NeverListsTheDotsEvenIfTheyWereFiles)
{
    Files::write(onPhone("/F/a.txt"), "");
    change([](PhoneFaults& faults) { faults.types = {{"/F/.", "S_IFREG"}, {"/F/..", "S_IFREG"}}; });
    ASSERT_TRUE(files().isFileAtPath("/F/."));
    ASSERT_TRUE(files().isFileAtPath("/F/.."));
    EXPECT_EQ(afc->listOfFilesAtPath("/F"), QStringList{"a.txt"});
}

TEST_F(AFCDeviceOnAPhone, ListsNoNameThatIsAPath)
{
    Files::write(onPhone("/F/a.txt"), "");
    Files::write(onPhone("/secret"), "");
    change([](PhoneFaults& faults) {
        faults.extraNames["/F"] = {"../secret", "", ".", "..", "../iTunes_Control"};
    });
    EXPECT_EQ(afc->listOfFilesAtPath("/F"), QStringList{"a.txt"});
    EXPECT_EQ(afc->listOfFoldersAtPath("/F"), QStringList());
}

TEST_F(AFCDeviceOnAPhone, ReadsWholeFiles)
{
    const QByteArray content = Files::content(700'001);
    Files::write(onPhone("/a"), content);
    EXPECT_EQ(afc->contentsOfFileAtPath("/a"), content);
    EXPECT_EQ(phone->readRequests(), (std::vector<quint64>{262144, 262144, 262144, 175713}));
}

TEST_F(AFCDeviceOnAPhone, GivesEmptyDataForAnEmptyFileAndNoneForAFolder)
{
    Files::write(onPhone("/empty"), "");
    const QByteArray empty = afc->contentsOfFileAtPath("/empty");
    EXPECT_FALSE(empty.isNull());
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_TRUE(afc->contentsOfFileAtPath("/iTunes_Control").isNull());
    EXPECT_TRUE(afc->contentsOfFileAtPath("/missing").isNull());
}

TEST_F(AFCDeviceOnAPhone, GivesEmptyDataForAFileThatCannotBeOpened)
{
    Files::write(onPhone("/a"), "a");
    change([](PhoneFaults& faults) { faults.unopenable = "/a"; });
    for (const QByteArray& data :
         {afc->contentsOfFileAtPath("/a"), afc->chunkOfFileAtPath("/a", 0, 1)}) {
        EXPECT_FALSE(data.isNull());
        EXPECT_TRUE(data.isEmpty());
    }
}

TEST_F(AFCDeviceOnAPhone, AsksForLessAfterAShortRead)
{
    const QByteArray content = Files::content(50'000);
    Files::write(onPhone("/a"), content);
    change([](PhoneFaults& faults) { faults.longestRead = 20'000; });
    EXPECT_EQ(afc->contentsOfFileAtPath("/a"), content);
    EXPECT_EQ(phone->readRequests(), (std::vector<quint64>{262144, 20000, 20000, 10000}));
}

TEST_F(AFCDeviceOnAPhone, ReadsPartsOfFiles)
{
    const QByteArray content = Files::content(700'000);
    Files::write(onPhone("/a"), content);
    EXPECT_EQ(afc->chunkOfFileAtPath("/a", 100, 600'000), content.mid(100, 600'000));
    EXPECT_EQ(phone->readRequests(), (std::vector<quint64>{262144, 262144, 75712}));
    EXPECT_EQ(afc->chunkOfFileAtPath("/a", 699'999, 10), content.right(1));
    EXPECT_EQ(afc->chunkOfFileAtPath("/a", 800'000, 10), "");
    EXPECT_TRUE(afc->chunkOfFileAtPath("/iTunes_Control", 0, 10).isNull());
}

TEST_F(AFCDeviceOnAPhone, GivesEmptyDataForAPartOfNoLength)
{
    Files::write(onPhone("/a"), "12345");
    const QByteArray nothing = afc->chunkOfFileAtPath("/a", 1, 0);
    EXPECT_FALSE(nothing.isNull());
    EXPECT_TRUE(nothing.isEmpty());
}

TEST_F(AFCDeviceOnAPhone, EndsReadingWhateverSizeIsClaimed)
{
    Files::write(onPhone("/a"), Files::content(1000));
    change([](PhoneFaults& faults) {
        faults.sizes["/a"] = "9223372036854775807";
        faults.badRange = PhoneFaults::BadRange{"/a", 0, INT64_MAX};
    });
    EXPECT_EQ(afc->contentsOfFileAtPath("/a"), "");
}

TEST_F(AFCDeviceOnAPhone, KeepsOnlyWhatCameBeforeTheConnectionBroke)
{
    const QByteArray content = Files::content(700'000);
    Files::write(onPhone("/a"), content);
    change([](PhoneFaults& faults) { faults.cutAfterBytes = 400'000; });
    EXPECT_EQ(afc->contentsOfFileAtPath("/a"), content.first(262144));
    EXPECT_TRUE(afc->contentsOfFileAtPath("/a").isNull());
}

TEST_F(AFCDeviceOnAPhone, CreatesFilesInPieces)
{
    phone->expectWrites();
    const QByteArray content = Files::content(600'000);
    afc->createFileAtPath("/iTunes_Control/new", content);
    EXPECT_EQ(Files::read(onPhone("/iTunes_Control/new")), content);
    EXPECT_EQ(phone->operations(0x10), 3);
    afc->createFileAtPath("/iTunes_Control/empty", "");
    EXPECT_EQ(QFileInfo(onPhone("/iTunes_Control/empty")).size(), 0);
    afc->createFileAtPath("/iTunes_Control", content); // a folder, which stays one
    EXPECT_TRUE(QFileInfo(onPhone("/iTunes_Control")).isDir());
}

TEST_F(AFCDeviceOnAPhone, WritesNothingIntoAFolderThatDoesNotExistAndReportsNothing)
{
    afc->createFileAtPath("/missing/new", "content");
    EXPECT_FALSE(QFileInfo::exists(onPhone("/missing")));
    EXPECT_EQ(phone->writes(), 0);
}

TEST_F(AFCDeviceOnAPhone, DeletesFilesAndLeavesFoldersAlone)
{
    phone->expectWrites();
    Files::write(onPhone("/a"), "");
    afc->deleteFileAtPath("/a");
    EXPECT_FALSE(QFileInfo::exists(onPhone("/a")));
    afc->deleteFileAtPath("/iTunes_Control");
    EXPECT_TRUE(QFileInfo::exists(onPhone("/iTunes_Control")));
}
