// What a person waits for in the window, at 100,000 tracks: the real window, drawn offscreen.

#include "Device/TrackDb.h"
#include "Window/BrowserPane.h"
#include "Window/MainWindowController.h"
#include "Window/SourceList.h"
#include "Window/Style.h"
#include "Window/TrackTable.h"
#include "Window/Views/RowTableView.h"
#include "Window/Views/SourceTreeView.h"
#include "support/LargeLibrary.h"
#include "support/MemoryDevice.h"

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace
{
constexpr int TrackCount = 100'000;

/// The window with a large player connected; its library is read and indexed.
class Desk
{
public:
    /// Made at first use; `end` must come before the application object goes.
    static Desk& shared()
    {
        if (!desk())
            desk().reset(new Desk);
        return *desk();
    }
    static void end() { desk().reset(); }

    MainWindow& window() { return _controller.window(); }
    QAbstractItemView& sources() { return *window().sources().outlineView(); }
    RowTableView& table() { return *window().tracks().tableView(); }
    void choose(const char* category)
    {
        const QModelIndexList found =
            sources().model()->match(sources().model()->index(0, 0), Qt::DisplayRole,
                                     QString::fromLatin1(category), 1, Qt::MatchStartsWith);
        sources().setCurrentIndex(found.first());
        draw();
    }
    /// All of "Music", whatever was chosen in the browser before.
    void showAllMusic()
    {
        choose("Movies");
        choose("Music");
    }
    /// Until the rows show.
    static void draw() { QCoreApplication::processEvents(); }

private:
    static std::unique_ptr<Desk>& desk()
    {
        static std::unique_ptr<Desk> theDesk;
        return theDesk;
    }

    Desk()
    {
        const auto player = std::make_shared<MemoryDevice>();
        player->put("/Volumes/P/iPod_Control/iTunes/iTunesDB", largeITunesDb(TrackCount));
        window().show();
        draw();
        _controller.deviceConnected(player);
        draw();
    }

    MainWindowController _controller;
};

/// Counts the rows that a view draws.
class CountingDelegate final : public QStyledItemDelegate
{
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        ++cells;
        QStyledItemDelegate::paint(painter, option, index);
    }
    mutable std::int64_t cells = 0;
};

/// From a click on "Music" until its rows show.
void ChooseMusic(benchmark::State& state)
{
    Desk& desk = Desk::shared();
    for (auto _ : state) {
        state.PauseTiming();
        desk.choose("Movies");
        state.ResumeTiming();
        desk.choose("Music");
    }
}

/// One keystroke in the search field, over all tracks.
void Keystroke(benchmark::State& state)
{
    Desk& desk = Desk::shared();
    desk.showAllMusic();
    const QStringList texts = {"road 7", "road 77"};
    int i = 0;
    for (auto _ : state) {
        desk.window().searchField().setText(texts[++i % 2]);
        Desk::draw();
    }
    desk.window().searchField().clear();
}

void chooseRows(benchmark::State& state, RowTableView* (BrowserPane::*view)() const)
{
    Desk& desk = Desk::shared();
    desk.showAllMusic();
    RowTableView* list = (desk.window().browser().*view)();
    int row = 0;
    for (auto _ : state) {
        list->selectRow(1 + row++ % (list->model()->rowCount() - 1));
        Desk::draw();
    }
}

void ChooseGenre(benchmark::State& state)
{
    chooseRows(state, &BrowserPane::genreView);
}

void ChooseArtist(benchmark::State& state)
{
    chooseRows(state, &BrowserPane::artistView);
}

void ChooseAlbum(benchmark::State& state)
{
    chooseRows(state, &BrowserPane::albumView);
}

void SortByTitle(benchmark::State& state)
{
    Desk& desk = Desk::shared();
    desk.showAllMusic();
    int i = 0;
    for (auto _ : state) {
        desk.table().sortByColumn(TrackTableModel::Title,
                                  ++i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
        Desk::draw();
    }
    desk.table().sortByColumn(-1, Qt::AscendingOrder);
}

/// One page further; `rows` says how many rows that drew, `visible` how many there is room for.
void ScrollAPage(benchmark::State& state)
{
    Desk& desk = Desk::shared();
    desk.showAllMusic();
    CountingDelegate counter;
    desk.table().setItemDelegateForColumn(TrackTableModel::Title, &counter);
    QScrollBar* bar = desk.table().verticalScrollBar();
    Desk::draw();
    counter.cells = 0;
    for (auto _ : state) {
        bar->setValue(
            bar->value() + bar->pageStep() < bar->maximum() ? bar->value() + bar->pageStep() : 0);
        Desk::draw();
    }
    state.counters["rows"] = double(counter.cells) / double(state.iterations());
    state.counters["visible"] =
        double(desk.table().viewport()->height()) / desk.table().rowHeight(0);
    desk.table().setItemDelegateForColumn(TrackTableModel::Title, nullptr);
}

/// What the window itself needs for each track that it shows.
void BytesATrack(benchmark::State& state)
{
    Desk& desk = Desk::shared();
    double bytes = 0;
    for (auto _ : state) {
        desk.choose("Ringtones");
        const auto before = mallinfo2();
        desk.choose("Playlists"); // every track
        const auto after = mallinfo2();
        bytes = double(after.uordblks + after.hblkhd) - double(before.uordblks + before.hblkhd);
    }
    state.counters["bytes"] = bytes / TrackCount;
}

BENCHMARK(ChooseMusic)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Keystroke)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ChooseGenre)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ChooseArtist)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ChooseAlbum)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SortByTitle)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ScrollAPage)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BytesATrack)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);
} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    for (const char* variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Style::install();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    Desk::end();
    return 0;
}
