// Loading the SQLite libraries, against the bare statements stepped with nothing kept.

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

    using Device::read;
    bool fileExists(const QString& path) override { return path.endsWith(_library); }
    double getFileSize(const QString& /*path*/) override { return 1; }
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

/// Steps through all rows of each statement.
void step(const QString& file, const std::vector<const char*>& statements)
{
    sqlite3* database = nullptr;
    sqlite3_open(QFile::encodeName(file).constData(), &database);
    for (const char* sql : statements) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
        }
        sqlite3_finalize(statement);
    }
    sqlite3_close(database);
}

void MediaLibraryFloor(benchmark::State& state)
{
    (void)folder(); // written before the clock starts
    for (auto _ : state)
        step(folder() + QStringLiteral("/MediaLibrary.sqlitedb"),
             {"select primary_container_pid from db_info",
              "select base_location_id, path from base_location",
              "select item.item_pid, item.base_location_id, genre.genre, item_extra.title, "
              "item_extra.location, item_extra.media_kind, item_extra.total_time_ms, "
              "item_extra.is_podcast, album.album, item_artist.item_artist from item "
              "left outer join genre on item.genre_id = genre.genre_id "
              "left outer join item_extra on item.item_pid = item_extra.item_pid "
              "left outer join album on item.album_pid = album.album_pid "
              "left outer join item_artist on item.item_artist_pid = item_artist.item_artist_pid",
              "select container_pid, name from container",
              "select container_pid, item_pid_data from container_items"});
}

void LibraryFloor(benchmark::State& state)
{
    (void)folder(); // written before the clock starts
    for (auto _ : state) {
        step(folder() + QStringLiteral("/Library.itdb"),
             {"select primary_container_pid from db_info",
              "select item.pid, item.title, item.is_podcast, item.media_kind, item.album, "
              "item.artist, genre_map.genre, item.total_time_ms from item "
              "left outer join genre_map on item.genre_id = genre_map.id",
              "select pid, name from container", "select * from item_to_container"});
        step(folder() + QStringLiteral("/Locations.itdb"),
             {"select id, path from base_location",
              "select item_pid, base_location_id, location from location"});
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

BENCHMARK(MediaLibraryFloor)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(MediaLibraryLoad)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(LibraryFloor)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(LibraryLoad)->Unit(benchmark::kMillisecond)->MinTime(1.0);
} // namespace

BENCHMARK_MAIN();
