#include "Window/Views/NSCollectionViewEx.h"

#include "Window/Views/CollectionViewItem.h"

#include <QContextMenuEvent>
#include <QMenu>

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

void NSCollectionViewEx::contextMenuEvent(QContextMenuEvent* event)
{
    if (QMenu* menu = menuForEvent())
        menu->popup(event->globalPos());
}
