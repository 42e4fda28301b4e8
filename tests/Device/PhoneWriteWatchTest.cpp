#include "support/phone/PhoneWriteWatch.h"

#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <libimobiledevice/afc.h>

namespace
{
/// The program has no call that would write, so these tests use the library's.
class PhoneWriteWatchTest : public ConnectedPhone
{
protected:
    PhoneWriteWatchTest()
    {
        EXPECT_EQ(idevice_new(&_device, plugged->identifier().toUtf8().constData()), 0);
        EXPECT_EQ(afc_client_start_service(_device, &client, "test"), 0);
    }
    ~PhoneWriteWatchTest() override
    {
        afc_client_free(client);
        idevice_free(_device);
    }

    static void endTest()
    {
        PhoneWriteWatch().OnTestEnd(*testing::UnitTest::GetInstance()->current_test_info());
    }

    afc_client_t client = nullptr;

private:
    idevice_t _device = nullptr;
};
ZELL_ON_EACH_WIRE(PhoneWriteWatchTest);
} // namespace

TEST_P(PhoneWriteWatchTest, FailsATestThatWroteToAPhone)
{
    EXPECT_NE(afc_remove_path(client, "/missing"), 0);
    EXPECT_NONFATAL_FAILURE(endTest(), "operation 0x08 of the file service");
}

TEST_P(PhoneWriteWatchTest, FailsATestThatOpenedAFileForWriting)
{
    Files::write(onPhone("/a"), "a");
    std::uint64_t handle = 0;
    EXPECT_NE(afc_file_open(client, "/a", AFC_FOPEN_WRONLY, &handle), 0);
    EXPECT_NONFATAL_FAILURE(endTest(), "operation 0x0d of the file service");
    EXPECT_EQ(Files::read(onPhone("/a")), "a");
}

TEST_P(PhoneWriteWatchTest, HasNothingAgainstReading)
{
    Files::write(onPhone("/a"), "a");
    EXPECT_EQ(*files().read("/a"), "a");
    EXPECT_EQ(files().entries("/")->size(), 2U);
    endTest();
    EXPECT_EQ(phone->writes(), 0);
}

TEST_P(PhoneWriteWatchTest, HasNothingAgainstWritingOnPurpose)
{
    phone->expectWrites();
    EXPECT_NE(afc_make_directory(client, "/folder"), 0);
    endTest();
    EXPECT_EQ(phone->writes(), 1);
    EXPECT_FALSE(QFileInfo::exists(onPhone("/folder")));
}
