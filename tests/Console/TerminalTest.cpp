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

TEST(TerminalHarmless, ShowsWhatBreaksLinesTurnsOrHidesText)
{
    for (const char32_t character : U"\u0080\u0085\u009b\u009f\u007f\u00ad\u061c\u200b\u200e\u200f"
                                    U"\u2028\u2029\u202a\u202e\u2060\u2066\u2069\ufeff"
                                    U"\U000e0041\U0001d173") {
        if (character == 0) // the end of the literal
            break;
        const char32_t letters[] = {U'a', character, U'b'};
        const QString text = QString::fromUcs4(letters, 3);
        EXPECT_EQ(Terminal::harmless(text), QString::fromUtf8("a\uFFFDb"))
            << "U+" << std::hex << quint32(character);
    }
}

TEST(TerminalHarmless, LeavesWhatPeopleWrite)
{
    for (const char* text : {"Ёлка", "雨の音", "e\xCC\x81", "👩\u200d👧", "نامه\u200cای", "🎸"})
        EXPECT_EQ(Terminal::harmless(QString::fromUtf8(text)), QString::fromUtf8(text));
}

TEST_F(TerminalField, LetsNoControlCharacterThrough)
{
    EXPECT_FALSE(Terminal::field("a\033[2J\nb", 12).contains(QChar(u'\033')));
}
