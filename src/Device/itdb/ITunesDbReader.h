#pragma once

#include "Device/TrackDb.h"

/// Reads the binary `iTunesDB` of classic players and older phones: a tree of little-endian
/// records, each opening with a four-character tag, its header length (byte 4) and its total
/// length with everything inside it (byte 8). Lengths and counts lead the way; where one
/// contradicts what stands there, `RecordWalk` goes on at the next tag.
class ITunesDbReader final : public TrackDb
{
public:
    /// The reader, or null when the device has no "iTunes/iTunesDB". Leaves a copy of the file
    /// in the log folder for diagnosis.
    static std::unique_ptr<TrackDb> initWithDevice(Device& device);

    [[nodiscard]] QString format() const override;

protected:
    void parse() override;

private:
    explicit ITunesDbReader(Device& device);

    class Parser;

    QString _dbPath;
};
