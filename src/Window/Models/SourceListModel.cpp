#include "Window/Models/SourceListModel.h"

#include "Device/CameraRollDb.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/TrackDb.h"
#include "Device/VoiceMemoDb.h"

#include <algorithm>

namespace
{
// A row's internal id: what it stands below.
constexpr quintptr TopLevel = 0;
constexpr quintptr BelowPlaylists = 1;
constexpr quintptr BelowPhotos = 2;

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
    _albums.clear();
    if (device) {
        addMedia(*device);
        addVoiceMemos(*device);
        addPhotos(*device);
    }
    endResetModel();
}

void SourceListModel::addMedia(Device& device)
{
    TrackDb* library = device.trackDb();
    if (library)
        _playlists = library->playlists(); // loads it, which the categories do not
    const auto add = [&](Kind kind, const QString& name, MediaCategory category) {
        addTopRow(kind, name,
                  library ? library->category(category).tracks(CategoryIndex::AllKey).size() : 0);
    };
    add(Kind::Music, QStringLiteral("Music"), MediaCategory::Music);
    add(Kind::Movies, QStringLiteral("Movies"), MediaCategory::Movies);
    add(Kind::TVShows, QStringLiteral("TV Shows"), MediaCategory::TVShows);
    add(Kind::Podcasts, QStringLiteral("Podcasts"), MediaCategory::Podcasts);
    add(Kind::Audiobooks, QStringLiteral("Audiobooks"), MediaCategory::Audiobooks);
    add(Kind::Ringtones, QStringLiteral("Ringtones"), MediaCategory::Ringtones);
    add(Kind::Books, QStringLiteral("Books"), MediaCategory::Books);
    addTopRow(Kind::Playlists, QStringLiteral("Playlists"), _playlists.size());
}

void SourceListModel::addVoiceMemos(Device& device)
{
    if (VoiceMemoDb* recordings = device.voiceMemoDb())
        addTopRow(Kind::VoiceMemos, QStringLiteral("Voice Memos"), recordings->memos().size());
}

void SourceListModel::addPhotos(Device& device)
{
    if (CameraRollDb* roll = device.cameraRollDb())
        addTopRow(Kind::CameraRoll, QStringLiteral("Camera Roll"), roll->photos().size());
    PhotoDb* library = device.photoDb();
    if (library)
        _albums = library->albums();
    addTopRow(Kind::Photos, QStringLiteral("Photo"), library ? library->photos().size() : 0);
}

void SourceListModel::addTopRow(Kind kind, const QString& name, std::size_t count)
{
    _topRows.push_back({kind, withCount(name, count)});
}

SourceListModel::Kind SourceListModel::kind(const QModelIndex& index) const
{
    switch (index.internalId()) {
    case BelowPlaylists:
        return Kind::Playlist;
    case BelowPhotos:
        return Kind::Album;
    default:
        return _topRows.at(std::size_t(index.row())).kind;
    }
}

Playlist* SourceListModel::playlist(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() != BelowPlaylists)
        return nullptr;
    return _playlists.at(std::size_t(index.row()));
}

Album* SourceListModel::album(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() != BelowPhotos)
        return nullptr;
    return _albums.at(std::size_t(index.row()));
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

bool SourceListModel::showsPhotos(Kind kind)
{
    return kind == Kind::CameraRoll || kind == Kind::Photos || kind == Kind::Album;
}

QModelIndex SourceListModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column, TopLevel);
    return createIndex(row, column, kind(parent) == Kind::Photos ? BelowPhotos : BelowPlaylists);
}

QModelIndex SourceListModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == TopLevel)
        return {};
    const Kind above = index.internalId() == BelowPhotos ? Kind::Photos : Kind::Playlists;
    return createIndex(topRowOf(above), 0, TopLevel);
}

int SourceListModel::topRowOf(Kind kind) const
{
    const auto row = std::find_if(_topRows.begin(), _topRows.end(),
                                  [kind](const TopRow& top) { return top.kind == kind; });
    return int(row - _topRows.begin());
}

bool SourceListModel::hasTopRow(Kind kind) const
{
    return topRowOf(kind) < int(_topRows.size());
}

int SourceListModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(_topRows.size());
    if (parent.internalId() != TopLevel || parent.column() != 0)
        return 0;
    switch (kind(parent)) {
    case Kind::Playlists:
        return int(_playlists.size());
    case Kind::Photos:
        return int(_albums.size());
    default:
        return 0;
    }
}

int SourceListModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant SourceListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return label(index);
    case KindRole:
        return int(kind(index));
    case PlaylistRole:
        return QVariant::fromValue(playlist(index));
    case AlbumRole:
        return QVariant::fromValue(album(index));
    default:
        return {};
    }
}

QString SourceListModel::label(const QModelIndex& index) const
{
    if (const Playlist* list = playlist(index))
        return withCount(list->name, list->tracks.size());
    if (const Album* pictures = album(index))
        return withCount(pictures->name, pictures->photos.size());
    return _topRows[std::size_t(index.row())].label;
}
