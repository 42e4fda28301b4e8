#include "Window/Views/CollectionViewItem.h"

View CollectionViewItem::view(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    View view;
    view.setPhoto(index.data(Qt::DecorationRole).value<QImage>(),
                  index.data(Qt::DisplayRole).toString());
    setSelected(view, (option.state & QStyle::State_Selected) != 0);
    view.setFocused((option.state & QStyle::State_HasFocus) != 0);
    return view;
}

void CollectionViewItem::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    QPalette palette = option.palette;
    if (!(option.state & QStyle::State_Active))
        palette.setCurrentColorGroup(QPalette::Inactive);
    view(option, index).drawRect(*painter, option.rect, palette);
}

QSize CollectionViewItem::sizeHint(const QStyleOptionViewItem& option,
                                   const QModelIndex& /*index*/) const
{
    return View::size(option.fontMetrics);
}
