#pragma once

#include "Window/TrackBrowser.h"

#include <QAbstractTableModel>

/// The rows of the track table: the reader's own tracks, which outlive these rows. Sorting
/// reorders the rows themselves, because their order is the order of an export.
class TrackTableModel final : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Check, Title, Duration, Artist, Album, Genre, ColumnCount };
    enum Role { TrackRole = Qt::UserRole }; ///< the row's `Track*`

    explicit TrackTableModel(QObject* parent = nullptr);

    /// Shows these tracks, in the order last sorted by; null shows none.
    void setTracks(const TrackBrowser::Tracks& tracks);
    [[nodiscard]] const std::vector<Track*>& tracks() const { return _rows; }
    [[nodiscard]] std::vector<Track*> checkedTracks() const;

    /// Checks or unchecks rows; -1 and rows that are not there are left out.
    void setChecked(const std::vector<int>& rows, bool checked);
    void setAllChecked(bool checked);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// By a column; a column of -1 brings the order of the tracks themselves back.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    void sortRows();
    /// Says that the marks of these rows changed, and of the others in which their tracks stand.
    void marksChanged(int first, int last);

    TrackBrowser::Tracks _tracks;
    std::vector<Track*> _rows;
    bool _repeats = false; ///< some track stands in two rows, as it may in a playlist
    int _sortColumn = -1;
    Qt::SortOrder _sortOrder = Qt::AscendingOrder;
};
