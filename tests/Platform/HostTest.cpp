#include "Platform/Host.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

TEST(HostTest, KnowsItsMemory)
{
    EXPECT_GT(Host::availableMemory(), 1.0);
    EXPECT_LT(Host::availableMemory(), 2147483647.0);
}

TEST(HostTest, HasAName)
{
    EXPECT_FALSE(Host::computerName().isEmpty());
}

TEST(HostTest, GivesADottedAddressOrNone)
{
    const QString address = Host::currentIP4Address();
    EXPECT_FALSE(address.isNull());
    static const QRegularExpression dotted("^(\\d+\\.\\d+\\.\\d+\\.\\d+)?$");
    EXPECT_TRUE(dotted.match(address).hasMatch()) << qPrintable(address);
    EXPECT_FALSE(address.startsWith("127."));
}
