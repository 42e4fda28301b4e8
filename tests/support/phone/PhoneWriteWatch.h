#pragma once

#include "support/phone/SimulatedPhone.h"

#include <gtest/gtest.h>

/// Fails each test in which a simulated phone was asked for anything that changes a phone, unless
/// the test had said so: the program only reads from devices.
class PhoneWriteWatch final : public testing::EmptyTestEventListener
{
public:
    /// For all tests of this program.
    static void install()
    {
        testing::UnitTest::GetInstance()->listeners().Append(new PhoneWriteWatch);
    }

    void OnTestEnd(const testing::TestInfo& /*test*/) override
    {
        const QStringList writes = SimulatedPhone::takeUnexpectedWrites();
        EXPECT_TRUE(writes.isEmpty()) << writes.join(QStringLiteral("\n")).toStdString();
    }
};
