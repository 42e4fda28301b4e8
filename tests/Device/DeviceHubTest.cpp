#include "Device/Device.h"
#include "Device/iPod/iPodDevice.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/PrivateMounts.h"
#include "support/RecordingDelegate.h"
#include "support/SamplePlayer.h"

#include <gtest/gtest.h>

namespace
{
using PrivateMounts::Mount;

/// Players that are mounted for real and noticed through the kernel's own events.
class MountedPlayers : public testing::Test
{
protected:
    MountedPlayers() { PrivateMounts::enter(); }
    ~MountedPlayers() override { Device::uninit(); }

    QString path(const QString& name)
    {
        const QString folder = _folder.filePath(name);
        QDir().mkpath(folder);
        return folder;
    }

    /// A folder that looks like a player's volume.
    QString player(const QString& name, const QString& control = "iPod_Control")
    {
        QDir().mkpath(path(name) + "/" + control);
        return path(name);
    }

    bool hears(const QStringList& expected)
    {
        return waitUntil([&] { return delegate.events == expected; });
    }

    RecordingDelegate delegate;

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(MountedPlayers, AreFoundWhenTheProgramStarts)
{
    const auto first = Mount::bind(player("one"), path("mount one"));
    const auto second = Mount::bind(player("two", "iTunes_Control"), path("mount two"));
    const auto other = Mount::bind(path("no player"), path("mount three"));
    const Device::Devices devices = Device::init();
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_EQ(devices.at(path("mount one"))->controlPath(), path("mount one") + "/iPod_Control");
    EXPECT_EQ(devices.at(path("mount two"))->controlPath(), path("mount two") + "/iTunes_Control");
    EXPECT_TRUE(delegate.events.isEmpty());
}

TEST_F(MountedPlayers, AreAnnouncedWhenTheyComeAndGo)
{
    EXPECT_TRUE(Device::init().empty());
    const QString volume = path("volume");
    const auto mount = Mount::bind(player("one"), volume);
    ASSERT_TRUE(hears({"+" + volume})) << delegate.events.join(' ').toStdString();
    const std::shared_ptr<Device> device = delegate.last;
    EXPECT_EQ(device->prefix(), volume);
    mount->unmount();
    ASSERT_TRUE(hears({"+" + volume, "-" + volume})) << delegate.events.join(' ').toStdString();
    EXPECT_EQ(delegate.last, device);
}

TEST_F(MountedPlayers, AreReadFromAFileSystemImage)
{
    (void)Device::init();
    const QString folder = path("folder");
    const QString volume = path("volume");
    ASSERT_EQ(SamplePlayer::write(folder), "");
    std::unique_ptr<Mount> mount;
    if (PrivateMounts::canMountImages()) {
        PrivateMounts::makeImage(path(".") + "/image", folder, 32);
        mount = Mount::image(path(".") + "/image", volume);
    } else {
        mount = Mount::bind(folder, volume);
    }
    ASSERT_TRUE(hears({"+" + volume}));
    EXPECT_EQ(delegate.last->description(), "Mira's Player");
    mount->unmount();
    EXPECT_TRUE(hears({"+" + volume, "-" + volume}));
}

TEST_F(MountedPlayers, AreNotMistakenForOtherVolumes)
{
    (void)Device::init();
    const auto other = Mount::bind(path("no player"), path("plain volume"));
    const auto mount = Mount::bind(player("one"), path("volume"));
    ASSERT_TRUE(hears({"+" + path("volume")}));
    other->unmount();
    mount->unmount();
    EXPECT_TRUE(hears({"+" + path("volume"), "-" + path("volume")}));
}

TEST_F(MountedPlayers, AreNotAnnouncedAfterTheEnd)
{
    (void)Device::init();
    Device::uninit();
    const auto mount = Mount::bind(player("one"), path("volume"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(delegate.events.isEmpty());
}

TEST(UnmountNotification, OfAVolumeThatWasNoDeviceSaysNothing)
{
    RecordingDelegate delegate;
    iPodDevice::handleUnmountNotification("/never/seen");
    EXPECT_TRUE(delegate.events.isEmpty());
}

TEST(MountNotification, NeedsNoListener)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir().mkpath(folder.filePath("iPod_Control")));
    Device::setDelegate(nullptr);
    iPodDevice::handleMountNotification(folder.path());
    DeviceDelegate indifferent;
    Device::setDelegate(&indifferent);
    iPodDevice::handleUnmountNotification(folder.path());
    iPodDevice::handleMountNotification(folder.path());
    Device::setDelegate(nullptr);
    iPodDevice::handleUnmountNotification(folder.path());
}
