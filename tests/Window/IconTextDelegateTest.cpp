#include "Window/Views/IconTextDelegate.h"

#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

namespace
{
QIcon icon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

/// A model of one row with an image or without.
class OneRow final : public QAbstractListModel
{
public:
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex& /*index*/, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant("MMMM") : QVariant();
    }
};

/// What the cell draws at 80 x 20.
QImage drawn(const IconTextDelegate& cell)
{
    OneRow model;
    QImage image(80, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.font = painter.font();
    option.fontMetrics = painter.fontMetrics();
    cell.paint(&painter, option, model.index(0));
    return image;
}

/// The first column that is not white; the width where there is none.
int firstInk(const QImage& image, int from = 0)
{
    for (int x = from; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(x, y) != Qt::white)
                return x;
        }
    }
    return image.width();
}
} // namespace

TEST(IconTextDelegateTest, GrowsByTheImageAndItsGap)
{
    IconTextDelegate cell;
    EXPECT_EQ(cell.cellSize({50, 18}), QSize(53, 18));
    cell.setImage(icon());
    EXPECT_EQ(cell.cellSize({50, 18}), QSize(69, 18));
}

TEST(IconTextDelegateTest, PlacesTheImageInTheMiddleRoundedUp)
{
    IconTextDelegate cell;
    const QRect bounds(10, 100, 80, 21);
    EXPECT_EQ(cell.imageRectForBounds(bounds), QRect());
    cell.setImage(icon());
    EXPECT_EQ(cell.imageRectForBounds(bounds), QRect(13, 103, 16, 16));
    EXPECT_EQ(cell.imageRectForBounds({10, 100, 80, 20}), QRect(13, 102, 16, 16));
    EXPECT_EQ(cell.titleRectForBounds(bounds), QRect(29, 100, 61, 21));
}

TEST(IconTextDelegateTest, WithoutAnImageDrawsFromTheLeftEdgeAndHasNoTitleRectangle)
{
    const IconTextDelegate cell;
    EXPECT_TRUE(cell.titleRectForBounds({0, 0, 80, 20}).isEmpty());
    EXPECT_LT(firstInk(drawn(cell)), 8);
}

TEST(IconTextDelegateTest, DrawsTheImageBeforeTheText)
{
    IconTextDelegate cell;
    cell.setImage(icon());
    const QImage image = drawn(cell);
    EXPECT_EQ(firstInk(image), 3);
    EXPECT_EQ(image.pixelColor(3, 2), Qt::red);
    EXPECT_EQ(image.pixelColor(18, 17), Qt::red);
    EXPECT_GE(firstInk(image, 19), 20) << "the text begins after the image";
}

TEST(IconTextDelegateTest, IsHitOnItsImage)
{
    IconTextDelegate cell;
    const QRect bounds(0, 0, 80, 20);
    EXPECT_FALSE(cell.hitTestForEvent({5, 10}, bounds));
    cell.setImage(icon());
    EXPECT_TRUE(cell.hitTestForEvent({5, 10}, bounds));
    EXPECT_FALSE(cell.hitTestForEvent({1, 10}, bounds));
    EXPECT_FALSE(cell.hitTestForEvent({30, 10}, bounds));
}

TEST(IconTextDelegateTest, EditsBesideTheImage)
{
    IconTextDelegate cell;
    cell.setImage(icon());
    OneRow model;
    QWidget editor;
    QStyleOptionViewItem option;
    option.rect = {0, 0, 80, 20};
    cell.updateEditorGeometry(&editor, option, model.index(0));
    EXPECT_EQ(editor.geometry().left(), 19);
    EXPECT_EQ(editor.geometry().right(), 79);
}

TEST(IconTextDelegateTest, ACopyHasTheSameImage)
{
    IconTextDelegate cell;
    cell.setImage(icon());
    QObject owner;
    const IconTextDelegate* copy = cell.copyWithZone(&owner);
    EXPECT_EQ(copy->image().cacheKey(), cell.image().cacheKey());
}
