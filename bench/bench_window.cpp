// What a person waits for in the window, at 100,000 tracks, without the drawing.

#include "Device/TrackDb.h"
#include "Window/Models/SourceListModel.h"
#include "Window/Models/TrackTableModel.h"
#include "support/LargeLibrary.h"
#include "support/MemoryDevice.h"

#include <benchmark/benchmark.h>

namespace
{
constexpr int TrackCount = 100'000;

MemoryDevice& device()
{
    static MemoryDevice player;
    if (!player.fileExists("/Volumes/P/iPod_Control/iTunes/iTunesDB")) {
        player.put("/Volumes/P/iPod_Control/iTunes/iTunesDB", largeITunesDb(TrackCount));
        (void)player.trackDb()->tracks();
        (void)player.trackDb()->music();
    }
    return player;
}

void chooseAll(TrackBrowser& browser)
{
    browser.chooseGenre(0);
    browser.chooseArtist(0);
    browser.chooseAlbum(0);
}

/// Choosing "Music": the three lists of the browser and the rows of the table.
void ChooseMusic(benchmark::State& state)
{
    const CategoryIndex& music = device().trackDb()->music();
    TrackBrowser browser;
    TrackTableModel table;
    for (auto _ : state) {
        browser.showCategory(music);
        chooseAll(browser);
        table.setTracks(browser.filteredTracks());
    }
}

/// One keystroke in the search field.
void Keystroke(benchmark::State& state)
{
    TrackBrowser browser;
    TrackTableModel table;
    browser.showTracks(device().trackDb()->tracks());
    for (auto _ : state) {
        browser.search("road 77");
        table.setTracks(browser.filteredTracks());
    }
}

/// Another genre, with the lists below it and the rows.
void ChooseGenre(benchmark::State& state)
{
    TrackBrowser browser;
    TrackTableModel table;
    browser.showCategory(device().trackDb()->music());
    int row = 0;
    for (auto _ : state) {
        browser.chooseGenre(1 + row++ % 40);
        browser.chooseArtist(0);
        browser.chooseAlbum(0);
        table.setTracks(browser.filteredTracks());
    }
}

void ChooseAlbum(benchmark::State& state)
{
    TrackBrowser browser;
    TrackTableModel table;
    browser.showCategory(device().trackDb()->music());
    chooseAll(browser);
    int row = 0;
    for (auto _ : state) {
        browser.chooseAlbum(1 + row++ % 1000);
        table.setTracks(browser.filteredTracks());
    }
}

void SortByTitle(benchmark::State& state)
{
    TrackBrowser browser;
    TrackTableModel table;
    browser.showTracks(device().trackDb()->tracks());
    table.setTracks(browser.filteredTracks());
    for (auto _ : state)
        table.sort(TrackTableModel::Title);
}

/// A device is chosen whose library is loaded.
void SourceList(benchmark::State& state)
{
    SourceListModel sources;
    for (auto _ : state)
        sources.setDevice(&device());
}

BENCHMARK(ChooseMusic)->Unit(benchmark::kMillisecond);
BENCHMARK(Keystroke)->Unit(benchmark::kMillisecond);
BENCHMARK(ChooseGenre)->Unit(benchmark::kMillisecond);
BENCHMARK(ChooseAlbum)->Unit(benchmark::kMillisecond);
BENCHMARK(SortByTitle)->Unit(benchmark::kMillisecond);
BENCHMARK(SourceList)->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();
