#include "Device/Device.h"

#include "Device/iPod/iPodDevice.h"
#include "support/Files.h"
#include "support/RecordingDelegate.h"

#include <gtest/gtest.h>

TEST(BaseDevice, HoldsNothing)
{
    Device device;
    EXPECT_TRUE(device.key().isNull());
    EXPECT_TRUE(device.prefix().isNull());
    EXPECT_TRUE(device.bookPath().isNull());
    EXPECT_FALSE(device.fileExists("/a"));
    EXPECT_FALSE(device.isFile("/a"));
    EXPECT_FALSE(device.isDirectory("/"));
    EXPECT_TRUE(device.getFiles("/").isEmpty());
    EXPECT_TRUE(device.getDirs("/").isEmpty());
    EXPECT_TRUE(device.read("/a").isNull());
    EXPECT_TRUE(device.read("/a", 0, 1).isNull());
    EXPECT_EQ(device.getFileSize("/a"), std::nullopt);
    EXPECT_EQ(device.trackDb(), nullptr);
    EXPECT_TRUE(device.description().isNull());
}

TEST(BaseDevice, CopiesNothingAndSaysYes)
{
    const QTemporaryDir folder;
    Device device;
    EXPECT_TRUE(device.copyOut("/a", folder.filePath("a"), 0));
    EXPECT_FALSE(QFileInfo::exists(folder.filePath("a")));
}

TEST(DeviceHub, LetsTheLaterFamilyWinOverAnEqualKey)
{
    const auto phone = std::make_shared<Device>();
    const auto volume = std::make_shared<Device>();
    const auto other = std::make_shared<Device>();
    Device::Devices devices;
    Device::addFamily(devices, {{"same", phone}, {"other", other}});
    Device::addFamily(devices, {{"same", volume}});
    EXPECT_EQ(devices, (Device::Devices{{"same", volume}, {"other", other}}));
}

TEST(DeviceHub, RemembersItsDelegate)
{
    EXPECT_EQ(Device::delegate(), nullptr);
    DeviceDelegate listener;
    Device::setDelegate(&listener);
    EXPECT_EQ(Device::delegate(), &listener);
    Device::setDelegate(nullptr);
}

namespace
{
class SqliteCopy : public testing::Test
{
protected:
    SqliteCopy() { Files::write(source(), "database"); }
    QString source(const char* suffix = "") const
    {
        return _folder.filePath("player/Library.itdb") + suffix;
    }
    QString copy(const char* suffix = "") const { return _folder.filePath("copy") + suffix; }

    QTemporaryDir _folder;
    iPodDevice device{_folder.filePath("player")};
};
} // namespace

TEST_F(SqliteCopy, CopiesADatabaseAloneThatHasNoSideFiles)
{
    EXPECT_TRUE(device.copyOutSqlite(source(), copy(), 0));
    EXPECT_EQ(Files::read(copy()), "database");
    EXPECT_FALSE(QFileInfo::exists(copy("-shm")));
    EXPECT_FALSE(QFileInfo::exists(copy("-wal")));
}

TEST_F(SqliteCopy, TakesTheSideFilesAlong)
{
    Files::write(source("-shm"), "shared");
    Files::write(source("-wal"), "pending");
    RecordingDelegate delegate;
    EXPECT_TRUE(device.copyOutSqlite(source(), copy(), std::nullopt));
    EXPECT_EQ(Files::read(copy("-shm")), "shared");
    EXPECT_EQ(Files::read(copy("-wal")), "pending");
    EXPECT_EQ(delegate.progress, (std::vector<double>{1, 1, 1}));
}

TEST_F(SqliteCopy, SaysYesWhateverHappens)
{
    QFile::remove(source());
    Files::write(source("-wal"), "pending");
    EXPECT_TRUE(device.copyOutSqlite(source(), copy(), 0));
    EXPECT_FALSE(QFileInfo::exists(copy()));
    EXPECT_EQ(Files::read(copy("-wal")), "pending");
}
