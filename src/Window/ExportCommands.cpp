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
    default:
        return exportAllTracks(command) || exportAllPhotos(command);
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

bool ExportCommands::exportAllTracks(Command command)
{
    const std::shared_ptr<Device> device = currentDevice();
    TrackDb* library = device ? device->trackDb() : nullptr;
    if (const auto category = categoryOf(command)) {
        if (library)
            _jobs.exportTracks(device, library->category(*category).tracks(CategoryIndex::AllKey));
        return true;
    }
    if (command == Command::exportAllMedia && library)
        _jobs.exportTracks(device, library->tracks());
    if (command == Command::exportAllPlaylists && library)
        _jobs.exportPlaylists(device, library->playlists());
    VoiceMemoDb* recordings = device ? device->voiceMemoDb() : nullptr;
    if (command == Command::exportAllVoiceMemos && recordings)
        _jobs.exportTracks(device, recordings->memos());
    return command == Command::exportAllMedia || command == Command::exportAllPlaylists ||
           command == Command::exportAllVoiceMemos;
}

bool ExportCommands::exportAllPhotos(Command command)
{
    const std::shared_ptr<Device> device = currentDevice();
    PhotoDb* library = device ? device->photoDb() : nullptr;
    if (command == Command::exportAllPhotos && library)
        _jobs.exportPhotos(device, library->photos());
    CameraRollDb* roll = device ? device->cameraRollDb() : nullptr;
    if (command == Command::exportAllCameraRoll && roll)
        _jobs.exportPhotos(device, roll->photos());
    return command == Command::exportAllPhotos || command == Command::exportAllCameraRoll;
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
