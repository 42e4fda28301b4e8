#include "Window/Models/SourceListModel.h"

#include "Device/Device.h"
#include "Device/Playlist.h"
#include "Device/TrackDb.h"

namespace
{
// A row's internal id: what it stands below.
constexpr quintptr TopLevel = 0;
constexpr quintptr BelowPlaylists = 1;

QString withCount(const QString& name, std::size_t count)
{
    return QStringLiteral("%1 (%2)").arg(name).arg(count);
}
} // namespace

SourceListModel::SourceListModel(QObject* parent)
    : QAbstractItemModel(parent)
{
}

void SourceListModel::setDevice(Device* device)
{
    beginResetModel();
    _topRows.clear();
    _playlists.clear();
    if (device) {
        TrackDb* library = device->trackDb();
        if (library)
            _playlists = library->playlists(); // loads it, which the categories do not
        const auto count = [library](MediaCategory category) {
            return library ? library->category(category).tracks(CategoryIndex::AllKey).size() : 0;
        };
        addTopRow(Kind::Music, QStringLiteral("Music"), count(MediaCategory::Music));
        addTopRow(Kind::Movies, QStringLiteral("Movies"), count(MediaCategory::Movies));
        addTopRow(Kind::TVShows, QStringLiteral("TV Shows"), count(MediaCategory::TVShows));
        addTopRow(Kind::Podcasts, QStringLiteral("Podcasts"), count(MediaCategory::Podcasts));
        addTopRow(Kind::Audiobooks, QStringLiteral("Audiobooks"), count(MediaCategory::Audiobooks));
        addTopRow(Kind::Ringtones, QStringLiteral("Ringtones"), count(MediaCategory::Ringtones));
        addTopRow(Kind::Books, QStringLiteral("Books"), count(MediaCategory::Books));
        addTopRow(Kind::Playlists, QStringLiteral("Playlists"), _playlists.size());
        addTopRow(Kind::Photos, QStringLiteral("Photo"), 0);
    }
    endResetModel();
}

void SourceListModel::addTopRow(Kind kind, const QString& name, std::size_t count)
{
    _topRows.push_back({kind, withCount(name, count)});
}

SourceListModel::Kind SourceListModel::kind(const QModelIndex& index) const
{
    return index.internalId() == BelowPlaylists ? Kind::Playlist
                                                : _topRows.at(std::size_t(index.row())).kind;
}

Playlist* SourceListModel::playlist(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() != BelowPlaylists)
        return nullptr;
    return _playlists.at(std::size_t(index.row()));
}

std::optional<MediaCategory> SourceListModel::browsableCategory(Kind kind)
{
    switch (kind) {
    case Kind::Music:
        return MediaCategory::Music;
    case Kind::Movies:
        return MediaCategory::Movies;
    case Kind::TVShows:
        return MediaCategory::TVShows;
    case Kind::Podcasts:
        return MediaCategory::Podcasts;
    case Kind::Audiobooks:
        return MediaCategory::Audiobooks;
    case Kind::Books:
        return MediaCategory::Books;
    default:
        return std::nullopt;
    }
}

QModelIndex SourceListModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? BelowPlaylists : TopLevel);
}

QModelIndex SourceListModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == TopLevel)
        return {};
    return createIndex(int(Kind::Playlists), 0, TopLevel);
}

int SourceListModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(_topRows.size());
    const bool holdsPlaylists =
        parent.internalId() == TopLevel && parent.column() == 0 && kind(parent) == Kind::Playlists;
    return holdsPlaylists ? int(_playlists.size()) : 0;
}

int SourceListModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant SourceListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Playlist* list = playlist(index);
    switch (role) {
    case Qt::DisplayRole:
        return list ? withCount(list->name, list->tracks.size())
                    : _topRows[std::size_t(index.row())].label;
    case KindRole:
        return int(kind(index));
    case PlaylistRole:
        return QVariant::fromValue(playlist(index));
    default:
        return {};
    }
}
