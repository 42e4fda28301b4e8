#pragma once

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QMenu>

/// A view of rows. Its context menu first selects the row under the mouse, alone, unless that row
/// is selected already; a list with one choice keeps it until another is made. `View` is one of
/// the toolkit's item views.
template <typename View>
class RowMenu : public View
{
public:
    using View::View;

    /// The menu that the view shows; it is not owned.
    void setMenu(QMenu* menu) { _menu = menu; }

    /// Selects as described and gives the menu; `position` is in the viewport.
    QMenu* menuForEvent(const QPoint& position)
    {
        const QModelIndex index = this->indexAt(position);
        if (index.isValid() && !this->selectionModel()->isSelected(index)) {
            this->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                               QItemSelectionModel::Rows);
        }
        return _menu;
    }

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override
    {
        const auto command = View::selectionCommand(index, event);
        // Ctrl with a click or with Space would take the only choice away.
        const bool takesAway =
            command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle);
        if (!takesAway || this->selectionMode() != QAbstractItemView::SingleSelection)
            return command;
        return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    }

    void contextMenuEvent(QContextMenuEvent* event) override
    {
        // From the keyboard the menu is about the current row, wherever the mouse is.
        const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
        const QPoint position = byKey ? this->visualRect(this->currentIndex()).center()
                                      : this->viewport()->mapFromGlobal(event->globalPos());
        if (QMenu* menu = menuForEvent(position))
            menu->popup(this->viewport()->mapToGlobal(position));
    }

private:
    QMenu* _menu = nullptr;
};
