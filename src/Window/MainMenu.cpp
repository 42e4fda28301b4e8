#include "Window/MainMenu.h"

#include "Base/Program.h"
#include "Export/Config.h"
#include "Window/Icons.h"
#include "Window/Mnemonics.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

MainMenu::MainMenu(QMainWindow& window, std::function<MenuState()> state)
    : QObject(&window)
    , _window(window)
    , _state(std::move(state))
{
    using C = Command;
    makeActions();
    setShortcuts();
    nameForTheDesktop();

    QMenu* file = makeMenu(tr("&File"), {{C::exportOrStop, C::stop, C::play}});
    file->addMenu(makeFolderMenu());
    fill(*file, {{C::showReport}, {C::showPref}, {C::hide, C::quit}});
    makeMenu(tr("&Edit"), {{C::checkAll, C::uncheckAll, C::checkSelected, C::uncheckSelected},
                           {C::selectAll, C::invertSelection, C::clearSelection},
                           {C::find}});
    makeMenu(tr("E&xport"),
             {{C::exportEverything},
              {C::exportCheckedTracks, C::exportSelectedPhotos, C::exportSelectedPlaylist,
               C::exportSelectedPhotoAlbum},
              {C::exportAllMedia, C::exportAllMusic, C::exportAllMovies, C::exportAllTVShows,
               C::exportAllPodcasts, C::exportAllAudiobooks, C::exportAllRingtones,
               C::exportAllBooks, C::exportAllPlaylists, C::exportAllVoiceMemos},
              {C::exportAllCameraRoll, C::exportAllPhotos}});
    makeMenu(tr("&View"), {{C::switchBrowser}});
    makeMenu(tr("&Help"), {{C::help, C::openLog}, {C::showAbout}});

    const auto makeContextMenu = [this](const QString& name, auto groups) {
        auto* menu = new QMenu(&_window);
        menu->setObjectName(name);
        connect(menu, &QMenu::aboutToShow, this, &MainMenu::validate);
        fill(*menu, groups);
        return menu;
    };
    using Groups = std::initializer_list<std::initializer_list<Command>>;
    _sourceListMenu =
        makeContextMenu(QStringLiteral("_sourceListMenu"),
                        Groups{{C::exportSelectedPlaylist, C::exportSelectedPhotoAlbum},
                               {C::exportCheckedTracks, C::exportSelectedPhotos},
                               {C::switchBrowser}});
    _tableMenu =
        makeContextMenu(QStringLiteral("_tableMenu"), Groups{{C::checkSelected, C::uncheckSelected},
                                                             {C::checkAll, C::uncheckAll},
                                                             {C::exportCheckedTracks, C::play}});
    _photoMenu = makeContextMenu(
        QStringLiteral("_cvMenu"),
        Groups{{C::selectAll, C::invertSelection, C::clearSelection}, {C::exportSelectedPhotos}});
    validate();
}

QAction* MainMenu::make(Command command, const QString& text, const QString& icon)
{
    auto* action = new QAction(text, this);
    if (!icon.isEmpty())
        action->setIcon(Icons::named(icon));
    connect(action, &QAction::triggered, this, [this, command] { Q_EMIT triggered(command); });
    _actions.insert(command, action);
    return action;
}

void MainMenu::makeActions()
{
    using C = Command;
    make(C::exportOrStop, tr("&Export"), QStringLiteral("start"));
    make(C::stop, tr("&Stop"), QStringLiteral("stop"));
    make(C::play, tr("&Play"), QStringLiteral("play"));
    make(C::showReport, tr("Show &Report of Last Export…"));
    make(C::showPref, tr("Pre&ferences…"), QStringLiteral("settings"))
        ->setMenuRole(QAction::PreferencesRole);
    make(C::find, tr("&Find"), QStringLiteral("search"));
    make(C::checkAll, tr("Check &All"));
    make(C::uncheckAll, tr("&Uncheck All"));
    make(C::checkSelected, tr("Check &Selected"));
    make(C::uncheckSelected, tr("U&ncheck Selected"));
    make(C::selectAll, tr("Select All P&hotos"));
    make(C::invertSelection, tr("&Invert Selection"));
    make(C::clearSelection, tr("C&lear Selection"));
    make(C::exportCheckedTracks, tr("Export Checked &Tracks…"));
    make(C::exportSelectedPhotos, tr("Export Selected Ph&otos"));
    make(C::exportSelectedPlaylist, tr("Export Selected &Playlist…"), QStringLiteral("playlist"));
    make(C::exportSelectedPhotoAlbum, tr("Export Selected Photo &Album"),
         QStringLiteral("photoalbum"));
    make(C::exportEverything, tr("E&xport Everything…"));
    make(C::exportAllMedia, tr("Export All Me&dia…"));
    make(C::exportAllMusic, tr("Export All &Music…"), QStringLiteral("music"));
    make(C::exportAllMovies, tr("Export All Mo&vies…"), QStringLiteral("movies"));
    make(C::exportAllTVShows, tr("Export All TV Sho&ws…"), QStringLiteral("tvshows"));
    make(C::exportAllPodcasts, tr("Export All Podca&sts…"), QStringLiteral("podcasts"));
    make(C::exportAllAudiobooks, tr("Export All A&udiobooks…"), QStringLiteral("audiobooks"));
    make(C::exportAllRingtones, tr("Export All &Ringtones…"), QStringLiteral("ringtones"));
    make(C::exportAllBooks, tr("Export All &Books…"), QStringLiteral("books"));
    make(C::exportAllPlaylists, tr("Export All P&laylists…"), QStringLiteral("playlists"));
    make(C::exportAllVoiceMemos, tr("Export All Voi&ce Memos…"), QStringLiteral("voicememos"));
    make(C::exportAllCameraRoll, tr("&Export Camera Roll"), QStringLiteral("cameraroll"));
    make(C::exportAllPhotos, tr("Export All P&hotos"), QStringLiteral("photos"));
    make(C::switchBrowser, tr("Hide &Browser"));
    make(C::openLog, tr("Open &Log Folder"), QStringLiteral("folder"));
}

