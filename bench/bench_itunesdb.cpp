// Loading an iTunesDB and filling the index, against the least that any reader has to do.

#include "Device/TrackDb.h"
#include "Device/iPod/iPodDevice.h"
#include "floor_itunesdb.h"
#include "support/Files.h"
#include "support/LargeLibrary.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <map>
#include <memory>

namespace
{
/// A player with a library of so many tracks; written once, read by every benchmark.
QString playerWith(int trackCount)
{
    static std::map<int, std::unique_ptr<QTemporaryDir>> players;
    std::unique_ptr<QTemporaryDir>& folder = players[trackCount];
    if (!folder) {
        folder = std::make_unique<QTemporaryDir>();
        Files::write(folder->filePath("iPod_Control/iTunes/iTunesDB"), largeITunesDb(trackCount));
    }
    return folder->path();
}

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

void Floor(benchmark::State& state)
{
    const QString file = playerWith(int(state.range(0))) + "/iPod_Control/iTunes/iTunesDB";
    for (auto _ : state)
        benchmark::DoNotOptimize(floorOfITunesDb(file));
}

/// A device whose reader is made but has not read yet: the copy for diagnosis is not measured.
std::unique_ptr<iPodDevice> deviceWith(int trackCount)
{
    auto device = std::make_unique<iPodDevice>(playerWith(trackCount));
    (void)device->trackDb();
    return device;
}

void Load(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto device = deviceWith(int(state.range(0)));
        state.ResumeTiming();
        benchmark::DoNotOptimize(device->trackDb()->tracks().size());
        state.PauseTiming();
        device.reset();
        state.ResumeTiming();
    }
}

void Index(benchmark::State& state)
{
    double bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const double before = heapBytes();
        auto device = deviceWith(int(state.range(0)));
        (void)device->trackDb()->tracks();
        state.ResumeTiming();
        benchmark::DoNotOptimize(&device->trackDb()->music());
        state.PauseTiming();
        bytes = heapBytes() - before;
        device.reset();
        state.ResumeTiming();
    }
    state.counters["bytes/track"] = bytes / double(state.range(0));
}

/// What a person waits for: all tracks, then one artist's, then the lists of the browser.
void Browse(benchmark::State& state)
{
    auto device = deviceWith(int(state.range(0)));
    (void)device->trackDb()->tracks();
    const CategoryIndex& music = device->trackDb()->music();
    for (auto _ : state) {
        benchmark::DoNotOptimize(music.tracks("*|*|*").size());
        benchmark::DoNotOptimize(music.tracks("*|The Wandering Company 7|*").size());
        benchmark::DoNotOptimize(music.genres().size());
        benchmark::DoNotOptimize(music.artists("*").size());
        benchmark::DoNotOptimize(music.albums("*", "*").size());
    }
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    for (const int trackCount : {10'000, 50'000, 100'000, 200'000})
        benchmark->Arg(trackCount);
    benchmark->Unit(benchmark::kMillisecond)->MinTime(1.0);
}

BENCHMARK(Floor)->Apply(sizes);
BENCHMARK(Load)->Apply(sizes);
BENCHMARK(Index)->Apply(sizes);
BENCHMARK(Browse)->Apply(sizes);
} // namespace

BENCHMARK_MAIN();
