#pragma once

#include <QString>

#include <vector>

struct Track;

/// A named, ordered list of tracks; a track may stand in it more than once.
struct Playlist {
    static Playlist playlistWithName(const QString& name) { return {name, {}}; }

    QString name; ///< null when the library gives none
    std::vector<Track*> tracks;
};
