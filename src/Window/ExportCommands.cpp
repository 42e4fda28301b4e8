#include "Window/ExportCommands.h"

#include "Device/Album.h"
#include "Device/CameraRollDb.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/TrackDb.h"
#include "Device/VoiceMemoDb.h"
#include "Window/DeviceBox.h"
#include "Window/Dialogs/Alert.h"
#include "Window/JobController.h"
#include "Window/MainWindow.h"
#include "Window/PhotoGrid.h"
#include "Window/SourceList.h"
#include "Window/TrackTable.h"

#include <optional>

namespace
{
std::optional<MediaCategory> categoryOf(Command command)
{
    switch (command) {
    case Command::exportAllMusic:
        return MediaCategory::Music;
    case Command::exportAllMovies:
        return MediaCategory::Movies;
    case Command::exportAllTVShows:
        return MediaCategory::TVShows;
    case Command::exportAllPodcasts:
        return MediaCategory::Podcasts;
    case Command::exportAllAudiobooks:
        return MediaCategory::Audiobooks;
    case Command::exportAllRingtones:
        return MediaCategory::Ringtones;
    case Command::exportAllBooks:
        return MediaCategory::Books;
    default:
        return std::nullopt;
    }
}
} // namespace

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
    const std::optional<SourceList::Kind> kind = _window.sources().selectedKind();
    if (!currentDevice() || !kind)
        return;
    if (SourceListModel::showsPhotos(*kind))
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
    case Command::exportAllVoiceMemos:
        exportAllVoiceMemos();
        return true;
    case Command::exportAllPhotos:
        exportAllPhotos();
        return true;
    case Command::exportAllCameraRoll:
        exportAllCameraRoll();
        return true;
    default:
        return exportAllTracks(command);
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

// To ask a device for a reader may ask the device itself, which waits for a phone. So each
// command asks for its own and no other, and commands that are none of these for none.

bool ExportCommands::exportAllTracks(Command command)
{
    const auto category = categoryOf(command);
    const bool isMedia = command == Command::exportAllMedia;
    if (!category && !isMedia && command != Command::exportAllPlaylists)
        return false;
    const std::shared_ptr<Device> device = currentDevice();
    TrackDb* library = device ? device->trackDb() : nullptr;
    if (!library)
        return true;
    if (category)
        _jobs.exportTracks(device, library->category(*category).tracks(CategoryIndex::AllKey));
    else if (isMedia)
        _jobs.exportTracks(device, library->tracks());
    else
        _jobs.exportPlaylists(device, library->playlists());
    return true;
}

void ExportCommands::exportAllVoiceMemos()
{
    const std::shared_ptr<Device> device = currentDevice();
    if (VoiceMemoDb* recordings = device ? device->voiceMemoDb() : nullptr)
        _jobs.exportTracks(device, recordings->memos());
}

void ExportCommands::exportAllPhotos()
{
    const std::shared_ptr<Device> device = currentDevice();
    if (PhotoDb* library = device ? device->photoDb() : nullptr)
        _jobs.exportPhotos(device, library->photos());
}

void ExportCommands::exportAllCameraRoll()
{
    const std::shared_ptr<Device> device = currentDevice();
    if (CameraRollDb* roll = device ? device->cameraRollDb() : nullptr)
        _jobs.exportPhotos(device, roll->photos());
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
