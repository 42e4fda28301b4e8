#include "Device/plist/PropertyList.h"

#include "support/BookCatalogue.h"
#include "support/Files.h"

#include <gtest/gtest.h>

#include <ctime>

namespace
{
const QByteArray Small =
    BookCatalogue::xml("<dict><key>a</key><array><string>x</string></array></dict>");

/// A binary list put together by hand: objects, the table of their places, and the trailer.
QByteArray binaryList(const QList<QByteArray>& objects, quint8 root = 0)
{
    QByteArray file = "bplist00";
    QByteArray table;
    for (const QByteArray& object : objects) {
        table += char(file.size() >> 8);
        table += char(file.size());
        file += object;
    }
    const auto number = [](qsizetype value) {
        QByteArray bytes(8, '\0');
        for (int i = 7; i >= 0; --i, value >>= 8)
            bytes[i] = char(value);
        return bytes;
    };
    const qsizetype tableStart = file.size();
    return file + table + QByteArray(6, '\0') + "\x02\x01" + number(objects.size()) + number(root) +
           number(tableStart);
}

/// An array of up to 14 references.
QByteArray array(const QList<int>& references)
{
    QByteArray bytes(1, char(0xA0 | references.size()));
    for (const int reference : references)
        bytes += char(reference);
    return bytes;
}

bool isRead(const QByteArray& bytes)
{
    const PropertyList list = PropertyList::fromBytes(bytes);
    return list.isDictionary() || !list.arrayItems().empty();
}
} // namespace

TEST(PropertyLists, AreReadInBothForms)
{
    for (const QByteArray& bytes : {Small, BookCatalogue::binary(Small)}) {
        const PropertyList list = PropertyList::fromBytes(bytes);
        ASSERT_TRUE(list.isDictionary());
        ASSERT_EQ(list.dictionaryValues().size(), 1U);
        EXPECT_EQ(list.dictionaryValues()[0].arrayItems().size(), 1U);
        EXPECT_TRUE(list.text(u"a").isNull());
        EXPECT_TRUE(list.text(u"b").isNull());
    }
    EXPECT_TRUE(isRead(binaryList({array({1, 1}), "\x51x"})));
}

TEST(PropertyLists, MayHaveCommentsAndADocumentType)
{
    QByteArray bytes = Small;
    bytes.replace("<plist",
                  "<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"x.dtd\">\n<plist");
    bytes.replace("<dict>", "<!-- </dict> --><dict>");
    bytes.replace("x</string>", "<![CDATA[<y>]]></string>");
    EXPECT_TRUE(isRead(bytes));
}

TEST(PropertyLists, ThatNestTooDeeplyAreNotRead)
{
    for (const int levels : {65, 1000, 1000000}) {
        const QByteArray bytes = BookCatalogue::xml(QByteArray("<array>").repeated(levels) +
                                                    QByteArray("</array>").repeated(levels));
        EXPECT_FALSE(isRead(bytes)) << levels;
    }
    QList<QByteArray> chain;
    for (int i = 1; i <= 100; ++i)
        chain.append(array({i}));
    chain.append("\x51x");
    EXPECT_FALSE(isRead(binaryList(chain)));
    EXPECT_TRUE(isRead(binaryList(chain, 60)));
}

TEST(PropertyLists, ThatHoldThemselvesAreNotRead)
{
    EXPECT_FALSE(isRead(binaryList({array({0})})));
    EXPECT_FALSE(isRead(binaryList({array({1}), array({0})})));
}

TEST(PropertyLists, ThatMeanFarMoreThanTheySayAreNotRead)
{
    // Each list holds the next one ten times: 10 to the 20th texts in half a kilobyte.
    QList<QByteArray> objects;
    for (int i = 1; i <= 20; ++i)
        objects.append(array(QList<int>(10, i)));
    objects.append("\x51x");
    EXPECT_FALSE(isRead(binaryList(objects)));
    QByteArray entities = Small;
    entities.replace("<plist", "<!DOCTYPE plist [<!ENTITY a \"" + QByteArray(2000, 'x') +
                                   "\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
                                   "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>\n<plist");
    entities.replace("<string>x", "<string>&c;&c;&c;&c;");
    EXPECT_FALSE(isRead(entities));
}

TEST(PropertyLists, ThatAreCutAnywhereAreNotRead)
{
    const QByteArray binary = BookCatalogue::binary(Small);
    for (qsizetype cut = 0; cut < binary.size(); ++cut)
        (void)isRead(binary.first(cut));
    const qsizetype end = Small.indexOf("</plist>") + 7;
    for (qsizetype cut = 0; cut < end; ++cut)
        EXPECT_FALSE(isRead(Small.first(cut))) << cut;
}

TEST(PropertyLists, WithAnyByteChangedDoNoHarm)
{
    const QByteArray whole = BookCatalogue::binary(Small);
    for (qsizetype i = 0; i < whole.size(); ++i) {
        for (int value = 0; value < 256; ++value) {
            QByteArray bytes = whole;
            bytes[i] = char(value);
            (void)isRead(bytes);
        }
    }
}

TEST(PropertyLists, OfEnormousSizeAreNotRead)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("huge"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(Small);
    ASSERT_TRUE(file.resize(PropertyList::MostBytes + 1));
    EXPECT_FALSE(PropertyList::fromFile(file.fileName()).isDictionary());
    EXPECT_FALSE(PropertyList::fromFile(folder.filePath("none")).isDictionary());
}

TEST(PropertyLists, ThatHoldAnArrayInTwoPlacesAreNotRead)
{
    EXPECT_FALSE(
        PropertyList::fromBytes(binaryList({array({1, 1}), array({2}), "\x51x"})).isValid());
    EXPECT_TRUE(
        PropertyList::fromBytes(binaryList({array({1, 2}), array({3}), array({3}), "\x51x"}))
            .isValid());
}

TEST(PropertyLists, LoseOnlyTheValueThatIsBroken)
{
    // The second is of no known kind, the third reaches beyond the file.
    const PropertyList list = PropertyList::fromBytes(
        binaryList({array({1, 2, 3}), "\x51x", "\xf1x", QByteArray("\x5f\x12\x7f\xff\xff\xff")}));
    EXPECT_EQ(list.arrayItems().size(), 3U);
    EXPECT_TRUE(list.hasBrokenValues());
    EXPECT_TRUE(list.isValid());
}

TEST(PropertyLists, OfManyKeysAreReadAtOnce)
{
    QByteArray keys;
    for (int i = 0; i < 600'000; ++i)
        keys += "<key>" + QByteArray::number(i) + "</key><true/>";
    const QByteArray bytes = BookCatalogue::xml("<dict>" + keys + "</dict>");
    const std::clock_t start = std::clock(); // of this program alone, however busy the computer
    const PropertyList list = PropertyList::fromBytes(bytes);
    EXPECT_EQ(list.dictionaryValues().size(), 600'000U);
    EXPECT_TRUE(list.text(u"599999").isNull());
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 8);
}

TEST(PropertyLists, EndTheirTextsAtANul)
{
    // The key "a" and the text "x", a NUL and "y".
    const PropertyList list = PropertyList::fromBytes(binaryList({QByteArray("\xd1\x01\x02", 3),
                                                                  "\x51"
                                                                  "a",
                                                                  QByteArray("\x53x\0y", 4)}));
    EXPECT_EQ(list.text(u"a"), "x");
    EXPECT_EQ(list.textAcrossNuls(u"a"), "xy");
}
