// The window as a person uses it: on mounted players, by mouse and keyboard.

#include "Window/Dialogs/RadioMatrix.h"
#include "Window/Models/ReportModel.h"
#include "support/WindowFixture.h"

#include <QSettings>

namespace
{
using MainWindowTest = WindowFixture;
constexpr int Check = TrackTableModel::Check;
constexpr int Title = TrackTableModel::Title;
} // namespace

TEST_F(MainWindowTest, SaysWhatToDoWithoutADevice)
{
    open();
    EXPECT_TRUE(part<QWidget>("_vEmpty")->isVisible());
    EXPECT_FALSE(part<QPushButton>("_btnExport")->isEnabled());
    EXPECT_FALSE(part<QPushButton>("_btnPlay")->isEnabled());
    EXPECT_EQ(info(), "");
    EXPECT_EQ(window().windowTitle(), "Zell iPod/iPhone Transfer");
}

TEST_F(MainWindowTest, ExportsCheckedTracksFromTheChooserToTheFolder)
{
    add("One", "first");
    add("Two", "second");
    add("Three", "third");
    openOnPlayer();
    EXPECT_EQ(devices(), QStringList("Mira"));
    EXPECT_EQ(info(), "iPod Connected! (Mira)");
    EXPECT_EQ(titles(), QStringList({"One", "Two", "Three"}));

    Hands::clickCell(table(), table()->model()->index(0, Check));
    Hands::clickCell(table(), table()->model()->index(2, Title));
    Hands::key("space");
    Hands::click(part<QPushButton>("_btnExport"));
    confirmExportMode();
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(info(), "Export Finished!");
    EXPECT_EQ(Files::read(out("Music/Artist/Album/One.mp3")), "first");
    EXPECT_EQ(Files::read(out("Music/Artist/Album/Three.mp3")), "third");
    EXPECT_FALSE(QFile::exists(out("Music/Artist/Album/Two.mp3")));
    EXPECT_FALSE(part<QToolButton>("_btnFailures")->isVisible());
}

TEST_F(MainWindowTest, ExportsInTheOrderOfTheTable)
{
    add("One", "first");
    add("Two", "second");
    add("Three", "third");
    openOnPlayer();
    QHeaderView* header = table()->horizontalHeader();
    Hands::clickAt(header->viewport(),
                   QPoint(header->sectionViewportPosition(Title) + 20, header->height() / 2));
    ASSERT_TRUE(waitUntil([this] { return titles() == QStringList({"One", "Three", "Two"}); }));
    startExport();
    closeAlert();
    ASSERT_EQ(controller->jobs().report()->items().size(), 3U);
    EXPECT_EQ(controller->jobs().report()->items()[1].title, "Three");
}

TEST_F(MainWindowTest, AsksForTracksWhenNoneIsChecked)
{
    add("One", "first");
    openOnPlayer();
    Hands::click(part<QPushButton>("_btnExport"));
    EXPECT_EQ(closeAlert("_alert"), "Please check tracks to export");
    EXPECT_FALSE(controller->jobs().isBusy());
}

TEST_F(MainWindowTest, AsksForPhotosWhenNoneIsSelected)
{
    add("One", "first");
    openOnPlayer();
    choose("Photo");
    EXPECT_TRUE(part<QWidget>("_scv")->isVisible());
    EXPECT_FALSE(part<QWidget>("_svRight")->isVisible());
    Hands::click(part<QPushButton>("_btnExport"));
    EXPECT_EQ(closeAlert("_alert"), "Please select photos to export");
}

TEST_F(MainWindowTest, CancellingTheExportModeStartsNothing)
{
    add("One", "first");
    openOnPlayer();
    controller->perform(Command::checkAll);
    Hands::click(part<QPushButton>("_btnExport"));
    ASSERT_TRUE(waitFor<QDialog>("_winExportMode"));
    ASSERT_TRUE(waitUntil([this] { return part<QDialog>("_winExportMode")->isActiveWindow(); }));
    Hands::key("Escape");
    ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
    EXPECT_EQ(info(), "iPod Connected! (Mira)");
    EXPECT_EQ(controller->jobs().report(), nullptr);
    EXPECT_FALSE(QFile::exists(out("Music/Artist/Album/One.mp3")));
}

