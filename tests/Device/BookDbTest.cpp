#include "Device/BookDb.h"

#include "SqlFixture.h"
#include "support/BookCatalogue.h"

namespace
{
using BookCatalogue::Book;

class BookDbTest : public SqlFixture
{
protected:
    BookDbTest() { device.setBookPath("/Books"); }

    void putBooks(const QByteArray& list) { device.put("/Books/Books.plist", list); }
    void putPurchases(const QByteArray& list)
    {
        device.put("/Books/Purchases/Purchases.plist", list);
    }
    /// A media library with one book of its own.
    void putLibrary()
    {
        TestTrack book = track(1, "Of the library");
        book.mediaKind = 4194304;
        SqliteLibraries::writeMediaLibrary(path("MediaLibrary.sqlitedb"), {"Phone", {book}, {}});
        put("MediaLibrary.sqlitedb", onDevice("MediaLibrary.sqlitedb"));
        (void)device.trackDb()->tracks();
    }
    static Book book(const QString& name)
    {
        return {{"Name", name},
                {"Artist", "R. Alder"},
                {"Album", "Field Notes"},
                {"Genre", "Nature"},
                {"Path", name + ".epub"}};
    }
};

class BookForms : public BookDbTest, public testing::WithParamInterface<BookCatalogue::Form>
{
};
} // namespace

TEST_P(BookForms, ReadsEveryFieldOfABook)
{
    Book written = book(QString::fromUtf8("Ёлка & <夜> 🎄"));
    putBooks(BookCatalogue::write({{written}}, GetParam()));
    BookDb* db = device.bookDb();
    ASSERT_NE(db, nullptr);
    ASSERT_EQ(db->bookList().size(), 1U);
    const Track& found = *db->bookList()[0];
    EXPECT_EQ(found.title, written["Name"]);
    EXPECT_EQ(found.artist, "R. Alder");
    EXPECT_EQ(found.album, "Field Notes");
    EXPECT_EQ(found.genre, "Nature");
    EXPECT_EQ(found.path, "/Books/" + written["Path"]);
    EXPECT_EQ(found.type, BookTrack);
    EXPECT_FALSE(found.isPodcast);
    EXPECT_EQ(found.duration, 0.0);
}

INSTANTIATE_TEST_SUITE_P(, BookForms,
                         testing::Values(BookCatalogue::Form::Xml, BookCatalogue::Form::Binary),
                         [](const auto& c) {
                             return std::string(c.param == BookCatalogue::Form::Xml ? "Xml"
                                                                                    : "Binary");
                         });

TEST_F(BookDbTest, FindsPurchasedBooksInTheirOwnFolder)
{
    putPurchases(BookCatalogue::write({{book("Bought")}}));
    ASSERT_NE(device.bookDb(), nullptr);
    ASSERT_EQ(device.bookDb()->bookList().size(), 1U);
    EXPECT_EQ(device.bookDb()->bookList()[0]->path, "/Books/Purchases/Bought.epub");
}

TEST_F(BookDbTest, ListsSyncedBooksBeforePurchasedOnes)
{
    putPurchases(BookCatalogue::write({{book("Bought")}}));
    putBooks(BookCatalogue::write({{book("Synced")}}));
    EXPECT_EQ(titles(device.bookDb()->bookList()), QStringList({"Synced", "Bought"}));
}

TEST_F(BookDbTest, GivesABookWithoutPathAnEmptyOne)
{
    putBooks(BookCatalogue::write({{{{"Name", "Lost"}}}}));
    const Track& found = *device.bookDb()->bookList().at(0);
    for (const QString& text : {found.path, found.artist, found.album, found.genre}) {
        EXPECT_FALSE(text.isNull());
        EXPECT_TRUE(text.isEmpty());
    }
}

TEST_F(BookDbTest, TakesTheBooksOfEveryRootKey)
{
    putBooks(BookCatalogue::write({{book("1"), book("2")}, {book("3"), book("4")}}));
    EXPECT_EQ(titles(device.bookDb()->bookList()), QStringList({"1", "2", "3", "4"}));
}

TEST_F(BookDbTest, SkipsShapesThatAreNoBooks)
{
    putBooks(BookCatalogue::xml(
        "<dict><key>a</key><string>text</string><key>b</key><integer>1</integer>"
        "<key>c</key><dict><key>Name</key><string>no list</string></dict>"
        "<key>d</key><array><string>x</string><array/><dict><key>Name</key><integer>5</integer>"
        "<key>Artist</key><string/></dict><true/></array></dict>"));
    ASSERT_EQ(device.bookDb()->bookList().size(), 1U);
    EXPECT_EQ(device.bookDb()->bookList()[0]->title, "") << "no text counts as missing";
}

