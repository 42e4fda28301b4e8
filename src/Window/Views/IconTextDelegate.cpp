#include "Window/Views/IconTextDelegate.h"

#include <QApplication>
#include <QPainter>

#include <cmath>

namespace
{
constexpr int GapBeforeImage = 3;
}

IconTextDelegate::IconTextDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

void IconTextDelegate::setWillDisplayCell(const WillDisplayCell& willDisplayCell)
{
    _willDisplayCell = willDisplayCell;
}

QSize IconTextDelegate::cellSize(QSize textSize) const
{
    const int imageWidth = _image.isNull() ? 0 : _imageSize.width();
    return textSize + QSize(imageWidth + GapBeforeImage, 0);
}

QRect IconTextDelegate::imageRectForBounds(const QRect& bounds) const
{
    if (_image.isNull())
        return {};
    const double above = (bounds.height() - _imageSize.height()) / 2.0;
    return {bounds.topLeft() + QPoint(GapBeforeImage, int(std::ceil(above))), _imageSize};
}

QRect IconTextDelegate::titleRectForBounds(const QRect& bounds) const
{
    return _image.isNull() ? QRect() : remainder(bounds);
}

QRect IconTextDelegate::remainder(const QRect& bounds) const
{
    const int strip = _image.isNull() ? 0 : _imageSize.width() + GapBeforeImage;
    return bounds.adjusted(strip, 0, 0, 0);
}

bool IconTextDelegate::hitTestForEvent(const QPoint& position, const QRect& bounds) const
{
    return imageRectForBounds(bounds).contains(position);
}

IconTextDelegate* IconTextDelegate::copyWithZone(QObject* parent) const
{
    auto* copy = new IconTextDelegate(parent);
    copy->_image = _image;
    copy->_imageSize = _imageSize;
    copy->_willDisplayCell = _willDisplayCell;
    return copy;
}

void IconTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    willDisplay(index);
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.icon = QIcon();
    cell.features &= ~QStyleOptionViewItem::HasDecoration;
    cell.textElideMode = Qt::ElideRight;
    const QStyle* style = cell.widget ? cell.widget->style() : QApplication::style();
    // The background goes through the whole row, image and all.
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);

    // Reckoned from left to right, and mirrored in the row at the end.
    const auto mirrored = [&option](const QRect& rect) {
        return QStyle::visualRect(option.direction, option.rect, rect);
    };
    const QRect bounds = cellRect(option.rect, index);
    if (!_image.isNull()) {
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        _image.paint(painter, mirrored(imageRectForBounds(bounds)), Qt::AlignCenter,
                     selected ? QIcon::Selected : QIcon::Normal);
    }
    cell.rect = remainder(bounds);
    cell.backgroundBrush = Qt::NoBrush;
    const QPalette::ColorRole textRole =
        option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text;
    const QPalette::ColorGroup group =
        option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    painter->save();
    painter->setFont(cell.font);
    painter->setPen(cell.palette.color(group, textRole));
    const QRect textRect = mirrored(cell.rect.adjusted(GapBeforeImage, 0, -GapBeforeImage, 0));
    // To the side where the image is, whatever letters the name has.
    const auto side = QStyle::visualAlignment(option.direction, Qt::AlignLeft) | Qt::AlignAbsolute;
    painter->drawText(textRect, int(Qt::AlignVCenter | side) | int(Qt::TextSingleLine),
                      cell.fontMetrics.elidedText(cell.text, cell.textElideMode, textRect.width()));
    painter->restore();
}

QSize IconTextDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    willDisplay(index);
    return cellSize(QStyledItemDelegate::sizeHint(option, index));
}

void IconTextDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const
{
    willDisplay(index);
    QStyleOptionViewItem rest = option;
    rest.rect =
        QStyle::visualRect(option.direction, option.rect, remainder(cellRect(option.rect, index)));
    QStyledItemDelegate::updateEditorGeometry(editor, rest, index);
}

QRect IconTextDelegate::cellRect(const QRect& row, const QModelIndex& /*index*/) const
{
    return row;
}

void IconTextDelegate::willDisplay(const QModelIndex& index) const
{
    if (_willDisplayCell)
        _image = _willDisplayCell(index);
}
