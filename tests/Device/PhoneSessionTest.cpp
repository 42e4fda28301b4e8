#include "Device/iPhone/PhoneSession.h"

#include "Base/Exception.h"
#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest.h>

namespace
{
/// What opening a phone in some state throws.
struct Refusal {
    const char* name;
    std::function<void(PhoneFaults&)> fault;
    const char* reason;
};

const Refusal Refusals[] = {
    {"NotPaired", [](PhoneFaults& f) { f.hasRecord = false; }, "Device pairing failed"},
    {"Forgotten", [](PhoneFaults& f) { f.knowsHost = false; },
     "AMDeviceValidatePairing failed with error -21"},
    {"Locked", [](PhoneFaults& f) { f.locked = true; },
     "AMDeviceStartSession failed with error -17"},
    {"NoService", [](PhoneFaults& f) { f.serviceError = "ServiceProhibited"; },
     "AMDeviceStartService failed with error -34"},
    {"NoHandle", [](PhoneFaults& f) { f.noServiceHandle = true; },
     "AMDeviceStartService didn't initialise a connection"},
    {"NoConnection", [](PhoneFaults& f) { f.refusesConnection = true; },
     "AFCConnectionOpen failed with error 30"},
    {"Garbage", [](PhoneFaults& f) { f.garbageAtDoor = true; },
     "AMDeviceConnect failed with error -256"}};

using PhoneSessionTest = ConnectedPhone;
ZELL_ON_EACH_WIRE(PhoneSessionTest);

QString reasonOf(const std::shared_ptr<PluggedPhone>& phone)
{
    try {
        (void)PhoneSession::open(phone);
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.name(), "AFCDevice");
        return exception.reason();
    }
    return {};
}
} // namespace

TEST_P(PhoneSessionTest, SaysWhichStepFailedAndNeverPairs)
{
    for (const Refusal& refusal : Refusals) {
        PhoneFaults faults;
        refusal.fault(faults);
        phone->setFaults(faults);
        EXPECT_EQ(reasonOf(plugged), refusal.reason) << refusal.name;
    }
    EXPECT_FALSE(phone->requests().contains("Pair"));
    EXPECT_EQ(usb.savedRecords(), 0);
}

TEST_P(PhoneSessionTest, IsNoneWithoutAPhone)
{
    EXPECT_EQ(PhoneSession::open(nullptr), nullptr);
}

TEST_P(PhoneSessionTest, CannotBeOpenedOnceThePhoneIsGone)
{
    usb.detach(phone);
    EXPECT_EQ(reasonOf(plugged), "AMDeviceConnect failed with error -3");
}

TEST_P(PhoneSessionTest, CanBeOpenedBesideOneThatIsLost)
{
    usb.cutConnections(phone);
    EXPECT_TRUE(files().info("/").failedAs(Failure::Kind::Lost));
    const auto next = PhoneSession::open(plugged);
    EXPECT_TRUE(next->files().info("/"));
    EXPECT_FALSE(next->whyGone());
    EXPECT_TRUE(session->whyGone());
}

TEST_P(PhoneSessionTest, KnowsWhyThePhoneIsGone)
{
    EXPECT_FALSE(session->whyGone());
    plugged->leave(); // nothing was asked since
    EXPECT_EQ(session->whyGone()->words, "The device was disconnected");
    EXPECT_EQ(session->whyGone()->kind, Failure::Kind::Lost);
}

TEST_P(PhoneSessionTest, GivesTheFirstReasonForGood)
{
    service().setPatience(std::chrono::milliseconds(200));
    change([](PhoneFaults& faults) { faults.hangAfterOperations = 0; });
    EXPECT_FALSE(files().info("/"));
    EXPECT_EQ(session->whyGone()->words, "The device does not answer");
    usb.detach(phone);
    plugged->leave();
    EXPECT_EQ(session->whyGone()->words, "The device does not answer");
}