TEST_F(BookDbTest, TakesOtherValuesThanTextsForMissing)
{
    for (const QByteArray value :
         {"<integer>5</integer>", "<real>1.5</real>", "<true/>", "<data>AAAA</data>",
          "<date>2010-01-01T00:00:00Z</date>", "<array><string>x</string></array>", "<dict/>"}) {
        QByteArray record;
        for (const QByteArray key : {"Name", "Artist", "Album", "Genre", "Path"})
            record += "<key>" + key + "</key>" + value;
        MemoryDevice other;
        other.setBookPath("/Books");
        other.put("/Books/Books.plist", BookCatalogue::xml("<dict><key>Books</key><array><dict>" +
                                                           record + "</dict></array></dict>"));
        ASSERT_EQ(other.bookDb()->bookList().size(), 1U) << value.constData();
        const Track& found = *other.bookDb()->bookList()[0];
        for (const QString& text :
             {found.title, found.artist, found.album, found.genre, found.path}) {
            EXPECT_FALSE(text.isNull()) << value.constData();
            EXPECT_TRUE(text.isEmpty()) << value.constData();
        }
    }
}

TEST_F(BookDbTest, SkipsACatalogueOfSizeZeroAndReadsTheOther)
{
    putBooks("");
    putPurchases(BookCatalogue::write({{book("Bought")}}));
    ASSERT_NE(device.bookDb(), nullptr);
    EXPECT_EQ(titles(device.bookDb()->bookList()), QStringList("Bought"));
}

TEST_F(BookDbTest, LeavesOneCopyForDiagnosisThatOfTheSyncedBooksFirst)
{
    const QString kept = Utility::logFolder() + "/";
    QFile::remove(kept + "Books.plist");
    QFile::remove(kept + "Purchases.plist");
    const QByteArray bought = BookCatalogue::write({{book("Bought")}});
    putPurchases(bought);
    ASSERT_NE(BookDb::create(device), nullptr);
    EXPECT_EQ(Files::read(kept + "Purchases.plist"), bought);
    QFile::remove(kept + "Purchases.plist");

    const QByteArray synced = BookCatalogue::write({{book("Synced")}});
    putBooks(synced);
    ASSERT_NE(BookDb::create(device), nullptr);
    EXPECT_EQ(Files::read(kept + "Books.plist"), synced);
    EXPECT_FALSE(QFile::exists(kept + "Purchases.plist"));
}

TEST_F(BookDbTest, ReadsTheDeviceOnce)
{
    putBooks(BookCatalogue::write({{book("1")}}));
    EXPECT_EQ(device.bookDb()->bookList().size(), 1U);
    putBooks(BookCatalogue::write({{book("1"), book("2")}}));
    EXPECT_EQ(device.bookDb()->bookList().size(), 1U);
    EXPECT_EQ(titles(device.bookDb()->books().tracks("*|*|*")), QStringList("1"));
}

TEST_F(BookDbTest, IsNoCategoryWithoutAMediaLibrary)
{
    putBooks(BookCatalogue::write({{book("1")}}));
    EXPECT_EQ(device.trackDb(), nullptr) << "the categories are those of a library";
    EXPECT_EQ(device.bookDb()->bookList().size(), 1U);
}

