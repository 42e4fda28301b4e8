#include "SqlFixture.h"

#include <deque>

namespace
{
/// The pair `Library.itdb` and `Locations.itdb`, damaged.
class SqlPairDamage : public SqlFixture
{
protected:
    SqlPairDamage() { write(); }

    void write()
    {
        SqliteLibraries::writeLibrary(
            path(""), {"Player", {track(1, "One"), track(2, "Two")}, {{"Mix", {2, 1}}}});
    }
    void change(const QString& file, const QByteArray& sql)
    {
        SqliteWriter(path(file), SqliteWriter::Existing).run(sql);
    }
    [[nodiscard]] QByteArray bytes(const QString& file) const { return Files::read(path(file)); }

    /// The pair as a device has it; the reader lives as long as the fixture.
    TrackDb& read(const QByteArray& library, const QByteArray& locations)
    {
        MemoryDevice& phone = _phones.emplace_back();
        phone.put(onDevice("iTunes Library.itlp/Library.itdb"), library);
        phone.put(onDevice("iTunes Library.itlp/Locations.itdb"), locations);
        (void)phone.trackDb()->tracks();
        EXPECT_EQ(temporaryFiles(), QStringList());
        return *phone.trackDb();
    }
    TrackDb& read() { return read(bytes(Library), bytes(Locations)); }

    static QStringList paths(const std::vector<Track*>& tracks)
    {
        QStringList list;
        for (const Track* track : tracks)
            list.append(track->path);
        return list;
    }

    const QString Library = "Library.itdb";
    const QString Locations = "Locations.itdb";
    const QStringList Both = {"/Volumes/P/iPod_Control/Music/F00/1.mp3",
                              "/Volumes/P/iPod_Control/Music/F00/2.mp3"};

private:
    std::deque<MemoryDevice> _phones;
};
} // namespace

TEST_F(SqlPairDamage, LosesOnlyWhatAMissingTableOrColumnHolds)
{
    struct Expected {
        QString file;
        QByteArray table;
        QStringList tracks;
        QString name;
        QStringList playlists;
        QStringList paths;
    };
    const QStringList all = {"One", "Two"};
    const QStringList noPaths = {QString(), QString()};
    const std::vector<Expected> cases = {
        {Library, "db_info", {}, {}, {"Player", "Mix"}, {}}, // any container now
        {Library, "item", {}, "Player", {}, {}},
        {Library, "genre_map", {}, "Player", {}, {}},
        {Library, "container", all, {}, {}, Both},
        {Library, "item_to_container", {}, "Player", {}, {}},
        {Locations, "location", all, "Player", {"Mix"}, noPaths},
        {Locations,
         "base_location",
         all,
         "Player",
         {"Mix"},
         {"/Volumes/P/F00/1.mp3", "/Volumes/P/F00/2.mp3"}},
    };
    for (const Expected& expected : cases) {
        const QByteArray& table = expected.table;
        for (const QByteArray& instead : {QByteArray(), "create table " + table + " (unrelated)"}) {
            write();
            change(expected.file, "drop table " + table + ";" + instead);
            TrackDb& db = read();
            EXPECT_EQ(db.name(), expected.name) << table.constData();
            // Without its columns the table of members still has rows to offer, but none here.
            EXPECT_EQ(titles(db.tracks()), expected.tracks) << table.constData();
            EXPECT_EQ(names(db.playlists()), expected.playlists) << table.constData();
            EXPECT_EQ(paths(db.tracks()), expected.paths) << table.constData();
        }
    }
}

TEST_F(SqlPairDamage, ReadsNullsEverywhere)
{
    change(Library, "drop table item; drop table container; drop table item_to_container;"
                    "drop table db_info; drop table genre_map;"
                    "create table db_info (primary_container_pid);"
                    "create table item (pid, title, is_podcast, media_kind, album, artist, "
                    "genre_id, total_time_ms); create table genre_map (id, genre);"
                    "create table container (pid, name);"
                    "create table item_to_container (item_pid, container_pid)");
    change(Locations, "drop table location; drop table base_location;"
                      "create table location (item_pid, base_location_id, location);"
                      "create table base_location (id, path)");
    for (const char* table : {"db_info", "item", "genre_map", "container", "item_to_container"})
        change(Library, "insert into " + QByteArray(table) + " default values");
    for (const char* table : {"location", "base_location"})
        change(Locations, "insert into " + QByteArray(table) + " default values");
    TrackDb& db = read(); // every id is 0, the primary container's too
    ASSERT_EQ(db.tracks().size(), 1U);
    const Track& found = *db.tracks()[0];
    for (const QString& text : {found.title, found.artist, found.album, found.genre, db.name()}) {
        EXPECT_FALSE(text.isNull());
        EXPECT_TRUE(text.isEmpty());
    }
    EXPECT_EQ(found.path, "/Volumes/P");
    EXPECT_TRUE(db.playlists().empty());
}

