#include "SqlFixture.h"

namespace
{
/// The pair of databases of a test.
class LibraryItdbReaderTest : public SqlFixture
{
protected:
    LibraryItdbReaderTest()
        : library(path("Library.itdb"))
        , locations(path("Locations.itdb"))
    {
    }

    /// The tables as devices have them, with a primary container that is called "Player".
    void create()
    {
        SqliteLibraries::createLibrary(library);
        SqliteLibraries::createLocations(locations);
        library.run("insert into db_info (pid, primary_container_pid) values (1, 4294967396)");
        library.run("insert into container (pid, name) values (100, 'Player')");
    }
    void addItem(const QByteArray& pid, const QByteArray& title)
    {
        library.run("insert into item (pid, title) values (" + pid + ", '" + title + "')");
    }
    void addMember(const QByteArray& item, const QByteArray& container)
    {
        library.run("insert into item_to_container values (" + item + ", " + container + ", 0, 0)");
    }

    TrackDb& read()
    {
        put("Library.itdb", onDevice("iTunes Library.itlp/Library.itdb"));
        put("Locations.itdb", onDevice("iTunes Library.itlp/Locations.itdb"));
        return *device.trackDb();
    }

    SqliteWriter library;
    SqliteWriter locations;
};
} // namespace

TEST_F(LibraryItdbReaderTest, ReadsEveryFieldOfATrack)
{
    TestTrack written = track(7, QString::fromUtf8("Ёлка 🎄"));
    written.artist = QString::fromUtf8("夜の喫茶店");
    written.milliseconds = 250500;
    written.mediaKind = 8;
    written.podcast = true;
    SqliteLibraries::writeLibrary(path(""), {"Mira's Phone", {written}, {{"Mix", {7, 7}}}});
    TrackDb& db = read();
    EXPECT_EQ(db.format(), "Library.itdb");
    EXPECT_EQ(db.name(), "Mira's Phone");
    ASSERT_EQ(db.tracks().size(), 1U);
    const Track& found = *db.tracks()[0];
    EXPECT_EQ(found.title, written.title);
    EXPECT_EQ(found.artist, written.artist);
    EXPECT_EQ(found.album, "Album");
    EXPECT_EQ(found.genre, "Genre");
    EXPECT_EQ(found.path, "/Volumes/P/iPod_Control/Music/F00/7.mp3");
    EXPECT_DOUBLE_EQ(found.duration, 250.5);
    EXPECT_EQ(found.type, AudiobookTrack);
    EXPECT_TRUE(found.isPodcast);
    ASSERT_EQ(db.playlists().size(), 1U);
    EXPECT_EQ(titles(db.playlists()[0]->tracks), QStringList({written.title, written.title}));
    EXPECT_EQ(found.playlists, std::vector<Playlist*>(2, db.playlists()[0]));
}

TEST_F(LibraryItdbReaderTest, TakesNameAndTracksFromTheContainerWithThePrimaryLowBits)
{
    create(); // 4294967396 is 100 in its low 32 bits
    addItem("1", "One");
    addItem("2", "Two");
    addMember("2", "100");
    addMember("1", "8589934692"); // 100 again
    TrackDb& db = read();
    EXPECT_EQ(db.name(), "Player");
    EXPECT_EQ(titles(db.tracks()), QStringList({"Two", "One"}));
    EXPECT_TRUE(db.playlists().empty());
}

TEST_F(LibraryItdbReaderTest, ListsAnItemTwiceThatIsTwiceInThePrimaryContainer)
{
    create();
    addItem("1", "One");
    addMember("1", "100");
    addMember("1", "100");
    EXPECT_EQ(titles(read().tracks()), QStringList({"One", "One"}));
}

TEST_F(LibraryItdbReaderTest, ShowsPlaylistsByTheirFirstMemberAndEmptyOnesNever)
{
    create();
    addItem("1", "One");
    library.run("insert into container (pid, name) values (5, 'First made'), (6, 'First filled'), "
                "(7, 'Empty')");
    addMember("1", "6");
    addMember("1", "5");
    addMember("1", "6");
    addMember("99", "7"); // no such item
    addMember("1", "55"); // no such container
    TrackDb& db = read();
    EXPECT_EQ(names(db.playlists()), QStringList({"First filled", "First made"}));
    EXPECT_EQ(titles(db.playlists()[0]->tracks), QStringList({"One", "One"}));
    EXPECT_TRUE(db.tracks().empty()) << "an item of playlists alone is not listed";
}

