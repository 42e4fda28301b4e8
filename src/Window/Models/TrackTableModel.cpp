#include "Window/Models/TrackTableModel.h"

#include "Base/Utility.h"
#include "Device/Track.h"
#include "Window/ShownText.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace
{
/// The text that a column shows; null for the columns that show none.
const QString* textOf(const Track& track, int column)
{
    switch (column) {
    case TrackTableModel::Title:
        return &track.title;
    case TrackTableModel::Artist:
        return &track.artist;
    case TrackTableModel::Album:
        return &track.album;
    case TrackTableModel::Genre:
        return &track.genre;
    default:
        return nullptr;
    }
}

bool comesBefore(const Track& a, const Track& b, int column)
{
    if (const QString* text = textOf(a, column))
        return text->compare(*textOf(b, column), Qt::CaseInsensitive) < 0;
    if (column == TrackTableModel::Duration)
        return a.duration < b.duration;
    return a.checked && !b.checked;
}
} // namespace

TrackTableModel::TrackTableModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void TrackTableModel::setTracks(const TrackBrowser::Tracks& tracks)
{
    beginResetModel();
    _tracks = tracks;
    sortRows();
    _repeats = QSet<const Track*>(_rows.begin(), _rows.end()).size() < qsizetype(_rows.size());
    endResetModel();
}

std::vector<Track*> TrackTableModel::checkedTracks() const
{
    std::vector<Track*> checked;
    std::copy_if(_rows.begin(), _rows.end(), std::back_inserter(checked),
                 [](const Track* track) { return track->checked; });
    return checked;
}

void TrackTableModel::setChecked(const std::vector<int>& rows, bool checked)
{
    int first = rowCount();
    int last = -1;
    for (const int row : rows) {
        if (row < 0 || row >= rowCount())
            continue;
        _rows[std::size_t(row)]->checked = checked;
        first = std::min(first, row);
        last = std::max(last, row);
    }
    // One word for all: a view answers each with a look at its rows.
    if (last >= 0)
        marksChanged(first, last);
}

void TrackTableModel::setAllChecked(bool checked)
{
    if (_rows.empty())
        return;
    for (Track* track : _rows)
        track->checked = checked;
    marksChanged(0, rowCount() - 1);
}

void TrackTableModel::marksChanged(int first, int last)
{
    const int begin = _repeats ? 0 : first;
    const int end = _repeats ? rowCount() - 1 : last;
    Q_EMIT dataChanged(index(begin, Check), index(end, Check), {Qt::CheckStateRole});
}

int TrackTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(_rows.size());
}

int TrackTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant TrackTableModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    Track* track = _rows[std::size_t(index.row())];
    if (role == TrackRole)
        return QVariant::fromValue(track);
    if (role == Qt::CheckStateRole && index.column() == Check)
        return track->checked ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::AccessibleTextRole && index.column() == Check)
        return tr("Check mark of %1").arg(ShownText::of(track->title));
    if (role == Qt::TextAlignmentRole && index.column() == Duration)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    if (index.column() == Duration)
        return Utility::intervalToString(track->duration);
    const QString* text = textOf(*track, index.column());
    return text ? QVariant(ShownText::of(*text)) : QVariant();
}

bool TrackTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.column() != Check ||
        role != Qt::CheckStateRole)
        return false;
    _rows[std::size_t(index.row())]->checked = value.toInt() == Qt::Checked;
    marksChanged(index.row(), index.row());
    return true;
}

QVariant TrackTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::AccessibleTextRole && orientation == Qt::Horizontal && section == Check)
        return tr("Check mark");
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= ColumnCount)
        return {};
    const std::array<QString, ColumnCount> titles = {QString(),    tr("Title"), tr("Duration"),
                                                     tr("Artist"), tr("Album"), tr("Genre")};
    return titles[std::size_t(section)];
}

Qt::ItemFlags TrackTableModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() == Check ? flags | Qt::ItemIsUserCheckable : flags;
}

void TrackTableModel::sort(int column, Qt::SortOrder order)
{
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<Track*> tracks;
    for (const QModelIndex& index : before)
        tracks.push_back(_rows[std::size_t(index.row())]);
    _sortColumn = column;
    _sortOrder = order;
    sortRows();
    // A track may stand in two rows; either is as good for a selection.
    QHash<const Track*, int> rows;
    for (std::size_t row = 0; row < _rows.size() && !before.isEmpty(); ++row)
        rows.insert(_rows[row], int(row));
    for (qsizetype i = 0; i < before.size(); ++i)
        changePersistentIndex(before[i],
                              index(rows.value(tracks[std::size_t(i)]), before[i].column()));
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void TrackTableModel::sortRows()
{
    _rows = _tracks ? *_tracks : std::vector<Track*>();
    if (_sortColumn < 0)
        return;
    const auto ascending = [this](const Track* a, const Track* b) {
        return comesBefore(*a, *b, _sortColumn);
    };
    const auto descending = [&](const Track* a, const Track* b) { return ascending(b, a); };
    if (_sortOrder == Qt::AscendingOrder)
        std::stable_sort(_rows.begin(), _rows.end(), ascending);
    else
        std::stable_sort(_rows.begin(), _rows.end(), descending);
}
