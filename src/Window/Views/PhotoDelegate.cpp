#include "Window/Views/PhotoDelegate.h"

PhotoPainter PhotoDelegate::painterFor(const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    PhotoPainter view;
    view.setPhoto(index.data(Qt::DecorationRole).value<QImage>(),
                  index.data(Qt::DisplayRole).toString());
    setSelected(view, (option.state & QStyle::State_Selected) != 0);
    view.setFocused((option.state & QStyle::State_HasFocus) != 0);
    return view;
}

void PhotoDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QPalette palette = option.palette;
    if (!(option.state & QStyle::State_Active))
        palette.setCurrentColorGroup(QPalette::Inactive);
    painterFor(option, index).drawRect(*painter, option.rect, palette);
}

QSize PhotoDelegate::sizeHint(const QStyleOptionViewItem& option,
                              const QModelIndex& /*index*/) const
{
    return PhotoPainter::size(option.fontMetrics);
}
