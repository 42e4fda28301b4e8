#pragma once

#include <QString>

#include <vector>

/// One mounted file system, as the kernel lists it.
struct MountEntry {
    int id = 0;         ///< no two at a time have the same, but a later one may
    QString path;       ///< where it is mounted
    QString type;       ///< of the file system, as in "vfat" or "fuse.sshfs"
    QString source;     ///< what it was mounted from, as in "/dev/sda1"
    QString root;       ///< the folder of the file system that is shown; "/" for all of it
    unsigned major = 0; ///< of the block device behind it; 0 for none
    /// Never given twice. Known for local volumes only, and 0 where the kernel does not tell.
    quint64 uniqueId = 0;
};

/// The mounts of this process at one moment.
class MountTable
{
public:
    /// What has come and gone between two tables.
    struct Changes {
        std::vector<MountEntry> unmounted;
        std::vector<MountEntry> mounted;
    };

    /// The kernel's table of now. Reading it touches no mount.
    static MountTable read();

    MountTable() = default;
    explicit MountTable(std::vector<MountEntry> entries);

    [[nodiscard]] const std::vector<MountEntry>& entries() const { return _entries; }
    /// The local volumes that can be reached: of several mounts at one path, only the last.
    [[nodiscard]] MountTable localVolumes() const;
    /// From this table to a later one. Told by the mounts and not by their paths alone: a path
    /// that was mounted anew in the meantime is an unmount and a mount.
    [[nodiscard]] Changes changesTo(const MountTable& later) const;

    /// Whether this computer's own storage or memory backs a mount. Decided from the table
    /// alone, and by what backs the mount rather than by its type where that can be known: a
    /// player may sit on FUSE over a local block device.
    static bool isLocalVolume(const MountEntry& entry);

private:
    std::vector<MountEntry> _entries;
};
