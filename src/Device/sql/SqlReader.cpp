#include "Device/sql/SqlReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"

#include <algorithm>

void SqlReader::readPrimaryContainer(Found& found, Statement info)
{
    if (info.step())
        found.primaryContainerId = info.id(0);
}

void SqlReader::readBaseLocations(Found& found, Statement folders) const
{
    while (folders.step()) {
        const qint32 id = folders.id(0);
        found.baseLocations.remove(id);
        const QString folder = folders.text(1);
        if (!folder.isEmpty()) // what adds nothing to a location is as good as unknown
            found.baseLocations[id] = getFileSystemPath(folder);
    }
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

QString SqlReader::path(const Found& found, qint32 baseLocation, QByteArrayView location) const
{
    // As getFileSystemPath of the two joined, with one string for each file instead of three.
    QString file = TextPool::decode(location);
    if (file.isNull())
        return file;
    const auto folder = found.baseLocations.constFind(baseLocation);
    if (folder == found.baseLocations.constEnd())
        return getFileSystemPath(file);
    file = PathName::join(*folder, file);
    std::replace(file.begin() + folder->size(), file.end(), QChar(u':'), QChar(u'/'));
    return file;
}
