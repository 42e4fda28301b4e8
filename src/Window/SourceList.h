#pragma once

#include "Window/Models/SourceListModel.h"

#include <QWidget>

class Device;
class NSOutlineViewEx;
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

    /// What the selected row stands for; none without a selected row.
    [[nodiscard]] std::optional<Kind> selectedKind() const;
    [[nodiscard]] Playlist* selectedPlaylist() const;
    [[nodiscard]] Album* selectedAlbum() const;
    /// Whether the selected row is one that the browser narrows.
    [[nodiscard]] bool canShowBrowser() const;

    /// Whether a top row of this kind is there.
    [[nodiscard]] bool hasRow(Kind kind) const { return _model.hasTopRow(kind); }

    [[nodiscard]] NSOutlineViewEx* outlineView() const { return _outlineView; }

Q_SIGNALS:
    /// Another row is selected, or none is.
    void outlineViewSelectionDidChange();

private:
    NSOutlineViewEx* _outlineView;
    SourceListModel _model;
    QIcon _imgPlaylist;
    QIcon _imgPhotoAlbum;
};
