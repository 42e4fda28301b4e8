#include "Window/PhotoGrid.h"

#include "Device/PreviewPass.h"
#include "Window/Views/NSCollectionViewEx.h"

#include <QItemSelectionModel>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int PreviewMilliseconds = 100; ///< between two looks at what has been made
}

PhotoGrid::PhotoGrid(QWidget* parent)
    : QWidget(parent)
    , _collectionView(new NSCollectionViewEx)
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
    std::vector<int> rows;
    for (const QItemSelectionRange& range : _collectionView->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::vector<Photo*> selected;
    selected.reserve(rows.size());
    for (const int row : rows)
        selected.push_back(photos()[std::size_t(row)]);
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
    if (photos().empty())
        return;
    const QItemSelection all(_currentPhotos.index(0),
                             _currentPhotos.index(_currentPhotos.rowCount() - 1));
    _collectionView->selectionModel()->select(all, QItemSelectionModel::Toggle);
}

void PhotoGrid::clearSelection()
{
    _collectionView->clearSelection();
}
