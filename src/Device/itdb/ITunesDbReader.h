#pragma once

#include "Base/Utility.h"
#include "Device/TrackDb.h"

/// Reads the binary `iTunesDB` of classic players and older phones: a tree of little-endian
/// records, each opening with a four-character tag, its header length (byte 4) and its total
/// length with everything inside it (byte 8). Tags are not checked: lengths and counts lead the
/// way, and each is checked against the record it stands in.
class ITunesDbReader final : public TrackDb
{
public:
    /// The reader, or null when the device has no "iTunes/iTunesDB". Leaves a copy of the file
    /// in the log folder for diagnosis.
    static std::unique_ptr<TrackDb> initWithDevice(Device& device);

    [[nodiscard]] QString format() const override;

    /// The text of the string object (`mhod`) at `offset`: byte 28 is its length in bytes, from
    /// byte 40 on it is UTF-16, little-endian; an odd last byte is ignored. Never null.
    static QString getStringFromMhod(ByteView data, std::size_t offset);

protected:
    void parse() override;

private:
    explicit ITunesDbReader(Device& device);

    class Parser;

    QString _dbPath;
};
