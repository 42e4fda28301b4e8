#pragma once

#include "Base/Utility.h"
#include "Device/Device.h"
#include "Device/TrackDb.h"
#include "support/MemoryDevice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdlib.h>

#include <cstddef>
#include <cstdint>

/// What the targets share that give a reader a whole file. Readers copy what they read, so the
/// copies go to memory where there is such a folder, and never among a person's files.
namespace FuzzSqlite
{
inline void useOwnFolders()
{
    const bool hasMemory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    const QString base = hasMemory ? QStringLiteral("/dev/shm") : QDir::tempPath();
    const QString folder =
        base + QStringLiteral("/zell-fuzz-%1").arg(QCoreApplication::applicationPid());
    static const struct Removal {
        QString folder;
        ~Removal() { QDir(folder).removeRecursively(); }
    } removal{folder};
    Utility::createFolder(folder);
    setenv("TMPDIR", QFile::encodeName(folder).constData(), 1);
    setenv("XDG_DATA_HOME", QFile::encodeName(folder).constData(), 1);
}

inline QByteArray bytes(const std::uint8_t* data, std::size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
}

inline void keep(std::size_t seen)
{
    static volatile std::size_t sink = 0;
    sink = sink + seen;
}

/// Follows every link of a library: a dangling one must show here.
inline void walk(TrackDb& library)
{
    std::size_t seen = std::size_t(library.name().size());
    for (const Track* track : library.tracks()) {
        seen += std::size_t(track->title.size() + track->path.size());
        for (const Playlist* playlist : track->playlists)
            seen += std::size_t(playlist->name.size());
    }
    for (const Playlist* playlist : library.playlists()) {
        for (const Track* track : playlist->tracks)
            seen += std::size_t(track->title.size());
    }
    seen += library.music().tracks(CategoryIndex::AllKey).size();
    keep(seen);
}
} // namespace FuzzSqlite

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    FuzzSqlite::useOwnFolders();
    return 0;
}
