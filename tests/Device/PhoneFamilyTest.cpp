#include "Device/iPhone/PhoneFamily.h"

#include "Device/iPhone/PhoneDevice.h"
#include "support/EventLoop.h"
#include "support/PrivateMounts.h"
#include "support/RecordingDelegate.h"
#include "support/phone/PhoneFixture.h"

#include <QThread>

#include <gtest/gtest.h>

namespace
{
/// Phones as the hub announces them. The subscription is for the life of the process, so each of
/// these tests runs in a process of its own.
class PhoneHub : public PhoneFixture
{
protected:
    ~PhoneHub() override { Device::uninit(); }

    bool hears(const QStringList& events)
    {
        return waitUntil([&] { return delegate.events == events; });
    }

    RecordingDelegate delegate;
};

/// A computer that has a phone on its USB, as the kernel sees it, and nobody who reaches it.
class PhoneWithoutService : public testing::Test
{
protected:
    PhoneWithoutService()
    {
        PrivateMounts::enter(); // before any thread starts
        Files::write(_folder.filePath("bus/usb/devices/1-1/idVendor"), "05ac\n");
        Files::write(_folder.filePath("bus/usb/devices/1-1/idProduct"), "12a8\n");
        _bus = PrivateMounts::Mount::bind(_folder.filePath("bus"), "/sys/bus");
        qputenv("USBMUXD_SOCKET_ADDRESS", "UNIX:" + QFile::encodeName(_folder.filePath("nobody")));
    }
    ~PhoneWithoutService() override { Device::uninit(); }

    RecordingDelegate delegate;

private:
    QTemporaryDir _folder;
    std::unique_ptr<PrivateMounts::Mount> _bus;
};
} // namespace

TEST_F(PhoneWithoutService, HearsThatTheServiceIsNotRunning)
{
    (void)PhoneDevice::init();
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 1; }));
    EXPECT_TRUE(delegate.failureWords[0].contains("usbmuxd"));
    EXPECT_TRUE(
        delegate.failures[0].startsWith("AMDeviceNotificationSubscribe failed with error "));
    EXPECT_TRUE(delegate.events.isEmpty());
}

TEST(PhoneSubscription, SaysWhyThereIsNone)
{
    RecordingDelegate delegate;
    // It lives until the process ends, and so does the way to it.
    static PhoneFamily& family = PhoneFamily::make([](const auto&) { return -19; });
    EXPECT_TRUE(family.start().empty());
    EXPECT_EQ(delegate.failures,
              QStringList{"AMDeviceNotificationSubscribe failed with error -19"});
    EXPECT_TRUE(delegate.failureWords[0].contains("usbmuxd"));
    family.stop();
}

TEST_F(PhoneHub, KnowsWhetherAPhoneThatIsThereIsStillBeingOpened)
{
    const auto phone = newPhone("one");
    PhoneFaults faults;
    faults.hangsAtDoor = true;
    phone->setFaults(faults);
    (void)PhoneDevice::init();
    EXPECT_FALSE(PhoneDevice::isOpening());
    usb.attach(phone);
    ASSERT_TRUE(waitUntil([] { return PhoneDevice::isOpening(); }));
    phone->setFaults({});
    ASSERT_TRUE(hears({"+one"}));
    EXPECT_FALSE(PhoneDevice::isOpening());

    const auto gone = newPhone("two");
    gone->setFaults(faults);
    usb.attach(gone);
    ASSERT_TRUE(waitUntil([] { return PhoneDevice::isOpening(); }));
    usb.detach(gone);
    EXPECT_TRUE(waitUntil([] { return !PhoneDevice::isOpening(); }));
}

TEST_F(PhoneHub, AnnouncesPhonesOnceMoreWhenItStartsAgain)
{
    usb.attach(newPhone("one"));
    (void)PhoneDevice::init();
    ASSERT_TRUE(hears({"+one"}));
    PhoneDevice::uninit();
    EXPECT_TRUE(delegate.last->info("/").failedAs(Failure::Kind::Stopped))
        << "nobody waits any more";
    (void)PhoneDevice::init();
    ASSERT_TRUE(hears({"+one", "+one"}));
    EXPECT_TRUE(delegate.last->info("/"));
}

TEST_F(PhoneHub, AnnouncesPhonesThatAreThereAlreadyAsArrivals)
{
    const auto phone = newPhone("one");
    usb.attach(phone);
    EXPECT_TRUE(PhoneDevice::init().empty());
    ASSERT_TRUE(hears({"+one"}));
    EXPECT_EQ(delegate.last->prefix(), "/");
    EXPECT_TRUE(delegate.last->isDirectory("/iTunes_Control"));
    EXPECT_TRUE(PhoneDevice::hasHeardOf({"one"}));
    EXPECT_FALSE(PhoneDevice::hasHeardOf({"one", "two"}));
}

