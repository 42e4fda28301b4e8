#pragma once

#include "Device/TrackDb.h"
#include "Device/iPod/iPodDevice.h"
#include "Export/ExportJob.h"
#include "support/ExportFixture.h"
#include "support/ITunesDbWriter.h"

/// A player in a folder with a few tracks, and destinations beside it.
class PlayerFixture : public ExportFixture
{
protected:
    [[nodiscard]] QString onDevice(const TestTrack& track) const
    {
        QString location = track.location;
        return path("player" + location.replace(u':', u'/'));
    }

    /// Adds a track to the library and its file to the player.
    TestTrack& add(const QString& title, const QByteArray& content)
    {
        TestTrack track;
        track.id = quint32(library.tracks.size() + 1);
        track.title = title;
        track.artist = "Artist";
        track.album = "Album";
        track.location = QString(":iPod_Control:Music:F00:%1.mp3").arg(track.id);
        library.tracks.push_back(track);
        Files::write(onDevice(track), content);
        return library.tracks.back();
    }

    /// Writes the library, once, and connects the player.
    iPodDevice& connect()
    {
        if (!device) {
            Files::write(path("player/iPod_Control/iTunes/iTunesDB"),
                         ITunesDbWriter::write(library));
            device = std::make_shared<iPodDevice>(path("player"));
            (void)device->trackDb()->tracks();
            host.chunks.clear(); // of the reader's own copy
        }
        return *device;
    }

    void exportTracks() { exportTracks(connect().trackDb()->tracks()); }
    void exportTracks(const std::vector<Track*>& tracks)
    {
        ExportJob(device, config, host, report, host.toStop).exportTracks(tracks);
    }
    void exportPlaylists()
    {
        const std::vector<Playlist*> playlists = connect().trackDb()->playlists();
        ExportJob(device, config, host, report, host.toStop).exportPlaylists(playlists);
    }

    TestLibrary library;
    std::shared_ptr<iPodDevice> device;
};
