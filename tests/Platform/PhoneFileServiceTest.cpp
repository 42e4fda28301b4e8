#include "Platform/PhoneFileService.h"

#include "support/phone/PhoneFixture.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <thread>

using namespace std::chrono_literals;
using End = PhoneAnswer::End;
using Loss = PhoneFileService::Loss;

namespace
{
/// A connection to a phone's files, in the clear and encrypted.
class PhoneFileServiceTest : public PhoneFixture, public testing::WithParamInterface<bool>
{
protected:
    PhoneFileServiceTest()
    {
        SimulatedPhone::Identity identity;
        identity.identifier = "one";
        identity.root = path("phone");
        identity.tls = GetParam();
        phone = std::make_shared<SimulatedPhone>(identity);
        usb.attach(phone);
        open();
    }

    void open()
    {
        handle = std::make_unique<MobileDevice::Handle>(MobileDevice::Attachment{1, 2, "one"});
        MobileDevice::Service started;
        int error = 0;
        EXPECT_EQ(handle->connect(), 0);
        EXPECT_EQ(handle->startSession(), 0);
        EXPECT_EQ(handle->startService("com.apple.afc", started), 0);
        service = PhoneFileService::open(*handle, started, error);
        EXPECT_EQ(error, 0);
        phone->forget();
    }
    void change(const std::function<void(PhoneFaults&)>& what) { phone->changeFaults(what); }
    PhoneAnswer info(const QString& of = "/") { return service->wait(service->askForInfo(of)); }
    quint64 openFile(const QString& name) { return service->wait(service->askToOpen(name)).handle; }

    std::shared_ptr<SimulatedPhone> phone;
    std::unique_ptr<MobileDevice::Handle> handle;
    std::shared_ptr<PhoneFileService> service;
};

INSTANTIATE_TEST_SUITE_P(, PhoneFileServiceTest, testing::Bool(), [](const auto& isEncrypted) {
    return isEncrypted.param ? "Encrypted" : "Clear";
});

/// What a phone may do to an answer that makes it none, whatever it answers.
struct Nonsense {
    const char* name;
    std::function<void(QByteArray&)> distort;
};
const Nonsense Nonsenses[] = {
    {"signature", [](QByteArray& a) { a[0] = 'X'; }},
    {"entire length below the head's",
     [](QByteArray& a) { qToLittleEndian<quint64>(39, a.data() + 8); }},
    {"entire length without end",
     [](QByteArray& a) { qToLittleEndian<quint64>(UINT64_MAX, a.data() + 8); }},
    {"fixed length over the entire",
     [](QByteArray& a) { qToLittleEndian<quint64>(1 << 20, a.data() + 16); }},
    {"fixed length below the head's",
     [](QByteArray& a) { qToLittleEndian<quint64>(0, a.data() + 16); }},
    {"number of a former question",
     [](QByteArray& a) { qToLittleEndian<quint64>(1000, a.data() + 24); }},
    {"kind", [](QByteArray& a) { qToLittleEndian<quint64>(0x0F, a.data() + 32); }},
    {"handle instead of data",
     [](QByteArray& a) {
         qToLittleEndian<quint64>(48, a.data() + 8);
         qToLittleEndian<quint64>(48, a.data() + 16);
         qToLittleEndian<quint64>(0x0E, a.data() + 32);
         a.resize(48);
     }},
};
} // namespace

TEST_P(PhoneFileServiceTest, CreatesNoMissingFileByReadingIt)
{
    const PhoneAnswer answer = service->wait(service->askToOpen("/missing"));
    EXPECT_EQ(answer.end, End::Answered);
    EXPECT_EQ(answer.status, 8U);
    EXPECT_FALSE(QFileInfo::exists(onPhone("/missing")));
}

TEST_P(PhoneFileServiceTest, AnswersManyQuestionsInTheirOrder)
{
    std::vector<PhoneFileService::Asked> asked;
    for (int i = 0; i < 300; ++i) {
        Files::write(onPhone(QString("/%1").arg(i)), QByteArray(i, 'x'));
        asked.push_back(service->askForInfo(QString("/%1").arg(i)));
    }
    for (int i = 299; i >= 0; --i) {
        const QByteArray size = "st_size" + QByteArray(1, '\0') + QByteArray::number(i) + '\0';
        EXPECT_TRUE(service->wait(asked[std::size_t(i)]).data.startsWith(size)) << i;
    }
}

TEST_P(PhoneFileServiceTest, LosesAConnectionThatIsCut)
{
    Files::write(onPhone("/a"), Files::content(5000));
    const quint64 file = openFile("/a");
    EXPECT_EQ(service->loss(), Loss::None);
    std::atomic<int> losses = 0;
    service->setLostHandler([&] { ++losses; });
    usb.cutConnections(phone);
    EXPECT_EQ(service->wait(service->askToRead(file, 10)).end, End::Lost);
    EXPECT_EQ(service->wait(service->askToClose(file)).end, End::Lost);
    EXPECT_EQ(service->loss(), Loss::Disconnected);
    EXPECT_EQ(losses, 1);
}

TEST_P(PhoneFileServiceTest, LosesAConnectionToNonsense)
{
    for (const Nonsense& nonsense : Nonsenses) {
        open();
        change([&](PhoneFaults& faults) {
            faults.distort = [&](quint64, QByteArray& answer) { nonsense.distort(answer); };
        });
        EXPECT_EQ(info().end, End::Lost) << nonsense.name;
        EXPECT_EQ(service->loss(), Loss::Nonsense) << nonsense.name;
        change([](PhoneFaults& faults) { faults = {}; });
    }
}

