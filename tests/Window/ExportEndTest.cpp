// How an export begins and ends, and what the window says about it.

#include "Window/Dialogs/PreferencesWindow.h"
#include "Window/Models/ReportModel.h"
#include "support/WindowFixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QMouseEvent>
#include <QSettings>
#include <QTableView>
#include <QTest>

namespace
{
class ExportEndTest : public WindowFixture
{
protected:
    /// Removes the file of a track from the player.
    void lose(int number)
    {
        ASSERT_TRUE(QFile::remove(path(QString("Mira/iPod_Control/Music/F00/%1.mp3").arg(number))));
    }
    QStringList lines() { return waitForAlert()->informativeText().split('\n'); }
    QString button() { return part<QPushButton>("_btnExport")->text(); }
    QString elsewhere()
    {
        const auto* label = part<QLabel>("_tfElsewhere");
        return label->isVisible() ? label->text() : QString();
    }
};
} // namespace

TEST_F(ExportEndTest, AnExportThatWentWellSaysHowManyItemsAreWhere)
{
    add("One", "first");
    add("Two", "second");
    openOnPlayer();
    startExport();
    ASSERT_TRUE(waitForAlert());
    EXPECT_EQ(waitForAlert()->windowTitle(), "Export finished!");
    EXPECT_EQ(waitForAlert()->text(), "Export finished!");
    EXPECT_EQ(lines(), QStringList({"2 item(s) were copied.",
                                    QString("They are in %1.").arg(out("Music/Artist/Album"))}));
    closeAlert();
}

TEST_F(ExportEndTest, NothingCopiedIsNotCalledFinished)
{
    add("One", "first");
    add("Two", "second");
    openOnPlayer();
    lose(1);
    lose(2);
    startExport();
    ASSERT_TRUE(waitForAlert());
    EXPECT_EQ(waitForAlert()->windowTitle(), "Nothing could be copied");
    EXPECT_FALSE(part<QAbstractButton>("_btnOpenFolder")) << "there is nothing to look at";
    ASSERT_EQ(lines().size(), 2);
    EXPECT_EQ(lines()[0], "2 item(s) were not copied:");
    EXPECT_TRUE(lines()[1].contains("2: ")) << lines()[1].toStdString();
    closeAlert();
}

TEST_F(ExportEndTest, TheAlertLeadsToTheReport)
{
    add("One", "first");
    add("Two", "second");
    openOnPlayer();
    lose(1);
    startExport();
    ASSERT_TRUE(waitForAlert());
    Hands::click(part<QAbstractButton>("_btnShowReport"));
    ASSERT_TRUE(waitFor<QDialog>("_winReport"));
    EXPECT_EQ(part<QTableView>("_tvReport")->model()->rowCount(), 1);
    EXPECT_FALSE(part<QDialog>("_alertFinish"));
}

