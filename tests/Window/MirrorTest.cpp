// Where people read from right to left, the window is a mirror of itself.

#include "AllWindows.h"
#include "Window/Style.h"
#include "Window/Views/IconTextDelegate.h"

#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionSlider>

namespace
{
class MirrorTest : public AllWindows
{
protected:
    ~MirrorTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    static QRect mirrored(const QRect& rect, int width)
    {
        return {width - rect.right() - 1, rect.top(), rect.width(), rect.height()};
    }
    /// The columns of an image that hold anything but its ground, as far as `left` and `right`.
    static std::pair<int, int> inkOf(const QImage& image)
    {
        int first = image.width();
        int last = -1;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                if (image.pixel(x, y) != image.pixel(image.width() / 2, 0)) {
                    first = std::min(first, x);
                    last = x;
                }
            }
        }
        return {first, last};
    }
};
} // namespace

TEST_F(MirrorTest, TheColumnsOfTheBrowserStandTheOtherWayRound)
{
    const int width = window().browser().width();
    QList<QRect> before;
    for (const char* name : {"_svGenre", "_svArtist", "_svAlbum"})
        before.append(part<QWidget>(name)->geometry());
    QApplication::setLayoutDirection(Qt::RightToLeft);
    qsizetype column = 0;
    for (const char* name : {"_svGenre", "_svArtist", "_svAlbum"})
        EXPECT_EQ(part<QWidget>(name)->geometry(), mirrored(before[column++], width)) << name;
}

TEST_F(MirrorTest, ARowOfTheSourceListHasItsSignAtItsOtherEnd)
{
    auto* list = window().sources().outlineView();
    const auto rowOf = [&](const QModelIndex& index) {
        const QRect place = list->visualRect(index);
        return list->viewport()
            ->grab(QRect(0, place.top(), list->viewport()->width(), place.height()))
            .toImage();
    };
    for (const char* label : {"Movies", "Evening"}) {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        const auto [left, leftEnd] = inkOf(rowOf(source(label)));
        QApplication::setLayoutDirection(Qt::RightToLeft);
        const QImage row = rowOf(source(label));
        const auto [right, rightEnd] = inkOf(row);
        EXPECT_LT(left, row.width() - leftEnd - 1) << label;
        EXPECT_NEAR(row.width() - 1 - rightEnd, left, 2) << label;
        EXPECT_NEAR(row.width() - 1 - right, leftEnd, 2) << label;
    }
}

TEST_F(MirrorTest, AScrollBarBeginsAtTheRight)
{
    const Style style;
    QStyleOptionSlider bar;
    bar.rect = QRect(0, 0, 200, 12);
    bar.orientation = Qt::Horizontal;
    bar.maximum = 300;
    bar.pageStep = 100;
    bar.sliderPosition = 60;
    for (const auto part :
         {QStyle::SC_ScrollBarSlider, QStyle::SC_ScrollBarAddPage, QStyle::SC_ScrollBarSubPage}) {
        bar.direction = Qt::LeftToRight;
        const QRect usual = style.subControlRect(QStyle::CC_ScrollBar, &bar, part, nullptr);
        bar.direction = Qt::RightToLeft;
        EXPECT_EQ(style.subControlRect(QStyle::CC_ScrollBar, &bar, part, nullptr),
                  mirrored(usual, 200))
            << part;
    }
}
