#include "Device/sql/LibraryItdbReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"

#include <algorithm>

namespace
{
const QString LibraryName = QStringLiteral("Library.itdb");
const QString LocationsName = QStringLiteral("Locations.itdb");
constexpr auto WithLog = TemporaryCopy::SideFiles::Take;
const Query Items = {.columns = "item.pid, item.title, item.is_podcast, item.media_kind, "
                                "item.album, item.artist, genre_map.genre, item.total_time_ms",
                     .table = "item",
                     .joins = "left outer join genre_map on item.genre_id = genre_map.id",
                     .where = "",
                     .bareColumns = "item.pid, item.title, item.is_podcast, item.media_kind, "
                                    "item.album, item.artist, null, item.total_time_ms",
                     .bareJoins = "",
                     .isMain = true};
constexpr double MillisecondsPerSecond = 1000.0;
} // namespace

std::unique_ptr<TrackDb> LibraryItdbReader::initWithDevice(Device& device)
{
    std::unique_ptr<LibraryItdbReader> reader(new LibraryItdbReader(device));
    if (device.info(reader->_libraryPath).failedAs(Failure::Kind::Missing))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_libraryPath, WithLog);
    TemporaryCopy::keepForDiagnosis(device, reader->_locationPath, WithLog);
    return reader;
}

LibraryItdbReader::LibraryItdbReader(Device& device)
    : SqlReader(device)
{
    const QString folder = PathName::join(device.controlPath(), u"iTunes/iTunes Library.itlp");
    _libraryPath = PathName::join(folder, LibraryName);
    _locationPath = PathName::join(folder, LocationsName);
}

QString LibraryItdbReader::format() const
{
    return LibraryName;
}

void LibraryItdbReader::parse()
{
    const LibraryProblems problems(LibraryProblems::Library::Music, foundProblems());
    Found found;
    {
        const TemporaryCopy copy(device(), _libraryPath, WithLog);
        readLibrary(found, Database(copy, problems));
    }
    const TemporaryCopy copy(device(), _locationPath, WithLog);
    if (copy.status().failedAs(Failure::Kind::Missing)) {
        if (_itemCount > 0)
            problems.isDamaged(LocationsName + QStringLiteral(": ") +
                               copy.status().failure().text());
        return;
    }
    readLocations(found, Database(copy, problems));
}

void LibraryItdbReader::readLibrary(Found& found, const Database& library)
{
    readPrimaryContainer(found, library.prepare({"primary_container_pid", "db_info"}));
    readItems(found, library.prepare(Items));
    readContainers(found, library.prepare({"pid, name", "container"}));
    // By position: the item's id comes first and the container's second.
    readMembers(found, library.prepare({"item_to_container.*", "item_to_container"}));
    sayWhatIsInNoList(library.problems());
}

/// Only what is in a list is shown. What damage has to do with it has been said.
void LibraryItdbReader::sayWhatIsInNoList(const LibraryProblems& problems)
{
    std::vector<const Track*> listed(tracks().begin(), tracks().end());
    for (const Playlist* playlist : playlists())
        listed.insert(listed.end(), playlist->tracks.begin(), playlist->tracks.end());
    std::sort(listed.begin(), listed.end());
    const auto count = std::unique(listed.begin(), listed.end()) - listed.begin();
    if (foundProblems().empty() && count < _itemCount)
        problems.isNotUnderstood(
            QStringLiteral("item_to_container: %1 / %2").arg(count).arg(_itemCount));
}

void LibraryItdbReader::readItems(Found& found, Statement items)
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
        ++_itemCount;
    }
    found.texts.finish();
}

void LibraryItdbReader::readMembers(Found& found, Statement members)
{
    while (members.step())
        addMember(found, {members.id(0), members.id(1)});
    finishMembers(found);
}

void LibraryItdbReader::readLocations(Found& found, const Database& locations) const
{
    readBaseLocations(found, locations.prepare({"id, path", "base_location"}));
    Statement files = locations.prepare({"item_pid, base_location_id, location", "location"});
    while (files.step())
        addFile(found, {files.id(0), path(found, files.id(1), files.utf8(2))});
    finishFiles(found);
}
