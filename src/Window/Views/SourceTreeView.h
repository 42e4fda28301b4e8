#pragma once

#include "Window/Views/RowMenu.h"

#include <QTreeView>

/// An outline of one column without a header.
class SourceTreeView final : public RowMenu<QTreeView>
{
    Q_OBJECT
public:
    explicit SourceTreeView(QWidget* parent = nullptr);

    /// The selected row; invalid without one.
    [[nodiscard]] QModelIndex selectedItem() const;

protected:
    /// Draws the ground of a selected row before the row, and where the keyboard is after it.
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void paintEvent(QPaintEvent* event) override;
};
