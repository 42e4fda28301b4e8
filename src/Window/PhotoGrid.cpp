#include "Window/PhotoGrid.h"

#include "Device/PreviewPass.h"
#include "Window/Views/PhotoListView.h"

#include <QItemSelectionModel>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int PreviewMilliseconds = 100; ///< between two looks at what has been made
}

PhotoGrid::PhotoGrid(QWidget* parent)
    : QWidget(parent)
    , _collectionView(new PhotoListView)
{
    setObjectName(QStringLiteral("_scv"));
    _collectionView->setObjectName(QStringLiteral("_cv"));
    _collectionView->setAccessibleName(tr("Photos"));
    _collectionView->setModel(&_currentPhotos);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_collectionView);
    _previewClock.setInterval(PreviewMilliseconds);
    connect(&_previewClock, &QTimer::timeout, this, &PhotoGrid::showNewPreviews);
    connect(_collectionView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PhotoGrid::stateChanged);
    connect(&_currentPhotos, &QAbstractItemModel::modelReset, this, &PhotoGrid::stateChanged);
}

void PhotoGrid::setPhotos(const std::vector<Photo*>& photos, const PreviewPass* previews)
{
    _currentPhotos.setPhotos(photos);
    clearSelection();
    _collectionView->scrollToTop();
    _previews = previews;
    _previewsShown = previews ? previews->done() : 0;
    if (previews && !previews->finished())
        _previewClock.start();
    else
        _previewClock.stop();
}

void PhotoGrid::showNewPreviews()
{
    // Asked in this order: what is done when the pass has finished is all there will be.
    const bool finished = _previews->finished();
    const std::size_t done = _previews->done();
    if (done != _previewsShown)
        _currentPhotos.previewsChanged();
    _previewsShown = done;
    if (finished)
        _previewClock.stop();
}

void PhotoGrid::setMenu(QMenu* menu)
{
    _collectionView->setMenu(menu);
}

std::vector<Photo*> PhotoGrid::selectedPhotos() const
{
    const std::vector<bool> isSelected = selectedRows();
    std::vector<Photo*> selected;
    for (std::size_t row = 0; row < isSelected.size(); ++row) {
        if (isSelected[row])
            selected.push_back(photos()[row]);
    }
    return selected;
}

bool PhotoGrid::hasSelection() const
{
    return _collectionView->selectionModel()->hasSelection();
}

void PhotoGrid::selectAll()
{
    _collectionView->selectAll();
}

void PhotoGrid::invertSelection()
{
    // Toggling would compare every selected range with every other.
    const std::vector<bool> isSelected = selectedRows();
    QItemSelection others;
    for (auto row = isSelected.begin(); row != isSelected.end();) {
        const auto first = std::find(row, isSelected.end(), false);
        row = std::find(first, isSelected.end(), true);
        if (first != row) {
            others.append({_currentPhotos.index(int(first - isSelected.begin())),
                           _currentPhotos.index(int(row - isSelected.begin()) - 1)});
        }
    }
    _collectionView->selectionModel()->select(others, QItemSelectionModel::ClearAndSelect);
}

std::vector<bool> PhotoGrid::selectedRows() const
{
    std::vector<bool> rows(photos().size());
    for (const QItemSelectionRange& range : _collectionView->selectionModel()->selection())
        std::fill(rows.begin() + range.top(), rows.begin() + range.bottom() + 1, true);
    return rows;
}

void PhotoGrid::clearSelection()
{
    _collectionView->clearSelection();
}
