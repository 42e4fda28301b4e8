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
                    UsageCase{"UnknownWhat", {"export", "songs"}},
                    UsageCase{"UnknownClashRule", {"export", "all", "--clash", "ask"}},
                    UsageCase{"EmptyDestination", {"export", "all", "--to", ""}},
                    UsageCase{"EmptyReport", {"export", "all", "--report="}},
                    UsageCase{"EmptyDevice", {"list", "--device", ""}},
                    UsageCase{"EmptyPreviews", {"dump", "--previews", ""}},
                    UsageCase{"EmptyCategory", {"list", ""}},
                    UsageCase{"WaitForAWord", {"devices", "--wait", "long"}},
                    UsageCase{"WaitForNoNumber", {"devices", "--wait", "nan"}},
                    UsageCase{"WaitForNegativeTime", {"list", "--wait", "-1"}},
                    UsageCase{"WaitForADay", {"list", "--wait", "86400"}}),
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

struct ComplaintCase {
    const char* name;
    QStringList arguments;
    QStringList said;
};
void PrintTo(const ComplaintCase& c, std::ostream* out)
{
    *out << c.name;
}

class Complaint : public testing::TestWithParam<ComplaintCase>
{
};

TEST_P(Complaint, NamesTheWordAndWhatThereIs)
{
    const ConsoleRun run(GetParam().arguments);
    EXPECT_EQ(run.exitCode, 2);
    for (const QString& text : GetParam().said)
        EXPECT_TRUE(run.errors.contains(text))
            << text.toStdString() << " in: " << run.errors.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    , Complaint,
    testing::Values(
        ComplaintCase{"Command", {"nonsense"}, {"\"nonsense\"", "devices, list, dump, export"}},
        ComplaintCase{"CommandNearAnother", {"exprot", "all"}, {"Did you mean \"export\"?"}},
        ComplaintCase{"NoCommand", {}, {"devices, list, dump, export"}},
        ComplaintCase{"Option", {"list", "--foo"}, {"\"--foo\"", "--device", "--json"}},
        ComplaintCase{"OptionOfNoCommand", {"--foo"}, {"\"--foo\"", "--version"}},
        ComplaintCase{"OptionBeforeWhat", {"export", "--foo"}, {"\"--foo\"", "--clash"}},
        ComplaintCase{"OptionWithAValue",
                      {"export", "all", "--too=/tmp/x"},
                      {"\"--too\"", "Did you mean \"--to\"?"}},
        ComplaintCase{"Category", {"list", "vidoes"}, {"\"vidoes\"", "tvShows", "photos"}},
        ComplaintCase{"CategoryNearAnother", {"list", "podcast"}, {"Did you mean \"podcasts\"?"}},
        ComplaintCase{"What",
                      {"export", "everythin"},
                      {"Did you mean \"everything\"?", "media", "playlist=NAME"}},
        ComplaintCase{"NoWhat", {"export"}, {"all", "media", "album=NAME"}},
        ComplaintCase{"WordTooMany", {"list", "music", "movies"}, {"\"movies\""}},
        ComplaintCase{"ControlCharacters", {"list", "\033[2J"}, {"\uFFFD[2J"}}),
    [](const auto& c) { return std::string(c.param.name); });

TEST(CommandHelp, NamesWhatItIsToBeGivenInWords)
{
    for (const char* command : {"devices", "list", "dump", "export"}) {
        const QString help = ConsoleRun({QString::fromLatin1(command), "--help"}).text();
        EXPECT_FALSE(help.contains("FLOAT")) << help.toStdString();
        EXPECT_FALSE(help.contains("TEXT")) << help.toStdString();
    }
}
