#include "Window/Views/SourceTreeView.h"

#include "Window/Views/FocusRing.h"

#include <QPainter>

namespace
{
constexpr int SelectionMargin = 6;
constexpr int SelectionRoundness = 6;
constexpr int EndMargin = 6;
} // namespace

SourceTreeView::SourceTreeView(QWidget* parent)
    : RowMenu<QTreeView>(parent)
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    setExpandsOnDoubleClick(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportMargins(0, EndMargin, 0, EndMargin);
    viewport()->setBackgroundRole(QPalette::Window);
}

QModelIndex SourceTreeView::selectedItem() const
{
    const QModelIndexList rows =
        selectionModel() ? selectionModel()->selectedRows() : QModelIndexList();
    return rows.isEmpty() ? QModelIndex() : rows.first();
}

void SourceTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const QRect row = QRect(0, option.rect.top(), viewport()->width(), option.rect.height())
                          .adjusted(SelectionMargin, 1, -SelectionMargin, -1);
    const bool selected = selectionModel()->isSelected(index);
    if (selected) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        const auto group = isActiveWindow() ? QPalette::Active : QPalette::Inactive;
        painter->setBrush(palette().brush(group, QPalette::Highlight));
        painter->drawRoundedRect(row, SelectionRoundness, SelectionRoundness);
        painter->restore();
    }
    QTreeView::drawRow(painter, option, index);
    if (hasFocus() && index == currentIndex())
        FocusRing::draw(*painter, row, palette(), selected);
}

void SourceTreeView::paintEvent(QPaintEvent* event)
{
    RowMenu<QTreeView>::paintEvent(event);
    if (!hasFocus() || currentIndex().isValid())
        return;
    QPainter painter(viewport());
    FocusRing::draw(painter, viewport()->rect(), palette(), false);
}
