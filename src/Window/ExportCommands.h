#pragma once

#include "Window/Commands.h"

#include <QCoreApplication>
#include <QString>

#include <memory>
#include <vector>

class Device;
class JobController;
class MainWindow;

/// The commands that start exports: each gathers what the window shows or the device holds, and
/// hands it to a job.
class ExportCommands
{
    Q_DECLARE_TR_FUNCTIONS(ExportCommands)

public:
    /// Both outlive the commands.
    ExportCommands(MainWindow& window, JobController& jobs);

    enum class Press {
        Key,  ///< or a menu
        Mouse ///< on the button
    };
    /// The Export button: stops a running job; else exports the selected photos where photos
    /// show, and the checked tracks everywhere else. A key that is pressed again in the moment in
    /// which the export begins does not stop it.
    void exportOrStop(Press press);
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
    void exportEverything();
    void exportMedia();
    void exportTracks(std::vector<Track*> tracks);
    void exportPhotos(std::vector<Photo*> photos);
    void sayThatThereIsNothing();
    void alert(const QString& title, const QString& text);

    MainWindow& _window;
    JobController& _jobs;
};
