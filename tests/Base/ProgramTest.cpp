#include "Base/Program.h"

#include <gtest/gtest.h>

TEST(ProgramTest, NamesItself)
{
    EXPECT_EQ(Program::briefName(), "Zell iPod iPhone Transfer");
    EXPECT_EQ(Program::fullName(), "Zell iPod/iPhone Transfer");
}

TEST(ProgramTest, HasTheVersionThatTheBuildHas)
{
    EXPECT_EQ(Program::version(), ZELL_BUILD_VERSION);
}
