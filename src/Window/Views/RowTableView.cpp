#include "Window/Views/RowTableView.h"

#include "Window/Views/FocusRing.h"

#include <QHeaderView>
#include <QPainter>

#include <algorithm>

namespace
{
constexpr int SpaceAroundText = 11;
}

RowTableView::RowTableView(QWidget* parent)
    : RowMenu<QTableView>(parent)
{
    setSelectionBehavior(SelectRows);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setFrameShape(QFrame::NoFrame);
    verticalHeader()->hide();
    // One height for all rows: nothing is measured, however many there are.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + SpaceAroundText);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

int RowTableView::selectedRow() const
{
    const QModelIndexList rows =
        selectionModel() ? selectionModel()->selectedRows() : QModelIndexList();
    return rows.isEmpty() ? -1 : rows.first().row();
}

std::vector<int> RowTableView::selectedRows() const
{
    std::vector<int> rows;
    if (!selectionModel())
        return rows;
    // Ranges, not indexes: all of a large table is one range.
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void RowTableView::selectRow(int row)
{
    const QModelIndex index = model() ? model()->index(row, 0) : QModelIndex();
    if (index.isValid())
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                     QItemSelectionModel::Rows);
}

void RowTableView::paintEvent(QPaintEvent* event)
{
    RowMenu<QTableView>::paintEvent(event);
    if (!hasFocus())
        return;
    const QModelIndex current = currentIndex();
    QRect bounds = viewport()->rect();
    if (current.isValid()) {
        bounds.setTop(rowViewportPosition(current.row()));
        bounds.setHeight(rowHeight(current.row()));
    }
    QPainter painter(viewport());
    FocusRing::draw(painter, bounds, palette(),
                    current.isValid() && selectionModel()->isSelected(current));
}
