// The grid of photos as a person uses it, with real pictures on a mounted player.

#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/PreviewPass.h"
#include "Window/Commands.h"
#include "Window/Views/PhotoDelegate.h"
#include "support/SamplePhotos.h"
#include "support/WindowFixture.h"

#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <array>
#include <semaphore>

namespace
{
using Ids = std::vector<int>;

class PhotoGridTest : public WindowFixture
{
protected:
    /// Opens the window with the sample photos of a player in its grid.
    void openPhotos()
    {
        add("One", "first");
        writePlayer("Mira");
        ASSERT_EQ(SamplePhotos::write(path("Mira")), "");
        _mount = plugIn("Mira");
        open();
        ASSERT_TRUE(waitUntil([this] { return titles().size() == 1; }));
        choose("Photo");
        ASSERT_EQ(grid().photos().size(), std::size_t(SamplePhotos::PhotoCount));
        ASSERT_TRUE(waitUntil([this] {
            return window().devices().currentDevice()->photoDb()->previews().finished();
        }));
        settle();
    }

    PhotoGrid& grid() { return window().photos(); }
    PhotoListView* view() { return grid().collectionView(); }
    QRect bounds(int row) { return view()->visualRect(view()->model()->index(row, 0)); }
    void click(int row) { clickAt(bounds(row).center()); }
    void clickAt(QPoint place)
    {
        // Two clicks at one place must not make a double click.
        QTest::qWait(QApplication::doubleClickInterval() + 20);
        Hands::clickAt(view()->viewport(), place);
    }
    Ids selected()
    {
        Ids ids;
        for (const Photo* photo : grid().selectedPhotos())
            ids.push_back(photo->photoId - int(SamplePhotos::idOf(0)));
        return ids;
    }
    /// Input may take its time to get here.
    bool selects(const Ids& ids)
    {
        return waitUntil([&] { return selected() == ids; });
    }
    /// A point right of the last item and below it, where there is none.
    QPoint emptyPlace()
    {
        return {view()->viewport()->width() - 3,
                bounds(SamplePhotos::PhotoCount - 1).bottom() + 20};
    }
    /// How the grid looks now.
    QImage look()
    {
        settle();
        return view()->viewport()->grab().toImage();
    }
    QColor ground(int row) { return look().pixelColor(bounds(row).topLeft() + QPoint(5, 5)); }

private:
    static void settle() { QTest::qWait(150); }

    std::unique_ptr<PrivateMounts::Mount> _mount;
};
} // namespace

TEST_F(PhotoGridTest, ShowsEachPhotoAboveItsCaption)
{
    openPhotos();
    EXPECT_EQ(view()->model()->index(0, 0).data().toString(), "IMG_0.jpg");
    EXPECT_EQ(view()->model()->index(1, 0).data().toString(), "1002 (720 x 480)");
    const QImage shown = look();
    for (const int row : {0, 1, 4}) {
        const QRect item = bounds(row);
        // The preview is 100 wide and 75 high; its middle has the colours of the picture.
        const QImage preview =
            view()->model()->index(row, 0).data(Qt::DecorationRole).value<QImage>();
        ASSERT_EQ(preview.size(), QSize(176, 132));
        const QColor middle = shown.pixelColor(item.center().x(), item.top() + 60);
        const QColor expected = preview.pixelColor(88, 66);
        EXPECT_NEAR(middle.red(), expected.red(), 40) << row;
        EXPECT_NEAR(middle.green(), expected.green(), 40) << row;
        EXPECT_NEAR(middle.blue(), expected.blue(), 40) << row;
        const QImage caption = shown.copy(item.adjusted(4, 116, -4, -2));
        bool isWritten = false;
        for (int x = 0; x < caption.width(); ++x) {
            for (int y = 0; y < caption.height(); ++y)
                isWritten |= caption.pixelColor(x, y).lightness() < 128;
        }
        EXPECT_TRUE(isWritten) << row;
    }
}

