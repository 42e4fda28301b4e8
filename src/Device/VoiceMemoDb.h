#pragma once

#include "Device/Problem.h"
#include "Device/Track.h"

#include <QString>

#include <deque>
#include <memory>
#include <vector>

class Device;

/// The voice recordings of a device, from "Recordings.db" in its folder "Recordings": a flat
/// list outside any library. It reads the device once and lives as long as its device.
class VoiceMemoDb
{
public:
    /// Null when the device has no such database. Leaves a copy of it in the log folder for
    /// diagnosis.
    static std::unique_ptr<VoiceMemoDb> create(Device& device);

    VoiceMemoDb(const VoiceMemoDb&) = delete;
    VoiceMemoDb& operator=(const VoiceMemoDb&) = delete;

    /// The recordings in the database's order. Each has the local date and time of its recording
    /// for a title, and no album, artist or genre.
    const std::vector<Track*>& memos();
    /// What could not be read, as far as it has been read by now.
    [[nodiscard]] const ProblemList& problems() const { return _problems; }

private:
    explicit VoiceMemoDb(Device& device);

    void load();
    void parse();

    Device& _device;
    bool _loaded = false;
    ProblemList _problems;
    QString _folder;
    QString _dbPath;
    std::deque<Track> _ownedMemos;
    std::vector<Track*> _memos;
};
