// Source list, browser, search and check marks, in the window.

#include "support/WindowFixture.h"

#include <QAccessible>
#include <QAction>
#include <QSplitter>

#include <algorithm>

namespace
{
const QString ClearAction = "_q_qlineeditclearaction"; ///< as the toolkit names it

class LibraryViewTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        TestTrack& love = add("Love Song", "1");
        love.artist = "Anna";
        love.genre = "Pop";
        TestTrack& road = add("Road", "2");
        road.artist = "Love";
        road.album = "Second";
        road.genre = "Rock";
        TestTrack& blue = add("Blue", "3");
        blue.artist = "Anna";
        blue.album = "Third";
        blue.genre = "Jazz";
        TestTrack& bell = add("Bell", "4");
        bell.mediaKind = 16384; // a ringtone
        library.playlists.push_back({"Evening", {3, 1}});
        writePlayer("Mira");
        player = plugIn("Mira");
        open();
        ASSERT_TRUE(waitUntil([this] { return titles().size() == 3; }));
    }
    QString firstRow(QTableView* view) { return view->model()->index(0, 0).data().toString(); }
    void clickRow(QTableView* view, int row)
    {
        Hands::clickCell(view, view->model()->index(row, 0));
    }
};
} // namespace

TEST_F(LibraryViewTest, ShowsACategoryAtOnceWithItsBrowser)
{
    EXPECT_EQ(firstRow(window().browser().genreView()), "All (3 Genre)");
    EXPECT_EQ(firstRow(window().browser().artistView()), "All (2 Artist)");
    EXPECT_EQ(firstRow(window().browser().albumView()), "All (3 Album)");
    EXPECT_TRUE(window().browser().isVisible());
    EXPECT_EQ(titles(), QStringList({"Love Song", "Road", "Blue"}));
}

TEST_F(LibraryViewTest, NarrowsByGenreArtistAndAlbum)
{
    clickRow(window().browser().genreView(), 3); // Rock
    EXPECT_TRUE(waitUntil([this] { return titles() == QStringList("Road"); }));
    EXPECT_EQ(firstRow(window().browser().artistView()), "All (1 Artist)");
    clickRow(window().browser().genreView(), 0);
    clickRow(window().browser().artistView(), 1); // Anna
    EXPECT_TRUE(waitUntil([this] { return titles() == QStringList({"Love Song", "Blue"}); }));
    clickRow(window().browser().albumView(), 2); // Third
    EXPECT_TRUE(waitUntil([this] { return titles() == QStringList("Blue"); }));
}

TEST_F(LibraryViewTest, WithoutAnAlbumRowTheWholeArtistShows)
{
    clickRow(window().browser().artistView(), 1);
    clickRow(window().browser().albumView(), 2);
    ASSERT_TRUE(waitUntil([this] { return titles() == QStringList("Blue"); }));
    window().browser().albumView()->clearSelection();
    EXPECT_EQ(titles(), QStringList({"Love Song", "Blue"}));
}

TEST_F(LibraryViewTest, SearchesTitlesOnly)
{
    Hands::key("ctrl+f");
    Hands::type("LOVE");
    EXPECT_TRUE(waitUntil([this] { return titles() == QStringList("Love Song"); }));
    window().searchField().setText("Anna");
    EXPECT_TRUE(titles().isEmpty());
}

TEST_F(LibraryViewTest, ASearchForSpacesShowsTheVerySameList)
{
    window().searchField().setText("   ");
    const TrackBrowser& browser = controller->trackBrowser();
    EXPECT_EQ(browser.filteredTracks().get(), browser.currentTracks().get());
    EXPECT_EQ(titles().size(), 3);
}

TEST_F(LibraryViewTest, AMarkMadeDuringASearchStays)
{
    window().searchField().setText("road");
    ASSERT_EQ(titles(), QStringList("Road"));
    Hands::clickCell(table(), table()->model()->index(0, TrackTableModel::Check));
    EXPECT_TRUE(waitUntil([this] { return window().tracks().hasCheckedTrack(); }));
    window().searchField().clear();
    ASSERT_EQ(window().tracks().checkedTracks().size(), 1U);
    EXPECT_EQ(window().tracks().checkedTracks()[0]->title, "Road");
}