TEST_F(PhotoGridTest, SelectsAPhotoWhereverItIsClicked)
{
    openPhotos();
    const QRect item = bounds(1);
    const QPoint places[] = {{item.center().x(), item.top() + 60},   // the picture
                             {item.center().x(), item.bottom() - 6}, // the caption
                             {item.left() + 1, item.top() + 1},      // the corners
                             {item.right() - 1, item.bottom() - 1},
                             {item.center().x(), item.top() + 113}}; // between the two
    for (const QPoint& place : places) {
        click(3);
        ASSERT_TRUE(selects({3}));
        clickAt(place);
        EXPECT_TRUE(selects({1})) << place.x() - item.left() << ' ' << place.y() - item.top();
    }
}

TEST_F(PhotoGridTest, FillsTheGroundOfASelectedPhotoUntilItIsDeselected)
{
    openPhotos();
    const QColor before = ground(2);
    click(2);
    EXPECT_NE(ground(2), before);
    EXPECT_EQ(ground(2), view()->palette().color(QPalette::Active, QPalette::Highlight));
    EXPECT_EQ(ground(1), before);
    click(0);
    EXPECT_EQ(ground(2), before);
    EXPECT_NE(ground(0), before);
}

TEST_F(PhotoGridTest, AddsAndTakesAwayWithCtrlAndSelectsRangesWithShift)
{
    openPhotos();
    click(1);
    Hands::hold("ctrl");
    click(4);
    EXPECT_TRUE(selects({1, 4}));
    click(1);
    EXPECT_TRUE(selects({4}));
    Hands::letGo("ctrl");
    click(1);
    Hands::hold("shift");
    click(3);
    Hands::letGo("shift");
    EXPECT_TRUE(selects({1, 2, 3}));
}

TEST_F(PhotoGridTest, SelectsWhatARubberBandTouches)
{
    openPhotos();
    const int columns = view()->viewport()->width() / bounds(0).width();
    ASSERT_GE(columns, 3);
    // From the empty space below, up to the last but one in the last row.
    const QPoint from = emptyPlace();
    const int last = SamplePhotos::PhotoCount - 1;
    ASSERT_GT(last % columns, 0);
    Hands::drag(view()->viewport(), from, bounds(last - 1).center());
    EXPECT_TRUE(selects({last - 1, last}));
    clickAt(from);
    EXPECT_TRUE(selects({})) << "a click beside the photos";
}

TEST_F(PhotoGridTest, IsUsableFromTheKeyboard)
{
    openPhotos();
    click(0);
    Hands::key("Right");
    EXPECT_TRUE(selects({1}));
    Hands::key("shift+Right");
    Hands::key("shift+Right");
    EXPECT_TRUE(selects({1, 2, 3}));
    Hands::key("Home");
    EXPECT_TRUE(selects({0}));
    const int columns = view()->viewport()->width() / bounds(0).width();
    Hands::key("Down");
    EXPECT_TRUE(selects({columns}));
    Hands::key("ctrl+a");
    EXPECT_EQ(selected().size(), std::size_t(SamplePhotos::PhotoCount));
}

TEST_F(PhotoGridTest, SelectsAllInvertsAndClears)
{
    openPhotos();
    click(1);
    controller->perform(Command::invertSelection);
    EXPECT_TRUE(selects({0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
    controller->perform(Command::invertSelection);
    EXPECT_TRUE(selects({1}));
    controller->perform(Command::selectAll);
    EXPECT_EQ(selected().size(), std::size_t(SamplePhotos::PhotoCount));
    controller->perform(Command::invertSelection);
    EXPECT_TRUE(selects({}));
    EXPECT_FALSE(grid().hasSelection());
    controller->perform(Command::selectAll);
    controller->perform(Command::clearSelection);
    EXPECT_TRUE(selects({}));
}

TEST_F(PhotoGridTest, HasOneMenuWhereverItIsAskedFor)
{
    openPhotos();
    click(2);
    const QRect item = bounds(1);
    const QPoint places[] = {item.center(), {item.center().x(), item.bottom() - 6}, emptyPlace()};
    for (const QPoint& place : places) {
        Hands::clickAt(view()->viewport(), place, Hands::Right);
        ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
        EXPECT_EQ(QApplication::activePopupWidget(), controller->photoMenu());
        EXPECT_TRUE(selects({2})) << "the menu is about what is selected";
        Hands::key("Escape");
        ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() == nullptr; }));
        EXPECT_TRUE(selects({2}));
    }
    Hands::key("Menu");
    ASSERT_TRUE(waitUntil([] { return QApplication::activePopupWidget() != nullptr; }));
    EXPECT_EQ(QApplication::activePopupWidget(), controller->photoMenu());
    Hands::key("Escape");
}

