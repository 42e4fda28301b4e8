#include "Window/MainWindowController.h"

#include "Base/Program.h"
#include "Base/Utility.h"
#include "Device/Album.h"
#include "Device/CameraRollDb.h"
#include "Device/Device.h"
#include "Device/PhotoDb.h"
#include "Device/Playlist.h"
#include "Device/SectionItems.h"
#include "Device/TemporaryCopy.h"
#include "Device/TrackDb.h"
#include "Export/Config.h"
#include "Platform/MediaPlayer.h"
#include "Platform/Workspace.h"
#include "Window/BrowserPane.h"
#include "Window/DeviceBox.h"
#include "Window/Dialogs/AboutWindow.h"
#include "Window/Dialogs/Alert.h"
#include "Window/Dialogs/PreferencesWindow.h"
#include "Window/Dialogs/ReportWindow.h"
#include "Window/ExportCommands.h"
#include "Window/Help/HelpWindow.h"
#include "Window/JobController.h"
#include "Window/MainMenu.h"
#include "Window/PhotoGrid.h"
#include "Window/ProblemLine.h"
#include "Window/SourceList.h"
#include "Window/StatusBar.h"
#include "Window/TrackTable.h"
#include "Window/Update/NewVersionAlert.h"
#include "Window/Update/VersionCheck.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace
{
MainWindowController* theController = nullptr;

/// Shows that the program is at work while it reads a device.
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

// With its name: there may be several, and the line stays until something else is to be said.
QString connectedText(const QString& name)
{
    return QStringLiteral("iPod Connected! (%1)").arg(name);
}

QString disconnectedText(const QString& name)
{
    return QStringLiteral("iPod Disconnected! (%1)").arg(name);
}
} // namespace

MainWindowController* MainWindowController::instance()
{
    return theController;
}

QMenu* MainWindowController::photoMenu()
{
    return theController ? theController->_menu->photoMenu() : nullptr;
}

MainWindowController::MainWindowController(UpdateAddresses addresses)
    : _updateAddresses(std::move(addresses))
{
    setUp();
}

MainWindowController::~MainWindowController()
{
    _versionCheck.reset();
    Device::uninit();
    delete _jobs; // a job must end before the delegate that its copies ask goes
    Device::setDelegate(nullptr);
    _window.reset();
    theController = nullptr;
}

void MainWindowController::setUp()
{
    theController = this;
    Utility::clearLog();
    MediaPlayer::removeOldCopies();
    TemporaryCopy::removeLeftovers();
    _window = std::make_unique<MainWindow>(_trackBrowser);
    _jobs = new JobController(*_window, _notifier);
    _menu = new MainMenu(*_window, [this] { return menuState(); });
    _exports = std::make_unique<ExportCommands>(*_window, *_jobs);
    wire();
    _window->restoreLayout();
    refreshUI();
    showBrowser();
}

void MainWindowController::start()
{
    _window->show();
    // Reading devices takes a moment; the window is there before it.
    QMetaObject::invokeMethod(
        this, [this] { startDevices(); }, Qt::QueuedConnection);
}

void MainWindowController::startDevices()
{
    const WaitCursor wait;
    Device::setDelegate(this); // before the families start, so that no arrival is missed
    std::vector<std::shared_ptr<Device>> devices;
    for (const auto& [key, device] : Device::init())
        devices.push_back(device);
    _window->devices().setDevices(devices);
    QStringList names;
    for (const auto& device : devices)
        names.append(_window->devices().nameOf(*device));
    if (!names.isEmpty())
        _window->status().setInfo(connectedText(names.join(QStringLiteral(", "))));
    refreshUI();
    showBrowser();
    checkVersion();
}

void MainWindowController::checkVersion()
{
    if (!Config::instance().checkVersion())
        return;
    _versionCheck =
        std::make_unique<VersionCheck>(_updateAddresses, [this](const QString& version) {
            NewVersionAlert::show(*_window, version, _updateAddresses.downloadPage);
        });
}

