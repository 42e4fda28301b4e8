#pragma once

#include "Device/CategoryIndex.h"
#include "Device/Playlist.h"
#include "Device/Problem.h"
#include "Device/Track.h"

#include <QString>

#include <array>
#include <deque>
#include <memory>
#include <memory_resource>
#include <vector>

class Device;

/// A device's media library: its tracks, playlists and name, and the index of each category.
/// One class derives from it for each on-device format. It reads the device once, at the first
/// call of `tracks`, `playlists` or `name`, and shows the device as it was then. It owns its
/// tracks and playlists and lives as long as its device.
///
/// What a damaged library yields is kept, and what could not be read is among the problems.
class TrackDb
{
public:
    /// The first reader whose database the device holds, the newest format tried first; null
    /// when it holds none.
    static std::unique_ptr<TrackDb> create(Device& device);

    /// What is to be said of a device for which `create` found no reader: music that no library
    /// describes.
    static ProblemList problemsWithout(Device& device);

    virtual ~TrackDb();
    TrackDb(const TrackDb&) = delete;
    TrackDb& operator=(const TrackDb&) = delete;

    /// The file name of the format, as in "iTunesDB".
    [[nodiscard]] virtual QString format() const = 0;
    [[nodiscard]] Device& device() const { return _device; }

    /// Every track in the reader's order; a track may stand in it twice.
    const std::vector<Track*>& tracks();
    /// The playlists that people made, without the master list.
    const std::vector<Playlist*>& playlists();
    /// What the master list is called; null if there is none.
    const QString& name();

    /// What could not be read, as far as it has been read by now.
    [[nodiscard]] const ProblemList& problems() const { return _problems; }
    /// The index of a category. All are filled at the first call.
    const CategoryIndex& music() { return category(Section::Music); }
    const CategoryIndex& movies() { return category(Section::Movies); }
    const CategoryIndex& tvShows() { return category(Section::TVShows); }
    const CategoryIndex& podcasts() { return category(Section::Podcasts); }
    const CategoryIndex& audiobooks() { return category(Section::Audiobooks); }
    const CategoryIndex& ringtones() { return category(Section::Ringtones); }
    const CategoryIndex& books() { return category(Section::Books); }
    /// One of the seven above; voice memos have no index. Where the device's book catalogue holds
    /// books, these are the books, and those of the library show in `tracks` only.
    const CategoryIndex& category(Section section);

    /// The track type of a media kind as the databases store it; 0 for any other number.
    static int mediaTypeToTrackType(qint32 mediaKind);
    /// A path as the database stores it (":" between components) below the device's prefix; null
    /// for null.
    [[nodiscard]] QString getFileSystemPath(const QString& storedPath) const;

protected:
    explicit TrackDb(Device& device);

    /// Where a reader puts what it could not read.
    ProblemList& foundProblems() { return _problems; }

    /// Reads the database; called once. Appends with the operations below, and may leave with
    /// an exception where the data ends it.
    virtual void parse() = 0;

    /// New records, owned by the reader; `list` shows them in `tracks` and `playlists`.
    Track& newTrack();
    void list(Track& track) { _tracks.push_back(&track); }
    Playlist& newPlaylist();
    void list(Playlist& playlist) { _playlists.push_back(&playlist); }
    void setName(const QString& name) { _name = name; }

private:
    void load();
    void fillTracks();

    Device& _device;
    bool _loaded = false;
    ProblemList _problems;
    bool _filled = false;
    QString _name;
    // Tracks stay where they are made, and large blocks hold many of them.
    std::pmr::monotonic_buffer_resource _trackMemory;
    std::pmr::deque<Track> _ownedTracks{&_trackMemory};
    std::deque<Playlist> _ownedPlaylists;
    std::vector<Track*> _tracks;
    std::vector<Playlist*> _playlists;
    static constexpr std::size_t IndexCount = std::size_t(Section::Books) + 1;
    std::array<CategoryIndex, IndexCount> _index;
};
