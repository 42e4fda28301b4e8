#include "Window/TrackTable.h"

#include "Device/Track.h"
#include "Window/Views/CheckDelegate.h"
#include "Window/Views/RowTableView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

TrackTable::TrackTable(QWidget* parent)
    : QWidget(parent)
    , _tableView(new RowTableView)
{
    _tableView->setObjectName(QStringLiteral("_tableView"));
    _tableView->setAccessibleName(tr("Tracks"));
    _tableView->setModel(&_model);
    _tableView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    _tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    _tableView->setTabKeyNavigation(false);
    _tableView->setItemDelegateForColumn(TrackTableModel::Check, new CheckDelegate(_tableView));
    _tableView->installEventFilter(this);
    setUpColumns();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_tableView);

    connect(_tableView, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() != TrackTableModel::Check) // two clicks on a box are two clicks
            checkSelected(true);
    });
    connect(_tableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TrackTable::stateChanged);
    connect(&_model, &QAbstractItemModel::dataChanged, this, &TrackTable::stateChanged);
    connect(&_model, &QAbstractItemModel::modelReset, this, &TrackTable::stateChanged);
}

void TrackTable::setUpColumns()
{
    QHeaderView* header = _tableView->horizontalHeader();
    const int letter = fontMetrics().averageCharWidth();
    header->setMinimumSectionSize(28);
    header->setSectionResizeMode(TrackTableModel::Check, QHeaderView::Fixed);
    header->resizeSection(TrackTableModel::Check, 32);
    header->resizeSection(TrackTableModel::Title, 38 * letter);
    header->resizeSection(TrackTableModel::Duration, 13 * letter);
    header->resizeSection(TrackTableModel::Artist, 24 * letter);
    header->resizeSection(TrackTableModel::Album, 26 * letter);
    header->setStretchLastSection(true);
    header->setSectionsMovable(true);
    header->setFirstSectionMovable(false);
    // A third click brings the library's own order back.
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    _tableView->setSortingEnabled(true);
}

void TrackTable::setTracks(const TrackBrowser::Tracks& tracks)
{
    _hasTracks = tracks != nullptr;
    _model.setTracks(tracks);
}

void TrackTable::setMenu(QMenu* menu)
{
    _tableView->setMenu(menu);
}

bool TrackTable::hasCheckedTrack() const
{
    return std::any_of(tracks().begin(), tracks().end(),
                       [](const Track* track) { return track->checked; });
}

Track* TrackTable::selectedTrack() const
{
    const std::vector<int> rows = _tableView->selectedRows();
    return rows.empty() ? nullptr : tracks()[std::size_t(rows.front())];
}

bool TrackTable::hasSelectedRow() const
{
    return _tableView->selectionModel()->hasSelection();
}

void TrackTable::checkSelected(bool checked)
{
    _model.setChecked(_tableView->selectedRows(), checked);
}

void TrackTable::toggleSelected()
{
    const std::vector<int> rows = _tableView->selectedRows();
    const bool allChecked = std::all_of(
        rows.begin(), rows.end(), [this](int row) { return tracks()[std::size_t(row)]->checked; });
    _model.setChecked(rows, !allChecked);
}

bool TrackTable::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == _tableView && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space && hasSelectedRow()) {
        toggleSelected();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
