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
#include "Window/StatusBar.h"
#include "Window/TrackTable.h"

#include <algorithm>
#include <map>
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

void ExportCommands::exportOrStop(Press press)
{
    if (press == Press::Key && _jobs.hasJustBegun())
        return;
    if (_jobs.isExport()) {
        _jobs.requestStop();
        return;
    }
    const std::optional<Section> section = _window.sources().selectedSection();
    if (!currentDevice() || !section)
        return;
    switch (Sections::facts(*section).view) {
    case SectionFacts::View::Photos:
        exportSelectedPhotos();
        break;
    case SectionFacts::View::Browser:
    case SectionFacts::View::Tracks:
        exportCheckedTracks();
        break;
    }
}

bool ExportCommands::perform(Command command)
{
    if (const std::optional<Section> section = sectionOf(command)) {
        exportAll(*section);
        return true;
    }
    using Export = void (ExportCommands::*)();
    static const std::map<Command, Export> exports = {
        {Command::exportCheckedTracks, &ExportCommands::exportCheckedTracks},
        {Command::exportSelectedPhotos, &ExportCommands::exportSelectedPhotos},
        {Command::exportSelectedPlaylist, &ExportCommands::exportSelectedPlaylist},
        {Command::exportSelectedPhotoAlbum, &ExportCommands::exportSelectedPhotoAlbum},
        {Command::exportEverything, &ExportCommands::exportEverything},
        {Command::exportAllMedia, &ExportCommands::exportMedia}};
    const auto found = exports.find(command);
    if (found == exports.end())
        return false;
    (this->*found->second)();
    return true;
}

void ExportCommands::exportEverything()
{
    const std::shared_ptr<Device> device = currentDevice();
    if (!device)
        return;
    std::vector<SectionItems> parts = SectionItems::everything(*device);
    const bool isEmpty = std::all_of(parts.begin(), parts.end(),
                                     [](const SectionItems& part) { return part.count() == 0; });
    if (isEmpty)
        sayThatThereIsNothing();
    else
        _jobs.exportParts(device, std::move(parts));
}

void ExportCommands::exportMedia()
{
    if (currentDevice())
        exportTracks(SectionItems::media(*currentDevice()).tracks);
}

void ExportCommands::exportTracks(std::vector<Track*> tracks)
{
    if (tracks.empty())
        sayThatThereIsNothing();
    else
        _jobs.exportTracks(currentDevice(), std::move(tracks));
}

void ExportCommands::exportPhotos(std::vector<Photo*> photos)
{
    if (photos.empty())
        sayThatThereIsNothing();
    else
        _jobs.exportPhotos(currentDevice(), std::move(photos));
}

void ExportCommands::sayThatThereIsNothing()
{
    if (!_jobs.isBusy()) // its own line goes on
        _window.status().setInfo(tr("There is nothing to export."));
}

void ExportCommands::exportAll(Section section)
{
    const std::shared_ptr<Device> device = currentDevice();
    auto items = device ? SectionItems::of(*device, section) : std::nullopt;
    if (!device)
        return;
    if (!items)
        items.emplace();
    switch (section) {
    case Section::Playlists:
        if (items->playlists.empty())
            sayThatThereIsNothing();
        else
            _jobs.exportPlaylists(device, items->playlists);
        break;
    case Section::CameraRoll:
    case Section::Photos:
        exportPhotos(std::move(items->photos));
        break;
    case Section::Music:
    case Section::Movies:
    case Section::TVShows:
    case Section::Podcasts:
    case Section::Audiobooks:
    case Section::Ringtones:
    case Section::Books:
    case Section::VoiceMemos:
        exportTracks(std::move(items->tracks));
        break;
    }
}

void ExportCommands::exportCheckedTracks()
{
    if (!_window.tracks().hasTracks())
        return;
    std::vector<Track*> checked = _window.tracks().checkedTracks();
    if (checked.empty()) {
        alert(tr("Please check tracks to export"),
              tr("No tracks has been checked to export! Please check the tracks you want to export "
                 "first."));
        return;
    }
    _jobs.exportTracks(currentDevice(), std::move(checked));
}

void ExportCommands::exportSelectedPhotos()
{
    std::vector<Photo*> selected = _window.photos().selectedPhotos();
    if (selected.empty()) {
        alert(tr("Please select photos to export"),
              tr("No photos has been selected to export! Please select the photos you want to "
                 "export first."));
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
        exportPhotos(album->photos);
}

void ExportCommands::play()
{
    if (_jobs.isBusy() || !currentDevice())
        return;
    if (Track* track = _window.tracks().selectedTrack())
        _jobs.play(currentDevice(), track);
    else
        alert(tr("Please select a track to play"),
              tr("No tracks has been selected to play! Please select the track you want to play "
                 "first."));
}

void ExportCommands::alert(const QString& title, const QString& text)
{
    Alert::show(_window, QStringLiteral("_alert"), title, text);
}
