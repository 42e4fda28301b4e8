#pragma once

#include "Device/DeviceDelegate.h"
#include "Device/Section.h"
#include "Platform/Notifier.h"
#include "Window/Commands.h"
#include "Window/MainWindow.h"
#include "Window/TrackBrowser.h"
#include "Window/Update/UpdateAddresses.h"

#include <QObject>

class ExportCommands;
class JobController;
class MainMenu;
class PreviewPass;
class QMenu;
class VersionCheck;
struct MenuState;
struct Photo;

/// The controller of the one window: it starts the device families, follows the person's choices
/// and hands commands to whom they concern. Lives on the window's thread from start to end.
class MainWindowController final : public QObject, public DeviceDelegate
{
    Q_OBJECT
public:
    /// The controller; null before it is made.
    static MainWindowController* instance();
    /// The context menu of the photo grid.
    static QMenu* photoMenu();

    /// New versions are asked for, and found, at these addresses.
    explicit MainWindowController(UpdateAddresses addresses = UpdateAddresses::built());
    ~MainWindowController() override;

    /// Shows the window, and starts the device families once it is up. Call it once.
    void start();

    void deviceConnected(const std::shared_ptr<Device>& device) override;
    void deviceDisconnected(const std::shared_ptr<Device>& device) override;
    void deviceFailed(const QString& words, const QString& exactText) override;
    void unusableDeviceLeft() override;
    bool exported(double progress) override;

    [[nodiscard]] MainWindow& window() { return *_window; }
    [[nodiscard]] JobController& jobs() { return *_jobs; }
    [[nodiscard]] MainMenu& menu() { return *_menu; }
    [[nodiscard]] const TrackBrowser& trackBrowser() const { return _trackBrowser; }

    /// Carries out a command if it is possible now.
    void perform(Command command);
    /// Shows an export folder, by its place in the preferences counted from 0; other tags do
    /// nothing.
    void openBackupFolder(int tag);
    /// Asks for a new version, unless the person wants none of it; nothing waits for the answer.
    void checkVersion();

private:
    void setUp();
    void startDevices();
    void wire();

    void showCurrentDevice();
    void sourceChanged();
    void showTracks(const std::vector<Track*>& tracks);
    void showSection(Device& device, Section section);
    std::vector<Track*> tracksOf(Device& device, Section section);
    void showPhotos(Device& device, Section section);
    void searchChanged();
    void showBrowser();
    void switchBrowser();
    void refreshUI();
    /// Says on the button how many items it would export; many changes in a row cost one look.
    void chosenChanged();
    void showChosen();
    void showProblems();

    [[nodiscard]] const std::shared_ptr<Device>& currentDevice() const;
    [[nodiscard]] MenuState menuState();

    void showReport();
    bool mayClose();
    void askToStopAndQuit();

    TrackBrowser _trackBrowser;
    Notifier _notifier;
    std::unique_ptr<MainWindow> _window;
    JobController* _jobs = nullptr; ///< both belong to the window
    MainMenu* _menu = nullptr;
    std::unique_ptr<ExportCommands> _exports;
    UpdateAddresses _updateAddresses;
    std::unique_ptr<VersionCheck> _versionCheck;
    QString _failure;        ///< the status line about a device that cannot be used
    bool _chosenDue = false; ///< `showChosen` is on its way
};
