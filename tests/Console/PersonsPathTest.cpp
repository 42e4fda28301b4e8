#include "Console/PersonsPath.h"

#include "support/Files.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

TEST(PersonsPath, ResolvesTheOwnHome)
{
    EXPECT_EQ(PersonsPath::expanded("~"), QDir::homePath());
    EXPECT_EQ(PersonsPath::expanded("~/a b/c"), QDir::homePath() + "/a b/c");
}

TEST(PersonsPath, ResolvesAnothersHome)
{
    const passwd* person = getpwuid(geteuid());
    ASSERT_NE(person, nullptr);
    EXPECT_EQ(PersonsPath::expanded(QString("~%1/x").arg(person->pw_name)),
              QString::fromLocal8Bit(person->pw_dir) + "/x");
}

TEST(PersonsPath, LeavesAllElse)
{
    for (const char* path : {"", "/a/~/b", "a~", "~nobody-of-that-name/x", "./~"})
        EXPECT_EQ(PersonsPath::expanded(path), path);
}
