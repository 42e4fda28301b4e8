#include "Console/NearMatch.h"

#include "support/Files.h"

#include <gtest/gtest.h>

namespace
{
const QStringList Words = {"devices", "list", "dump", "export"};
}

TEST(NearMatch, FindsAWordWithASlip)
{
    EXPECT_EQ(NearMatch::of("exprot", Words), "export");
    EXPECT_EQ(NearMatch::of("lst", Words), "list");
    EXPECT_EQ(NearMatch::of("DUMPS", Words), "dump");
    EXPECT_EQ(NearMatch::of("device", Words), "devices");
    EXPECT_EQ(NearMatch::of("exp", Words), "export");
}

TEST(NearMatch, FindsNothingNearByForceOfWill)
{
    for (const QString& word : {QString("nonsense"), QString(), QString("x"), QString(100000, 'd')})
        EXPECT_EQ(NearMatch::of(word, Words), QString());
    EXPECT_EQ(NearMatch::of("list", {}), QString());
}
