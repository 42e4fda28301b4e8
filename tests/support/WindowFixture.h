#pragma once

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
#include "Window/Views/NSCollectionViewEx.h"
#include "Window/Views/NSOutlineViewEx.h"
#include "Window/Views/NSTableViewEx.h"
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
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include <gtest/gtest.h>

/// The real window on players that are mounted for real. Destinations stand below `out`.
class WindowFixture : public testing::Test
{
protected:
    WindowFixture()
    {
        for (int i = 0; i < Config::FolderCount; ++i)
            Config::instance().setFolderPath(Config::Folder(i),
                                             out(Config::folderName(Config::Folder(i))));
        Config::instance().save();
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
        _contents.push_back(content);
        return library.tracks.back();
    }
    /// Tracks of so many bytes, which take no room on the disk.
    void addMany(int count, qint64 bytes)
    {
        _holes = bytes;
        for (int i = 0; i < count; ++i)
            add(QString("Track %1").arg(i), {});
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
            Files::write(file, _contents[i]);
            if (_holes > 0)
                QFile::resize(file, _holes);
        }
        Files::write(path(QString("%1/%2/iTunes/iTunesDB").arg(name, controlFolder)),
                     ITunesDbWriter::write(library));
        library = {};
        _contents.clear();
        _holes = 0;
    }
    std::unique_ptr<PrivateMounts::Mount> plugIn(const QString& name)
    {
        return PrivateMounts::Mount::bind(path(name), path("mnt/" + name));
    }

    /// Shows the window.
    void open()
    {
        controller = std::make_unique<MainWindowController>();
        controller->start();
        waitForKeyboard();
    }
    MainWindow& window() { return controller->window(); }

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
    /// Exports all tracks shown, and answers the question where to.
    void exportShownTracks()
    {
        controller->perform(Command::checkAll);
        waitForKeyboard();
        Hands::key("ctrl+e");
        confirmExportMode();
    }
    /// Says yes to the question whether to stop the export and quit.
    void stopAndQuit()
    {
        waitForKeyboard();
        Hands::key("ctrl+q");
        ASSERT_TRUE(waitFor<QDialog>("_alertQuit"));
        ASSERT_TRUE(waitUntil([this] { return part<QDialog>("_alertQuit")->isActiveWindow(); }));
        Hands::key("Return");
    }
    /// Answers the question where to export to.
    void confirmExportMode()
    {
        ASSERT_TRUE(waitFor<QDialog>("_winExportMode"));
        ASSERT_TRUE(
            waitUntil([this] { return part<QDialog>("_winExportMode")->isActiveWindow(); }));
        Hands::key("Return");
    }
    /// Waits for the alert at the end, and closes it.
    QString closeAlert(const QString& name = "_alertFinish")
    {
        auto* box = waitFor<QDialog>(name);
        if (!box)
            return {};
        EXPECT_TRUE(waitUntil([&] { return box->isActiveWindow(); }));
        const QString title = box->windowTitle();
        Hands::key("Return");
        EXPECT_TRUE(waitUntil([&] { return !part<QDialog>(name); }));
        return title;
    }

    TestLibrary library;
    std::unique_ptr<MainWindowController> controller;

private:
    QTemporaryDir _folder;
    std::vector<QByteArray> _contents;
    qint64 _holes = 0;
};
