#pragma once

#include "Device/Device.h"
#include "Device/DeviceDelegate.h"
#include "Device/TrackDb.h"
#include "Export/Config.h"
#include "Window/BrowserPane.h"
#include "Window/DeviceBox.h"
#include "Window/JobController.h"
#include "Window/MainMenu.h"
#include "Window/MainWindowController.h"
#include "Window/PhotoGrid.h"
#include "Window/SourceList.h"
#include "Window/StatusBar.h"
#include "Window/TrackTable.h"
#include "Window/Views/PhotoListView.h"
#include "Window/Views/RowTableView.h"
#include "Window/Views/SourceTreeView.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/Hands.h"
#include "support/ITunesDbWriter.h"
#include "support/PrivateMounts.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <thread>

/// Hears what a listener hears, and slows copies down as an old player does.
class SlowCopies final : public DeviceDelegate
{
public:
    explicit SlowCopies(DeviceDelegate& listener)
        : _listener(listener)
    {
    }

    void deviceConnected(const std::shared_ptr<Device>& device) override
    {
        _listener.deviceConnected(device);
    }
    void deviceDisconnected(const std::shared_ptr<Device>& device) override
    {
        _listener.deviceDisconnected(device);
    }
    void deviceFailed(const QString& words, const QString& exactText) override
    {
        _listener.deviceFailed(words, exactText);
    }
    void unusableDeviceLeft() override { _listener.unusableDeviceLeft(); }
    bool exported(double progress) override
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return _listener.exported(progress);
    }

private:
    DeviceDelegate& _listener;
};