void MainMenu::nameForTheDesktop()
{
    const QString name = Program::briefName();
    const auto makeNamed = [this](Command command, const QString& text, const char* outlet,
                                  const QString& icon = {}) {
        QAction* item = make(command, text, icon);
        item->setObjectName(QString::fromLatin1(outlet));
        return item;
    };
    makeNamed(Command::showAbout, tr("&About %1").arg(name), "_miAbout", QStringLiteral("about"))
        ->setMenuRole(QAction::AboutRole);
    makeNamed(Command::hide, tr("&Hide %1").arg(name), "_miHide");
    QAction* quit = makeNamed(Command::quit, tr("&Quit %1").arg(name), "_miQuit");
    quit->setMenuRole(QAction::QuitRole);
    quit->setShortcut(QKeySequence(tr("Ctrl+Q")));
    makeNamed(Command::help, tr("%1 &Help").arg(name), "_miHelp", QStringLiteral("help"))
        ->setShortcut(QKeySequence::HelpContents);
}

void MainMenu::setShortcuts()
{
    action(Command::exportOrStop)->setShortcut(QKeySequence(tr("Ctrl+E")));
    action(Command::exportOrStop)->setAutoRepeat(false);
    // Not Escape: people press it to leave a field or a menu, and an export is hours of work.
    action(Command::stop)->setShortcut(QKeySequence(tr("Ctrl+.")));
    action(Command::play)->setShortcut(QKeySequence(tr("Ctrl+P")));
    action(Command::find)->setShortcut(QKeySequence::Find);
    action(Command::showPref)->setShortcut(QKeySequence(tr("Ctrl+,")));
    action(Command::switchBrowser)->setShortcut(QKeySequence(tr("Ctrl+B")));
    action(Command::checkSelected)->setShortcut(QKeySequence(tr("Ctrl+D")));
    action(Command::uncheckSelected)->setShortcut(QKeySequence(tr("Ctrl+Shift+D")));
    action(Command::invertSelection)->setShortcut(QKeySequence(tr("Ctrl+I")));
}

QMenu* MainMenu::makeMenu(const QString& title,
                          std::initializer_list<std::initializer_list<Command>> groups)
{
    QMenu* menu = _window.menuBar()->addMenu(title);
    connect(menu, &QMenu::aboutToShow, this, &MainMenu::validate);
    fill(*menu, groups);
    return menu;
}

void MainMenu::fill(QMenu& menu, std::initializer_list<std::initializer_list<Command>> groups)
{
    for (const auto& group : groups) {
        if (!menu.isEmpty())
            menu.addSeparator();
        for (const Command command : group)
            menu.addAction(action(command));
    }
}

QMenu* MainMenu::makeFolderMenu()
{
    auto* menu = new QMenu(tr("&Open Export Folder"), &_window);
    menu->setIcon(Icons::named(QStringLiteral("folder")));
    for (int tag = 0; tag < int(Sections::Count); ++tag) {
        QAction* item = menu->addAction(Sections::folderName(Section(tag)));
        item->setData(tag);
        connect(item, &QAction::triggered, this, [this, tag] { Q_EMIT openBackupFolder(tag); });
    }
    Mnemonics::complete(*menu);
    return menu;
}

void MainMenu::stateChanged()
{
    if (_validationDue)
        return;
    _validationDue = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            _validationDue = false;
            validate();
        },
        Qt::QueuedConnection);
}

void MainMenu::validate()
{
    const MenuState state = _state();
    for (auto item = _actions.cbegin(); item != _actions.cend(); ++item)
        item.value()->setEnabled(MenuValidation::isEnabled(item.key(), state));
    action(Command::switchBrowser)->setText(MenuValidation::browserTitle(state));
    action(Command::exportOrStop)->setText(state.exporting ? tr("Stop &Export") : tr("&Export"));
}
