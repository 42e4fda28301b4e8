#pragma once

#include "Window/Views/PhotoPainter.h"

#include <QStyledItemDelegate>

/// An item of the photo grid as the toolkit sees it: it hands the state on to its view.
class PhotoDelegate final : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The view of an item, as it looks now.
    [[nodiscard]] PhotoPainter painterFor(const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const;
    static void setSelected(PhotoPainter& view, bool selected) { view.setSelected(selected); }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
