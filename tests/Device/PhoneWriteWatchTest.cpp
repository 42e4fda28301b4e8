#include "support/phone/PhoneWriteWatch.h"

#include "support/phone/ConnectedPhone.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace
{
class PhoneWriteWatchTest : public ConnectedPhone
{
protected:
    static void endTest()
    {
        PhoneWriteWatch().OnTestEnd(*testing::UnitTest::GetInstance()->current_test_info());
    }
};
} // namespace

TEST_F(PhoneWriteWatchTest, FailsATestThatWroteToAPhone)
{
    files().removePath("/missing");
    EXPECT_NONFATAL_FAILURE(endTest(), "operation 0x08 of the file service");
}

TEST_F(PhoneWriteWatchTest, FailsATestThatOpenedAFileForWriting)
{
    Files::write(onPhone("/a"), "a");
    files().closeFile(files().openFileAtPath("/a", 3));
    EXPECT_NONFATAL_FAILURE(endTest(), "operation 0x0d of the file service");
}

TEST_F(PhoneWriteWatchTest, HasNothingAgainstReading)
{
    Files::write(onPhone("/a"), "a");
    EXPECT_EQ(afc->contentsOfFileAtPath("/a"), "a");
    EXPECT_EQ(afc->listOfFilesAtPath("/"), QStringList{"a"});
    EXPECT_TRUE(files().getDeviceAttributes());
    endTest();
    EXPECT_EQ(phone->writes(), 0);
}

TEST_F(PhoneWriteWatchTest, HasNothingAgainstWritingOnPurpose)
{
    phone->expectWrites();
    EXPECT_TRUE(files().createDirectory("/folder"));
    endTest();
    EXPECT_EQ(phone->writes(), 1);
}
