#pragma once

#include <QString>

class Device;

/// A private copy of one of a device's files, for a reader to open: databases are never opened
/// on the device. The copy and whatever SQLite puts beside it go away with the object.
///
/// Copies live in a folder that only this user may enter. Each stands in a folder of its own
/// under a new UUID, which its program holds locked: so the next start of a program can tell
/// what a killed one left behind from what another one still reads.
class TemporaryCopy
{
public:
    enum class SideFiles {
        Leave, ///< the file alone
        Take   ///< with those of SQLite's "-shm" and "-wal" that exist
    };

    TemporaryCopy(Device& device, const QString& from, SideFiles sideFiles);
    ~TemporaryCopy();
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    /// Where the copy stands; nothing stands there when copying failed.
    [[nodiscard]] const QString& path() const { return _path; }
    /// Bytes of the copy with its side files.
    [[nodiscard]] qint64 size() const;

    /// Leaves a copy in the log folder for diagnosis; nobody reads it, and how it went does not
    /// matter.
    static void keepForDiagnosis(Device& device, const QString& from, SideFiles sideFiles);

    /// Removes what killed programs left behind. Programs call it when they start.
    static void removeLeftovers();

private:
    QString _folder;
    QString _path;
    int _lock = -1;
};