TEST_F(PhoneHub, AnnouncesPhonesThatComeAndGo)
{
    (void)Device::init();
    const auto first = newPhone("one");
    const auto second = newPhone("two");
    usb.attach(first);
    ASSERT_TRUE(hears({"+one"}));
    const std::shared_ptr<Device> device = delegate.last;
    usb.attach(second);
    ASSERT_TRUE(hears({"+one", "+two"}));
    usb.detach(first);
    ASSERT_TRUE(hears({"+one", "+two", "-one"}));
    EXPECT_EQ(delegate.last, device);
    EXPECT_FALSE(device->isDirectory("/iTunes_Control"));
    EXPECT_EQ(device->whyGone()->words, "The device was disconnected");
    usb.attach(first);
    ASSERT_TRUE(hears({"+one", "+two", "-one", "+one"}));
    EXPECT_TRUE(delegate.failures.isEmpty());
    EXPECT_TRUE(delegate.last->isDirectory("/iTunes_Control"));
    EXPECT_NE(delegate.last, device);
}

TEST_F(PhoneHub, SaysInPlainWordsWhyAPhoneCannotBeUsedAndTakesItOnceItCan)
{
    const auto phone = newPhone("one");
    PhoneFaults faults;
    faults.hasRecord = false;
    phone->setFaults(faults);
    (void)Device::init();
    usb.attach(phone);
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 1; }));
    EXPECT_EQ(delegate.failures[0], "Device pairing failed");
    EXPECT_TRUE(delegate.failureWords[0].contains("tap Trust"));
    EXPECT_TRUE(delegate.events.isEmpty());
    usb.detach(phone);

    faults = {};
    faults.locked = true;
    phone->setFaults(faults);
    usb.attach(phone);
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 2; }));
    EXPECT_EQ(delegate.failures[1], "AMDeviceStartSession failed with error -17");
    EXPECT_TRUE(delegate.failureWords[1].contains("locked"));
    usb.detach(phone);

    faults = {};
    faults.serviceError = "ServiceProhibited";
    phone->setFaults(faults);
    usb.attach(phone);
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 3; }));
    EXPECT_TRUE(delegate.failureWords[2].contains("access to its files"));
    usb.detach(phone);
    EXPECT_TRUE(delegate.events.isEmpty());

    phone->setFaults({});
    usb.attach(phone);
    EXPECT_TRUE(hears({"+one"}));
}

TEST_F(PhoneHub, TriesAgainWhenThePhoneHasComeToTrustTheComputer)
{
    const auto phone = newPhone("one");
    PhoneFaults faults;
    faults.knowsHost = false;
    phone->setFaults(faults);
    (void)Device::init();
    usb.attach(phone);
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 1; }));
    phone->setFaults({});
    usb.tellPaired(phone);
    EXPECT_TRUE(hears({"+one"}));
    usb.tellPaired(phone);
    usb.detach(phone);
    EXPECT_TRUE(hears({"+one", "-one"}));
}

TEST_F(PhoneHub, DoesNotWaitForAPhoneThatHangs)
{
    const auto hanging = newPhone("hanging");
    PhoneFaults faults;
    faults.hangsAtDoor = true;
    hanging->setFaults(faults);
    (void)Device::init();
    usb.attach(hanging);
    usb.attach(newPhone("one"));
    ASSERT_TRUE(hears({"+one"}));
    // Pulled out while it was opened: nobody hears of it.
    usb.detach(hanging);
    usb.attach(newPhone("two"));
    ASSERT_TRUE(hears({"+one", "+two"}));
    EXPECT_TRUE(delegate.failures.isEmpty());
}

TEST_F(PhoneHub, OpensAPhoneAgainThatHasHung)
{
    const auto phone = newPhone("one");
    usb.attach(phone);
    (void)Device::init();
    ASSERT_TRUE(hears({"+one"}));
    const std::shared_ptr<Device> device = delegate.last;
    PhoneFaults faults;
    faults.hangAfterOperations = 0;
    phone->setFaults(faults);
    EXPECT_FALSE(device->isDirectory("/iTunes_Control")); // after all the patience there is
    EXPECT_EQ(device->whyGone()->words, "The device does not answer");
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 1; }));
    EXPECT_EQ(delegate.failures[0], "AFCConnection failed with error 30");
    EXPECT_TRUE(delegate.failureWords[0].contains("stopped answering"));
    phone->setFaults({});
    phone->release();
    ASSERT_TRUE(hears({"+one", "-one", "+one"}));
    EXPECT_NE(delegate.last, device);
    EXPECT_TRUE(delegate.last->isDirectory("/iTunes_Control"));
    usb.detach(phone);
    EXPECT_TRUE(hears({"+one", "-one", "+one", "-one"}));
}

