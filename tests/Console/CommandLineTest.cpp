#include "support/ConsoleRun.h"

#include <gtest/gtest.h>

struct UsageCase {
    const char* name;
    QStringList arguments;
};
void PrintTo(const UsageCase& c, std::ostream* out)
{
    *out << c.name;
}

class WrongUsage : public testing::TestWithParam<UsageCase>
{
};

TEST_P(WrongUsage, EndsWithTwoAndWordsOnStandardError)
{
    const ConsoleRun run(GetParam().arguments);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_FALSE(run.errors.isEmpty());
    EXPECT_TRUE(run.output.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    , WrongUsage,
    testing::Values(UsageCase{"NoCommand", {}}, UsageCase{"UnknownCommand", {"sing"}},
                    UsageCase{"UnknownOption", {"list", "--loud"}},
                    UsageCase{"UnknownCategory", {"list", "songs"}},
                    UsageCase{"NothingToExport", {"export"}},
                    UsageCase{"UnknownWhat", {"export", "everything"}},
                    UsageCase{"UnknownClashRule", {"export", "all", "--clash", "ask"}},
                    UsageCase{"WaitForAWord", {"devices", "--wait", "long"}}),
    [](const auto& c) { return std::string(c.param.name); });

class Help : public testing::TestWithParam<UsageCase>
{
};

TEST_P(Help, IsPrintedOnStandardOutput)
{
    const ConsoleRun help(GetParam().arguments + QStringList("--help"));
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.text().contains("--help"));
    EXPECT_TRUE(help.errors.isEmpty());
    const ConsoleRun version(GetParam().arguments + QStringList("--version"));
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.text(), QString("Zell iPod iPhone Transfer %1\n").arg(ZELL_BUILD_VERSION));
}

INSTANTIATE_TEST_SUITE_P(, Help,
                         testing::Values(UsageCase{"Program", {}},
                                         UsageCase{"Devices", {"devices"}},
                                         UsageCase{"List", {"list"}}, UsageCase{"Dump", {"dump"}},
                                         UsageCase{"Export", {"export"}}),
                         [](const auto& c) { return std::string(c.param.name); });