TEST_F(LibraryViewTest, CheckAllLeavesTracksOutsideTheSearchAlone)
{
    window().searchField().setText("o");
    ASSERT_EQ(titles(), QStringList({"Love Song", "Road"}));
    controller->perform(Command::checkAll);
    window().searchField().clear();
    EXPECT_EQ(window().tracks().checkedTracks().size(), 2U);
    EXPECT_FALSE(window().tracks().tracks()[2]->checked);
}

TEST_F(LibraryViewTest, DoubleClickChecksTheSelectedRows)
{
    clickRow(table(), 0);
    window().tracks().tableView()->selectAll();
    controller->perform(Command::uncheckAll);
    Hands::clickCell(table(), table()->model()->index(1, TrackTableModel::Title), Hands::Left, 2);
    EXPECT_TRUE(waitUntil([this] { return window().tracks().tracks()[1]->checked; }));
    EXPECT_FALSE(window().tracks().tracks()[0]->checked);
}

TEST_F(LibraryViewTest, SpaceChecksAndUnchecksTheSelectedRows)
{
    clickRow(table(), 0);
    Hands::key("ctrl+a");
    Hands::key("space");
    EXPECT_TRUE(waitUntil([this] { return window().tracks().checkedTracks().size() == 3; }));
    Hands::key("space");
    EXPECT_TRUE(waitUntil([this] { return window().tracks().checkedTracks().empty(); }));
}

TEST_F(LibraryViewTest, AnotherSourceClearsTheSearch)
{
    window().searchField().setText("road");
    choose("Evening");
    EXPECT_EQ(window().searchField().text(), "");
    EXPECT_EQ(titles(), QStringList({"Blue", "Love Song"}));
}

TEST_F(LibraryViewTest, PlaylistsThemselvesShowEveryTrackWithoutTheBrowser)
{
    choose("Playlists");
    EXPECT_EQ(titles(), QStringList({"Love Song", "Road", "Blue", "Bell"}));
    EXPECT_FALSE(window().browser().isVisible());
    EXPECT_FALSE(window().sources().canShowBrowser());
}

TEST_F(LibraryViewTest, RingtonesCollapseTheBrowserEvenWhenItIsOn)
{
    EXPECT_FALSE(Config::instance().hideBrowser());
    choose("Ringtones");
    EXPECT_EQ(titles(), QStringList("Bell"));
    EXPECT_FALSE(window().browser().isVisible());
    choose("Music");
    EXPECT_TRUE(window().browser().isVisible());
}

TEST_F(LibraryViewTest, AnEmptyCategoryShowsItsRow)
{
    EXPECT_TRUE(source("Movies (0)").isValid());
    choose("Movies");
    EXPECT_TRUE(titles().isEmpty());
    EXPECT_EQ(firstRow(window().browser().genreView()), "All (0 Genre)");
}

TEST_F(LibraryViewTest, TheBrowserIsSwitchedAndRemembered)
{
    Hands::key("ctrl+b");
    EXPECT_TRUE(waitUntil([this] { return !window().browser().isVisible(); }));
    EXPECT_TRUE(Config().hideBrowser());
    controller->menu().validate();
    EXPECT_EQ(controller->menu().action(Command::switchBrowser)->text(), "Show &Browser");
    Hands::key("ctrl+b");
    EXPECT_TRUE(waitUntil([this] { return window().browser().isVisible(); }));
    EXPECT_FALSE(Config().hideBrowser());
}

TEST_F(LibraryViewTest, TheColumnsOfTheBrowserShareItsWidth)
{
    for (const int width : {900, 1100, 1237}) {
        window().resize(width, 700);
        ASSERT_TRUE(waitUntil([&] { return window().width() == width; }));
        const int column = (window().browser().width() - 2) / 3;
        int left = 0;
        for (const char* name : {"_svGenre", "_svArtist", "_svAlbum"}) {
            const auto* view = part<QWidget>(name);
            EXPECT_EQ(view->geometry(), QRect(left, 0, column, window().browser().height()));
            left += column + 1;
        }
    }
}

