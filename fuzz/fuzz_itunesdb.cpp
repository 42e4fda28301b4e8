#include "Device/Device.h"
#include "Device/TrackDb.h"
#include "support/MemoryDevice.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MemoryDevice device;
    device.put(QStringLiteral("/Volumes/P/iPod_Control/iTunes/iTunesDB"),
               QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    TrackDb* library = device.trackDb();
    // Follow every link and ask every question: a dangling one must show here.
    std::size_t seen = 0;
    for (const Track* track : library->tracks()) {
        for (const Playlist* playlist : track->playlists)
            seen += std::size_t(playlist->name.size()) + playlist->tracks.size();
    }
    for (const Playlist* playlist : library->playlists()) {
        for (const Track* track : playlist->tracks)
            seen += std::size_t(track->title.size());
    }
    const CategoryIndex& music = library->music();
    for (const QString& genre : music.genres()) {
        seen += std::size_t(music.albums(genre, QStringLiteral("*")).size());
        seen += music.tracks(genre + QStringLiteral("|*|*")).size();
    }
    static volatile std::size_t sink = 0;
    sink = sink + seen;
    return 0;
}
