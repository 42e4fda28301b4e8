#pragma once

#include "Window/Models/TrackTableModel.h"

#include <QWidget>

class RowTableView;
class QMenu;

/// The table of tracks, with a check box in each row.
class TrackTable final : public QWidget
{
    Q_OBJECT
public:
    explicit TrackTable(QWidget* parent = nullptr);

    void setTracks(const TrackBrowser::Tracks& tracks);
    void setMenu(QMenu* menu);

    /// Whether there is a list at all; it may be empty.
    [[nodiscard]] bool hasTracks() const { return _hasTracks; }
    /// The rows as they stand, which is also the order of an export.
    [[nodiscard]] const std::vector<Track*>& tracks() const { return _model.tracks(); }
    [[nodiscard]] std::vector<Track*> checkedTracks() const { return _model.checkedTracks(); }
    [[nodiscard]] bool hasCheckedTrack() const;
    /// The first of the selected rows; null without one.
    [[nodiscard]] Track* selectedTrack() const;
    [[nodiscard]] bool hasSelectedRow() const;

    void checkAll(bool checked) { _model.setAllChecked(checked); }
    void checkSelected(bool checked);

    [[nodiscard]] RowTableView* tableView() const { return _tableView; }

Q_SIGNALS:
    /// Other rows are selected or checked, so other commands may be possible.
    void stateChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpColumns();
    /// Space: all selected rows become checked, or unchecked when all are checked.
    void toggleSelected();

    RowTableView* _tableView;
    TrackTableModel _model;
    bool _hasTracks = false;
};
