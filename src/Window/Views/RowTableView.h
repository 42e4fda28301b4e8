#pragma once

#include "Window/Views/RowMenu.h"

#include <QTableView>

/// A table of rows: it selects whole rows, has no grid, and its rows are one height.
class RowTableView final : public RowMenu<QTableView>
{
    Q_OBJECT
public:
    explicit RowTableView(QWidget* parent = nullptr);

    /// The selected row; -1 without one.
    [[nodiscard]] int selectedRow() const;
    /// The selected rows, ascending.
    [[nodiscard]] std::vector<int> selectedRows() const;
    void selectRow(int row);

protected:
    /// Draws where the keyboard is over the rows: around the current row, or around all of them
    /// without one.
    void paintEvent(QPaintEvent* event) override;
};