TEST_F(LibraryItdbReaderTest, BuildsThePathFromTheLocationAloneWhereTheBaseIsUnknown)
{
    create();
    for (const char* id : {"1", "2", "3"}) {
        addItem(id, id);
        addMember(id, "100");
    }
    locations.run("insert into base_location (id, path) values (4294967297, 'iPod_Control/Music')");
    locations.run("insert into location (item_pid, base_location_id, location) values "
                  "(1, 1, 'F00/A.mp3'), (4294967298, 9, ':F01:B.mp3')");
    TrackDb& db = read();
    ASSERT_EQ(db.tracks().size(), 3U);
    EXPECT_EQ(db.tracks()[0]->path, "/Volumes/P/iPod_Control/Music/F00/A.mp3");
    EXPECT_EQ(db.tracks()[1]->path, "/Volumes/P/F01/B.mp3");
    EXPECT_TRUE(db.tracks()[2]->path.isNull());
}

TEST_F(LibraryItdbReaderTest, JoinsBaseAndLocationWhateverSeparatorsTheyHave)
{
    struct Case {
        const char* base;
        const char* location;
        const char* path;
    };
    const std::vector<Case> cases = {
        {"Music", "a.mp3", "/Volumes/P/Music/a.mp3"},
        {"/Music/", "/a.mp3", "/Volumes/P/Music/a.mp3"},
        {":iPod:Music", "F00:a.mp3", "/Volumes/P/iPod/Music/F00/a.mp3"},
        {"Music///", "x", "/Volumes/P/Music/x"},
        {"Music:::", "x", "/Volumes/P/Music////x"},
        {"Music::::::::", "", "/Volumes/P/Music////////"},
        {"/", "x", "/Volumes/P/x"},
        {":::", ":x", "/Volumes/P/x"},
        {"Music", ":x", "/Volumes/P/Music//x"},
        {"Music", "\xd1\x91.mp3", "/Volumes/P/Music/\xd1\x91.mp3"},
        {"", "/x", "/Volumes/P/x"},
    };
    create();
    auto base = locations.into("base_location (id, path)", 2);
    auto file = locations.into("location (item_pid, base_location_id, location)", 3);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const QByteArray id = QByteArray::number(i + 1);
        addItem(id, "T");
        addMember(id, "100");
        base.add({qint64(i + 1), QString::fromUtf8(cases[i].base)});
        file.add({qint64(i + 1), qint64(i + 1), QString::fromUtf8(cases[i].location)});
    }
    const std::vector<Track*>& tracks = read().tracks();
    ASSERT_EQ(tracks.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(tracks[i]->path, QString::fromUtf8(cases[i].path)) << i;
}

TEST_F(LibraryItdbReaderTest, LinksEveryRowOfALongTable)
{
    constexpr int Count = 1000; // many times as many as are looked up at once
    create();
    library.run("begin");
    locations.run("begin");
    for (int i = Count; i > 0; --i) {
        addItem(QByteArray::number(i), "T" + QByteArray::number(i % 7));
        addMember(QByteArray::number(i), "100");
    }
    auto file = locations.into("location (item_pid, location)", 2);
    for (int i = 1; i <= Count; ++i)
        file.add({i, QString("%1.mp3").arg(i)});
    library.run("update item set album = 'Album ' || (pid % 5), artist = 'A ' || (pid % 300)");
    library.run("commit");
    locations.run("commit");
    const std::vector<Track*>& tracks = read().tracks();
    ASSERT_EQ(tracks.size(), std::size_t(Count));
    for (int i = Count; i > 0; --i) {
        const Track& track = *tracks[std::size_t(Count - i)];
        EXPECT_EQ(track.title, QString("T%1").arg(i % 7));
        EXPECT_EQ(track.album, QString("Album %1").arg(i % 5));
        EXPECT_EQ(track.artist, QString("A %1").arg(i % 300));
        EXPECT_EQ(track.path, QString("/Volumes/P/%1.mp3").arg(i));
    }
}

TEST_F(LibraryItdbReaderTest, TakesTheLaterOfTwoItemsThatDifferAboveBit31)
{
    create();
    addItem("1", "First");
    addItem("4294967297", "Second");
    addMember("1", "100");
    EXPECT_EQ(titles(read().tracks()), QStringList({"Second"}));
}