void MainWindowController::wire()
{
    MainWindow& window = *_window;
    connect(&window.devices(), &DeviceBox::currentDeviceChanged, this,
            &MainWindowController::showCurrentDevice);
    connect(&window.sources(), &SourceList::sourceChanged, this,
            &MainWindowController::sourceChanged);
    connect(&window.browser(), &BrowserPane::tracksChanged, this,
            [this] { _window->tracks().setTracks(_trackBrowser.filteredTracks()); });
    connect(&window.searchField(), &QLineEdit::textChanged, this,
            &MainWindowController::searchChanged);
    connect(&window.status(), &StatusBar::exportClicked, this, [this](bool byKey) {
        using Press = ExportCommands::Press;
        _exports->exportOrStop(byKey ? Press::Key : Press::Mouse);
    });
    connect(&window.status(), &StatusBar::playClicked, this, [this] { _exports->play(); });
    connect(&window.status(), &StatusBar::failureLineClicked, this,
            &MainWindowController::showReport);
    connect(&window, &MainWindow::helpClicked, this, [this] { HelpWindow::showFor(*_window); });
    connect(_jobs, &JobController::isExportChanged, this, &MainWindowController::refreshUI);
    connect(_jobs, &JobController::isExportChanged, this, &MainWindowController::showProblems);
    connect(_jobs, &JobController::reportWanted, this, &MainWindowController::showReport);
    connect(_menu, &MainMenu::triggered, this, &MainWindowController::perform);
    connect(_menu, &MainMenu::openBackupFolder, this, &MainWindowController::openBackupFolder);
    connect(&window.tracks(), &TrackTable::stateChanged, _menu, &MainMenu::stateChanged);
    connect(&window.photos(), &PhotoGrid::stateChanged, _menu, &MainMenu::stateChanged);
    connect(&window.tracks(), &TrackTable::stateChanged, this,
            &MainWindowController::chosenChanged);
    connect(&window.photos(), &PhotoGrid::stateChanged, this, &MainWindowController::chosenChanged);
    window.sources().setMenu(_menu->sourceListMenu());
    window.tracks().setMenu(_menu->tableMenu());
    window.photos().setMenu(photoMenu());
    window.setMayClose([this] { return mayClose(); });
}

const std::shared_ptr<Device>& MainWindowController::currentDevice() const
{
    return _window->devices().currentDevice();
}

// Devices

void MainWindowController::deviceConnected(const std::shared_ptr<Device>& device)
{
    const WaitCursor wait;
    _window->devices().deviceConnected(device);
    _window->status().setInfo(connectedText(_window->devices().nameOf(*device)));
}

void MainWindowController::deviceDisconnected(const std::shared_ptr<Device>& device)
{
    _jobs->deviceDisconnected(*device);
    const QString name = _window->devices().nameOf(*device);
    if (_window->devices().deviceDisconnected(*device))
        _window->status().setInfo(disconnectedText(name));
}

void MainWindowController::deviceFailed(const QString& words, const QString& exactText)
{
    _failure = QStringLiteral("%1 (%2)").arg(words, exactText);
    _window->status().setInfo(_failure);
}

void MainWindowController::unusableDeviceLeft()
{
    StatusBar& status = _window->status();
    if (_failure.isEmpty() || status.info() != _failure)
        return;
    const std::shared_ptr<Device>& device = currentDevice();
    status.setInfo(device ? connectedText(_window->devices().nameOf(*device)) : QString());
}

bool MainWindowController::exported(double progress)
{
    return _jobs->exported(progress);
}

void MainWindowController::showCurrentDevice()
{
    const WaitCursor wait;
    // Nothing of the former device may stay in view: it may be gone.
    _window->photos().setPhotos({}, nullptr);
    _window->sources().setDevice(nullptr);
    sourceChanged();
    Device* device = currentDevice().get();
    _window->showLibrary(device != nullptr);
    if (device) {
        _window->sources().setDevice(device);
        _window->sources().selectFirstRow();
    }
    refreshUI();
}

void MainWindowController::refreshUI()
{
    const bool device = currentDevice() != nullptr;
    const bool exporting = _jobs->isExport();
    // While a job runs the button stops it, whether its device is still there or not.
    _window->status().setButtonsEnabled(device || exporting, device && !exporting);
    _menu->stateChanged();
}

// The source list, the browser and the search

