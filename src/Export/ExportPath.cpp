#include "Export/ExportPath.h"

#include "Base/PathName.h"
#include "Device/Album.h"
#include "Device/Photo.h"
#include "Device/Playlist.h"
#include "Device/Track.h"

#include <QCoreApplication>
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
    const QString category = config.folderPath(folderOf(track, playlist));
    const QString fileName = track.title + u'.' + PathName::extension(track.path);
    return below(category,
                 PathName::join(PathName::join(category, subfolder(track, playlist)), fileName));
}

ExportPath ExportPath::below(const QString& category, const QString& path)
{
    ExportPath result;
    result.path = path;
    if (!PathName::isInside(result.path, category)) {
        result.refusal = QCoreApplication::translate(
            "ExportPath", "The name leads out of the destination folder");
        return result;
    }
    // Resolved as text, as the check just did: the file system would resolve ".." through links.
    if (PathName::hasParentComponent(result.path))
        result.path = QDir::cleanPath(result.path);
    return result;
}

Section ExportPath::folderOf(const Photo& photo)
{
    return photo.photoId == 0 ? Section::CameraRoll : Section::Photos;
}

ExportPath ExportPath::photoPath(const Photo& photo, PhotoSource source, const Config& config)
{
    const QString category = config.folderPath(folderOf(photo));
    if (photo.photoId == 0)
        return below(category,
                     PathName::join(category, PathName::lastComponent(photo.fullSizeFile)));
    const QString extension = source == PhotoSource::Rendition
                                  ? QStringLiteral("jpg")
                                  : PathName::extension(photo.fullSizeFile);
    const QString album = photo.album ? photo.album->name : QString();
    return below(category, PathName::join(PathName::join(category, album),
                                          QString::number(photo.photoId) + u'.' + extension));
}
