#pragma once

#include "Window/Models/SourceListModel.h"

#include <QWidget>

class Device;
class SourceTreeView;
class QMenu;

/// The left column: the categories of the current device, its playlists and its photo albums.
class SourceList final : public QWidget
{
    Q_OBJECT
public:
    using Kind = SourceListModel::Kind;

    explicit SourceList(QWidget* parent = nullptr);

    /// Shows a device, with nothing selected; null shows nothing.
    void setDevice(Device* device);
    void selectFirstRow();
    void setMenu(QMenu* menu);

    /// The section that the selected row is or stands below; none without a selected row.
    [[nodiscard]] std::optional<Section> selectedSection() const;
    [[nodiscard]] Playlist* selectedPlaylist() const;
    [[nodiscard]] Album* selectedAlbum() const;
    /// Whether the selected row is one that the browser narrows.
    [[nodiscard]] bool canShowBrowser() const;

    /// What could not be read of the device; its rows get a sign.
    void setProblems(const std::vector<ReaderProblem>& problems) { _model.setProblems(problems); }
    [[nodiscard]] std::vector<Problem> problems(Section section) const
    {
        return _model.problems(section);
    }
    /// How many tracks of the device are checked, shown or not.
    [[nodiscard]] int checkedCount() const { return _model.checkedCount(); }

    /// Whether a row of this section is there.
    [[nodiscard]] bool hasRow(Section section) const { return _model.hasSection(section); }

    [[nodiscard]] SourceTreeView* outlineView() const { return _outlineView; }

Q_SIGNALS:
    /// Another row is selected, or none is.
    void sourceChanged();

private:
    SourceTreeView* _outlineView;
    SourceListModel _model;
    QIcon _imgPlaylist;
    QIcon _imgPhotoAlbum;
};
