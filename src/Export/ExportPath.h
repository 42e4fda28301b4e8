#pragma once

#include "Export/Config.h"

#include <QString>

struct Photo;
struct Playlist;
struct Track;

/// Where an exported item goes. Names are taken as the library gives them: nothing is trimmed
/// or replaced, and a "/" in a title makes folder levels.
class ExportPath
{
public:
    QString path;
    /// Why nothing may be written there; empty when all is well.
    QString refusal;
    /// The system's words when the folder could not be made; the copy then fails, and this says
    /// why better than the copy can.
    QString folderError;

    /// The setting that a track's folder comes from; `playlist` is null outside a playlist.
    static Section folderOf(const Track& track, const Playlist* playlist);

    /// The full path for a track's file; its containing folder is made. In a playlist:
    /// playlists folder / playlist / title; ringtones and voice memos: category folder / title;
    /// else category folder / artist / album / title. A path that would lead out of the category
    /// folder is refused, and nothing is made.
    static ExportPath trackPath(const Track& track, const Playlist* playlist, const Config& config);

    /// The full path for a photo's file. A photo of the camera roll keeps the device's file name,
    /// in the camera roll folder; any other is named by its number, in the photos folder / album,
    /// which is made. A photo in no album goes directly into the photos folder. A path that would
    /// lead out of these folders, or names no file, is refused.
    static ExportPath photoPath(const Photo& photo, const Config& config);
    /// The setting that a photo's folder comes from.
    static Section folderOf(const Photo& photo);

private:
    /// Refuses what leads out of `category`, and makes the folder of all else.
    static ExportPath below(const QString& category, const QString& path);
};
