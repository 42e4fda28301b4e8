#pragma once

#include "support/Files.h"
#include "support/phone/SimulatedUsb.h"

#include <gtest/gtest.h>

#include <numeric>

/// Half of the tests talk to their phones encrypted, the others in the clear; which do is settled
/// by their names.
inline bool isEncryptedInThisTest()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    const QByteArray name = test ? test->name() : "";
    return std::accumulate(name.begin(), name.end(), 0) % 2 == 0;
}

/// A phone whose files are a folder, on a simulated USB that the phone libraries find.
class PhoneFixture : public testing::Test
{
protected:
    PhoneFixture()
        : usb(_folder.filePath("usb"))
    {
        qputenv("USBMUXD_SOCKET_ADDRESS", usb.address());
        QDir().mkpath(_folder.filePath("phone/iTunes_Control"));
    }

    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }
    [[nodiscard]] QString onPhone(const QString& name) const { return path("phone" + name); }

    std::shared_ptr<SimulatedPhone> newPhone(const QString& identifier = "0123456789abcdef")
    {
        SimulatedPhone::Identity identity;
        identity.identifier = identifier;
        identity.root = path("phone");
        identity.tls = isEncryptedInThisTest();
        return std::make_shared<SimulatedPhone>(identity);
    }

private:
    QTemporaryDir _folder;

protected:
    SimulatedUsb usb;
};