TEST_F(PhoneHub, WaitsUntilAPhoneMakesSenseAgain)
{
    const auto phone = newPhone("one");
    usb.attach(phone);
    (void)Device::init();
    ASSERT_TRUE(hears({"+one"}));
    PhoneFaults faults;
    faults.garbageAfterOperations = 0;
    phone->setFaults(faults);
    EXPECT_FALSE(delegate.last->isDirectory("/iTunes_Control"));
    const auto attempts = [&] { return phone->requests().count("StartService"); };
    ASSERT_TRUE(waitUntil([&] { return attempts() == 3; })); // the first one, and two in vain
    EXPECT_EQ(delegate.events, QStringList{"+one"});
    EXPECT_EQ(delegate.failures.size(), 1); // said once
    phone->setFaults({});
    EXPECT_TRUE(hears({"+one", "-one", "+one"}));
}

TEST_F(PhoneHub, DoesNotTryToOpenAPhoneThatWasPulledOutAfterItHadHung)
{
    const auto phone = newPhone("one");
    usb.attach(phone);
    (void)Device::init();
    ASSERT_TRUE(hears({"+one"}));
    usb.cutConnections(phone);
    EXPECT_FALSE(delegate.last->isDirectory("/iTunes_Control"));
    usb.detach(phone);
    ASSERT_TRUE(hears({"+one", "-one"}));
    QThread::msleep(400);
    QCoreApplication::processEvents();
    EXPECT_TRUE(delegate.failures.isEmpty());
    EXPECT_EQ(phone->requests().count("StartService"), 1);
}

TEST_F(PhoneHub, ChangesNothingWhenAnUnknownPhoneLeaves)
{
    (void)Device::init();
    usb.attach(newPhone("one"));
    ASSERT_TRUE(hears({"+one"}));
    PhoneFamily::shared().notify(MobileDevice::Message::Disconnected, {4711, 0, "one"});
    PhoneFamily::shared().notify(MobileDevice::Message::Paired, {4711, 0, "one"});
    PhoneFamily::shared().notify(MobileDevice::Message(7), {1, 0, "one"}); // of no known kind
    QCoreApplication::processEvents();
    EXPECT_EQ(delegate.events, QStringList{"+one"});
}

TEST_F(PhoneHub, LetsALaterPhoneOfTheSameIdentifierReplaceTheEarlier)
{
    (void)Device::init();
    const auto first = newPhone("one");
    usb.attach(first);
    ASSERT_TRUE(hears({"+one"}));
    const std::shared_ptr<Device> earlier = delegate.last;
    usb.attach(first);
    ASSERT_TRUE(hears({"+one", "+one"}));
    const std::shared_ptr<Device> later = delegate.last;
    EXPECT_NE(earlier, later);
    usb.detach(first);
    ASSERT_TRUE(hears({"+one", "+one", "-one"}));
    EXPECT_EQ(delegate.last, later);
}

TEST_F(PhoneHub, SaysSoWhenNoDeviceCouldBeMade)
{
    (void)Device::init();
    PhoneFamily::shared().arrived(nullptr);
    ASSERT_TRUE(waitUntil([&] { return delegate.failures.size() == 1; }));
    EXPECT_EQ(delegate.failures[0], "Error occurred when trying to init AFC device.");
}

TEST_F(PhoneHub, AnnouncesNoPhonesAfterTheEnd)
{
    (void)Device::init();
    usb.attach(newPhone("one"));
    ASSERT_TRUE(hears({"+one"}));
    Device::uninit();
    usb.attach(newPhone("two"));
    QThread::msleep(300);
    QCoreApplication::processEvents();
    EXPECT_EQ(delegate.events, QStringList{"+one"});
}

TEST_F(PhoneHub, NeedsNoListener)
{
    Device::setDelegate(nullptr);
    (void)Device::init();
    const auto phone = newPhone("one");
    usb.attach(phone);
    EXPECT_TRUE(waitUntil([] { return PhoneDevice::hasHeardOf({"one"}); }));
    usb.detach(phone);
    PhoneFamily::shared().arrived(nullptr);
    QThread::msleep(200);
    QCoreApplication::processEvents();
    EXPECT_TRUE(delegate.events.isEmpty());
}
