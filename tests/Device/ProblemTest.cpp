#include "Device/Problem.h"

#include "Base/Failure.h"
#include "support/Files.h"

#include <gtest/gtest.h>

TEST(Problems, AreKeptOnceAndInTheirOrder)
{
    ProblemList list;
    list.add(Problem::Kind::Damaged, "One", "first");
    list.add(Problem::Kind::CutOff, "One");
    list.add(Problem::Kind::Damaged, "One", "second");
    ASSERT_EQ(list.all().size(), 2U);
    EXPECT_EQ(list.all()[0].text(), "One (first)");
    EXPECT_EQ(list.all()[1].text(), "One");
}

TEST(Problems, AreNoMoreThanSomeDozens)
{
    ProblemList list;
    for (int i = 0; i < 100'000; ++i)
        list.add(Problem::Kind::Damaged, QString::number(i));
    EXPECT_LE(list.all().size(), 100U);
}

TEST(Problems, TellLossAndDamageFromOtherFailures)
{
    for (const auto& [failure, kind] :
         {std::pair(Failure::Kind::Lost, "lost"), std::pair(Failure::Kind::Damaged, "damaged"),
          std::pair(Failure::Kind::Refused, "unreadable"),
          std::pair(Failure::Kind::Unwritable, "unreadable")}) {
        ProblemList list;
        list.add({failure, "because", "errno"}, "Words.");
        EXPECT_EQ(list.all().at(0).kindName(), kind);
        EXPECT_EQ(list.all().at(0).exact, "because (errno)");
    }
}

TEST(Problems, QuoteNothingThatATerminalObeysOrThatNeverEnds)
{
    ProblemList list;
    list.add(Problem::Kind::Damaged, "Words.",
             QString("no such table: \x1b[2J\n") + QChar(0x9b) + QChar(0x202e) +
                 QString(100'000, u'x'));
    const QString exact = list.all().at(0).exact;
    EXPECT_LT(exact.size(), 1000);
    for (const QChar letter : exact)
        EXPECT_TRUE(letter.isPrint() || letter == QChar::ReplacementCharacter);
}
