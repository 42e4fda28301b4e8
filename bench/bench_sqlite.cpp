// Loading the SQLite libraries, against the bare statements with nothing kept: once with their
// columns read and their texts decoded (the floor), once only stepped.

#include "Base/Utility.h"
#include "Device/Device.h"
#include "Device/TrackDb.h"
#include "support/LargeLibrary.h"
#include "support/SqliteLibraries.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <unistd.h>

#include <memory>
#include <vector>

namespace
{
constexpr int TrackCount = 100'000;

/// The databases, written once.
const QString& folder()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        const TestLibrary library = largeLibrary(TrackCount);
        SqliteLibraries::writeMediaLibrary(folder.filePath(QStringLiteral("MediaLibrary.sqlitedb")),
                                           library);
        SqliteLibraries::writeLibrary(folder.path(), library);
        return folder.path();
    }();
    return path;
}

/// A device whose copies cost nothing worth measuring: they are links to the files.
class LinkedDevice final : public Device
{
public:
    explicit LinkedDevice(const QString& library)
        : _library(library)
    {
        _prefix = QStringLiteral("/");
        _controlPath = QStringLiteral("/C");
    }

    Expected<FileInfo> info(const QString& path) override
    {
        if (!path.endsWith(_library))
            return Device::info(path);
        return FileInfo{FileInfo::Kind::File, 1};
    }
    CopyResult copyOut(const QString& from, const QString& to,
                       std::optional<int> /*progress*/) override
    {
        const QString file = folder() + from.sliced(from.lastIndexOf(u'/'));
        (void)!link(QFile::encodeName(file).constData(), QFile::encodeName(to).constData());
        return {};
    }

private:
    QString _library;
};

void load(benchmark::State& state, const QString& library)
{
    (void)folder();
    for (auto _ : state) {
        state.PauseTiming();
        auto device = std::make_unique<LinkedDevice>(library);
        (void)device->trackDb();
        state.ResumeTiming();
        benchmark::DoNotOptimize(device->trackDb()->tracks().size());
        state.PauseTiming();
        if (device->trackDb()->tracks().size() != std::size_t(TrackCount))
            state.SkipWithError("not all tracks were read");
        device.reset();
        state.ResumeTiming();
    }
}

/// A statement and the kinds of its columns: 'i'd, 'n'umber, 'r'eal, 't'ext, 'b'lob.
struct Query {
    const char* sql;
    const char* columns;
};

/// Reads the columns of a row and keeps nothing; texts are decoded.
void readColumns(sqlite3_stmt* statement, const char* columns)
{
    for (int i = 0; columns[i] != '\0'; ++i) {
        switch (columns[i]) {
        case 'i':
            benchmark::DoNotOptimize(sqlite3_column_int64(statement, i));
            break;
        case 'n':
            benchmark::DoNotOptimize(sqlite3_column_int(statement, i));
            break;
        case 'r':
            benchmark::DoNotOptimize(sqlite3_column_double(statement, i));
            break;
        case 'b':
            benchmark::DoNotOptimize(sqlite3_column_blob(statement, i));
            break;
        default:
            benchmark::DoNotOptimize(Utility::stringWithStmt(statement, i).constData());
        }
    }
}

enum class Columns { Read, Leave };

/// Steps through all rows of each statement.
void step(const QString& file, Columns columns, const std::vector<Query>& queries)
{
    sqlite3* database = nullptr;
    sqlite3_open(QFile::encodeName(file).constData(), &database);
    for (const Query& query : queries) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, query.sql, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            if (columns == Columns::Read)
                readColumns(statement, query.columns);
        }
        sqlite3_finalize(statement);
    }
    sqlite3_close(database);
}

template <Columns columns>
void MediaLibraryFloor(benchmark::State& state)
{
    (void)folder(); // written before the clock starts
    for (auto _ : state)
        step(folder() + QStringLiteral("/MediaLibrary.sqlitedb"), columns,
             {{"select primary_container_pid from db_info", "i"},
              {"select base_location_id, path from base_location", "it"},
              {"select item.item_pid, item.base_location_id, genre.genre, item_extra.title, "
               "item_extra.location, item_extra.media_kind, item_extra.total_time_ms, "
               "item_extra.is_podcast, album.album, item_artist.item_artist from item "
               "left outer join genre on item.genre_id = genre.genre_id "
               "left outer join item_extra on item.item_pid = item_extra.item_pid "
               "left outer join album on item.album_pid = album.album_pid "
               "left outer join item_artist on item.item_artist_pid = item_artist.item_artist_pid",
               "iitttnrntt"},
              {"select container_pid, name from container", "it"},
              {"select container_pid, item_pid_data from container_items", "ib"}});
}

template <Columns columns>
void LibraryFloor(benchmark::State& state)
{
    (void)folder(); // written before the clock starts
    for (auto _ : state) {
        step(folder() + QStringLiteral("/Library.itdb"), columns,
             {{"select primary_container_pid from db_info", "i"},
              {"select item.pid, item.title, item.is_podcast, item.media_kind, item.album, "
               "item.artist, genre_map.genre, item.total_time_ms from item "
               "left outer join genre_map on item.genre_id = genre_map.id",
               "itnntttr"},
              {"select pid, name from container", "it"},
              {"select * from item_to_container", "ii"}});
        step(folder() + QStringLiteral("/Locations.itdb"), columns,
             {{"select id, path from base_location", "it"},
              {"select item_pid, base_location_id, location from location", "iit"}});
    }
}

void MediaLibraryLoad(benchmark::State& state)
{
    load(state, QStringLiteral("MediaLibrary.sqlitedb"));
}

void LibraryLoad(benchmark::State& state)
{
    load(state, QStringLiteral("Library.itdb"));
}

constexpr auto Unit = benchmark::kMillisecond;
BENCHMARK(MediaLibraryFloor<Columns::Leave>)->Name("MediaLibraryStepped")->Unit(Unit)->MinTime(1.0);
BENCHMARK(MediaLibraryFloor<Columns::Read>)->Name("MediaLibraryFloor")->Unit(Unit)->MinTime(1.0);
BENCHMARK(MediaLibraryLoad)->Unit(Unit)->MinTime(1.0);
BENCHMARK(LibraryFloor<Columns::Leave>)->Name("LibraryStepped")->Unit(Unit)->MinTime(1.0);
BENCHMARK(LibraryFloor<Columns::Read>)->Name("LibraryFloor")->Unit(Unit)->MinTime(1.0);
BENCHMARK(LibraryLoad)->Unit(Unit)->MinTime(1.0);
} // namespace

BENCHMARK_MAIN();
