#include "Base/Utf8.h"

#include <gtest/gtest.h>

TEST(Utf8Texts, EndAtTheirFirstNul)
{
    const QByteArray bytes("One\0.mp3\0", 9);
    EXPECT_EQ(Utf8::text(bytes), "One");
    EXPECT_EQ(Utf8::textAcrossNuls(bytes), "One.mp3");
    EXPECT_EQ(Utf8::whole(bytes).size(), 9);
    EXPECT_TRUE(Utf8::hasNul(bytes));
    EXPECT_FALSE(Utf8::hasNul("One"));
}

TEST(Utf8Texts, KeepTheMarkThatTheyBeginWith)
{
    const QByteArray mark("\xef\xbb\xbf");
    EXPECT_EQ(Utf8::text(mark + "One"), QChar(0xFEFF) + QString("One"));
    EXPECT_EQ(Utf8::text(mark + mark), QString(2, QChar(0xFEFF)));
    EXPECT_EQ(Utf8::text("One" + mark), "One" + QString(QChar(0xFEFF)));
}

TEST(Utf8Texts, AreEmptyWithoutBytesAndNullWithoutSense)
{
    EXPECT_EQ(Utf8::text({}), "");
    EXPECT_FALSE(Utf8::text({}).isNull());
    EXPECT_FALSE(Utf8::text(QByteArrayView("\0x", 2)).isNull());
    EXPECT_TRUE(Utf8::text("\xff").isNull());
    EXPECT_FALSE(Utf8::text(QByteArrayView("a\0\xff", 3)).isNull()) << "the text ends before";
}
