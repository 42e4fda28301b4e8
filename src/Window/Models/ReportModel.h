#pragma once

#include "Export/ExportReport.h"

#include <QAbstractTableModel>

/// The items of an export's report, all of them or those that were not copied.
class ReportModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Item, Outcome, Why, From, To, ColumnCount };

    /// The items outlive the model, and stay as they are.
    explicit ReportModel(const std::vector<ExportItem>& items, QObject* parent = nullptr);

    void showAll(bool all);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    const std::vector<ExportItem>& _items;
    std::vector<std::size_t> _rows; ///< positions in `_items`
};