TEST_F(MainWindowTest, TheButtonStopsARunningExport)
{
    openOnEndlessExport();
    auto* button = part<QPushButton>("_btnExport");
    EXPECT_EQ(button->text(), "Stop");
    EXPECT_TRUE(part<QProgressBar>("_li")->isVisible());
    EXPECT_FALSE(part<QPushButton>("_btnPlay")->isEnabled());
    Hands::click(button);
    EXPECT_EQ(closeAlert(), "Export canceled!");
    EXPECT_EQ(info(), "Export Canceled!");
    EXPECT_EQ(button->text(), "Export 20");
    EXPECT_FALSE(part<QProgressBar>("_li")->isVisible());
    EXPECT_TRUE(part<QPushButton>("_btnPlay")->isEnabled());
    const ExportReport& report = *controller->jobs().report();
    EXPECT_EQ(report.items().size(), std::size_t(EndlessCount));
    EXPECT_EQ(report.items().back().result, ExportItem::Result::Stopped);
    EXPECT_EQ(part<QToolButton>("_btnFailures")->text(), "20 of 20 items were not copied");
}

TEST_F(MainWindowTest, UnpluggingDuringAnExportEndsItWithAReport)
{
    openOnEndlessExport();
    player.reset();
    ASSERT_TRUE(waitUntil([this] { return devices().isEmpty(); }));
    EXPECT_TRUE(part<QWidget>("_vEmpty")->isVisible());
    const QMessageBox* alert = waitForAlert();
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->windowTitle(), "The device was disconnected");
    closeAlert();
    ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
    EXPECT_EQ(controller->jobs().report()->items().size(), std::size_t(EndlessCount));
    EXPECT_EQ(part<QToolButton>("_btnFailures")->text(),
              "The device was disconnected: 20 of 20 items were not copied");
    EXPECT_FALSE(part<QPushButton>("_btnExport")->isEnabled());
}

TEST_F(MainWindowTest, NamesWhatWasNotCopiedAndWhy)
{
    add("One", "first");
    add("Two", "second");
    writePlayer("Mira");
    QFile::remove(path("Mira/iPod_Control/Music/F00/2.mp3"));
    const auto mount = plugIn("Mira");
    open();
    ASSERT_TRUE(waitUntil([this] { return titles().size() == 2; }));
    startExport();
    const QMessageBox* alert = waitForAlert();
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->windowTitle(), "Finished, with 1 item(s) not copied");
    EXPECT_EQ(alert->text(), "Export finished!\nFinished, with 1 item(s) not copied");
    EXPECT_TRUE(alert->informativeText().contains("1 item(s) were copied."));
    EXPECT_TRUE(alert->informativeText().contains(out("Music/Artist/Album")));
    EXPECT_EQ(closeAlert(), "Export finished!");
    auto* line = part<QToolButton>("_btnFailures");
    EXPECT_EQ(line->text(), "1 of 2 items were not copied");

    Hands::click(line);
    auto* report = waitFor<QDialog>("_winReport");
    ASSERT_TRUE(report);
    const QAbstractItemModel* rows = part<QTableView>("_tvReport")->model();
    ASSERT_EQ(rows->rowCount(), 1);
    EXPECT_EQ(rows->index(0, ReportModel::Item).data().toString(), "Two");
    EXPECT_EQ(rows->index(0, ReportModel::Outcome).data().toString(), "Missing on the device");
    EXPECT_FALSE(rows->index(0, ReportModel::Why).data().toString().isEmpty());
    Hands::click(part<QWidget>("_btnAllItems"));
    EXPECT_TRUE(waitUntil([&] { return rows->rowCount() == 2; }));
    Hands::key("Escape");
    EXPECT_TRUE(waitUntil([this] { return !part<QDialog>("_winReport"); }));
}

TEST_F(MainWindowTest, TwoDevicesComeAndGo)
{
    add("One", "first");
    writePlayer("Mira");
    add("Two", "second");
    writePlayer("Noah");
    open();
    auto mira = plugIn("Mira");
    ASSERT_TRUE(waitUntil([this] { return devices() == QStringList("Mira"); }));
    EXPECT_EQ(titles(), QStringList("One"));
    auto noah = plugIn("Noah");
    ASSERT_TRUE(waitUntil([this] { return devices() == QStringList({"Mira", "Noah"}); }));
    EXPECT_EQ(titles(), QStringList("One")) << "the first stays the current one";

    chooseNextDevice();
    ASSERT_TRUE(waitUntil([this] { return titles() == QStringList("Two"); }));

    noah.reset();
    ASSERT_TRUE(waitUntil([this] { return devices() == QStringList("Mira"); }));
    EXPECT_EQ(titles(), QStringList("One")) << "the one that is left becomes current";
    EXPECT_EQ(info(), "iPod Disconnected! (Noah)");
    mira.reset();
    ASSERT_TRUE(waitUntil([this] { return devices().isEmpty(); }));
    EXPECT_EQ(controller->window().devices().currentDevice(), nullptr);
    EXPECT_TRUE(titles().isEmpty());
    EXPECT_EQ(info(), "iPod Disconnected! (Mira)");
    EXPECT_FALSE(part<QPushButton>("_btnExport")->isEnabled());
}

