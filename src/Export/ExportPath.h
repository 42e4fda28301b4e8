#pragma once

#include "Export/Config.h"

#include <QCoreApplication>
#include <QString>

struct Photo;
struct Playlist;
struct Track;

/// Where an exported item goes, as text alone: nothing is looked at or made. Names are taken as
/// the library gives them: nothing is trimmed or replaced, and a "/" in a title makes folder
/// levels.
class ExportPath
{
    Q_DECLARE_TR_FUNCTIONS(ExportPath)

public:
    /// Which file of the device a photo is written from.
    enum class PhotoSource {
        FullSize, ///< its own file, whose extension it keeps
        Rendition ///< a picture of the library, which is stored as JPEG
    };

    QString path; ///< of the file, below the folder that is set for the category
    Section category = Section::Music;
    QString folder; ///< below that folder; empty for itself
    /// Why nothing may be written there; empty when all is well.
    QString refusal;

    /// The setting that a track's folder comes from; `playlist` is null outside a playlist.
    static Section folderOf(const Track& track, const Playlist* playlist);

    /// The full path for a track's file. In a playlist: playlists folder / playlist / title;
    /// ringtones and voice memos: category folder / title; else category folder / artist / album
    /// / title. A path that would lead out of the category folder is refused.
    static ExportPath trackPath(const Track& track, const Playlist* playlist, const Config& config);

    /// The full path for a photo's file. A photo of the camera roll keeps the device's file name,
    /// in the camera roll folder; any other is named by its number, in the photos folder / album.
    /// A photo in no album goes directly into the photos folder. A path that would lead out of
    /// these folders, or names no file, is refused.
    static ExportPath photoPath(const Photo& photo, PhotoSource source, const Config& config);
    /// The setting that a photo's folder comes from.
    static Section folderOf(const Photo& photo);

private:
    /// Refuses what leads out of the folder of its category.
    static ExportPath below(Section category, const QString& folder, const QString& path);
};
