#include "Window/Models/SourceListModel.h"

#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/SectionItems.h"
#include "Device/Track.h"
#include "Device/TrackDb.h"
#include "Window/ShownText.h"

#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace
{
// A row's internal id: what it stands below.
constexpr quintptr TopLevel = 0;
constexpr quintptr BelowPlaylists = 1;
constexpr quintptr BelowPhotos = 2;

/// The readers that a section's rows come from.
QStringList readersOf(Section section)
{
    switch (section) {
    case Section::Music:
    case Section::Movies:
    case Section::TVShows:
    case Section::Podcasts:
    case Section::Audiobooks:
    case Section::Ringtones:
    case Section::Playlists:
        return {QStringLiteral("trackDb")};
    case Section::Books:
        return {QStringLiteral("trackDb"), QStringLiteral("bookDb")};
    case Section::VoiceMemos:
        return {QStringLiteral("voiceMemoDb")};
    case Section::CameraRoll:
        return {QStringLiteral("cameraRollDb")};
    case Section::Photos:
        return {QStringLiteral("photoDb")};
    }
    return {};
}

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
    // Reading may throw, and views would wait for the end of a reset for ever.
    Rows rows = device ? rowsOf(*device) : Rows();
    std::vector<ReaderProblem> problems =
        device ? device->problems() : std::vector<ReaderProblem>();
    beginResetModel();
    std::swap(_rows, rows);
    _problems.swap(problems);
    endResetModel();
}

SourceListModel::Rows SourceListModel::rowsOf(Device& device)
{
    Rows rows;
    for (const SectionFacts& one : Sections::all())
        addSection(rows, device, one.section);
    if (TrackDb* library = device.trackDb()) {
        rows.playlists = library->playlists();
        rows.tracks.insert(rows.tracks.end(), library->tracks().begin(), library->tracks().end());
    }
    if (PhotoDb* library = device.photoDb())
        rows.albums = library->albums();
    return rows;
}

void SourceListModel::addSection(Rows& rows, Device& device, Section section)
{
    const std::optional<SectionItems> items = SectionItems::of(device, section);
    // Every device may have media and photos one day; the other two are matters of its kind.
    if (!items && (section == Section::VoiceMemos || section == Section::CameraRoll))
        return;
    rows.top.push_back(
        {section, withCount(Sections::rowName(section), items ? items->count() : 0)});
    if (items && section == Section::VoiceMemos)
        rows.tracks = items->tracks;
}

void SourceListModel::setProblems(const std::vector<ReaderProblem>& problems)
{
    const auto isSame = [](const ReaderProblem& one, const ReaderProblem& other) {
        return one.reader == other.reader && one.problem.text() == other.problem.text();
    };
    if (std::equal(problems.begin(), problems.end(), _problems.begin(), _problems.end(), isSame))
        return;
    _problems = problems;
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0),
                           {HasProblemsRole, Qt::ToolTipRole, Qt::AccessibleDescriptionRole});
}

std::vector<Problem> SourceListModel::problems(Section section) const
{
    const QStringList readers = readersOf(section);
    std::vector<Problem> list;
    for (const ReaderProblem& one : _problems) {
        if (readers.contains(one.reader))
            list.push_back(one.problem);
    }
    return list;
}

QString SourceListModel::problemWords(const QModelIndex& index) const
{
    if (kind(index) != Kind::Section)
        return {};
    QStringList words;
    for (const Problem& one : problems(section(index)))
        words.append(one.words);
    return words.join(u'\n');
}

int SourceListModel::checkedCount() const
{
    return int(std::count_if(_rows.tracks.begin(), _rows.tracks.end(),
                             [](const Track* track) { return track->checked; }));
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
    return _rows.top.at(std::size_t(index.row())).section;
}

Playlist* SourceListModel::playlist(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() != BelowPlaylists)
        return nullptr;
    return _rows.playlists.at(std::size_t(index.row()));
}

Album* SourceListModel::album(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() != BelowPhotos)
        return nullptr;
    return _rows.albums.at(std::size_t(index.row()));
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
    const auto row = std::find_if(_rows.top.begin(), _rows.top.end(),
                                  [section](const TopRow& top) { return top.section == section; });
    return int(row - _rows.top.begin());
}

bool SourceListModel::hasSection(Section section) const
{
    return topRowOf(section) < int(_rows.top.size());
}

int SourceListModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(_rows.top.size());
    if (parent.internalId() != TopLevel || parent.column() != 0)
        return 0;
    const Section above = section(parent);
    return above == Section::Playlists ? int(_rows.playlists.size())
           : above == Section::Photos  ? int(_rows.albums.size())
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
    case HasProblemsRole:
        return !problemWords(index).isEmpty();
    case Qt::ToolTipRole: {
        // Words may carry names from the device, which are no document.
        const QString words = problemWords(index);
        return words.isEmpty() ? QVariant() : Qt::convertFromPlainText(words);
    }
    case Qt::AccessibleDescriptionRole:
        return problemWords(index);
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
    return _rows.top[std::size_t(index.row())].label;
}
