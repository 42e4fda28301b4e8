#include "Platform/MobileDevice.h"

#include "Platform/PhoneFileService.h"
#include "support/EventLoop.h"
#include "support/phone/PhoneFixture.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

using MobileDevice::Handle;
using MobileDevice::Service;

namespace
{
const QString FileService = QStringLiteral("com.apple.afc");

/// Phones of an old and a new kind, in the clear and encrypted.
struct Kind {
    const char* name;
    const char* version;
    bool tls;
};
void PrintTo(const Kind& kind, std::ostream* out)
{
    *out << kind.name;
}

class PhoneSession : public PhoneFixture, public testing::WithParamInterface<Kind>
{
protected:
    PhoneSession()
    {
        SimulatedPhone::Identity identity;
        identity.identifier = "00008030001A2B3C4D5E6F70";
        identity.root = path("phone");
        identity.version = GetParam().version;
        identity.tls = GetParam().tls;
        phone = std::make_shared<SimulatedPhone>(identity);
        usb.attach(phone);
        std::vector<QString> identifiers;
        EXPECT_EQ(MobileDevice::attachedIdentifiers(identifiers), 0);
        handle = std::make_unique<Handle>(MobileDevice::Attachment{1, 2, identifiers.at(0)});
    }

    std::shared_ptr<PhoneFileService> connection()
    {
        Service service;
        int error = 0;
        EXPECT_EQ(handle->connect(), 0);
        EXPECT_TRUE(handle->isPaired());
        EXPECT_EQ(handle->validatePairing(), 0);
        EXPECT_EQ(handle->startSession(), 0);
        EXPECT_EQ(handle->startService(FileService, service), 0);
        EXPECT_TRUE(service);
        auto afc = PhoneFileService::open(*handle, service, error);
        EXPECT_EQ(error, 0);
        return afc;
    }
    void change(const std::function<void(PhoneFaults&)>& what) { phone->changeFaults(what); }

    std::shared_ptr<SimulatedPhone> phone;
    std::unique_ptr<Handle> handle;
};

INSTANTIATE_TEST_SUITE_P(, PhoneSession,
                         testing::Values(Kind{"NewEncrypted", "15.2", true},
                                         Kind{"OldEncrypted", "6.1", true},
                                         Kind{"NewClear", "9.0", false},
                                         Kind{"OldClear", "5.0", false}),
                         [](const auto& kind) { return std::string(kind.param.name); });
} // namespace

TEST_P(PhoneSession, LeadsToTheFiles)
{
    Files::write(onPhone("/Books/a.txt"), "words");
    const auto afc = connection();
    ASSERT_TRUE(afc);
    const quint64 file = afc->wait(afc->askToOpen("/Books/a.txt")).handle;
    ASSERT_NE(file, 0U);
    EXPECT_EQ(afc->wait(afc->askToRead(file, 100)).data, "words");
    EXPECT_EQ(afc->wait(afc->askToRead(file, 100)).data, "");
    EXPECT_TRUE(afc->wait(afc->askToClose(file)).isGood());
    EXPECT_EQ(usb.savedRecords(), 0);
}

TEST_P(PhoneSession, EndsTheFormerConnectionWhenItConnectsOnceMore)
{
    EXPECT_EQ(handle->connect(), 0);
    const int before = QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(handle->connect(), 0);
    const auto now = [] {
        return QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size();
    };
    // Ends that still wait for the phone are waited for by nobody.
    EXPECT_TRUE(waitUntil([&] { return now() < before + 10; }));
}

TEST_P(PhoneSession, IsRefusedWithoutAPairingRecord)
{
    change([](PhoneFaults& faults) { faults.hasRecord = false; });
    EXPECT_EQ(handle->connect(), 0);
    EXPECT_FALSE(handle->isPaired());
    EXPECT_FALSE(phone->requests().contains("Pair"));
}