TEST_F(MainWindowTest, ADeviceThatIsNotCurrentLeavesWithoutAChange)
{
    add("One", "first");
    writePlayer("Mira");
    add("Two", "second");
    writePlayer("Noah");
    auto mira = plugIn("Mira");
    open();
    auto noah = plugIn("Noah");
    ASSERT_TRUE(waitUntil([this] { return devices().size() == 2; }));
    Hands::clickCell(table(), table()->model()->index(0, Check));
    noah.reset();
    ASSERT_TRUE(waitUntil([this] { return devices() == QStringList("Mira"); }));
    EXPECT_TRUE(window().tracks().hasCheckedTrack());
    EXPECT_EQ(table()->model()->rowCount(), 1);
}

TEST_F(MainWindowTest, SavesPreferencesForTheNextStart)
{
    open();
    Hands::key("ctrl+comma");
    ASSERT_TRUE(waitFor<QDialog>("_winPref"));
    ASSERT_TRUE(waitUntil([this] { return part<QDialog>("_winPref")->isActiveWindow(); }));
    auto* music = part<QLineEdit>("_tfMusic");
    EXPECT_EQ(music->text(), out("Music"));
    Hands::click(music);
    Hands::key("ctrl+a");
    Hands::type(out("Songs"));
    Hands::key("alt+s"); // the rule "skip"
    ASSERT_TRUE(
        waitUntil([this] { return part<RadioMatrix>("_mCopyRule")->selectedRow() == SkipRule; }));
    Hands::key("Return");
    ASSERT_TRUE(waitUntil([this] { return !part<QDialog>("_winPref"); }));

    const Config next; // as the next start reads it
    EXPECT_EQ(next.folderPath(Section::Music), out("Songs"));
    EXPECT_EQ(next.copyRule(), SkipRule);
}

TEST_F(MainWindowTest, RemembersHowTheWindowLay)
{
    open();
    window().resize(930, 640);
    ASSERT_TRUE(waitUntil([this] { return window().size() == QSize(930, 640); }));
    window().close();
    controller.reset();
    open();
    EXPECT_EQ(window().size(), QSize(930, 640));
}

TEST_F(MainWindowTest, QuittingDuringAnExportAsksAndEndsCleanly)
{
    openOnEndlessExport();
    Hands::key("ctrl+q");
    ASSERT_TRUE(waitFor<QDialog>("_alertQuit"));
    ASSERT_TRUE(waitUntil([this] { return part<QDialog>("_alertQuit")->isActiveWindow(); }));
    for (const char* key : {"Escape", "Return"}) { // either goes on
        Hands::key(key);
        ASSERT_TRUE(waitUntil([this] { return !part<QDialog>("_alertQuit"); }));
        EXPECT_TRUE(window().isVisible());
        EXPECT_TRUE(controller->jobs().isExport());
        waitForKeyboard();
        Hands::key("ctrl+q");
        ASSERT_TRUE(waitForAlert("_alertQuit"));
    }
    Hands::key("Escape");
    ASSERT_TRUE(waitUntil([this] { return !part<QDialog>("_alertQuit"); }));
    stopAndQuit();
    EXPECT_TRUE(waitUntil([this] { return !window().isVisible(); }));
    EXPECT_FALSE(controller->jobs().isBusy());
}

TEST_F(MainWindowTest, SecondExportFromTheMenuIsRefusedInWords)
{
    openOnEndlessExport();
    QMetaObject::invokeMethod(
        controller.get(), [this] { controller->perform(Command::exportAllMusic); },
        Qt::QueuedConnection);
    closeAlert("_alertBusy");
    Hands::key("ctrl+period");
    closeAlert();
    EXPECT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
}
