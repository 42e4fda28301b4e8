#include "Device/sql/SqlReader.h"

#include "Base/PathName.h"
#include "Device/Device.h"

#include <algorithm>
#include <utility>

namespace
{
/// So many look-ups wait for memory together.
constexpr std::size_t RowsAtOnce = 64;

/// Whether a location can follow its lead as it stands: nearly all can.
bool isPlainLocation(QByteArrayView location)
{
    if (location.isEmpty() || location.front() == '/' || location.front() == ':')
        return false;
    unsigned char bits = 0;
    bool hasNul = false;
    for (const char byte : location) {
        bits |= static_cast<unsigned char>(byte);
        hasNul |= byte == '\0';
    }
    constexpr unsigned char BeyondAscii = 0x80;
    return (bits & BeyondAscii) == 0 && !hasNul;
}

/// A lead and a plain location in one string, with the "/" of a path for each ":".
QString joined(const QString& lead, QByteArrayView location)
{
    QString path(lead.size() + location.size(), Qt::Uninitialized);
    QChar* out = std::copy(lead.cbegin(), lead.cend(), path.data());
    for (const char byte : location)
        *out++ = byte == ':' ? QChar(u'/') : QChar(uchar(byte));
    return path;
}
} // namespace

void SqlReader::readPrimaryContainer(Found& found, Statement info)
{
    if (info.step())
        found.primaryContainerId = info.id(0);
}

void SqlReader::readBaseLocations(Found& found, Statement folders) const
{
    found.noBaseLocation = baseLocation(QLatin1String(""));
    while (folders.step()) {
        const qint32 id = folders.id(0);
        found.baseLocations.remove(id);
        const QString folder = folders.text(1);
        if (!folder.isEmpty()) // what adds nothing to a location is as good as unknown
            found.baseLocations[id] = baseLocation(folder);
    }
}

SqlReader::BaseLocation SqlReader::baseLocation(const QString& folder) const
{
    const QString anyFile = getFileSystemPath(PathName::join(folder, u"x"));
    return {folder, anyFile.chopped(1)};
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

void SqlReader::addMember(Found& found, Member member)
{
    found.items.expect(member.item);
    found.members.push_back(member);
    if (found.members.size() >= RowsAtOnce)
        finishMembers(found);
}

void SqlReader::finishMembers(Found& found)
{
    for (const Member& member : found.members) {
        if (const Track* track = found.items.find(member.item))
            __builtin_prefetch(&track->playlists, 1);
    }
    for (const Member& member : found.members) {
        if (Track* track = found.items.find(member.item))
            link(found, member.container, *track);
    }
    found.members.clear();
}

void SqlReader::link(Found& found, qint32 container, Track& track)
{
    if (container == found.primaryContainerId) {
        list(track);
        return;
    }
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

void SqlReader::addFile(Found& found, File file)
{
    found.items.expect(file.item);
    found.files.push_back(std::move(file));
    if (found.files.size() >= RowsAtOnce)
        finishFiles(found);
}

void SqlReader::finishFiles(Found& found)
{
    for (const File& file : found.files) {
        if (const Track* track = found.items.find(file.item))
            __builtin_prefetch(&track->path, 1);
    }
    for (File& file : found.files) {
        if (Track* track = found.items.find(file.item))
            track->path = std::move(file.path);
    }
    found.files.clear();
}

QString SqlReader::path(Found& found, qint32 baseLocation, QByteArrayView location) const
{
    const auto known = found.baseLocations.constFind(baseLocation);
    const BaseLocation& base =
        known == found.baseLocations.constEnd() ? found.noBaseLocation : *known;
    if (isPlainLocation(location))
        return joined(base.lead, location);
    return found.pathsWithNul.choose(device(), location, [&](const QString& file) {
        return file.isNull() ? QString() : getFileSystemPath(PathName::join(base.folder, file));
    });
}
