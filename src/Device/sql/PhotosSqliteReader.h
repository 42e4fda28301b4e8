#pragma once

#include "Device/PhotoDb.h"

/// Reads the SQLite database "PhotoData/Photos.sqlite" of phones. Previews come from a file of
/// records of one size beside it, by a photo's slot.
class PhotosSqliteReader final : public PhotoDb
{
public:
    /// The reader, or null when the device has no such database. Leaves a copy of it in the log
    /// folder for diagnosis.
    static std::unique_ptr<PhotoDb> initWithDevice(Device& device);

    [[nodiscard]] QString format() const override;
    /// The file that previews come from: the one with the largest; null without any.
    [[nodiscard]] const QString& smallFile() const { return _smallFile; }

    /// Whether the album is to be dropped: an empty one of those that the phone keeps for itself.
    static bool filterAlbum(const Album& album);

protected:
    void parse() override;
    [[nodiscard]] PreviewPass::Step previewStep() const override;

private:
    explicit PhotosSqliteReader(Device& device);

    class Parser;

    QString _photoDir;
    QString _dbPath;
    QString _smallFile;
};
