#pragma once

#include "Device/sql/SqlReader.h"

#include <cstddef>

/// Reads the pair `Library.itdb` (items, genres, playlists) and `Locations.itdb` (files) of
/// phones of the middle generation. `tracks` is what the primary container holds, in the order
/// of its membership rows; other items show only in playlists.
class LibraryItdbReader final : public SqlReader
{
public:
    /// The reader, or null when the device has no "iTunes/iTunes Library.itlp/Library.itdb".
    /// Leaves copies of both files in the log folder for diagnosis.
    static std::unique_ptr<TrackDb> initWithDevice(Device& device);

    [[nodiscard]] QString format() const override;

protected:
    void parse() override;

private:
    explicit LibraryItdbReader(Device& device);

    void readLibrary(Found& found, const Database& library);
    void sayWhatIsInNoList(const LibraryProblems& problems);
    void readLocations(Found& found, const Database& locations) const;
    void readItems(Found& found, Statement items);
    void readMembers(Found& found, Statement members);

    std::ptrdiff_t _itemCount = 0;
    QString _libraryPath;
    QString _locationPath;
};
