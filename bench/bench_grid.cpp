// What a person waits for in a grid of 50,000 photos, with the drawing.

#include "Device/Photo.h"
#include "Window/PhotoGrid.h"
#include "Window/Views/PhotoListView.h"
#include "support/SamplePicture.h"

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <deque>

namespace
{
constexpr int PhotoCount = 50'000;

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
        PhotoListView* view = _grid.collectionView();
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
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
