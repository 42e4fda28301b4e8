#include "SqlFixture.h"

#include <QElapsedTimer>

namespace
{
/// Libraries that no device would write.
class HostileDatabase : public SqlFixture
{
protected:
    TrackDb& read(const QByteArray& sql)
    {
        SqliteWriter(path("MediaLibrary.sqlitedb")).run(sql);
        return readFile();
    }
    TrackDb& readFile()
    {
        put("MediaLibrary.sqlitedb", onDevice("MediaLibrary.sqlitedb"));
        QElapsedTimer clock;
        clock.start();
        TrackDb& db = *device.trackDb();
        (void)db.tracks();
        EXPECT_LT(clock.elapsed(), 60000);
        EXPECT_EQ(temporaryFiles(), QStringList());
        return db;
    }
};

const QByteArray OtherTables =
    "create table genre (genre_id, genre); create table album (album_pid, album);"
    "create table item_artist (item_artist_pid, item_artist);"
    "create table item_extra (item_pid, title, location, media_kind, total_time_ms, is_podcast);";
} // namespace

TEST_F(HostileDatabase, EndsAViewThatRecursesForEver)
{
    TrackDb& db =
        read(OtherTables + "create view item as with recursive n(i) as (select 1 union all "
                           "select i + 1 from n) select i as item_pid, 1 as base_location_id, "
                           "1 as genre_id, 1 as album_pid, 1 as item_artist_pid from n");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, EndsAViewThatMultipliesRowsForEver)
{
    TrackDb& db = read(
        OtherTables +
        "create table t (i); insert into t values (1),(2),(3),(4),(5),(6),(7),(8),(9),(10);"
        "create view item as select a.i as item_pid, 1 as base_location_id, 1 as genre_id, "
        "1 as album_pid, 1 as item_artist_pid from t a, t b, t c, t d, t e, t f, t g, t h, t i");
    // A table has no more rows than its file has bytes.
    EXPECT_LE(db.tracks().size(), std::size_t(Files::read(path("MediaLibrary.sqlitedb")).size()));
}

TEST_F(HostileDatabase, EndsAViewThatNeverYieldsARow)
{
    TrackDb& db = read(
        OtherTables +
        "create table t (i); insert into t values (1),(2),(3),(4),(5),(6),(7),(8),(9),(10);"
        "create view item as select count(*) as item_pid, 1 as base_location_id, 1 as genre_id, "
        "1 as album_pid, 1 as item_artist_pid from t a, t b, t c, t d, t e, t f, t g, t h, t i, "
        "t j, t k, t l");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, MakesNoTextThatIsLongerThanTheFile)
{
    TrackDb& db =
        read(OtherTables + "create table item (item_pid, base_location_id, genre_id, album_pid, "
                           "item_artist_pid);"
                           "insert into item values (1, 1, 1, 1, 1), (2, 1, 1, 1, 1);"
                           "drop table item_extra; create view item_extra as select 1 as item_pid, "
                           "hex(zeroblob(400000000)) as title, 'a' as location, 1 as media_kind, "
                           "1 as total_time_ms, 0 as is_podcast");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, ReadsNoViewForATable)
{
    TrackDb& db =
        read(OtherTables + "create view item as select 5 as item_pid, 1 as base_location_id, "
                           "1 as genre_id, 1 as album_pid, 1 as item_artist_pid");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, PreparesNoViewsOfViews)
{
    QByteArray views = "create table v0 (item_pid, base_location_id, genre_id, album_pid, "
                       "item_artist_pid);";
    for (int i = 0; i < 15; ++i) {
        const QByteArray from = "v" + QByteArray::number(i);
        views += "create view v" + QByteArray::number(i + 1) + " as select x.* from " + from +
                 " x, " + from + " y;";
    }
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(
        read(OtherTables + views + "create view item as select * from v15").tracks().empty());
    EXPECT_LT(clock.elapsed(), 5000);
}

TEST_F(HostileDatabase, PreparesNoColumnsThatDoubleEachOther)
{
    QByteArray item = "create table item (base_location_id, genre_id, album_pid, item_artist_pid, "
                      "g0";
    for (int i = 0; i < 40; ++i) {
        const QByteArray from = "g" + QByteArray::number(i);
        item += ", g" + QByteArray::number(i + 1) + " as (" + from + " || " + from + ")";
    }
    EXPECT_TRUE(read(OtherTables + item + ", item_pid as (g40)); insert into item (g0) values ('')")
                    .tracks()
                    .empty());
}

TEST_F(HostileDatabase, MayHaveIndexesThatNeedRefusedFunctions)
{
    TrackDb& db =
        read(OtherTables + "create table item (item_pid, base_location_id, genre_id, album_pid, "
                           "item_artist_pid); insert into item values (1, 1, 1, 1, 1);"
                           "create index by_place on item (instr(item_pid, '1'));"
                           "create index some on item (album_pid) where item_pid like '1%'");
    EXPECT_EQ(db.tracks().size(), 1U);
}