TEST_P(PhoneSession, IsRefusedByAPhoneThatForgotTheComputer)
{
    change([](PhoneFaults& faults) { faults.knowsHost = false; });
    EXPECT_EQ(handle->connect(), 0);
    EXPECT_TRUE(handle->isPaired());
    EXPECT_EQ(handle->validatePairing(), -21);
    EXPECT_FALSE(phone->requests().contains("Pair"));
}

TEST_P(PhoneSession, IsRefusedByALockedPhone)
{
    change([](PhoneFaults& faults) { faults.locked = true; });
    EXPECT_EQ(handle->connect(), 0);
    EXPECT_EQ(handle->validatePairing(), 0);
    EXPECT_EQ(handle->startSession(), -17);
}

TEST_P(PhoneSession, PassesOnWhyAServiceIsRefused)
{
    change([](PhoneFaults& faults) { faults.serviceError = "InvalidService"; });
    EXPECT_EQ(handle->connect(), 0);
    EXPECT_EQ(handle->startSession(), 0);
    Service service;
    EXPECT_EQ(handle->startService(FileService, service), -27);
    EXPECT_FALSE(service);
}

TEST_P(PhoneSession, NeedsThePhone)
{
    usb.detach(phone);
    EXPECT_NE(handle->connect(), 0);
}

TEST_P(PhoneSession, EndsWithGarbage)
{
    change([](PhoneFaults& faults) { faults.garbageAtDoor = true; });
    EXPECT_NE(handle->connect(), 0);
}

namespace
{
class PhoneNotification : public PhoneFixture
{
protected:
    struct Heard {
        std::mutex mutex;
        std::condition_variable changed;
        QStringList words;
        std::vector<quint32> numbers;
    };

    /// The subscription is for the life of the process, and so is what it tells.
    static Heard& heard()
    {
        static Heard& all = *new Heard;
        static const int result =
            MobileDevice::subscribe([](MobileDevice::Message message, const auto& attachment) {
                const std::lock_guard lock(all.mutex);
                all.words.append(QString("%1 %2").arg(int(message)).arg(attachment.identifier));
                all.numbers.push_back(attachment.deviceID);
                all.changed.notify_all();
            });
        EXPECT_EQ(result, 0);
        return all;
    }
    static bool hears(const QStringList& words)
    {
        Heard& all = heard();
        std::unique_lock lock(all.mutex);
        return all.changed.wait_for(lock, std::chrono::seconds(10),
                                    [&] { return all.words == words; });
    }
};
} // namespace

TEST_F(PhoneNotification, TellsOfPhonesThatComeGoAndPair)
{
    const auto first = newPhone("first");
    const auto second = newPhone("second");
    usb.attach(first);
    ASSERT_TRUE(hears({"1 first"}));
    usb.attach(second);
    ASSERT_TRUE(hears({"1 first", "1 second"}));
    usb.tellPaired(first);
    ASSERT_TRUE(hears({"1 first", "1 second", "3 first"}));
    usb.detach(first);
    ASSERT_TRUE(hears({"1 first", "1 second", "3 first", "2 first"}));
    Heard& all = heard();
    const std::lock_guard lock(all.mutex);
    EXPECT_EQ(all.numbers[0], all.numbers[3]);
    EXPECT_NE(all.numbers[0], all.numbers[1]);
}

TEST(PhoneOnUsb, IsSeenByItsNumbers)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(MobileDevice::isPhoneOnUsb(folder.path()));
    Files::write(folder.filePath("1-1/idVendor"), "05ac\n");
    Files::write(folder.filePath("1-1/idProduct"), "1209\n");
    EXPECT_FALSE(MobileDevice::isPhoneOnUsb(folder.path()));
    Files::write(folder.filePath("1-2/idVendor"), "05ac\n");
    Files::write(folder.filePath("1-2/idProduct"), "12a8\n");
    EXPECT_TRUE(MobileDevice::isPhoneOnUsb(folder.path()));
}
