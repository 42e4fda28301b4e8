#include "Device/TrackDb.h"

#include "Base/Exception.h"
#include "Base/PathName.h"
#include "Device/BookDb.h"
#include "Device/Device.h"
#include "Device/Formats.h"
#include "Device/LibraryProblems.h"

#include <QRegularExpression>

std::unique_ptr<TrackDb> TrackDb::create(Device& device)
{
    for (const auto probe : Formats::libraries()) {
        if (auto reader = probe(device))
            return reader;
    }
    return nullptr;
}

ProblemList TrackDb::problemsWithout(Device& device)
{
    ProblemList problems;
    const LibraryProblems music(LibraryProblems::Library::Music, problems);
    const QString folder = PathName::join(device.controlPath(), u"Music");
    const Expected<QStringList> folders = device.list(folder, Device::Entries::Folders);
    if (!folders && !folders.failedAs(Failure::Kind::Missing))
        music.cannotBeRead(folders.failure());
    if (!folders)
        return problems;
    static const QRegularExpression MediaFolder(QStringLiteral("^[Ff][0-9]{2,}$"));
    for (const QString& name : *folders) {
        if (MediaFolder.match(name).hasMatch() &&
            !device.getFiles(PathName::join(folder, name)).isEmpty()) {
            music.isMissing(PathName::join(folder, name));
            break;
        }
    }
    return problems;
}

TrackDb::TrackDb(Device& device)
    : _device(device)
{
}

TrackDb::~TrackDb() = default;

const std::vector<Track*>& TrackDb::tracks()
{
    load();
    return _tracks;
}

const std::vector<Playlist*>& TrackDb::playlists()
{
    load();
    return _playlists;
}

const QString& TrackDb::name()
{
    load();
    return _name;
}

void TrackDb::load()
{
    if (_loaded)
        return;
    _loaded = true;
    try {
        parse();
    } catch (const Exception& exception) {
        // Damaged data ends the reading; what was listed until then stays, and a second attempt
        // would only list it twice.
        LibraryProblems(LibraryProblems::Library::Music, _problems).isDamaged(exception.reason());
    }
}

const CategoryIndex& TrackDb::category(Section section)
{
    if (section == Section::Books) {
        if (BookDb* catalogue = BookDb::filledCatalogue(_device))
            return catalogue->books();
    }
    fillTracks();
    return _index.at(std::size_t(section));
}

void TrackDb::fillTracks()
{
    if (_filled)
        return;
    _filled = true;
    load();
    for (Track* track : _tracks) {
        const Section category = track->category();
        if (category == Section::Ringtones)
            _index[std::size_t(category)].addFlat(track);
        else if (category == Section::VoiceMemos) // has no index of its own
            _index[std::size_t(Section::Music)].add(track);
        else
            _index[std::size_t(category)].add(track);
    }
}

int TrackDb::mediaTypeToTrackType(qint32 mediaKind)
{
    switch (mediaKind) {
    case 1:
        return MusicTrack;
    case 2:
        return MovieTrack;
    case 4:
        return PodcastTrack;
    case 6:
        return VideoPodcastTrack;
    case 8:
        return AudiobookTrack;
    case 0x20:
        return MusicVideoTrack;
    case 0x40:
        return TVShowTrack;
    case 0x4000:
        return RingtoneTrack;
    case 0x400000:
    case 0x800000:
        return BookTrack;
    default: // a number, not a set of bits: 0x60 is nothing that is known
        return UnknownTrack;
    }
}

QString TrackDb::getFileSystemPath(const QString& storedPath) const
{
    if (storedPath.isNull())
        return {};
    QString path = storedPath;
    path.replace(u':', u'/');
    return PathName::join(_device.prefix(), path);
}

Track& TrackDb::newTrack()
{
    return _ownedTracks.emplace_back();
}

Playlist& TrackDb::newPlaylist()
{
    return _ownedPlaylists.emplace_back();
}
