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
    const Section category = track.category();
    if (category == Section::Ringtones || category == Section::VoiceMemos)
        return {};
    return PathName::join(orUnknown(track.artist, QStringLiteral("Unknown Artist")),
                          orUnknown(track.album, QStringLiteral("Unknown Album")));
}
} // namespace

Section ExportPath::folderOf(const Track& track, const Playlist* playlist)
{
    return playlist ? Section::Playlists : track.category();
}

ExportPath ExportPath::trackPath(const Track& track, const Playlist* playlist, const Config& config)
{
    const Section category = folderOf(track, playlist);
    const QString& folder = config.folderPath(category);
    const QString fileName = track.title + u'.' + PathName::extension(track.path);
    return below(category, folder,
                 PathName::join(PathName::join(folder, subfolder(track, playlist)), fileName));
}

ExportPath ExportPath::below(Section category, const QString& folder, const QString& path)
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

Section ExportPath::folderOf(const Photo& photo)
{
    return photo.photoId == 0 ? Section::CameraRoll : Section::Photos;
}

ExportPath ExportPath::photoPath(const Photo& photo, PhotoSource source, const Config& config)
{
    const Section category = folderOf(photo);
    const QString& folder = config.folderPath(category);
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
