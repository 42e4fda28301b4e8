#include "Platform/PhonePacket.h"

#include "support/Files.h"

#include <QtEndian>

#include <gtest/gtest.h>

using PhonePacket::Operation;

namespace
{
void put(QByteArray& bytes, qsizetype offset, quint64 value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

/// The head of an answer with these fields.
QByteArray head(quint64 entire, quint64 fixed, quint64 number, quint64 operation)
{
    QByteArray bytes = "CFA6LPAA" + QByteArray(32, '\0');
    put(bytes, 8, entire);
    put(bytes, 16, fixed);
    put(bytes, 24, number);
    put(bytes, 32, operation);
    return bytes;
}
} // namespace

TEST(PhonePacketTest, WritesQuestionsInOnePiece)
{
    const QByteArray bytes =
        PhonePacket::question(7, Operation::OpenFile, PhonePacket::bodyToOpen("/a"));
    EXPECT_EQ(bytes, head(51, 51, 7, 0x0D) + QByteArray("\1\0\0\0\0\0\0\0/a\0", 11));
    EXPECT_EQ(PhonePacket::bodyToRead(1, 2), QByteArray("\1\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0", 16));
    EXPECT_EQ(PhonePacket::bodyToSeek(1, -1).right(8), QByteArray(8, '\xff'));
    EXPECT_EQ(PhonePacket::bodyForPath(QString::fromUtf8("/ä")), QByteArray("/\xc3\xa4\0", 4));
}

TEST(PhonePacketTest, ReadsTheHeadsOfAnswers)
{
    const auto data = PhonePacket::readHead(head(45, 40, 3, 2));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->number, 3U);
    EXPECT_EQ(data->operation, Operation::Data);
    EXPECT_EQ(data->bodySize, 5U);
    EXPECT_EQ(PhonePacket::readHead(head(40, 40, 3, 2))->bodySize, 0U);
    EXPECT_EQ(PhonePacket::readHead(head(48, 48, 3, 1))->bodySize, 8U);
    EXPECT_TRUE(PhonePacket::readHead(head(48, 48, 3, 0x0E)));
    EXPECT_EQ(PhonePacket::numberIn(QByteArray("\5\1\0\0\0\0\0\0", 8)), 261U);
    EXPECT_EQ(PhonePacket::numberIn("short"), 0U);
}

TEST(PhonePacketTest, ReadsNoHeadThatContradictsItself)
{
    const QByteArray good = head(48, 48, 3, 1);
    EXPECT_FALSE(PhonePacket::readHead(good.first(39)));
    EXPECT_FALSE(PhonePacket::readHead(good + '\0'));
    EXPECT_FALSE(PhonePacket::readHead("XFA6LPAA" + good.sliced(8)));
    EXPECT_FALSE(PhonePacket::readHead(head(39, 39, 3, 2)));
    EXPECT_FALSE(PhonePacket::readHead(head(0, 0, 3, 2)));
    EXPECT_FALSE(PhonePacket::readHead(head(40, 48, 3, 2)));
    EXPECT_FALSE(PhonePacket::readHead(head(47, 47, 3, 1)));
    EXPECT_FALSE(PhonePacket::readHead(head(49, 49, 3, 0x0E)));
    for (const quint64 question : {0x03, 0x0A, 0x0D, 0x0F, 0x11, 0x14, 0, 0x10, 0xffff})
        EXPECT_FALSE(PhonePacket::readHead(head(40, 40, 3, question))) << question;
}
