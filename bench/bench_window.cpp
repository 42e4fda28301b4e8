// What a person waits for in the window: at 100,000 tracks without the drawing, and in a grid of
// 50,000 photos with it.

#include "Device/Photo.h"
#include "Device/TrackDb.h"
#include "Window/Models/SourceListModel.h"
#include "Window/Models/TrackTableModel.h"
#include "Window/PhotoGrid.h"
#include "Window/Views/NSCollectionViewEx.h"
#include "support/LargeLibrary.h"
#include "support/MemoryDevice.h"
#include "support/SamplePicture.h"

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <deque>

namespace
{
constexpr int TrackCount = 100'000;
constexpr int PhotoCount = 50'000;

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

/// Two albums of 50,000 photos, and a grid as large as in a usual window.
class Photos
{
public:
    Photos()
    {
        std::vector<QImage> pictures;
        for (int i = 0; i < 50; ++i)
            pictures.push_back(SamplePicture::draw(i, {176, 132}));
        for (int i = 0; i < PhotoCount; ++i) {
            Photo& photo = _photos.emplace_back();
            photo.fullSizeFile = QStringLiteral("/DCIM/100APPLE/IMG_%1.JPG").arg(i);
            photo.setSmallImage(pictures[std::size_t(i) % pictures.size()]);
            _albums[0].push_back(&photo);
        }
        _albums[1].assign(_albums[0].rbegin(), _albums[0].rend());
        _grid.resize(900, 600);
        _grid.show();
        QApplication::processEvents();
        choose(0);
    }

    PhotoGrid& grid() { return _grid; }
    void choose(int album) { _grid.setPhotos(_albums[album], nullptr); }
    void scrollTo(int fraction)
    {
        QScrollBar* bar = _grid.collectionView()->verticalScrollBar();
        bar->setValue(bar->maximum() / 97 * (fraction % 97));
    }
    /// Lays out, if that is due, and draws what is visible.
    void paint()
    {
        NSCollectionViewEx* view = _grid.collectionView();
        benchmark::DoNotOptimize(view->visualRect(view->model()->index(0, 0)));
        benchmark::DoNotOptimize(view->viewport()->grab());
    }

private:
    std::deque<Photo> _photos;
    std::vector<Photo*> _albums[2];
    PhotoGrid _grid;
};

/// Another album of 50,000 photos, until it is seen.
void ChoosePhotos(benchmark::State& state)
{
    Photos photos;
    int album = 0;
    for (auto _ : state) {
        photos.choose(++album % 2);
        photos.paint();
    }
}

/// One step of scrolling: all that is visible is drawn.
void PaintPhotos(benchmark::State& state)
{
    Photos photos;
    photos.paint();
    int place = 0;
    for (auto _ : state) {
        photos.scrollTo(++place);
        photos.paint();
    }
}

/// More previews have been made; ten times a second while there are some to come.
void NewPreviews(benchmark::State& state)
{
    Photos photos;
    photos.paint();
    auto* model = qobject_cast<PhotoGridModel*>(photos.grid().collectionView()->model());
    for (auto _ : state) {
        model->previewsChanged();
        photos.paint();
    }
}

void InvertSelection(benchmark::State& state)
{
    Photos photos;
    photos.paint();
    for (auto _ : state) {
        photos.grid().invertSelection();
        photos.paint();
        benchmark::DoNotOptimize(photos.grid().selectedPhotos());
    }
}

BENCHMARK(ChoosePhotos)->Unit(benchmark::kMillisecond);
BENCHMARK(PaintPhotos)->Unit(benchmark::kMillisecond);
BENCHMARK(NewPreviews)->Unit(benchmark::kMillisecond);
BENCHMARK(InvertSelection)->Unit(benchmark::kMillisecond);
BENCHMARK(ChooseMusic)->Unit(benchmark::kMillisecond);
BENCHMARK(Keystroke)->Unit(benchmark::kMillisecond);
BENCHMARK(ChooseGenre)->Unit(benchmark::kMillisecond);
BENCHMARK(ChooseAlbum)->Unit(benchmark::kMillisecond);
BENCHMARK(SortByTitle)->Unit(benchmark::kMillisecond);
BENCHMARK(SourceList)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
