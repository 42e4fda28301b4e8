#include "Window/Views/PhotoListView.h"

#include "Window/Views/FocusRing.h"
#include "Window/Views/PhotoDelegate.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

PhotoListView::PhotoListView(QWidget* parent)
    : QListView(parent)
{
    // Rows that wrap, all items one size: the layout is arithmetic, however many there are.
    setViewMode(ListMode);
    setFlow(LeftToRight);
    setWrapping(true);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setGridSize(PhotoPainter::size(fontMetrics()));
    setItemDelegate(new PhotoDelegate(this));
    setSelectionMode(ExtendedSelection);
    setSelectionRectVisible(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
}

QModelIndex PhotoListView::indexAt(const QPoint& point) const
{
    const QModelIndex index = QListView::indexAt(point);
    return PhotoPainter::hitTest(point, visualRect(index)) ? index : QModelIndex();
}

void PhotoListView::mousePressEvent(QMouseEvent* event)
{
    // The menu is about the photos that are selected, wherever it is asked for.
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QListView::mousePressEvent(event);
}

void PhotoListView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        event->accept();
    else
        QListView::mouseReleaseEvent(event);
}

void PhotoListView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        setGridSize(PhotoPainter::size(fontMetrics()));
}

void PhotoListView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (!hasFocus() || currentIndex().isValid())
        return;
    QPainter painter(viewport());
    FocusRing::draw(painter, viewport()->rect(), palette(), false);
}

void PhotoListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                const QList<int>& roles)
{
    // All items have one size, whatever they show. The toolkit would lay them all out anew, which
    // takes too long to do it for each few of thousands of previews.
    if (roles == QList<int>{Qt::DecorationRole})
        viewport()->update();
    else
        QListView::dataChanged(topLeft, bottomRight, roles);
}

void PhotoListView::contextMenuEvent(QContextMenuEvent* event)
{
    if (QMenu* menu = menuForEvent())
        menu->popup(event->globalPos());
}
