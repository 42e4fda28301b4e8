#include "Base/Exception.h"

#include <gtest/gtest.h>

TEST(ExceptionTest, KeepsNameReasonAndTheAddressesOfTheThrow)
{
    try {
        throw Exception("NSRangeException", "4 bytes at 13 of 16");
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "NSRangeException: 4 bytes at 13 of 16");
        const auto& exception = dynamic_cast<const Exception&>(error);
        EXPECT_EQ(exception.name(), "NSRangeException");
        EXPECT_EQ(exception.reason(), "4 bytes at 13 of 16");
        EXPECT_FALSE(exception.returnAddresses().empty());
    }
}
