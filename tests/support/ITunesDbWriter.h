#pragma once

#include "support/TestLibrary.h"

#include <QByteArray>

/// Writes the binary database of a classic player, as real ones look: with the fields, objects
/// and data sets that no reader of ours looks at.
namespace ITunesDbWriter
{
struct Options {
    quint32 version = 0x19;
    /// The data sets, by type, in file order. 1: tracks, 2: playlists, 3: podcasts (shaped like
    /// playlists), 4: albums, anything else: opaque bytes.
    std::vector<quint32> dataSets = {4, 1, 3, 2, 5};
    /// Bytes of objects added to each track that no reader of ours looks at.
    int padding = 0;
};

QByteArray write(const TestLibrary& library, const Options& options);
QByteArray write(const TestLibrary& library);

// The records by themselves, for databases that no device would write.

/// A file of data sets that are already written.
QByteArray database(quint32 version, const std::vector<QByteArray>& dataSets);
QByteArray dataSet(quint32 type, const QByteArray& list);
QByteArray trackList(const std::vector<QByteArray>& tracks);
QByteArray track(const TestTrack& track, int padding = 0);
QByteArray track(const TestTrack& fields, const std::vector<QByteArray>& objects);
QByteArray playlistList(const std::vector<QByteArray>& playlists);
QByteArray playlist(const std::vector<QByteArray>& objects, const std::vector<quint32>& trackIds);
/// The name and the settings object that real playlists begin with.
std::vector<QByteArray> playlistObjects(const QString& name);
QByteArray stringObject(quint32 type, const QString& text);
/// A string object whose text is given in bytes.
QByteArray stringObject(quint32 type, const QByteArray& text);
/// An object that holds no text.
QByteArray opaqueObject(quint32 type, int size);
} // namespace ITunesDbWriter
