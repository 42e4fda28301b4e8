#include "Window/ExportCommands.h"

#include "Device/Album.h"
#include "Device/Device.h"
#include "Device/Playlist.h"
#include "Device/SectionItems.h"
#include "Window/DeviceBox.h"
#include "Window/Dialogs/Alert.h"
#include "Window/JobController.h"
#include "Window/MainWindow.h"
#include "Window/PhotoGrid.h"
#include "Window/SourceList.h"
#include "Window/TrackTable.h"

#include <optional>

ExportCommands::ExportCommands(MainWindow& window, JobController& jobs)
    : _window(window)
    , _jobs(jobs)
{
}

const std::shared_ptr<Device>& ExportCommands::currentDevice() const
{
    return _window.devices().currentDevice();
}

void ExportCommands::exportOrStop()
{
    if (_jobs.isExport()) {
        _jobs.requestStop();
        return;
    }
    const std::optional<Section> section = _window.sources().selectedSection();
    if (!currentDevice() || !section)
        return;
    if (Sections::facts(*section).view == SectionFacts::View::Photos)
        exportSelectedPhotos();
    else
        exportCheckedTracks();
}

bool ExportCommands::perform(Command command)
{
    switch (command) {
    case Command::exportOrStop:
        exportOrStop();
        return true;
    case Command::exportCheckedTracks:
        exportCheckedTracks();
        return true;
    case Command::exportSelectedPhotos:
        exportSelectedPhotos();
        return true;
    case Command::exportSelectedPlaylist:
        exportSelectedPlaylist();
        return true;
    case Command::exportSelectedPhotoAlbum:
        exportSelectedPhotoAlbum();
        return true;
    case Command::exportAllMedia:
        if (currentDevice())
            _jobs.exportTracks(currentDevice(), SectionItems::media(*currentDevice()).tracks);
        return true;
    default:
        break;
    }
    const std::optional<Section> section = sectionOf(command);
    if (section)
        exportAll(*section);
    return section.has_value();
}

void ExportCommands::exportAll(Section section)
{
    const std::shared_ptr<Device> device = currentDevice();
    const auto items = device ? SectionItems::of(*device, section) : std::nullopt;
    if (!items)
        return;
    switch (section) {
    case Section::Playlists:
        _jobs.exportPlaylists(device, items->playlists);
        break;
    case Section::CameraRoll:
    case Section::Photos:
        _jobs.exportPhotos(device, items->photos);
        break;
    case Section::Music:
    case Section::Movies:
    case Section::TVShows:
    case Section::Podcasts:
    case Section::Audiobooks:
    case Section::Ringtones:
    case Section::Books:
    case Section::VoiceMemos:
        _jobs.exportTracks(device, items->tracks);
        break;
    }
}

void ExportCommands::exportCheckedTracks()
{
    if (!_window.tracks().hasTracks())
        return;
    std::vector<Track*> checked = _window.tracks().checkedTracks();
    if (checked.empty()) {
        alert(QStringLiteral("Please check tracks to export"),
              QStringLiteral("No tracks has been checked to export! Please check the tracks you "
                             "want to export first."));
        return;
    }
    _jobs.exportTracks(currentDevice(), std::move(checked));
}

void ExportCommands::exportSelectedPhotos()
{
    std::vector<Photo*> selected = _window.photos().selectedPhotos();
    if (selected.empty()) {
        alert(QStringLiteral("Please select photos to export"),
              QStringLiteral("No photos has been selected to export! Please select the photos "
                             "you want to export first."));
        return;
    }
    _jobs.exportPhotos(currentDevice(), std::move(selected));
}

void ExportCommands::exportSelectedPlaylist()
{
    if (Playlist* playlist = _window.sources().selectedPlaylist())
        _jobs.exportPlaylists(currentDevice(), {playlist});
}

void ExportCommands::exportSelectedPhotoAlbum()
{
    if (Album* album = _window.sources().selectedAlbum())
        _jobs.exportPhotos(currentDevice(), album->photos);
}

void ExportCommands::play()
{
    if (_jobs.isBusy() || !currentDevice())
        return;
    if (Track* track = _window.tracks().selectedTrack())
        _jobs.play(currentDevice(), track);
    else
        alert(QStringLiteral("Please select a track to play"),
              QStringLiteral("No tracks has been selected to play! Please select the track you "
                             "want to play first."));
}

void ExportCommands::alert(const QString& title, const QString& text)
{
    Alert::show(_window, QStringLiteral("_alert"), title, text);
}
