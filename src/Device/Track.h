#pragma once

#include "Device/Section.h"

#include <QString>

#include <vector>

struct Playlist;

/// The track type codes that readers produce and everyone else relies on.
enum TrackType : int {
    UnknownTrack = 0,
    MusicTrack = 1,
    MovieTrack = 2,
    PodcastTrack = 3,
    VideoPodcastTrack = 4,
    AudiobookTrack = 5,
    MusicVideoTrack = 6,
    TVShowTrack = 7,
    OtherMovieTrack = 8, ///< no reader produces it; treated exactly like a movie
    RingtoneTrack = 9,
    VoiceMemoTrack = 10,
    BookTrack = 11
};

/// One media item of a device. Texts are null where the library gives none. A reader owns its
/// tracks and playlists; the pointers between them live as long as the reader.
struct Track {
    QString title;
    bool isPodcast = false; ///< flagged as a podcast by its library
    bool checked = false;   ///< the person's check mark
    int type = MusicTrack;  ///< a TrackType
    QString album;
    QString artist;
    QString genre;
    QString path;                     ///< absolute, in the device's path space
    double duration = 0;              ///< seconds
    std::vector<Playlist*> playlists; ///< as the reader linked them, the master list left out

    /// The category by type and podcast flag. A TV show or an audiobook that is flagged as a
    /// podcast stays what its type says; a movie so flagged is a podcast.
    [[nodiscard]] Section category() const;
};
