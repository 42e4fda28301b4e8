#include "support/LargeLibrary.h"

#include "support/ITunesDbWriter.h"

#include <algorithm>

namespace
{
constexpr int TracksPerAlbum = 12;
constexpr int AlbumsPerArtist = 4;
constexpr int GenreCount = 40;
constexpr int PlaylistCount = 48;
constexpr int TracksPerPlaylist = 400;
constexpr int FoldersOfMedia = 50;
constexpr int BytesAddedPerTrack = 660;

quint32 mediaKind(int i)
{
    // Of a hundred tracks: 2 movies, 3 podcasts, 2 audiobooks, 2 TV shows, a few others.
    switch (i % 100) {
    case 11:
    case 61:
        return 2;
    case 17:
    case 47:
    case 77:
        return 4;
    case 23:
    case 73:
        return 8;
    case 29:
    case 79:
        return 64;
    case 31:
        return 32;
    case 37:
        return 16384;
    case 41:
        return 4194304;
    default:
        return 1;
    }
}

TestTrack track(int i)
{
    const int album = i / TracksPerAlbum;
    const int artist = album / AlbumsPerArtist;
    TestTrack track;
    track.id = quint32(1000 + i);
    track.title = QStringLiteral("A Song of the Long Road %1").arg(i);
    track.album = QStringLiteral("Evenings by the River %1").arg(album);
    track.artist = QStringLiteral("The Wandering Company %1").arg(artist);
    track.genre = QStringLiteral("Genre %1").arg(artist % GenreCount);
    track.location = QStringLiteral(":iPod_Control:Music:F%1:L%2.mp3")
                         .arg(i % FoldersOfMedia, 2, 10, QChar(u'0'))
                         .arg(i, 6, 10, QChar(u'0'));
    track.milliseconds = quint32(120000 + i % 240000);
    track.mediaKind = mediaKind(i);
    track.podcast = track.mediaKind == 4;
    return track;
}
} // namespace

TestLibrary largeLibrary(int trackCount)
{
    TestLibrary library;
    library.name = QStringLiteral("Large Player");
    library.tracks.reserve(std::size_t(trackCount));
    for (int i = 0; i < trackCount; ++i)
        library.tracks.push_back(track(i));
    const int members = std::min(TracksPerPlaylist, trackCount);
    for (int p = 0; p < PlaylistCount; ++p) {
        TestPlaylist playlist;
        playlist.name = QStringLiteral("Playlist %1").arg(p);
        for (int m = 0; m < members; ++m) {
            const qint64 index = (qint64(p) * 7919 + qint64(m) * 104729) % trackCount;
            playlist.trackIds.push_back(library.tracks[std::size_t(index)].id);
        }
        library.playlists.push_back(playlist);
    }
    return library;
}

QByteArray largeITunesDb(int trackCount)
{
    ITunesDbWriter::Options options;
    options.padding = BytesAddedPerTrack;
    return ITunesDbWriter::write(largeLibrary(trackCount), options);
}
