#include "Window/MenuValidation.h"

#include <QCoreApplication>

bool MenuValidation::isEnabled(Command command, const MenuState& state)
{
    switch (command) {
    case Command::exportSelectedPlaylist:
        return state.device && state.playlistSelected;
    case Command::exportSelectedPhotoAlbum:
        return state.device && state.albumSelected;
    case Command::exportEverything:
    case Command::exportAllMedia:
    case Command::exportAllMusic:
    case Command::exportAllMovies:
    case Command::exportAllTVShows:
    case Command::exportAllPodcasts:
    case Command::exportAllAudiobooks:
    case Command::exportAllRingtones:
    case Command::exportAllBooks:
    case Command::exportAllPlaylists:
    case Command::exportAllPhotos:
        return state.device;
    case Command::exportAllCameraRoll:
        return state.device && state.cameraRoll;
    case Command::exportAllVoiceMemos:
        return state.device && state.voiceMemos;
    case Command::exportCheckedTracks:
        return state.tracksShown && state.trackChecked;
    case Command::exportSelectedPhotos:
    case Command::clearSelection:
        return state.photoSelected;
    case Command::checkAll:
    case Command::uncheckAll:
        return state.tracksShown;
    case Command::checkSelected:
    case Command::uncheckSelected:
        return state.tracksShown && state.trackRowSelected;
    case Command::selectAll:
    case Command::invertSelection:
        return state.photosShown;
    case Command::switchBrowser:
        return state.canShowBrowser;
    case Command::exportOrStop:
        return state.device || state.exporting;
    case Command::stop:
        return state.exporting;
    case Command::play:
        return state.device && !state.exporting;
    case Command::showReport:
        return state.reportThere && !state.exporting;
    case Command::find:
    case Command::showPref:
    case Command::showAbout:
    case Command::hide:
    case Command::quit:
    case Command::help:
    case Command::openLog:
        return true;
    }
    return true;
}

QString MenuValidation::browserTitle(const MenuState& state)
{
    return state.browserHidden ? QCoreApplication::translate("MenuValidation", "Show &Browser")
                               : QCoreApplication::translate("MenuValidation", "Hide &Browser");
}