TEST_F(LibraryViewTest, TabGoesFromTheListThroughTheBrowserToTheTracks)
{
    window().sources().outlineView()->setFocus();
    for (QWidget* next : {static_cast<QWidget*>(window().browser().genreView()),
                          static_cast<QWidget*>(window().browser().artistView()),
                          static_cast<QWidget*>(window().browser().albumView()),
                          static_cast<QWidget*>(window().tracks().tableView())}) {
        Hands::key("Tab");
        EXPECT_TRUE(waitUntil([&] { return QApplication::focusWidget() == next; }))
            << next->objectName().toStdString();
    }
    choose("Playlists");
    Hands::key("Tab");
    EXPECT_TRUE(
        waitUntil([this] { return QApplication::focusWidget() == window().tracks().tableView(); }));
}

TEST_F(LibraryViewTest, PlayAsksForATrackWhenNoneIsSelected)
{
    table()->clearSelection();
    Hands::click(part<QPushButton>("_btnPlay"));
    EXPECT_EQ(closeAlert("_alert"), "Please select a track to play");
}

TEST_F(LibraryViewTest, EveryControlHasANameForAScreenReader)
{
    for (const char* name : {"_cmbDevices", "_sf", "_outlineView", "_tvGenre", "_tvArtist",
                             "_tvAlbum", "_tableView", "_cv", "_btnExport", "_btnPlay", "_li"})
        EXPECT_FALSE(part<QWidget>(name)->accessibleName().isEmpty()) << name;
}

TEST_F(LibraryViewTest, AScreenReaderReadsTheStatusLineItself)
{
    window().status().setInfo("Exporting Road");
    QAccessibleInterface* line = QAccessible::queryAccessibleInterface(part<QWidget>("_tfInfo"));
    EXPECT_EQ(line->text(QAccessible::Name), "Exporting Road");
}

TEST_F(LibraryViewTest, AScreenReaderReadsWhatIsCheckedAndWhetherItIs)
{
    QAccessibleInterface* rows = QAccessible::queryAccessibleInterface(table());
    ASSERT_TRUE(rows && rows->tableInterface());
    const auto box = [&] { return rows->tableInterface()->cellAt(0, TrackTableModel::Check); };
    EXPECT_TRUE(box()->text(QAccessible::Name).contains("Love Song"));
    EXPECT_TRUE(box()->state().checkable);
    EXPECT_FALSE(box()->state().checked);
    controller->perform(Command::checkAll);
    EXPECT_TRUE(box()->state().checked);
}

TEST_F(LibraryViewTest, AChoiceCannotBeTakenAway)
{
    QTableView* genres = window().browser().genreView();
    auto* sources = window().sources().outlineView();
    Hands::hold("ctrl");
    clickRow(genres, 0);
    Hands::clickCell(sources, source("Music"));
    EXPECT_TRUE(genres->selectionModel()->isRowSelected(0));
    EXPECT_TRUE(sources->selectionModel()->isSelected(source("Music")));
    clickRow(genres, 3);
    Hands::letGo("ctrl");
    EXPECT_TRUE(waitUntil([this] { return titles() == QStringList("Road"); }))
        << "another is a choice as ever";
    Hands::key("ctrl+space");
    EXPECT_TRUE(genres->selectionModel()->isRowSelected(3));
}

TEST_F(LibraryViewTest, EscapeInTheSearchFieldClearsTheSearch)
{
    Hands::key("ctrl+f");
    Hands::type("road");
    ASSERT_TRUE(waitUntil([this] { return titles() == QStringList("Road"); }));
    Hands::key("Escape");
    EXPECT_TRUE(waitUntil([this] { return titles().size() == 3; }));
    EXPECT_EQ(window().searchField().text(), "");
}