TEST_F(HostileDatabase, MayHaveColumnsThatTrimWithoutEnd)
{
    TrackDb& db = read(OtherTables + "create table item (item_pid, base_location_id, album_pid, "
                                     "item_artist_pid, genre_id as (ltrim(hex(zeroblob(30000)), "
                                     "printf('%30000s', '') || '0')));"
                                     "insert into item (item_pid) values (1)");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, MayHaveIdsThatAreAllAlike)
{
    // Ids chosen to meet in one place of a table of ids that spreads them by a known rule.
    constexpr quint64 KnownFactor = 0x9E3779B97F4A7C15;
    constexpr int Count = 30'000;
    const QString name = path("MediaLibrary.sqlitedb");
    {
        SqliteWriter file(name);
        SqliteLibraries::createMediaLibrary(file);
        file.run("begin; insert into container (container_pid, name) values (9, 'Mix')");
        auto item = file.into("item (item_pid)", 1);
        auto member = file.into("container_items (container_pid, item_pid_data)", 2);
        QByteArray members;
        int found = 0;
        for (quint32 id = 1; found < Count; ++id) {
            if ((id * KnownFactor >> 32 & 0xffff) >= 0x200)
                continue;
            ++found;
            item.add({qint64(id)});
            const qint64 stored = id;
            members.append(reinterpret_cast<const char*>(&stored), sizeof stored);
        }
        member.add({9, members});
        file.run("commit");
    }
    TrackDb& db = readFile();
    EXPECT_EQ(db.tracks().size(), std::size_t(Count));
    ASSERT_EQ(db.playlists().size(), 1U);
    EXPECT_EQ(db.playlists()[0]->tracks.size(), std::size_t(Count));
}

TEST_F(HostileDatabase, StepsOverAGiantRowAndSaysSo)
{
    const QString giant(70 << 20, u'x');
    SqliteLibraries::writeMediaLibrary(
        path("MediaLibrary.sqlitedb"),
        {"Player", {track(1, "One"), track(2, giant), track(3, "Three")}, {}});
    TrackDb& db = readFile();
    QStringList read = titles(db.tracks());
    read.sort();
    EXPECT_EQ(read, QStringList({"One", "Three"}));
    ASSERT_EQ(db.problems().all().size(), 1U);
    EXPECT_EQ(db.problems().all()[0].kind, Problem::Kind::CutOff);
}

TEST_F(HostileDatabase, ReadsAGiantTextThatIsReallyThere)
{
    const QString title(20 << 20, u'x');
    SqliteLibraries::writeMediaLibrary(path("MediaLibrary.sqlitedb"),
                                       {"Player", {track(1, title), track(2, "Two")}, {}});
    TrackDb& db = readFile();
    ASSERT_EQ(db.tracks().size(), 2U);
    EXPECT_EQ(db.tracks()[0]->title.size(), title.size());
}

TEST_F(HostileDatabase, ReadsNoVirtualTableForATable)
{
    TrackDb& db = read(OtherTables +
                       "create virtual table item using fts4(item_pid, base_location_id, genre_id, "
                       "album_pid, item_artist_pid); insert into item values (1, 1, 1, 1, 1)");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, MayHoldViewsAndVirtualTablesThatAreNotRead)
{
    TrackDb& db = read(OtherTables +
                       "create virtual table search using fts4(title); create view v as select * "
                       "from search; create table item (item_pid, base_location_id, genre_id, "
                       "album_pid, item_artist_pid); insert into item values (1, 1, 1, 1, 1)");
    EXPECT_EQ(db.tracks().size(), 1U);
}

TEST_F(HostileDatabase, LosesOnlyWhatAMissingTableOrColumnHolds)
{
    struct Expected {
        const char* table;
        std::size_t tracks;
        QString name;
        QStringList playlists;
    };
    const QString none;
    const std::vector<Expected> cases = {
        {"db_info", 2, none, {"Player", "Mix"}}, // now the primary one is a container as any
        {"base_location", 2, "Player", {"Mix"}},
        {"item", 0, "Player", {}},
        {"item_extra", 0, "Player", {}},
        {"genre", 0, "Player", {}},
        {"album", 0, "Player", {}},
        {"item_artist", 0, "Player", {}},
        {"container", 2, none, {}},
        {"container_items", 2, "Player", {}},
    };
    for (const Expected& expected : cases) {
        const QByteArray table(expected.table);
        for (const QByteArray& instead : {QByteArray(), "create table " + table + " (unrelated)"}) {
            const QString name = path("without-" + table);
            SqliteLibraries::writeMediaLibrary(
                name, {"Player", {track(1, "One"), track(2, "Two")}, {{"Mix", {1, 2}}}});
            SqliteWriter(name, SqliteWriter::Existing).run("drop table " + table + ";" + instead);
            MemoryDevice other;
            other.put(onDevice("MediaLibrary.sqlitedb"), Files::read(name));
            TrackDb& db = *other.trackDb();
            EXPECT_EQ(db.tracks().size(), expected.tracks) << expected.table;
            EXPECT_EQ(db.name(), expected.name) << expected.table;
            QStringList playlists = names(db.playlists());
            playlists.sort();
            QStringList sorted = expected.playlists;
            sorted.sort();
            EXPECT_EQ(playlists, sorted) << expected.table;
        }
    }
}

