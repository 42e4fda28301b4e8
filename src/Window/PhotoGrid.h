#pragma once

#include "Window/Models/PhotoGridModel.h"

#include <QTimer>
#include <QWidget>

class PhotoListView;
class PreviewPass;
class QMenu;

/// The photos of the selected source: a grid of previews with captions.
class PhotoGrid final : public QWidget
{
    Q_OBJECT
public:
    explicit PhotoGrid(QWidget* parent = nullptr);

    /// Shows these photos and selects none. Their previews are drawn again as `previews` makes
    /// them; it outlives the photos, and may be null.
    void setPhotos(const std::vector<Photo*>& photos, const PreviewPass* previews);
    void setMenu(QMenu* menu);

    [[nodiscard]] const std::vector<Photo*>& photos() const { return _currentPhotos.photos(); }
    /// In the order of the grid.
    [[nodiscard]] std::vector<Photo*> selectedPhotos() const;
    [[nodiscard]] bool hasSelection() const;

    void selectAll();
    void invertSelection();
    void clearSelection();

    [[nodiscard]] PhotoListView* collectionView() const { return _collectionView; }

Q_SIGNALS:
    /// Other photos are selected or shown, so other commands may be possible.
    void stateChanged();

private:
    void showNewPreviews();
    /// For each photo, whether it is selected.
    [[nodiscard]] std::vector<bool> selectedRows() const;

    PhotoListView* _collectionView;
    PhotoGridModel _currentPhotos;
    const PreviewPass* _previews = nullptr;
    std::size_t _previewsShown = 0;
    QTimer _previewClock;
};