TEST_F(LibraryViewTest, ACrossStandsInTheSearchFieldOnlyBesideAText)
{
    const auto hasCross = [this] {
        // It fades in and out.
        const auto buttons = window().searchField().findChildren<QToolButton*>();
        return std::any_of(buttons.begin(), buttons.end(), [](const QToolButton* button) {
            const bool isCross =
                button->defaultAction() && button->defaultAction()->objectName() == ClearAction;
            return isCross && button->isVisible() && button->property("opacity").toReal() > 0;
        });
    };
    window().searchField().setText("road");
    ASSERT_TRUE(waitUntil([&] { return hasCross(); }));
    choose("Evening");
    EXPECT_TRUE(waitUntil([&] { return !hasCross(); }));
}

TEST_F(LibraryViewTest, WithoutADeviceThereIsNothingToSearch)
{
    EXPECT_TRUE(window().searchField().isEnabled());
    player.reset();
    ASSERT_TRUE(waitUntil([this] { return devices().isEmpty(); }));
    EXPECT_FALSE(window().searchField().isEnabled());
    controller.reset();
    open();
    EXPECT_FALSE(window().searchField().isEnabled()) << "from the start on";
}

TEST_F(LibraryViewTest, TheDividerBelowTheBrowserIsRememberedWhileTheBrowserIsHidden)
{
    auto* divider = part<QSplitter>("_svRight");
    const auto height = [this] { return window().browser().height(); };
    const auto start = [&] {
        window().close();
        controller.reset();
        open();
        ASSERT_TRUE(waitUntil([this] { return titles().size() == 3; }));
    };
    divider->setSizes({250, 250});
    const int set = height();
    choose("Evening"); // has no browser
    start();
    EXPECT_EQ(height(), set) << "hidden by the list that was shown";
    controller->perform(Command::switchBrowser);
    start();
    EXPECT_FALSE(window().browser().isVisible());
    controller->perform(Command::switchBrowser);
    EXPECT_EQ(height(), set) << "hidden by the command";
    choose("Evening");
    choose("Music");
    EXPECT_EQ(height(), set) << "hidden for a moment";
}

TEST_F(LibraryViewTest, MenusAreValidatedWhenTheyOpen)
{
    controller->perform(Command::checkAll);
    controller->menu().validate();
    EXPECT_TRUE(controller->menu().action(Command::exportCheckedTracks)->isEnabled());
    EXPECT_FALSE(controller->menu().action(Command::exportAllCameraRoll)->isEnabled())
        << "a player has no camera roll";
    EXPECT_FALSE(controller->menu().action(Command::exportSelectedPlaylist)->isEnabled());
    choose("Evening");
    controller->menu().validate();
    EXPECT_TRUE(controller->menu().action(Command::exportSelectedPlaylist)->isEnabled());
    player.reset();
    ASSERT_TRUE(waitUntil([this] { return devices().isEmpty(); }));
    controller->menu().validate();
    for (const Command command : {Command::exportAllMedia, Command::exportAllPhotos,
                                  Command::exportSelectedPlaylist, Command::exportCheckedTracks})
        EXPECT_FALSE(controller->menu().action(command)->isEnabled());
}

TEST_F(LibraryViewTest, ExportsTheSelectedPlaylistIntoItsFolder)
{
    choose("Evening");
    controller->perform(Command::exportSelectedPlaylist);
    confirmExportMode();
    closeAlert();
    EXPECT_EQ(Files::read(out("Playlists/Evening/Blue.mp3")), "3");
    EXPECT_EQ(Files::read(out("Playlists/Evening/Love Song.mp3")), "1");
}

TEST_F(LibraryViewTest, ShowsAFolderByItsTagFromZero)
{
    const QString bin = path("bin");
    Files::write(bin + "/xdg-open", "#!/bin/sh\necho \"$1\" >> " + path("opened").toUtf8() + "\n");
    QFile::setPermissions(bin + "/xdg-open",
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", bin.toUtf8() + ":" + qgetenv("PATH"));
    controller->openBackupFolder(0);
    EXPECT_TRUE(waitUntil([this] {
        return QFile::exists(path("opened")) &&
               Files::read(path("opened")).trimmed().endsWith(out("Music").toUtf8());
    }));
    QFile::remove(path("opened"));
    controller->openBackupFolder(11);
    controller->openBackupFolder(-1);
    EXPECT_FALSE(QFile::exists(path("opened")));
}