TEST_F(PhotoGridTest, IsEmptiedByAnAlbumAndItsSelectionCleared)
{
    openPhotos();
    window().resize(window().width(), 420);
    controller->perform(Command::selectAll);
    view()->scrollToBottom();
    choose("Coast Walk");
    EXPECT_EQ(grid().photos().size(), 5U);
    EXPECT_EQ(view()->model()->rowCount(), 5);
    EXPECT_FALSE(grid().hasSelection());
    EXPECT_EQ(view()->verticalScrollBar()->value(), 0);
    choose("Still Empty");
    EXPECT_TRUE(grid().photos().empty());
    choose("Photo");
    EXPECT_EQ(grid().photos().size(), std::size_t(SamplePhotos::PhotoCount));
    EXPECT_FALSE(grid().hasSelection());
}

TEST_F(PhotoGridTest, StartsNothingByADoubleClick)
{
    openPhotos();
    QApplication::setDoubleClickInterval(10'000); // however slow the machine is just now
    Hands::clickAt(view()->viewport(), bounds(3).center(), Hands::Left, 2);
    Hands::key("Return");
    QTest::qWait(300);
    EXPECT_TRUE(selects({3}));
    EXPECT_FALSE(controller->jobs().isBusy());
    EXPECT_EQ(controller->jobs().report(), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::activeWindow(), &window());
}

TEST_F(PhotoGridTest, ExportsTheSelectedPhotosToFiles)
{
    openPhotos();
    click(0);
    Hands::hold("ctrl");
    click(1);
    Hands::letGo("ctrl");
    Hands::click(part<QPushButton>("_btnExport"));
    EXPECT_EQ(closeAlert(), "Export finished!");
    const QString album = out("Photos/Coast Walk");
    EXPECT_EQ(QDir(album).entryList(QDir::Files), QStringList({"1001.jpg", "1002.jpg"}));
    EXPECT_EQ(Files::read(album + "/1001.jpg"),
              Files::read(path("Mira/Photos/Full Resolution/2009/07/IMG_0.jpg")));
    EXPECT_EQ(QImage(album + "/1002.jpg").size(), QSize(720, 480)) << "its large rendition";
    EXPECT_TRUE(selects({0, 1})) << "as it was before";
}

TEST_F(PhotoGridTest, AsksForPhotosWhenNoneOfThoseShownIsSelected)
{
    openPhotos();
    Hands::click(part<QPushButton>("_btnExport"));
    EXPECT_EQ(closeAlert("_alert"), "Please select photos to export");
    EXPECT_FALSE(controller->jobs().isBusy());
}

namespace
{
/// A grid of its own, with photos whose previews are made one by one, when the test says so.
class SlowPreviews : public testing::Test
{
protected:
    SlowPreviews()
    {
        for (Photo& photo : photos)
            list.push_back(&photo);
        grid.resize(500, 300);
        grid.show();
    }
    ~SlowPreviews() override { next.release(Count); }

    void start()
    {
        pass = std::make_unique<PreviewPass>(list, [this](Photo& photo) {
            next.acquire();
            QImage preview(100, 100, QImage::Format_RGB32);
            preview.fill(Qt::blue);
            photo.setSmallImage(preview);
        });
        grid.setPhotos(list, pass.get());
    }
    /// How many of the items show a preview.
    int shown()
    {
        const QAbstractItemView* view = grid.collectionView();
        const QImage look = view->viewport()->grab().toImage();
        int count = 0;
        for (int row = 0; row < Count; ++row) {
            const QPoint middle = view->visualRect(view->model()->index(row, 0)).center();
            count += look.pixelColor(middle) == QColor(Qt::blue) ? 1 : 0;
        }
        return count;
    }

    static constexpr int Count = 4;
    std::counting_semaphore<> next{0};
    std::array<Photo, Count> photos;
    std::vector<Photo*> list;
    std::unique_ptr<PreviewPass> pass;
    PhotoGrid grid;
};
} // namespace

TEST_F(SlowPreviews, AppearAsTheyAreMade)
{
    start();
    QSignalSpy changes(grid.collectionView()->model(), &QAbstractItemModel::dataChanged);
    QTest::qWait(300);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(changes.size(), 0) << "nothing is drawn again for nothing";
    for (int made = 1; made <= Count; ++made) {
        next.release();
        EXPECT_TRUE(waitUntil([&] { return changes.size() >= made; }));
        EXPECT_EQ(shown(), made);
    }
    QTest::qWait(300);
    EXPECT_EQ(changes.size(), Count) << "and the asking ends";
}

TEST_F(SlowPreviews, LeaveSelectionAndPlaceAlone)
{
    start();
    grid.resize(150, 300); // one below another
    QTest::qWait(100);
    grid.collectionView()->setCurrentIndex(grid.collectionView()->model()->index(2, 0));
    const int place = grid.collectionView()->verticalScrollBar()->value();
    EXPECT_GT(place, 0);
    next.release(Count);
    EXPECT_TRUE(waitUntil([&] { return pass->finished(); }));
    QTest::qWait(300);
    EXPECT_EQ(grid.selectedPhotos(), std::vector<Photo*>{&photos[2]});
    EXPECT_EQ(grid.collectionView()->verticalScrollBar()->value(), place);
}

TEST(PhotoGridAlone, InvertsASelectionInPieces)
{
    std::array<Photo, 1000> photos;
    std::vector<Photo*> list;
    for (Photo& photo : photos)
        list.push_back(&photo);
    PhotoGrid grid;
    grid.setPhotos(list, nullptr);
    std::vector<Photo*> odd;
    for (int row = 0; row < 1000; ++row) {
        if (row % 2 == 1)
            odd.push_back(list[std::size_t(row)]);
        else
            grid.collectionView()->selectionModel()->select(
                grid.collectionView()->model()->index(row, 0), QItemSelectionModel::Select);
    }
    grid.invertSelection();
    EXPECT_EQ(grid.selectedPhotos(), odd);
}

TEST(PhotoGridAlone, GrowsWithTheFont)
{
    PhotoGrid grid;
    const QSize before = grid.collectionView()->gridSize();
    QFont font = grid.font();
    font.setPointSize(3 * font.pointSize());
    grid.setFont(font);
    EXPECT_GT(grid.collectionView()->gridSize().height(), before.height());
}

TEST(PhotoGridItem, HandsItsStateOnToItsView)
{
    Photo photo;
    PhotoGridModel model;
    model.setPhotos({&photo});
    QStyleOptionViewItem option;
    option.state = QStyle::State_Selected;
    EXPECT_TRUE(PhotoDelegate().painterFor(option, model.index(0)).selected());
    option.state = QStyle::State_None;
    EXPECT_FALSE(PhotoDelegate().painterFor(option, model.index(0)).selected());
}

TEST(PhotoGridItem, IsHitAnywhereInItsBoundsAndNowhereElse)
{
    const QRect bounds(10, 20, 128, 140);
    EXPECT_TRUE(PhotoPainter::hitTest(bounds.topLeft(), bounds));
    EXPECT_TRUE(PhotoPainter::hitTest(bounds.center(), bounds));
    EXPECT_TRUE(PhotoPainter::hitTest(bounds.bottomRight(), bounds));
    EXPECT_FALSE(PhotoPainter::hitTest(bounds.topLeft() - QPoint(1, 0), bounds));
    EXPECT_FALSE(PhotoPainter::hitTest(bounds.bottomRight() + QPoint(0, 1), bounds));
}
