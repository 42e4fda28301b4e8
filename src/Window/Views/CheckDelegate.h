#pragma once

#include <QStyledItemDelegate>

/// A check box in the middle of a cell, drawn in the palette's own colours: some styles draw an
/// unchecked box that nearly vanishes on a dark ground. A click anywhere in the cell counts.
class CheckDelegate final : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
};
