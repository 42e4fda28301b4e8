#pragma once

#include "Device/iPhone/PhoneSession.h"
#include "Device/iPhone/PluggedPhone.h"
#include "support/phone/PhoneFixture.h"

/// How a phone is talked to.
enum class Wire { Clear, Encrypted };

inline std::string wireName(const testing::TestParamInfo<Wire>& wire)
{
    return wire.param == Wire::Clear ? "Clear" : "Encrypted";
}

/// A phone with an open session, without the hub, in the clear and encrypted.
class ConnectedPhone : public PhoneFixture, public testing::WithParamInterface<Wire>
{
protected:
    ConnectedPhone()
    {
        SimulatedPhone::Identity identity;
        identity.identifier = "0123456789abcdef";
        identity.root = path("phone");
        identity.tls = GetParam() == Wire::Encrypted;
        phone = std::make_shared<SimulatedPhone>(identity);
        usb.attach(phone);
        session = PhoneSession::open(plugged);
        phone->forget();
    }

    [[nodiscard]] PhoneFiles& files() const { return session->files(); }
    [[nodiscard]] PhoneFileService& service() const { return files().service(); }
    void change(const std::function<void(PhoneFaults&)>& what) { phone->changeFaults(what); }

    std::shared_ptr<SimulatedPhone> phone;
    std::shared_ptr<PluggedPhone> plugged =
        std::make_shared<PluggedPhone>(MobileDevice::Attachment{1, 0x12a8, "0123456789abcdef"});
    std::shared_ptr<PhoneSession> session;
};

/// For tests of a ConnectedPhone.
#define ZELL_ON_EACH_WIRE(Suite)                                                                   \
    INSTANTIATE_TEST_SUITE_P(, Suite, testing::Values(Wire::Clear, Wire::Encrypted), wireName)
