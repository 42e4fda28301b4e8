#pragma once

#include "Device/Track.h"

#include <QString>

#include <string>
#include <vector>

/// The names that the console gives to what a device holds.
namespace Categories
{
/// A category of the library's index and its name.
struct Media {
    MediaCategory category;
    QString name;
};

/// The seven categories that a library files its tracks under, in order.
const std::vector<Media>& media();
/// All names that "list" and "export" take, in order: the seven, "playlists", "voiceMemos",
/// "cameraRoll" and "photos".
std::vector<std::string> names();
/// Whether "export" takes `what`: a name, "all", "media", "playlist=..." or "album=...".
bool isExportable(const QString& what);

/// The recordings, which are in no library.
extern const QString VoiceMemos;

/// What stands before a playlist's or an album's own name.
extern const QString PlaylistPrefix;
extern const QString AlbumPrefix;
} // namespace Categories
