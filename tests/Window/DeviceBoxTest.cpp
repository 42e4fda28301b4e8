#include "Window/DeviceBox.h"

#include "support/Files.h"
#include "support/FolderDevice.h"

#include <QComboBox>

namespace
{
/// A device with a key of its own and no library.
class Keyed final : public Device
{
public:
    explicit Keyed(const QString& key)
        : _key(key)
    {
    }
    [[nodiscard]] QString key() const override { return _key; }

private:
    QString _key;
};

class DeviceBoxTest : public testing::Test
{
protected:
    DeviceBoxTest()
    {
        QObject::connect(&box, &DeviceBox::currentDeviceChanged, &box, [this] { ++changes; });
    }
    QString current() const
    {
        return box.currentDevice() ? box.currentDevice()->key() : QString("none");
    }

    std::shared_ptr<Device> a = std::make_shared<Keyed>("/mnt/a");
    std::shared_ptr<Device> b = std::make_shared<Keyed>("/mnt/b");
    DeviceBox box;
    QComboBox* combo = box.findChild<QComboBox*>("_cmbDevices");
    int changes = 0;
};
} // namespace

TEST_F(DeviceBoxTest, ListsTwoDevicesAtStartAndChoosesTheFirst)
{
    box.setDevices({a, b});
    EXPECT_EQ(combo->count(), 2);
    EXPECT_EQ(combo->itemText(0), "a") << "a device without a name goes by its folder";
    EXPECT_EQ(current(), "/mnt/a");
    EXPECT_EQ(changes, 1);
}

TEST_F(DeviceBoxTest, ASecondArrivalIsListedLastAndChangesNothing)
{
    box.deviceConnected(a);
    box.deviceConnected(b);
    EXPECT_EQ(combo->itemText(1), "b");
    EXPECT_EQ(current(), "/mnt/a");
    EXPECT_EQ(changes, 1);
}

TEST_F(DeviceBoxTest, AnArrivalBringsTheFirstDeviceBack)
{
    box.deviceConnected(a);
    box.deviceConnected(b);
    combo->setCurrentIndex(1);
    EXPECT_EQ(current(), "/mnt/b");
    box.deviceConnected(std::make_shared<Keyed>("/mnt/c"));
    EXPECT_EQ(current(), "/mnt/a");
}

TEST_F(DeviceBoxTest, TheRemainingFirstDeviceFollowsTheOneThatLeft)
{
    box.setDevices({a, b});
    EXPECT_TRUE(box.deviceDisconnected(*a));
    EXPECT_EQ(current(), "/mnt/b");
    EXPECT_EQ(combo->currentIndex(), 0);
}

TEST_F(DeviceBoxTest, TheLastDeviceLeavesNothing)
{
    box.setDevices({a});
    EXPECT_TRUE(box.deviceDisconnected(*a));
    EXPECT_EQ(current(), "none");
    EXPECT_EQ(combo->count(), 0);
    EXPECT_EQ(combo->currentIndex(), -1);
}

TEST_F(DeviceBoxTest, ADepartureBeforeTheCurrentOneIsNoChoice)
{
    box.setDevices({a, b});
    combo->setCurrentIndex(1);
    changes = 0;
    EXPECT_TRUE(box.deviceDisconnected(*a));
    EXPECT_EQ(current(), "/mnt/b");
    EXPECT_EQ(combo->currentIndex(), 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(DeviceBoxTest, MatchesDeparturesByKey)
{
    box.setDevices({a});
    EXPECT_FALSE(box.deviceDisconnected(Keyed("/mnt/other")));
    EXPECT_EQ(combo->count(), 1);
    EXPECT_TRUE(box.deviceDisconnected(Keyed("/mnt/a")));
}

TEST_F(DeviceBoxTest, LetsGoOfADeviceThatLeft)
{
    box.setDevices({a});
    const std::weak_ptr<Device> watched = a;
    box.deviceDisconnected(*a);
    a.reset();
    EXPECT_TRUE(watched.expired());
}