TEST_F(LibraryItdbReaderTest, ReadsNullsAsEmptyTextsAndNumbersOfZero)
{
    create();
    library.run("insert into item (pid, title, artist, media_kind, total_time_ms, is_podcast) "
                "values (1, null, null, null, null, null)");
    addMember("1", "100");
    TrackDb& db = read();
    const Track& found = *db.tracks().at(0);
    for (const QString& text : {found.title, found.artist, found.album, found.genre}) {
        EXPECT_FALSE(text.isNull());
        EXPECT_TRUE(text.isEmpty());
    }
    EXPECT_EQ(found.type, UnknownTrack);
    EXPECT_EQ(found.duration, 0.0);
}

TEST_F(LibraryItdbReaderTest, CutsAWideMediaKindToItsLowBits)
{
    create();
    library.run("insert into item (pid, title, media_kind) values (1, 'One', 4294967298)");
    addMember("1", "100");
    EXPECT_EQ(read().tracks().at(0)->type, MovieTrack);
}

TEST_F(LibraryItdbReaderTest, ListsThePrimaryContainerAsAPlaylistWithoutDbInfo)
{
    create();
    library.run("delete from db_info");
    addItem("1", "One");
    addMember("1", "100");
    TrackDb& db = read();
    EXPECT_TRUE(db.name().isNull());
    EXPECT_TRUE(db.tracks().empty());
    EXPECT_EQ(names(db.playlists()), QStringList("Player"));
}

TEST_F(LibraryItdbReaderTest, YieldsNoTracksWithoutTheContainerTables)
{
    create();
    addItem("1", "One");
    library.run("drop table item_to_container");
    TrackDb& db = read();
    EXPECT_TRUE(db.tracks().empty());
    EXPECT_EQ(db.name(), "Player");
}

TEST_F(LibraryItdbReaderTest, ReadsTracksWithoutLocations)
{
    create();
    addItem("1", "One");
    addMember("1", "100");
    put("Library.itdb", onDevice("iTunes Library.itlp/Library.itdb"));
    TrackDb& db = *device.trackDb();
    EXPECT_EQ(titles(db.tracks()), QStringList("One"));
    EXPECT_TRUE(db.tracks()[0]->path.isNull());
}

TEST_F(LibraryItdbReaderTest, IsNotThereWithoutTheLibraryFile)
{
    create();
    put("Locations.itdb", onDevice("iTunes Library.itlp/Locations.itdb"));
    EXPECT_EQ(device.trackDb(), nullptr);
}

TEST_F(LibraryItdbReaderTest, DeletesItsCopiesAndKeepsOthersForDiagnosis)
{
    create();
    addItem("1", "One");
    addMember("1", "100");
    TrackDb& db = read();
    EXPECT_EQ(db.tracks().size(), 1U);
    EXPECT_EQ(temporaryFiles(), QStringList());
    EXPECT_TRUE(QFile::exists(Utility::logFolder() + "/Library.itdb"));
    EXPECT_TRUE(QFile::exists(Utility::logFolder() + "/Locations.itdb"));
}

TEST_F(LibraryItdbReaderTest, DeletesItsCopiesWhenTheDatabasesCannotBeOpened)
{
    device.put(onDevice("iTunes Library.itlp/Library.itdb"), Files::content(5000));
    device.put(onDevice("iTunes Library.itlp/Locations.itdb"), "");
    TrackDb& db = *device.trackDb();
    EXPECT_TRUE(db.tracks().empty());
    EXPECT_TRUE(db.playlists().empty());
    EXPECT_TRUE(db.name().isNull());
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(LibraryItdbReaderTest, TakesTheLaterOfTwoRowsThatAreAlike)
{
    create();
    library.run("insert into db_info (pid, primary_container_pid) values (2, 7)");
    library.run("insert into container (pid, name) values (5, 'Old'), (4294967301, 'New')");
    addItem("1", "One");
    addMember("1", "100");
    addMember("1", "5");
    locations.run("drop table base_location; create table base_location (id, path);"
                  "insert into base_location values (1, 'Old'), (4294967297, 'New');"
                  "drop table location; create table location (item_pid, base_location_id, "
                  "location); insert into location values (1, 1, 'A.mp3'), (1, 1, 'B.mp3')");
    TrackDb& db = read();
    EXPECT_EQ(db.name(), "Player") << "of the info, the first row counts";
    ASSERT_EQ(db.tracks().size(), 1U);
    EXPECT_EQ(db.tracks()[0]->path, "/Volumes/P/New/B.mp3");
    EXPECT_EQ(names(db.playlists()), QStringList("New"));
}
