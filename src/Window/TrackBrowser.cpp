#include "Window/TrackBrowser.h"

#include "Base/StarOrder.h"
#include "Device/CategoryIndex.h"
#include "Device/Track.h"

#include <algorithm>

namespace
{
/// The key at a row; "*" where no row is chosen.
QString keyAt(const QStringList& keys, int row)
{
    return keys.value(row, StarOrder::Star.toString());
}
} // namespace

void TrackBrowser::clear()
{
    *this = TrackBrowser();
}

void TrackBrowser::showCategory(const CategoryIndex& index)
{
    clear();
    _category = &index;
    _aGenres = index.genres();
}

void TrackBrowser::showTracks(std::vector<Track*> tracks)
{
    clear();
    setCurrentTracks(std::move(tracks));
}

void TrackBrowser::chooseGenre(int row)
{
    _genreRow = row;
    _aArtists.clear();
    if (_category && row >= 0)
        _aArtists = _category->artists(_aGenres.value(row));
}

void TrackBrowser::chooseArtist(int row)
{
    _artistRow = row;
    _aAlbums.clear();
    if (_category && row >= 0)
        _aAlbums = _category->albums(keyAt(_aGenres, _genreRow), _aArtists.value(row));
}

void TrackBrowser::chooseAlbum(int row)
{
    if (!_category)
        return;
    setCurrentTracks(_category->tracks(CategoryIndex::joinedKey(
        keyAt(_aGenres, _genreRow), keyAt(_aArtists, _artistRow), keyAt(_aAlbums, row))));
}

void TrackBrowser::search(const QString& text)
{
    _search = text.trimmed();
    _filteredTracks = filterTracks();
}

void TrackBrowser::setCurrentTracks(std::vector<Track*> tracks)
{
    _currentTracks = std::make_shared<const std::vector<Track*>>(std::move(tracks));
    _filteredTracks = filterTracks();
}

TrackBrowser::Tracks TrackBrowser::filterTracks() const
{
    if (_search.isEmpty() || !_currentTracks)
        return _currentTracks;
    auto kept = std::make_shared<std::vector<Track*>>();
    std::copy_if(
        _currentTracks->begin(), _currentTracks->end(), std::back_inserter(*kept),
        [this](const Track* track) { return track->title.contains(_search, Qt::CaseInsensitive); });
    return kept;
}
