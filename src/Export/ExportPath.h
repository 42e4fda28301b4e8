#pragma once

#include "Export/Config.h"

#include <QString>

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
    static Config::Folder folderOf(const Track& track, const Playlist* playlist);

    /// The full path for a track's file; its containing folder is made. In a playlist:
    /// playlists folder / playlist / title; ringtones and voice memos: category folder / title;
    /// else category folder / artist / album / title. A path that would lead out of the category
    /// folder is refused, and nothing is made.
    static ExportPath trackPath(const Track& track, const Playlist* playlist, const Config& config);
};
