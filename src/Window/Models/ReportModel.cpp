#include "Window/Models/ReportModel.h"

#include "Window/ShownText.h"

#include <array>

namespace
{
QString outcome(ExportItem::Result result)
{
    switch (result) {
    case ExportItem::Result::Copied:
        return ReportModel::tr("Copied");
    case ExportItem::Result::Skipped:
        return ReportModel::tr("Skipped");
    case ExportItem::Result::Missing:
        return ReportModel::tr("Missing on the device");
    case ExportItem::Result::Incomplete:
        return ReportModel::tr("Not copied whole");
    case ExportItem::Result::Failed:
        return ReportModel::tr("Could not be copied");
    case ExportItem::Result::Stopped:
        return ReportModel::tr("Stopped");
    case ExportItem::Result::Planned:
        return ReportModel::tr("Planned");
    }
    return {};
}
} // namespace

ReportModel::ReportModel(const std::vector<ExportItem>& items, QObject* parent)
    : QAbstractTableModel(parent)
    , _items(items)
{
    showAll(false);
}

void ReportModel::showAll(bool all)
{
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < _items.size(); ++i) {
        if (all || _items[i].isNotCopied())
            rows.push_back(i);
    }
    // Nothing between these two may throw: views would wait for the second for ever.
    beginResetModel();
    _rows.swap(rows);
    endResetModel();
}

int ReportModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(_rows.size());
}

int ReportModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ReportModel::data(const QModelIndex& index, int role) const
{
    if ((role != Qt::DisplayRole && role != Qt::ToolTipRole) ||
        !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ExportItem& item = _items[_rows[std::size_t(index.row())]];
    switch (index.column()) {
    case Item:
        return ShownText::of(item.title.isEmpty() ? item.from : item.title);
    case Outcome:
        return outcome(item.result);
    case Why:
        return ShownText::of(item.why);
    case From:
        return ShownText::of(item.from);
    default:
        return ShownText::of(item.to);
    }
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= ColumnCount)
        return {};
    const std::array<QString, ColumnCount> titles = {tr("Item"), tr("What happened"), tr("Why"),
                                                     tr("On the device"), tr("On the computer")};
    return titles[std::size_t(section)];
}