void MainWindowController::sourceChanged()
{
    _trackBrowser.clear();
    // Its signal must come, or the field would keep its cross; there is nothing to search now.
    _window->searchField().clear();
    _window->browser().reload();
    _window->tracks().setTracks(nullptr);
    _menu->stateChanged();
    Device* device = currentDevice().get();
    const std::optional<Section> section = _window->sources().selectedSection();
    if (device && section)
        showSection(*device, *section);
    showProblems();
    chosenChanged();
}

void MainWindowController::showProblems()
{
    SourceList& sources = _window->sources();
    if (const Device* device = currentDevice().get())
        sources.setProblems(device->problems());
    const std::optional<Section> section = sources.selectedSection();
    _window->problems().setProblems(section ? sources.problems(*section) : std::vector<Problem>());
}

void MainWindowController::chosenChanged()
{
    if (std::exchange(_chosenDue, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            _chosenDue = false;
            showChosen();
        },
        Qt::QueuedConnection);
}

void MainWindowController::showChosen()
{
    const std::optional<Section> section = _window->sources().selectedSection();
    const bool arePhotos = section && Sections::facts(*section).view == SectionFacts::View::Photos;
    const int checkedHere = arePhotos ? 0 : int(_window->tracks().checkedTracks().size());
    const int chosen = arePhotos ? int(_window->photos().selectedPhotos().size()) : checkedHere;
    const int elsewhere = std::max(0, _window->sources().checkedCount() - checkedHere);
    _window->status().setChosen(chosen, section ? elsewhere : 0);
}

void MainWindowController::showSection(Device& device, Section section)
{
    using View = SectionFacts::View;
    switch (Sections::facts(section).view) {
    case View::Browser:
        if (TrackDb* library = device.trackDb())
            _trackBrowser.showCategory(library->category(section));
        _window->browser().reload();
        _window->showTracks();
        showBrowser();
        break;
    case View::Tracks:
        showTracks(tracksOf(device, section));
        break;
    case View::Photos:
        showPhotos(device, section);
        break;
    }
}

std::vector<Track*> MainWindowController::tracksOf(Device& device, Section section)
{
    if (const Playlist* playlist = _window->sources().selectedPlaylist())
        return playlist->tracks;
    // The row above the playlists shows the whole library.
    if (section == Section::Playlists)
        return SectionItems::media(device).tracks;
    const std::optional<SectionItems> items = SectionItems::of(device, section);
    return items ? items->tracks : std::vector<Track*>();
}

void MainWindowController::showPhotos(Device& device, Section section)
{
    const PreviewPass* previews = nullptr;
    std::vector<Photo*> photos;
    if (section == Section::CameraRoll) {
        CameraRollDb* roll = device.cameraRollDb();
        photos = roll->photos();
        previews = &roll->previews();
    } else if (PhotoDb* library = device.photoDb()) {
        const Album* album = _window->sources().selectedAlbum();
        photos = album ? album->photos : library->photos();
        previews = &library->previews();
    }
    _window->showPhotos();
    _window->photos().setPhotos(photos, previews);
}

void MainWindowController::showTracks(const std::vector<Track*>& tracks)
{
    _trackBrowser.showTracks(tracks);
    _window->tracks().setTracks(_trackBrowser.filteredTracks());
    _window->showTracks();
    showBrowser();
}

void MainWindowController::searchChanged()
{
    _trackBrowser.search(_window->searchField().text());
    _window->tracks().setTracks(_trackBrowser.filteredTracks());
}

void MainWindowController::showBrowser()
{
    _window->showBrowser(!Config::instance().hideBrowser() && _window->sources().canShowBrowser());
}

void MainWindowController::switchBrowser()
{
    _window->saveLayout();
    Config& config = Config::instance();
    config.setHideBrowser(!config.hideBrowser());
    Alert::showFailure(*_window, QStringLiteral("_alertSettings"), config.save());
    showBrowser();
    _menu->stateChanged();
}

// Commands

