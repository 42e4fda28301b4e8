#include "Window/Models/SourceListModel.h"

#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/SectionItems.h"
#include "Device/TrackDb.h"
#include "Window/ShownText.h"

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
        for (const SectionFacts& one : Sections::all())
            addSection(*device, one.section);
        if (TrackDb* library = device->trackDb())
            _playlists = library->playlists();
        if (PhotoDb* library = device->photoDb())
            _albums = library->albums();
    }
    endResetModel();
}

void SourceListModel::addSection(Device& device, Section section)
{
    const std::optional<SectionItems> items = SectionItems::of(device, section);
    // Every device may have media and photos one day; the other two are matters of its kind.
    if (!items && (section == Section::VoiceMemos || section == Section::CameraRoll))
        return;
    _topRows.push_back(
        {section, withCount(Sections::rowName(section), items ? items->count() : 0)});
}

SourceListModel::Kind SourceListModel::kind(const QModelIndex& index) const
{
    switch (index.internalId()) {
    case BelowPlaylists:
        return Kind::Playlist;
    case BelowPhotos:
        return Kind::Album;
    default:
        return Kind::Section;
    }
}

Section SourceListModel::section(const QModelIndex& index) const
{
    switch (kind(index)) {
    case Kind::Playlist:
        return Section::Playlists;
    case Kind::Album:
        return Section::Photos;
    case Kind::Section:
        break;
    }
    return _topRows.at(std::size_t(index.row())).section;
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

QModelIndex SourceListModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column, TopLevel);
    return createIndex(row, column,
                       section(parent) == Section::Photos ? BelowPhotos : BelowPlaylists);
}

QModelIndex SourceListModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == TopLevel)
        return {};
    const Section above = section(index);
    return createIndex(topRowOf(above), 0, TopLevel);
}

int SourceListModel::topRowOf(Section section) const
{
    const auto row = std::find_if(_topRows.begin(), _topRows.end(),
                                  [section](const TopRow& top) { return top.section == section; });
    return int(row - _topRows.begin());
}

bool SourceListModel::hasSection(Section section) const
{
    return topRowOf(section) < int(_topRows.size());
}

int SourceListModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(_topRows.size());
    if (parent.internalId() != TopLevel || parent.column() != 0)
        return 0;
    const Section above = section(parent);
    return above == Section::Playlists ? int(_playlists.size())
           : above == Section::Photos  ? int(_albums.size())
                                       : 0;
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
    case SectionRole:
        return int(section(index));
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
        return withCount(ShownText::of(list->name), list->tracks.size());
    if (const Album* pictures = album(index))
        return withCount(ShownText::of(pictures->name), pictures->photos.size());
    return _topRows[std::size_t(index.row())].label;
}
