#include "Console/Listing.h"

#include "Base/Utility.h"
#include "Console/Terminal.h"
#include "Device/Album.h"
#include "Device/Photo.h"
#include "Device/Playlist.h"
#include "Device/SectionItems.h"
#include "Device/Track.h"

#include <QCoreApplication>

namespace
{
constexpr int TitleWidth = 36;
constexpr int ArtistWidth = 26;
constexpr int AlbumWidth = 28;
constexpr int PhotoWidth = 12;
constexpr int PhotoAlbumWidth = 36;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Listing)
};

void printTrack(const QString& title, const QString& artist, const QString& album,
                const QString& duration)
{
    Terminal::print(Terminal::field(title, TitleWidth) + Terminal::field(artist, ArtistWidth) +
                    Terminal::field(album, AlbumWidth) + duration + u'\n');
}

void printTracks(const std::vector<Track*>& tracks)
{
    printTrack(Words::tr("Title"), Words::tr("Artist"), Words::tr("Album"), Words::tr("Duration"));
    for (const Track* track : tracks)
        printTrack(track->title, track->artist, track->album,
                   Utility::intervalToString(track->duration));
}

void printPlaylists(const std::vector<Playlist*>& playlists)
{
    for (const Playlist* playlist : playlists)
        Terminal::print(QStringLiteral("%1%2\n")
                            .arg(Terminal::field(playlist->name, TitleWidth))
                            .arg(playlist->tracks.size()));
}

void printPhoto(const QString& number, const QString& album, const QString& file)
{
    Terminal::print(Terminal::field(number, PhotoWidth) + Terminal::field(album, PhotoAlbumWidth) +
                    Terminal::harmless(file) + u'\n');
}

void printPhotos(const std::vector<Photo*>& photos)
{
    printPhoto(Words::tr("Photo"), Words::tr("Album"), Words::tr("File"));
    for (const Photo* photo : photos)
        printPhoto(QString::number(photo->photoId), photo->album ? photo->album->name : QString(),
                   photo->fullSizeFile);
}

/// Its photos have neither numbers nor albums.
void printCameraRoll(const std::vector<Photo*>& photos)
{
    for (const Photo* photo : photos)
        Terminal::print(Terminal::harmless(photo->fullSizeFile) + u'\n');
}
} // namespace

void Listing::print(Section section, const SectionItems& items)
{
    switch (section) {
    case Section::Music:
    case Section::Movies:
    case Section::TVShows:
    case Section::Podcasts:
    case Section::Audiobooks:
    case Section::Ringtones:
    case Section::Books:
    case Section::VoiceMemos:
        printTracks(items.tracks);
        return;
    case Section::Playlists:
        printPlaylists(items.playlists);
        return;
    case Section::CameraRoll:
        printCameraRoll(items.photos);
        return;
    case Section::Photos:
        printPhotos(items.photos);
        return;
    }
}
