#include "Base/StarOrder.h"

#include <gtest/gtest.h>

TEST(StarFirstCompare, PutsTheStarBeforeEverything)
{
    EXPECT_EQ(StarOrder::starFirstCompare(u"*", u"a"), -1);
    EXPECT_EQ(StarOrder::starFirstCompare(u"*", u""), -1);
    EXPECT_EQ(StarOrder::starFirstCompare(u"a", u"*"), 1);
}

TEST(StarFirstCompare, PutsTheStarBeforeItself)
{
    EXPECT_EQ(StarOrder::starFirstCompare(u"*", u"*"), -1);
}

TEST(StarFirstCompare, ComparesEverythingElseWithoutCase)
{
    EXPECT_EQ(StarOrder::starFirstCompare(u"abc", u"ABC"), 0);
    EXPECT_EQ(StarOrder::starFirstCompare(u"B", u"a"), 1);
    EXPECT_EQ(StarOrder::starFirstCompare(u"a", u"B"), -1);
}

TEST(StarFirstCompare, TakesOnlyTheSingleStarForTheWildcard)
{
    // "*" is smaller than "a" as a character; the second star must not make a difference.
    EXPECT_EQ(StarOrder::starFirstCompare(u"**", u"a"), -1);
    EXPECT_EQ(StarOrder::starFirstCompare(u"**", u"!"), 1);
}

TEST(SortStarFirst, HeadsTheListWithTheStar)
{
    QStringList texts = {"b", "*", "A", "c"};
    StarOrder::sortStarFirst(texts);
    EXPECT_EQ(texts, QStringList({"*", "A", "b", "c"}));
}

TEST(SortStarFirst, TakesManyStarsAndTextsThatDifferOnlyInCase)
{
    QStringList texts;
    for (int i = 0; i < 100; ++i)
        texts << "*"
              << "x"
              << "X";
    StarOrder::sortStarFirst(texts);
    EXPECT_EQ(texts.count("*"), 100);
    EXPECT_EQ(texts.at(99), "*");
    EXPECT_EQ(texts.at(100), "X");
    EXPECT_EQ(texts.last(), "x");
}