TEST_F(HostileDatabase, MayBeCutAnywhere)
{
    const QString file = path("MediaLibrary.sqlitedb");
    SqliteLibraries::writeMediaLibrary(
        file, {"Player", {track(1, "One"), track(2, "Two")}, {{"Mix", {1, 2}}}});
    const QByteArray whole = Files::read(file);
    for (qsizetype cut = 0; cut <= whole.size(); cut += cut < 200 ? 1 : 1009) {
        MemoryDevice other;
        other.put(onDevice("MediaLibrary.sqlitedb"), whole.first(cut));
        EXPECT_LE(other.trackDb()->tracks().size(), 2U);
    }
}

TEST_F(HostileDatabase, MayHaveBytesChangedAnywhere)
{
    const QString file = path("MediaLibrary.sqlitedb");
    SqliteLibraries::writeMediaLibrary(
        file, {"Player", {track(1, "One"), track(2, "Two")}, {{"Mix", {1, 2}}}});
    const QByteArray whole = Files::read(file);
    for (qsizetype i = 0; i < whole.size(); i += i < 200 ? 1 : 601) {
        QByteArray bytes = whole;
        bytes[i] = char(bytes[i] ^ 0xff);
        MemoryDevice other;
        other.put(onDevice("MediaLibrary.sqlitedb"), bytes);
        (void)other.trackDb()->tracks();
    }
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(HostileDatabase, MayBeEncryptedOrEmpty)
{
    for (const QByteArray& bytes : {QByteArray(), Files::content(65536)}) {
        MemoryDevice other;
        other.put(onDevice("MediaLibrary.sqlitedb"), bytes);
        EXPECT_TRUE(other.trackDb()->tracks().empty());
        EXPECT_TRUE(other.trackDb()->playlists().empty());
        EXPECT_TRUE(other.trackDb()->name().isNull());
    }
}

TEST_F(HostileDatabase, MayHaveColumnsThatCallFunctionsWithoutEnd)
{
    TrackDb& db =
        read("create table genre (genre_id, genre); create table album (album_pid, album);"
             "create table item_artist (item_artist_pid, item_artist);"
             "create table item_extra (item_pid, location, media_kind, total_time_ms, is_podcast);"
             "create table item (item_pid, base_location_id, genre_id, album_pid, "
             "item_artist_pid); insert into item values (1, 1, 1, 1, 1);"
             "insert into item_extra (item_pid) values (1);"
             "alter table item_extra add column title as "
             "(instr(zeroblob(60000), zeroblob(30000) || x'01') + "
             "length(replace(hex(zeroblob(30000)), hex(zeroblob(15000)) || 'x', '')))");
    EXPECT_TRUE(db.tracks().empty());
}

TEST_F(HostileDatabase, ReadsNoColumnThatIsMadeFromOthers)
{
    TrackDb& db = read(OtherTables + "create table item (base_location_id, genre_id, album_pid, "
                                     "item_artist_pid, item_pid as (genre_id + 1));"
                                     "insert into item (genre_id) values (1)");
    EXPECT_TRUE(db.tracks().empty());
    ASSERT_FALSE(db.problems().empty());
    EXPECT_EQ(db.problems().begin()->kind, Problem::Kind::NotUnderstood);
}

TEST_F(HostileDatabase, MayHaveColumnsMadeFromOthersThatNobodyReads)
{
    TrackDb& db =
        read(OtherTables + "create table item (item_pid, base_location_id, genre_id, album_pid, "
                           "item_artist_pid, more as (genre_id + 1));"
                           "insert into item (item_pid) values (1)");
    EXPECT_EQ(db.tracks().size(), 1U);
}

TEST_F(HostileDatabase, EndsItsWorkWhereEveryRowIsOutOfReach)
{
    // Without a whole table of genres each row fails, and each costs a search.
    const QString name = path("MediaLibrary.sqlitedb");
    std::vector<TestTrack> tracks;
    for (quint32 i = 1; i <= 20'000; ++i)
        tracks.push_back(track(i, "T"));
    SqliteLibraries::writeMediaLibrary(name, {"Player", tracks, {}});
    QByteArray damaged = Files::read(name);
    for (qsizetype at = damaged.indexOf("Genre", 4096); at >= 0; at = damaged.indexOf("Genre"))
        damaged.replace(at / 4096 * 4096, 4096, QByteArray(4096, '\xff'));
    Files::write(name, damaged);
    TrackDb& db = readFile();
    EXPECT_FALSE(db.problems().empty());
    EXPECT_EQ(db.tracks().size(), 20'000U);
}
