#include "Device/sql/SqlReader.h"

#include "Base/PathName.h"

void SqlReader::readPrimaryContainer(Found& found, Statement info)
{
    if (info.step())
        found.primaryContainerId = info.id(0);
}

void SqlReader::readBaseLocations(Found& found, Statement folders)
{
    while (folders.step())
        found.baseLocations[folders.id(0)] = folders.text(1);
}

void SqlReader::readContainers(Found& found, Statement containers)
{
    while (containers.step()) {
        const qint32 id = containers.id(0);
        const QString name = containers.text(1);
        if (id == found.primaryContainerId) {
            setName(name);
            continue;
        }
        Playlist& playlist = newPlaylist();
        playlist.name = name;
        found.containers[id] = {&playlist, false};
    }
}

void SqlReader::addMember(Found& found, qint32 container, Track& track)
{
    const auto entry = found.containers.find(container);
    if (entry == found.containers.end())
        return;
    Playlist& playlist = *entry->playlist;
    if (!entry->listed)
        list(playlist);
    entry->listed = true;
    track.playlists.push_back(&playlist);
    playlist.tracks.push_back(&track);
}

QString SqlReader::path(const Found& found, qint32 baseLocation, const QString& location) const
{
    const auto folder = found.baseLocations.constFind(baseLocation);
    if (folder == found.baseLocations.constEnd() || location.isNull())
        return getFileSystemPath(location);
    return getFileSystemPath(PathName::join(*folder, location));
}