TEST_P(PhoneFileServiceTest, LosesAConnectionThatAnswersMoreThanWasAskedFor)
{
    Files::write(onPhone("/a"), "12345");
    const quint64 file = openFile("/a");
    EXPECT_EQ(service->wait(service->askToRead(file, 3)).data, "123");
    change([](PhoneFaults& faults) {
        faults.distort = [](quint64, QByteArray& answer) {
            answer += "more";
            qToLittleEndian<quint64>(quint64(answer.size()), answer.data() + 8);
        };
    });
    EXPECT_EQ(service->wait(service->askToRead(file, 2)).end, End::Lost);
    EXPECT_EQ(service->loss(), Loss::Nonsense);
}

TEST_P(PhoneFileServiceTest, BelievesNoLengthBeforeTheBytesAreThere)
{
    // 60 MiB of names are possible; that they never come costs neither the memory nor the wait.
    service->setPatience(100ms);
    change([](PhoneFaults& faults) {
        faults.distort = [](quint64, QByteArray& answer) {
            qToLittleEndian<quint64>(60 << 20, answer.data() + 8);
        };
    });
    EXPECT_EQ(service->wait(service->askForNames("/")).end, End::Lost);
    EXPECT_EQ(service->loss(), Loss::Silent);
}

TEST_P(PhoneFileServiceTest, GivesAHangingPhoneUp)
{
    service->setPatience(200ms);
    change([](PhoneFaults& faults) { faults.hangAfterOperations = 0; });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(info().end, End::Lost);
    EXPECT_EQ(info().end, End::Lost);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(service->loss(), Loss::Silent);
}

TEST_P(PhoneFileServiceTest, TakesItsTimeWithASlowPhone)
{
    // Far longer than the patience, and never that long without a byte.
    service->setPatience(500ms);
    Files::write(onPhone("/a"), Files::content(20'000));
    const quint64 file = openFile("/a");
    change([](PhoneFaults& faults) { faults.bytesAtATime = 10; });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(service->wait(service->askToRead(file, 20'000)).data, Files::content(20'000));
    EXPECT_GT(std::chrono::steady_clock::now() - start, 1s);
}

TEST_P(PhoneFileServiceTest, GivesUpAPhoneThatStallsAnywhereInItsAnswer)
{
    Files::write(onPhone("/a"), Files::content(40'000));
    for (const qint64 bytes : {0, 1, 4, 5, 39, 40, 100, 5000, 20'000}) {
        open();
        service->setPatience(100ms);
        const quint64 file = openFile("/a");
        change([&](PhoneFaults& faults) { faults.linkStallsAfter = bytes; });
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(service->wait(service->askToRead(file, 40'000)).end, End::Lost) << bytes;
        EXPECT_EQ(service->loss(), Loss::Silent) << bytes;
        EXPECT_LT(std::chrono::steady_clock::now() - start, 2s) << bytes;
        change([](PhoneFaults& faults) { faults = {}; });
    }
}

TEST_P(PhoneFileServiceTest, EndsAWaitThatSomebodyGivesUpAndDropsTheLateAnswer)
{
    change([](PhoneFaults& faults) { faults.stallAfterBytes = 30; });
    int questions = 0;
    const auto asked = service->askForInfo("/");
    EXPECT_EQ(service->wait(asked, [&] { return ++questions < 2; }).end, End::GivenUp);
    EXPECT_EQ(service->loss(), Loss::None);
    change([](PhoneFaults& faults) { faults = {}; });
    EXPECT_TRUE(info().isGood());
}

TEST_P(PhoneFileServiceTest, EndsEveryWaitForAPhoneThatNobodyNeeds)
{
    change([](PhoneFaults& faults) { faults.hangAfterOperations = 0; });
    std::jthread giver([this] {
        std::this_thread::sleep_for(50ms);
        service->giveUp();
    });
    EXPECT_EQ(info().end, End::GivenUp);
    EXPECT_EQ(info().end, End::GivenUp);
}

TEST_P(PhoneFileServiceTest, EndsAtOnceWhileThePhoneHangs)
{
    change([](PhoneFaults& faults) { faults.hangAfterOperations = 0; });
    std::atomic<int> losses = 0;
    service->setLostHandler([&] { ++losses; });
    (void)service->askForInfo("/");
    const auto start = std::chrono::steady_clock::now();
    service.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
    EXPECT_EQ(losses, 0) << "it was not lost";
}

TEST_P(PhoneFileServiceTest, EndsWaitsOfOtherThreadsWhenTheConnectionEnds)
{
    change([](PhoneFaults& faults) { faults.hangAfterOperations = 0; });
    std::vector<std::jthread> waiting;
    for (int i = 0; i < 4; ++i)
        waiting.emplace_back([this] { EXPECT_EQ(info().end, End::Lost); });
    while (phone->operations() == 0)
        std::this_thread::sleep_for(1ms);
    usb.detach(phone);
}

TEST_P(PhoneFileServiceTest, AsksNothingAboutPathsThatNoPhoneHas)
{
    EXPECT_EQ(info(QString("/a") + QChar(0) + "b").status, 8U);
    EXPECT_EQ(info(QString(100'000, 'x')).status, 8U);
    EXPECT_EQ(service->wait(service->askForNames(QString(100'000, 'x'))).status, 8U);
    EXPECT_EQ(service->wait(service->askToOpen(QString(100'000, 'x'))).status, 7U);
    EXPECT_EQ(phone->operations(), 0);
}
