#include "support/ITunesDbWriter.h"

#include "support/RecordWriter.h"

namespace
{
constexpr quint32 FirstObjectForTime = 100; // position and settings objects of lists

QByteArray listItem(quint32 trackId, quint32 position)
{
    return Record("mhip", 76)
        .u32(12, 1)
        .u32(20, position + 1)
        .u32(24, trackId)
        .append(ITunesDbWriter::opaqueObject(FirstObjectForTime, 44))
        .closed();
}

std::vector<quint32> allIds(const TestLibrary& library)
{
    std::vector<quint32> ids;
    for (const TestTrack& track : library.tracks)
        ids.push_back(track.id);
    return ids;
}

QByteArray tracksOf(const TestLibrary& library, int padding)
{
    std::vector<QByteArray> tracks;
    tracks.reserve(library.tracks.size());
    for (const TestTrack& track : library.tracks)
        tracks.push_back(ITunesDbWriter::track(track, padding));
    return ITunesDbWriter::trackList(tracks);
}

QByteArray playlistsOf(const TestLibrary& library)
{
    using namespace ITunesDbWriter;
    std::vector<QByteArray> playlists = {playlist(playlistObjects(library.name), allIds(library))};
    for (const TestPlaylist& one : library.playlists)
        playlists.push_back(playlist(playlistObjects(one.name), one.trackIds));
    return playlistList(playlists);
}

QByteArray dataSetOf(quint32 type, const TestLibrary& library, int padding)
{
    using namespace ITunesDbWriter;
    switch (type) {
    case 1:
        return dataSet(type, tracksOf(library, padding));
    case 2:
    case 3:
        return dataSet(type, playlistsOf(library));
    default:
        return dataSet(type, QByteArray(500, char(type)));
    }
}
} // namespace

QByteArray ITunesDbWriter::write(const TestLibrary& library)
{
    return write(library, Options());
}

QByteArray ITunesDbWriter::write(const TestLibrary& library, const Options& options)
{
    std::vector<QByteArray> dataSets;
    for (const quint32 type : options.dataSets)
        dataSets.push_back(dataSetOf(type, library, options.padding));
    return database(options.version, dataSets);
}

QByteArray ITunesDbWriter::database(quint32 version, const std::vector<QByteArray>& dataSets)
{
    return Record("mhbd", 244)
        .u32(12, 1)
        .u32(16, version)
        .u32(20, quint32(dataSets.size()))
        .append(dataSets)
        .closed();
}

QByteArray ITunesDbWriter::dataSet(quint32 type, const QByteArray& list)
{
    return Record("mhsd", 96).u32(12, type).append(list).closed();
}

QByteArray ITunesDbWriter::trackList(const std::vector<QByteArray>& tracks)
{
    return Record("mhlt", 92).u32(8, quint32(tracks.size())).append(tracks).open();
}

QByteArray ITunesDbWriter::track(const TestTrack& track, int padding)
{
    std::vector<QByteArray> objects;
    const auto add = [&](quint32 type, const QString& text) {
        if (!text.isNull())
            objects.push_back(stringObject(type, text));
    };
    add(1, track.title);
    add(4, track.artist);
    add(3, track.album);
    add(5, track.genre);
    add(6, QStringLiteral("MPEG audio file"));
    add(2, track.location);
    if (padding > 0)
        objects.push_back(opaqueObject(37, padding));
    return ITunesDbWriter::track(track, objects);
}

QByteArray ITunesDbWriter::track(const TestTrack& fields, const std::vector<QByteArray>& objects)
{
    return Record("mhit", 0x248)
        .u32(12, quint32(objects.size()))
        .u32(16, fields.id)
        .u32(20, 1)    // visible
        .u32(36, 4096) // size
        .u32(40, fields.milliseconds)
        .u32(44, fields.id) // track number
        .u32(56, 128)       // bit rate
        .u8(167, fields.podcast ? 1 : 0)
        .u32(208, fields.mediaKind)
        .append(objects)
        .closed();
}

QByteArray ITunesDbWriter::playlistList(const std::vector<QByteArray>& playlists)
{
    return Record("mhlp", 92).u32(8, quint32(playlists.size())).append(playlists).open();
}

std::vector<QByteArray> ITunesDbWriter::playlistObjects(const QString& name)
{
    return {stringObject(1, name), opaqueObject(FirstObjectForTime, 648)};
}

QByteArray ITunesDbWriter::playlist(const std::vector<QByteArray>& objects,
                                    const std::vector<quint32>& trackIds)
{
    Record record("mhyp", 184);
    record.u32(12, quint32(objects.size())).u32(16, quint32(trackIds.size())).append(objects);
    for (std::size_t i = 0; i < trackIds.size(); ++i)
        record.append(listItem(trackIds[i], quint32(i)));
    return record.closed();
}

QByteArray ITunesDbWriter::stringObject(quint32 type, const QString& text)
{
    return stringObject(type, utf16Bytes(text));
}

QByteArray ITunesDbWriter::stringObject(quint32 type, const QByteArray& text)
{
    return Record("mhod", 24)
        .u32(12, type)
        .append(Record("\1\0\0\0", 16).u32(4, quint32(text.size())).u32(8, 1).open())
        .append(text)
        .closed();
}

QByteArray ITunesDbWriter::opaqueObject(quint32 type, int size)
{
    return Record("mhod", 24).u32(12, type).append(QByteArray(size - 24, '\x5a')).closed();
}