TEST_F(SqlPairDamage, ReadsColumnsOfOtherTypes)
{
    change(Library, "update item set title = 12.5, is_podcast = 'yes', media_kind = '2', "
                    "album = x'4142', total_time_ms = 'long' where title = 'One'");
    change(Locations, "update location set location = 17 where location like '%1.mp3';"
                      "update base_location set path = x'4d75736963'");
    TrackDb& db = read();
    ASSERT_EQ(db.tracks().size(), 2U);
    const Track& found = *db.tracks()[0];
    EXPECT_EQ(found.title, "12.5");
    EXPECT_FALSE(found.isPodcast);
    EXPECT_EQ(found.type, MovieTrack);
    EXPECT_EQ(found.album, "AB");
    EXPECT_EQ(found.duration, 0.0);
    EXPECT_EQ(paths(db.tracks()),
              QStringList({"/Volumes/P/Music/17", "/Volumes/P/Music/F00/2.mp3"}));
}

TEST_F(SqlPairDamage, TakesTextThatIsNoUtf8ForNone)
{
    change(Library, "update item set title = cast(x'ff41' as text), artist = cast(x'c3' as text)");
    change(Locations, "update location set location = cast(x'ff' as text)");
    const Track& found = *read().tracks().at(0);
    EXPECT_TRUE(found.title.isNull());
    EXPECT_TRUE(found.artist.isNull());
    EXPECT_EQ(found.album, "Album");
    EXPECT_TRUE(found.path.isNull()) << "a file that cannot be named is none";
}

TEST_F(SqlPairDamage, HasNoPathsWhereOnlyTheLocationsAreEncryptedOrEmpty)
{
    for (const QByteArray& locations : {QByteArray(), Files::content(65536)}) {
        TrackDb& db = read(bytes(Library), locations);
        EXPECT_EQ(titles(db.tracks()), QStringList({"One", "Two"}));
        EXPECT_EQ(paths(db.tracks()), QStringList({QString(), QString()}));
        EXPECT_EQ(names(db.playlists()), QStringList("Mix"));
    }
    EXPECT_TRUE(read(Files::content(65536), bytes(Locations)).tracks().empty());
}

TEST_F(SqlPairDamage, MayBeCutAnywhere)
{
    const QByteArray library = bytes(Library);
    const QByteArray locations = bytes(Locations);
    for (qsizetype cut = 0; cut < library.size(); cut += cut < 200 ? 1 : 1009)
        EXPECT_LE(read(library.first(cut), locations).tracks().size(), 2U) << cut;
    for (qsizetype cut = 0; cut < locations.size(); cut += cut < 200 ? 1 : 1009) {
        EXPECT_EQ(titles(read(library, locations.first(cut)).tracks()), QStringList({"One", "Two"}))
            << cut;
    }
}

TEST_F(SqlPairDamage, MayHaveBytesChangedAnywhere)
{
    const QByteArray library = bytes(Library);
    const QByteArray locations = bytes(Locations);
    const auto changed = [](QByteArray file, qsizetype place) {
        file[place] = char(~file[place]);
        return file;
    };
    for (qsizetype i = 0; i < library.size(); i += i < 200 ? 1 : 601)
        (void)read(changed(library, i), locations);
    for (qsizetype i = 0; i < locations.size(); i += i < 200 ? 1 : 601)
        EXPECT_EQ(read(library, changed(locations, i)).tracks().size(), 2U) << i;
}

TEST_F(SqlPairDamage, ReadsNoViewForATable)
{
    change(Library, "drop table item_to_container; create view item_to_container as with "
                    "recursive n(i) as (select 1 union all select i + 1 from n) "
                    "select 1 as item_pid, 0 as container_pid from n");
    TrackDb& db = read();
    EXPECT_TRUE(db.tracks().empty());
    EXPECT_EQ(db.name(), "Player");
}

TEST_F(SqlPairDamage, StepsOverAGiantRow)
{
    change(Library, "update item set title = "
                    "cast(zeroblob(70000000) as text) where title = 'Two'");
    EXPECT_EQ(titles(read().tracks()), QStringList("One"));
}