MenuState MainWindowController::menuState()
{
    MenuState state;
    Device* device = currentDevice().get();
    state.device = device != nullptr;
    // The list knows which readers the device has; to ask it again could take its time.
    state.cameraRoll = _window->sources().hasRow(Section::CameraRoll);
    state.voiceMemos = _window->sources().hasRow(Section::VoiceMemos);
    state.playlistSelected = _window->sources().selectedPlaylist() != nullptr;
    state.albumSelected = _window->sources().selectedAlbum() != nullptr;
    state.tracksShown = !_window->tracks().tracks().empty();
    state.trackChecked = _window->tracks().hasCheckedTrack();
    state.trackRowSelected = _window->tracks().hasSelectedRow();
    state.photosShown = !_window->photos().photos().empty();
    state.photoSelected = _window->photos().hasSelection();
    state.canShowBrowser = _window->sources().canShowBrowser();
    state.browserHidden = Config::instance().hideBrowser();
    state.exporting = _jobs->isExport();
    state.reportThere = _jobs->report() != nullptr;
    return state;
}

void MainWindowController::perform(Command command)
{
    if (!MenuValidation::isEnabled(command, menuState()) || _exports->perform(command))
        return;
    switch (command) {
    case Command::exportOrStop:
        _exports->exportOrStop(ExportCommands::Press::Key);
        break;
    case Command::stop:
        _jobs->requestStop();
        break;
    case Command::play:
        _exports->play();
        break;
    case Command::checkAll:
    case Command::uncheckAll:
        _window->tracks().checkAll(command == Command::checkAll);
        break;
    case Command::checkSelected:
    case Command::uncheckSelected:
        _window->tracks().checkSelected(command == Command::checkSelected);
        break;
    case Command::selectAll:
        _window->photos().selectAll();
        break;
    case Command::invertSelection:
        _window->photos().invertSelection();
        break;
    case Command::clearSelection:
        _window->photos().clearSelection();
        break;
    case Command::switchBrowser:
        switchBrowser();
        break;
    case Command::find:
        _window->searchField().setFocus(Qt::ShortcutFocusReason);
        _window->searchField().selectAll();
        break;
    case Command::showPref:
        (new PreferencesWindow(Config::instance(), _updateAddresses.areComplete(), _window.get()))
            ->showPref();
        break;
    case Command::showAbout:
        (new AboutWindow(_window.get()))->showAbout();
        break;
    case Command::hide:
        _window->showMinimized();
        break;
    case Command::quit:
        _window->close();
        break;
    case Command::help:
        HelpWindow::showFor(*_window);
        break;
    case Command::openLog:
        Workspace::revealInFileManager(Utility::logFolder());
        break;
    case Command::showReport:
        showReport();
        break;
    case Command::exportSelectedPlaylist:
    case Command::exportSelectedPhotoAlbum:
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
    case Command::exportAllVoiceMemos:
    case Command::exportAllCameraRoll:
    case Command::exportAllPhotos:
    case Command::exportCheckedTracks:
    case Command::exportSelectedPhotos:
        break; // done above
    }
}

void MainWindowController::openBackupFolder(int tag)
{
    if (tag >= 0 && tag < int(Sections::Count))
        Workspace::revealInFileManager(Config::instance().existingFolder(Section(tag)));
}

void MainWindowController::showReport()
{
    if (_jobs->lastExport())
        (new ReportWindow(_jobs->lastExport(), _window.get()))->show();
}

bool MainWindowController::mayClose()
{
    if (!_jobs->isBusy())
        return true;
    askToStopAndQuit();
    return false; // until the job has ended
}

void MainWindowController::askToStopAndQuit()
{
    auto* box = new QMessageBox(QMessageBox::Question, Program::briefName(),
                                tr("An export is running. Do you want to stop it and quit?"),
                                QMessageBox::NoButton, _window.get());
    box->setObjectName(QStringLiteral("_alertQuit"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    box->addButton(tr("&Stop and Quit"), QMessageBox::AcceptRole);
    // What costs nothing is what a thoughtless Return does.
    QPushButton* goOn = box->addButton(tr("&Go On"), QMessageBox::RejectRole);
    box->setDefaultButton(goOn);
    box->setEscapeButton(goOn);
    connect(box, &QMessageBox::accepted, this, [this] {
        if (!_jobs->isBusy()) { // it ended while the question stood there
            _window->close();
            return;
        }
        connect(_jobs, &JobController::idle, _window.get(), &QWidget::close);
        _jobs->stopForQuit();
    });
    box->show();
}
