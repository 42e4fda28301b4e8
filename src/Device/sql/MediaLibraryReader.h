#pragma once

#include "Device/sql/SqlReader.h"

/// Reads the single `MediaLibrary.sqlitedb` of newer phones. Every item is listed in `tracks`;
/// a playlist's members are packed in one blob.
class MediaLibraryReader final : public SqlReader
{
public:
    /// The reader, or null when the device has no "iTunes/MediaLibrary.sqlitedb". Leaves a copy
    /// of it and its side files in the log folder for diagnosis.
    static std::unique_ptr<TrackDb> initWithDevice(Device& device);

    [[nodiscard]] QString format() const override;

protected:
    void parse() override;

private:
    explicit MediaLibraryReader(Device& device);

    void readItems(Found& found, Statement items);
    void readMembers(Found& found, Statement containerItems);
    void addMembers(Found& found, qint32 container, ByteView members);

    QString _libraryPath;
};
