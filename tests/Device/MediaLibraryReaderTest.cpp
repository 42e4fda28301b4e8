#include "SqlFixture.h"

namespace
{
class MediaLibraryReaderTest : public SqlFixture
{
protected:
    MediaLibraryReaderTest()
        : file(path("MediaLibrary.sqlitedb"))
    {
    }

    void create()
    {
        SqliteLibraries::createMediaLibrary(file);
        file.run("insert into db_info (db_pid, primary_container_pid) values (1, 4294967396)");
        file.run("insert into container (container_pid, name) values (100, 'Player')");
        file.run("insert into base_location values (3, 'iPod_Control/Music')");
    }
    void addItem(const QByteArray& pid, const QByteArray& milliseconds = "0")
    {
        file.run("insert into item (item_pid, base_location_id) values (" + pid + ", 3)");
        file.run("insert into item_extra (item_pid, title, location, total_time_ms, media_kind) "
                 "values (" +
                 pid + ", 'T" + pid + "', 'F00/" + pid + ".mp3', " + milliseconds + ", 1)");
    }
    void addPlaylist(const QByteArray& pid, const QByteArray& name, const QByteArray& members)
    {
        file.run("insert into container (container_pid, name) values (" + pid + ", '" + name +
                 "')");
        file.into("container_items (container_pid, item_pid_data)", 2)
            .add({pid.toLongLong(), members});
    }
    /// Eight little-endian bytes for each id.
    static QByteArray packed(const std::vector<qint64>& ids)
    {
        QByteArray bytes;
        for (const qint64 id : ids)
            bytes.append(reinterpret_cast<const char*>(&id), sizeof id);
        return bytes;
    }

    TrackDb& read()
    {
        put("MediaLibrary.sqlitedb", onDevice("MediaLibrary.sqlitedb"));
        return *device.trackDb();
    }

    SqliteWriter file;
};

struct DurationCase {
    const char* name;
    QByteArray stored;
    double seconds;
};
void PrintTo(const DurationCase& c, std::ostream* out)
{
    *out << c.name;
}
class MediaLibraryDuration : public MediaLibraryReaderTest,
                             public testing::WithParamInterface<DurationCase>
{
};
} // namespace

TEST_F(MediaLibraryReaderTest, ReadsEveryFieldOfATrack)
{
    TestTrack written = track(7, QString::fromUtf8("Ёлка 🎄"));
    written.milliseconds = 250500;
    written.mediaKind = 64;
    written.podcast = true;
    SqliteLibraries::writeMediaLibrary(path("MediaLibrary.sqlitedb"),
                                       {"Mira's Phone", {written}, {{"Mix", {7}}}});
    TrackDb& db = read();
    EXPECT_EQ(db.format(), "MediaLibrary.sqlitedb");
    EXPECT_EQ(db.name(), "Mira's Phone");
    ASSERT_EQ(db.tracks().size(), 1U);
    const Track& found = *db.tracks()[0];
    EXPECT_EQ(found.title, written.title);
    EXPECT_EQ(found.artist, "Artist");
    EXPECT_EQ(found.album, "Album");
    EXPECT_EQ(found.genre, "Genre");
    EXPECT_EQ(found.path, "/Volumes/P/iPod_Control/Music/F00/7.mp3");
    EXPECT_DOUBLE_EQ(found.duration, 250.5);
    EXPECT_EQ(found.type, TVShowTrack);
    EXPECT_TRUE(found.isPodcast);
    EXPECT_EQ(names(db.playlists()), QStringList("Mix"));
}

