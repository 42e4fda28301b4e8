#pragma once

#include "Window/Commands.h"

#include <QString>

#include <memory>

class Device;
class JobController;
class MainWindow;

/// The commands that start exports: each gathers what the window shows or the device holds, and
/// hands it to a job.
class ExportCommands
{
public:
    /// Both outlive the commands.
    ExportCommands(MainWindow& window, JobController& jobs);

    /// The Export button: stops a running job; else exports the selected photos where photos
    /// show, and the checked tracks everywhere else.
    void exportOrStop();
    /// Carries out any of the export commands; false for other commands.
    bool perform(Command command);
    /// The Play button: plays the first selected track.
    void play();

private:
    [[nodiscard]] const std::shared_ptr<Device>& currentDevice() const;
    void exportCheckedTracks();
    void exportSelectedPhotos();
    void exportSelectedPlaylist();
    void exportSelectedPhotoAlbum();
    /// Asks the device for the readers of this section and for no other: to ask for one may wait
    /// for a phone.
    void exportAll(Section section);
    void alert(const QString& title, const QString& text);

    MainWindow& _window;
    JobController& _jobs;
};
