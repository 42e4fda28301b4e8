#pragma once

#include "Device/Section.h"

#include <optional>

/// What a menu item or a shortcut does. The names are those of the operations behind them.
enum class Command {
    exportSelectedPlaylist,
    exportSelectedPhotoAlbum,
    exportEverything, ///< all that the device holds
    exportAllMedia,   ///< the media library
    exportAllMusic,
    exportAllMovies,
    exportAllTVShows,
    exportAllPodcasts,
    exportAllAudiobooks,
    exportAllRingtones,
    exportAllBooks,
    exportAllPlaylists,
    exportAllVoiceMemos,
    exportAllCameraRoll,
    exportAllPhotos,
    exportCheckedTracks,
    exportSelectedPhotos,
    checkAll,
    uncheckAll,
    checkSelected,
    uncheckSelected,
    selectAll,
    invertSelection,
    clearSelection,
    switchBrowser,
    exportOrStop, ///< the Export button
    stop,
    play,
    find,
    showPref,
    showAbout,
    hide,
    quit,
    help,
    openLog,
    showReport
};

/// The command that exports all of a section, and back. The commands from `exportAllMusic` on
/// stand in the order of the sections.
constexpr Command exportAllOf(Section section)
{
    return Command(int(Command::exportAllMusic) + int(section));
}
constexpr std::optional<Section> sectionOf(Command command)
{
    if (command < Command::exportAllMusic || command > Command::exportAllPhotos)
        return std::nullopt;
    return Section(int(command) - int(Command::exportAllMusic));
}