TEST_F(BookDbTest, IsEmptyForWhatIsNoPropertyList)
{
    const QByteArray whole = BookCatalogue::write({{book("Whole")}});
    for (const QByteArray& bytes : {QByteArray("rubbish"), QByteArray("<plist"), whole.chopped(20),
                                    BookCatalogue::xml("<array/>"), Files::content(4000)}) {
        MemoryDevice other;
        other.setBookPath("/Books");
        other.put("/Books/Books.plist", bytes);
        ASSERT_NE(other.bookDb(), nullptr);
        EXPECT_TRUE(other.bookDb()->bookList().empty()) << bytes.left(40).constData();
    }
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(BookDbTest, IsNotThereWithoutACatalogue)
{
    EXPECT_EQ(device.bookDb(), nullptr);
    MemoryDevice volume;
    volume.put("Books.plist", BookCatalogue::write({{book("1")}}));
    EXPECT_EQ(volume.bookDb(), nullptr) << "volumes have no folder of books";
}

TEST_F(BookDbTest, HasTheIndexOfACategory)
{
    putBooks(BookCatalogue::write({{book("1"), {{"Name", "Untagged"}}}}));
    const CategoryIndex& books = device.bookDb()->books();
    EXPECT_EQ(titles(books.tracks("*|*|*")), QStringList({"1", "Untagged"}));
    EXPECT_EQ(titles(books.tracks("Nature|R. Alder|Field Notes")), QStringList("1"));
    EXPECT_EQ(books.genres(), QStringList({"*", "Nature"}));
    EXPECT_EQ(books.trackMap().size(), 8);
}

TEST_F(BookDbTest, ReplacesTheBooksOfTheLibrary)
{
    putBooks(BookCatalogue::write({{book("Of the catalogue")}}));
    putLibrary();
    EXPECT_EQ(titles(device.trackDb()->books().tracks("*|*|*")), QStringList("Of the catalogue"));
    EXPECT_EQ(titles(device.trackDb()->tracks()), QStringList("Of the library"));
}

TEST_F(BookDbTest, LeavesTheLibraryItsBooksWhenItIsEmpty)
{
    putBooks("");
    putPurchases("");
    putLibrary();
    ASSERT_NE(device.bookDb(), nullptr);
    EXPECT_EQ(titles(device.trackDb()->books().tracks("*|*|*")), QStringList("Of the library"));
    EXPECT_EQ(device.trackDb()->books().genres(), QStringList({"*", "Genre"}));
}

TEST_F(BookDbTest, FindsABookWhosePathEndsLikeAFolder)
{
    putBooks(BookCatalogue::write(
        {{{{"Name", "B0"}, {"Path", "B0.epub//"}}, {{"Name", "All"}, {"Path", "/"}}}}));
    EXPECT_EQ(device.bookDb()->bookList().at(0)->path, "/Books/B0.epub");
    EXPECT_EQ(device.bookDb()->bookList().at(1)->path, "") << "the folder of all is no book";
}

TEST_F(BookDbTest, ReadsABinaryListOfRealSizeWhoseBooksShareTheirTexts)
{
    // Each key and each name stands once in such a file, and thousands of books refer to it.
    std::vector<Book> books(5000, book("The same"));
    for (std::size_t i = 0; i < books.size(); ++i)
        books[i]["Path"] = QString::number(i);
    putBooks(BookCatalogue::write({books}, BookCatalogue::Form::Binary));
    EXPECT_EQ(device.bookDb()->bookList().size(), books.size());
    EXPECT_TRUE(device.bookDb()->problems().empty());
}

TEST_F(BookDbTest, KeepsTheMarkAtTheBeginningOfAName)
{
    for (const auto form : {BookCatalogue::Form::Xml, BookCatalogue::Form::Binary}) {
        MemoryDevice other;
        other.setBookPath("/Books");
        const QString name = QChar(0xFEFF) + QString("Name");
        other.put("/Books/Books.plist", BookCatalogue::write({{book(name)}}, form));
        ASSERT_EQ(other.bookDb()->bookList().size(), 1U);
        EXPECT_EQ(other.bookDb()->bookList()[0]->title, name);
        EXPECT_EQ(other.bookDb()->bookList()[0]->path, "/Books/" + name + ".epub");
    }
}

TEST_F(BookDbTest, SaysThatAListIsDamagedAndReadsTheOther)
{
    putBooks(BookCatalogue::write({{book("1")}}).chopped(20));
    putPurchases(BookCatalogue::write({{book("Bought")}}));
    EXPECT_EQ(titles(device.bookDb()->bookList()), QStringList("Bought"));
    ASSERT_EQ(device.bookDb()->problems().all().size(), 1U);
    EXPECT_EQ(device.bookDb()->problems().all()[0].kind, Problem::Kind::Damaged);
}

TEST_F(BookDbTest, LosesOnlyTheEntryThatIsBroken)
{
    const QByteArray whole =
        BookCatalogue::write({{book("One"), book("Two")}}, BookCatalogue::Form::Binary);
    std::size_t oneLost = 0;
    for (qsizetype at = 8; at < whole.size() - 32; ++at) {
        QByteArray damaged = whole;
        damaged[at] = '\xff'; // no marker of any kind
        MemoryDevice other;
        other.setBookPath("/Books");
        other.put("/Books/Books.plist", damaged);
        const std::vector<Track*>& books = other.bookDb()->bookList();
        if (books.empty()) {
            EXPECT_FALSE(other.bookDb()->problems().empty()) << at;
        }
        oneLost += books.size() == 1 ? 1 : 0;
    }
    EXPECT_GT(oneLost, 0U);
}
