#include "Device/sql/MediaLibraryReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"
#include "Device/TemporaryCopy.h"

namespace
{
const QString FileName = QStringLiteral("MediaLibrary.sqlitedb");
const Query Items = {
    .columns = "item.item_pid, item.base_location_id, genre.genre, item_extra.title, "
               "item_extra.location, item_extra.media_kind, item_extra.total_time_ms, "
               "item_extra.is_podcast, album.album, item_artist.item_artist",
    .table = "item",
    .joins = "left outer join genre on item.genre_id = genre.genre_id "
             "left outer join item_extra on item.item_pid = item_extra.item_pid "
             "left outer join album on item.album_pid = album.album_pid "
             "left outer join item_artist on item.item_artist_pid = item_artist.item_artist_pid",
    .where = "",
    .bareColumns = "item.item_pid, item.base_location_id, null, item_extra.title, "
                   "item_extra.location, item_extra.media_kind, item_extra.total_time_ms, "
                   "item_extra.is_podcast, null, null",
    .bareJoins = "left outer join item_extra on item.item_pid = item_extra.item_pid",
    .isMain = true};
constexpr std::size_t BytesPerMember = 8; // a 64-bit id, little-endian

/// Seconds out of the column of milliseconds: values up to 1000 are seconds already.
double seconds(double stored)
{
    constexpr double MillisecondsPerSecond = 1000.0;
    return stored > MillisecondsPerSecond ? stored / MillisecondsPerSecond : stored;
}
} // namespace

std::unique_ptr<TrackDb> MediaLibraryReader::initWithDevice(Device& device)
{
    std::unique_ptr<MediaLibraryReader> reader(new MediaLibraryReader(device));
    if (device.info(reader->_libraryPath).failedAs(Failure::Kind::Missing))
        return nullptr;
    TemporaryCopy::keepForDiagnosis(device, reader->_libraryPath, TemporaryCopy::SideFiles::Take);
    return reader;
}

MediaLibraryReader::MediaLibraryReader(Device& device)
    : SqlReader(device)
    , _libraryPath(PathName::join(PathName::join(device.controlPath(), u"iTunes"), FileName))
{
}

QString MediaLibraryReader::format() const
{
    return FileName;
}

void MediaLibraryReader::parse()
{
    const TemporaryCopy copy(device(), _libraryPath, TemporaryCopy::SideFiles::Take);
    const Database database(copy,
                            LibraryProblems(LibraryProblems::Library::Music, foundProblems()));
    Found found;
    readPrimaryContainer(found, database.prepare({"primary_container_pid", "db_info"}));
    readBaseLocations(found, database.prepare({"base_location_id, path", "base_location"}));
    readItems(found, database.prepare(Items));
    readContainers(found, database.prepare({"container_pid, name", "container"}));
    readMembers(found, database.prepare({"container_pid, item_pid_data", "container_items"}));
}

void MediaLibraryReader::readItems(Found& found, Statement items)
{
    while (items.step()) {
        Track& track = newTrack();
        found.texts.share(items.utf8(2), track.genre);
        track.title = TextPool::decode(items.utf8(3));
        track.path = path(found, items.id(1), items.utf8(4));
        track.type = mediaTypeToTrackType(items.number(5));
        track.duration = seconds(items.real(6));
        track.isPodcast = items.number(7) != 0;
        found.texts.share(items.utf8(8), track.album);
        found.texts.share(items.utf8(9), track.artist);
        found.items.set(items.id(0), &track);
        list(track);
    }
    found.texts.finish();
}

void MediaLibraryReader::readMembers(Found& found, Statement containerItems)
{
    while (containerItems.step())
        addMembers(found, containerItems.id(0), containerItems.blob(1));
}

void MediaLibraryReader::addMembers(Found& found, qint32 container, ByteView members)
{
    const std::size_t whole = members.size() - members.size() % BytesPerMember;
    // The members of the primary container are in `tracks` already.
    if (container != found.primaryContainerId) {
        for (std::size_t offset = 0; offset < whole; offset += BytesPerMember)
            addMember(found, {Utility::readIntFromData(members, offset), container});
        finishMembers(found);
    }
    if (whole != members.size()) // an entry that is cut ends the reading of the database
        (void)Utility::bytesOfData(members, whole, BytesPerMember);
}