/// The real window on players that are mounted for real. Destinations stand below `out`.
class WindowFixture : public testing::Test
{
protected:
    WindowFixture()
    {
        for (int i = 0; i < int(Sections::Count); ++i)
            Config::instance().setFolderPath(Section(i), out(Sections::folderName(Section(i))));
        EXPECT_TRUE(Config::instance().save());
    }

    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }
    [[nodiscard]] QString out(const QString& name) const { return path("out/" + name); }

    /// A track with a file of its own on the player that is being written.
    TestTrack& add(const QString& title, const QByteArray& content)
    {
        TestTrack track;
        track.id = quint32(library.tracks.size() + 1);
        track.title = title;
        track.artist = "Artist";
        track.album = "Album";
        track.genre = "Genre";
        track.location = QString(":iPod_Control:Music:F00:%1.mp3").arg(track.id);
        library.tracks.push_back(track);
        _files.push_back({content, content.size()});
        return library.tracks.back();
    }

    /// Writes a player of this name with the library, and starts an empty one. Players keep it in
    /// one folder, phones in another.
    void writePlayer(const QString& name, const QString& controlFolder = "iPod_Control")
    {
        library.name = name;
        for (std::size_t i = 0; i < library.tracks.size(); ++i) {
            QString& location = library.tracks[i].location;
            location.replace("iPod_Control", controlFolder);
            const QString file = path(name + QString(location).replace(u':', u'/'));
            Files::write(file, _files[i].content);
            EXPECT_TRUE(QFile::resize(file, _files[i].size));
        }
        Files::write(path(QString("%1/%2/iTunes/iTunesDB").arg(name, controlFolder)),
                     ITunesDbWriter::write(library));
        library = {};
        _files.clear();
    }
    std::unique_ptr<PrivateMounts::Mount> plugIn(const QString& name)
    {
        return PrivateMounts::Mount::bind(path(name), path("mnt/" + name));
    }

    /// Shows the window. What it tells at once may stand in front of it.
    void open()
    {
        controller = std::make_unique<MainWindowController>(updateAddresses);
        controller->start();
        ASSERT_TRUE(waitUntil([] { return QApplication::activeWindow() != nullptr; }));
    }
    MainWindow& window() { return controller->window(); }

    /// Shows the window on a player of this name with the library, all of its tracks listed.
    void openOnPlayer(const QString& name = "Mira")
    {
        const auto count = qsizetype(library.tracks.size());
        writePlayer(name);
        player = plugIn(name);
        open();
        ASSERT_TRUE(waitUntil([&] { return titles().size() == count; }));
    }
    /// Exports every track that is shown, to the folders.
    void startExport()
    {
        controller->perform(Command::checkAll);
        waitForKeyboard();
        Hands::key("ctrl+e");
        confirmExportMode();
    }
    /// The window on a player of `EndlessCount` tracks. The copy of the first lasts longer than
    /// any test.
    void openOnSlowPlayer()
    {
        for (int i = 0; i < EndlessCount; ++i)
            add(QString("Track %1").arg(i), "x");
        _files.front().size = qint64(64) << 30; // takes no room on the disk, and twenty minutes
        openOnPlayer();
        _slowCopies.emplace(*controller);
        Device::setDelegate(&*_slowCopies);
    }
    /// The same with an export that runs until the test ends it.
    void openOnEndlessExport()
    {
        openOnSlowPlayer();
        startExport();
        ASSERT_TRUE(waitUntil([this] { return controller->jobs().isExport(); }));
    }
    static constexpr int EndlessCount = 20;

    /// A part of the window, or of a dialog, by its name.
    template <typename Widget>
    Widget* part(const QString& name)
    {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (!top->isVisible())
                continue;
            if (auto* whole = qobject_cast<Widget*>(top); whole && top->objectName() == name)
                return whole;
            if (auto* found = top->findChild<Widget*>(name))
                return found;
        }
        return nullptr;
    }
    template <typename Widget>
    Widget* waitFor(const QString& name)
    {
        EXPECT_TRUE(waitUntil([&] {
            return part<Widget>(name) && part<Widget>(name)->isVisible();
        })) << name.toStdString();
        return part<Widget>(name);
    }
    QString info() { return part<QLabel>("_tfInfo")->text(); }
    QTableView* table() { return window().tracks().tableView(); }
    QString cell(int row, int column)
    {
        return table()->model()->index(row, column).data().toString();
    }
    QStringList titles()
    {
        QStringList list;
        for (const Track* track : window().tracks().tracks())
            list.append(track->title);
        return list;
    }
    QStringList devices()
    {
        QStringList names;
        const auto* box = part<QComboBox>("_cmbDevices");
        for (int i = 0; i < box->count(); ++i)
            names.append(box->itemText(i));
        return names;
    }
    QModelIndex source(const QString& label)
    {
        const QAbstractItemModel* model = window().sources().outlineView()->model();
        const QModelIndexList found = model->match(model->index(0, 0), Qt::DisplayRole, label, 1,
                                                   Qt::MatchStartsWith | Qt::MatchRecursive);
        return found.isEmpty() ? QModelIndex() : found.first();
    }
    void choose(const QString& label)
    {
        ASSERT_TRUE(source(label).isValid()) << label.toStdString();
        Hands::clickCell(window().sources().outlineView(), source(label));
    }
    /// Waits until the window has the keyboard, which a dialog may have had a moment ago.
    void waitForKeyboard()
    {
        ASSERT_TRUE(waitUntil([this] { return window().isActiveWindow(); }));
    }
    /// Chooses the device below the chosen one.
    void chooseNextDevice()
    {
        auto* box = part<QComboBox>("_cmbDevices");
        Hands::click(box);
        ASSERT_TRUE(waitUntil([&] { return box->view()->isVisible(); }));
        Hands::key("Down");
        Hands::key("Return");
    }
    /// Says yes to the question whether to stop the export and quit.
    void stopAndQuit()
    {
        waitForKeyboard();
        Hands::key("ctrl+q");
        ASSERT_TRUE(waitFor<QDialog>("_alertQuit"));
        ASSERT_TRUE(waitUntil([this] { return part<QDialog>("_alertQuit")->isActiveWindow(); }));
        Hands::key("alt+s");
    }
    /// Answers the question where to export to.
    void confirmExportMode()
    {
        ASSERT_TRUE(waitFor<QDialog>("_winExportMode"));
        ASSERT_TRUE(
            waitUntil([this] { return part<QDialog>("_winExportMode")->isActiveWindow(); }));
        Hands::key("Return");
    }
    /// Waits for an alert that has the keyboard.
    QMessageBox* waitForAlert(const QString& name = "_alertFinish")
    {
        auto* box = waitFor<QMessageBox>(name);
        if (box) {
            EXPECT_TRUE(waitUntil([&] { return box->isActiveWindow(); }));
        }
        return box;
    }
    /// Waits for the alert at the end, and closes it. Gives the first line of what it says.
    QString closeAlert(const QString& name = "_alertFinish")
    {
        const auto* box = waitForAlert(name);
        if (!box)
            return {};
        const QString line = box->text().section('\n', 0, 0);
        Hands::key("Return");
        EXPECT_TRUE(waitUntil([&] { return !part<QDialog>(name); }));
        return line;
    }

    TestLibrary library;
    UpdateAddresses updateAddresses; ///< nobody is asked

private:
    std::optional<SlowCopies> _slowCopies;

protected:
    std::unique_ptr<MainWindowController> controller; // hears from the slow copies

private:
    struct TrackFile {
        QByteArray content;
        qint64 size;
    };
    QTemporaryDir _folder;
    std::vector<TrackFile> _files;

protected:
    std::unique_ptr<PrivateMounts::Mount> player; // last: it lies in the folder
};