TEST_F(ExportEndTest, TheAlertLeadsToTheFiles)
{
    const QByteArray searchPath = qgetenv("PATH");
    const QString program = path("bin/xdg-open");
    Files::write(program, "#!/bin/sh\necho \"$@\" >>" + QFile::encodeName(path("opened")) + "\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(path("bin")) + ':' + searchPath);
    add("One", "first");
    openOnPlayer();
    startExport();
    ASSERT_TRUE(waitForAlert());
    Hands::click(part<QAbstractButton>("_btnOpenFolder"));
    EXPECT_TRUE(waitUntil([this] { return QFile::exists(path("opened")); }));
    EXPECT_TRUE(waitUntil([this] {
        return Files::read(path("opened")).trimmed() ==
               QFile::encodeName(out("Music/Artist/Album"));
    }));
    qputenv("PATH", searchPath);
}

TEST_F(ExportEndTest, AReportThatIsShownOutlivesTheNextExport)
{
    add("One", "first");
    add("Two", "second");
    openOnPlayer();
    lose(1);
    startExport();
    ASSERT_TRUE(waitForAlert());
    Hands::click(part<QAbstractButton>("_btnShowReport"));
    ASSERT_TRUE(waitFor<QDialog>("_winReport"));
    const QAbstractItemModel* rows = part<QTableView>("_tvReport")->model();
    ASSERT_EQ(rows->rowCount(), 1);

    // The window is modal, so a person cannot; another part of the program might.
    const auto device = window().devices().currentDevice();
    Config::instance().setCopyRule(SkipRule); // no question
    controller->jobs().exportTracks(device, device->trackDb()->tracks());
    ASSERT_TRUE(waitFor<QDialog>("_winExportMode"));
    part<QDialog>("_winExportMode")->accept();
    ASSERT_TRUE(waitFor<QDialog>("_alertFinish"));
    EXPECT_EQ(rows->index(0, ReportModel::Item).data().toString(), "One");
    EXPECT_EQ(controller->jobs().report()->items().size(), 2U);
    Config::instance().setCopyRule(AskRule);
    part<QDialog>("_alertFinish")->reject();
    part<QDialog>("_winReport")->reject();
    EXPECT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
}

TEST_F(ExportEndTest, TheButtonSaysHowManyItemsItExportsAndWhatIsCheckedElsewhere)
{
    add("One", "first");
    add("Two", "second");
    add("Film", "third").mediaKind = 2;
    writePlayer("Mira");
    player = plugIn("Mira");
    open();
    ASSERT_TRUE(waitUntil([this] { return titles().size() == 2; }));
    EXPECT_EQ(button(), "Export");
    EXPECT_EQ(elsewhere(), "");
    controller->perform(Command::checkAll);
    EXPECT_TRUE(waitUntil([this] { return button() == "Export 2"; }));
    choose("Movies");
    EXPECT_TRUE(waitUntil([this] { return elsewhere() == "2 more are checked elsewhere"; }));
    EXPECT_EQ(button(), "Export");
    controller->perform(Command::checkAll);
    EXPECT_TRUE(waitUntil([this] { return button() == "Export 1"; }));
    EXPECT_EQ(elsewhere(), "2 more are checked elsewhere");
    choose("Playlists");
    EXPECT_TRUE(waitUntil([this] { return button() == "Export 3"; }));
    EXPECT_EQ(elsewhere(), "");
}

TEST_F(ExportEndTest, ASecondPressOfTheKeyThatBeganAnExportDoesNotStopIt)
{
    openOnSlowPlayer();
    controller->perform(Command::checkAll);
    part<QPushButton>("_btnExport")->setFocus();
    waitForKeyboard();
    Hands::key("Return");
    auto* mode = waitFor<QDialog>("_winExportMode");
    ASSERT_TRUE(waitUntil([&] { return mode->isActiveWindow(); }));
    // Return answers the question; the one right behind it comes to the window.
    mode->accept();
    ASSERT_TRUE(waitUntil([this] { return controller->jobs().isExport(); }));
    QTest::keyClick(part<QPushButton>("_btnExport"), Qt::Key_Return);
    QTest::keyClick(part<QPushButton>("_btnExport"), Qt::Key_Space);
    controller->perform(Command::exportOrStop);
    // And the second press of a double click, whose first one began the export.
    auto* stop = part<QPushButton>("_btnExport");
    const auto send = [stop](QEvent::Type type, quint64 time) {
        const QPointF middle = stop->rect().center();
        QMouseEvent event(type, middle, stop->mapToGlobal(middle), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        event.setTimestamp(time);
        QApplication::sendEvent(stop, &event);
    };
    {
        const QSignalBlocker begun(stop);
        send(QEvent::MouseButtonPress, 1000);
        send(QEvent::MouseButtonRelease, 1050);
    }
    send(QEvent::MouseButtonDblClick, 1100);
    send(QEvent::MouseButtonRelease, 1150);
    const auto* level = part<QProgressBar>("_li");
    EXPECT_TRUE(waitUntil([level, before = level->value()] { return level->value() > before; }));
    EXPECT_TRUE(controller->jobs().isExport());
    Hands::click(part<QPushButton>("_btnExport"));
    EXPECT_EQ(closeAlert(), "Export canceled!");
}

TEST_F(ExportEndTest, EscapeStopsNothing)
{
    openOnEndlessExport();
    waitForKeyboard();
    for (QWidget* place : {static_cast<QWidget*>(&window().searchField()),
                           static_cast<QWidget*>(table()), part<QWidget>("_btnExport")}) {
        place->setFocus();
        Hands::key("Escape");
    }
    EXPECT_FALSE(controller->menu()
                     .action(Command::stop)
                     ->shortcuts()
                     .contains(QKeySequence(Qt::Key_Escape)));
    EXPECT_TRUE(controller->jobs().isExport());
    Hands::key("ctrl+period");
    EXPECT_EQ(closeAlert(), "Export canceled!");
}

TEST_F(ExportEndTest, AnExportOfNothingIsSaid)
{
    add("One", "first");
    openOnPlayer();
    controller->perform(Command::exportAllMovies);
    EXPECT_EQ(info(), "There is nothing to export.");
    EXPECT_FALSE(controller->jobs().isBusy());
}

TEST_F(ExportEndTest, SettingsThatCannotBeSavedAreSaid)
{
    open();
    const QString file = QSettings(QSettings::IniFormat, QSettings::UserScope,
                                   "Zell iPod iPhone Transfer", "Zell iPod iPhone Transfer")
                             .fileName();
    QFile::remove(file);
    ASSERT_TRUE(QDir().mkpath(file));
    (new PreferencesWindow(Config::instance(), true, &window()))->showPref();
    ASSERT_TRUE(waitFor<QDialog>("_winPref"));
    part<PreferencesWindow>("_winPref")->endPref();
    EXPECT_EQ(closeAlert("_alertSettings"), "The settings could not be saved");
    EXPECT_TRUE(QDir().rmdir(file));
}

TEST_F(ExportEndTest, ADamagedLibraryIsSaidAboveItsContentOnItsRowsAndInTheReport)
{
    for (int i = 0; i < 20; ++i)
        add(QString("Track %1").arg(i), "x");
    writePlayer("Mira");
    const QString database = path("Mira/iPod_Control/iTunes/iTunesDB");
    ASSERT_TRUE(QFile::resize(database, QFileInfo(database).size() / 2));
    const auto mount = plugIn("Mira");
    open();
    ASSERT_TRUE(waitFor<QWidget>("_vProblems"));
    const QString words = part<QLabel>("_tfProblems")->text();
    EXPECT_FALSE(words.isEmpty());
    EXPECT_EQ(part<QWidget>("_btnProblems")->accessibleDescription(), words);
    EXPECT_TRUE(source("Music").data(SourceListModel::HasProblemsRole).toBool());
    EXPECT_FALSE(source("Photo").data(SourceListModel::HasProblemsRole).toBool());

    part<QWidget>("_btnProblems")->setFocus();
    waitForKeyboard();
    Hands::key("space");
    const QMessageBox* details = waitForAlert("_alertProblems");
    ASSERT_TRUE(details);
    EXPECT_FALSE(details->informativeText().isEmpty());
    EXPECT_FALSE(details->detailedText().isEmpty());
    Hands::key("Escape");
    ASSERT_TRUE(waitUntil([this] { return !part<QDialog>("_alertProblems"); }));

    choose("Photo");
    EXPECT_TRUE(waitUntil([this] { return !part<QWidget>("_vProblems")->isVisible(); }));
    choose("Music");
    EXPECT_TRUE(waitFor<QWidget>("_vProblems"));
    startExport();
    ASSERT_TRUE(waitForAlert());
    EXPECT_TRUE(waitForAlert()->informativeText().contains("Not all of the device could be read"));
    Hands::click(part<QAbstractButton>("_btnShowReport"));
    auto* report = waitFor<QDialog>("_winReport");
    ASSERT_TRUE(report);
    EXPECT_TRUE(report->findChild<QWidget*>("_vProblems")->isVisible());
}
