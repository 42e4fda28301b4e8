#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class CategoryIndex;
struct Track;

/// What the right-hand side of the window shows: the tracks of a category or a list, narrowed by
/// genre, artist and album, then by the search. It holds no widget; views and models follow it.
/// A row of -1 means that nothing is selected.
class TrackBrowser
{
public:
    using Tracks = std::shared_ptr<const std::vector<Track*>>;

    /// Nothing is shown, and the search is cleared.
    void clear();
    /// A category with its browser; no track shows before an album row is chosen. The index must
    /// live until the next `clear` or choice.
    void showCategory(const CategoryIndex& index);
    /// A plain list, without a browser.
    void showTracks(std::vector<Track*> tracks);

    /// The keys of each level, "*" first. A choice fills the level below and nothing else; only
    /// the choice of an album changes the tracks.
    [[nodiscard]] const QStringList& genres() const { return _aGenres; }
    [[nodiscard]] const QStringList& artists() const { return _aArtists; }
    [[nodiscard]] const QStringList& albums() const { return _aAlbums; }
    void chooseGenre(int row);
    void chooseArtist(int row);
    void chooseAlbum(int row);

    /// Keeps the tracks whose title holds the text, without case; blanks around it do not count.
    void search(const QString& text);

    /// The tracks of the choice, and those of them that the search keeps. The same list when the
    /// search is empty. Null where nothing was chosen.
    [[nodiscard]] const Tracks& currentTracks() const { return _currentTracks; }
    [[nodiscard]] const Tracks& filteredTracks() const { return _filteredTracks; }

private:
    void setCurrentTracks(std::vector<Track*> tracks);
    [[nodiscard]] Tracks filterTracks() const;

    const CategoryIndex* _category = nullptr;
    QStringList _aGenres;
    QStringList _aArtists;
    QStringList _aAlbums;
    int _genreRow = -1;
    int _artistRow = -1;
    QString _search;
    Tracks _currentTracks;
    Tracks _filteredTracks;
};
