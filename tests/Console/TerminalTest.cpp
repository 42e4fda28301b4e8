#include "Console/Terminal.h"

#include "support/Files.h"

#include <gtest/gtest.h>

#include <clocale>

namespace
{
class TerminalField : public testing::Test
{
protected:
    TerminalField() { std::setlocale(LC_ALL, "C.UTF-8"); }
};
} // namespace

TEST_F(TerminalField, IsFilledUp)
{
    EXPECT_EQ(Terminal::field("abc", 6), "abc   ");
    EXPECT_EQ(Terminal::field(QString(), 3), "   ");
}

TEST_F(TerminalField, IsCutWithRoomToTheNext)
{
    EXPECT_EQ(Terminal::field("abcdefgh", 6), QString::fromUtf8("abcd… "));
}

TEST_F(TerminalField, KnowsWideAndCombiningLetters)
{
    EXPECT_EQ(Terminal::field(QString::fromUtf8("雨の音"), 8), QString::fromUtf8("雨の音  "));
    EXPECT_EQ(Terminal::field(QString::fromUtf8("e\xCC\x81"), 3), QString::fromUtf8("e\xCC\x81  "));
}

TEST(TerminalHarmless, ShowsControlCharactersInsteadOfSendingThem)
{
    EXPECT_EQ(Terminal::harmless("a\033[2J\n\tb"), QString::fromUtf8("a\uFFFD[2J\uFFFD\uFFFDb"));
}

TEST_F(TerminalField, LetsNoControlCharacterThrough)
{
    EXPECT_FALSE(Terminal::field("a\033[2J\nb", 12).contains(QChar(u'\033')));
}