TEST_F(MediaLibraryReaderTest, ReadsRowsThatStandOnlyInTheLog)
{
    SqliteLibraries::writeMediaLibrary(path("MediaLibrary.sqlitedb"),
                                       {"Player", {track(1, "One"), track(2, "Two")}, {}},
                                       SqliteLibraries::Rows::InLog);
    ASSERT_TRUE(QFile::exists(path("MediaLibrary.sqlitedb-wal")));
    EXPECT_EQ(titles(read().tracks()), QStringList({"One", "Two"}));
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(MediaLibraryReaderTest, ReadsNothingOfATransactionThatIsCut)
{
    const QString database = path("MediaLibrary.sqlitedb");
    SqliteLibraries::writeMediaLibrary(database, {"Player", {track(1, "One")}, {}},
                                       SqliteLibraries::Rows::InLog);
    const QByteArray log = Files::read(database + "-wal");
    for (const qsizetype cut :
         {qsizetype(0), qsizetype(31), qsizetype(33), log.size() / 2, log.size() - 1}) {
        Files::write(database + "-wal", log.first(cut));
        MemoryDevice other;
        other.put(onDevice("MediaLibrary.sqlitedb"), Files::read(database));
        other.put(onDevice("MediaLibrary.sqlitedb-wal"), log.first(cut));
        EXPECT_TRUE(other.trackDb()->tracks().empty()) << "the one transaction is cut at " << cut;
    }
}

TEST_F(MediaLibraryReaderTest, ReadsTheWholeTransactionsOfATornLog)
{
    create();
    file.keepRowsInLog();
    addItem("1");
    const qsizetype whole = Files::read(path("MediaLibrary.sqlitedb-wal")).size();
    file.run("begin");
    for (int i = 2; i < 200; ++i)
        addItem(QByteArray::number(i));
    file.run("commit");
    const QByteArray database = Files::read(path("MediaLibrary.sqlitedb"));
    const QByteArray log = Files::read(path("MediaLibrary.sqlitedb-wal"));
    ASSERT_GT(log.size(), whole);
    for (const qsizetype cut : {whole, whole + 1, (whole + log.size()) / 2, log.size() - 1}) {
        MemoryDevice other;
        other.put(onDevice("MediaLibrary.sqlitedb"), database);
        other.put(onDevice("MediaLibrary.sqlitedb-wal"), log.first(cut));
        EXPECT_EQ(titles(other.trackDb()->tracks()), QStringList("T1")) << "cut at " << cut;
    }
    QByteArray damaged = log;
    damaged[whole + 100] = char(~damaged[whole + 100]);
    device.put(onDevice("MediaLibrary.sqlitedb"), database);
    device.put(onDevice("MediaLibrary.sqlitedb-wal"), damaged);
    EXPECT_EQ(titles(device.trackDb()->tracks()), QStringList("T1"));
}

TEST_F(MediaLibraryReaderTest, LeavesACopyWithItsLogForDiagnosis)
{
    create();
    file.keepRowsInLog();
    addItem("1");
    put("MediaLibrary.sqlitedb", onDevice("MediaLibrary.sqlitedb"));
    ASSERT_NE(device.trackDb(), nullptr);
    for (const char* suffix : {"", "-wal"})
        EXPECT_EQ(Files::read(Utility::logFolder() + "/MediaLibrary.sqlitedb" + suffix),
                  Files::read(path("MediaLibrary.sqlitedb") + suffix));
}

TEST_F(MediaLibraryReaderTest, ReadsADatabaseInAnyEncoding)
{
    const QString title = QString::fromUtf8("Ёлка 🎄");
    for (const QByteArray encoding : {"UTF-8", "UTF-16le", "UTF-16be"}) {
        const QString name = path(encoding);
        SqliteWriter other(name);
        other.run("pragma encoding = '" + encoding + "'");
        SqliteLibraries::createMediaLibrary(other);
        other.run("insert into item (item_pid, base_location_id) values (1, 3)");
        other.run("insert into base_location values (3, 'Music')");
        other.into("item_extra (item_pid, title, location)", 3).add({1, title, title + ".mp3"});
        MemoryDevice phone;
        phone.put(onDevice("MediaLibrary.sqlitedb"), Files::read(name));
        const std::vector<Track*>& tracks = phone.trackDb()->tracks();
        ASSERT_EQ(tracks.size(), 1U) << encoding.constData();
        EXPECT_EQ(tracks[0]->title, title);
        EXPECT_EQ(tracks[0]->path, "/Volumes/P/Music/" + title + ".mp3");
    }
}

TEST_F(MediaLibraryReaderTest, ReadsMembersOfEveryLength)
{
    constexpr qsizetype Longest = 40;
    create();
    addItem("5");
    addPlaylist("8", "Any", {});
    addPlaylist("9", "Next", packed({5}));
    const QByteArray members = packed(std::vector<qint64>(Longest / 8, 5));
    for (qsizetype length = 0; length <= Longest; ++length) {
        file.run("update container_items set item_pid_data = x'" + members.first(length).toHex() +
                 "' where container_pid = 8");
        MemoryDevice other;
        other.put(onDevice("MediaLibrary.sqlitedb"), Files::read(path("MediaLibrary.sqlitedb")));
        QStringList expected;
        if (length >= 8)
            expected.append("Any");
        if (length % 8 == 0) // else the reading ends there
            expected.append("Next");
        TrackDb& db = *other.trackDb();
        EXPECT_EQ(titles(db.tracks()), QStringList("T5"));
        ASSERT_EQ(names(db.playlists()), expected) << length;
        if (length >= 8) {
            EXPECT_EQ(db.playlists()[0]->tracks.size(), std::size_t(length / 8)) << length;
        }
    }
}

TEST_F(MediaLibraryReaderTest, CutsAWideMediaKindToItsLowBits)
{
    create();
    addItem("1");
    file.run("update item_extra set media_kind = 4294967298");
    EXPECT_EQ(read().tracks().at(0)->type, MovieTrack);
}

TEST_F(MediaLibraryReaderTest, ReadsNullsAsEmptyTextsAndNumbersOfZero)
{
    // Loose tables, in which every column can be NULL, the ids among them.
    file.run("create table item (item_pid, base_location_id, genre_id, album_pid, "
             "item_artist_pid); create table item_extra (item_pid, title, location, media_kind, "
             "total_time_ms, is_podcast); create table genre (genre_id, genre);"
             "create table album (album_pid, album); create table item_artist (item_artist_pid, "
             "item_artist); create table db_info (primary_container_pid);"
             "create table base_location (base_location_id, path);"
             "create table container (container_pid, name);"
             "create table container_items (container_pid, item_pid_data)");
    for (const char* table : {"item", "item_extra", "genre", "album", "item_artist", "db_info",
                              "base_location", "container", "container_items"})
        file.run("insert into " + QByteArray(table) + " default values");
    TrackDb& db = read();
    ASSERT_EQ(db.tracks().size(), 1U);
    const Track& found = *db.tracks()[0];
    for (const QString& text : {found.title, found.artist, found.album, found.genre, db.name()}) {
        EXPECT_FALSE(text.isNull());
        EXPECT_TRUE(text.isEmpty());
    }
    EXPECT_EQ(found.path, "/Volumes/P");
    EXPECT_EQ(found.type, UnknownTrack);
    EXPECT_EQ(found.duration, 0.0);
    EXPECT_FALSE(found.isPodcast);
    EXPECT_TRUE(db.playlists().empty());
}

TEST_F(MediaLibraryReaderTest, KeepsDuplicatesOfAPlaylist)
{
    create();
    addItem("5");
    addItem("7");
    addPlaylist("9", "Mix", packed({5, 7, 5}));
    TrackDb& db = read();
    ASSERT_EQ(db.playlists().size(), 1U);
    Playlist* mix = db.playlists()[0];
    EXPECT_EQ(titles(mix->tracks), QStringList({"T5", "T7", "T5"}));
    EXPECT_EQ(db.tracks()[0]->playlists, std::vector<Playlist*>(2, mix));
    EXPECT_EQ(db.tracks()[1]->playlists, std::vector<Playlist*>(1, mix));
}

TEST_F(MediaLibraryReaderTest, SkipsMembersThatMatchNoItem)
{
    create();
    addItem("5");
    addPlaylist("8", "Of strangers", packed({1, 2}));
    addPlaylist("9", "Mix", packed({99, 5 + (qint64(3) << 32), -1}));
    addPlaylist("10", "Empty", {});
    TrackDb& db = read();
    EXPECT_EQ(names(db.playlists()), QStringList("Mix"));
    EXPECT_EQ(titles(db.playlists()[0]->tracks), QStringList("T5"));
}

TEST_F(MediaLibraryReaderTest, TakesTheNameFromThePrimaryContainerWhateverItLists)
{
    create();
    addItem("5");
    file.into("container_items (container_pid, item_pid_data)", 2).add({100, packed({5, 5})});
    TrackDb& db = read();
    EXPECT_EQ(db.name(), "Player");
    EXPECT_TRUE(db.playlists().empty());
    EXPECT_EQ(titles(db.tracks()), QStringList("T5"));
    EXPECT_TRUE(db.tracks()[0]->playlists.empty());
}

TEST_F(MediaLibraryReaderTest, EndsAtAMemberThatIsCutAndKeepsWhatItRead)
{
    create();
    addItem("5");
    addPlaylist("8", "Cut", packed({5, 5}).first(12));
    addPlaylist("9", "Never reached", packed({5}));
    TrackDb& db = read();
    EXPECT_EQ(titles(db.tracks()), QStringList("T5"));
    ASSERT_EQ(names(db.playlists()), QStringList("Cut"));
    EXPECT_EQ(db.playlists()[0]->tracks.size(), 1U);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_P(MediaLibraryDuration, TakesSmallNumbersForSeconds)
{
    create();
    addItem("1", GetParam().stored);
    EXPECT_DOUBLE_EQ(read().tracks().at(0)->duration, GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(, MediaLibraryDuration,
                         testing::Values(DurationCase{"LongOnesAreMilliseconds", "250000", 250},
                                         DurationCase{"ShortOnesAreSeconds", "900", 900},
                                         DurationCase{"TheThresholdIsSeconds", "1000", 1000},
                                         DurationCase{"AboveItAreMilliseconds", "1001", 1.001}),
                         [](const auto& c) { return std::string(c.param.name); });

TEST_F(MediaLibraryReaderTest, ListsAnItemWithoutExtraRow)
{
    create();
    file.run("insert into item (item_pid, base_location_id) values (1, 0), (2, 3)");
    TrackDb& db = read();
    ASSERT_EQ(db.tracks().size(), 2U);
    const Track& found = *db.tracks()[0];
    EXPECT_EQ(found.title, "");
    EXPECT_FALSE(found.title.isNull());
    EXPECT_EQ(found.path, "/Volumes/P");
    EXPECT_EQ(found.type, UnknownTrack);
    EXPECT_EQ(found.duration, 0.0);
    EXPECT_EQ(db.tracks()[1]->path, "/Volumes/P/iPod_Control/Music");
}

TEST_F(MediaLibraryReaderTest, BuildsThePathFromTheLocationAloneWhereTheBaseIsUnknown)
{
    create();
    file.run("insert into item (item_pid, base_location_id) values (1, 44)");
    file.run("insert into item_extra (item_pid, location) values (1, 'Music:F00:A.mp3')");
    EXPECT_EQ(read().tracks().at(0)->path, "/Volumes/P/Music/F00/A.mp3");
}

TEST_F(MediaLibraryReaderTest, ReadsTracksWithoutThePlaylistTable)
{
    create();
    addItem("1");
    file.run("drop table container_items");
    TrackDb& db = read();
    EXPECT_EQ(titles(db.tracks()), QStringList("T1"));
    EXPECT_TRUE(db.playlists().empty());
}

TEST_F(MediaLibraryReaderTest, KeepsBothOfTwoItemsThatDifferAboveBit31)
{
    create();
    addItem("1");
    addItem("4294967297");
    addPlaylist("9", "Mix", packed({1}));
    TrackDb& db = read();
    EXPECT_EQ(titles(db.tracks()), QStringList({"T1", "T4294967297"}));
    EXPECT_EQ(titles(db.playlists().at(0)->tracks), QStringList("T4294967297"));
}

TEST_F(MediaLibraryReaderTest, TakesTextThatIsNoUtf8ForNone)
{
    create();
    addItem("1");
    file.run("update item_extra set title = cast(x'ff41' as text), location = cast(x'ff' as text)");
    TrackDb& db = read();
    EXPECT_TRUE(db.tracks().at(0)->title.isNull());
    EXPECT_TRUE(db.tracks().at(0)->path.isNull()) << "a file that cannot be named is none";
}

TEST_F(MediaLibraryReaderTest, ReadsColumnsOfOtherTypes)
{
    create();
    file.run("insert into item (item_pid, base_location_id) values (1, 'three')");
    file.run("insert into item_extra (item_pid, title, location, total_time_ms, media_kind, "
             "is_podcast) values (1, 12.5, x'4142', 'long', x'02', '1')");
    file.run("insert into container (container_pid, name) values (9, x'4d6978')");
    file.run("insert into container_items (container_pid, item_pid_data) values (9, 17), "
             "(10, 'text')");
    TrackDb& db = read();
    const Track& found = *db.tracks().at(0);
    EXPECT_EQ(found.title, "12.5");
    EXPECT_EQ(found.path, "/Volumes/P/AB");
    EXPECT_EQ(found.duration, 0.0);
    EXPECT_TRUE(found.isPodcast);
    EXPECT_TRUE(db.playlists().empty());
}

TEST_F(MediaLibraryReaderTest, IsTheFirstOfSeveralFormatsAndTheBinaryOneTheLast)
{
    create();
    addItem("1");
    SqliteLibraries::writeLibrary(path("old"), {"Middle", {track(1, "Middle")}, {}});
    device.put(onDevice("iTunesDB"), "rubbish");
    EXPECT_EQ(device.trackDb()->format(), "iTunesDB");

    MemoryDevice middle;
    middle.put(onDevice("iTunesDB"), "rubbish");
    middle.put(onDevice("iTunes Library.itlp/Library.itdb"), Files::read(path("old/Library.itdb")));
    EXPECT_EQ(middle.trackDb()->name(), "Middle");

    MemoryDevice newest;
    newest.put(onDevice("iTunesDB"), "rubbish");
    newest.put(onDevice("iTunes Library.itlp/Library.itdb"), Files::read(path("old/Library.itdb")));
    newest.put(onDevice("MediaLibrary.sqlitedb"), Files::read(path("MediaLibrary.sqlitedb")));
    EXPECT_EQ(newest.trackDb()->name(), "Player");
}

TEST_F(MediaLibraryReaderTest, SaysThatTheReadingEndedAtACutMember)
{
    create();
    addItem("5");
    addPlaylist("8", "Cut", packed({5, 5}).first(12));
    TrackDb& db = read();
    (void)db.tracks();
    ASSERT_EQ(db.problems().all().size(), 1U);
    EXPECT_EQ(db.problems().all()[0].kind, Problem::Kind::Damaged);
}

TEST_F(MediaLibraryReaderTest, EndsAtACutMemberOfThePrimaryContainerToo)
{
    create();
    addItem("5");
    file.into("container_items (container_pid, item_pid_data)", 2).add({100, packed({5}) + "cut"});
    addPlaylist("101", "Never reached", packed({5}));
    TrackDb& db = read();
    EXPECT_EQ(titles(db.tracks()), QStringList("T5"));
    EXPECT_TRUE(db.playlists().empty());
    EXPECT_FALSE(db.problems().empty());
}

TEST_F(MediaLibraryReaderTest, TakesTheFirstRowOfTheInfoAndTheLaterOfAllOthers)
{
    create();
    file.run("insert into db_info (db_pid, primary_container_pid) values (2, 7)");
    file.run("drop table base_location; create table base_location (base_location_id, path);"
             "insert into base_location values (3, 'Old'), (3, 'New'), (4294967299, 'Newest')");
    file.run("insert into container (container_pid, name) values (9, 'Old mix'), "
             "(4294967305, 'New mix'), (4294967397, 'Other')");
    addItem("5");
    file.into("container_items (container_pid, item_pid_data)", 2).add({9, packed({5})});
    TrackDb& db = read();
    EXPECT_EQ(db.name(), "Player");
    EXPECT_EQ(db.tracks().at(0)->path, "/Volumes/P/Newest/F00/5.mp3");
    EXPECT_EQ(names(db.playlists()), QStringList("New mix"));
}

TEST_F(MediaLibraryReaderTest, EndsTextsAtANulAndKeepsTheMarkAtTheirBeginning)
{
    create();
    addItem("5");
    file.run("update item_extra set title = cast(x'efbbbf4f6e650054776f' as text)");
    const QString title = read().tracks().at(0)->title;
    EXPECT_EQ(title, QChar(0xFEFF) + QString("One"));
}

TEST_F(MediaLibraryReaderTest, TriesAPathWithANulWithAndWithoutWhatFollows)
{
    create();
    addItem("5");
    addItem("6");
    file.run("update item_extra set location = cast(x'46302f41002e6d7033' as text)"); // F0/A .mp3
    file.run("update item_extra set location = cast(x'46302f42002e6d7033' as text) "
             "where item_pid = 6");
    device.put("/Volumes/P/iPod_Control/Music/F0/A", "x");
    device.put("/Volumes/P/iPod_Control/Music/F0/A.mp3", "x");
    device.put("/Volumes/P/iPod_Control/Music/F0/B.mp3", "x");
    const std::vector<Track*>& tracks = read().tracks();
    ASSERT_EQ(tracks.size(), 2U);
    EXPECT_EQ(tracks[0]->path, "/Volumes/P/iPod_Control/Music/F0/A");
    EXPECT_EQ(tracks[1]->path, "/Volumes/P/iPod_Control/Music/F0/B.mp3");
}
