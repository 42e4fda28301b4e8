#include "Device/sql/sqlTrackDb.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"

namespace
{
const QString LibraryName = QStringLiteral("Library.itdb");
const QString LocationsName = QStringLiteral("Locations.itdb");
constexpr auto NoSideFiles = TemporaryCopy::SideFiles::Leave;
constexpr double MillisecondsPerSecond = 1000.0;
} // namespace

std::unique_ptr<TrackDb> sqlTrackDb::initWithDevice(Device& device)
{
    std::unique_ptr<sqlTrackDb> reader(new sqlTrackDb(device));
    if (!device.fileExists(reader->_libraryPath))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_libraryPath, NoSideFiles);
    TemporaryCopy::keepForDiagnosis(device, reader->_locationPath, NoSideFiles);
    return reader;
}

sqlTrackDb::sqlTrackDb(Device& device)
    : SqlReader(device)
{
    const QString folder = PathName::join(device.controlPath(), u"iTunes/iTunes Library.itlp");
    _libraryPath = PathName::join(folder, LibraryName);
    _locationPath = PathName::join(folder, LocationsName);
}

QString sqlTrackDb::format() const
{
    return LibraryName;
}

void sqlTrackDb::parse()
{
    Found found;
    {
        const TemporaryCopy copy(device(), _libraryPath, NoSideFiles);
        readLibrary(found, Database(copy));
    }
    const TemporaryCopy copy(device(), _locationPath, NoSideFiles);
    readLocations(found, Database(copy));
}

void sqlTrackDb::readLibrary(Found& found, const Database& library)
{
    readPrimaryContainer(found, library.prepare("select primary_container_pid from db_info"));
    readItems(found, library.prepare("select item.pid, item.title, item.is_podcast, "
                                     "item.media_kind, item.album, item.artist, "
                                     "genre_map.genre, item.total_time_ms from item "
                                     "left outer join genre_map on item.genre_id = genre_map.id"));
    readContainers(found, library.prepare("select pid, name from container"));
    // By position: the item's id comes first and the container's second.
    readMembers(found, library.prepare("select * from item_to_container"));
}

void sqlTrackDb::readItems(Found& found, Statement items)
{
    while (items.step()) {
        Track& track = newTrack();
        track.title = TextPool::decode(items.utf8(1));
        track.isPodcast = items.number(2) != 0;
        track.type = mediaTypeToTrackType(items.number(3));
        found.texts.share(items.utf8(4), track.album);
        found.texts.share(items.utf8(5), track.artist);
        found.texts.share(items.utf8(6), track.genre);
        track.duration = items.real(7) / MillisecondsPerSecond;
        found.items.set(items.id(0), &track);
    }
    found.texts.finish();
}

void sqlTrackDb::readMembers(Found& found, Statement members)
{
    while (members.step())
        addMember(found, {members.id(0), members.id(1)});
    finishMembers(found);
}

void sqlTrackDb::readLocations(Found& found, const Database& locations) const
{
    readBaseLocations(found, locations.prepare("select id, path from base_location"));
    Statement files =
        locations.prepare("select item_pid, base_location_id, location from location");
    while (files.step())
        addFile(found, {files.id(0), path(found, files.id(1), files.utf8(2))});
    finishFiles(found);
}
