#include "Export/ExportPath.h"

#include "Base/PathName.h"
#include "Device/Album.h"
#include "Device/Photo.h"
#include "Device/Playlist.h"
#include "Device/Track.h"

#include <QDir>

namespace
{
QString orUnknown(const QString& name, const QString& unknown)
{
    return name.isEmpty() ? unknown : name;
}

/// The levels between the category folder and the file, joined; empty for none.
QString subfolder(const Track& track, const Playlist* playlist)
{
    if (playlist)
        return playlist->name;
    const MediaCategory category = track.category();
    if (category == MediaCategory::Ringtones || category == MediaCategory::VoiceMemos)
        return {};
    return PathName::join(orUnknown(track.artist, QStringLiteral("Unknown Artist")),
                          orUnknown(track.album, QStringLiteral("Unknown Album")));
}
} // namespace

Config::Folder ExportPath::folderOf(const Track& track, const Playlist* playlist)
{
    if (playlist)
        return Config::Folder::Playlists;
    switch (track.category()) {
    case MediaCategory::Music:
        return Config::Folder::Music;
    case MediaCategory::Movies:
        return Config::Folder::Movies;
    case MediaCategory::TVShows:
        return Config::Folder::TVShows;
    case MediaCategory::Podcasts:
        return Config::Folder::Podcasts;
    case MediaCategory::Audiobooks:
        return Config::Folder::Audiobooks;
    case MediaCategory::Ringtones:
        return Config::Folder::Ringtones;
    case MediaCategory::Books:
        return Config::Folder::Books;
    case MediaCategory::VoiceMemos:
        return Config::Folder::VoiceMemos;
    }
    return Config::Folder::Music;
}

ExportPath ExportPath::trackPath(const Track& track, const Playlist* playlist, const Config& config)
{
    const Config::Folder category = folderOf(track, playlist);
    const QString folder = config.folderPath(category);
    const QString fileName = track.title + u'.' + PathName::extension(track.path);
    return below(category, folder,
                 PathName::join(PathName::join(folder, subfolder(track, playlist)), fileName));
}

ExportPath ExportPath::below(Config::Folder category, const QString& folder, const QString& path)
{
    ExportPath result;
    result.category = category;
    result.path = path;
    if (folder.isEmpty()) {
        result.refusal = tr("There is no destination folder");
        return result;
    }
    if (!PathName::isInside(path, folder)) {
        result.refusal = tr("The name leads out of the destination folder");
        return result;
    }
    QString start = folder;
    // Resolved as text, as the check just did: the file system would resolve ".." through links.
    if (PathName::hasParentComponent(path)) {
        result.path = QDir::cleanPath(path);
        start = QDir::cleanPath(folder);
    }
    // A "/" at the end of the folder's own path is not part of it.
    result.folder = PathName::parent(result.path).mid(start.size());
    return result;
}

Config::Folder ExportPath::folderOf(const Photo& photo)
{
    return photo.photoId == 0 ? Config::Folder::CameraRoll : Config::Folder::Photos;
}

ExportPath ExportPath::photoPath(const Photo& photo, PhotoSource source, const Config& config)
{
    const Config::Folder category = folderOf(photo);
    const QString folder = config.folderPath(category);
    if (photo.photoId == 0)
        return below(category, folder,
                     PathName::join(folder, PathName::lastComponent(photo.fullSizeFile)));
    const QString extension = source == PhotoSource::Rendition
                                  ? QStringLiteral("jpg")
                                  : PathName::extension(photo.fullSizeFile);
    const QString album = photo.album ? photo.album->name : QString();
    return below(category, folder,
                 PathName::join(PathName::join(folder, album),
                                QString::number(photo.photoId) + u'.' + extension));
}
