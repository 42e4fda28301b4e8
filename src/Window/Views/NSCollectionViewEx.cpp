#include "Window/Views/NSCollectionViewEx.h"

#include "Window/Views/CollectionViewItem.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>

NSCollectionViewEx::NSCollectionViewEx(QWidget* parent)
    : QListView(parent)
{
    // Rows that wrap, all items one size: the layout is arithmetic, however many there are.
    setViewMode(ListMode);
    setFlow(LeftToRight);
    setWrapping(true);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setGridSize(View::size(fontMetrics()));
    setItemDelegate(new CollectionViewItem(this));
    setSelectionMode(ExtendedSelection);
    setSelectionRectVisible(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
}

QModelIndex NSCollectionViewEx::indexAt(const QPoint& point) const
{
    const QModelIndex index = QListView::indexAt(point);
    return View::hitTest(point, visualRect(index)) ? index : QModelIndex();
}

void NSCollectionViewEx::mousePressEvent(QMouseEvent* event)
{
    // The menu is about the photos that are selected, wherever it is asked for.
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QListView::mousePressEvent(event);
}

void NSCollectionViewEx::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QListView::mouseReleaseEvent(event);
}

void NSCollectionViewEx::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        setGridSize(View::size(fontMetrics()));
}

void NSCollectionViewEx::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                     const QList<int>& roles)
{
    // All items have one size, whatever they show. The toolkit would lay them all out anew, which
    // takes too long to do it for each few of thousands of previews.
    if (roles == QList<int>{Qt::DecorationRole})
        viewport()->update();
    else
        QListView::dataChanged(topLeft, bottomRight, roles);
}

void NSCollectionViewEx::contextMenuEvent(QContextMenuEvent* event)
{
    if (QMenu* menu = menuForEvent())
        menu->popup(event->globalPos());
}
