#pragma once

#include "Base/Utility.h"
#include "Device/TrackDb.h"
#include "support/Files.h"
#include "support/MemoryDevice.h"
#include "support/SqliteLibraries.h"

#include <QDirIterator>

#include <gtest/gtest.h>

/// A device whose databases a test writes, row by row.
class SqlFixture : public testing::Test
{
protected:
    static QString onDevice(const QString& name)
    {
        return "/Volumes/P/iPod_Control/iTunes/" + name;
    }

    [[nodiscard]] QString path(const QString& name) const { return _folder.filePath(name); }

    /// Puts a database and its side files on the device.
    void put(const QString& name, const QString& target)
    {
        for (const char* suffix : {"", "-shm", "-wal"}) {
            if (QFile::exists(path(name) + suffix))
                device.put(target + suffix, Files::read(path(name) + suffix));
        }
    }

    static QStringList titles(const std::vector<Track*>& tracks)
    {
        QStringList list;
        for (const Track* track : tracks)
            list.append(track->title);
        return list;
    }
    static QStringList names(const std::vector<Playlist*>& playlists)
    {
        QStringList list;
        for (const Playlist* playlist : playlists)
            list.append(playlist->name);
        return list;
    }

    /// What stands in the temporary folder besides the test's own files.
    static QStringList temporaryFiles()
    {
        QStringList files;
        QDirIterator all(QDir::tempPath(), {"zell-transfer-*"}, QDir::Dirs);
        while (all.hasNext()) {
            QDirIterator copies(all.next(), QDir::Files | QDir::Hidden,
                                QDirIterator::Subdirectories);
            while (copies.hasNext())
                files.append(copies.next());
        }
        return files;
    }

    static TestTrack track(quint32 id, const QString& title)
    {
        TestTrack track;
        track.id = id;
        track.title = title;
        track.artist = "Artist";
        track.album = "Album";
        track.genre = "Genre";
        track.location = QString(":iPod_Control:Music:F00:%1.mp3").arg(id);
        return track;
    }

    MemoryDevice device;

private:
    QTemporaryDir _folder;
};
