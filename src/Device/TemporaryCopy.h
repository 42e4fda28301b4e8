#pragma once

#include "Base/Expected.h"

#include <QCoreApplication>
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
    Q_DECLARE_TR_FUNCTIONS(TemporaryCopy)
public:
    enum class SideFiles {
        Leave, ///< the file alone
        Take   ///< with those of SQLite's "-shm" and "-wal" that exist
    };

    TemporaryCopy(Device& device, const QString& from, SideFiles sideFiles);
    ~TemporaryCopy();
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    /// Where the copy stands; null when nothing of it was made. What came before a copy ended
    /// early stands there too.
    [[nodiscard]] const QString& path() const { return _path; }
    /// Whether the file was copied whole. "Refused" is one that is larger than any library.
    [[nodiscard]] const Status& status() const { return _ended.file; }
    /// Whether the write-ahead log came along, where there is one: without it the file is that of
    /// some earlier day.
    [[nodiscard]] const Status& logStatus() const { return _ended.log; }
    /// Bytes of the copy with its side files.
    [[nodiscard]] qint64 size() const;

    /// Leaves a copy in the log folder for diagnosis, for nobody but this user to read. Nothing
    /// depends on how it went. Nothing of an earlier copy of this name stays.
    static void keepForDiagnosis(Device& device, const QString& from, SideFiles sideFiles);

    /// Removes what killed programs left behind. Programs call it when they start.
    static void removeLeftovers();

    /// How the parts of a copy went.
    struct Ended {
        Status file;
        Status log;
    };

private:
    bool claimPlace(const QString& folder);
    void leavePlace();

    Ended _ended;
    QString _folder;
    QString _path;
    int _lock = -1;
};
