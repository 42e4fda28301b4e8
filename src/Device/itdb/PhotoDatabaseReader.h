#pragma once

#include "Base/Utility.h"
#include "Device/PhotoDb.h"

/// Reads the binary `Photo Database` of players that mount as a volume: a tree of little-endian
/// records, each opening with a four-character tag, its header length (byte 4) and, mostly, its
/// total length with everything inside it (byte 8). Lengths and counts lead the way; where one
/// contradicts what stands there, `RecordWalk` goes on at the next tag.
class PhotoDatabaseReader final : public PhotoDb
{
public:
    /// The reader, or null when the device has no "Photos/Photo Database". Leaves a copy of the
    /// file in the log folder for diagnosis.
    static std::unique_ptr<PhotoDb> initWithDevice(Device& device);

    [[nodiscard]] QString format() const override;

    /// The text of a string body: its length in bytes, its encoding (2 is UTF-16, little-endian, an
    /// odd last byte ignored; anything else is UTF-8), four bytes of something, and the text. It
    /// ends at a NUL, and where the body ends. Null when it is no UTF-8.
    static QString textOfBody(ByteView body);

protected:
    void parse() override;
    [[nodiscard]] PreviewPass::Step previewStep() const override;

private:
    explicit PhotoDatabaseReader(Device& device);

    class Parser;

    QString _photoDir;
    QString _dbPath;
};
